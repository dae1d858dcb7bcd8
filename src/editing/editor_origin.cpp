#include "editing/editor_origin.h"

#include "base/dates.h"
#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>

namespace orvane {
namespace {

/// Fields with tabs between. The texts of a map have no tabs.
class Listing {
 public:
  void Put(std::string_view field) {
    text_ += field;
    text_ += '\t';
  }
  void EndLine() { text_ += '\n'; }
  std::string& Text() { return text_; }

 private:
  std::string text_;
};

/// A reading with what a file keeps of it.
std::string ReadingText(const Measurement& reading) {
  constexpr double MinutesPerDegree = 60;
  constexpr int MinuteDecimals = 5;
  Listing line;
  if ((reading.flags & MeasureNear) != 0) {
    line.Put("N");
    line.Put(reading.nearName);
    return line.Text();
  }
  if ((reading.flags & MeasureCompass) != 0) {
    line.Put((reading.flags & MeasureAbsoluteBearing) != 0 ? "CA" : "C");
    line.Put(reading.base == nullptr ? std::string_view() : reading.base->name);
    for (const double value : {reading.distance, reading.bearing, reading.inclination}) {
      line.Put(FormatGeneral(value));
    }
  } else if ((reading.flags & MeasureGps) != 0) {
    line.Put("G");
    for (const double degrees : {reading.position.lat, reading.position.lon}) {
      line.Put(FormatFixed(degrees * MinutesPerDegree, MinuteDecimals));
    }
  } else {
    line.Put("A");
  }
  line.Put(HasAltitude(reading.altitude) ? FormatGeneral(double{reading.altitude}) : "");
  line.Put(std::to_string(std::max(reading.count, 1)));
  return line.Text();
}

void ListPoint(const Point& point, Listing& listing) {
  listing.Put(point.name);
  std::vector<std::string> readings;
  for (const Measurement& reading : point.measurements) {
    if ((reading.flags & MeasureDerived) == 0) readings.push_back(ReadingText(reading));
  }
  // Saving and reading reverses their order.
  std::sort(readings.begin(), readings.end());
  for (const std::string& reading : readings) listing.Put(reading);
}

std::string KeyText(const SearchKey& key) {
  Listing line;
  line.Put(key.type);
  line.Put(key.focalAnimal.value_or(""));
  // Equal times, and dates without a first one, are no limit.
  const bool hasTimes = key.timeFrom != key.timeTo;
  const bool hasDates = key.dateFrom != 0;
  for (const int number : {hasTimes ? key.timeFrom : 0, hasTimes ? key.timeTo : 0,
                           hasDates ? key.dateFrom : 0, hasDates ? key.dateTo : 0}) {
    line.Put(std::to_string(number));
  }
  return line.Text();
}

bool HaveSameIdentity(const Trail& a, const Trail& b) {
  if (a.name && b.name) return SameName(*a.name, *b.name);
  return !a.name && !b.name && a.date == b.date && SameName(a.type, b.type) &&
         SameName(a.focalAnimal.value_or(""), b.focalAnimal.value_or(""));
}

std::vector<Range*> EqualRanges(Map& map, const std::optional<std::string>& name) {
  std::vector<Range*> found;
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (Range& range : level->ranges) {
      if (SameName(range.name.value_or(""), name.value_or(""))) found.push_back(&range);
    }
  }
  return found;
}

template <typename Record>
std::vector<FileMark> MarksOf(const std::vector<Record*>& records) {
  std::vector<FileMark> marks;
  marks.reserve(records.size());
  for (const Record* record : records) marks.push_back(ContentMark(*record));
  return marks;
}

template <typename Record>
EqualRecords EqualsOf(const std::vector<Record*>& records, const Record& own) {
  const auto found = std::find(records.begin(), records.end(), &own);
  if (found == records.end()) return {.marks = {ContentMark(own)}};
  return {.marks = MarksOf(records), .place = static_cast<size_t>(found - records.begin())};
}

/// \param now  of the records with the same identity; not empty
/// \return the index of the one with the same content
std::optional<size_t> FindSame(const EqualRecords& then, const std::vector<FileMark>& now) {
  const auto own = then.marks.begin() + static_cast<std::ptrdiff_t>(then.place);
  auto before = std::count(then.marks.begin(), own, *own);
  std::optional<size_t> found;
  for (size_t i = 0; i < now.size(); ++i) {
    if (now[i] != *own) continue;
    found = i;
    if (before-- == 0) break;
  }
  return found;
}

/// \return the index of the one that has changed content at the same place, if no record is missing
std::optional<size_t> FindChanged(const EqualRecords& then, const std::vector<FileMark>& now) {
  if (now.size() < then.marks.size()) return std::nullopt;
  std::vector<bool> isOther(now.size());
  size_t changedBefore = 0;
  for (size_t other = 0; other < then.marks.size(); ++other) {
    if (other == then.place) continue;
    size_t i = 0;
    while (i < now.size() && (isOther[i] || now[i] != then.marks[other])) ++i;
    if (i < now.size()) {
      isOther[i] = true;
    } else if (other < then.place) {
      ++changedBefore;
    }
  }
  for (size_t i = 0; i < now.size(); ++i) {
    if (!isOther[i] && changedBefore-- == 0) return i;
  }
  return std::nullopt;
}

/// \return true if the removed records of the map or of its basis chain have the record
template <typename Record>
bool IsIn(const Map& map, std::forward_list<Record> RemovedRecords::*list, const Record& record) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    const std::forward_list<Record>& removed = level->removed.*list;
    if (std::any_of(removed.begin(), removed.end(),
                    [&](const Record& each) { return &each == &record; })) {
      return true;
    }
  }
  return false;
}

}  // namespace

FileMark ContentMark(const Trail& trail) {
  constexpr int PlaceDecimals = 6;
  Listing listing;
  listing.Put(trail.name.value_or(""));
  listing.Put(trail.type);
  listing.Put(trail.focalAnimal.value_or(""));
  listing.Put(FormatDate(trail.date));
  for (const Point* point : trail.points) {
    listing.EndLine();
    if (IsContour(trail)) {
      listing.Put(FormatFixed(point->geo.lat, PlaceDecimals));
      listing.Put(FormatFixed(point->geo.lon, PlaceDecimals));
    } else {
      ListPoint(*point, listing);
    }
  }
  return MarkOf(listing.Text());
}

FileMark ContentMark(const Range& range) {
  std::vector<std::string> keys;
  for (const SearchKey& key : range.keys) keys.push_back(KeyText(key));
  std::sort(keys.begin(), keys.end());
  Listing listing;
  listing.Put(range.name.value_or(""));
  for (const std::string& key : keys) {
    listing.EndLine();
    listing.Put(key);
  }
  return MarkOf(listing.Text());
}

std::vector<Trail*> EqualTrails(Map& map, const Trail& like) {
  std::vector<Trail*> found;
  const auto look = [&](std::forward_list<Trail>& trails) {
    for (Trail& trail : trails) {
      if (HaveSameIdentity(trail, like)) found.push_back(&trail);
    }
  };
  for (Map* level = &map; level != nullptr; level = level->basis) {
    if (IsContour(like)) {
      look(level->contourTrails);
      look(level->continuousContours);
    } else {
      look(level->trails);
    }
  }
  return found;
}

bool HoldsTrail(Map& map, const Trail& trail) {
  const std::vector<Trail*> equals = EqualTrails(map, trail);
  return std::find(equals.begin(), equals.end(), &trail) != equals.end();
}

bool IsRemoved(const Map& map, const Trail& trail) {
  return IsIn(map, &RemovedRecords::trails, trail);
}

bool IsRemoved(const Map& map, const Range& range) {
  return IsIn(map, &RemovedRecords::ranges, range);
}

TrailOrigin OriginOf(Map& map, const Trail& trail) {
  TrailOrigin origin{.trail = trail, .equals = EqualsOf(EqualTrails(map, trail), trail)};
  origin.trail.points.clear();
  return origin;
}

RangeOrigin OriginOf(Map& map, const Range& range) {
  return {.name = range.name,
          .note = range.note,
          .equals = EqualsOf(EqualRanges(map, range.name), range)};
}

Trail* FindAgain(Map& map, const TrailOrigin& origin) {
  const std::vector<Trail*> trails = EqualTrails(map, origin.trail);
  const std::vector<FileMark> marks = MarksOf(trails);
  if (const auto same = FindSame(origin.equals, marks)) return trails[*same];
  // Another line would have that number.
  if (IsContour(origin.trail)) return nullptr;
  const auto changed = FindChanged(origin.equals, marks);
  return changed ? trails[*changed] : nullptr;
}

Range* FindAgain(Map& map, const RangeOrigin& origin) {
  const std::vector<Range*> ranges = EqualRanges(map, origin.name);
  const std::vector<FileMark> marks = MarksOf(ranges);
  if (const auto same = FindSame(origin.equals, marks)) return ranges[*same];
  const auto changed = FindChanged(origin.equals, marks);
  return changed ? ranges[*changed] : nullptr;
}

}  // namespace orvane
