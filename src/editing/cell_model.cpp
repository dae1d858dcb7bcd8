#include "editing/cell_model.h"

#include <algorithm>

namespace orvane {

bool CommitCell(CellModel& model, size_t row, size_t column, std::string_view text) {
  return model.SetCell(row, column, text.substr(0, MostCellBytes));
}

bool PasteCells(CellModel& model, size_t row, size_t column,
                const std::vector<std::vector<std::string>>& rows) {
  const size_t columns = model.Columns().size();
  for (const std::vector<std::string>& texts : rows) {
    row = std::min(row, model.RowCount());
    for (size_t i = 0; i < texts.size() && column + i < columns; ++i) {
      if (!model.SetCell(row, column + i, texts[i])) return false;
    }
    ++row;
  }
  return true;
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
