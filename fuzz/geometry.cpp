// Builds hulls, overlaps, offsets and clusters of places made of raw numbers. Nothing may crash,
// hang or be undefined.
//
// The first byte chooses how the others become places: as bytes on a small lattice, where many
// places lie on one line or are equal; as 16-bit metres; or as the bits of any numbers, those that
// are not finite included. It also chooses the margin. Every other place belongs to the second ring.

#include "base/messages.h"
#include "fuzzed_map.h"
#include "geo/earth.h"
#include "geometry/convex_hull.h"
#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "ranges/clusters.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <span>
#include <vector>

namespace {

using orvane::Point;
using orvane::Poly;
using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t MostPoints = 400;

/// Takes a number of `width` bytes off the front: 1 for the lattice, 2 for metres, 8 for any bits.
double TakeNumber(Bytes& bytes, std::size_t width) {
  const Bytes own = bytes.first(width);
  bytes = bytes.subspan(width);
  if (width == 1) return static_cast<double>(own[0] % 16) * 10;
  if (width == 2) return static_cast<std::int16_t>(own[0] | own[1] << 8);
  double value = 0;
  std::memcpy(&value, own.data(), sizeof value);
  return value;
}

/// \return one or two rings of places; their points are in `store`
std::array<Poly, 2> RingsOf(Bytes bytes, std::size_t width, std::deque<Point>& store) {
  std::array<Poly, 2> rings;
  while (bytes.size() >= 2 * width && store.size() < MostPoints) {
    Point& point = store.emplace_back();
    const double north = TakeNumber(bytes, width);
    const double east = TakeNumber(bytes, width);
    // Raw numbers are degrees as a damaged file may give them.
    const bool raw = width == sizeof(double);
    point.geo = {.lat = raw ? north : orvane::MetersToDegrees(north),
                 .lon = raw ? east : orvane::MetersToDegrees(east)};
    point.flags = orvane::PointPlaced;
    rings[store.size() % 2].push_back(&point);
  }
  return rings;
}

void CheckHull(const Poly& points, orvane::Messages& messages) {
  const auto result = orvane::ConvexHull(points, messages);
  fuzz::Require(result.has_value() == !points.empty());
  if (!result) return;
  fuzz::Require(!result->hull.empty() && result->hull.size() <= points.size());
  fuzz::Require(!(orvane::PolygonArea(result->hull) < 0));
}

void CheckOffset(const Poly& ring, double margin) {
  orvane::ScratchPoints scratch;
  const Poly offset = orvane::OffsetPolygon(scratch, ring, margin);
  fuzz::Require(offset.empty() || offset.size() == ring.size());
  fuzz::Require(scratch.store.size() == offset.size());
}

void CheckOverlap(const Poly& a, const Poly& b, orvane::Messages& messages) {
  Poly all = a;
  all.insert(all.end(), b.begin(), b.end());
  const orvane::LatLon center = orvane::PolyCentre(all);
  orvane::ProjectPoints(all, center.lon, center.lat);
  orvane::ScratchPoints scratch;
  const Poly common = orvane::IntersectPolygons(scratch, a, b, center.lon, center.lat, messages);
  fuzz::Require(!(orvane::PolygonArea(common) < 0));
  if (a.empty() || b.empty()) return;
  orvane::VerticesInside(a, b);
  orvane::EdgeCrossings(scratch, a, b.front()->projected, b.back()->projected);
}

void CheckClusters(const Poly& points, orvane::Messages& messages) {
  const auto tree = orvane::ClusterPoints(points, messages);
  if (tree == nullptr) return;
  for (const orvane::Cluster& cluster : tree->clusters) {
    fuzz::Require(cluster.madeAt <= tree->steps && cluster.parent != &cluster);
    for (const double area : cluster.area) fuzz::Require(!(area < 0));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr std::array<std::size_t, 3> Widths = {1, 2, sizeof(double)};
  const std::uint8_t choice = data[0];
  const double margin = choice / 3 - 40;
  std::deque<Point> store;
  const auto rings = RingsOf(Bytes(data + 1, size - 1), Widths[choice % Widths.size()], store);
  orvane::RecordedMessages messages;
  Poly all;
  for (const Poly& ring : rings) {
    all.insert(all.end(), ring.begin(), ring.end());
    CheckHull(ring, messages);
    CheckOffset(ring, margin);
    orvane::RingRunsClockwise(ring);
  }
  CheckHull(all, messages);
  CheckOverlap(rings[0], rings[1], messages);
  const auto first = orvane::ConvexHull(rings[0], messages);
  const auto second = orvane::ConvexHull(rings[1], messages);
  if (first && second) CheckOverlap(first->hull, second->hull, messages);
  CheckClusters(all, messages);
  return 0;
}
