#pragma once

#include "formats/format_module.h"

namespace orvane {

/// `FormatModule::listSheets`.
SheetList ListSheets(const SpreadsheetFile& file);

/// `FormatModule::readSheet`.
std::string ReadSheetRows(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                          const RowTaker& take);

}  // namespace orvane
