#pragma once

#include "editing/cell_model.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What a cell table is doing. The edit field and the selection exclude each other.
enum class CellTableState { Idle, Editing, RowSelected };

/// What a press of the mouse came to.
enum class CellPress {
  Done,      ///< the table shows its new state
  DragRow,   ///< on the handle of the selected row: a drag begins
  Refused,   ///< the open text is refused; beep
  OutOfRows  ///< under the blank row; beep
};

/// The cell table without its widgets: which cell is open, which row is selected, and what keys and
/// presses do to them. Under the rows of the model there is a blank one; a text that goes there
/// makes a row.
///
/// A text that the model refuses stays in the edit field, and nothing else happens.
class CellTable {
 public:
  /// \param model  must outlive the table
  explicit CellTable(CellModel& model) : model_(model) {}

  CellModel& Model() const { return model_; }

  CellTableState State() const { return state_; }
  /// The open cell, or the one that was open last; the current row follows a selection.
  size_t CurrentRow() const { return row_; }
  size_t CurrentColumn() const { return column_; }
  std::optional<size_t> SelectedRow() const;
  /// With the blank row.
  size_t ShownRows() const { return model_.RowCount() + 1; }

  /// The text of the edit field.
  const std::string& Text() const { return text_; }
  /// The user has typed.
  void SetText(std::string_view text);
  /// True for a text that was typed and not committed.
  bool HasTypedText() const { return state_ == CellTableState::Editing && typed_; }

  /// Opens a cell with the text that it shows. Does nothing in a read-only table.
  void BeginEdit(size_t row, size_t column);
  /// Commits a typed text; the cell stays open.
  /// \return false, after a message, if it is refused
  bool Commit();
  /// Brings back the text of the open cell or, if it was not changed, closes the cell.
  void Escape();
  /// Closes a cell and ends a selection; a typed text is dropped.
  void Clear();

  // --- Keys in the edit field. A refusal leaves everything as it is. -----------------------------

  /// To the right, then to the next row; after the blank row to the first.
  bool NextCell();
  /// To the left, then to the row above; before the first row to the last one of the model.
  bool PreviousCell();
  /// Return: in the first column the entry ends, elsewhere it continues at the start of the next row.
  bool EndLine();
  /// The cell above or below, if there is one.
  bool CellAbove();
  bool CellBelow();

  // --- Presses ------------------------------------------------------------------------------------

  CellPress PressCell(size_t row, size_t column);
  CellPress PressHandle(size_t row);

  // --- Rows ---------------------------------------------------------------------------------------

  /// Selects a row without the mouse.
  /// \return false, after a message, if an open text is refused
  bool SelectRow(size_t row);
  /// These work on the selected row. \return false to beep
  bool InsertRow();
  bool DeleteRow();
  /// \param to  the row on which it is dropped; from the blank row on it becomes the last. The
  ///            selection stays where it is.
  bool MoveRow(size_t to);

  /// Pastes text with tabs and line ends from the open cell on. A refused text is left in the edit
  /// field of its cell.
  /// \return false, after a message, if one is refused
  bool Paste(std::string_view text);

 private:
  bool GoTo(size_t row, size_t column);

  CellModel& model_;
  CellTableState state_ = CellTableState::Idle;
  size_t row_ = 0;
  size_t column_ = 0;
  std::string text_;
  bool typed_ = false;
};

/// The texts of cells that were copied from a spreadsheet or a table: tabs between cells, line ends
/// between rows. A line end after the last row makes no row.
std::vector<std::vector<std::string>> CellsOfText(std::string_view text);

/// Pixels left of the first column: the handles of the rows.
constexpr int RowHandleWidth = 3;

/// The edges of columns, in pixels: `RowHandleWidth`, then the right edge of each column. The last one
/// reaches at least to the end of the table.
std::vector<int> ColumnEdges(const std::vector<int>& widths, int tableWidth);

/// \return the column whose right edge is at a pixel of the table, to within one pixel
std::optional<size_t> ColumnEdgeAt(const std::vector<int>& edges, int x);

/// \return the column under a pixel, the last for pixels beyond
size_t ColumnAt(const std::vector<int>& edges, int x);

/// The least that a column keeps when its edge is dragged, in pixels.
constexpr int LeastColumnWidth = 8;

/// The widths of columns are meant for letters whose digits are 20/3 pixels wide: those of 12 points
/// where a point is a pixel.
/// \param digit    width of a digit of the cells, in pixels
/// \param caption  width of the caption, in pixels, which shows whole
/// \return the initial width
int WidthForLetters(int width, double digit, int caption);

/// The row at the top of the table after a row was brought into view: the same if that shows it
/// whole, else the one above the row, or the row itself where that shows no more.
/// \param rows    shown rows, with the blank one
/// \param height  of the body, in pixels
size_t TopRowShowing(size_t row, size_t topRow, size_t rows, int height, int rowHeight);

/// \return how many rows a page of the scroll bar moves
int RowsOfPage(int height, int rowHeight);

/// \return the row on which a drag ends: `y` pixels below the top of the row `topRow`
size_t DropRow(int y, size_t topRow, size_t rows, int rowHeight);

}  // namespace orvane
