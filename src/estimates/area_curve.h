#pragma once

#include "base/progress.h"
#include "estimates/exact_hull.h"

#include <cstdint>
#include <span>
#include <vector>

namespace orvane {

/// One of the areas of a curve, in square metres.
struct CurveAreas {
  double firstDays = 0;  ///< of the first days by date
  double mean = 0;       ///< over the random orders of the days
  double low = 0;        ///< their 2.5 % quantile
  double high = 0;       ///< their 97.5 % quantile
};

/// The areas of some number of days.
struct CurveRow {
  size_t days = 0;
  size_t fixes = 0;  ///< on the first days by date
  CurveAreas all;    ///< of all fixes
  CurveAreas most;   ///< of the 95 % that are nearest to their centroid
};

/// The largest number of rows of a curve.
constexpr size_t CurveRows = 100;
/// The number of random orders of the days.
constexpr size_t CurveOrders = 200;

/// The numbers of days of the rows: each number up to `CurveRows` days, so many evenly spaced ones
/// beyond. The last is `days`.
std::vector<size_t> DaysOfRows(size_t days);

/// Orders of the days 0, 1, ..., `days` - 1, drawn from one generator: the same on all machines.
std::vector<std::vector<size_t>> RandomOrders(size_t days, std::uint64_t seed);

/// How the area of a range grows with the number of days on which it was observed.
/// \param days      the fixes of each day, by date; none is empty
/// \param progress  can be null; the result of cancelled work means nothing
/// \return a row for each of `DaysOfRows`
std::vector<CurveRow> AreaCurve(std::span<const std::vector<PlanePlace>> days, std::uint64_t seed,
                                Progress* progress);

/// True if the last quarter of the days, by date, still added more than 5 % to the area of all
/// fixes. False without rows.
bool StillGrows(std::span<const CurveRow> curve);

}  // namespace orvane
