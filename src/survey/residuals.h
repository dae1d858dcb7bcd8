#pragma once

#include "model/map.h"

#include <optional>
#include <span>
#include <vector>

namespace orvane {

enum class ResidualKind { Compass, Gps, Altitude };

/// How far a reading is from the solved map: where it puts its point, minus where the point was
/// solved. Each reading is taken by itself, whatever its count.
struct ReadingResidual {
  const Point* point = nullptr;          ///< holds the reading
  const Measurement* reading = nullptr;  ///< a compass reading too, where `kind` is its altitude
  ResidualKind kind = ResidualKind::Gps;
  const Point* base = nullptr;    ///< of a compass reading; null otherwise
  std::optional<double> north;    ///< metres; none for an altitude
  std::optional<double> east;     ///< metres; none for an altitude
  std::optional<double> up;       ///< metres; none if the reading says nothing of the altitude, or
                                  /// none was solved
  double meters = 0;              ///< root of the sum of the squares of these, none as 0
  std::optional<double> percent;  ///< `meters` of the distance of a leg
  std::optional<double> degrees;  ///< bearing read minus bearing solved, above -180 and at most 180
};

/// Compares the readings of points with the solved places. Skipped are near readings, readings of a
/// point or with a base that has no place, shots of a point at itself, and altitudes where none was
/// solved. A compass reading that holds an altitude has a second residual for it, after its own.
/// \param points  those of the map, and of its basis where a reading has one of the map's own points
///                as its base; all others are skipped
/// \return in the order of the points and of their readings
std::vector<ReadingResidual> ReadingResiduals(const Map& map, std::span<const Point* const> points);

/// \return the root of the sum of the squares, none as 0
double SizeOfError(std::optional<double> north, std::optional<double> east,
                   std::optional<double> up);

}  // namespace orvane
