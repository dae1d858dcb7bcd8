#pragma once

#include "commands/file_dialogs.h"

#include <string>

namespace orvane {

class Messages;

/// A report that is saved as text.
struct ReportFile {
  std::string title;  ///< of the file dialog
  std::string name;   ///< that is offered
  std::string text;
};

/// Writes a text to a file, byte for byte, or reports that it can't.
void WriteReport(const std::string& path, const std::string& text, Messages& messages);

/// Asks where to save a report, and writes it. Messages report what fails.
/// \param file  where the dialog begins; it remembers the folder
void SaveReport(const ReportFile& report, FileDialogs& dialogs, FileSpecification& file,
                Messages& messages);

}  // namespace orvane
