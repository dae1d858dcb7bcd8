#include "base/messages.h"

#include "base/number_text.h"
#include "base/utf8.h"

#include <utility>

namespace orvane {

namespace {

void PostText(Messages& messages, Severity severity, std::string_view format,
              std::initializer_list<std::string_view> arguments) {
  std::string text = FormatText(format, arguments);
  if (text.size() > Messages::LongestMessage) text.resize(Messages::LongestMessage);
  messages.Post(severity, text);
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

bool PromptForText(Messages& messages, const std::string& title, const std::string& message,
                   std::string& buffer, size_t size) {
  std::optional<std::string> answer = messages.Prompt(title, message, buffer);
  if (!answer) {
    buffer.clear();
    return false;
  }
  buffer = std::move(*answer);
  const size_t most = size > 0 ? size - 1 : 0;
  if (buffer.size() <= most) return true;
  const bool isUtf8 = IsValidUtf8(buffer);
  buffer.resize(most);
  while (isUtf8 && !IsValidUtf8(buffer)) buffer.pop_back();
  return true;
}

void RecordedMessages::Post(Severity severity, const std::string& text) {
  entries_.push_back({severity, text});
}

int RecordedMessages::Ask(const std::string& title, const std::vector<std::string>& buttons,
                          const std::string& text) {
  questions_.push_back({title, buttons, text});
  return answer_;
}

std::optional<std::string> RecordedMessages::Prompt(const std::string& title,
                                                    const std::string& message,
                                                    const std::string& text) {
  questions_.push_back({title, {"OK", "Cancel"}, message});
  if (answer_ != 1) return std::nullopt;
  return text;
}

}  // namespace orvane
