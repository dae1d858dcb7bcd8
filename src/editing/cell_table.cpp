#include "editing/cell_table.h"

#include <algorithm>
#include <cmath>

namespace orvane {

std::optional<size_t> CellTable::SelectedRow() const {
  if (state_ != CellTableState::RowSelected) return std::nullopt;
  return row_;
}

void CellTable::SetText(std::string_view text) {
  if (state_ != CellTableState::Editing || text == text_) return;
  text_ = text;
  typed_ = true;
}

void CellTable::BeginEdit(size_t row, size_t column) {
  if (model_.IsReadOnly()) return;
  row_ = std::min(row, model_.RowCount());
  column_ = std::min(column, model_.Columns().size() - 1);
  text_ = model_.GetCell(row_, column_);
  typed_ = false;
  state_ = CellTableState::Editing;
}

bool CellTable::Commit() {
  if (!HasTypedText()) return true;
  if (!CommitCell(model_, row_, column_, text_)) return false;
  typed_ = false;
  return true;
}

void CellTable::Escape() {
  if (HasTypedText()) {
    BeginEdit(row_, column_);
  } else {
    Clear();
  }
}

void CellTable::Clear() {
  state_ = CellTableState::Idle;
  typed_ = false;
  text_.clear();
}

// --- Keys ---------------------------------------------------------------------------------------

bool CellTable::GoTo(size_t row, size_t column) {
  BeginEdit(row, column);
  return true;
}

bool CellTable::NextCell() {
  if (!Commit()) return false;
  if (column_ + 1 < model_.Columns().size()) return GoTo(row_, column_ + 1);
  return GoTo(row_ < model_.RowCount() ? row_ + 1 : 0, 0);
}

bool CellTable::PreviousCell() {
  if (!Commit()) return false;
  if (column_ > 0) return GoTo(row_, column_ - 1);
  const size_t last = model_.Columns().size() - 1;
  if (row_ > 0) return GoTo(row_ - 1, last);
  // Without a row of the model only the blank one is left.
  return GoTo(std::max<size_t>(model_.RowCount(), 1) - 1, last);
}

bool CellTable::EndLine() {
  if (!Commit()) return false;
  if (column_ == 0) {
    Clear();
    return true;
  }
  return GoTo(row_ + 1, 0);
}

bool CellTable::CellAbove() {
  if (!Commit()) return false;
  return row_ == 0 || GoTo(row_ - 1, column_);
}

bool CellTable::CellBelow() {
  if (!Commit()) return false;
  return row_ == model_.RowCount() || GoTo(row_ + 1, column_);
}

// --- Presses ------------------------------------------------------------------------------------

CellPress CellTable::PressCell(size_t row, size_t column) {
  if (!Commit()) return CellPress::Refused;
  Clear();
  if (row > model_.RowCount()) return CellPress::OutOfRows;
  row_ = row;
  column_ = column;
  BeginEdit(row, column);
  return CellPress::Done;
}

CellPress CellTable::PressHandle(size_t row) {
  if (SelectedRow() == row) return CellPress::DragRow;
  if (!Commit()) return CellPress::Refused;
  Clear();
  if (row > model_.RowCount()) return CellPress::OutOfRows;
  row_ = row;
  state_ = CellTableState::RowSelected;
  return CellPress::Done;
}

// --- Rows ---------------------------------------------------------------------------------------

bool CellTable::SelectRow(size_t row) {
  if (!Commit()) return false;
  Clear();
  row_ = std::min(row, model_.RowCount());
  state_ = CellTableState::RowSelected;
  return true;
}

bool CellTable::InsertRow() {
  return SelectedRow() && !model_.IsReadOnly() && model_.InsertRow(row_);
}

bool CellTable::DeleteRow() {
  if (!SelectedRow() || model_.IsReadOnly()) return false;
  model_.DeleteRow(row_);
  return true;
}

bool CellTable::MoveRow(size_t to) {
  if (!SelectedRow() || model_.IsReadOnly() || row_ >= model_.RowCount()) return false;
  if (to != row_) model_.MoveRow(row_, to);
  return true;
}

bool CellTable::Paste(std::string_view text) {
  if (state_ != CellTableState::Editing) return true;
  const PasteResult result = PasteCells(model_, row_, column_, CellsOfText(text));
  BeginEdit(result.row, result.column);
  if (!result.refused) return true;
  text_ = *result.refused;
  typed_ = true;
  return false;
}

std::vector<std::vector<std::string>> CellsOfText(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    rows.emplace_back();
    for (size_t start = 0; start <= line.size();) {
      const size_t tab = std::min(line.find('\t', start), line.size());
      rows.back().emplace_back(line.substr(start, tab - start));
      start = tab + 1;
    }
  }
  return rows;
}

// --- Geometry -----------------------------------------------------------------------------------

std::vector<int> ColumnEdges(const std::vector<int>& widths, int tableWidth) {
  std::vector<int> edges = {RowHandleWidth};
  for (const int width : widths) edges.push_back(edges.back() + width);
  edges.back() = std::max(edges.back(), tableWidth);
  return edges;
}

std::optional<size_t> ColumnEdgeAt(const std::vector<int>& edges, int x) {
  for (size_t i = 1; i < edges.size(); ++i) {
    if (x >= edges[i] - 1 && x < edges[i] + 1) return i - 1;
  }
  return std::nullopt;
}

size_t ColumnAt(const std::vector<int>& edges, int x) {
  const size_t columns = edges.size() - 1;
  size_t column = 0;
  while (column + 1 < columns && edges[column + 1] < x) ++column;
  return column;
}

int WidthForLetters(int width, double digit, int caption) {
  constexpr double PlainDigit = 20.0 / 3;
  constexpr int BesideCaption = 6;
  const int forCells = static_cast<int>(std::lround(width * std::max(1.0, digit / PlainDigit)));
  return std::max(forCells, caption + BesideCaption);
}

size_t TopRowShowing(size_t row, size_t topRow, size_t rows, int height, int rowHeight) {
  const auto whole = static_cast<size_t>(std::max(height / rowHeight, 0));
  if (row < topRow || row >= topRow + whole) {
    const size_t above = row == 0 ? 0 : row - 1;
    topRow = row < above + whole ? above : row;
  }
  // The last page is full.
  const size_t page = std::clamp<size_t>(whole, 1, rows);
  return std::min(topRow, rows - page);
}

int RowsOfPage(int height, int rowHeight) { return std::max(height / rowHeight - 2, 1); }

size_t DropRow(int y, size_t topRow, size_t rows, int rowHeight) {
  // Above the table is the row above its top row, and so on.
  const auto row = static_cast<std::ptrdiff_t>(topRow) +
                   static_cast<std::ptrdiff_t>(std::floor(double(y) / rowHeight));
  return static_cast<size_t>(
      std::clamp<std::ptrdiff_t>(row, 0, static_cast<std::ptrdiff_t>(rows) - 1));
}

}  // namespace orvane
