// A normal distribution in the plane is the product of two along the axes. So each place is shared
// out to the nodes around it, by weights that keep its position and all moments up to the third, and
// the lattice is smeared along east and then along north.

#include "estimates/density_tiles.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int Side = DensityTiles::Side;

/// The distribution along one axis, from -6 to 6 deviations; its sum is 1.
std::vector<double> NormalTaps(int steps) {
  constexpr int Deviations = 6;
  const int reach = Deviations * steps;
  std::vector<double> taps;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    const double x = static_cast<double>(i) / steps;
    taps.push_back(std::exp(-x * x / 2));
    sum += taps.back();
  }
  for (double& tap : taps) tap /= sum;
  return taps;
}

DensityTiles ShareOut(std::span<const PlanePlace> places, double step) {
  DensityTiles shares;
  const double share = 1 / static_cast<double>(places.size());
  for (const PlanePlace& place : places) {
    const double row = std::floor(place.north / step);
    const double column = std::floor(place.east / step);
    const auto ofRows = CubicWeights(place.north / step - row);
    const auto ofColumns = CubicWeights(place.east / step - column);
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) {
        shares.Add(static_cast<std::int64_t>(row) + i - 1,
                   static_cast<std::int64_t>(column) + j - 1,
                   share * ofRows[static_cast<size_t>(i)] * ofColumns[static_cast<size_t>(j)]);
      }
    }
  }
  return shares;
}

/// Smears tiles along one axis.
class Smear {
 public:
  explicit Smear(const std::vector<double>& taps)
      : taps_(taps),
        reach_(static_cast<int>(taps.size() / 2)),
        tilesBeside_((reach_ + Side - 1) / Side),
        strip_(static_cast<size_t>(2 * tilesBeside_ + 1) * DensityTiles::Nodes) {}

  DensityTiles AlongEast(const DensityTiles& from) {
    DensityTiles to;
    for (const auto& tile : from.Tiles()) {
      std::fill(strip_.begin(), strip_.end(), 0.0);
      const size_t width = strip_.size() / Side;
      for (size_t i = 0; i < DensityTiles::Nodes; ++i) {
        const double value = tile.values[i];
        if (value == 0) continue;
        double* out = strip_.data() + i / Side * width + FirstTarget(i % Side);
        for (size_t k = 0; k < taps_.size(); ++k) out[k] += value * taps_[k];
      }
      for (int beside = -tilesBeside_; beside <= tilesBeside_; ++beside) {
        const double* piece = strip_.data() + static_cast<size_t>(beside + tilesBeside_) * Side;
        AddPiece(to, tile.row, tile.column + beside, piece, width);
      }
    }
    return to;
  }

  DensityTiles AlongNorth(const DensityTiles& from) {
    DensityTiles to;
    for (const auto& tile : from.Tiles()) {
      std::fill(strip_.begin(), strip_.end(), 0.0);
      for (size_t row = 0; row < Side; ++row) {
        const double* values = tile.values.data() + row * Side;
        if (std::all_of(values, values + Side, [](double value) { return value == 0; })) continue;
        double* out = strip_.data() + FirstTarget(row) * Side;
        for (const double tap : taps_) {
          for (int i = 0; i < Side; ++i) out[i] += tap * values[i];
          out += Side;
        }
      }
      for (int beside = -tilesBeside_; beside <= tilesBeside_; ++beside) {
        const double* piece =
            strip_.data() + static_cast<size_t>(beside + tilesBeside_) * DensityTiles::Nodes;
        AddPiece(to, tile.row + beside, tile.column, piece, Side);
      }
    }
    return to;
  }

 private:
  /// The place in the strip of the first node that a node of the tile in its middle is smeared to.
  size_t FirstTarget(size_t node) const {
    return node + static_cast<size_t>(tilesBeside_ * Side - reach_);
  }

  /// Adds a tile's worth of the strip, unless it is empty.
  static void AddPiece(DensityTiles& to, std::int64_t row, std::int64_t column, const double* piece,
                       size_t width) {
    bool isEmpty = true;
    for (size_t i = 0; i < DensityTiles::Nodes && isEmpty; ++i) {
      isEmpty = piece[i / Side * width + i % Side] == 0;
    }
    if (isEmpty) return;
    DensityTiles::Tile& tile = to.At(row, column);
    for (size_t i = 0; i < Side; ++i) {
      for (size_t j = 0; j < Side; ++j) tile.values[i * Side + j] += piece[i * width + j];
    }
  }

  const std::vector<double>& taps_;
  int reach_;
  int tilesBeside_;
  std::vector<double> strip_;  ///< the tile and those beside it, in a row or one above the other
};

}  // namespace

DensityTiles::Tile& DensityTiles::At(std::int64_t row, std::int64_t column) {
  const auto [found, isNew] = indexes_.try_emplace({row, column}, tiles_.size());
  if (isNew) {
    tiles_.emplace_back();
    tiles_.back().row = row;
    tiles_.back().column = column;
  }
  return tiles_[found->second];
}

const DensityTiles::Tile* DensityTiles::Find(std::int64_t row, std::int64_t column) const {
  const auto found = indexes_.find({row, column});
  return found == indexes_.end() ? nullptr : &tiles_[found->second];
}

void DensityTiles::Add(std::int64_t row, std::int64_t column, double value) {
  const std::int64_t tileRow = FloorDivide(row, Side);
  const std::int64_t tileColumn = FloorDivide(column, Side);
  const std::int64_t node = (row - tileRow * Side) * Side + column - tileColumn * Side;
  At(tileRow, tileColumn).values[static_cast<size_t>(node)] += value;
}

void DensityTiles::Copy(std::int64_t row, std::int64_t column, size_t rows, size_t columns,
                        std::vector<double>& values) const {
  values.assign(rows * columns, 0);
  const std::int64_t endRow = row + static_cast<std::int64_t>(rows);
  const std::int64_t endColumn = column + static_cast<std::int64_t>(columns);
  for (std::int64_t i = FloorDivide(row, Side); i * Side < endRow; ++i) {
    for (std::int64_t j = FloorDivide(column, Side); j * Side < endColumn; ++j) {
      const Tile* tile = Find(i, j);
      if (tile == nullptr) continue;
      const std::int64_t left = std::max(column, j * Side);
      const std::int64_t right = std::min(endColumn, (j + 1) * Side);
      for (std::int64_t at = std::max(row, i * Side); at < std::min(endRow, (i + 1) * Side); ++at) {
        const double* from = tile->values.data() + (at - i * Side) * Side + left - j * Side;
        const auto to =
            values.begin() + (at - row) * static_cast<std::int64_t>(columns) + left - column;
        std::copy(from, from + (right - left), to);
      }
    }
  }
}

size_t DensityTiles::HashOfPlace::operator()(const Place& place) const {
  constexpr std::uint64_t Spread = 0x9E3779B97F4A7C15U;
  constexpr int Half = 32;
  const std::uint64_t mixed =
      (static_cast<std::uint64_t>(place.row) * Spread) ^ static_cast<std::uint64_t>(place.column);
  const std::uint64_t hash = mixed * Spread;
  return static_cast<size_t>(hash ^ (hash >> Half));
}

std::array<double, 4> CubicWeights(double t) {
  return {-t * (t - 1) * (t - 2) / 6, (t + 1) * (t - 1) * (t - 2) / 2, -(t + 1) * t * (t - 2) / 2,
          (t + 1) * t * (t - 1) / 6};
}

DensityTiles SumOfNormals(std::span<const PlanePlace> places, double step, int steps) {
  const std::vector<double> taps = NormalTaps(steps);
  Smear smear(taps);
  return smear.AlongNorth(smear.AlongEast(ShareOut(places, step)));
}

}  // namespace orvane
