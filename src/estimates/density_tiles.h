#pragma once

#include "estimates/exact_hull.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace orvane {

/// A number for each node of a square lattice that has no end, in tiles that are made where they are
/// needed: fixes can be in a few places far from each other.
class DensityTiles {
 public:
  static constexpr int Side = 32;  ///< nodes along each side of a tile
  static constexpr size_t Nodes = size_t{Side} * Side;

  /// One tile; its node `i` is in row `i / Side` towards north and in column `i % Side` towards east.
  struct Tile {
    std::int64_t row = 0;     ///< counted in tiles from the origin of the plane
    std::int64_t column = 0;  ///< likewise
    std::array<double, Nodes> values{};
  };

  /// \return in the order in which they were made
  std::span<const Tile> Tiles() const { return tiles_; }
  /// Finds a tile, or makes it with zeros. The reference is valid until the next tile is made.
  Tile& At(std::int64_t row, std::int64_t column);
  /// \return null if there is none
  const Tile* Find(std::int64_t row, std::int64_t column) const;
  /// Adds to one node, counted from the origin of the plane.
  void Add(std::int64_t row, std::int64_t column, double value);

  /// Copies a rectangle of nodes; those without a tile are 0.
  /// \param row, column    its first node
  /// \param rows, columns  its size
  /// \param values         receives it row by row
  void Copy(std::int64_t row, std::int64_t column, size_t rows, size_t columns,
            std::vector<double>& values) const;

 private:
  struct Place {
    std::int64_t row;
    std::int64_t column;
    friend bool operator==(const Place&, const Place&) = default;
  };
  struct HashOfPlace {
    size_t operator()(const Place& place) const;
  };

  std::vector<Tile> tiles_;
  std::unordered_map<Place, size_t, HashOfPlace> indexes_;
};

/// Rounds towards the lower whole number.
constexpr std::int64_t FloorDivide(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

/// Weights by which four nodes at -1, 0, 1 and 2 represent a place at `t`, from 0 to 1: a cubic
/// through the nodes.
std::array<double, 4> CubicWeights(double t);

/// Adds up round normal distributions, one for each place, all with the same deviation.
/// \param places  in the plane of the tiles
/// \param step    metres from node to node
/// \param steps   the standard deviation, in steps; the sum ends six deviations from each place
/// \return the share of each node in the whole; all nodes together have 1
DensityTiles SumOfNormals(std::span<const PlanePlace> places, double step, int steps);

}  // namespace orvane
