#include "base/colors.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace orvane {

namespace {

struct NamedColor {
  const char* name;
  Color color;
};

// Where two names have one value, the first is written. "fuchsia" is not the usual colour; see
// docs/compatibility.md.
constexpr std::array<NamedColor, 23> NamedColors = {{
    {"red", 0xff0000},     {"green", 0x008000},   {"blue", 0x0000ff},      {"cyan", 0x00ffff},
    {"magenta", 0xff00ff}, {"yellow", 0xffff00},  {"black", 0x000000},     {"darkgray", 0x404040},
    {"gray", 0x808080},    {"grey", 0x808080},    {"lightgray", 0xc0c0c0}, {"lightgrey", 0xc0c0c0},
    {"white", 0xffffff},   {"maroon", 0x800000},  {"olive", 0x808000},     {"darkgrey", 0x404040},
    {"navy", 0x000080},    {"purple", 0x800080},  {"lime", 0x00ff00},      {"aqua", 0x00ffff},
    {"teal", 0x008080},    {"fuchsia", 0xff0080}, {"silver", 0xc0c0c0},
}};

using Components = std::array<int, 3>;

/// A larger number in a form is held at this value, far outside every component.
constexpr int LargestInForm = 1000000;

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char folded = FoldByte(c);
  return folded >= 'a' && folded <= 'f' ? folded - 'a' + 10 : -1;
}

void SkipSpace(std::string_view& text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
}

/// Removes a number from the front of `text`: white space, a sign, digits, with base 16 also a 0x
/// before them.
/// \return nothing if there is no digit
std::optional<int> TakeNumber(std::string_view& text, int base) {
  SkipSpace(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (base == 16 && text.size() > 2 && text[0] == '0' && FoldByte(text[1]) == 'x' &&
      HexValue(text[2]) >= 0) {
    text.remove_prefix(2);
  }
  int value = 0;
  size_t used = 0;
  for (; used < text.size(); ++used) {
    const int digit = HexValue(text[used]);
    if (digit < 0 || digit >= base) break;
    value = std::min(value * base + digit, LargestInForm);
  }
  if (used == 0) return std::nullopt;
  text.remove_prefix(used);
  return negative ? -value : value;
}

/// Reads three numbers by a form in the manner of scanf: "%d" and "%x" are numbers, "%%" is a
/// percent sign with or without white space before it, a blank is any amount of white space, also
/// none, and any other byte matches itself. As in scanf, the form ends with its third number:
/// neither the rest of the form nor the rest of the text matters.
std::optional<Components> ScanForm(std::string_view text, std::string_view form) {
  Components components{};
  size_t count = 0;
  while (count < components.size() && !form.empty()) {
    const char c = form.front();
    form.remove_prefix(1);
    if (c == ' ') {
      SkipSpace(text);
    } else if (c == '%' && form.front() != '%') {
      const std::optional<int> number = TakeNumber(text, form.front() == 'x' ? 16 : 10);
      if (!number) return std::nullopt;
      components[count++] = *number;
      form.remove_prefix(1);
    } else {
      if (c == '%') {
        SkipSpace(text);
        form.remove_prefix(1);
      }
      if (text.empty() || text.front() != c) return std::nullopt;
      text.remove_prefix(1);
    }
  }
  return components;
}

Color PackColor(const Components& components) {
  Color color = 0;
  for (const int component : components) color = color * 256 + std::clamp(component, 0, 255);
  return color;
}

/// Reads 3, 6 or 12 hexadecimal digits, a third for each component.
Color ParseHexDigits(std::string_view digits) {
  if (digits.size() != 3 && digits.size() != 6 && digits.size() != 12) return NoColor;
  const size_t width = digits.size() / 3;
  Components components{};
  for (size_t i = 0; i < digits.size(); ++i) {
    const int digit = HexValue(digits[i]);
    if (digit < 0) return NoColor;
    components[i / width] = components[i / width] * 16 + digit;
  }
  for (int& component : components) {
    if (width == 4) component /= 256;
    if (width == 1) component *= 17;
  }
  return PackColor(components);
}

}  // namespace

Color ParseColor(std::string_view text) {
  for (const NamedColor& named : NamedColors) {
    if (SameName(named.name, text)) return named.color;
  }
  if (const auto plain = ScanForm(text, "rgb(%d,%d,%d)")) return PackColor(*plain);
  if (auto percent = ScanForm(text, "rgb(%d%%,%d%%,%d%%)")) {
    for (int& component : *percent) component = component * 255 / 100;
    return PackColor(*percent);
  }
  if (const auto decimal = ScanForm(text, "%d %d %d")) return PackColor(*decimal);
  if (const auto hexadecimal = ScanForm(text, "%x %x %x")) return PackColor(*hexadecimal);
  return ParseHexDigits(text.starts_with('#') ? text.substr(1) : text);
}

const char* ColorName(Color color) {
  for (const NamedColor& named : NamedColors) {
    if (named.color == color) return named.name;
  }
  return nullptr;
}

}  // namespace orvane
