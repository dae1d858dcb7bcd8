#pragma once

#include "base/messages.h"
#include "model/map.h"
#include "model/time_names.h"

#include <string>

namespace orvane {

/// While the result exists, messages are about a point of its map, and a front end can lead to the
/// point. A time name is omitted: each follow has its own 0700.
inline OriginScope AboutPoint(Messages& messages, const Point& point) {
  const bool hasOwnName = point.map != nullptr && !IsTimeName(point.name);
  return {messages, point.map == nullptr ? std::string() : point.map->fileName,
          hasOwnName ? point.name : std::string()};
}

}  // namespace orvane
