#pragma once

#include "model/records.h"

#include <string>
#include <string_view>

namespace orvane {

/// The names of trails and points as the checks and the sorting operations show and read them.

/// \return the point's name, or "<nameless point>"
std::string ShownName(const Point& point);
/// \return the trail's name, or "<nameless trail>"
std::string ShownName(const Trail& trail);

/// True if the point is named as the trail with `word` behind, as Pdeend is on the trail Pde: the
/// trail's name with regard to case, the word without.
bool IsTrailNameWith(const Trail& trail, const Point& point, std::string_view word);

}  // namespace orvane
