#pragma once

#include "estimates/density_tiles.h"

#include <optional>
#include <span>

namespace orvane {

/// Kernel density: the mean over the fixes of round normal distributions.

/// The limits of the factor of the bandwidth.
constexpr double LeastBandwidthFactor = 0.1;
constexpr double LargestBandwidthFactor = 2;

/// The reference bandwidth, the standard deviation of each fix's distribution, times a factor.
/// \return metres; nothing for fewer than two places, and for places within a millimetre of each
///         other, root mean square
std::optional<double> ReferenceBandwidth(std::span<const PlanePlace> places, double factor);

/// A set in which the density is at least `level`.
struct DensitySet {
  double level = 0;  ///< per square metre
  double area = 0;   ///< square metres
};

/// The density on a lattice, fine enough to measure areas within 0.2 %.
class KernelDensity {
 public:
  /// \param places     at least one
  /// \param bandwidth  metres, above 0
  /// \param isCoarse   twice the step, enough for shares of the density
  KernelDensity(std::span<const PlanePlace> places, double bandwidth, bool isCoarse = false);

  /// The smallest set that holds some per cent of the density.
  /// \param percent  above 0 and below 100
  DensitySet SetOf(double percent) const;

  double Step() const { return step_; }  ///< metres from node to node
  /// The share of each node in the whole; the density at a node is its share divided by the square
  /// of the step.
  const DensityTiles& Shares() const { return shares_; }

  /// Interpolates the density at the nodes of another lattice that is at least as fine.
  /// \param row, column  the first node of that lattice
  /// \param step         its step in metres
  /// \param side         nodes along each side
  /// \param values       receives them, per square metre, row by row
  void Sample(std::int64_t row, std::int64_t column, double step, size_t side,
              std::vector<double>& values) const;

 private:
  /// The share of a node, how far the shares in its square are above and below it, and how much of
  /// the density the whole square holds.
  struct Node {
    double share;
    double spread;
    double held;
  };

  double step_;
  DensityTiles shares_;
  std::vector<Node> nodes_;  ///< those that have a share
};

/// How much two densities have in common.
struct SharedDensity {
  double ofFirst = 0;   ///< the share of the first one inside the set that holds 95 % of the second
  double ofSecond = 0;  ///< the share of the second one inside that of the first
  double affinity = 0;  ///< Bhattacharyya's: 0 for nothing in common, 1 for the same density
};

/// The levels of the sets that hold 95 % of two densities.
struct SharedLevels {
  double first = 0;   ///< per square metre
  double second = 0;  ///< likewise
};

/// Compares two densities in one plane.
/// \param levels  from lattices that may be finer than those of the densities
SharedDensity CompareDensities(const KernelDensity& first, const KernelDensity& second,
                               const SharedLevels& levels);

}  // namespace orvane
