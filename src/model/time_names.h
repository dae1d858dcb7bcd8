#pragma once

#include "model/records.h"

#include <string>
#include <string_view>

namespace orvane {

/// Points of a follow are named by the clock: 0830, 8:30, 0830-0915. Such a name is local to its
/// trail.

/// True for 4 digits, or for digits, a colon and digits; either may be followed by "-" and more.
bool IsTimeName(std::string_view name);

/// \return minutes after midnight that a time name begins with; "pm" behind hours below 12 adds 12
int ParseTimeName(std::string_view name);

/// \return minutes of the span that a name such as 0830-0915 gives (may be 0 or negative), -1 if
///         the name gives none
int TimeNameDuration(std::string_view name);

/// \return the main name if it is a time name, else the first synonym that is, else null
const std::string* PointTimeName(const Point& point);

/// Gives the time-named points of a trail that begins with one their `timeOfDay` and `duration`:
/// the span of the name, or else the time until the next time-named point. The last point keeps
/// its values unless its own name gives a span.
void FillPointTimes(Trail& trail);

}  // namespace orvane
