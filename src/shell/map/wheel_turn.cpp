#include "shell/map/wheel_turn.h"

#include <QPointingDevice>
#include <QWheelEvent>

#include <cmath>

namespace orvane {
namespace {

/// Two notches of a wheel double the scale. A notch is 120 units; touch pads send fewer at a time.
constexpr double WheelUnitsPerDoubling = 240;
/// How far a notch moves the view: 60 pixels, as in a list.
constexpr double PixelsPerWheelUnit = 0.5;

/// True for two fingers on a touch pad: a wheel has no phases.
bool IsTwoFingers(const QWheelEvent& event) {
  return event.phase() != Qt::NoScrollPhase ||
         event.pointingDevice()->type() == QInputDevice::DeviceType::TouchPad;
}

}  // namespace

WheelTurn ReadWheel(const QWheelEvent& event) {
  const QPoint turned = event.angleDelta();
  if (IsTwoFingers(event) && !event.modifiers().testFlag(Qt::ControlModifier)) {
    return {event.pixelDelta().isNull() ? QPointF(turned) * PixelsPerWheelUnit
                                        : QPointF(event.pixelDelta()),
            1};
  }
  return {QPointF(turned.x() * PixelsPerWheelUnit, 0),
          std::exp2(turned.y() / WheelUnitsPerDoubling)};
}

}  // namespace orvane
