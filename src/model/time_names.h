#pragma once

#include "model/records.h"

#include <string>
#include <string_view>

namespace orvane {

/// Points of a follow are named by the clock: 0830, 8:30, 0830-0915. Such a name is local to its
/// trail.

/// True for 4 digits, or for digits, a colon and digits; either may be followed by "-" and more.
bool IsTimeName(std::string_view name);

/// \return the time at the front of a time name, in minutes after midnight; "pm" after hours below
///         12 adds 12 hours
int ParseTimeName(std::string_view name);

/// \return minutes of the span of a name such as 0830-0915 (can be 0 or negative), -1 if it has no
///         span
int TimeNameDuration(std::string_view name);

/// \return the main name if it is a time name, else the first synonym that is, else null
const std::string* PointTimeName(const Point& point);

/// Sets `timeOfDay` and `duration` of the time-named points of a trail, if its first point is one:
/// the span of the name, or else the time until the next time-named point. The last point keeps its
/// values unless its name has a span.
void FillPointTimes(Trail& trail);

}  // namespace orvane
