#include "places/resolve_location.h"

#include "base/text.h"
#include "geo/angle_text.h"
#include "model/cells.h"
#include "model/point_names.h"
#include "places/lookup.h"
#include "places/relative_place.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

/// How deep pairs of places can be nested; with more commas the text is read as a list.
constexpr int DeepestNesting = 64;

std::optional<Location> Resolve(Lookup& lookup, std::string_view text, int depth);

/// The text after "Word:" or "Word.", exactly so written; nothing for any other text.
std::optional<std::string_view> BehindPrefix(std::string_view word, std::string_view text) {
  const auto rest = StartsWith(word, text);
  if (!rest || rest->empty() || (rest->front() != ':' && rest->front() != '.')) return std::nullopt;
  return rest->substr(1);
}

LatLon Midpoint(const LatLon& a, const LatLon& b) {
  LatLon middle{(a.lat + b.lat) / 2, (a.lon + b.lon) / 2, NoAltitude};
  if (HasAltitude(a.altitude) && HasAltitude(b.altitude)) {
    middle.altitude = (a.altitude + b.altitude) / 2;
  } else {
    middle.altitude = HasAltitude(a.altitude) ? a.altitude : b.altitude;
  }
  return middle;
}

std::optional<LatLon> ResolveTwoPlaces(Lookup& lookup, std::string_view text, int depth) {
  const size_t comma = text.rfind(',');
  if (comma == std::string_view::npos || depth >= DeepestNesting) return std::nullopt;
  std::string_view rest = text.substr(comma + 1);
  while (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);
  const auto second = Resolve(lookup, rest, depth + 1);
  if (!second) return std::nullopt;
  const auto first = Resolve(lookup, text.substr(0, comma), depth + 1);
  if (!first) return std::nullopt;
  return Midpoint(first->place, second->place);
}

/// "trail:point": sets both or neither.
void FindPointOnTrail(Map& map, std::string_view text, Location& found) {
  const size_t colon = text.rfind(':');
  if (colon == std::string_view::npos) return;
  Trail* trail = FindTrailOrContour(map, text.substr(0, colon));
  if (trail == nullptr) return;
  Point* point = FindPointByName(map, trail, text.substr(colon + 1));
  if (point == nullptr) return;
  found.trail = trail;
  found.point = point;
}

Range* FindNamedRange(Map& map, std::string_view text) {
  if (Range* range = FindRange(map, text)) return range;
  const auto name = BehindPrefix("Range", text);
  return name ? FindRange(map, *name) : nullptr;
}

/// "Trail:" and "Point:" with a name set the trail or the point. \return the place of a cell, which
/// ends the search
std::optional<LatLon> ResolvePrefixed(Lookup& lookup, std::string_view text, Location& found) {
  if (const auto name = BehindPrefix("Trail", text)) {
    found.trail = FindTrailOrContour(lookup.InMap(), *name);
    return std::nullopt;
  }
  if (const auto name = BehindPrefix("Point", text)) {
    found.point = FindPointByName(lookup.InMap(), nullptr, *name);
    return std::nullopt;
  }
  return lookup.CellPlace(BehindPrefix("Grid", text).value_or(text));
}

/// One item of a list. \param point receives the named point, or null
std::optional<LatLon> ResolveItem(Lookup& lookup, std::string_view item, Point*& point) {
  point = FindPointByName(lookup.InMap(), nullptr, item);
  if (point == nullptr) {
    if (const auto place = lookup.MarkPlace(item)) return place;
    if (const auto place = lookup.CellPlace(item)) return place;
    if (const auto cell = BehindPrefix("grid", item)) {
      if (const auto place = lookup.CellPlace(*cell)) return place;
    }
    point = FindPointLoosely(lookup.InMap(), item);
  }
  if (point == nullptr || !lookup.IsPlaced(*point)) return std::nullopt;
  return point->geo;
}

/// The mean of a list with ", " between its items. \param point receives the point of the last item
std::optional<LatLon> ResolveList(Lookup& lookup, std::string_view text, Point*& point) {
  constexpr std::string_view Separator = ", ";
  double latSum = 0;
  double lonSum = 0;
  double altitudeSum = 0;
  bool allHaveAltitude = true;
  int count = 0;
  while (true) {
    const size_t end = text.find(Separator);
    const auto place = ResolveItem(lookup, text.substr(0, end), point);
    if (!place) return std::nullopt;
    latSum += place->lat;
    lonSum += place->lon;
    altitudeSum += double{place->altitude};
    allHaveAltitude = allHaveAltitude && HasAltitude(place->altitude);
    ++count;
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + Separator.size());
  }
  return LatLon{latSum / count, lonSum / count,
                allHaveAltitude ? static_cast<float>(altitudeSum / count) : NoAltitude};
}

/// The middle of the bounds of a trail's placed points.
std::optional<LatLon> MiddleOfTrail(Lookup& lookup, const Trail& trail) {
  lookup.HangsOnMore();
  constexpr double Infinity = std::numeric_limits<double>::infinity();
  LatLon low{Infinity, Infinity, NoAltitude};
  LatLon high{-Infinity, -Infinity, NoAltitude};
  bool any = false;
  for (const Point* point : trail.points) {
    if (!IsPlaced(*point)) continue;
    any = true;
    low.lat = std::min(low.lat, point->geo.lat);
    low.lon = std::min(low.lon, point->geo.lon);
    high.lat = std::max(high.lat, point->geo.lat);
    high.lon = std::max(high.lon, point->geo.lon);
  }
  if (!any) return std::nullopt;
  return LatLon{(high.lat + low.lat) / 2, (high.lon + low.lon) / 2, NoAltitude};
}

/// The forms that name a thing or give a place on their own. \return a place if a form ended the
/// search; else what was named is in `found`
std::optional<LatLon> ResolveSimpleForms(Lookup& lookup, std::string_view text, int depth,
                                         Location& found) {
  if (const auto place = ResolveTwoPlaces(lookup, text, depth)) return place;
  FindPointOnTrail(lookup.InMap(), text, found);
  if (found.point != nullptr) return std::nullopt;
  if (Range* range = FindNamedRange(lookup.InMap(), text); range != nullptr && range->hasBounds) {
    found.range = range;
    return LatLon{(range->maxLat + range->minLat) / 2, (range->maxLon + range->minLon) / 2,
                  NoAltitude};
  }
  if (const auto place = ResolvePrefixed(lookup, text, found)) return place;
  if (found.point == nullptr && found.trail == nullptr) {
    if (const auto place = lookup.MarkPlace(text)) return place;
    if (LatLon place; ParseLatLon(text, place)) return place;
    found.point = FindPointLoosely(lookup.InMap(), text);
  }
  if (found.point == nullptr && found.trail != nullptr && found.trail->points.size() == 1) {
    found.point = found.trail->points.front();
  }
  return std::nullopt;
}

std::optional<Location> Resolve(Lookup& lookup, std::string_view text, int depth) {
  if (text.empty()) return std::nullopt;
  Location found;
  const auto at = [&](const LatLon& place) {
    found.place = place;
    return found;
  };
  found.point = FindPointByName(lookup.InMap(), nullptr, text);
  if (found.point == nullptr) found.trail = FindTrailOrContour(lookup.InMap(), text);
  if (found.point == nullptr && found.trail == nullptr) {
    if (const auto place = ResolveSimpleForms(lookup, text, depth, found)) return at(*place);
  }
  if (found.point != nullptr) {
    if (!lookup.IsPlaced(*found.point)) return std::nullopt;
    return at(found.point->geo);
  }
  if (found.trail == nullptr) {
    if (const auto place = ResolveRelativePlace(lookup, text)) return at(*place);
  }
  if (const auto place = ResolveAlongTrail(lookup, text)) return at(*place);
  if (found.trail != nullptr) {
    if (const auto place = MiddleOfTrail(lookup, *found.trail)) return at(*place);
    return std::nullopt;
  }
  if (const auto place = ResolveList(lookup, text, found.point)) return at(*place);
  found.point = nullptr;
  if (const auto place = lookup.UtmPlace(text)) return at(*place);
  return std::nullopt;
}

/// \return true if a text, or a part of it between commas, is a UTM or MGRS text, which may hold a
///         comma of its own
bool HoldsUtm(std::string_view text) {
  while (true) {
    const size_t comma = text.find(',');
    if (ParseUtm(text.substr(0, comma))) return true;
    if (comma == std::string_view::npos) return false;
    if (ParseUtm(text.substr(0, text.find(',', comma + 1)))) return true;
    text.remove_prefix(comma + 1);
  }
}

}  // namespace

std::optional<LatLon> Lookup::CellPlace(std::string_view name) {
  if (needs_ != nullptr) {
    for (const Map* level = &map_; level != nullptr; level = level->basis) {
      for (const Grid& grid : level->grids) IsPlaced(*grid.corner);
    }
  }
  return FindGridCell(map_, name);
}

std::optional<Location> ResolveLocation(Map& map, std::string_view text, LocationNeeds* needs) {
  Lookup names(map, needs, false);
  if (auto location = Resolve(names, text, 0)) return location;
  if (!HoldsUtm(text)) return std::nullopt;
  Lookup namesAndUtm(map, needs, true);
  return Resolve(namesAndUtm, text, 0);
}

}  // namespace orvane
