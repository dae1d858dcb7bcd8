#pragma once

#include "entry/import_summary.h"
#include "entry/sheet_import.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// The counts of the import of a follow sheet.
struct SheetCounts {
  size_t follows = 0;  ///< trails that got a stop
  size_t stops = 0;
  size_t weatherNotes = 0;
  size_t unknownPlaces = 0;  ///< different names, as `unknownlocs.txt` lists them
  LeftOutLines leftOut;
  size_t abandonedAt = 0;  ///< the line that ended the import; 0 if it was completed
};

/// The sentence on a follow sheet. Without follows it says what was looked for, and names the
/// separator of the file if it is not the tab.
std::string SheetSummary(const ImportSpec& spec, const SheetCounts& counts);

}  // namespace orvane
