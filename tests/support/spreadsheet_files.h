#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// Spreadsheets as spreadsheet programs write them, for tests.

/// A part of a zip file.
struct ZipPart {
  std::string name;
  std::string bytes;
};

/// \return a zip file of unpacked parts
std::string ZipOf(const std::vector<ZipPart>& parts);

/// A sheet: its name, and its content in the words of the format.
using SheetContent = std::pair<std::string, std::string>;

/// \param sheets   the `row` elements of each. Styles of cells: 0 none, 1 yyyy-mm-dd, 2 h:mm,
///                 3 d/m/yy h:mm, 4 [h]:mm, 5 own format 14, 6 own format 22, 7 h:mm:ss AM/PM,
///                 8 0.00 "days", 9 to 18 own formats 27 to 36, 19 to 23 own formats 50 to 54
/// \param shared   texts that cells name by their number, as the content of `si` elements
/// \param origin   an attribute of the workbook, such as date1904="1"
std::string XlsxOf(const std::vector<SheetContent>& sheets,
                   const std::vector<std::string>& shared = {}, const std::string& origin = "");

/// \param sheets  the `table:table-row` elements of each. Styles of cells: "date", "time", "both",
///                "child", which has "both" as its parent, and "elapsed"
std::string OdsOf(const std::vector<SheetContent>& sheets, const std::string& before = "");

/// A cell of an `.xls` file: a text, or a number in a style: 0 none, 1 a date, 2 a time, 3 both.
struct XlsCell {
  int row = 0;
  int column = 0;
  std::string text;
  double number = 0;
  int style = 0;
};

std::string XlsOf(const std::vector<std::pair<std::string, std::vector<XlsCell>>>& sheets);

}  // namespace orvane
