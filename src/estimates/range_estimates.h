#pragma once

#include "base/dates.h"
#include "base/progress.h"
#include "estimates/area_curve.h"
#include "model/records.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

/// An area that belongs to some per cent of the fixes or of the density.
struct AreaOfPercent {
  int percent = 0;
  double area = 0;  ///< square metres
};

/// A range by kernel density.
struct KernelEstimate {
  double bandwidth = 0;              ///< metres, with the factor in it
  std::vector<AreaOfPercent> areas;  ///< in the order of the settings
  double level95 = 0;                ///< of the set that holds 95 %, per square metre
};

/// What the densities of a range and of another one have in common; nothing where one has no kernel.
struct DensityOverlap {
  const Range* other = nullptr;
  std::optional<double> inside95;  ///< the share of this range's density inside the other's 95 %
  std::optional<double> affinity;  ///< Bhattacharyya's, 0 to 1
};

/// The estimates of one range. A fix is one element of the range's points that has a place, repeats
/// counted; see `FixesOf`.
struct RangeEstimate {
  const Range* range = nullptr;
  size_t fixes = 0;
  size_t days = 0;           ///< dates on which there is a fix
  PackedDate firstDate = 0;  ///< 0 without a day
  PackedDate lastDate = 0;
  /// Minimum convex polygons of 50, 55, ... 100 % of the fixes: those nearest to their centroid.
  /// 100 % is `Range::mcpArea`, unless a point has no place. Empty without fixes.
  std::vector<AreaOfPercent> mcp;
  /// None for fewer than two fixes and for fixes within a millimetre of each other.
  std::optional<KernelEstimate> kernel;
  std::vector<CurveRow> curve;           ///< empty without days
  std::vector<DensityOverlap> overlaps;  ///< with each other range of the call, in its order
};

struct EstimateSettings {
  double bandwidthFactor = 1;  ///< from `LeastBandwidthFactor` to `LargestBandwidthFactor`
  std::uint64_t seed = 1;      ///< of the random orders of the days
  std::vector<int> densityPercents = {50, 95};
};

/// Estimates analysed ranges, each in the plane about the centre of the bounds of its fixes. Nothing
/// of the map is changed.
/// \param progress  can be null
/// \return in the order of `ranges`; empty if it was cancelled
std::vector<RangeEstimate> EstimateRanges(std::span<const Range* const> ranges,
                                          const EstimateSettings& settings, Progress* progress);

}  // namespace orvane
