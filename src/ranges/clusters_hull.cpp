// Nearly all places that are asked for lie deep in the ring. The table cuts the ring into bands
// along north:
//
//          .--------.         A ring whose two chains between its lowest and its highest vertex
//      ---/----------\---     only rise has one edge of each chain at every height. Where one chain
//        /   inside   \       stays left of a place all through its band and the other one right
//      -(--############)-     of it, exactly one edge crosses the ray towards east (###).
//        \            /
//
// The east span of an edge counts in whole metres, which moves its crossings towards the start of
// the edge; the reach of an edge in a band is taken from the same crossings. A margin takes up what
// rounding could do. Places outside the sure part, and rings of another shape, are tested plainly.

#include "ranges/clusters_hull.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {
namespace {

/// A table costs about as much as so many plain tests.
constexpr int AskedBeforeTable = 16;

/// Far more than rounding does, in parts of the extent of the ring.
constexpr double Margin = 1e-9;

size_t Next(const Ring& ring, size_t index) { return index + 1 < ring.size() ? index + 1 : 0; }

}  // namespace

bool InsideTest::IsInside(const Meters& place) {
  if (isReady_) {
    if (isOfUse_ && place.north > low_ && place.north <= high_) {
      const auto at = static_cast<size_t>(BandOf(place.north));
      const Band& band = bands_[std::min(at, Bands - 1)];
      if (place.east > band.left && place.east < band.right) return true;
    }
  } else if (++asked_ >= AskedBeforeTable) {
    Build();
  }
  return PointInRing(place.east, place.north, ring_);
}

void InsideTest::AddEdge(const Meters& from, const Meters& to, Reaches& reaches) const {
  if (from.north == to.north) return;
  const double slope = std::trunc(to.east - from.east) / (to.north - from.north);
  const double bottom = std::min(from.north, to.north);
  const double top = std::max(from.north, to.north);
  const double height = (high_ - low_) / Bands;
  const double margin = height * Bands * Margin;
  const auto first = static_cast<size_t>(std::max(0.0, BandOf(bottom - margin)));
  const auto last = std::min(static_cast<size_t>(BandOf(top + margin)), Bands - 1);
  for (size_t i = first; i <= last; ++i) {
    const double bandLow = low_ + height * static_cast<double>(i) - margin;
    const double bandHigh = bandLow + height + 2 * margin;
    const double a = from.east + (std::max(bottom, bandLow) - from.north) * slope;
    const double b = from.east + (std::min(top, bandHigh) - from.north) * slope;
    reaches[i].low = std::min({reaches[i].low, a, b});
    reaches[i].high = std::max({reaches[i].high, a, b});
  }
}

/// \return false if the chain does not only rise, or only fall
bool InsideTest::AddChain(size_t from, size_t to, Reaches& reaches) const {
  const bool rises = ring_[to].place.north > ring_[from].place.north;
  constexpr double Beyond = std::numeric_limits<double>::infinity();
  reaches.fill({Beyond, -Beyond});
  for (size_t i = from; i != to; i = Next(ring_, i)) {
    const Meters& start = ring_[i].place;
    const Meters& end = ring_[Next(ring_, i)].place;
    if (start.north != end.north && (end.north > start.north) != rises) return false;
    AddEdge(start, end, reaches);
  }
  return true;
}

void InsideTest::Build() {
  isReady_ = true;
  isOfUse_ = false;
  const auto lower = [](const RingVertex& x, const RingVertex& y) {
    return x.place.north < y.place.north;
  };
  const auto [lowest, highest] = std::minmax_element(ring_.begin(), ring_.end(), lower);
  low_ = lowest->place.north;
  high_ = highest->place.north;
  if (!(high_ - low_ > 1)) return;
  perMeter_ = Bands / (high_ - low_);

  const auto bottom = static_cast<size_t>(lowest - ring_.begin());
  const auto top = static_cast<size_t>(highest - ring_.begin());
  Reaches up;
  Reaches down;
  if (!AddChain(bottom, top, up) || !AddChain(top, bottom, down)) return;
  double extent = 0;
  for (const RingVertex& vertex : ring_) {
    extent = std::max(extent, std::fabs(vertex.place.east) + std::fabs(vertex.place.north));
  }
  const double margin = extent * Margin;
  for (size_t i = 0; i < Bands; ++i) {
    const bool upIsLeft = up[i].high < down[i].low;
    bands_[i].left = (upIsLeft ? up[i].high : down[i].high) + margin;
    bands_[i].right = (upIsLeft ? down[i].low : up[i].low) - margin;
  }
  isOfUse_ = true;
}

Ring HullOfPlaces(const std::vector<RingVertex>& places, const HullExtremes& extremes,
                  Messages& messages) {
  Ring start;
  for (const size_t extreme : {extremes.north, extremes.east, extremes.south, extremes.west}) {
    const auto isThere = [&](const RingVertex& old) { return old.point == places[extreme].point; };
    if (std::none_of(start.begin(), start.end(), isThere)) start.push_back(places[extreme]);
  }
  std::reverse(start.begin(), start.end());
  Ring ring = start;
  if (ring.size() == 1) return ring;
  InsideTest test(ring);
  for (const RingVertex& vertex : places) {
    if (test.IsInside(vertex.place)) continue;
    const auto isVertex = [&](const RingVertex& old) { return old.point == vertex.point; };
    if (std::any_of(start.begin(), start.end(), isVertex)) continue;
    AddToRing(ring, vertex, messages);
    test.NoteChange();
  }
  return ring;
}

}  // namespace orvane
