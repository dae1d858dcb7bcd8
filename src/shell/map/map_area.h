#pragma once

#include "view/scrolling.h"

#include <QWidget>

class QScrollBar;

namespace orvane {

struct Map;
class InfoPanelWidget;
class MapView;

/// The map with its two scroll bars, and the info panel in its corner. A map has no edges, so the
/// bars rest in the middle of their range, move the view, and return to the middle.
class MapArea final : public QWidget {
  Q_OBJECT

 public:
  /// \param map  must outlive the widget
  MapArea(Map& map, QWidget* parent);

  MapView& View() { return *view_; }
  InfoPanelWidget& Info() { return *info_; }
  QScrollBar& VerticalBar() { return *vertical_; }
  QScrollBar& HorizontalBar() { return *horizontal_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QScrollBar* MakeBar(Qt::Orientation orientation);
  void FollowAction(QScrollBar& bar, int action);
  void Scroll(QScrollBar& bar, ScrollAction action, int position);

  MapView* view_;
  InfoPanelWidget* info_;
  QScrollBar* vertical_;
  QScrollBar* horizontal_;
};

}  // namespace orvane
