#include "shell/map/map_panes.h"

#include "shell/map/divider_handle.h"
#include "shell/map/map_area.h"
#include "shell/map/map_view.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRubberBand>
#include <QStyle>

namespace orvane {
namespace {

QRect ToRect(const PixelRect& rect) {
  return QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

Pixel ToPixel(QPoint at) { return {at.x(), at.y()}; }

/// The smallest size of a list.
int LeastPane(const QWidget& widget) {
  return widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
}

}  // namespace

MapPanes::MapPanes(Map& map, const PaneSizes& sizes, QWidget* parent)
    : QWidget(parent),
      area_(new MapArea(map, this)),
      trails_(new TrailPane(area_->View().Shown(), this)),
      ranges_(new RangePane(area_->View().Shown(), this)),
      besideMap_(MakeHandle(PaneDivider::BesideMap,
                            QStringLiteral("Divider between the lists and the map"))),
      betweenLists_(
          MakeHandle(PaneDivider::BetweenLists, QStringLiteral("Divider between the two lists"))),
      focusRectangle_(new QRubberBand(QRubberBand::Line, this)),
      dragRectangle_(new QRubberBand(QRubberBand::Rectangle, this)),
      wanted_(sizes) {
  setMouseTracking(true);
  // The panes have their own cursor; only the dividers use that of this widget.
  for (QWidget* pane : {static_cast<QWidget*>(trails_), static_cast<QWidget*>(ranges_),
                        static_cast<QWidget*>(area_)}) {
    pane->setCursor(Qt::ArrowCursor);
  }
  trails_->Rows().installEventFilter(this);
  ranges_->Rows().installEventFilter(this);
  View().installEventFilter(this);
  // From list to list, then to the map.
  setTabOrder(&trails_->Rows(), &ranges_->Rows());
  setTabOrder(&ranges_->Rows(), &View());
  connect(trails_, &TrailPane::rowsDragged, this, &MapPanes::FollowDrag);
  connect(trails_, &TrailPane::dragCanceled, this, &MapPanes::EndDrag);
}

MapView& MapPanes::View() { return area_->View(); }

void MapPanes::ShowRows() {
  trails_->Rows().ShowRows();
  ranges_->Rows().ShowRows();
}

void MapPanes::ShowChangedRows() {
  trails_->Rows().ShowChangedRows();
  ranges_->Rows().ShowChangedRows();
}

void MapPanes::FollowDrag(QPoint global, bool end) {
  RangePanelRow* row = ranges_->RowAtHeight(global);
  if (end) {
    EndDrag();
    if (row != nullptr) Q_EMIT trailsDropped(row);
    return;
  }
  ranges_->SetDropTarget(row);
  const int height = trails_->Rows().RowHeight();
  dragRectangle_->setGeometry(0, mapFromGlobal(global).y() - height / 2, ranges_->width(), height);
  dragRectangle_->raise();
  dragRectangle_->show();
}

void MapPanes::EndDrag() {
  ranges_->SetDropTarget(nullptr);
  dragRectangle_->hide();
}

DividerHandle* MapPanes::MakeHandle(PaneDivider divider, const QString& name) {
  auto* handle = new DividerHandle(divider, name, this);
  connect(handle, &DividerHandle::stepRequested, this, [this, divider](int pixels) {
    TakeSize(divider, SizesAfterStep(layout_, divider, pixels, LeastPane(*this)));
  });
  connect(handle, &DividerHandle::leaveRequested, this,
          [this] { View().setFocus(Qt::TabFocusReason); });
  return handle;
}

void MapPanes::SetSizes(const PaneSizes& sizes) {
  wanted_ = sizes;
  LayOut();
}

void MapPanes::LayOut() {
  layout_ = LayOutPanes(width(), height(), wanted_, LeastPane(*this));
  const auto place = [](QWidget* pane, const PixelRect& rect) {
    pane->setGeometry(ToRect(rect));
    pane->setVisible(rect.right > rect.left && rect.bottom > rect.top);
  };
  place(trails_, layout_.trails);
  place(ranges_, layout_.ranges);
  place(besideMap_, layout_.besideMap);
  place(betweenLists_, layout_.betweenLists);
  area_->setGeometry(ToRect(layout_.map));
}

void MapPanes::resizeEvent(QResizeEvent*) { LayOut(); }

void MapPanes::keyPressEvent(QKeyEvent* event) {
  // Escape ends what the map is about wherever the keyboard is, unless a pane has used the key.
  if (event->key() != Qt::Key_Escape || !View().EndModes()) QWidget::keyPressEvent(event);
}

void MapPanes::ShowFocusRectangle(QPoint at) {
  const int half = DividerSize / 2;
  const QRect place = dragged_ == PaneDivider::BesideMap
                          ? QRect(at.x() - half, 0, DividerSize, height())
                          : QRect(0, at.y() - half, width(), DividerSize);
  focusRectangle_->setGeometry(place);
  focusRectangle_->raise();
  focusRectangle_->show();
}

void MapPanes::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || dragged_ != PaneDivider::None) return;
  const QPoint at = event->position().toPoint();
  dragged_ = DividerAt(layout_, ToPixel(at));
  if (dragged_ != PaneDivider::None) ShowFocusRectangle(at);
}

void MapPanes::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (dragged_ != PaneDivider::None) {
    ShowFocusRectangle(at);
    return;
  }
  const PaneDivider under = DividerAt(layout_, ToPixel(at));
  if (under == PaneDivider::BesideMap) setCursor(Qt::SplitHCursor);
  if (under == PaneDivider::BetweenLists) setCursor(Qt::SplitVCursor);
  if (under == PaneDivider::None) unsetCursor();
}

void MapPanes::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || dragged_ == PaneDivider::None) return;
  focusRectangle_->hide();
  const PaneDivider divider = dragged_;
  dragged_ = PaneDivider::None;
  TakeSize(divider, SizesAfterDrop(layout_, divider, ToPixel(event->position().toPoint())));
}

void MapPanes::TakeSize(PaneDivider divider, const PaneSizes& sizes) {
  int PaneSizes::*const moved =
      divider == PaneDivider::BesideMap ? &PaneSizes::panelWidth : &PaneSizes::panelHeight;
  wanted_.*moved = sizes.*moved;
  LayOut();
  wanted_.*moved = layout_.sizes.*moved;
  Q_EMIT dividerMoved(divider, wanted_.*moved);
}

void MapPanes::leaveEvent(QEvent*) {
  if (dragged_ == PaneDivider::None) unsetCursor();
}

bool MapPanes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) FollowFocus(qobject_cast<QWidget*>(watched));
  if (event->type() == QEvent::FocusOut) {
    // A menu or a box returns the focus; another part of this window sends its own event.
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
        reason == Qt::MouseFocusReason || reason == Qt::OtherFocusReason) {
      FollowFocus(QApplication::focusWidget());
    }
  }
  return false;
}

void MapPanes::FollowFocus(QWidget* now) {
  FocusPlace place = FocusPlace::Neither;
  if (now == &trails_->Rows()) place = FocusPlace::TrailList;
  if (now == &ranges_->Rows()) place = FocusPlace::RangeList;
  if (now == &View()) place = FocusPlace::MapView;
  if (place == focus_) return;
  focus_ = place;
  Q_EMIT focusPlaceChanged(place);
}

}  // namespace orvane
