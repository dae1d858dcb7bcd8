#pragma once

#include "base/messages.h"
#include "entry/spreadsheet.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A follow sheet as an import reads it: a row a line, cells between tabs.
struct FollowSheet {
  std::string text;
  char separator = '\t';  ///< between the cells of the file
  std::vector<size_t> rowLines =
      {};  ///< the line of the file where each line of `text` begins; empty
           /// < if they are the same
};

/// Reads a sheet. A spreadsheet goes through `ReadSpreadsheet`, a file whose name ends in ".csv", in any
/// case, through `SheetFromCsv`. Any other is taken byte for byte, without a byte order mark of UTF-8.
/// \param choose  of several sheets of a spreadsheet
/// \return nothing, after an error, for a file that cannot be opened, and for one in UTF-16 that is
///         not ".csv"; nothing if no sheet was chosen, or one of a file that has no sheets. A file
///         that has bytes of value zero gives an error and is still read.
std::optional<FollowSheet> ReadSheet(Messages& messages, const std::string& path,
                                     const SheetChooser& choose = {});

/// Turns comma-separated text (see separated_table.h) into a sheet. Its separator may also be a
/// semicolon or a tab. Tabs and line ends within a cell become blanks. The text is UTF-8
/// afterwards.
FollowSheet SheetFromCsv(std::string_view bytes);

}  // namespace orvane
