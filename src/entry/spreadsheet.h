#pragma once

#include "base/messages.h"
#include "formats/spreadsheets.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Spreadsheets, `.xlsx`, `.xls` and `.ods`, wherever a table is imported. The module of file formats
/// reads them.

/// Chooses one of several sheets by its name. For a file without sheets, such as a text, the list is
/// empty, and to return a name is an error. \return nothing to cancel the import
using SheetChooser = std::function<std::optional<std::string>(const std::vector<std::string>&)>;

/// \return a chooser that takes the sheet of this name
SheetChooser ChooseNamed(const std::string& name);

/// Asks the user for one of several sheets, as a `SheetChooser`. It asks nothing if there are fewer.
/// \param title  of the box
std::optional<std::string> AskForSheet(Messages& messages, const std::string& title,
                                       const std::vector<std::string>& names);

/// \return true if the name ends like that of a spreadsheet, in any case
bool IsSpreadsheetName(std::string_view path);

/// Reads a sheet as lines of cells, UTF-8, with tabs between; tabs and line ends within a cell become
/// blanks. The number of a line is that of the row. Dates of true cells are written as "2003-03-04".
/// \param bytes   the content of the file
/// \param choose  is asked if there are several sheets; without it the first is read, with a note
/// \param quotes  puts cells that begin with a double quote in quotes, as separated tables have them
/// Cells of `.xls` files with formulas come empty and those with errors as 1; a note says so.
/// \return nothing after an error, or if no sheet was chosen
std::optional<std::string> ReadSpreadsheet(Messages& messages, const std::string& path,
                                           std::string_view bytes, const SheetChooser& choose,
                                           ClockForm clock, bool quotes);

/// Looks whether a sheet is wanted of a file that is not a spreadsheet.
/// \return true after an error that says that the file does not have it
bool WantsMissingSheet(Messages& messages, const std::string& path, const SheetChooser& choose);

/// Appends a cell to a line of cells with tabs between; tabs and line ends in it become blanks.
void AppendCell(std::string& text, std::string_view cell);

}  // namespace orvane
