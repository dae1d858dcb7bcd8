#pragma once

#include "estimates/exact_hull.h"

#include <span>
#include <vector>

namespace orvane {

/// The quantile of numbers in rising order, linear between two of them.
/// \param percent  0 to 100: the position is `percent` / 100 of the way from the first to the last
double QuantileOfSorted(std::span<const double> sorted, double percent);

/// The mean of places, which must not be empty.
PlanePlace CentroidOf(std::span<const PlanePlace> places);

/// Computes hulls of the places nearest to their centroid. It keeps its memory, and what it learnt
/// from the last call, which makes calls on growing sets fast; the results don't depend on it.
class PercentHulls {
 public:
  /// The area of the exact convex hull of the places that are at most so far from the centroid as
  /// the quantile of all distances. Distances that agree to a part in 10^9 count as equal, so that
  /// regular layouts don't depend on the last bit.
  /// \param places    not empty
  /// \param centroid  their mean
  /// \param percent   0 to 100
  /// \return square metres
  double Area(std::span<const PlanePlace> places, const PlanePlace& centroid, double percent);

  /// The corners of that hull, as `ReduceToHull` leaves them. Valid until the next call.
  const std::vector<PlanePlace>& Corners(std::span<const PlanePlace> places,
                                         const PlanePlace& centroid, double percent);

 private:
  double QuantileOfDistances(double percent);
  void CollectOuter(std::span<const PlanePlace> places, const PlanePlace& centroid, double limit);

  std::vector<double> squares_;  ///< of the distances from the centroid
  std::vector<double> largest_;  ///< those that can hold the quantile
  double lastQuantile_ = 0;      ///< of the last call, metres
  std::vector<PlanePlace> outer_;
};

}  // namespace orvane
