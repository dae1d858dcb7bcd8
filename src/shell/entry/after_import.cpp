#include "shell/entry/after_import.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "shell/shell.h"

namespace orvane {

void ShowImported(Shell& shell, Map& map, bool wasEmpty, const std::string& sentence) {
  if (wasEmpty) shell.Windows().ShowWhole(map);
  if (!sentence.empty()) shell.TheWorkspace().messages.Post(Severity::Note, sentence);
}

}  // namespace orvane
