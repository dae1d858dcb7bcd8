#pragma once

#include "model/records.h"

#include <string>
#include <string_view>

namespace orvane {

/// The names of trails and points as the checks and the sorting functions show and read them.

/// \return the point's name, or "<nameless point>"
std::string ShownName(const Point& point);
/// \return the trail's name, or "<nameless trail>"
std::string ShownName(const Trail& trail);

/// True if the point's name is the trail's name followed by `word`, as Pdeend on the trail Pde: the
/// trail's name with the same case, the word in any case.
bool IsTrailNameWith(const Trail& trail, const Point& point, std::string_view word);

}  // namespace orvane
