#pragma once

#include "model/map.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Which point, trail or range a name means. Names compare without regard to case.

/// \return the bucket of a name: the sum of its folded bytes modulo 32
size_t NameBucket(std::string_view name);

/// \return true if `name` is the point's main name or one of its synonyms
bool PointHasName(const Point& point, std::string_view name);

/// The point that a name means. A time name is looked up only on `trail`. Otherwise a main name has
/// precedence over a synonym in one map, and this map over its basis.
/// \param trail  the scope of time names; may be null
/// \return null if there is none
Point* FindPointByName(const Map& map, const Trail* trail, std::string_view name);

/// As a last resort: compares without the leading `_` and `@` of the stored names.
Point* FindPointLoosely(const Map& map, std::string_view name);

/// \return the first of `points` with that name, or null
Point* FindTimePoint(const std::vector<Point*>& points, std::string_view name);

/// Enters a name of `point` in `map`, which can be a map above the one that made the point.
void AddPointName(Map& map, Point& point, std::string_view name);
/// Removes one entry of `point` under `name` from `map`.
void RemovePointName(Map& map, std::string_view name, const Point& point);
/// Removes all entries of the point's main name and synonyms from `map`.
void RemovePointNames(Map& map, const Point& point);
/// Removes every node of `point` from the loose points, or from the nameless ones if its name is
/// empty.
void RemoveFromLists(Map& map, const Point& point);

/// \return the first trail with that name in the map, then in its basis chain; null if none
Trail* FindTrail(Map& map, std::string_view name);

/// `FindTrail`; then the contours of this map; then "type.date" or "type:date", followed by an
/// optional `.` or `:` and focal animal, by `FindTrailByDate`.
Trail* FindTrailOrContour(Map& map, std::string_view name);

/// \param focalAnimal  empty for none
/// \return the first trail of the map or its basis chain with that type, date and focal animal
Trail* FindTrailByDate(Map& map, std::string_view type, PackedDate date,
                       std::string_view focalAnimal);

/// \return the first range with that name in this map, or null; the basis is not searched
Range* FindRange(Map& map, std::string_view name);

/// \return the first trail of this map, other than `exceptTrail`, that has the point on it
Trail* FindTrailHolding(Map& map, const Point& point, const Trail* exceptTrail);

/// \return the map of the basis chain that has `trail`, or null
Map* MapOfTrail(Map& map, const Trail& trail);

/// `FindTrail`, else a new trail with that name, type "Human", group size 1 and colour black.
Trail& FindOrMakeTrail(Map& map, std::string_view name);

/// Finds or makes the point of a name from a file or an editor. `a=b` declares synonyms. The empty
/// text makes a nameless point; a time name is local to `trail`.
/// \param trail  the current trail, or null
/// \return null if the text has no name at all, such as "="
Point* ResolvePointName(Map& map, Trail* trail, std::string_view spec);

}  // namespace orvane
