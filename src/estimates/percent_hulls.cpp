#include "estimates/percent_hulls.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

constexpr double PerCent = 100.0;
constexpr double SameDistance = 1 + 1e-9;

constexpr size_t Directions = 16;
/// The east and north of unit vectors around the circle.
const std::array<PlanePlace, Directions>& Compass() {
  static const std::array<PlanePlace, Directions> compass = [] {
    constexpr double FullTurn = 6.283185307179586;
    std::array<PlanePlace, Directions> made;
    for (size_t i = 0; i < Directions; ++i) {
      const double angle = FullTurn * static_cast<double>(i) / Directions;
      made[i] = {std::cos(angle), std::sin(angle)};
    }
    return made;
  }();
  return compass;
}

/// A convex ring of the places that reach furthest in each direction. What is inside it is not a corner
/// of the hull.
class ReachRing {
 public:
  explicit ReachRing(const PlanePlace& centroid) : centroid_(centroid) {
    reach_.fill(-std::numeric_limits<double>::infinity());
  }

  void Add(const PlanePlace& place) {
    const auto& compass = Compass();
    for (size_t i = 0; i < Directions; ++i) {
      const double reach = place.north * compass[i].north + place.east * compass[i].east;
      if (reach > reach_[i]) {
        reach_[i] = reach;
        corners_[i] = place;
      }
    }
  }

  /// Must be called after the last `Add`.
  void Close() {
    for (size_t i = 0; i < Directions; ++i) {
      const PlanePlace& from = corners_[i];
      const PlanePlace& to = corners_[(i + 1) % Directions];
      const double north = to.north - from.north;
      const double east = to.east - from.east;
      const double length = std::sqrt(north * north + east * east);
      if (length > 0) edges_[count_++] = {from, {-east / length, north / length}};
    }
    double inner = count_ == 0 ? 0 : std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < count_; ++i) {
      inner = std::min(inner, std::max(Depth(edges_[i], centroid_) - Margin, 0.0));
    }
    innerSquare_ = inner * inner;
  }

  /// True for a place that is inside by more than rounding.
  /// \param square  of its distance from the centroid
  bool HasInside(const PlanePlace& place, double square) const {
    if (square < innerSquare_) return true;
    for (size_t i = 0; i < count_; ++i) {
      if (Depth(edges_[i], place) <= Margin) return false;
    }
    return count_ > 0;
  }

 private:
  static constexpr double Margin = 1e-6;  // metres

  struct Edge {
    PlanePlace from;
    PlanePlace inward;  ///< of length 1
  };
  /// How far a place is inside of an edge, in metres.
  static double Depth(const Edge& edge, const PlanePlace& place) {
    return (place.north - edge.from.north) * edge.inward.north +
           (place.east - edge.from.east) * edge.inward.east;
  }

  PlanePlace centroid_;
  std::array<double, Directions> reach_{};
  std::array<PlanePlace, Directions> corners_;
  std::array<Edge, Directions> edges_;
  size_t count_ = 0;        ///< of `edges_`
  double innerSquare_ = 0;  ///< of the radius of a circle about the centroid that is inside
};

double SquareOf(const PlanePlace& place, const PlanePlace& centroid) {
  const double north = place.north - centroid.north;
  const double east = place.east - centroid.east;
  return north * north + east * east;
}

}  // namespace

double QuantileOfSorted(std::span<const double> sorted, double percent) {
  const double position = static_cast<double>(sorted.size() - 1) * percent / PerCent;
  const auto below = static_cast<size_t>(position);
  if (below + 1 >= sorted.size()) return sorted.back();
  const double part = position - static_cast<double>(below);
  return sorted[below] + part * (sorted[below + 1] - sorted[below]);
}

PlanePlace CentroidOf(std::span<const PlanePlace> places) {
  PlanePlace sum;
  for (const PlanePlace& place : places) {
    sum.north += place.north;
    sum.east += place.east;
  }
  const auto count = static_cast<double>(places.size());
  return {sum.north / count, sum.east / count};
}

double PercentHulls::Area(std::span<const PlanePlace> places, const PlanePlace& centroid,
                          double percent) {
  return HullArea(Corners(places, centroid, percent));
}

const std::vector<PlanePlace>& PercentHulls::Corners(std::span<const PlanePlace> places,
                                                     const PlanePlace& centroid, double percent) {
  squares_.resize(places.size());
  for (size_t i = 0; i < places.size(); ++i) squares_[i] = SquareOf(places[i], centroid);
  const double limit = QuantileOfDistances(percent) * SameDistance;
  CollectOuter(places, centroid, limit * limit);
  ReduceToHull(outer_);
  return outer_;
}

/// Only the two distances around the quantile are needed, and they are near those of the last call:
/// mostly it is enough to look at the places beyond a little less than that.
double PercentHulls::QuantileOfDistances(double percent) {
  constexpr double LittleLess = 0.9;
  const double position = static_cast<double>(squares_.size() - 1) * percent / PerCent;
  const auto below = static_cast<size_t>(position);
  const double guess = lastQuantile_ * lastQuantile_ * LittleLess;
  largest_.clear();
  for (const double square : squares_) {
    if (square >= guess) largest_.push_back(square);
  }
  size_t skipped = squares_.size() - largest_.size();
  if (skipped > below) {
    largest_ = squares_;
    skipped = 0;
  }
  const auto at = largest_.begin() + static_cast<std::ptrdiff_t>(below - skipped);
  std::nth_element(largest_.begin(), at, largest_.end());
  lastQuantile_ = std::sqrt(*at);
  if (at + 1 != largest_.end()) {
    const double next = std::sqrt(*std::min_element(at + 1, largest_.end()));
    lastQuantile_ += (position - static_cast<double>(below)) * (next - lastQuantile_);
  }
  return lastQuantile_;
}

/// Collects the places within the limit that can be corners of their hull.
/// \param limit  square metres
void PercentHulls::CollectOuter(std::span<const PlanePlace> places, const PlanePlace& centroid,
                                double limit) {
  constexpr double OuterPart = 0.6;
  constexpr size_t TooFewToFilter = 64;
  const bool isFiltered = places.size() >= TooFewToFilter;
  outer_.clear();
  ReachRing ring(centroid);
  if (isFiltered) {
    for (size_t i = 0; i < places.size(); ++i) {
      if (squares_[i] <= limit && squares_[i] >= limit * OuterPart) ring.Add(places[i]);
    }
    ring.Close();
  }
  for (size_t i = 0; i < places.size(); ++i) {
    if (squares_[i] > limit) continue;
    if (!isFiltered || !ring.HasInside(places[i], squares_[i])) outer_.push_back(places[i]);
  }
}

}  // namespace orvane
