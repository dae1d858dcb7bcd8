#pragma once

#include <functional>

class QWidget;

namespace orvane {

/// Gives a window that has no menu bar the keys of the other windows: Escape and the key of "Close"
/// close it, the key of "Exit" calls `exit`.
void AddWindowKeys(QWidget& window, const std::function<void()>& exit);

}  // namespace orvane
