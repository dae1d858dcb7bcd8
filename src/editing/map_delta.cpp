// A snapshot copies what a map file can hold of every record, a delta keeps the copies of those
// records that have changed since, and of each list the stretch that has:
//
//     list then   a b c d e f g          head 2, tail 3; the delta holds "c d" and the
//     list now    a b X e f g            length of what is there instead, 1
//
// Swapping exchanges the copies with the records, and the stretches with those of the lists. So
// taking back needs to know nothing of what an edit has done.

#include "editing/map_delta.h"

#include "model/point_names.h"
#include "model/record_bytes.h"
#include "model/time_names.h"
#include "model/workspace.h"
#include "survey/positions.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace orvane {
namespace {

// --- What is kept of each record --------------------------------------------------------------

constexpr std::uint32_t KeptPointFlags = PointNamedTwice | PointMarkFilled;
constexpr std::uint32_t KeptTrailFlags = TrailContour | TrailHidden;
constexpr std::uint32_t KeptMapFlags = MapHasDeviation;

struct PointContent {
  std::uint32_t flags = 0;
  bool namedAbove = false;
  std::uint8_t markShape = PointMarkNone;
  Trail* trail = nullptr;
  std::forward_list<Measurement> measurements;
  std::forward_list<std::string> synonyms;
  std::string name;
  double labelLimit = 0;
  int markSize = 0;
  int timeOfDay = 0;
  int duration = 0;
  std::array<int, 3> sm{};
  std::optional<std::string> note;
};

struct PointPlace {
  LatLon geo;
  bool placed = false;
};

struct TrailContent {
  std::uint32_t flags = 0;
  std::optional<std::string> name;
  std::vector<Point*> points;
  std::string type;
  std::optional<std::string> focalAnimal;
  PackedDate date = 0;
  double width = 0;
  int groupSize = 1;
  Color color = NoColor;
  LineStyle lineStyle = LineStyle::Unset;
  LabelMode labelMode = LabelMode::Unset;
  bool filled = false;
  int fillPattern = 0;
  MarkStyle markStyle = MarkStyle::None;
  std::optional<std::string> note;
};

/// Contours are not in the file of a map, and no edit makes or removes one.
struct ContourContent {
  double width = 0;
  int groupSize = 1;
  Color color = NoColor;
  LineStyle lineStyle = LineStyle::Unset;
  LabelMode labelMode = LabelMode::Unset;
  bool filled = false;
  int fillPattern = 0;
  MarkStyle markStyle = MarkStyle::None;
};

struct RangeContent {
  std::optional<std::string> name;
  std::optional<std::string> note;
  std::forward_list<SearchKey> keys;
};

struct MapSettings {
  std::uint32_t flags = 0;
  Map* basis = nullptr;
  double magneticDeviation = 0;
  PackedDate date = 0;
  int contourEnabled = 0;
  int contourInterval = 0;
  std::array<std::optional<std::string>, 3> smName;
  Point* origin = nullptr;
  std::vector<UnplacedBelow> unplacedBelow;
  std::vector<std::string> comments;
  std::vector<std::string> credits;
};

// Each list of fields is written once; it serves to copy, to compare and to exchange.
template <typename Record>
auto FieldsOfPoint(Record& p) {
  return std::tie(p.namedAbove, p.markShape, p.trail, p.measurements, p.synonyms, p.name,
                  p.labelLimit, p.markSize, p.timeOfDay, p.duration, p.note);
}

/// What maps above rely on.
template <typename Record>
auto SurveyOfPoint(Record& p) {
  return std::tie(p.trail, p.measurements, p.synonyms, p.name);
}

template <typename Record>
auto IdentityOfTrail(Record& t) {
  return std::tie(t.name, t.points, t.type, t.focalAnimal, t.date, t.width, t.groupSize, t.note);
}

template <typename Record>
auto StyleOfTrail(Record& t) {
  return std::tie(t.color, t.lineStyle, t.labelMode, t.filled, t.fillPattern, t.markStyle);
}

template <typename Record>
auto FieldsOfContour(Record& c) {
  return std::tuple_cat(StyleOfTrail(c), std::tie(c.width, c.groupSize));
}

template <typename Record>
auto FieldsOfRange(Record& r) {
  return std::tie(r.name, r.note, r.keys);
}

template <typename Record>
auto FieldsOfSettings(Record& m) {
  return std::tie(m.basis, m.magneticDeviation, m.date, m.contourEnabled, m.contourInterval,
                  m.smName, m.origin, m.unplacedBelow, m.comments, m.credits);
}

/// Exchanges two tuples of references field by field.
template <typename... Fields>
void SwapFields(std::tuple<Fields&...> a, std::tuple<Fields&...> b) {
  std::swap(a, b);
}

void SwapFlags(std::uint32_t& record, std::uint32_t& kept, std::uint32_t mask) {
  const std::uint32_t now = record & mask;
  record = (record & ~mask) | kept;
  kept = now;
}

// --- Comparing, copying and exchanging one record ---------------------------------------------

PointContent ContentOf(const Point& point) {
  PointContent content;
  FieldsOfPoint(content) = FieldsOfPoint(point);
  std::copy(std::begin(point.sm), std::end(point.sm), content.sm.begin());
  content.flags = point.flags & KeptPointFlags;
  return content;
}

bool Differs(const Point& point, const PointContent& content) {
  return FieldsOfPoint(point) != FieldsOfPoint(content) ||
         !std::equal(content.sm.begin(), content.sm.end(), std::begin(point.sm)) ||
         (point.flags & KeptPointFlags) != content.flags;
}

void SwapContent(Point& point, PointContent& content) {
  SwapFields(FieldsOfPoint(point), FieldsOfPoint(content));
  std::swap_ranges(content.sm.begin(), content.sm.end(), std::begin(point.sm));
  SwapFlags(point.flags, content.flags, KeptPointFlags);
}

PointPlace PlaceOf(const Point& point) { return {.geo = point.geo, .placed = IsPlaced(point)}; }

/// The bits of a number. A place that is not a number is the same place still.
std::uint64_t BitsOf(double value) { return std::bit_cast<std::uint64_t>(value); }
std::uint32_t BitsOf(float value) { return std::bit_cast<std::uint32_t>(value); }

bool Differs(const Point& point, const PointPlace& place) {
  return BitsOf(point.geo.lat) != BitsOf(place.geo.lat) ||
         BitsOf(point.geo.lon) != BitsOf(place.geo.lon) ||
         BitsOf(point.geo.altitude) != BitsOf(place.geo.altitude) ||
         IsPlaced(point) != place.placed;
}

void GivePlace(Point& point, const PointPlace& place) {
  point.geo = place.geo;
  if (place.placed) {
    point.flags |= PointPlaced;
    ProjectPoint(point);
  } else {
    point.flags &= ~std::uint32_t{PointPlaced};
  }
}

/// The place of a point of a map, in as few bytes as can be: one changed reading can move every point
/// of a large survey a little.
class PackedPlace {
 public:
  /// \param index  of the point's place in `Map::pointStore`
  PackedPlace(std::uint32_t index, const PointPlace& place) : index_(index) { Pack(place); }

  Point& PointOf(Map& map) const { return map.pointStore[index_ & ~Placed]; }

  void SwapWith(Map& map) {
    Point& point = PointOf(map);
    const PointPlace now = PlaceOf(point);
    GivePlace(point, {.geo = {.lat = std::bit_cast<double>(lat_),
                              .lon = std::bit_cast<double>(lon_),
                              .altitude = altitude_},
                      .placed = (index_ & Placed) != 0});
    Pack(now);
  }

 private:
  using Half = std::array<std::uint32_t, 2>;  // a double would be aligned to 8 bytes
  static constexpr std::uint32_t Placed = std::uint32_t{1} << 31;

  void Pack(const PointPlace& place) {
    index_ = (index_ & ~Placed) | (place.placed ? Placed : 0);
    lat_ = std::bit_cast<Half>(place.geo.lat);
    lon_ = std::bit_cast<Half>(place.geo.lon);
    altitude_ = place.geo.altitude;
  }

  std::uint32_t index_;  ///< the highest bit is set if the point is placed
  Half lat_{};
  Half lon_{};
  float altitude_ = 0;
};
static_assert(sizeof(PackedPlace) == 24);

TrailContent ContentOf(const Trail& trail) {
  TrailContent content;
  IdentityOfTrail(content) = IdentityOfTrail(trail);
  StyleOfTrail(content) = StyleOfTrail(trail);
  content.flags = trail.flags & KeptTrailFlags;
  return content;
}

bool DiffersInStyle(const Trail& trail, const TrailContent& content) {
  return StyleOfTrail(trail) != StyleOfTrail(content) ||
         (trail.flags & KeptTrailFlags) != content.flags;
}

bool DiffersInIdentity(const Trail& trail, const TrailContent& content) {
  return IdentityOfTrail(trail) != IdentityOfTrail(content);
}

bool Differs(const Trail& trail, const TrailContent& content) {
  return DiffersInStyle(trail, content) || DiffersInIdentity(trail, content);
}

void SwapContent(Trail& trail, TrailContent& content) {
  SwapFields(IdentityOfTrail(trail), IdentityOfTrail(content));
  SwapFields(StyleOfTrail(trail), StyleOfTrail(content));
  SwapFlags(trail.flags, content.flags, KeptTrailFlags);
  trail.flags &= ~std::uint32_t{TrailMeasured | TrailClosed};
}

RangeContent ContentOf(const Range& range) {
  RangeContent content;
  FieldsOfRange(content) = FieldsOfRange(range);
  return content;
}

bool Differs(const Range& range, const RangeContent& content) {
  return FieldsOfRange(range) != FieldsOfRange(content);
}

void SwapContent(Range& range, RangeContent& content) {
  SwapFields(FieldsOfRange(range), FieldsOfRange(content));
}

// Grids and shades are small: a copy of the whole record is its content.
Grid ContentOf(const Grid& grid) { return grid; }
GridShade ContentOf(const GridShade& shade) { return shade; }
bool Differs(const Grid& grid, const Grid& content) { return grid != content; }
bool Differs(const GridShade& shade, const GridShade& content) { return shade != content; }
void SwapContent(Grid& grid, Grid& content) { std::swap(grid, content); }
void SwapContent(GridShade& shade, GridShade& content) { std::swap(shade, content); }

MapSettings SettingsOf(const Map& map) {
  MapSettings settings;
  FieldsOfSettings(settings) = FieldsOfSettings(map);
  settings.flags = map.flags & KeptMapFlags;
  return settings;
}

bool Differs(const Map& map, const MapSettings& settings) {
  return FieldsOfSettings(map) != FieldsOfSettings(settings) ||
         (map.flags & KeptMapFlags) != settings.flags;
}

void SwapContent(Map& map, MapSettings& settings) {
  SwapFields(FieldsOfSettings(map), FieldsOfSettings(settings));
  SwapFlags(map.flags, settings.flags, KeptMapFlags);
}

// --- Lists ------------------------------------------------------------------------------------

template <typename Item>
using Addresses = std::vector<Item*>;

/// The stretch in which two states of a list differ.
template <typename Item>
struct Stretch {
  size_t head = 0;        ///< items before it, the same in both states
  size_t length = 0;      ///< items that the present state has there
  Addresses<Item> other;  ///< what the other state has there

  bool Empty() const { return length == 0 && other.empty(); }
};

template <typename Item, typename List>
Stretch<Item> StretchBetween(const List& now, const Addresses<Item>& then) {
  Stretch<Item> stretch;
  const size_t shorter = std::min(now.size(), then.size());
  while (stretch.head < shorter && now[stretch.head] == then[stretch.head]) ++stretch.head;
  size_t tail = 0;
  while (tail < shorter - stretch.head &&
         now[now.size() - 1 - tail] == then[then.size() - 1 - tail]) {
    ++tail;
  }
  stretch.length = now.size() - stretch.head - tail;
  stretch.other.assign(then.begin() + static_cast<std::ptrdiff_t>(stretch.head),
                       then.end() - static_cast<std::ptrdiff_t>(tail));
  return stretch;
}

/// Exchanges the stretch with that of the list.
template <typename Item, typename List>
void SwapStretch(List& list, Stretch<Item>& stretch) {
  if (stretch.Empty()) return;
  const auto first = list.begin() + static_cast<std::ptrdiff_t>(stretch.head);
  const auto last = first + static_cast<std::ptrdiff_t>(stretch.length);
  Addresses<Item> now(first, last);
  const auto gap = list.erase(first, last);
  list.insert(gap, stretch.other.begin(), stretch.other.end());
  stretch.length = stretch.other.size();
  stretch.other = std::move(now);
}

template <typename Item>
Addresses<Item> AddressesOf(std::forward_list<Item>& records) {
  Addresses<Item> addresses;
  for (Item& record : records) addresses.push_back(&record);
  return addresses;
}

/// Brings the records into the given order. Those that are not in it go to `removed`, those that
/// are missing come from there.
template <typename Item>
void Arrange(std::forward_list<Item>& records, std::forward_list<Item>& removed,
             const Addresses<Item>& order) {
  std::unordered_map<const Item*, std::forward_list<Item>> loose;
  for (std::forward_list<Item>* from : {&records, &removed}) {
    while (!from->empty()) {
      std::forward_list<Item> one;
      one.splice_after(one.before_begin(), *from, from->before_begin());
      const Item* address = &one.front();
      loose.emplace(address, std::move(one));
    }
  }
  auto last = records.before_begin();
  for (const Item* address : order) {
    records.splice_after(last, loose[address]);
    ++last;
  }
  for (auto& [address, rest] : loose) removed.splice_after(removed.before_begin(), rest);
}

/// The records of one kind of a map: their order, and the content of each.
template <typename Item, typename Content>
struct RecordsThen {
  Addresses<Item> order;
  std::vector<Content> contents;  ///< in that order
};

template <typename Item, typename Content>
struct RecordsDelta {
  Stretch<Item> order;
  std::vector<std::pair<Item*, Content>> contents;  ///< of records that are in both states

  bool Empty() const { return order.Empty() && contents.empty(); }
  size_t Bytes() const {
    return (order.other.size() + order.length) * sizeof(void*) +
           contents.size() * sizeof(std::pair<Item*, Content>);
  }
};

template <typename Content, typename Item>
RecordsThen<Item, Content> TakeRecords(std::forward_list<Item>& records) {
  RecordsThen<Item, Content> then;
  for (Item& record : records) {
    then.order.push_back(&record);
    then.contents.push_back(ContentOf(record));
  }
  return then;
}

template <typename Item, typename Content>
RecordsDelta<Item, Content> CompareRecords(std::forward_list<Item>& records,
                                           const RecordsThen<Item, Content>& then) {
  RecordsDelta<Item, Content> delta;
  delta.order = StretchBetween(AddressesOf(records), then.order);
  // A record that was taken out keeps its content, which may have been changed before.
  for (size_t i = 0; i < then.order.size(); ++i) {
    if (Differs(*then.order[i], then.contents[i])) {
      delta.contents.emplace_back(then.order[i], then.contents[i]);
    }
  }
  return delta;
}

template <typename Item, typename Content>
void SwapRecords(std::forward_list<Item>& records, std::forward_list<Item>& removed,
                 RecordsDelta<Item, Content>& delta) {
  if (!delta.order.Empty()) {
    Addresses<Item> order = AddressesOf(records);
    SwapStretch(order, delta.order);
    Arrange(records, removed, order);
  }
  for (auto& [record, content] : delta.contents) SwapContent(*record, content);
}

/// Enters in `map.names` what a walk over its buckets meets: of each point in a bucket all names that
/// belong there, the newest point last.
void RebuildNames(Map& map) {
  NameTable names(*map.listMemory);
  for (size_t bucket = 0; bucket < NameBuckets; ++bucket) {
    Addresses<Point> newestFirst;
    std::unordered_set<const Point*> met;
    for (Point* point : map.pointHash[bucket]) {
      if (met.insert(point).second) newestFirst.push_back(point);
    }
    for (auto point = newestFirst.rbegin(); point != newestFirst.rend(); ++point) {
      const auto add = [&](const std::string& name) {
        if (NameBucket(name) == bucket) names.Add(**point, name);
      };
      add((*point)->name);
      for (const std::string& synonym : (*point)->synonyms) add(synonym);
    }
  }
  map.names = std::move(names);
}

}  // namespace

// --- Snapshot and delta of one map --------------------------------------------------------------

struct MapSnapshot::OneMap {
  Map* map = nullptr;
  MapSettings settings;
  RecordsThen<Trail, TrailContent> trails;
  RecordsThen<Range, RangeContent> ranges;
  RecordsThen<Grid, Grid> grids;
  RecordsThen<GridShade, GridShade> shades;
  Addresses<Point> loose;
  Addresses<Point> nameless;
  std::array<Addresses<Point>, NameBuckets> buckets;
  std::vector<std::uint32_t> indexes;  ///< of the places of all points in `Map::pointStore`
  std::vector<PointContent> points;    ///< in that order
  std::vector<PointPlace> places;      ///< likewise
  std::vector<std::pair<Trail*, ContourContent>> contours;
  std::vector<OverlapPair> overlaps;
  Addresses<const RangeIntersection> overlapRecords;
  std::vector<std::pair<Range*, Addresses<Point>>> minutes;  ///< `Range::minutesGiven`
  std::vector<Range*> withoutOffsets;                        ///< ranges without offset hulls
};

/// The offset hulls of a range, which it has or has not yet.
struct OffsetHulls {
  OffsetHull outer;
  OffsetHull inner;
};

struct MapDelta::OneMap {
  Map* map = nullptr;
  /// That of the points. Whole contents of maps are exchanged with their memory, so it shows whether
  /// the map holds these points now.
  const MapMemory* memory = nullptr;
  MapChange change;
  std::optional<MapSettings> settings;
  RecordsDelta<Trail, TrailContent> trails;
  RecordsDelta<Range, RangeContent> ranges;
  RecordsDelta<Grid, Grid> grids;
  RecordsDelta<GridShade, GridShade> shades;
  Stretch<Point> loose;
  Stretch<Point> nameless;
  std::array<Stretch<Point>, NameBuckets> buckets;
  std::vector<std::pair<Point*, PointContent>> points;
  std::vector<PackedPlace> places;
  std::vector<std::pair<Trail*, ContourContent>> contours;

  // What an analysis of the ranges can't find out from the records.
  std::optional<std::vector<OverlapPair>> overlaps;  ///< none if they are the same
  std::optional<std::vector<OverlapPair>> wanted;    ///< those to make again, after `Swap`
  bool newOverlaps = false;                          ///< their records are others
  std::vector<std::pair<Range*, Addresses<Point>>> minutes;
  std::vector<std::pair<Range*, OffsetHulls>> offsets;

  size_t removedBytes = 0;  ///< by the last weighing

  bool AnyAnalysis() const {
    return overlaps || newOverlaps || !minutes.empty() || !offsets.empty();
  }
  void SwapAnalysis();
  void Swap();
  void Keep(UnusedRecords& records) const;
  size_t Bytes() const;
  size_t WeighRemoved() const;
  /// False while former contents of the map hold the records of this.
  bool IsInMap() const { return map->pointMemory.get() == memory; }
};

namespace {

size_t ContentBytes(const TrailContent& trail) { return trail.points.size() * sizeof(void*); }

/// Of a point's texts only those that are outside its record count.
size_t ContentBytes(const PointContent& point) {
  const auto readings = std::distance(point.measurements.begin(), point.measurements.end());
  const auto synonyms = std::distance(point.synonyms.begin(), point.synonyms.end());
  return static_cast<size_t>(readings) * (sizeof(Measurement) + sizeof(void*)) +
         static_cast<size_t>(synonyms) * (sizeof(std::string) + sizeof(void*)) +
         (point.note ? point.note->size() : 0);
}

/// \return `items` without those of `others`
template <typename Item>
Addresses<Item> Without(const Addresses<Item>& items, const Addresses<Item>& others) {
  const std::unordered_set<const Item*> left(others.begin(), others.end());
  Addresses<Item> rest;
  for (Item* item : items) {
    if (!left.contains(item)) rest.push_back(item);
  }
  return rest;
}

/// \return what the other state of a list has and the present one has not
template <typename Item, typename List>
Addresses<Item> RemovedFrom(List& list, const Stretch<Item>& stretch) {
  if (stretch.other.empty()) return {};
  Addresses<Item> present;
  auto item = std::next(list.begin(), static_cast<std::ptrdiff_t>(stretch.head));
  for (size_t i = 0; i < stretch.length; ++i, ++item) {
    if constexpr (std::is_pointer_v<typename List::value_type>) {
      present.push_back(*item);
    } else {
      present.push_back(&*item);
    }
  }
  return Without(stretch.other, present);
}

bool AnyStretch(const std::array<Stretch<Point>, NameBuckets>& buckets) {
  return std::any_of(buckets.begin(), buckets.end(),
                     [](const Stretch<Point>& stretch) { return !stretch.Empty(); });
}

/// What differs between a map now and its delta to an earlier state.
MapChange ChangeIn(const MapDelta::OneMap& delta, size_t pointsThen) {
  MapChange change;
  change.settings = delta.settings.has_value() || !delta.grids.Empty() || !delta.shades.Empty();
  change.ranges = !delta.ranges.Empty();
  change.style = !delta.contours.empty();
  change.trails = !delta.trails.order.Empty();
  for (const auto& [trail, content] : delta.trails.contents) {
    change.trails = change.trails || DiffersInIdentity(*trail, content);
    change.style = change.style || DiffersInStyle(*trail, content);
  }
  change.points = delta.map->pointStore.size() != pointsThen || !delta.points.empty() ||
                  !delta.loose.Empty() || !delta.nameless.Empty() || AnyStretch(delta.buckets);
  change.positions = !delta.places.empty();
  change.survey = change.trails || change.positions || delta.map->pointStore.size() != pointsThen ||
                  !delta.loose.Empty() || !delta.nameless.Empty() || AnyStretch(delta.buckets) ||
                  std::any_of(delta.points.begin(), delta.points.end(), [](const auto& each) {
                    return SurveyOfPoint(*each.first) != SurveyOfPoint(each.second);
                  });
  return change;
}

Addresses<const RangeIntersection> OverlapRecordsOf(const Map& map) {
  Addresses<const RangeIntersection> records;
  for (const RangeIntersection& record : map.intersections) records.push_back(&record);
  return records;
}

void TakeAnalysis(Map& map, MapSnapshot::OneMap& then) {
  for (auto* contours : {&map.contourTrails, &map.continuousContours}) {
    for (Trail& contour : *contours) {
      FieldsOfContour(then.contours.emplace_back(&contour, ContourContent()).second) =
          FieldsOfContour(contour);
    }
  }
  then.overlaps = OverlapsOf(map);
  then.overlapRecords = OverlapRecordsOf(map);
  for (Range& range : map.ranges) {
    then.minutes.emplace_back(&range, range.minutesGiven);
    if (range.outerHull.ring.empty()) then.withoutOffsets.push_back(&range);
  }
}

void CompareAnalysis(const MapSnapshot::OneMap& then, MapDelta::OneMap& delta) {
  for (const auto& [contour, content] : then.contours) {
    if (FieldsOfContour(*contour) != FieldsOfContour(content)) {
      delta.contours.emplace_back(contour, content);
    }
  }
  delta.newOverlaps = OverlapRecordsOf(*then.map) != then.overlapRecords;
  if (OverlapsOf(*then.map) != then.overlaps) delta.overlaps = then.overlaps;
  for (const auto& [range, stops] : then.minutes) {
    if (range->minutesGiven != stops) delta.minutes.emplace_back(range, stops);
  }
  for (Range* range : then.withoutOffsets) {
    if (!range->outerHull.ring.empty()) delta.offsets.emplace_back(range, OffsetHulls());
  }
}

std::unique_ptr<MapSnapshot::OneMap> TakeMap(Map& map) {
  auto then = std::make_unique<MapSnapshot::OneMap>();
  then->map = &map;
  then->settings = SettingsOf(map);
  then->trails = TakeRecords<TrailContent>(map.trails);
  then->ranges = TakeRecords<RangeContent>(map.ranges);
  then->grids = TakeRecords<Grid>(map.grids);
  then->shades = TakeRecords<GridShade>(map.gridShades);
  then->loose.assign(map.loosePoints.begin(), map.loosePoints.end());
  then->nameless.assign(map.namelessPoints.begin(), map.namelessPoints.end());
  for (size_t bucket = 0; bucket < NameBuckets; ++bucket) {
    const PointList& nodes = map.pointHash[bucket];
    then->buckets[bucket].assign(nodes.begin(), nodes.end());
  }
  then->indexes.reserve(map.pointStore.size());
  then->points.reserve(map.pointStore.size());
  then->places.reserve(map.pointStore.size());
  for (size_t index = 0; index < map.pointStore.PlaceCount(); ++index) {
    if (map.pointStore.IsFree(index)) continue;
    const Point& point = map.pointStore[index];
    then->indexes.push_back(static_cast<std::uint32_t>(index));
    then->points.push_back(ContentOf(point));
    then->places.push_back(PlaceOf(point));
  }
  TakeAnalysis(map, *then);
  return then;
}

/// Copies what differs, so that it can be called again if memory runs out.
std::unique_ptr<MapDelta::OneMap> CompareMap(const MapSnapshot::OneMap& then) {
  Map& map = *then.map;
  auto delta = std::make_unique<MapDelta::OneMap>();
  delta->map = &map;
  delta->memory = map.pointMemory.get();
  if (Differs(map, then.settings)) delta->settings = then.settings;
  delta->trails = CompareRecords(map.trails, then.trails);
  delta->ranges = CompareRecords(map.ranges, then.ranges);
  delta->grids = CompareRecords(map.grids, then.grids);
  delta->shades = CompareRecords(map.gridShades, then.shades);
  delta->loose = StretchBetween(map.loosePoints, then.loose);
  delta->nameless = StretchBetween(map.namelessPoints, then.nameless);
  for (size_t bucket = 0; bucket < NameBuckets; ++bucket) {
    delta->buckets[bucket] = StretchBetween(map.pointHash[bucket], then.buckets[bucket]);
  }
  for (size_t i = 0; i < then.points.size(); ++i) {
    Point& point = map.pointStore[then.indexes[i]];
    if (Differs(point, then.points[i])) {
      delta->points.emplace_back(&point, then.points[i]);
    }
    if (Differs(point, then.places[i])) {
      delta->places.emplace_back(then.indexes[i], then.places[i]);
    }
  }
  delta->points.shrink_to_fit();
  delta->places.shrink_to_fit();
  CompareAnalysis(then, *delta);
  delta->change = ChangeIn(*delta, then.points.size());
  return delta;
}

}  // namespace

void MapDelta::OneMap::SwapAnalysis() {
  for (auto& [contour, content] : contours) {
    SwapFields(FieldsOfContour(*contour), FieldsOfContour(content));
  }
  for (auto& [range, stops] : minutes) std::swap(range->minutesGiven, stops);
  for (auto& [range, hulls] : offsets) {
    std::swap(range->outerHull, hulls.outer);
    std::swap(range->innerHull, hulls.inner);
  }
  wanted.reset();
  if (!overlaps) return;
  wanted = std::move(overlaps);
  overlaps = OverlapsOf(*map);
}

void MapDelta::OneMap::Swap() {
  SwapAnalysis();
  if (settings) SwapContent(*map, *settings);
  SwapRecords(map->trails, map->removed.trails, trails);
  SwapRecords(map->ranges, map->removed.ranges, ranges);
  SwapRecords(map->grids, map->removed.grids, grids);
  SwapRecords(map->gridShades, map->removed.gridShades, shades);
  SwapStretch(map->loosePoints, loose);
  SwapStretch(map->namelessPoints, nameless);
  for (auto& [point, content] : points) SwapContent(*point, content);
  // The names are read off the points, so these have to be in place.
  if (AnyStretch(buckets)) {
    for (size_t bucket = 0; bucket < NameBuckets; ++bucket) {
      SwapStretch(map->pointHash[bucket], buckets[bucket]);
    }
  }
  for (PackedPlace& place : places) place.SwapWith(*map);
  if (!places.empty()) {
    for (Trail& trail : map->trails) trail.flags &= ~std::uint32_t{TrailMeasured};
  }
}

size_t MapDelta::OneMap::Bytes() const {
  size_t bytes = sizeof(OneMap) + trails.Bytes() + ranges.Bytes() + grids.Bytes() + shades.Bytes() +
                 points.size() * sizeof(points.front()) + places.size() * sizeof(places.front());
  for (const auto& [trail, content] : trails.contents) bytes += ContentBytes(content);
  for (const auto& [point, content] : points) bytes += ContentBytes(content);
  for (const auto& [range, content] : ranges.contents) {
    for (const SearchKey& key : content.keys) bytes += sizeof key + sizeof(void*);
  }
  if (settings) {
    bytes += sizeof *settings;
    for (const auto* lines : {&settings->comments, &settings->credits}) {
      for (const std::string& line : *lines) bytes += sizeof(std::string) + line.size();
    }
  }
  bytes += (loose.other.size() + nameless.other.size()) * sizeof(void*);
  for (const Stretch<Point>& stretch : buckets) bytes += stretch.other.size() * sizeof(void*);
  bytes += contours.size() * sizeof(std::pair<Trail*, ContourContent>);
  for (const OverlapPair& each : overlaps.value_or(std::vector<OverlapPair>())) {
    bytes += sizeof each + each.name.size();
  }
  for (const auto& [range, stops] : minutes) bytes += (stops.size() + 4) * sizeof(void*);
  for (const auto& [range, hulls] : offsets) {
    bytes += (hulls.outer.ring.size() + hulls.inner.ring.size()) * (sizeof(Point) + sizeof(void*));
  }
  return bytes;
}

void MapDelta::OneMap::Keep(UnusedRecords& records) const {
  const auto keepAll = [&](const auto& each) {
    for (const auto* record : each) records.Keep(record);
  };
  const auto keepChanged = [&](const auto& delta) {
    keepAll(delta.order.other);
    for (const auto& [record, content] : delta.contents) records.Keep(record);
  };
  keepChanged(trails);
  for (const auto& [trail, content] : trails.contents) keepAll(content.points);
  keepChanged(ranges);
  keepChanged(grids);
  for (const auto& [grid, content] : grids.contents) records.Keep(content.corner);
  keepChanged(shades);
  for (const auto& [shade, content] : shades.contents) records.Keep(content.grid);
  keepAll(loose.other);
  keepAll(nameless.other);
  for (const Stretch<Point>& stretch : buckets) keepAll(stretch.other);
  for (const auto& [point, content] : points) {
    records.Keep(point);
    records.Keep(content.trail);
    for (const Measurement& reading : content.measurements) records.Keep(reading.base);
  }
  if (IsInMap()) {
    for (const PackedPlace& place : places) records.Keep(&place.PointOf(*map));
  }
  if (settings) {
    records.Keep(settings->origin);
    for (const UnplacedBelow& each : settings->unplacedBelow) records.Keep(each.point);
  }
  for (const auto& [range, stops] : minutes) {
    records.Keep(range);
    keepAll(stops);
  }
  for (const auto& [range, hulls] : offsets) records.Keep(range);
  for (const OverlapPair& each : overlaps.value_or(std::vector<OverlapPair>())) {
    records.Keep(each.a);
    records.Keep(each.b);
  }
}

size_t MapDelta::OneMap::WeighRemoved() const {
  size_t bytes = 0;
  // A point whose names are all out of the table, and that no trail shows, has left the map.
  const auto add = [&](const Trail* shownBy, const Addresses<Point>& removed) {
    for (const Point* point : removed) {
      const bool isElsewhere = point->trail != nullptr && point->trail != shownBy;
      const bool isNamed = !point->name.empty() && !IsTimeName(point->name);
      if (isElsewhere || point->map != map || (isNamed && map->names.Holds(*point, point->name))) {
        continue;
      }
      bytes += BytesOf(*point);
    }
  };
  for (const Trail* trail : RemovedFrom(map->trails, trails.order)) {
    bytes += BytesOf(*trail);
    add(trail, trail->points);
  }
  for (const auto& [trail, content] : trails.contents) {
    if (content.points != trail->points) add(trail, Without(content.points, trail->points));
  }
  for (const Range* range : RemovedFrom(map->ranges, ranges.order)) bytes += BytesOf(*range);
  add(nullptr, RemovedFrom(map->loosePoints, loose));
  add(nullptr, RemovedFrom(map->namelessPoints, nameless));
  bytes += grids.order.other.size() * sizeof(Grid) + shades.order.other.size() * sizeof(GridShade);
  return bytes;
}

MapChange& MapChange::operator|=(const MapChange& other) {
  trails = trails || other.trails;
  points = points || other.points;
  survey = survey || other.survey;
  positions = positions || other.positions;
  ranges = ranges || other.ranges;
  style = style || other.style;
  settings = settings || other.settings;
  return *this;
}

MapDelta::MapDelta() = default;
MapDelta::~MapDelta() = default;
MapDelta::MapDelta(MapDelta&&) noexcept = default;
MapDelta& MapDelta::operator=(MapDelta&&) noexcept = default;

void MapDelta::Swap() {
  bool renamed = false;
  for (const auto& each : maps_) {
    each->Swap();
    renamed = renamed || each->change.points;
  }
  // A map above may hold names of points below, so all tables wait for all points.
  if (!renamed) return;
  for (const auto& each : maps_) {
    if (each->change.Any()) RebuildNames(*each->map);
  }
}

std::vector<Map*> MapDelta::Maps() const {
  std::vector<Map*> maps;
  for (const auto& each : maps_) {
    if (each->change.Any()) maps.push_back(each->map);
  }
  return maps;
}

bool MapDelta::Touches(const Map& map) const { return ChangeOf(map).Any(); }

MapChange MapDelta::ChangeOf(const Map& map) const {
  const OneMap* one = Find(map);
  return one == nullptr ? MapChange() : one->change;
}

MapChange MapDelta::Change() const {
  MapChange all;
  for (const auto& each : maps_) all |= each->change;
  return all;
}

bool MapDelta::KeepsFollows(const Map& map) const {
  const MapChange change = ChangeOf(map);
  return !change.trails && !change.points && !change.positions && !change.settings;
}

const MapDelta::OneMap* MapDelta::Find(const Map& map) const {
  const auto found =
      std::find_if(maps_.begin(), maps_.end(), [&](const auto& each) { return each->map == &map; });
  return found == maps_.end() ? nullptr : found->get();
}

bool MapDelta::DiffersInAnalysis(const Map& map) const {
  const OneMap* one = Find(map);
  return one != nullptr && (one->change.ranges || one->AnyAnalysis());
}

std::vector<Range*> MapDelta::ChangedRanges(const Map& map) const {
  std::vector<Range*> ranges;
  const OneMap* one = Find(map);
  if (one == nullptr) return ranges;
  std::unordered_set<const Range*> changed;
  for (const auto& [range, content] : one->ranges.contents) {
    if (range->keys != content.keys) changed.insert(range);
  }
  for (const auto& [range, stops] : one->minutes) changed.insert(range);
  for (Range& range : one->map->ranges) {
    if (changed.contains(&range)) ranges.push_back(&range);
  }
  return ranges;
}

std::vector<OverlapPair> MapDelta::OverlapsThen(const Map& map) const {
  const OneMap* one = Find(map);
  return one == nullptr || !one->wanted ? OverlapsOf(map) : *one->wanted;
}

size_t MapDelta::Bytes() const {
  size_t bytes = sizeof(MapDelta);
  for (const auto& each : maps_) bytes += each->Bytes();
  return bytes;
}

void MapDelta::Keep(UnusedRecords& records) const {
  for (const auto& each : maps_) each->Keep(records);
}

void MapDelta::Weigh() {
  std::vector<size_t> removed;
  for (const auto& each : maps_) removed.push_back(each->WeighRemoved());
  for (size_t i = 0; i < maps_.size(); ++i) maps_[i]->removedBytes = removed[i];
}

size_t MapDelta::RemovedBytes() const {
  size_t bytes = 0;
  for (const auto& each : maps_) {
    if (each->IsInMap()) bytes += each->removedBytes;
  }
  return bytes;
}

size_t MapDelta::SwapBytes() const {
  // A swap holds copies of stretches and orders of lists, and makes the tables of names again.
  constexpr size_t OfOneName = 96;
  size_t bytes = Bytes();
  for (const auto& each : maps_) {
    if (each->change.points) bytes += each->map->pointStore.size() * OfOneName;
  }
  return bytes;
}

MapSnapshot::MapSnapshot(Workspace& workspace) {
  for (Map& map : workspace.maps) maps_.push_back(TakeMap(map));
}

MapSnapshot::~MapSnapshot() = default;

MapDelta MapSnapshot::TakeDelta() {
  MapDelta delta;
  for (const auto& then : maps_) {
    auto each = CompareMap(*then);
    if (each->change.Any() || each->AnyAnalysis()) delta.maps_.push_back(std::move(each));
  }
  maps_.clear();
  return delta;
}

}  // namespace orvane
