#pragma once

#include <QRect>

class QWidget;

namespace orvane {

/// The size of a new window, inside its frame.
constexpr QSize FirstWindowSize(1200, 800);

/// \return `frame` made no larger than `room`, and moved into it as far as needed
QRect WithinRoom(const QRect& frame, const QRect& room);

/// Gives a window that was not shown yet its first size: it fits the screen with a frame of the
/// usual height. Once it is shown and its true frame is known, that is fitted too.
void GiveFirstSize(QWidget& window);

}  // namespace orvane
