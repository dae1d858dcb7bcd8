#pragma once

#include "model/map.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orvane {

/// The readings of a map as a network that can be questioned: what does a part of the survey say if
/// another part is left out? It is built from the readings, so the solver and its places are not
/// touched. Directions are on one plane for each region, which is exact enough for errors.

/// A way in metres.
struct SurveyStep {
  double north = 0;
  double east = 0;
  double up = 0;

  friend SurveyStep operator+(const SurveyStep& a, const SurveyStep& b) {
    return {a.north + b.north, a.east + b.east, a.up + b.up};
  }
  friend SurveyStep operator-(const SurveyStep& a, const SurveyStep& b) {
    return {a.north - b.north, a.east - b.east, a.up - b.up};
  }
  friend SurveyStep operator*(const SurveyStep& a, double factor) {
    return {a.north * factor, a.east * factor, a.up * factor};
  }
};

/// \param deviation  degrees, added to a bearing that is not absolute
/// \return the way from the point that holds a compass reading to its base
SurveyStep StepOfShot(const Measurement& shot, double deviation);

/// One reading within a network.
struct NetworkReading {
  const Point* point = nullptr;  ///< holds the reading
  const Measurement* reading = nullptr;
  double share = 0;  ///< its part in the mean of its leg or fix; negative if it is read against the
                     ///< direction of the chain
};

/// What is left out of the network as one: a chain of legs between two junctions, or the fix of a
/// point.
struct NetworkPart {
  bool isFix = false;
  std::vector<NetworkReading> readings;  ///< shots along the chain, or fixes
  double length =
      0;           ///< metres along the slope; of a fix those of the shortest chain that ends at it
  double lat = 0;  ///< degrees: of a fix, where the plane has its scale to the east

  // The first and the last column of the part; of a fix both are its point.
  size_t start = 0;
  size_t end = 0;
  SurveyStep says;         ///< from start to end, or the place of a fix in the plane
  bool saysGround = true;  ///< false for a point that only has an altitude
  bool saysUp = true;      ///< false for a fix without an altitude

  /// What the part says minus what all the rest says; nothing if the rest does not say it.
  std::optional<double> north;
  std::optional<double> east;
  std::optional<double> up;
  /// By how much a square metre of these counts in the sum of the squares of the whole network.
  double groundWeight = 0;
  double upWeight = 0;
};

/// One connected part of a survey.
struct NetworkRegion {
  std::vector<NetworkPart> parts;
  size_t junctions = 0;
  /// Some of its fixes have altitudes and others none: altitudes that were solved may be far off.
  bool mixedAltitudes = false;
  bool tooLarge = false;  ///< more than `MostJunctions`: the errors are not worked out
};

/// The network of a map.
struct SurveyNetwork {
  std::vector<NetworkRegion> regions;
  /// Shots on dead ends, which are part of no chain.
  std::vector<NetworkReading> deadEnds;
};

/// A region with more junctions would take minutes.
constexpr size_t MostJunctions = 400;

/// Builds the network of the map's own points, with points of its basis where a shot leads to them,
/// and works out the errors.
SurveyNetwork BuildSurveyNetwork(const Map& map);

/// Works the errors of a region out again, after `says` of a part has changed.
void MeasureRegion(NetworkRegion& region);

}  // namespace orvane
