#pragma once

namespace orvane {

/// Which part of a map window has the keyboard; the menus follow it.
enum class FocusPlace { TrailList, RangeList, MapView, Neither };

}  // namespace orvane
