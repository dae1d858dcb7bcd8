#pragma once

#include <QPointF>

class QWheelEvent;

namespace orvane {

/// What a turn of the wheel, or two fingers on a touch pad, do to a view.
struct WheelTurn {
  QPointF way;        ///< by which what is shown moves, in pixels of the widget, right and down
  double factor = 1;  ///< by which it is enlarged about the pointer
};

/// Two fingers and a wheel to the side move the view. The wheel zooms, and so do two fingers with
/// control.
WheelTurn ReadWheel(const QWheelEvent& event);

}  // namespace orvane
