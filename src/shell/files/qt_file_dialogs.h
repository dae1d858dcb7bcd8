#pragma once

#include "commands/file_dialogs.h"

namespace orvane {

/// The file dialogs of the platform, over the active window.
class QtFileDialogs final : public FileDialogs {
 public:
  FileAnswer AskOpen(const std::string& title, FileSpecification& file) override;
  FileAnswer AskSave(const std::string& title, FileSpecification& file) override;
};

}  // namespace orvane
