#include "model/point_names.h"

#include "base/text.h"
#include "model/name_index.h"
#include "model/time_names.h"
#include "model/workspace.h"

#include <algorithm>
#include <unordered_set>

namespace orvane {

namespace {

/// Calls `visit(part)` for each non-empty part of a name spec such as `a=b=c`.
template <typename Visit>
void ForEachPart(std::string_view spec, Visit visit) {
  while (true) {
    const size_t end = spec.find('=');
    const std::string_view part = spec.substr(0, end);
    if (!part.empty()) visit(part);
    if (end == std::string_view::npos) return;
    spec.remove_prefix(end + 1);
  }
}

/// The existing point of the parts of a spec; the first found if there are several.
Point* FindSpecPoint(const Map& map, std::string_view spec) {
  Messages& messages = map.workspace->messages;
  Point* found = nullptr;
  ForEachPart(spec, [&](std::string_view part) {
    if (IsTimeName(part)) {
      NoteError(messages,
                "A time name should not be used in a <name>=<name> spec, use a relative "
                "measurement with a distance of 0. %s",
                {spec});
      return;
    }
    Point* point = FindPointByName(map, nullptr, part);
    if (point == nullptr) return;
    if (found != nullptr && found != point) {
      NoteError(messages, "%s declared as synonym to %s after both have been used",
                {point->name, found->name});
    }
    if (found == nullptr) found = point;
  });
  return found;
}

Point& MakeNamedPoint(Map& map, std::string_view name) {
  Point& point = MakePoint(map, name);
  AddPointName(map, point, name);
  return point;
}

/// As `PointHasName`. The table answers at once for a name that it has. If it has all names of the
/// point, the synonyms, of which there can be many, are not walked at all.
bool BearsName(const Map& map, const Point& point, std::string_view name) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    if (level->names.Holds(point, name)) return true;
  }
  const bool heldHere = point.map == &map && !point.namedAbove;
  return !heldHere && PointHasName(point, name);
}

/// Gives the point every name of `spec` that it does not have yet; makes the point if there is
/// none.
Point* NameSpecPoint(Map& map, Point* point, std::string_view spec) {
  ForEachPart(spec, [&](std::string_view part) {
    if (point == nullptr) {
      point = &MakeNamedPoint(map, part);
    } else if (!BearsName(map, *point, part)) {
      point->synonyms.emplace_front(part);
      AddPointName(map, *point, part);
    }
  });
  return point;
}

/// The first `.` of a "type.date" text, or failing that the first `:`; npos for neither.
size_t DateSeparator(std::string_view text) {
  const size_t dot = text.find('.');
  return dot != std::string_view::npos ? dot : text.find(':');
}

}  // namespace

size_t NameBucket(std::string_view name) {
  unsigned sum = 0;
  for (const char c : name) sum += static_cast<unsigned char>(FoldByte(c));
  return sum % NameBuckets;
}

bool PointHasName(const Point& point, std::string_view name) {
  if (SameName(point.name, name)) return true;
  return std::any_of(point.synonyms.begin(), point.synonyms.end(),
                     [&](const std::string& synonym) { return SameName(synonym, name); });
}

Point* FindTimePoint(const std::vector<Point*>& points, std::string_view name) {
  const auto found = std::find_if(points.begin(), points.end(),
                                  [&](const Point* point) { return PointHasName(*point, name); });
  return found == points.end() ? nullptr : *found;
}

Point* FindPointByName(const Map& map, const Trail* trail, std::string_view name) {
  if (IsTimeName(name)) return trail == nullptr ? nullptr : FindTimePoint(trail->points, name);
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    if (Point* point = level->names.Find(name)) return point;
  }
  return nullptr;
}

Point* FindPointLoosely(const Map& map, std::string_view name) {
  const auto fitsName = [&](const std::string& stored) {
    return CompareHiddenName(stored, name) == 0;
  };
  const auto fits = [&](const Point* point) {
    return fitsName(point->name) ||
           std::any_of(point->synonyms.begin(), point->synonyms.end(), fitsName);
  };
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    if (level->nameIndex != nullptr && level->names.Find(name) == nullptr) {
      const std::vector<Point*>& loose = level->nameIndex->loose;
      const auto found = std::find_if(loose.begin(), loose.end(), fits);
      if (found != loose.end()) return *found;
      continue;
    }
    // A point is in the buckets once for each of its names; compare its synonyms only once.
    std::unordered_set<const Point*> compared;
    for (const auto& bucket : level->pointHash) {
      for (Point* point : bucket) {
        if (!point->synonyms.empty() && !compared.insert(point).second) continue;
        if (fits(point)) return point;
      }
    }
  }
  return nullptr;
}

void AddPointName(Map& map, Point& point, std::string_view name) {
  const size_t bucket = NameBucket(name);
  map.pointHash[bucket].push_front(&point);
  if (point.map != &map) {
    point.namedAbove = true;
    // A walk over this bucket meets the point here and compares its main name, too.
    if (NameBucket(point.name) == bucket && !map.names.Holds(point, point.name)) {
      map.names.Add(point, point.name);
    }
  }
  map.names.Add(point, name);
}

void RemovePointName(Map& map, std::string_view name, const Point& point) {
  PointList& bucket = map.pointHash[NameBucket(name)];
  const auto newest = std::find(bucket.begin(), bucket.end(), &point);
  if (newest != bucket.end()) bucket.erase(newest);
  map.names.Remove(point, name);
}

void RemovePointNames(Map& map, const Point& point) {
  RemovePointName(map, point.name, point);
  for (const std::string& synonym : point.synonyms) RemovePointName(map, synonym, point);
}

void RemoveFromLists(Map& map, const Point& point) {
  PointList& list = point.name.empty() ? map.namelessPoints : map.loosePoints;
  std::erase(list, &point);
}

Trail* FindTrail(Map& map, std::string_view name) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    if (level->nameIndex != nullptr) {
      const auto found = level->nameIndex->trails.find(FoldedText(name));
      if (found != level->nameIndex->trails.end()) return found->second;
      continue;
    }
    for (Trail& trail : level->trails) {
      if (trail.name && SameName(*trail.name, name)) return &trail;
    }
  }
  return nullptr;
}

Trail* FindTrailOrContour(Map& map, std::string_view name) {
  if (Trail* trail = FindTrail(map, name)) return trail;
  for (Trail& trail : map.contourTrails) {
    if (trail.name && SameName(*trail.name, name)) return &trail;
  }
  const size_t separator = DateSeparator(name);
  if (separator == std::string_view::npos) return nullptr;
  std::string_view rest = name.substr(separator + 1);
  const DatePrefix date = ParseDate(rest, map.workspace->preferences.europeanDates);
  rest.remove_prefix(date.length);
  if (!rest.empty()) {
    if (rest.front() != '.' && rest.front() != ':') return nullptr;
    rest.remove_prefix(1);
  }
  return FindTrailByDate(map, name.substr(0, separator), date.date, rest);
}

Trail* FindTrailByDate(Map& map, std::string_view type, PackedDate date,
                       std::string_view focalAnimal) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (Trail& trail : level->trails) {
      if (trail.date == date && SameName(trail.type, type) &&
          SameName(trail.focalAnimal.value_or(""), focalAnimal)) {
        return &trail;
      }
    }
  }
  return nullptr;
}

Range* FindRange(Map& map, std::string_view name) {
  for (Range& range : map.ranges) {
    if (range.name && SameName(*range.name, name)) return &range;
  }
  return nullptr;
}

Trail* FindTrailHolding(Map& map, const Point& point, const Trail* exceptTrail) {
  for (Trail& trail : map.trails) {
    if (&trail == exceptTrail) continue;
    if (std::find(trail.points.begin(), trail.points.end(), &point) != trail.points.end()) {
      return &trail;
    }
  }
  return nullptr;
}

Map* MapOfTrail(Map& map, const Trail& trail) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (const Trail& candidate : level->trails) {
      if (&candidate == &trail) return level;
    }
  }
  return nullptr;
}

Trail& FindOrMakeTrail(Map& map, std::string_view name) {
  if (Trail* trail = FindTrail(map, name)) return *trail;
  Trail& trail = map.trails.emplace_front();
  trail.name = std::string(name);
  trail.type = "Human";
  trail.color = 0;
  return trail;
}

Point* ResolvePointName(Map& map, Trail* trail, std::string_view spec) {
  if (spec.empty()) {
    Point& point = MakePoint(map, spec);
    if (trail == nullptr) map.namelessPoints.push_front(&point);
    return &point;
  }
  if (IsTimeName(spec)) {
    Point* point = FindPointByName(map, trail, spec);
    return point != nullptr ? point : &MakePoint(map, spec);
  }
  const bool isList = spec.find('=') != std::string_view::npos;
  Point* point = isList ? FindSpecPoint(map, spec) : FindPointByName(map, nullptr, spec);
  if (point != nullptr) point->flags |= PointNamedTwice;
  if (isList) return NameSpecPoint(map, point, spec);
  return point != nullptr ? point : &MakeNamedPoint(map, spec);
}

}  // namespace orvane
