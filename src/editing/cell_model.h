#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A column of an editor's table.
struct CellColumn {
  std::string title;
  std::string hint;      ///< shown over the heading; lines end with "\n"
  int width = 0;         ///< pixels at first
  std::string widest{};  ///< a text that the column shows whole at first
};

/// What a cell table shows and changes: the rows of an editor. The table has one row more than the
/// model, a blank one; a text that goes there adds a row.
class CellModel {
 public:
  virtual ~CellModel() = default;

  /// The columns that are showing, from left to right.
  virtual const std::vector<CellColumn>& Columns() const = 0;
  virtual size_t RowCount() const = 0;

  /// \param column  index in `Columns()`, as in all of these
  /// \return the text of a cell; empty from the last row on
  virtual std::string GetCell(size_t row, size_t column) const = 0;

  /// Stores a text.
  /// \param row  up to `RowCount()`, which adds a row
  /// \return false, after a message, if the text is refused; then nothing has changed
  virtual bool SetCell(size_t row, size_t column, std::string_view text) = 0;

  /// \return false if no row can be inserted there
  virtual bool InsertRow(size_t row) = 0;
  /// Deletes a row; past the end nothing happens.
  virtual void DeleteRow(size_t row) = 0;
  /// Takes a row out and puts it before the row that then is at `to`, or last.
  virtual void MoveRow(size_t from, size_t to) = 0;
  /// True for a table that shows no edit field.
  virtual bool IsReadOnly() const = 0;
};

/// Bytes that the edit field of a cell takes; the rest is dropped.
constexpr size_t MostCellBytes = 999;

/// Commits the text of the edit field to its cell. A tab or line end in it becomes a blank.
/// \return false, after a message, if the text is refused
bool CommitCell(CellModel& model, size_t row, size_t column, std::string_view text);

/// Where pasting ended.
struct PasteResult {
  size_t row = 0;  ///< of the cell that took the first text or, if one was refused, of that
  size_t column = 0;
  std::optional<std::string> refused{};  ///< the text that was refused; nothing if none was
};

/// Pastes rows of cells, the first text into the given cell and those after it to its right and
/// below. Cells beyond the last column are skipped. At the first refusal the rest is not pasted;
/// what was accepted stays.
/// \param rows  of texts; an empty row leaves its row of the table as it is
PasteResult PasteCells(CellModel& model, size_t row, size_t column,
                       const std::vector<std::vector<std::string>>& rows);

/// Takes an item of a list out and puts it before the one that then is at `to`, or last.
template <typename Item>
void MoveItem(std::vector<Item>& items, size_t from, size_t to) {
  const auto at = [&](size_t index) {
    return items.begin() + static_cast<std::ptrdiff_t>(std::min(index, items.size() - 1));
  };
  if (from < to) {
    std::rotate(at(from), at(from) + 1, at(to) + 1);
  } else {
    std::rotate(at(to), at(from), at(from) + 1);
  }
}

/// The cells of a row with tabs between.
std::string RowAsText(const CellModel& model, size_t row);

}  // namespace orvane
