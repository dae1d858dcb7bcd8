#include "trails/ordering.h"

#include "model/time_names.h"
#include "trails/positions_on_trail.h"
#include "trails/trail_names.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace orvane {
namespace {

/// The lower 16 bits of a difference, as a signed number; see docs/compatibility.md.
int CutTo16Bits(std::int64_t difference) {
  return static_cast<std::int16_t>(static_cast<std::uint64_t>(difference) & 0xFFFF);
}

}  // namespace

void OrderTrailByNumber(Trail& trail, Messages& messages) {
  const auto isNumbered = [&](const Point* point) {
    return TrailNumberText(trail, *point).has_value();
  };
  if (std::none_of(trail.points.begin(), trail.points.end(), isNumbered)) return;
  std::vector<TrailKey> keys;
  for (Point* point : trail.points) {
    if (const auto text = TrailNumberText(trail, *point)) {
      keys.push_back({point, TrailNumberValue(*text)});
    } else if (IsTrailNameWith(trail, *point, "end")) {
      keys.push_back({point, EndPointKey});
    } else {
      NoteError(messages, "Can't fit point %s into trail %s",
                {ShownName(*point), ShownName(trail)});
      keys.push_back({point, UnfittedKey});
    }
  }
  OrderTrail(trail, std::move(keys), messages);
}

void OrderTrailByTime(Trail& trail, Messages& messages) {
  std::vector<TrailKey> keys;
  for (Point* point : trail.points) {
    if (IsTimeName(point->name)) {
      keys.push_back({point, ParseTimeName(point->name)});
      continue;
    }
    if (point->name.empty()) {
      NoteError(messages, "Can't fit nameless point into trail");
    } else {
      NoteError(messages, "Can't fit point %s into trail", {point->name});
    }
    keys.push_back({point, UnfittedKey});
  }
  OrderTrail(trail, std::move(keys), messages);
}

void OrderTrail(Trail& trail, std::vector<TrailKey> keys, Messages& messages) {
  std::stable_sort(keys.begin(), keys.end(),
                   [](const TrailKey& a, const TrailKey& b) { return a.key < b.key; });
  const size_t count = std::min(keys.size(), trail.points.size());
  for (size_t i = 0; i < count; ++i) {
    trail.points[i] = keys[i].point;
    if (i + 1 < keys.size()) {
      keys[i].point->duration = CutTo16Bits(std::int64_t{keys[i + 1].key} - keys[i].key);
    }
  }
  if (keys.size() != trail.points.size()) {
    NoteInternalError(messages, "OrderTrail: inconsistant lists");
  }
}

std::optional<size_t> InsertPointByNumber(Trail& trail, Point& point, std::string_view text) {
  const auto start = TrailNumberStart(text);
  if (!start) return std::nullopt;
  const int number = TrailNumberValue(text.substr(*start));
  size_t index = 0;
  for (; index < trail.points.size(); ++index) {
    const Point& other = *trail.points[index];
    const auto otherText = TrailNumberText(trail, other);
    if (otherText && TrailNumberValue(*otherText) > number) break;
    if (!otherText && IsTrailNameWith(trail, other, "end") && EndPointKey > number) break;
  }
  trail.points.insert(trail.points.begin() + static_cast<std::ptrdiff_t>(index), &point);
  return index;
}

}  // namespace orvane
