#pragma once

#include "commands/file_dialogs.h"

namespace orvane {

class ProgramWindow;
class Shell;

/// Where file dialogs over a window begin if they were never used.
DialogStart StartOfDialogs(Shell& shell, ProgramWindow& window);

}  // namespace orvane
