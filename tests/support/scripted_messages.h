#pragma once

#include "base/messages.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Keeps every message with the line it came from, and answers each question in turn as was laid
/// down. A question for which nothing was laid down is answered with its first button, and a prompt
/// is cancelled.
class ScriptedMessages : public RecordedMessages {
 public:
  void Post(Severity severity, const std::string& text) override {
    RecordedMessages::Post(severity, text);
    origins.push_back(Origin() == nullptr ? MessageOrigin() : *Origin());
  }

  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override {
    RecordedMessages::Ask(title, buttons, text);
    if (answers.empty()) return 1;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::optional<std::string> Prompt(const TextPrompt& prompt) override {
    RecordedMessages::Prompt(prompt);
    shown.push_back(prompt.text);
    if (texts.empty()) return std::nullopt;
    std::optional<std::string> answer = texts.front();
    texts.pop_front();
    return answer;
  }

  std::deque<int> answers;                       ///< buttons, 1 to 3
  std::deque<std::optional<std::string>> texts;  ///< of prompts; nothing for "Cancel"
  std::vector<std::string> shown;                ///< the first text of each prompt
  std::vector<MessageOrigin> origins;            ///< of all messages
};

}  // namespace orvane
