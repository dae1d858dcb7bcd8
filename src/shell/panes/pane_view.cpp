#include "shell/panes/pane_view.h"

#include "shell/panes/hint_box.h"
#include "shell/panes/pane_row_delegate.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// Milliseconds that the pointer rests on a row before its tip is shown.
constexpr int TipDelay = 1500;
/// Pixels that the pointer moves before a press becomes a drag.
constexpr int DragDistance = 4;

}  // namespace

PaneZone ZoneAt(int x, int rowHeight) {
  if (x < PaneMargin) return PaneZone::Text;  // left of all columns
  if (x < PaneMargin + rowHeight) return PaneZone::Triangle;
  return x < PaneMargin + 2 * rowHeight ? PaneZone::Tick : PaneZone::Text;
}

PaneView::PaneView(PaneModel& model, const QString& name, QWidget* parent)
    : QTreeView(parent), model_(model) {
  setAccessibleName(name);
  setModel(&model);
  setItemDelegate(new PaneRowDelegate(model, *this, [this] { return DropTarget(); }));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIndentation(0);
  setRootIsDecorated(false);
  setExpandsOnDoubleClick(false);
  setItemsExpandable(false);  // only `ShowRows` and the like open rows
  setAutoScroll(false);       // a press must not move the row under the pointer
  setEditTriggers(NoEditTriggers);
  setFrameShape(QFrame::NoFrame);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSelectionMode(ExtendedSelection);
  setMinimumSize(1, 1);
  viewport()->setMouseTracking(true);
  // The rows have colours of their own, made for the background of the map.
  QPalette white = palette();
  white.setColor(QPalette::Base, Qt::white);
  setPalette(white);
  tipTimer_.setSingleShot(true);
  tipTimer_.setInterval(TipDelay);
  connect(&tipTimer_, &QTimer::timeout, this,
          [this] { Q_EMIT tipRequested(hovered_, hoverPoint_); });
  FollowRows();
}

int PaneView::RowHeight() const {
  const QModelIndex first = model_.index(0, 0);
  return first.isValid() ? rowHeight(first) : fontMetrics().height();
}

void PaneView::ShowRows() {
  StopTip();
  const void* current = currentIndex().internalPointer();
  const int top = verticalScrollBar()->value();
  model_.Rebuild();
  FollowRows();
  if (current != nullptr) MakeCurrent(model_.IndexOfPointer(current));
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(top);
}

void PaneView::ShowChangedRows() {
  model_.Refresh();
  FollowRows();
}

void PaneView::FollowRows() {
  for (const QModelIndex& group : model_.Groups()) {
    if (isExpanded(group) != model_.IsOpen(group)) setExpanded(group, model_.IsOpen(group));
  }
  selectionModel()->select(model_.Selected(), QItemSelectionModel::ClearAndSelect);
  viewport()->update();
}

QItemSelectionModel::SelectionFlags PaneView::selectionCommand(const QModelIndex& /*index*/,
                                                               const QEvent* /*event*/) const {
  return QItemSelectionModel::NoUpdate;
}

void PaneView::MakeCurrent(const QModelIndex& index) {
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void PaneView::SetDropTarget(const QModelIndex& index) {
  if (dropTarget_ == index) return;
  dropTarget_ = index;
  viewport()->update();
}

// --- Mouse ------------------------------------------------------------------------------------

void PaneView::mousePressEvent(QMouseEvent* event) {
  StopTip();
  if (dragging_) CancelDrag();
  pressPoint_ = event->position().toPoint();
  pressed_ = indexAt(pressPoint_);
  isPressed_ = true;
  mayDrag_ = isDraggable_ && pressed_.isValid() && model_.IsSelected(pressed_);
  if (pressed_.isValid()) {
    MakeCurrent(pressed_);
    anchor_ = pressed_;
  }
}

void PaneView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (isPressed_ && event->buttons() == Qt::NoButton) {
    // The release went to a box that came up.
    isPressed_ = false;
    if (dragging_) CancelDrag();
  }
  if (!isPressed_) {
    WatchForTip(at);
    return;
  }
  if (mayDrag_ && !dragging_ && (at - pressPoint_).manhattanLength() >= DragDistance) {
    dragging_ = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
  }
  if (dragging_) Q_EMIT rowDragged(event->globalPosition().toPoint(), false);
}

void PaneView::mouseReleaseEvent(QMouseEvent* event) {
  if (!isPressed_) return;
  isPressed_ = false;
  const QPersistentModelIndex pressed = std::exchange(pressed_, QPersistentModelIndex());
  QModelIndex under = indexAt(event->position().toPoint());
  if (dragging_ && under != pressed) {
    EndDrag();
    Q_EMIT rowDragged(event->globalPosition().toPoint(), true);
    const bool onNoRow = !under.isValid() && viewport()->rect().contains(event->pos());
    if (onNoRow) Q_EMIT rowClicked(QModelIndex(), PaneZone::Text, false);
    return;
  }
  if (dragging_) CancelDrag();
  if (under.isValid() && under != pressed) {
    if (isDraggable_) return;
    under = QModelIndex();
  }
  const PaneZone zone = ZoneAt(pressPoint_.x(), RowHeight());
  Q_EMIT rowClicked(under, zone, (event->modifiers() & Qt::ShiftModifier) != 0);
}

void PaneView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  const QModelIndex index = indexAt(at);
  // Quick clicks on a tick or a triangle are so many clicks.
  if (!index.isValid() || ZoneAt(at.x(), RowHeight()) != PaneZone::Text) {
    mousePressEvent(event);
    return;
  }
  StopTip();
  if (event->button() == Qt::LeftButton) {
    Q_EMIT editRequested(index);
  } else {
    Q_EMIT controlRequested();
  }
}

void PaneView::EndDrag() {
  dragging_ = false;
  mayDrag_ = false;
  viewport()->unsetCursor();
}

void PaneView::CancelDrag() {
  EndDrag();
  Q_EMIT dragCanceled();
}

void PaneView::WatchForTip(QPoint at) {
  hoverPoint_ = at;
  const QModelIndex under = indexAt(at);
  if (hovered_ == under) return;
  StopTip();
  hovered_ = under;
  if (under.isValid()) tipTimer_.start();
}

void PaneView::StopTip() {
  tipTimer_.stop();
  hovered_ = QPersistentModelIndex();
  HintBox::Hide();
}

bool PaneView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) StopTip();
  return QTreeView::viewportEvent(event);
}

// --- Keyboard ---------------------------------------------------------------------------------

bool PaneView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // Selects all rows; without a pane that can, the key is that of the menu.
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::SelectAll) &&
        isSignalConnected(QMetaMethod::fromSignal(&PaneView::selectAllRequested))) {
      event->accept();
      return true;
    }
  }
  return QTreeView::event(event);
}

void PaneView::ScrollTo(const QModelIndex& index) {
  if (!index.isValid()) return;
  // `scrollTo` takes the step of a page for what shows.
  QTreeView::updateGeometries();
  scrollTo(index);
  updateGeometries();
}

void PaneView::GoTo(const QModelIndex& index, Qt::KeyboardModifiers modifiers) {
  if (!index.isValid()) return;
  MakeCurrent(index);
  ScrollTo(index);
  if ((modifiers & Qt::ControlModifier) != 0) return;
  if ((modifiers & Qt::ShiftModifier) != 0) {
    if (!anchor_.isValid()) anchor_ = index;
    Q_EMIT selectionExtended(anchor_, index);
    return;
  }
  anchor_ = index;
  Q_EMIT rowClicked(index, PaneZone::Text, false);
}

bool PaneView::MoveBy(const QKeyEvent& event) {
  const auto move = [&]() -> std::optional<CursorAction> {
    switch (event.key()) {
      case Qt::Key_Up:
        return MoveUp;
      case Qt::Key_Down:
        return MoveDown;
      case Qt::Key_Home:
        return MoveHome;
      case Qt::Key_End:
        return MoveEnd;
      case Qt::Key_PageUp:
        return MovePageUp;
      case Qt::Key_PageDown:
        return MovePageDown;
      default:
        return std::nullopt;
    }
  }();
  if (!move) return false;
  GoTo(moveCursor(*move, event.modifiers()), event.modifiers());
  return true;
}

bool PaneView::OpenBy(const QKeyEvent& event) {
  const QModelIndex current = currentIndex();
  if ((event.key() != Qt::Key_Left && event.key() != Qt::Key_Right) || !current.isValid()) {
    return false;
  }
  const bool open = event.key() == Qt::Key_Right;
  if (model_.LookOf(current).hasTriangle && model_.IsOpen(current) != open) {
    Q_EMIT openRequested(current, open);
  } else if (open) {
    if (model_.IsOpen(current)) GoTo(model_.index(0, 0, current), {});
  } else {
    GoTo(current.parent(), {});
  }
  return true;
}

void PaneView::keyPressEvent(QKeyEvent* event) {
  StopTip();
  if (event->key() == Qt::Key_Escape && dragging_) {
    isPressed_ = false;
    CancelDrag();
    return;
  }
  if (event->matches(QKeySequence::SelectAll)) {
    Q_EMIT selectAllRequested();
  } else if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
    Q_EMIT deleteRequested();
  } else if (!MoveBy(*event) && !OpenBy(*event) && !ActOnCurrent(*event)) {
    QTreeView::keyPressEvent(event);
  }
}

bool PaneView::ActOnCurrent(const QKeyEvent& event) {
  const bool shift = (event.modifiers() & Qt::ShiftModifier) != 0;
  // Not every platform sends the event of a menu for these keys.
  if (event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && shift)) {
    RequestMenu();
    return true;
  }
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return false;
  switch (event.key()) {
    case Qt::Key_Space:
      if ((event.modifiers() & Qt::ControlModifier) != 0) {
        anchor_ = current;
        Q_EMIT rowClicked(current, PaneZone::Text, true);
      } else {
        Q_EMIT rowClicked(current, PaneZone::Tick, false);
      }
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      EditCurrent();
      return true;
    default:
      return false;
  }
}

bool PaneView::CanEditCurrent() const {
  return currentIndex().isValid() && !model_.LookOf(currentIndex()).fixed;
}

void PaneView::EditCurrent() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  if (!model_.IsSelected(current)) Q_EMIT rowClicked(current, PaneZone::Text, false);
  Q_EMIT editRequested(current);
}

void PaneView::keyboardSearch(const QString& text) {
  const QModelIndex before = currentIndex();
  QTreeView::keyboardSearch(text);
  if (currentIndex() != before) GoTo(currentIndex(), {});
}

void PaneView::contextMenuEvent(QContextMenuEvent* event) {
  // The second button of the mouse has a meaning of its own.
  if (event->reason() != QContextMenuEvent::Mouse) RequestMenu();
}

void PaneView::RequestMenu() {
  ScrollTo(currentIndex());
  const QRect row = visualRect(currentIndex());
  const QPoint at(PaneMargin + 2 * RowHeight(), row.isValid() ? row.bottom() : 0);
  Q_EMIT menuRequested(viewport()->mapToGlobal(at));
}

void PaneView::updateGeometries() {
  QTreeView::updateGeometries();
  verticalScrollBar()->setSingleStep(1);
  verticalScrollBar()->setPageStep(std::max(1, viewport()->height() / RowHeight() - 2));
}

void PaneView::drawBranches(QPainter* /*painter*/, const QRect& /*rect*/,
                            const QModelIndex& /*index*/) const {}

}  // namespace orvane
