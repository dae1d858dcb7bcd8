#include "commands/find_box.h"

#include "commands/recent_files.h"

namespace orvane {
namespace {

std::string Trimmed(const std::string& text) {
  constexpr auto Blanks = " \t\r\n\v\f";
  const size_t first = text.find_first_not_of(Blanks);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

}  // namespace

std::optional<std::string> FindBox::Ask(Messages& messages) {
  const auto answer = AskForText(messages, {.title = "Find",
                                            .message = "Find what?",
                                            .text = texts_.empty() ? std::string() : texts_.front(),
                                            .size = Size,
                                            .columns = Columns,
                                            .earlier = texts_});
  if (!answer) return std::nullopt;
  std::string text = Trimmed(*answer);
  PutInFront(texts_, text, MostTexts);
  return text;
}

}  // namespace orvane
