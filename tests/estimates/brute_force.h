#pragma once

#include "estimates/exact_hull.h"
#include "support/dice.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace orvane::test {

/// Slow but obvious twins of the estimates.

/// \return places of several heaps, some of them on a lattice, so that distances repeat
inline std::vector<PlanePlace> RandomPlaces(Dice& dice, int count) {
  std::vector<PlanePlace> places;
  const bool onLattice = dice.Below(3) == 0;
  const int heaps = 1 + dice.Below(3);
  std::vector<PlanePlace> middles;
  for (int i = 0; i < heaps; ++i)
    middles.push_back({dice.Between(-800, 800), dice.Between(-800, 800)});
  for (int i = 0; i < count; ++i) {
    PlanePlace place = middles[static_cast<size_t>(dice.Below(heaps))];
    for (int j = 0; j < 3; ++j) {
      place.north += dice.Between(-100, 100);
      place.east += dice.Between(-60, 60);
    }
    if (onLattice) place = {std::round(place.north / 50) * 50, std::round(place.east / 50) * 50};
    places.push_back(place);
  }
  return places;
}

/// The density of a kernel estimate by its definition.
inline double DensityAt(std::span<const PlanePlace> places, double h, const PlanePlace& at) {
  constexpr double FullCircle = 2 * 3.141592653589793;
  double sum = 0;
  for (const PlanePlace& place : places) {
    const double n = (at.north - place.north) / h;
    const double e = (at.east - place.east) / h;
    sum += std::exp(-(n * n + e * e) / 2);
  }
  return sum / (FullCircle * h * h * static_cast<double>(places.size()));
}

/// The area of a convex hull by wrapping around it, one corner after the other.
inline double WrappedHullArea(std::span<const PlanePlace> places) {
  const auto turn = [](const PlanePlace& a, const PlanePlace& b, const PlanePlace& c) {
    return (b.north - a.north) * (c.east - a.east) - (b.east - a.east) * (c.north - a.north);
  };
  const auto apart = [](const PlanePlace& a, const PlanePlace& b) {
    return std::hypot(a.north - b.north, a.east - b.east);
  };
  const PlanePlace start =
      *std::min_element(places.begin(), places.end(), [](const auto& a, const auto& b) {
        return a.north != b.north ? a.north < b.north : a.east < b.east;
      });
  double twice = 0;
  PlanePlace corner = start;
  for (size_t steps = 0; steps <= places.size(); ++steps) {
    PlanePlace next = corner;
    for (const PlanePlace& place : places) {
      const double side = turn(corner, next, place);
      if (next == corner || side < 0 || (side == 0 && apart(corner, place) > apart(corner, next))) {
        next = place;
      }
    }
    twice += turn(start, corner, next);
    corner = next;
    if (corner == start) break;
  }
  return std::abs(twice) / 2;
}

/// The hull area of the places nearest to their centroid, by sorting all distances.
inline double SortedPercentArea(std::span<const PlanePlace> places, double percent) {
  PlanePlace mean;
  const auto count = static_cast<double>(places.size());
  for (const PlanePlace& place : places) {
    mean.north += place.north / count;
    mean.east += place.east / count;
  }
  const auto distance = [&](const PlanePlace& place) {
    return std::hypot(place.north - mean.north, place.east - mean.east);
  };
  std::vector<double> distances;
  for (const PlanePlace& place : places) distances.push_back(distance(place));
  std::sort(distances.begin(), distances.end());
  const double position = (count - 1) * percent / 100;
  const double below = distances[static_cast<size_t>(std::floor(position))];
  const double above = distances[static_cast<size_t>(std::ceil(position))];
  const double limit = below + (position - std::floor(position)) * (above - below);
  std::vector<PlanePlace> kept;
  for (const PlanePlace& place : places) {
    if (distance(place) <= limit * (1 + 1e-9)) kept.push_back(place);
  }
  return WrappedHullArea(kept);
}

}  // namespace orvane::test
