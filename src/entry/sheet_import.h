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

/// The import of a follow sheet: rows that follow each other and agree on date, species and focal
/// animal become a trail, and rows at one location become one stop on it, a point named by its
/// time span. What is imported is added to the map.
///
/// The way of the command, in the window and in the batch tool:
///
///     ReadSheet          the file, with its messages
///     ReadSheetFields    the dialog's fields -> ImportSpec, or a refusal (sheet_fields.h)
///     RunSpreadsheetImport

/// Counts of SM1, SM2, SM3 over the rows of a stop.
using SmCounts = std::array<std::int64_t, 3>;

/// What one import is to do. Columns are as `ParseColumnRef` gives them.
struct ImportSpec {
  Map* map = nullptr;                  ///< what the trails are added to
  const FollowSheet* sheet = nullptr;  ///< must outlive the import
  std::string fileName;                ///< of the sheet, for messages
  int skipCount = ColumnBlank;         ///< lines before the first row; none if blank
  int timeColumn = ColumnBlank;        ///< never below 0
  int locationColumn = ColumnBlank;    ///< never below 0
  int dateColumn = ColumnBlank;        ///< `ColumnMalformed` also where the field holds a series
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
  std::vector<std::string> unwritten;  ///< names of side files that could not be written
  std::string summary;                 ///< a sentence on what was done, for the user
};

/// Runs an import to the end of the sheet, or until a date cannot be read or the user answers a
/// question about a bad time or location with "No". A completed import writes the logs, solves the
/// map and brings its ranges up to date; the caller rebuilds its panes. An abandoned one leaves the
/// map with what was built so far, without the stop that was under way, neither solved nor its
/// ranges refreshed, and the logs as they are.
/// \param logs   of the program; what an abandoned import left in them comes out with this one
/// \param write  how the side files are written
SheetOutcome RunSpreadsheetImport(const ImportSpec& spec, SheetLogs& logs,
                                  const SideFileWriter& write);

/// Adds a stop at the end of a trail. Rows are scans taken every five minutes: a count as high as
/// the number of scans that the stop lasts means that what was counted went on through the last of
/// them, so the stop ends five minutes later.
/// \param position      where the location is; its altitude too
/// \param start, end    minutes after midnight
/// \param locationText  as it was typed; the point's one reading is near that place
Point& AddStopPoint(Map& map, Trail& trail, const LatLon& position, int start, int end,
                    std::string_view locationText, const SmCounts& smCount);

}  // namespace orvane
