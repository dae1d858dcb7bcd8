#include "commands/save_report.h"

#include "base/files.h"
#include "base/messages.h"
#include "commands/save_map.h"

namespace orvane {

void WriteReport(const std::string& path, const std::string& text, Messages& messages) {
  if (WriteFileAtomically(path, text) != WriteResult::Done) {
    NoteError(messages, "Can't save to file");
  }
}

void SaveReport(const ReportFile& report, FileDialogs& dialogs, FileSpecification& file,
                Messages& messages) {
  file.name = report.name;
  if (!WasChosen(dialogs.AskSave(report.title, file), messages)) return;
  WriteReport(PathOf(file), report.text, messages);
}

}  // namespace orvane
