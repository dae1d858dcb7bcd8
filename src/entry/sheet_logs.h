#pragma once

#include "base/dates.h"
#include "base/files.h"
#include "base/text.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The places that an import could not find. Unknown names are written to `unknownlocs.txt`, and
/// notes on the weather, which observers type into the place column, to `badweather.txt`. Both
/// files are in the current directory and have no heading.

/// The order of the unknown locations. Names that differ only in case are one.
struct NameOrder {
  bool operator()(std::string_view a, std::string_view b) const { return CompareNames(a, b) < 0; }
};

/// Kept while the program runs: an abandoned import leaves its notes here for the next one.
struct SheetLogs {
  std::set<std::string, NameOrder> unknownLocations;  ///< each as it first appeared
  /// The content of `badweather.txt` so far; null until the first note on the weather.
  std::optional<std::string> weather;
};

/// Writes a file into the current directory: `WriteSideFile`, or the function of a test.
using SideFileWriter = std::function<WriteResult(const std::string& name, std::string_view text)>;
WriteResult WriteSideFile(const std::string& name, std::string_view text);

/// Keeps the text of an unknown location. It is about the weather if it contains "sun", "rain",
/// "cloud", "dry", "warm", "clear", "same as" or "cool", in any case and also within a word: then
/// it becomes the line "day-month-year time: text" of `badweather.txt`. Any other text is kept once
/// for `unknownlocs.txt`.
/// \return true for a note on the weather
bool NoteBadLocation(SheetLogs& logs, std::string_view text, PackedDate date,
                     std::string_view timeText);

/// Ends the logs of an import: writes `unknownlocs.txt`, even if it is empty, and `badweather.txt`
/// if there were notes on the weather. Empties both logs even if that fails.
/// \return the names of files that could not be written
std::vector<std::string> FinishImportLogs(SheetLogs& logs, const SideFileWriter& write);

/// Ends an abandoned import: writes the notes on the weather so far, and keeps both logs.
/// \return the names of files that could not be written
std::vector<std::string> LeaveImportLogs(const SheetLogs& logs, const SideFileWriter& write);

}  // namespace orvane
