#include "estimates/kernel.h"

#include "estimates/percent_hulls.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace orvane {

namespace {

constexpr double PerCent = 100.0;

/// Counts the tiles of a lattice on which places have a density, somewhat too many.
/// \param reach  metres to each side of a place, and the size of the squares that are counted
size_t SquaresAround(std::span<const PlanePlace> places, double reach) {
  struct HashOfSquare {
    size_t operator()(const std::pair<std::int64_t, std::int64_t>& square) const {
      constexpr size_t Prime = 1000003;
      return static_cast<size_t>(square.first) * Prime + static_cast<size_t>(square.second);
    }
  };
  std::unordered_set<std::pair<std::int64_t, std::int64_t>, HashOfSquare> found;
  for (const PlanePlace& place : places) {
    const auto row = static_cast<std::int64_t>(std::floor(place.north / reach));
    const auto column = static_cast<std::int64_t>(std::floor(place.east / reach));
    for (std::int64_t i = -1; i <= 1; ++i) {
      for (std::int64_t j = -1; j <= 1; ++j) found.insert({row + i, column + j});
    }
  }
  return found.size();
}

/// The steps of the lattice to a bandwidth: many where the density covers little, so that the few
/// nodes along a contour line measure its area well.
int StepsOfBandwidth(std::span<const PlanePlace> places, double bandwidth) {
  constexpr int Fine = 16;
  constexpr int Coarse = 8;
  constexpr double Reach = 6;  // bandwidths
  constexpr double MostNodes = 1.5e6;
  const auto squares = static_cast<double>(SquaresAround(places, Reach * bandwidth));
  return squares * Reach * Reach * Fine * Fine <= MostNodes ? Fine : Coarse;
}

/// The part of a node's square in which the density is at least `level`, as if it rose evenly from
/// `value - spread` to `value + spread`.
double PartAbove(double value, double spread, double level) {
  if (spread == 0) return value >= level ? 1 : 0;
  constexpr double Middle = 0.5;
  return std::clamp((value - level) / (2 * spread) + Middle, 0.0, 1.0);
}

/// How much of the density that part of a node's square holds.
/// \param held  what the whole square holds
double HeldAbove(double value, double spread, double held, double level) {
  const double part = PartAbove(value, spread, level);
  if (part <= 0 || part >= 1) return part * held;
  return part * ((level + value + spread) / 2 + held - value);
}

/// Values with a border of one node around them, which gives their slopes.
class BorderedValues {
 public:
  BorderedValues(std::vector<double> values, size_t side)
      : values_(std::move(values)), width_(side + 2) {}

  double At(size_t row, size_t column) const { return values_[(row + 1) * width_ + column + 1]; }
  /// How far the values in the square of a node are above and below that of the node.
  double Spread(size_t row, size_t column) const {
    constexpr double HalfOfDifferences = 0.25;  // over two steps each, of which half a step counts
    const size_t at = (row + 1) * width_ + column + 1;
    return (std::abs(values_[at + 1] - values_[at - 1]) +
            std::abs(values_[at + width_] - values_[at - width_])) *
           HalfOfDifferences;
  }
  /// The mean over the square of a node: its value, and a 24th of how it bends along both axes.
  double Mean(size_t row, size_t column) const {
    constexpr double PartOfBend = 1.0 / 24;
    const size_t at = (row + 1) * width_ + column + 1;
    const double around =
        values_[at + 1] + values_[at - 1] + values_[at + width_] + values_[at - width_];
    return values_[at] + (around - 4 * values_[at]) * PartOfBend;
  }

 private:
  std::vector<double> values_;
  size_t width_;
};

constexpr auto Side = static_cast<size_t>(DensityTiles::Side);

/// The first node of a tile, less the border.
std::pair<std::int64_t, std::int64_t> BorderOf(const DensityTiles::Tile& tile) {
  return {tile.row * DensityTiles::Side - 1, tile.column * DensityTiles::Side - 1};
}

BorderedValues BorderedTile(const DensityTiles& tiles, const DensityTiles::Tile& tile) {
  const auto [row, column] = BorderOf(tile);
  std::vector<double> values;
  tiles.Copy(row, column, Side + 2, Side + 2, values);
  return {std::move(values), Side};
}

/// Four nodes of a lattice and their weights, for one node of a finer lattice.
struct Neighbors {
  size_t first;
  std::array<double, 4> weights;
};

/// Where the nodes of a finer lattice are between those of a coarse one, along one axis.
struct AxisMatch {
  std::int64_t firstNode = 0;  ///< of the coarse lattice
  size_t nodes = 0;            ///< of the coarse lattice
  std::vector<Neighbors> neighbors;

  AxisMatch(std::int64_t first, double ratio, size_t side) {
    const auto place = [&](size_t i) {
      return (static_cast<double>(first) + static_cast<double>(i)) * ratio;
    };
    firstNode = static_cast<std::int64_t>(std::floor(place(0))) - 1;
    for (size_t i = 0; i < side; ++i) {
      const double node = std::floor(place(i));
      neighbors.push_back({static_cast<size_t>(static_cast<std::int64_t>(node) - 1 - firstNode),
                           CubicWeights(place(i) - node)});
    }
    nodes = neighbors.back().first + 4;
  }
};

/// Adds up what two densities share, over the nodes of the finer one.
class Comparison {
 public:
  /// \param levels  of the finer and of the coarser one
  Comparison(const KernelDensity& fine, const KernelDensity& coarse, const SharedLevels& levels)
      : fine_(fine), coarse_(coarse), fineLevel_(levels.first), coarseLevel_(levels.second) {}

  /// \return `ofFirst` is that of the finer one
  SharedDensity Compare() const {
    SharedDensity shared;
    for (const auto& tile : fine_.Shares().Tiles()) AddTile(tile, shared);
    shared.affinity = std::min(shared.affinity, 1.0);  // but for the last digits of the sums
    return shared;
  }

 private:
  void AddTile(const DensityTiles::Tile& tile, SharedDensity& shared) const {
    const auto [row, column] = BorderOf(tile);
    std::vector<double> sampled;
    coarse_.Sample(row, column, fine_.Step(), Side + 2, sampled);
    if (std::all_of(sampled.begin(), sampled.end(), [](double value) { return value == 0; }))
      return;
    const BorderedValues coarse(std::move(sampled), Side);
    const BorderedValues fine = BorderedTile(fine_.Shares(), tile);
    const double square = fine_.Step() * fine_.Step();
    for (size_t i = 0; i < Side; ++i) {
      for (size_t j = 0; j < Side; ++j) {
        const double share = std::max(fine.At(i, j), 0.0);
        const double density = std::max(coarse.At(i, j), 0.0);
        shared.ofFirst += share * PartAbove(density, coarse.Spread(i, j), coarseLevel_);
        shared.ofSecond +=
            density * square * PartAbove(share, fine.Spread(i, j), fineLevel_ * square);
        shared.affinity += std::sqrt(share * density * square);
      }
    }
  }

  const KernelDensity& fine_;
  const KernelDensity& coarse_;
  double fineLevel_;
  double coarseLevel_;
};

}  // namespace

std::optional<double> ReferenceBandwidth(std::span<const PlanePlace> places, double factor) {
  constexpr double LeastSpread = 0.001;  // metres
  constexpr double Exponent = -1.0 / 6;
  if (places.size() < 2) return std::nullopt;
  const PlanePlace mean = CentroidOf(places);
  double squares = 0;
  for (const PlanePlace& place : places) {
    const double north = place.north - mean.north;
    const double east = place.east - mean.east;
    squares += north * north + east * east;
  }
  const auto count = static_cast<double>(places.size());
  const double spread = std::sqrt(squares / (count - 1) / 2);
  if (!std::isfinite(spread) || spread < LeastSpread) return std::nullopt;
  return factor * spread * std::pow(count, Exponent);
}

KernelDensity::KernelDensity(std::span<const PlanePlace> places, double bandwidth, bool isCoarse) {
  const int steps = StepsOfBandwidth(places, bandwidth) / (isCoarse ? 2 : 1);
  step_ = bandwidth / steps;
  shares_ = SumOfNormals(places, step_, steps);
  for (const auto& tile : shares_.Tiles()) {
    const BorderedValues values = BorderedTile(shares_, tile);
    for (size_t i = 0; i < Side; ++i) {
      for (size_t j = 0; j < Side; ++j) {
        if (values.At(i, j) > 0)
          nodes_.push_back({values.At(i, j), values.Spread(i, j), values.Mean(i, j)});
      }
    }
  }
}

/// Halves the interval of the level, and with it the nodes that are partly inside.
DensitySet KernelDensity::SetOf(double percent) const {
  constexpr double Precision = 1e-12;
  double total = 0;
  double high = 0;
  for (const Node& node : nodes_) {
    total += node.held;
    high = std::max(high, node.share + node.spread);
  }
  const double wanted = total * percent / PerCent;
  double low = 0;
  double sharesInside = 0;
  double nodesInside = 0;
  std::vector<Node> open = nodes_;
  while (high - low > Precision * high) {
    const double level = (low + high) / 2;
    double shares = sharesInside;
    for (const Node& node : open) shares += HeldAbove(node.share, node.spread, node.held, level);
    (shares > wanted ? low : high) = level;
    std::erase_if(open, [&](const Node& node) {
      const bool isInside = node.share - node.spread >= high;
      if (isInside) {
        sharesInside += node.held;
        ++nodesInside;
      }
      return isInside || node.share + node.spread <= low;
    });
  }
  for (const Node& node : open) nodesInside += PartAbove(node.share, node.spread, high);
  return {high / (step_ * step_), nodesInside * step_ * step_};
}

void KernelDensity::Sample(std::int64_t row, std::int64_t column, double step, size_t side,
                           std::vector<double>& values) const {
  const AxisMatch north(row, step / step_, side);
  const AxisMatch east(column, step / step_, side);
  std::vector<double> nodes;
  shares_.Copy(north.firstNode, east.firstNode, north.nodes, east.nodes, nodes);
  values.assign(side * side, 0);
  if (std::all_of(nodes.begin(), nodes.end(), [](double share) { return share == 0; })) return;
  std::vector<double> alongEast(north.nodes * side);
  for (size_t i = 0; i < north.nodes; ++i) {
    for (size_t j = 0; j < side; ++j) {
      const auto& [first, weights] = east.neighbors[j];
      const double* from = nodes.data() + i * east.nodes + first;
      for (size_t k = 0; k < weights.size(); ++k) alongEast[i * side + j] += weights[k] * from[k];
    }
  }
  for (size_t i = 0; i < side; ++i) {
    const auto& [first, weights] = north.neighbors[i];
    for (size_t j = 0; j < side; ++j) {
      double share = 0;
      for (size_t k = 0; k < weights.size(); ++k) {
        share += weights[k] * alongEast[(first + k) * side + j];
      }
      values[i * side + j] = share / (step_ * step_);
    }
  }
}

SharedDensity CompareDensities(const KernelDensity& first, const KernelDensity& second,
                               const SharedLevels& levels) {
  if (first.Step() <= second.Step()) return Comparison(first, second, levels).Compare();
  const SharedDensity shared = Comparison(second, first, {levels.second, levels.first}).Compare();
  return {shared.ofSecond, shared.ofFirst, shared.affinity};
}

}  // namespace orvane
