#pragma once

#include "geometry/poly.h"

#include <optional>
#include <vector>

namespace orvane {

/// Means "no location" and "no cluster".
constexpr int NoIndex = -1;

/// One distinct location of a range. Clusters and locations are identified by their index.
struct ClusterPoint {
  double north = 0;        ///< metres, about the mean place of the range; never changes
  double east = 0;         ///< likewise
  Point* point = nullptr;  ///< the first of the list that is here
  int count = 1;           ///< how many of the list are exactly here
  int cell = 0;            ///< row-major number of its cell
  int cluster = NoIndex;   ///< the cluster that it joined, or free
};

/// The locations, in the order in which pairs of equal length are taken: by cell, and within a
/// cell newest first.
using ClusterLocations = std::vector<ClusterPoint>;

/// An ordered pair of locations. A location of two or more points has a pair with itself.
struct ClusterEdge {
  double length = 0;  ///< metres
  int a = NoIndex;
  int b = NoIndex;

  bool IsNone() const { return a == NoIndex; }
};

/// Comes before all pairs.
constexpr ClusterEdge BeforeAllEdges = {-1, NoIndex, NoIndex};
/// Comes after all pairs; no range reaches so far.
constexpr double BeyondAllEdges = 1e17;

/// Finds the distinct locations. Leaves the points projected about their mean place.
/// \return nothing for an empty list, a list without an extent in north or in east, or one with
///         places that are not numbers or are out of all bounds
std::optional<ClusterLocations> FindLocations(PointSpan points);

/// The order in which pairs are taken: by length; at length 0 by the number of points at the first
/// location, larger first; then by the cell of the first, the cell of the second, and their places
/// in these cells. It is the order in which a double loop over the cells meets them.
bool Precedes(const ClusterLocations& locations, const ClusterEdge& x, const ClusterEdge& y);

}  // namespace orvane
