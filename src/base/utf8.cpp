#include "base/utf8.h"

namespace orvane {

namespace {

/// \return the length of the UTF-8 character at the front of `text`, 0 if there is none
size_t Utf8Length(std::string_view text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80) return 0;
  }
  // No overlong forms, no surrogates, nothing beyond the last code point.
  if (lead == 0xE0 && byte(1) < 0xA0) return 0;
  if (lead == 0xED && byte(1) > 0x9F) return 0;
  if (lead == 0xF0 && byte(1) < 0x90) return 0;
  if (lead == 0xF4 && byte(1) > 0x8F) return 0;
  return length;
}

}  // namespace

bool IsValidUtf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view CutText(std::string_view text, size_t most) {
  constexpr size_t LongestCharacter = 4;
  if (text.size() <= most) return text;
  // At most one character begins before the cut and ends after it.
  for (size_t back = 1; back < LongestCharacter && back <= most; ++back) {
    if (Utf8Length(text.substr(most - back)) > back) return text.substr(0, most - back);
  }
  return text.substr(0, most);
}

std::string ToUtf8(std::string_view text) {
  if (IsValidUtf8(text)) return std::string(text);
  std::string utf8;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      utf8 += c;
    } else {
      utf8 += static_cast<char>(0xC0U | (code >> 6U));
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return utf8;
}

}  // namespace orvane
