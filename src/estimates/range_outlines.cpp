#include "estimates/range_outlines.h"

#include "estimates/density_rings.h"
#include "estimates/percent_hulls.h"
#include "estimates/range_fixes.h"
#include "geo/earth.h"

#include <algorithm>
#include <memory>

namespace orvane {

namespace {

/// Outlines estimates of one set of fixes; the density is made when the first kernel needs it.
class Outliner {
 public:
  explicit Outliner(std::span<const RangeFix> fixes)
      : bounds_(BoundsOf(fixes)), places_(PlacesInPlane(fixes, bounds_)) {}

  void Outline(EstimateOutline& outline) {
    outline.kind.method == OutlineKind::Method::Mcp ? OutlinePolygon(outline)
                                                    : OutlineKernel(outline);
  }

 private:
  void OutlinePolygon(EstimateOutline& outline) {
    PercentHulls hulls;
    const std::vector<PlanePlace> corners =
        hulls.Corners(places_, CentroidOf(places_), outline.kind.percent);
    outline.area = HullArea(corners);
    if (outline.area == 0) return;
    AddRing(corners, outline);
    // The hull is counterclockwise with east to the left.
    std::reverse(outline.rings.front().begin(), outline.rings.front().end());
  }

  void OutlineKernel(EstimateOutline& outline) {
    const auto bandwidth = ReferenceBandwidth(places_, 1);
    if (!bandwidth) return;
    outline.bandwidth = *bandwidth;
    if (!density_) density_ = std::make_unique<KernelDensity>(places_, *bandwidth);
    const DensitySet set = density_->SetOf(outline.kind.percent);
    outline.area = set.area;
    for (const auto& ring : RingsAtLevel(*density_, set.level)) AddRing(ring, outline);
  }

  void AddRing(const std::vector<PlanePlace>& ring, EstimateOutline& outline) const {
    std::vector<LatLon>& places = outline.rings.emplace_back();
    places.reserve(ring.size());
    for (const PlanePlace& corner : ring) places.push_back(FromPlane(corner, bounds_));
  }

  GeoBounds bounds_;
  std::vector<PlanePlace> places_;
  std::unique_ptr<KernelDensity> density_;
};

}  // namespace

std::string OutlineCaption(const OutlineKind& kind) {
  const std::string percent = std::to_string(kind.percent);
  return kind.method == OutlineKind::Method::Mcp ? "MCP, " + percent + " % of the fixes"
                                                 : "Kernel, " + percent + " % of the density";
}

std::vector<LatLon> FixPlacesOf(const Range& range) {
  std::vector<LatLon> places;
  for (const Point* point : range.points) {
    if (IsFix(*point)) places.push_back({point->geo.lat, point->geo.lon, NoAltitude});
  }
  return places;
}

std::vector<EstimateOutline> OutlineEstimates(const std::vector<LatLon>& fixes,
                                              const std::vector<OutlineKind>& kinds) {
  std::vector<EstimateOutline> outlines;
  for (const OutlineKind& kind : kinds) outlines.emplace_back().kind = kind;
  if (fixes.empty()) return outlines;
  std::vector<RangeFix> withoutDays;
  withoutDays.reserve(fixes.size());
  for (const LatLon& place : fixes) withoutDays.push_back({place.lat, place.lon, 0});
  Outliner outliner(withoutDays);
  for (EstimateOutline& outline : outlines) outliner.Outline(outline);
  return outlines;
}

}  // namespace orvane
