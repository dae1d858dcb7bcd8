#pragma once

#include <QWidget>

class QScrollBar;

namespace orvane {

struct Map;
class MapView;

/// The map with its two scroll bars. The bars know no end of the map: they rest in the middle of
/// their way, move the view by what they are pulled or pressed, and return there.
class MapArea final : public QWidget {
  Q_OBJECT

 public:
  /// \param map  must outlive the widget
  MapArea(Map& map, QWidget* parent);

  MapView& View() { return *view_; }

 private:
  MapView* view_;
};

}  // namespace orvane
