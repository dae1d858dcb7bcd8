#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace orvane {

/// Numbers in text, independent of the locale. A reader sees only the given text, so a caller
/// passes one field and no number extends past its end.

/// A number read at the front of a text.
struct RealPrefix {
  double value = 0;   ///< 0 if nothing was read
  size_t length = 0;  ///< bytes used, with leading white space; 0 if the text has no number
};
struct IntegerPrefix {
  long value = 0;     ///< 0 if nothing was read
  size_t length = 0;  ///< bytes used, with leading white space; 0 if the text has no number
};

/// True for blank, tab, line feed, vertical tab, form feed and carriage return.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// True for 0 to 9.
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Reads a real number as the standard conversion does in the C locale: leading white space, a
/// sign, decimal digits with an optional point and exponent, or a hexadecimal number after 0x. A
/// word for infinity or "not a number", and a value that overflows, are not numbers. A value too
/// small for a double becomes 0.
RealPrefix ReadReal(std::string_view text);

/// Reads a decimal whole number: leading white space, a sign, digits. A value outside 64 bits is
/// not a number.
IntegerPrefix ReadInteger(std::string_view text);

/// Reads a decimal whole number as `ReadInteger`, of 32 bits; a value outside them is not a number
/// (0).
/// \param length  if not null, receives the bytes used
int ReadInt32(std::string_view text, size_t* length = nullptr);

/// The largest value of `ReadDigits`, far above anything that is counted in these files.
constexpr long LargestReadDigits = 1000000000000;

/// Reads only decimal digits, without white space or a sign before them. A larger value becomes
/// `LargestReadDigits`.
IntegerPrefix ReadDigits(std::string_view text);

/// "%g" with `digits` significant digits, always with a decimal point.
std::string FormatGeneral(double value, int digits = 6);

/// "%.{decimals}f", always with a decimal point.
std::string FormatFixed(double value, int decimals = 6);

/// The shortest text from which `ReadReal` gives the same value again, as in JSON: always with a
/// decimal point or an exponent, so that every reader takes it as a real number.
/// \return "null" for a value that is not finite
std::string FormatShortest(double value);

/// Replaces each "%s" of `format` by the next of `arguments`, in order. Nothing else in `format` is
/// special, arguments are inserted as they are, and a "%s" without an argument stays.
std::string FormatText(std::string_view format, std::initializer_list<std::string_view> arguments);

}  // namespace orvane
