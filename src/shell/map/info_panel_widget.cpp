#include "shell/map/info_panel_widget.h"

#include "shell/map/map_view.h"
#include "view/pointer.h"

#include <QEvent>

namespace orvane {

InfoPanelWidget::InfoPanelWidget(MapView& view) : InfoRowsWidget(view), view_(view) {
  setObjectName(QStringLiteral("infoPanel"));
  setAccessibleName(QStringLiteral("Information about the place under the pointer"));
  soon_.setSingleShot(true);
  soon_.setInterval(0);
  connect(&soon_, &QTimer::timeout, this, &InfoPanelWidget::Refresh);
  connect(&view_, &MapView::pointerMoved, this, &InfoPanelWidget::RefreshSoon);
  connect(&view_, &MapView::viewChanged, this, &InfoPanelWidget::RefreshSoon);
  view_.installEventFilter(this);
}

bool InfoPanelWidget::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
    ForgetSize();
    RefreshSoon();
  }
  return false;
}

void InfoPanelWidget::Refresh() {
  soon_.stop();
  const MapWindow& view = view_.Shown();
  const bool shown = (view.flags & MapWindowInfoShown) != 0 && view_.Fonts() != nullptr;
  if (!shown) {
    hide();
    return;
  }
  const bool band = IsBandDrawn(view);
  if (band != bandShown_) ForgetSize();
  bandShown_ = band;
  ShowRows(InfoRows(view, view_.Altitudes()), *view_.Fonts(), view.background);
}

}  // namespace orvane
