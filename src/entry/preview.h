#pragma once

#include "entry/fix_import.h"
#include "entry/gis_import.h"
#include "entry/sheet_import.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What an import would do with each row of a file.

struct PreviewRow {
  size_t row = 0;          ///< of the file, from 1
  std::string_view state;  ///< "used", "bad time" ...
  std::string reason;      ///< in words; what becomes of a row that is used
  std::vector<std::string> cells;
};

struct Preview {
  std::vector<std::string> captions;  ///< of the heading row; empty if the import knows none
  std::vector<PreviewRow> rows;       ///< in the order of the file
};

/// The column of the times in the preview of a GPS file.
constexpr size_t GisTimeColumn = 1;

/// The rows that a window shows.
constexpr size_t MostPreviewRows = 500;

/// \param most  rows at most
Preview PreviewFixes(const FixImport& import, size_t most = MostPreviewRows);

/// Reads a sheet without questions, messages and side files. Lines that are skipped are no rows; a
/// line of more than 399 bytes is several.
/// \param spec  its map gets the trails of the rows: call this in an edit that gives up, or with a
///              map that is not used any more
Preview PreviewSheet(const ImportSpec& spec, size_t most = MostPreviewRows);

/// The fixes of a GPS file as `TakeAllTracks` would take them, and its waypoints. Cells, as in the
/// file: name, time, latitude, longitude, altitude.
/// \return nothing if a field cannot be read
std::optional<Preview> PreviewGis(const GisImport& import, const GisTrailFields& fields,
                                  size_t most = MostPreviewRows);

/// What a window shows of a preview.
struct PreviewPage {
  Preview first;        ///< the first rows
  std::string counts;   ///< of all rows, by state; or why the rows have no states
  std::string warning;  ///< on dates that can be read in two ways; empty for none
  std::string leftOut;  ///< all rows that are left out, as `PreviewText`; empty if there are none
};

/// For imports that read dates by the preference, whatever the rows say.
/// \param all       every row
/// \param column    of the dates; text after a blank does not count
/// \param dayFirst  how 3/5/2004 is read
/// \param remedy    what the user can do if the rows show that this is wrong, as a part of a sentence
/// \return the first row with a date that can be read in two ways, and the first that shows how it is
///         meant, in a sentence; empty if there is none
std::string DateOrderWarning(
    const Preview& all, size_t column, bool dayFirst,
    std::string_view remedy = "change European Date Format in the menu View");

/// \param all  every row, with its state
PreviewPage PageOfPreview(Preview all);

/// \return a preview as lines of cells with tabs between: "row", "state", "reason" and the captions,
///         then each row; tabs and line ends within a cell become blanks
std::string PreviewText(const Preview& preview);

}  // namespace orvane
