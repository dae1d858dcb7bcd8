#pragma once

#include "editing/cell_table.h"

#include <QPointer>
#include <QTableView>

#include <optional>
#include <vector>

class QLineEdit;

namespace orvane {

class CellItemModel;
class HintHeader;
class RowHandles;

/// The cell table of an editor: captions, the rows of a model with a blank one under them, and one
/// edit field over the open cell. `CellTable` knows what each key and press does; this class shows it.
///
/// In the edit field Tab, Return and the arrows up and down go to another cell, Escape brings the old
/// text back and then closes the cell. Without an open cell the arrows select rows, with Alt they move
/// the selected one, and Return opens the current cell.
class CellTableView final : public QTableView {
  Q_OBJECT

 public:
  /// \param model   must outlive the view
  /// \param widths  of the columns in pixels; follows the user, and gets the initial ones of columns
  ///                that it lacks; must outlive the view
  CellTableView(CellModel& model, std::vector<int>& widths, QWidget* parent);

  CellTable& Table() { return table_; }
  const CellTable& Table() const { return table_; }
  QLineEdit& EditField() { return *edit_; }

  /// The model shows other columns. An open cell is closed and its typed text dropped.
  void ShowColumns(std::vector<int>& widths);
  /// The model has got a row at its end.
  void RowAdded();
  /// Opens a cell; a typed text must have been committed.
  void OpenCell(size_t row, size_t column);
  /// Gives the keyboard to the open cell, or opens the current one.
  void Enter();

  /// Commits a typed text. \return false, after a message, if it is refused
  bool Commit();
  /// Commits a typed text and closes the cell or ends the selection.
  /// \return false, after a message, if the text is refused
  bool Leave();
  /// On the selected row; a beep if that can't be.
  void InsertRow();
  void DeleteRow();

  /// What the open cell, or a selected row, does with the clipboard. Several cells are pasted from the
  /// open one on.
  void Cut();
  void Copy();
  void Paste();

  int RowHeight() const { return rowHeight_; }
  QSize sizeHint() const override;

 Q_SIGNALS:
  void stateChanged(orvane::CellTableState state);
  /// A cell was stored, or rows came, went or moved.
  void cellsChanged();
  /// Something was typed into the edit field.
  void textEdited();
  /// What the user wanted can't be.
  void declined();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  /// A column edge or a row under the mouse, in pixels of the body.
  struct Drag {
    size_t column = 0;
    int start = 0;
    int now = 0;
  };

  void MakeHeaders();
  void MakeEditField();
  void FillWidths();
  /// The width that shows the cells of a column whole, and its `widest`; of the first rows, and bounded.
  int WidthOfCells(size_t column) const;
  void LayOutColumns();
  /// Keeps the width of a column whose edge the user has moved.
  void FollowWidth(size_t column, int difference);
  /// A last column that was made wider reaches to the end of the table, no farther than it needs. One
  /// that was made narrower does so when the table gets another size.
  void FitLastColumn();
  size_t RowAt(int y) const;
  /// Those that are showing; see `ColumnEdges`.
  std::vector<int> Edges() const;
  int TableX(int x) const;
  /// Shows what an operation on the table has changed. \param accepted  its result
  void Follow(bool accepted);
  void FollowPress(CellPress press);
  void ShowOpenCell();
  void PlaceEditField();
  void BringIntoView(size_t row);
  void FollowSelection();
  bool IsEditing() const { return table_.State() == CellTableState::Editing; }
  bool PressKeyInField(const QKeyEvent& event);
  bool PressKeyInTable(const QKeyEvent& event);
  void SelectNear(std::ptrdiff_t way);
  void MoveSelected(std::ptrdiff_t way);
  void PressHandle(int y);
  void DropRowAt(int y);
  void EndResize();
  void ShowFieldMenu(QPoint global);

  CellModel& model_;
  CellTable table_;
  std::vector<int>* widths_;
  CellItemModel* items_;
  HintHeader* header_ = nullptr;
  RowHandles* handles_ = nullptr;
  QLineEdit* edit_ = nullptr;
  QWidget* cornerCover_ =
      nullptr;  ///< hides the button of the toolkit between captions and handles
  int rowHeight_ = 0;
  CellTableState shownState_ = CellTableState::Idle;
  std::string shownText_;  ///< of the open cell before the user typed
  std::optional<Drag> columnDrag_;
  std::optional<Drag> rowDrag_;
  bool layingOut_ = false;
};

}  // namespace orvane
