#pragma once

#include "formats/format_module.h"

namespace orvane {

/// `.ods`. GDAL unpacks it, and the cells are read here, row by row: GDAL's own reader keeps a sheet in
/// memory, and gives midnight of a date with a time of day as a date.

SheetList ListOdsSheets(const SpreadsheetFile& file);
std::string ReadOdsSheet(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                         const RowTaker& take);

}  // namespace orvane
