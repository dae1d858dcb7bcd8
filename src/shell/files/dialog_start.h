#pragma once

#include "commands/file_dialogs.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

class ProgramWindow;
class Shell;

/// Where file dialogs over a window begin if they were never used.
DialogStart StartOfDialogs(Shell& shell, ProgramWindow& window);

/// Asks for a file to open, over a window. A dialog that fails is a fatal message.
/// \param file  of this kind of file; receives the choice
/// \param type  extension without the dot
/// \return its path, or nothing if the user cancelled
std::optional<std::string> AskOpenFile(Shell& shell, const std::string& title,
                                       ProgramWindow& window, FileSpecification& file,
                                       std::string_view type);

}  // namespace orvane
