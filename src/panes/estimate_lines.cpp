#include "panes/estimate_lines.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

bool AreSame(const std::vector<LatLon>& a, const std::vector<LatLon>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const LatLon& p, const LatLon& q) {
    return p.lat == q.lat && p.lon == q.lon;
  });
}

void Extend(GeoBounds& bounds, const std::vector<LatLon>& ring, bool isFirst) {
  if (isFirst) bounds = {ring[0].lat, ring[0].lat, ring[0].lon, ring[0].lon};
  for (const LatLon& corner : ring) {
    bounds.minLat = std::min(bounds.minLat, corner.lat);
    bounds.maxLat = std::max(bounds.maxLat, corner.lat);
    bounds.minLon = std::min(bounds.minLon, corner.lon);
    bounds.maxLon = std::max(bounds.maxLon, corner.lon);
  }
}

std::shared_ptr<const EstimateLines> MakeLines(std::uint32_t mask, std::vector<LatLon> fixes) {
  auto lines = std::make_shared<EstimateLines>();
  lines->mask = mask;
  std::vector<OutlineKind> kinds;
  for (size_t i = 0; i < OfferedOutlines.size(); ++i) {
    if ((mask >> i & 1U) != 0) kinds.push_back(OfferedOutlines[i]);
  }
  for (EstimateOutline& outline : OutlineEstimates(fixes, kinds)) {
    const bool isKernel = outline.kind.method == OutlineKind::Method::Kernel;
    const PenPattern pattern = isKernel ? PenPattern::Dotted : PenPattern::Dashed;
    for (std::vector<LatLon>& ring : outline.rings) {
      Extend(lines->bounds, ring, lines->rings.empty());
      lines->rings.push_back({pattern, std::move(ring)});
    }
  }
  lines->fixes = std::move(fixes);
  return lines;
}

}  // namespace

void UpdateEstimateLines(MapWindow& view, Progress* progress) {
  ProgressSteps steps(progress, WorkStage::Analyzing, view.rangeViews.size());
  for (RangePanelRow& row : view.rangeViews) {
    const bool goesOn = steps.Next();
    if (row.range == nullptr || row.estimateMask == 0) {
      row.estimates = nullptr;
      continue;
    }
    std::vector<LatLon> fixes = FixPlacesOf(*row.range);
    const EstimateLines* had = row.estimates.get();
    if (had != nullptr && had->mask == row.estimateMask && AreSame(had->fixes, fixes)) continue;
    if (!goesOn) row.estimateMask = 0;
    row.estimates = goesOn ? MakeLines(row.estimateMask, std::move(fixes)) : nullptr;
  }
}

}  // namespace orvane
