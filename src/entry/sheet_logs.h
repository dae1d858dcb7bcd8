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

/// What an import could not place: names that mean nothing go to `unknownlocs.txt`, and notes on
/// the weather, which observers type into the place column, to `badweather.txt`. Both files stand
/// in the current directory and have no heading.

/// The order of the unknown locations: that of names, so two that differ in case are one.
struct NameOrder {
  bool operator()(std::string_view a, std::string_view b) const { return CompareNames(a, b) < 0; }
};

/// Kept for as long as the program runs: an import that is abandoned leaves what it has noted here,
/// and the next one goes on with it.
struct SheetLogs {
  std::set<std::string, NameOrder> unknownLocations;  ///< each as it was met first
  /// What `badweather.txt` holds so far; null until the first note on the weather. While it is not
  /// null further notes are added, and the file holds them all.
  std::optional<std::string> weather;
};

/// How a file is put into the current directory: `WriteFileAtomically`, or what a test gives.
using SideFileWriter = std::function<WriteResult(const std::string& name, std::string_view text)>;

/// Notes a location text that means nothing. It is about the weather if it contains "sun", "rain",
/// "cloud", "dry", "warm", "clear", "same as" or "cool", in any case and also within a word: then it
/// becomes the line "day-month-year time: text" of `badweather.txt`. Any other is kept once for
/// `unknownlocs.txt`.
/// \return true for a note on the weather
bool NoteBadLocation(SheetLogs& logs, std::string_view text, PackedDate date,
                     std::string_view timeText);

/// Ends the logs of an import: writes `unknownlocs.txt`, also when there is nothing to tell, and
/// `badweather.txt` if there were notes on the weather, and empties both logs whether or not that
/// worked.
/// \return the names of files that could not be written
std::vector<std::string> FinishImportLogs(SheetLogs& logs, const SideFileWriter& write);

/// What an abandoned import leaves: the notes on the weather so far are in their file, and both logs
/// go on.
/// \return the names of files that could not be written
std::vector<std::string> LeaveImportLogs(const SheetLogs& logs, const SideFileWriter& write);

}  // namespace orvane
