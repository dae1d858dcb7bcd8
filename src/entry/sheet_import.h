#pragma once

#include "entry/sheet_cells.h"
#include "entry/sheet_file.h"
#include "entry/sheet_logs.h"
#include "geo/positions.h"
#include "model/map.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The import of a follow sheet. Consecutive rows with the same date, species and focal animal
/// become a trail, and consecutive rows at one location one stop on it, a point named by its time
/// span. The import adds to the map.
///
/// The steps of the command, in the window and in the batch tool:
///
///     ReadSheet          the file, with its messages
///     ReadSheetFields    the dialog's fields -> ImportSpec, or a refusal (sheet_fields.h)
///     RunSpreadsheetImport

/// Counts of SM1, SM2, SM3 over the rows of a stop.
using SmCounts = std::array<std::int64_t, 3>;

/// The settings of one import. Columns are results of `ParseColumnRef`.
struct ImportSpec {
  Map* map = nullptr;                  ///< what the trails are added to
  const FollowSheet* sheet = nullptr;  ///< must outlive the import
  std::string fileName;                ///< of the sheet, for messages
  int skipCount = ColumnBlank;         ///< lines before the first row; none if blank
  int timeColumn = ColumnBlank;        ///< never below 0
  int locationColumn = ColumnBlank;    ///< never below 0
  int dateColumn = ColumnBlank;        ///< `ColumnMalformed` also for a series of columns
  int focalColumn = ColumnBlank;       ///< never malformed
  int speciesColumn = ColumnBlank;     ///< never malformed
  int activityColumn = ColumnBlank;    ///< never malformed
  int yearColumn = ColumnBlank;        ///< of a series of columns for the date
  int monthColumn = ColumnBlank;       ///< likewise
  int dayColumn = ColumnBlank;         ///< likewise
  std::array<int, 3> smColumn = {ColumnBlank, ColumnBlank, ColumnBlank};
  std::array<std::optional<std::string>, 3> smCode;  ///< activities that count as one SM1, 2, 3
  std::optional<std::string> speciesAlways;          ///< species of all rows, where no column says
  std::optional<std::string> focalAlways;            ///< likewise; null for no focal animal
  std::optional<std::string> dateAlways;             ///< likewise
};

/// How an import ended.
struct SheetOutcome {
  bool completed = false;  ///< false if a bad date or an answer ended it; what was built stays
  bool canceled = false;   ///< by the progress of the workspace; what was built must be taken back
  bool changed = false;    ///< the map got a follow, even one without stops
  std::vector<std::string> unwritten;  ///< names of side files that could not be written
  std::string summary;                 ///< a sentence on what was done, for the user
};

/// What became of a row of a sheet.
struct SheetRowFate {
  size_t line = 0;       ///< of the file, from 1
  std::string_view row;  ///< in `FollowSheet::text`
  /// Or "unknown place", "bad time", "bad date", "no species", "not used".
  std::string_view state = "used";
  std::string reason = {};  ///< empty for a row that is used as it is
};

/// Reads a sheet as `RunSpreadsheetImport` does, but without questions and messages; nothing is
/// written, solved or updated. The map gets the trails all the same.
/// \param most  rows at most
std::vector<SheetRowFate> TrySpreadsheetImport(const ImportSpec& spec, size_t most);

/// Runs an import to the end of the sheet, or until a date cannot be read or the user answers "No"
/// to a question about a bad time or location. A completed import writes the logs, solves the map
/// and updates its ranges; the caller rebuilds its panes. An abandoned one leaves the map with the
/// stops so far, without the current one, unsolved and with its old ranges, and leaves the logs as
/// they are. A cancelled one ends like that too, but writes no file and has no summary: the caller
/// takes back what it did to the map and the logs. A map that got no follow is not solved.
/// \param logs   of the program; this import also writes what an abandoned one left in them
/// \param write  how the side files are written
SheetOutcome RunSpreadsheetImport(const ImportSpec& spec, SheetLogs& logs,
                                  const SideFileWriter& write);

/// Posts what the user must know of an import that was not cancelled: the side files that could not
/// be written, and as a note what was done.
void NoteSheetOutcome(Messages& messages, const SheetOutcome& outcome);

/// Adds a stop at the end of a trail. Rows are scans every five minutes: if a count equals the
/// number of scans of the stop, the behaviour went on through the last one, so the stop ends five
/// minutes later.
/// \param position      of the location, with its altitude
/// \param start, end    minutes after midnight
/// \param locationText  as typed; the only reading of the point is near that place
Point& AddStopPoint(Map& map, Trail& trail, const LatLon& position, int start, int end,
                    std::string_view locationText, const SmCounts& smCount);

}  // namespace orvane
