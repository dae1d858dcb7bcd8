#pragma once

#include "commands/file_dialogs.h"
#include "support/scripted_messages.h"

#include <deque>
#include <string>
#include <vector>

namespace orvane {

/// Answers each file dialog in turn from a script, and cancels the rest.
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
    if (paths.empty()) return FileAnswer::Canceled;
    const std::string path = paths.front();
    paths.pop_front();
    if (path.empty()) return FileAnswer::Canceled;
    const size_t slash = path.rfind('/');
    file.directory = path.substr(0, slash);
    file.name = path.substr(slash + 1);
    return FileAnswer::Chosen;
  }
};

}  // namespace orvane
