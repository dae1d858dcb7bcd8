#include "estimates/range_estimates.h"

#include "estimates/kernel.h"
#include "estimates/percent_hulls.h"
#include "estimates/range_fixes.h"

#include <algorithm>
#include <map>

namespace orvane {

namespace {

/// A range with its fixes, in its own plane too.
struct FixesOfRange {
  const Range* range;
  std::vector<RangeFix> fixes;
  GeoBounds bounds;  ///< of the fixes, if there are any
  std::vector<PlanePlace> places;

  explicit FixesOfRange(const Range& of) : range(&of), fixes(FixesOf(of)) {
    if (fixes.empty()) return;
    bounds = BoundsOf(fixes);
    places = PlacesInPlane(fixes, bounds);
  }
};

std::vector<AreaOfPercent> EstimatePolygons(const FixesOfRange& of) {
  constexpr int Least = 50;
  constexpr int Step = 5;
  constexpr int All = 100;
  std::vector<AreaOfPercent> areas;
  if (of.places.empty()) return areas;
  const PlanePlace centroid = CentroidOf(of.places);
  PercentHulls hulls;
  for (int percent = Least; percent < All; percent += Step) {
    areas.push_back({percent, hulls.Area(of.places, centroid, percent)});
  }
  const bool allPlaced = of.fixes.size() == of.range->points.size();
  areas.push_back({All, allPlaced ? of.range->mcpArea : hulls.Area(of.places, centroid, All)});
  return areas;
}

std::optional<KernelEstimate> EstimateKernel(const FixesOfRange& of,
                                             const EstimateSettings& settings) {
  const auto bandwidth = ReferenceBandwidth(of.places, settings.bandwidthFactor);
  if (!bandwidth) return std::nullopt;
  const KernelDensity density(of.places, *bandwidth);
  KernelEstimate estimate;
  estimate.bandwidth = *bandwidth;
  for (const int percent : settings.densityPercents) {
    estimate.areas.push_back({percent, density.SetOf(percent).area});
  }
  constexpr double OverlapPercent = 95;
  estimate.level95 = density.SetOf(OverlapPercent).level;
  return estimate;
}

/// The fixes of each day, by date.
std::map<PackedDate, std::vector<PlanePlace>> FixesByDay(const FixesOfRange& of) {
  std::map<PackedDate, std::vector<PlanePlace>> days;
  for (size_t i = 0; i < of.fixes.size(); ++i) {
    if (of.fixes[i].day != 0) days[of.fixes[i].day].push_back(of.places[i]);
  }
  return days;
}

RangeEstimate EstimateAlone(const FixesOfRange& of, const EstimateSettings& settings,
                            Progress* progress) {
  RangeEstimate estimate;
  estimate.range = of.range;
  estimate.fixes = of.fixes.size();
  estimate.mcp = EstimatePolygons(of);
  estimate.kernel = EstimateKernel(of, settings);
  auto byDate = FixesByDay(of);
  estimate.days = byDate.size();
  if (byDate.empty() || IsCanceled(progress)) return estimate;
  estimate.firstDate = byDate.begin()->first;
  estimate.lastDate = byDate.rbegin()->first;
  std::vector<std::vector<PlanePlace>> days;
  days.reserve(byDate.size());
  for (auto& [date, places] : byDate) days.push_back(std::move(places));
  estimate.curve = AreaCurve(days, settings.seed, progress);
  return estimate;
}

/// True if the densities of two ranges can't touch: their fixes are further apart than both reach.
bool AreFarApart(std::span<const PlanePlace> a, std::span<const PlanePlace> b, double reach) {
  const auto ends = [](std::span<const PlanePlace> places, double PlanePlace::*axis) {
    const auto [low, high] =
        std::minmax_element(places.begin(), places.end(),
                            [&](const auto& p, const auto& q) { return p.*axis < q.*axis; });
    return std::pair((*low).*axis, (*high).*axis);
  };
  for (const auto axis : {&PlanePlace::north, &PlanePlace::east}) {
    const auto [lowA, highA] = ends(a, axis);
    const auto [lowB, highB] = ends(b, axis);
    if (lowA - highB > reach || lowB - highA > reach) return true;
  }
  return false;
}

SharedDensity ComparePair(const FixesOfRange& a, const KernelEstimate& kernelA,
                          const FixesOfRange& b, const KernelEstimate& kernelB) {
  constexpr double Reach = 7;  // bandwidths; the sums end at 6
  const GeoBounds both = {
      std::min(a.bounds.minLat, b.bounds.minLat), std::max(a.bounds.maxLat, b.bounds.maxLat),
      std::min(a.bounds.minLon, b.bounds.minLon), std::max(a.bounds.maxLon, b.bounds.maxLon)};
  const auto placesA = PlacesInPlane(a.fixes, both);
  const auto placesB = PlacesInPlane(b.fixes, both);
  const double reach = Reach * (kernelA.bandwidth + kernelB.bandwidth);
  if (AreFarApart(placesA, placesB, reach)) return {};
  return CompareDensities(KernelDensity(placesA, kernelA.bandwidth, true),
                          KernelDensity(placesB, kernelB.bandwidth, true),
                          {kernelA.level95, kernelB.level95});
}

/// Compares the densities of each two ranges.
void CompareAll(std::span<const FixesOfRange> fixes, std::span<RangeEstimate> estimates,
                Progress* progress) {
  const size_t count = estimates.size();
  std::vector<std::vector<DensityOverlap>> table(count, std::vector<DensityOverlap>(count));
  ProgressSteps steps(progress, WorkStage::Analyzing, count * (count - 1) / 2);
  for (size_t i = 0; i < count; ++i) {
    for (size_t j = i + 1; j < count; ++j) {
      if (!steps.Next()) return;
      table[i][j].other = estimates[j].range;
      table[j][i].other = estimates[i].range;
      if (!estimates[i].kernel || !estimates[j].kernel) continue;
      const SharedDensity shared =
          ComparePair(fixes[i], *estimates[i].kernel, fixes[j], *estimates[j].kernel);
      table[i][j].inside95 = shared.ofFirst;
      table[j][i].inside95 = shared.ofSecond;
      table[i][j].affinity = table[j][i].affinity = shared.affinity;
    }
  }
  for (size_t i = 0; i < count; ++i) {
    for (size_t j = 0; j < count; ++j) {
      if (i != j) estimates[i].overlaps.push_back(table[i][j]);
    }
  }
}

}  // namespace

std::vector<RangeEstimate> EstimateRanges(std::span<const Range* const> ranges,
                                          const EstimateSettings& settings, Progress* progress) {
  std::vector<FixesOfRange> fixes;
  std::vector<RangeEstimate> estimates;
  for (const Range* range : ranges) {
    fixes.emplace_back(*range);
    estimates.push_back(EstimateAlone(fixes.back(), settings, progress));
    if (IsCanceled(progress)) return {};
  }
  if (!estimates.empty()) CompareAll(fixes, estimates, progress);
  if (IsCanceled(progress)) return {};
  return estimates;
}

}  // namespace orvane
