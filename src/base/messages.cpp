#include "base/messages.h"

#include "base/number_text.h"
#include "base/utf8.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

void PostText(Messages& messages, Severity severity, std::string_view format,
              std::initializer_list<std::string_view> arguments) {
  const std::string text = FormatText(format, arguments);
  messages.Post(severity, std::string(CutText(text, Messages::LongestMessage)));
}

}  // namespace

void PostNote(Messages& messages, std::string_view format,
              std::initializer_list<std::string_view> arguments) {
  PostText(messages, Severity::Note, format, arguments);
}

void NoteWarning(Messages& messages, std::string_view format,
                 std::initializer_list<std::string_view> arguments) {
  PostText(messages, Severity::Warning, format, arguments);
}

void NoteError(Messages& messages, std::string_view format,
               std::initializer_list<std::string_view> arguments) {
  PostText(messages, Severity::Error, format, arguments);
}

void NoteInternalError(Messages& messages, std::string_view format,
                       std::initializer_list<std::string_view> arguments) {
  PostText(messages, Severity::InternalError, format, arguments);
}

void NoteFatal(Messages& messages, std::string_view format,
               std::initializer_list<std::string_view> arguments) {
  PostText(messages, Severity::Fatal, format, arguments);
}

int AskUser(Messages& messages, const std::string& title, const std::string& button1,
            const std::string& button2, const std::string& button3, std::string_view format,
            std::initializer_list<std::string_view> arguments) {
  return messages.Ask(title, {button1, button2, button3}, FormatText(format, arguments));
}

std::optional<std::string> AskForText(Messages& messages, const TextPrompt& prompt) {
  std::optional<std::string> answer = messages.Prompt(prompt);
  if (!answer || prompt.size == 0 || answer->size() < prompt.size) return answer;
  answer->resize(CutText(*answer, prompt.size - 1).size());
  return answer;
}

bool PromptForText(Messages& messages, const std::string& title, const std::string& message,
                   std::string& buffer, size_t size) {
  std::optional<std::string> answer = AskForText(messages, {.title = title,
                                                            .message = message,
                                                            .text = buffer,
                                                            .size = std::max<size_t>(size, 1),
                                                            .columns = 0,
                                                            .earlier = {}});
  buffer = answer ? std::move(*answer) : std::string();
  return answer.has_value();
}

void RecordedMessages::Post(Severity severity, const std::string& text) {
  entries_.push_back({severity, text});
}

int RecordedMessages::Ask(const std::string& title, const std::vector<std::string>& buttons,
                          const std::string& text) {
  questions_.push_back({title, buttons, text});
  return answer_;
}

std::optional<std::string> RecordedMessages::Prompt(const TextPrompt& prompt) {
  questions_.push_back({prompt.title, {"OK", "Cancel"}, prompt.message});
  if (answer_ != 1) return std::nullopt;
  return prompt.text;
}

}  // namespace orvane
