#include "cli/number_options.h"

#include "base/number_text.h"

namespace orvane {

namespace {

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
  if (!FillsText(number.length, text) || !(number.value > accepted.above)) {
    throw Refusal(option, text, accepted.wanted);
  }
  return number.value;
}

}  // namespace orvane
