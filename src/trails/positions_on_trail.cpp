// Marks are read from the names only. To find a place, the nodes of the trail (and of the second
// trail that continues it) are searched for the marks just below and just above the target, and
// the path between those two is walked:
//
//      Pde100 ----o------o---*--o---- Pde200        numbers rise along the list (`upperLast`)
//         lower          P      Q       upper       or fall (`lowerLast`), then walked from upper
//
// The walk does not look up names, so it may pass points without a mark.

#include "trails/positions_on_trail.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/earth.h"
#include "geometry/planes.h"
#include "model/point_names.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

namespace orvane {
namespace {

/// The longest name of a trail that is looked up with a "'" added, in bytes.
constexpr size_t LongestPrimeName = 97;

/// A place in the list of a trail.
struct TrailNode {
  const Trail* trail = nullptr;  ///< null for no node
  size_t index = 0;

  explicit operator bool() const { return trail != nullptr; }
  const Point& At() const { return *trail->points[index]; }
  bool IsLast() const { return index + 1 == trail->points.size(); }
};

bool SameNode(const TrailNode& a, const TrailNode& b) {
  return a.trail == b.trail && a.index == b.index;
}

/// The marks nearest to a target number that the search has found so far.
struct Bracket {
  TrailNode lower;
  TrailNode upper;
  int lowerNumber = -1;
  int upperNumber = -1;
  bool lowerLast = false;  ///< the lower mark was found last: numbers fall along the list
  bool upperLast = false;  ///< the upper mark was found last: numbers rise along the list
};

/// One step of a walk, from the point `from` to `to`.
struct Segment {
  const Point* from = nullptr;
  const Point* to = nullptr;
  double fraction = 0;  ///< where on it the result is; 0 at `from`
};

/// The number of a point on a trail, by its name or else by a synonym. A point with a hidden name
/// is auxiliary; its synonyms do not count. -1 for none.
int NumberOfPoint(const Trail& trail, const Point& point) {
  int number = PointNumberOnTrail(trail, point.name);
  if (number != -1 || IsHiddenName(point.name)) return number;
  for (const std::string& synonym : point.synonyms) {
    number = PointNumberOnTrail(trail, synonym);
    if (number != -1) break;
  }
  return number;
}

/// Searches one trail for marks nearer to the target than those found so far.
void SearchBracket(const Trail& trail, int target, Bracket& bracket) {
  for (size_t i = 0; i < trail.points.size(); ++i) {
    const int number = NumberOfPoint(trail, *trail.points[i]);
    if (number == -1) continue;
    if ((!bracket.lower || number > bracket.lowerNumber) && number <= target) {
      bracket.lower = {&trail, i};
      bracket.lowerNumber = number;
      bracket.lowerLast = true;
      bracket.upperLast = false;
      continue;
    }
    if (bracket.upper && number > bracket.upperNumber) continue;
    if (target <= number) {
      bracket.upper = {&trail, i};
      bracket.upperNumber = number;
      bracket.lowerLast = false;
      bracket.upperLast = true;
    }
  }
}

/// The length of a step, over the ground where both altitudes are known, else in plan.
double SegmentLength(const Point& from, const Point& to) {
  const double north = to.projected.north - from.projected.north;
  const double east = to.projected.east - from.projected.east;
  if (!HasAltitude(from.geo.altitude) || !HasAltitude(to.geo.altitude)) {
    return std::sqrt(north * north + east * east);
  }
  const double up = static_cast<double>(to.geo.altitude) - static_cast<double>(from.geo.altitude);
  return std::sqrt(north * north + east * east + up * up);
}

/// The direction from one point to the next in the plane of their `projected` fields.
double DirectionBetween(const Point& from, const Point& to) {
  return std::atan2(to.projected.east - from.projected.east,
                    to.projected.north - from.projected.north);
}

/// Cuts a real number toward zero to 32 bits; a value outside becomes the nearest bound.
int TruncateToInt(double value) {
  if (!(value >= INT32_MIN)) return INT32_MIN;
  if (value >= INT32_MAX) return INT32_MAX;
  return static_cast<int>(value);
}

/// The points of the walk from one node to another, from the end of the first trail to the head of
/// the other.
/// \return empty if the walk does not arrive or passes a point that is not placed
std::vector<const Point*> WalkBetween(const TrailNode& from, const TrailNode& to) {
  std::vector<const Point*> walk;
  TrailNode node = from;
  bool wrapped = false;
  while (true) {
    if (!IsPlaced(node.At())) return {};
    walk.push_back(&node.At());
    if (SameNode(node, to)) return walk;
    if (!node.IsLast()) {
      ++node.index;
    } else if (!wrapped) {
      node = {to.trail, 0};
      wrapped = true;
    } else {
      return {};
    }
  }
}

double WalkLength(const std::vector<const Point*>& walk) {
  double length = 0;
  for (size_t i = 0; i + 1 < walk.size(); ++i) length += SegmentLength(*walk[i], *walk[i + 1]);
  return length;
}

/// The segment at `part` of `whole` along a walk, both counted in marks.
std::optional<Segment> SegmentAtShare(const std::vector<const Point*>& walk, double part,
                                      double whole) {
  const double total = WalkLength(walk);
  double walked = 0;
  for (size_t i = 0; i + 1 < walk.size(); ++i) {
    const double length = SegmentLength(*walk[i], *walk[i + 1]);
    if (!(part / whole >= (walked + length) / total)) {
      const double fraction = length == 0 ? 0 : (part * total / whole - walked) / length;
      return Segment{walk[i], walk[i + 1], fraction};
    }
    walked += length;
  }
  return std::nullopt;
}

/// Gives a bracket without a lower mark the head of the trail instead. Its number follows from the
/// metres between the two.
/// \return false if the target is before the head
bool TakeHeadAsLower(const Trail& working, int target, Bracket& bracket) {
  if (bracket.upper.trail != &working) return false;
  const TrailNode head = {&working, 0};
  const std::vector<const Point*> walk = WalkBetween(head, bracket.upper);
  if (walk.empty()) return false;
  bracket.lowerNumber = TruncateToInt(bracket.upperNumber - WalkLength(walk));
  if (target < bracket.lowerNumber) return false;
  bracket.lower = head;
  bracket.upperLast = true;
  bracket.lowerLast = false;
  return true;
}

/// Between two marks their numbers are fractions of the measured path.
std::optional<Segment> SegmentBetweenMarks(int target, const Bracket& bracket) {
  const double lower = bracket.lowerNumber;
  const double upper = bracket.upperNumber;
  if (bracket.upperLast) {
    return SegmentAtShare(WalkBetween(bracket.lower, bracket.upper), target - lower, upper - lower);
  }
  if (bracket.lowerLast) {
    return SegmentAtShare(WalkBetween(bracket.upper, bracket.lower), target - upper, lower - upper);
  }
  return std::nullopt;
}

/// After the last mark numbers are metres, cut to whole ones at each point on the way.
std::optional<Segment> SegmentBehindMark(int target, const Bracket& bracket) {
  const TrailNode& lower = bracket.lower;
  double remaining = static_cast<double>(target) - bracket.lowerNumber;
  for (TrailNode node = lower; !node.IsLast(); ++node.index) {
    const Point& from = node.At();
    const Point& to = *node.trail->points[node.index + 1];
    if (!IsPlaced(from) || !IsPlaced(to)) return std::nullopt;
    const double length = SegmentLength(from, to);
    if (remaining <= length) return Segment{&from, &to, length == 0 ? 0 : remaining / length};
    remaining = std::trunc(remaining - length);
  }
  return std::nullopt;
}

/// The place of a mark that is a point. The direction is taken in the planes that the two points
/// are in at that moment.
std::optional<LatLon> PlaceOfMark(const TrailNode& mark, double* bearing) {
  if (!IsPlaced(mark.At())) return std::nullopt;
  if (bearing != nullptr && !mark.IsLast()) {
    const Point& next = *mark.trail->points[mark.index + 1];
    if (IsPlaced(next)) *bearing = DirectionBetween(mark.At(), next);
  }
  return mark.At().geo;
}

/// The position of the digits of the number at the end of a name, and of a preceding "-".
size_t ScanTrailNumber(std::string_view name) {
  size_t start = name.size();
  if (start > 0 && (name[start - 1] == 'm' || name[start - 1] == 'M')) --start;
  while (start > 0 && IsDigit(name[start - 1])) --start;
  if (start > 0 && name[start - 1] == '-') --start;
  return start;
}

/// The trails on which a metre mark can be.
struct MarkTrails {
  const Trail* first = nullptr;   ///< null if there is none
  const Trail* second = nullptr;  ///< where the first one continues; may be null
};

MarkTrails TrailsOfMark(Map& map, std::string_view name) {
  const auto start = TrailNumberStart(name);
  if (!start) return {};
  const std::string_view front = name.substr(0, *start);
  const Trail* plain = FindTrail(map, front);
  const Trail* prime = FindPrimeTrail(map, front);
  if (plain == nullptr) return {prime, nullptr};
  return {plain, prime};
}

}  // namespace

std::optional<size_t> TrailNumberStart(std::string_view name) {
  const size_t start = ScanTrailNumber(name);
  if (start == 0 || start == name.size()) return std::nullopt;
  return start;
}

int TrailNumberValue(std::string_view text) {
  const IntegerPrefix number = ReadInteger(text);
  if (number.length > 0) {
    return static_cast<int>(std::clamp<long>(number.value, INT32_MIN, INT32_MAX));
  }
  const bool negative = text.starts_with('-');
  const std::string_view digits = negative ? text.substr(1) : text;
  if (digits.empty() || !IsDigit(digits.front())) return 0;
  return negative ? INT32_MIN : INT32_MAX;
}

int PointNumberOnTrail(const Trail& trail, std::string_view name) {
  const auto start = TrailNumberStart(name);
  if (!trail.name || !start) return -1;
  const std::string_view front = name.substr(0, *start);
  std::string_view number = name.substr(*start);
  if (number.front() == '-') number.remove_prefix(1);
  const std::string_view trailName = *trail.name;
  if (SameName(front, trailName)) return TrailNumberValue(number);
  if (!trailName.ends_with('\'')) return -1;
  return SameName(front, trailName.substr(0, trailName.size() - 1)) ? TrailNumberValue(number) : -1;
}

std::optional<std::string_view> TrailNumberText(const Trail& trail, const Point& point) {
  if (!trail.name) return std::nullopt;
  const auto fits = [&](const std::string& name) {
    const auto start = TrailNumberStart(name);
    return start && std::string_view(name).substr(0, *start) == *trail.name;
  };
  const auto numberOf = [](std::string_view name) { return name.substr(*TrailNumberStart(name)); };
  if (fits(point.name)) return numberOf(point.name);
  for (const std::string& synonym : point.synonyms) {
    if (fits(synonym)) return numberOf(synonym);
  }
  return std::nullopt;
}

const std::string* PointNumericSynonym(const Point& point) {
  for (const std::string& synonym : point.synonyms) {
    if (ReadReal(synonym).length == synonym.size()) return &synonym;
  }
  return nullptr;
}

Trail* FindPrimeTrail(Map& map, std::string_view trailName) {
  return FindTrail(map, std::string(trailName.substr(0, LongestPrimeName)) + "'");
}

bool IsMarkOfTrail(Map& map, std::string_view name) {
  return TrailsOfMark(map, name).first != nullptr;
}

std::optional<LatLon> PositionOnTrail(Map& map, std::string_view name, double* bearing) {
  const auto start = TrailNumberStart(name);
  const auto [first, second] = TrailsOfMark(map, name);
  if (first == nullptr) return std::nullopt;

  const int target = TrailNumberValue(name.substr(*start));
  Bracket bracket;
  const Trail* working = first;
  SearchBracket(*first, target, bracket);
  if (second != nullptr && !(bracket.lower && bracket.upper)) {
    working = second;
    SearchBracket(*second, target, bracket);
  }
  if (bearing != nullptr) *bearing = 0;
  if (bracket.lower && bracket.lowerNumber == target) return PlaceOfMark(bracket.lower, bearing);
  if (!bracket.lower && !bracket.upper) return std::nullopt;

  // Marks on the other trail keep their present plane. See docs/compatibility.md.
  LocalPlaneOfPoints(working->points);
  if (!bracket.lower && !TakeHeadAsLower(*working, target, bracket)) return std::nullopt;
  const std::optional<Segment> segment =
      bracket.upper ? SegmentBetweenMarks(target, bracket) : SegmentBehindMark(target, bracket);
  if (!segment) return std::nullopt;
  if (bearing != nullptr && !bracket.lower.IsLast()) {
    *bearing = DirectionBetween(*segment->from, *segment->to);
  }
  return InterpolateLatLon(segment->from->geo, segment->to->geo, segment->fraction);
}

}  // namespace orvane
