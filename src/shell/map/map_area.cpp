#include "shell/map/map_area.h"

#include "shell/map/map_view.h"

#include <QVBoxLayout>

namespace orvane {

MapArea::MapArea(Map& map, QWidget* parent) : QWidget(parent), view_(new MapView(map, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
}

}  // namespace orvane
