#include "base/number_text.h"

#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace orvane {

namespace {

/// More digits than any double has, which bounds the requested length.
constexpr int MostDigits = 1100;

/// Where the digits begin: after white space and one sign.
struct NumberStart {
  size_t at = 0;
  bool negative = false;
};

NumberStart FindNumberStart(std::string_view text) {
  NumberStart start;
  while (start.at < text.size() && IsSpace(text[start.at])) ++start.at;
  if (start.at < text.size() && (text[start.at] == '-' || text[start.at] == '+')) {
    start.negative = text[start.at] == '-';
    ++start.at;
  }
  return start;
}

bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

/// True if the text begins with a digit, or a point and a digit. This excludes the words for
/// infinity and "not a number", and a second sign, which from_chars would accept.
template <typename IsDigitOfBase>
bool BeginsNumber(std::string_view text, IsDigitOfBase isDigit) {
  if (text.empty()) return false;
  if (isDigit(text[0])) return true;
  return text.size() > 1 && text[0] == '.' && isDigit(text[1]);
}

/// True if a number that is out of range is too small rather than too large. from_chars does not
/// distinguish the two, so the place of the first digit that is not 0 decides, with the exponent.
bool IsTooSmall(std::string_view number, bool hexadecimal) {
  long long place = 0;
  bool pointSeen = false;
  bool significant = false;
  size_t i = 0;
  for (; i < number.size(); ++i) {
    const char c = number[i];
    if (c == '.') {
      pointSeen = true;
    } else if (hexadecimal ? IsHexDigit(c) : IsDigit(c)) {
      significant = significant || c != '0';
      if (significant && !pointSeen) ++place;
      if (!significant && pointSeen) --place;
    } else {
      break;
    }
  }
  const bool negativeExponent = i + 1 < number.size() && number[i + 1] == '-';
  const IntegerPrefix exponent =
      i < number.size() ? ReadInteger(number.substr(i + 1)) : IntegerPrefix{};
  // An exponent beyond 64 bits outweighs any digits that fit into memory.
  if (i < number.size() && exponent.length == 0) return negativeExponent;
  const double weight = hexadecimal ? 4 : 1;
  return static_cast<double>(place) * weight + static_cast<double>(exponent.value) < 0;
}

/// Reads a number of up to 15 digits and a point, as nearly all in map files are. Both the digits
/// as a whole number and the power of ten that divides them are exact, so one division rounds to
/// the nearest double, as from_chars does in four times the time. Requires `BeginsNumber`.
/// \return length 0 if the number is of another kind
RealPrefix ReadPlainReal(std::string_view text) {
  constexpr size_t MostPlainDigits = 15;
  constexpr double PowersOfTen[MostPlainDigits + 1] = {
      1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  std::int64_t digits = 0;
  size_t length = 0;
  const auto takeDigits = [&] {
    const size_t begin = length;
    while (length < text.size() && length <= MostPlainDigits && IsDigit(text[length])) {
      digits = digits * 10 + (text[length] - '0');
      ++length;
    }
    return length - begin;
  };
  size_t count = takeDigits();
  size_t decimals = 0;
  if (length < text.size() && text[length] == '.') {
    ++length;
    decimals = takeDigits();
    count += decimals;
  }
  if (count > MostPlainDigits) return {};
  if (length < text.size()) {
    const char next = text[length];
    // An exponent, a hexadecimal number, or more digits.
    if (IsDigit(next) || FoldByte(next) == 'e' || FoldByte(next) == 'x') return {};
  }
  return {static_cast<double>(digits) / PowersOfTen[decimals], length};
}

/// Reads digits in the given form from the front of `text`. Requires `BeginsNumber`.
/// \return length 0 if the value overflows
RealPrefix ReadUnsignedReal(std::string_view text, std::chars_format form) {
  RealPrefix result;
  const char* const end = text.data() + text.size();
  const std::from_chars_result read = std::from_chars(text.data(), end, result.value, form);
  const size_t length = static_cast<size_t>(read.ptr - text.data());
  if (read.ec == std::errc::result_out_of_range) {
    if (!IsTooSmall(text.substr(0, length), form == std::chars_format::hex)) return {};
    result.value = 0;
  } else if (read.ec != std::errc() || !std::isfinite(result.value)) {
    return {};
  }
  result.length = length;
  return result;
}

}  // namespace

RealPrefix ReadReal(std::string_view text) {
  const NumberStart start = FindNumberStart(text);
  const std::string_view number = text.substr(start.at);
  if (!BeginsNumber(number, IsDigit)) return {};
  if (RealPrefix plain = ReadPlainReal(number); plain.length > 0) {
    plain.length += start.at;
    if (start.negative) plain.value = -plain.value;
    return plain;
  }
  RealPrefix result;
  size_t before = start.at;
  const bool hexadecimal = number.size() > 2 && number[0] == '0' &&
                           (number[1] == 'x' || number[1] == 'X') &&
                           BeginsNumber(number.substr(2), IsHexDigit);
  if (hexadecimal) {
    before += 2;
    result = ReadUnsignedReal(number.substr(2), std::chars_format::hex);
  } else {
    result = ReadUnsignedReal(number, std::chars_format::general);
  }
  if (result.length == 0) return {};
  result.length += before;
  if (start.negative) result.value = -result.value;
  return result;
}

IntegerPrefix ReadInteger(std::string_view text) {
  const NumberStart start = FindNumberStart(text);
  if (start.at >= text.size() || !IsDigit(text[start.at])) return {};
  // The sign is read with the digits: the lowest value has no positive counterpart.
  const char* const begin = text.data() + (start.negative ? start.at - 1 : start.at);
  IntegerPrefix result;
  const std::from_chars_result read =
      std::from_chars(begin, text.data() + text.size(), result.value);
  if (read.ec != std::errc()) return {};
  result.length = static_cast<size_t>(read.ptr - text.data());
  return result;
}

int ReadInt32(std::string_view text, size_t* length) {
  IntegerPrefix read = ReadInteger(text);
  if (read.value < std::numeric_limits<int>::min() ||
      read.value > std::numeric_limits<int>::max()) {
    read = {};
  }
  if (length != nullptr) *length = read.length;
  return static_cast<int>(read.value);
}

IntegerPrefix ReadDigits(std::string_view text) {
  IntegerPrefix result;
  while (result.length < text.size() && IsDigit(text[result.length])) {
    result.value = std::min(result.value * 10 + (text[result.length] - '0'), LargestReadDigits);
    ++result.length;
  }
  return result;
}

std::string FormatGeneral(double value, int digits) {
  char buffer[MostDigits + 32];
  const std::to_chars_result written =
      std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general,
                    std::min(digits, MostDigits));
  return std::string(buffer, written.ptr);
}

std::string FormatFixed(double value, int decimals) {
  // There can be 309 digits before the point.
  char buffer[MostDigits + 350];
  const std::to_chars_result written =
      std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed,
                    std::min(decimals, MostDigits));
  return std::string(buffer, written.ptr);
}

std::string FormatShortest(double value) {
  if (!std::isfinite(value)) return "null";
  char buffer[32];
  const std::to_chars_result written = std::to_chars(buffer, buffer + sizeof(buffer), value);
  std::string text(buffer, written.ptr);
  if (text.find_first_of(".e") == text.npos) text += ".0";
  return text;
}

std::string FormatText(std::string_view format, std::initializer_list<std::string_view> arguments) {
  constexpr std::string_view Place = "%s";
  std::string text;
  for (const std::string_view argument : arguments) {
    const size_t found = format.find(Place);
    if (found == std::string_view::npos) break;
    text += format.substr(0, found);
    text += argument;
    format.remove_prefix(found + Place.size());
  }
  text += format;
  return text;
}

}  // namespace orvane
