#pragma once

#include "formats/layers.h"
#include "model/map.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace orvane {

/// What a map and its analyses are for other programs: features with properties and a geometry, one
/// after the other. GeoJSON and layers are both made of them.
///
/// Lengths are in metres, areas in square metres, times in minutes, dates as texts such as
/// "2003-03-14". Points without a place, and places that are not on earth, are left out; a feature
/// without any place has no geometry. Places of hulls, overlaps and cells have no altitudes.

/// A value of a property, or none. Texts are as in the map, not always UTF-8.
using PropertyValue =
    std::variant<std::monostate, std::string, std::int64_t, double, std::vector<std::string>>;

struct MapProperty {
  std::string key;
  PropertyValue value;
};

/// One feature of a map.
struct MapFeature {
  const char* kind = "";
  std::vector<MapProperty> properties;  ///< in their order
  GeoShape shape;
  Color color = NoColor;
  bool filled = false;  ///< an area that is painted in its colour
  std::string group;    ///< its type, where the features of a layer have types; else empty
  std::string title;    ///< for a reader; empty if the property `name` is the title

  /// Starts the next feature.
  void Begin(const char* newKind);
  void Put(std::string_view key, PropertyValue value) {
    properties.push_back({std::string(key), std::move(value)});
  }
  void PutWhole(std::string_view key, std::int64_t value) { Put(key, value); }
  void PutTextOrNone(std::string_view key, const std::optional<std::string>& text);
  /// No value for -9999.
  void PutAltitude(std::string_view key, double value);
  /// \param counts  of what the map counts, under its names
  template <typename Counts>
  void PutCounts(const std::array<std::string, 3>& names, const Counts& counts) {
    for (size_t i = 0; i < names.size(); ++i) PutWhole(names[i], counts[i]);
  }
};

/// Takes a feature, which is valid until it returns. \return false if no more are wanted
using MapFeatureTaker = std::function<bool(const MapFeature&)>;

/// \return the property names of the counts of a map: their names, or "sm1" to "sm3" for a count
///         without a name and for a name that another property has
std::array<std::string, 3> CountNames(const Map& map);

/// Each of these calls the taker for features of one or several kinds, those of the map itself
/// without its basis, in their order. They return false once the taker did.

/// Kind `point`: named points, at the first visible name of each. Overwrites `PointVisited`.
bool VisitPoints(Map& map, const MapFeatureTaker& take);
/// Kind `stop`: placed points of trails that are named by a time. Overwrites `PointVisited`.
bool VisitStops(const Map& map, const MapFeatureTaker& take);
/// Kinds `trail` and `area`: trails as lines, filled trails as areas.
/// \param filled  only those that are filled, or only the others; all if not given
bool VisitTrails(const Map& map, std::optional<bool> filled, const MapFeatureTaker& take);
/// Kind `range`: the hull of each range.
bool VisitRanges(const Map& map, const MapFeatureTaker& take);
/// Kind `cluster`: the hull of each cluster of a range, level by level.
bool VisitClusters(const Map& map, const MapFeatureTaker& take);
/// Kind `intersection`: the overlap of two ranges.
bool VisitOverlaps(const Map& map, const MapFeatureTaker& take);
/// Kind `cell`: each cell of each grid, whether shaded or not.
bool VisitCells(const Map& map, const MapFeatureTaker& take);
/// Kind `cell`: the shaded cells, also beyond the rows and columns of their grid.
bool VisitShades(const Map& map, const MapFeatureTaker& take);
/// Kind `contour`: the contour lines that were made for the nearest map of the basis chain that has
/// any, first the classic and then the continuous ones.
bool VisitContours(const Map& map, const MapFeatureTaker& take);

/// Kind `estimate`: the outlines of the estimates of each range that have an area, with the reference
/// bandwidth (`OfferedOutlines`). Unlike the others, these take long to make.
/// \return in the order of the ranges; without the last ones if the progress of the workspace cancels
std::vector<MapFeature> EstimateFeatures(const Map& map);

/// \return true if the grids of the map have more cells than are exported
bool HasTooManyCells(const Map& map);
/// Posts that they are left out for this reason.
void NoteTooManyCells(const Map& map);

}  // namespace orvane
