#include "shell/map/map_area.h"

#include "shell/map/info_panel_widget.h"
#include "shell/map/map_view.h"

#include <QGridLayout>
#include <QScrollBar>

namespace orvane {

MapArea::MapArea(Map& map, QWidget* parent)
    : QWidget(parent),
      view_(new MapView(map, this)),
      info_(new InfoPanelWidget(*view_)),
      vertical_(MakeBar(Qt::Vertical)),
      horizontal_(MakeBar(Qt::Horizontal)) {
  vertical_->setAccessibleName(QStringLiteral("Move the map up or down"));
  horizontal_->setAccessibleName(QStringLiteral("Move the map left or right"));
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(view_, 0, 0);
  layout->addWidget(vertical_, 0, 1);
  layout->addWidget(horizontal_, 1, 0);
}

QScrollBar* MapArea::MakeBar(Qt::Orientation orientation) {
  auto* bar = new QScrollBar(orientation, this);
  bar->setRange(0, ScrollRange - ScrollProportion);
  bar->setPageStep(ScrollProportion);
  bar->setValue(ScrollRest);
  bar->setFocusPolicy(Qt::NoFocus);
  connect(bar, &QScrollBar::actionTriggered, this,
          [this, bar](int action) { FollowAction(*bar, action); });
  connect(bar, &QScrollBar::sliderReleased, this,
          [this, bar] { Scroll(*bar, ScrollAction::Thumb, bar->sliderPosition()); });
  return bar;
}

void MapArea::FollowAction(QScrollBar& bar, int action) {
  switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
      return Scroll(bar, ScrollAction::LineBack, 0);
    case QAbstractSlider::SliderSingleStepAdd:
      return Scroll(bar, ScrollAction::LineForward, 0);
    case QAbstractSlider::SliderPageStepSub:
    case QAbstractSlider::SliderToMinimum:
      return Scroll(bar, ScrollAction::PageBack, 0);
    case QAbstractSlider::SliderPageStepAdd:
    case QAbstractSlider::SliderToMaximum:
      return Scroll(bar, ScrollAction::PageForward, 0);
    case QAbstractSlider::SliderMove:
      // The wheel moves the thumb without holding it.
      return Scroll(bar, bar.isSliderDown() ? ScrollAction::ThumbTrack : ScrollAction::Thumb,
                    bar.sliderPosition());
    default:
      return;
  }
}

void MapArea::Scroll(QScrollBar& bar, ScrollAction action, int position) {
  MapWindow& view = view_->Shown();
  const int rest = &bar == vertical_ ? ScrollVertically(view, action, position)
                                     : ScrollHorizontally(view, action, position);
  // During an action the bar takes the slider's position afterwards, otherwise at once.
  bar.setSliderPosition(rest);
  bar.setValue(rest);
  view_->ShowMoved();
}

void MapArea::resizeEvent(QResizeEvent*) {
  vertical_->setValue(ScrollRest);
  horizontal_->setValue(ScrollRest);
}

}  // namespace orvane
