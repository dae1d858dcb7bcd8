#pragma once

#include "formats/format_module.h"

namespace orvane {

/// `.xlsx`. GDAL unpacks it, and the cells are read here: GDAL's own reader loses the time of day of
/// formats such as "d/m/yy h:mm", takes dates that count from 1904 for others, and keeps a sheet in
/// memory, each of its rows as wide as the widest.

SheetList ListXlsxSheets(const SpreadsheetFile& file);
std::string ReadXlsxSheet(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                          const RowTaker& take);

}  // namespace orvane
