#include "shell/out_of_memory.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "shell/shell.h"

#include <new>

namespace orvane {

void RunWithinMemory(Shell& shell, const std::function<void()>& work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    ReportOutOfMemory(shell);
  }
}

void ReportOutOfMemory(Shell& shell) {
  shell.TheWorkspace().reading = {};
  if (shell.writeCopies) shell.writeCopies();
  NoteError(shell.TheWorkspace().messages,
            "There is not enough memory for this. It is given up, and your maps are as they were.");
}

}  // namespace orvane
