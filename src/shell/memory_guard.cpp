#include "shell/memory_guard.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "shell/keepers.h"

#include <new>

namespace orvane {

void MemoryGuard::Run(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    Report();
  }
}

void MemoryGuard::Report() {
  workspace_.reading = {};
  if (keepers_.copies) keepers_.copies->WriteAll();
  NoteError(workspace_.messages,
            "There is not enough memory for this. It is given up, and your maps are as they were.");
}

}  // namespace orvane
