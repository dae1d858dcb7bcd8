#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace orvane {

/// Numbers in text, independent of the locale. Readers look at the given text only, so a caller
/// passes the field and no number runs over its end.

/// A number read at the front of a text.
struct RealPrefix {
  double value = 0;   ///< 0 if nothing was read
  size_t length = 0;  ///< bytes used, leading white space included; 0 if no number stands there
};
struct IntegerPrefix {
  long value = 0;     ///< 0 if nothing was read
  size_t length = 0;  ///< bytes used, leading white space included; 0 if no number stands there
};

/// True for blank, tab, line feed, vertical tab, form feed and carriage return.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// True for 0 to 9.
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Reads a real number as the standard conversion does in the C locale: leading white space, a
/// sign, decimal digits with an optional point and exponent, or a hexadecimal number behind 0x.
/// A text that stands for infinity or "not a number", or whose value overflows, is no number. A
/// value too small for a double becomes 0.
RealPrefix ReadReal(std::string_view text);

/// Reads a decimal whole number: leading white space, a sign, digits. A value outside 64 bits is
/// no number.
IntegerPrefix ReadInteger(std::string_view text);

/// Reads a decimal whole number as `ReadInteger` and fits it into 32 bits; a value outside them
/// is no number (0).
/// \param length  if not null, receives the bytes used
int ReadInt32(std::string_view text, size_t* length = nullptr);

/// The largest value of `ReadDigits`; whatever is counted in these files is far below it.
constexpr long LargestReadDigits = 1000000000000;

/// Reads decimal digits alone: no white space and no sign before them. A value above
/// `LargestReadDigits` becomes that.
IntegerPrefix ReadDigits(std::string_view text);

/// "%g" with `digits` significant digits, always with a decimal point.
std::string FormatGeneral(double value, int digits = 6);

/// "%.{decimals}f", always with a decimal point.
std::string FormatFixed(double value, int decimals = 6);

/// The shortest text from which `ReadReal` gives the same value again, as in JSON: always with a
/// decimal point or an exponent, so that it is a real number to any reader.
/// \return "null" for a value that is no finite number
std::string FormatShortest(double value);

/// Replaces each "%s" of `format` by the next of `arguments`, in order. Nothing else of `format`
/// is special, an argument is not looked into, and a "%s" too many stays as it is.
std::string FormatText(std::string_view format, std::initializer_list<std::string_view> arguments);

}  // namespace orvane
