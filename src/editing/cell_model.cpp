#include "editing/cell_model.h"

#include "base/field_text.h"
#include "base/utf8.h"

#include <algorithm>

namespace orvane {

bool CommitCell(CellModel& model, size_t row, size_t column, std::string_view text) {
  return model.SetCell(row, column, FieldText(CutText(text, MostCellBytes)));
}

PasteResult PasteCells(CellModel& model, size_t row, size_t column,
                       const std::vector<std::vector<std::string>>& rows) {
  const size_t columns = model.Columns().size();
  PasteResult first = {.row = std::min(row, model.RowCount()), .column = column};
  for (const std::vector<std::string>& texts : rows) {
    row = std::min(row, model.RowCount());
    for (size_t i = 0; i < texts.size() && column + i < columns; ++i) {
      if (!CommitCell(model, row, column + i, texts[i])) {
        return {.row = row, .column = column + i, .refused = texts[i]};
      }
    }
    ++row;
  }
  return first;
}

std::string RowAsText(const CellModel& model, size_t row) {
  std::string text;
  for (size_t column = 0; column < model.Columns().size(); ++column) {
    if (column > 0) text += '\t';
    text += model.GetCell(row, column);
  }
  return text;
}

}  // namespace orvane
