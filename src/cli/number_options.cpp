#include "cli/number_options.h"

#include "base/number_text.h"

namespace orvane {

namespace {

constexpr std::uint64_t LargestCount = std::numeric_limits<std::uint64_t>::max();

/// True for a number that was read from the whole text, without a blank before it.
bool FillsText(size_t length, const std::string& text) {
  return length > 0 && length == text.size() && !IsSpace(text.front());
}

CLI::ValidationError Refusal(const std::string& option, const std::string& text,
                             const std::string& wanted) {
  return CLI::ValidationError(option, (text.empty() ? "\"\"" : text) + " is not " + wanted);
}

}  // namespace

int ReadNumber(const std::string& option, const std::string& text, const WholeNumbers& accepted) {
  size_t length = 0;
  const int number = ReadInt32(text, &length);
  if (!FillsText(length, text) || number < accepted.least || number > accepted.most) {
    throw Refusal(option, text, accepted.wanted);
  }
  return number;
}

double ReadNumber(const std::string& option, const std::string& text, const RealNumbers& accepted) {
  const RealPrefix number = ReadReal(text);
  const bool isDecimal = text.find_first_of("xX") == std::string::npos;
  if (!isDecimal || !FillsText(number.length, text) || !(number.value > accepted.above) ||
      number.value > accepted.most) {
    throw Refusal(option, text, accepted.wanted);
  }
  return number.value;
}

std::uint64_t ReadNumber(const std::string& option, const std::string& text,
                         const Counts& accepted) {
  constexpr std::uint64_t Ten = 10;
  const size_t sign = text.starts_with('+') ? 1 : 0;
  const std::string digits = text.substr(sign);
  std::uint64_t number = 0;
  bool isTooLarge = false;
  for (const char c : digits) {
    if (!IsDigit(c)) throw Refusal(option, text, accepted.wanted);
    const auto digit = static_cast<std::uint64_t>(c - '0');
    isTooLarge = isTooLarge || number > (LargestCount - digit) / Ten;
    number = number * Ten + digit;
  }
  if (digits.empty() || (isTooLarge && accepted.hasLimit)) {
    throw Refusal(option, text, accepted.wanted);
  }
  if (isTooLarge) return LargestCount;
  return number;
}

}  // namespace orvane
