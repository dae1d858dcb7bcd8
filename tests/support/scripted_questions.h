#pragma once

#include "base/messages.h"
#include "commands/file_dialogs.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Keeps every message, and answers each question in turn as was laid down. A question for which
/// nothing was laid down is answered with its first button, and a prompt is cancelled.
class ScriptedMessages : public RecordedMessages {
 public:
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override {
    RecordedMessages::Ask(title, buttons, text);
    if (answers.empty()) return 1;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::optional<std::string> Prompt(const std::string& title, const std::string& message,
                                    const std::string& text) override {
    RecordedMessages::Prompt(title, message, text);
    shown.push_back(text);
    if (texts.empty()) return std::nullopt;
    std::optional<std::string> answer = texts.front();
    texts.pop_front();
    return answer;
  }

  std::deque<int> answers;                       ///< buttons, 1 to 3
  std::deque<std::optional<std::string>> texts;  ///< of prompts; nothing for "Cancel"
  std::vector<std::string> shown;                ///< what stood in the prompts
};

/// Answers each file dialog in turn as was laid down, and cancels the rest.
class ScriptedDialogs final : public FileDialogs {
 public:
  struct Question {
    std::string title;
    FileSpecification file;  ///< as it was given to the dialog
    bool save;
  };

  FileAnswer AskOpen(const std::string& title, FileSpecification& file) override {
    return Answer(title, file, false);
  }
  FileAnswer AskSave(const std::string& title, FileSpecification& file) override {
    return Answer(title, file, true);
  }

  /// The paths to choose; an empty one cancels.
  std::deque<std::string> paths;
  bool fails = false;  ///< every dialog breaks down
  std::vector<Question> questions;

 private:
  FileAnswer Answer(const std::string& title, FileSpecification& file, bool save) {
    questions.push_back({title, file, save});
    if (fails) return FileAnswer::Failed;
    if (paths.empty()) return FileAnswer::Cancelled;
    const std::string path = paths.front();
    paths.pop_front();
    if (path.empty()) return FileAnswer::Cancelled;
    const size_t slash = path.rfind('/');
    file.directory = path.substr(0, slash);
    file.name = path.substr(slash + 1);
    return FileAnswer::Chosen;
  }
};

}  // namespace orvane
