#include "entry/sheet_file.h"

#include "base/field_text.h"
#include "base/files.h"
#include "base/text.h"
#include "base/utf8.h"
#include "entry/separated_table.h"
#include "entry/spreadsheet.h"

#include <algorithm>

namespace orvane {

namespace {

bool IsCsvName(std::string_view path) {
  constexpr std::string_view Extension = ".csv";
  return path.size() >= Extension.size() &&
         SameName(path.substr(path.size() - Extension.size()), Extension);
}

bool IsUtf16(std::string_view text) {
  return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

}  // namespace

std::optional<FollowSheet> ReadSheet(Messages& messages, const std::string& path,
                                     const SheetChooser& choose) {
  const auto bytes = ReadWholeFile(path);
  if (!bytes) {
    NoteError(messages, "Can not open %s", {path});
    return std::nullopt;
  }
  FollowSheet sheet;
  if (IsSpreadsheetName(path)) {
    auto rows = ReadSpreadsheet(messages, path, *bytes, choose, ClockForm::Minutes, false);
    if (!rows) return std::nullopt;
    sheet.text = std::move(*rows);
    return sheet;
  }
  if (WantsMissingSheet(messages, path, choose)) return std::nullopt;
  if (IsCsvName(path)) {
    sheet = SheetFromCsv(*bytes);
  } else if (IsUtf16(*bytes)) {
    NoteError(messages, "File %s is in UTF-16, which can't be read; save it as plain text", {path});
    return std::nullopt;
  } else {
    sheet.text = bytes->substr(bytes->starts_with(Utf8Mark) ? Utf8Mark.size() : 0);
  }
  if (sheet.text.find('\0') != std::string::npos) {
    NoteError(messages, "File %s holds bytes that are not text; it may be damaged", {path});
  }
  return sheet;
}

FollowSheet SheetFromCsv(std::string_view bytes) {
  const std::string table = TableText(std::string(bytes));
  FollowSheet sheet;
  sheet.separator = SeparatorOf(table);
  TableRows rows(table, sheet.separator);
  for (TableRow row; rows.Next(row);) {
    for (size_t i = 0; i < row.cells.size(); ++i) {
      if (i > 0) sheet.text += '\t';
      sheet.text += FieldText(row.cells[i]);
    }
    sheet.text += '\n';
    sheet.rowLines.push_back(row.line);
  }
  return sheet;
}

}  // namespace orvane
