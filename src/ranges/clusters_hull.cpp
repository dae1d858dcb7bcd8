// Nearly all tested places are deep inside the ring. The table cuts the ring into bands along
// north:
//
//          .--------.         A ring whose two chains between its lowest and its highest vertex
//      ---/----------\---     only rise has one edge of each chain at every height. Where one chain
//        /   inside   \       stays left of a place all through its band and the other one right
//      -(--############)-     of it, exactly one edge crosses the ray towards east (###).
//        \            /
//
// The east span of an edge counts in whole metres, which moves its crossings towards the start of
// the edge; the reach of an edge in a band is computed from the same crossings. A margin allows
// for rounding. When the ring changes, the sure parts are cut back from its new edges and stay
// elsewhere; a new table is made when too many places fall outside them. Those places, and all
// places in rings of another shape, are tested plainly.

#include "ranges/clusters_hull.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {
namespace {

/// A table costs about as much as this many plain tests.
constexpr int MissesBeforeTable = 16;

/// Far more than the effect of rounding, relative to the size of the numbers.
constexpr double Margin = 1e-9;

size_t Next(const Ring& ring, size_t index) { return index + 1 < ring.size() ? index + 1 : 0; }

bool IsSamePlace(const RingVertex& a, const RingVertex& b) {
  return a.place.north == b.place.north && a.place.east == b.place.east;
}

double SizeOf(const Meters& place) { return std::fabs(place.north) + std::fabs(place.east); }

}  // namespace

bool InsideTest::IsInside(const Meters& place) {
  if (isSure_ && place.north > low_ && place.north <= high_) {
    const auto at = static_cast<size_t>((place.north - low_) * perMeter_);
    const Band& band = bands_[std::min(at, Bands - 1)];
    if (place.east > band.left && place.east < band.right) return true;
  }
  if (!isNew_ && ++missed_ >= MissesBeforeTable) Build();
  return PointInRing(place.east, place.north, ring_);
}

/// Calls `take` with each band that an edge touches and the edge's least and greatest east there.
template <typename Take>
void InsideTest::ForEachBand(const Meters& from, const Meters& to, const Take& take) const {
  if (from.north == to.north) return;
  const double slope = std::trunc(to.east - from.east) / (to.north - from.north);
  const double height = (high_ - low_) / Bands;
  const double margin = (high_ - low_) * Margin;
  const double bottom = std::max(std::min(from.north, to.north), low_);
  const double top = std::min(std::max(from.north, to.north), high_);
  if (!(bottom - margin <= top + margin)) return;
  const auto first = static_cast<size_t>(std::max(0.0, (bottom - margin - low_) * perMeter_));
  const auto last =
      std::min(static_cast<size_t>(std::max(0.0, (top + margin - low_) * perMeter_)), Bands - 1);
  for (size_t i = first; i <= last; ++i) {
    const double bandLow = low_ + height * static_cast<double>(i) - margin;
    const double bandHigh = bandLow + height + 2 * margin;
    const double a = from.east + (std::max(bottom, bandLow) - from.north) * slope;
    const double b = from.east + (std::min(top, bandHigh) - from.north) * slope;
    take(i, std::min(a, b), std::max(a, b));
  }
}

/// Whether the edges rise in one run and fall in one, so that at every height between the lowest
/// and the highest vertex there is exactly one of each.
bool InsideTest::RunsOnceAround() const {
  int turns = 0;
  int direction = 0;
  int firstDirection = 0;
  for (size_t i = 0; i < ring_.size(); ++i) {
    const double from = ring_[i].place.north;
    const double to = ring_[Next(ring_, i)].place.north;
    if (from == to) continue;
    const int next = to > from ? 1 : -1;
    if (direction == 0) firstDirection = next;
    if (direction != 0 && next != direction) ++turns;
    direction = next;
  }
  if (direction != firstDirection) ++turns;
  return turns == 2;
}

void InsideTest::Build() {
  missed_ = 0;
  isNew_ = true;
  isSure_ = false;
  if (!RunsOnceAround()) return;
  low_ = high_ = ring_.front().place.north;
  double margin = 0;
  for (const RingVertex& vertex : ring_) {
    low_ = std::min(low_, vertex.place.north);
    high_ = std::max(high_, vertex.place.north);
    margin = std::max(margin, SizeOf(vertex.place) * Margin);
  }
  if (!(high_ - low_ > 1)) return;
  perMeter_ = Bands / (high_ - low_);

  struct Reach {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
  };
  std::array<Reach, Bands> rising;
  std::array<Reach, Bands> falling;
  for (size_t i = 0; i < ring_.size(); ++i) {
    const Meters& from = ring_[i].place;
    const Meters& to = ring_[Next(ring_, i)].place;
    auto& side = to.north > from.north ? rising : falling;
    ForEachBand(from, to, [&](size_t band, double least, double greatest) {
      side[band].low = std::min(side[band].low, least);
      side[band].high = std::max(side[band].high, greatest);
    });
  }
  for (size_t i = 0; i < Bands; ++i) {
    const bool risesLeft = rising[i].high < falling[i].low;
    bands_[i].risesLeft = risesLeft;
    bands_[i].left = (risesLeft ? rising[i].high : falling[i].high) + margin;
    bands_[i].right = (risesLeft ? falling[i].low : rising[i].low) - margin;
  }
  isSure_ = true;
  seen_ = ring_;
}

void InsideTest::KeepClearOf(const Meters& from, const Meters& to) {
  const double margin = std::max(SizeOf(from), SizeOf(to)) * Margin;
  const bool rises = to.north > from.north;
  ForEachBand(from, to, [&](size_t at, double least, double greatest) {
    Band& band = bands_[at];
    if (rises == band.risesLeft) {
      band.left = std::max(band.left, greatest + margin);
    } else {
      band.right = std::min(band.right, least - margin);
    }
  });
}

/// The first vertex that differs from the ring seen last.
size_t InsideTest::ChangedFrom() const {
  const size_t most = std::min(ring_.size(), seen_.size());
  size_t at = 0;
  while (at < most && IsSamePlace(ring_[at], seen_[at])) ++at;
  return at;
}

/// The first vertex of the unchanged tail.
size_t InsideTest::ChangedTo(size_t from) const {
  const size_t most = std::min(ring_.size(), seen_.size()) - from;
  size_t same = 0;
  while (same < most && IsSamePlace(ring_[ring_.size() - 1 - same], seen_[seen_.size() - 1 - same]))
    ++same;
  return ring_.size() - same;
}

void InsideTest::NoteChange() {
  isNew_ = false;
  if (!isSure_) return;
  const auto [lowest, highest] = std::minmax_element(
      ring_.begin(), ring_.end(),
      [](const RingVertex& x, const RingVertex& y) { return x.place.north < y.place.north; });
  isSure_ = lowest->place.north <= low_ && highest->place.north >= high_ && RunsOnceAround();
  if (!isSure_) return;
  const size_t size = ring_.size();
  const size_t from = ChangedFrom();
  const size_t to = ChangedTo(from);
  // The edge that leads to the first changed vertex is new too; it may be the closing edge.
  for (size_t i = from; i <= to; ++i) {
    KeepClearOf(ring_[(i + size - 1) % size].place, ring_[i % size].place);
  }
  seen_ = ring_;
}

HullGrowth::HullGrowth(const RingVertex& north, const RingVertex& east, const RingVertex& south,
                       const RingVertex& west, Messages& messages)
    : messages_(messages) {
  for (const RingVertex& extreme : {north, east, south, west}) {
    if (!IsExtreme(extreme.point)) start_.push_back(extreme);
  }
  std::reverse(start_.begin(), start_.end());
  ring_ = start_;
}

bool HullGrowth::IsExtreme(const Point* point) const {
  return std::any_of(start_.begin(), start_.end(),
                     [&](const RingVertex& vertex) { return vertex.point == point; });
}

void HullGrowth::Take(const RingVertex& vertex) {
  // An extreme is skipped even if it is found inside.
  if (inside_.IsInside(vertex.place) || IsExtreme(vertex.point)) return;
  AddToRing(ring_, vertex, messages_);
  inside_.NoteChange();
}

}  // namespace orvane
