#pragma once

#include "geo/utm.h"
#include "model/map.h"
#include "places/resolve_location.h"
#include "trails/positions_on_trail.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvane {

/// One lookup of a location text: the map, and a record of what the result depends on. Every form
/// gets the places of points, cells and marks from it.
class Lookup {
 public:
  /// \param needs  receives the record; can be null
  /// \param utm    whether UTM and MGRS texts are places
  Lookup(Map& map, LocationNeeds* needs, bool utm) : map_(map), needs_(needs), utm_(utm) {}

  Map& InMap() { return map_; }

  /// \return true if the point has a place
  bool IsPlaced(const Point& point) {
    if (orvane::IsPlaced(point)) return true;
    if (needs_ != nullptr) Need(point);
    return false;
  }
  /// As `ParseUtm`, if such texts are places.
  std::optional<LatLon> UtmPlace(std::string_view text) const {
    return utm_ ? ParseUtm(text) : std::nullopt;
  }
  /// As `FindGridCell`.
  std::optional<LatLon> CellPlace(std::string_view name);
  /// As `PositionOnTrail`.
  std::optional<LatLon> MarkPlace(std::string_view name, double* bearing = nullptr) {
    if (needs_ != nullptr && IsMarkOfTrail(map_, name)) needs_->complete = false;
    return PositionOnTrail(map_, name, bearing);
  }
  /// The result depends on more than single points, or the lookup changes points.
  void HangsOnMore() {
    if (needs_ != nullptr) needs_->complete = false;
  }

 private:
  /// A longer record would cost more than it saves.
  static constexpr size_t MostNeeds = 64;

  void Need(const Point& point) {
    if (needs_->points.size() < MostNeeds) {
      needs_->points.push_back(&point);
    } else {
      needs_->complete = false;
    }
  }

  Map& map_;
  LocationNeeds* needs_;
  bool utm_;
};

}  // namespace orvane
