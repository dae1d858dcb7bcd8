#pragma once

#include "shell/panes/pane_model.h"

#include <QPersistentModelIndex>
#include <QTimer>
#include <QTreeView>

#include <optional>

namespace orvane {

/// The columns of a pane's row, from left to right.
enum class PaneZone { Triangle, Tick, Text };

/// Which column of a row a pixel is in. Each of the first two is as wide as the row is high.
PaneZone ZoneAt(int x, int rowHeight);

/// Shows the rows of a pane and turns what the mouse and the keyboard do into requests. It changes
/// no row itself; code that does calls `ShowRows` or `ShowChangedRows`.
///
/// Which rows are selected is kept in the rows. The toolkit's selection follows them, so that screen
/// readers know it.
class PaneView final : public QTreeView {
  Q_OBJECT

 public:
  /// \param model  must outlive the view
  PaneView(PaneModel& model, const QString& name, QWidget* parent);

  /// Rows came, went or moved. The current row and the place of the scroll bar stay.
  void ShowRows();
  /// Rows are open, selected, visible or coloured in another way.
  void ShowChangedRows();

  /// Lets selected rows be dragged. A view without drags takes a release on another row than the
  /// pressed one as a click on no row.
  void SetRowsDraggable(bool draggable) { isDraggable_ = draggable; }

  /// Frames the row on which a drag would drop.
  void SetDropTarget(const QModelIndex& index);
  const QPersistentModelIndex& DropTarget() const { return dropTarget_; }

  int RowHeight() const;
  bool IsDragging() const { return dragging_; }

  /// What Return does: selects the current row and asks for its editor.
  void EditCurrent();
  /// \return true for a row other than "New"
  bool CanEditCurrent() const;

 Q_SIGNALS:
  /// The button was released on the row where it was pressed, or the keyboard did the same.
  /// \param index  invalid for a click on no row
  void rowClicked(const QModelIndex& index, orvane::PaneZone zone, bool shift);
  /// Shift and an arrow key: the rows between these two, both included, are to be selected.
  void selectionExtended(const QModelIndex& anchor, const QModelIndex& current);
  /// A row is to be open or closed.
  void openRequested(const QModelIndex& index, bool open);
  void editRequested(const QModelIndex& index);
  /// A double click with another button than the first.
  void controlRequested();
  /// The menu key was pressed.
  /// \param global  under the current row
  void menuRequested(QPoint global);
  void selectAllRequested();
  /// The key Delete.
  void deleteRequested();
  /// The pointer rests on a row.
  void tipRequested(const QModelIndex& index, QPoint at);
  /// A selected row is dragged; `end` when the button is released.
  void rowDragged(QPoint global, bool end);
  void dragCanceled();

 public:
  void keyboardSearch(const QString& text) override;

 protected:
  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void updateGeometries() override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void FollowRows();
  void MakeCurrent(const QModelIndex& index);
  void ScrollTo(const QModelIndex& index);
  void GoTo(const QModelIndex& index, Qt::KeyboardModifiers modifiers);
  bool MoveBy(const QKeyEvent& event);
  bool OpenBy(const QKeyEvent& event);
  bool ActOnCurrent(const QKeyEvent& event);
  void RequestMenu();
  void EndDrag();
  void CancelDrag();
  void WatchForTip(QPoint at);
  void StopTip();

  PaneModel& model_;
  QPersistentModelIndex pressed_;
  QPersistentModelIndex hovered_;
  QPersistentModelIndex anchor_;  ///< where a selection by keys begins
  QPersistentModelIndex dropTarget_;
  QPoint pressPoint_;
  bool isDraggable_ = false;
  bool isPressed_ = false;  ///< also where no row is
  bool mayDrag_ = false;    ///< a selected row was pressed
  bool dragging_ = false;
  QPoint hoverPoint_;
  QTimer tipTimer_;
};

}  // namespace orvane
