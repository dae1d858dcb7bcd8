#include "shell/memory_guard.h"

#include "base/messages.h"
#include "editing/edit_history.h"
#include "model/workspace.h"
#include "shell/keepers.h"

namespace orvane {

void MemoryGuard::Run(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::bad_alloc& error) {
    Report(error);
  }
}

void MemoryGuard::Report(const std::bad_alloc& error) {
  workspace_.reading = {};
  if (keepers_.copies) keepers_.copies->WriteAll();
  const bool isMade = dynamic_cast<const ListenerWithoutMemory*>(&error) != nullptr;
  NoteError(
      workspace_.messages,
      isMade
          ? "The change is made, but there is not enough memory to show it in all windows."
          : "There is not enough memory for this. It is given up, and your maps are as they were.");
}

}  // namespace orvane
