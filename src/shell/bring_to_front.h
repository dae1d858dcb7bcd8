#pragma once

class QWidget;

namespace orvane {

/// Shows a window in front of all others, and no longer as an icon.
void BringToFront(QWidget& window);

}  // namespace orvane
