#include "mapfile/basis_points.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

/// Saved numbers are rounded: readings that differ by less, in degrees and metres, are the same.
constexpr double Rounding = 1e-4;
constexpr double RoundingOfDegrees = 1e-6;

bool IsNear(double a, double b) { return std::abs(a - b) <= Rounding * std::max(1.0, std::abs(a)); }

bool IsSameReading(const Measurement& a, const Measurement& b) {
  constexpr auto WithoutMark = ~std::uint32_t{MeasureWritten};
  return (a.flags & WithoutMark) == (b.flags & WithoutMark) && a.count == b.count &&
         a.altitude == b.altitude && a.base == b.base && a.nearName == b.nearName &&
         std::abs(a.position.lat - b.position.lat) <= RoundingOfDegrees &&
         std::abs(a.position.lon - b.position.lon) <= RoundingOfDegrees &&
         IsNear(a.bearing, b.bearing) && IsNear(a.distance, b.distance) &&
         IsNear(a.inclination, b.inclination);
}

/// \param before  the older readings, which `point` still has after the newer ones
void TakeBackReadings(Point& point, const std::forward_list<Measurement>& before) {
  const auto length = [](const auto& list) { return std::distance(list.begin(), list.end()); };
  std::vector<const Measurement*> unmatched;
  for (const Measurement& reading : before) unmatched.push_back(&reading);
  auto added = length(point.measurements) - length(before);
  auto last = point.measurements.before_begin();
  for (; added > 0; --added) {
    const auto reading = std::next(last);
    const auto same = std::find_if(unmatched.begin(), unmatched.end(),
                                   [&](const auto* old) { return IsSameReading(*old, *reading); });
    if (same == unmatched.end()) {
      last = reading;
      continue;
    }
    unmatched.erase(same);
    point.measurements.erase_after(last);
  }
}

/// \return the note of a point after it got the same note once more
std::optional<std::string> NoteWithoutRepeat(const std::string& before, const std::string& now) {
  // Appended after a blank, with the tab from the save.
  const std::string_view added = std::string_view(now).substr(std::min(now.size(), before.size()));
  constexpr std::string_view Joint = " \t";
  if (added.substr(0, Joint.size()) != Joint) return now;
  const std::string_view whole = added.substr(Joint.size());
  return std::string(whole.substr(0, before.size()) == before ? whole : std::string_view(before));
}

}  // namespace

BasisPoints::BasisPoints(const Map* basis) {
  for (; basis != nullptr; basis = basis->basis) {
    for (const Point& point : basis->pointStore) {
      kept_.push_back({const_cast<Point*>(&point), point});
    }
  }
}

void BasisPoints::TakeBackRepeats() {
  for (auto& [point, before] : kept_) {
    TakeBackReadings(*point, before.measurements);
    const bool isMarked = before.markShape != PointMarkNone;
    const std::uint32_t ownFlags = isMarked ? 0U : std::uint32_t{PointMarkFilled};
    point->flags = (before.flags & ~ownFlags) | (point->flags & ownFlags);
    point->geo = before.geo;
    point->projected = before.projected;
    if (before.note && point->note) point->note = NoteWithoutRepeat(*before.note, *point->note);
    if (before.labelLimit != 0) point->labelLimit = before.labelLimit;
    for (size_t i = 0; i < std::size(before.sm); ++i) {
      if (before.sm[i] != 0) point->sm[i] = before.sm[i];
    }
    if (isMarked) {
      point->markShape = before.markShape;
      point->markSize = before.markSize;
    }
  }
}

void BasisPoints::TakeBackAll() {
  for (auto& [point, before] : kept_) {
    point->measurements = std::move(before.measurements);
    point->flags = before.flags;
    point->geo = before.geo;
    point->projected = before.projected;
    point->note = std::move(before.note);
    point->labelLimit = before.labelLimit;
    std::copy(std::begin(before.sm), std::end(before.sm), std::begin(point->sm));
    point->markShape = before.markShape;
    point->markSize = before.markSize;
  }
}

void TakeTabsFromNotes(Map& map) {
  for (Point& point : map.pointStore) {
    if (point.note && point.note->substr(0, 1) == "\t") point.note->erase(0, 1);
  }
}

}  // namespace orvane
