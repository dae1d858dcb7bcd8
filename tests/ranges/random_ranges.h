#pragma once

// Made-up ranges of every shape that has its own way of going wrong: clumps, lines, lattices with
// many equal distances, places visited over and over.

#include "geo/earth.h"
#include "model/records.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace orvane {

/// Random numbers that are the same with every library.
class RangeRandom {
 public:
  explicit RangeRandom(std::uint64_t seed) : state_(seed * 2654435761U + 1) {}

  /// \return 0 to count - 1
  int Below(int count) {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    mixed ^= mixed >> 31;
    return static_cast<int>((mixed >> 11) % static_cast<std::uint64_t>(count));
  }
  /// \return from -1 to 1
  double Part() { return Below(1 << 30) / static_cast<double>(1 << 29) - 1; }

 private:
  std::uint64_t state_;
};

/// The points of a range and their list, as `ClusterPoints` takes it.
struct RandomRange {
  std::string shape;
  std::deque<Point> store;
  std::vector<Point*> list;

  Point& AddDegrees(double lat, double lon) {
    Point& point = store.emplace_back();
    point.geo.lat = lat;
    point.geo.lon = lon;
    list.push_back(&point);
    return point;
  }
};

/// A range about a place; places are given in metres from it.
class RangeMaker {
 public:
  RangeMaker(RandomRange& range, double lat, double lon) : range_(range), lat_(lat), lon_(lon) {}

  Point& Add(double north, double east) {
    const double lat = lat_ + MetersToDegrees(north);
    const double lon = lon_ + MetersToDegrees(east) / std::cos(lat_ * RadiansPerDegree);
    return range_.AddDegrees(lat, lon);
  }

 private:
  RandomRange& range_;
  double lat_;
  double lon_;
};

/// Repeats some points of the list, once as the same point and once as another at its place, and
/// mixes the order.
inline void RepeatAndShuffle(RandomRange& range, RangeRandom& random, int repeats) {
  for (int i = 0; i < repeats; ++i) {
    Point* old = range.list[static_cast<size_t>(random.Below(static_cast<int>(range.list.size())))];
    if (random.Below(2) == 0) {
      range.list.push_back(old);
    } else {
      range.AddDegrees(old->geo.lat, old->geo.lon);
    }
  }
  for (size_t i = range.list.size(); i > 1; --i) {
    std::swap(range.list[i - 1],
              range.list[static_cast<size_t>(random.Below(static_cast<int>(i)))]);
  }
}

/// A lattice whose distances are exact in binary, so that many are equal to the last bit: at the
/// equator, with steps and a count of points that are powers of two.
inline void FillLattice(RandomRange& range, RangeRandom& random, int points) {
  int count = 8;
  while (count * 2 <= points) count *= 2;
  const int side = 2 + random.Below(12);
  const double northStep = std::ldexp(1.0, -30);
  const double eastStep = std::ldexp(1.0, random.Below(2) == 0 ? -30 : -14 - random.Below(8));
  for (int i = 0; i < count; ++i) {
    const double lat = northStep * random.Below(side);
    const double lon = eastStep * random.Below(side);
    range.AddDegrees(lat, lon);
  }
}

/// Makes one of many shapes.
/// \param points  at most so many distinct locations
inline RandomRange MakeRandomRange(std::uint64_t seed, int points) {
  static const double Extents[] = {0.01, 3, 40, 300, 2000, 20000, 800000};
  static const double Latitudes[] = {0, 0.5, -21.25, 47, 78, -89.99};
  RangeRandom random(seed);
  RandomRange range;
  const double extent = Extents[random.Below(7)];
  const double lon = random.Below(8) == 0 ? 179.999 : 102.6;
  RangeMaker maker(range, Latitudes[random.Below(6)], lon);
  const int count = 2 + random.Below(points - 1);
  const auto clump = [&](double north, double east, double size, int members) {
    for (int i = 0; i < members; ++i) {
      maker.Add(north + size * random.Part(), east + size * random.Part());
    }
  };
  const int shape = random.Below(9);
  if (shape == 0) {
    range.shape = "scattered";
    clump(0, 0, extent, count);
  } else if (shape == 1) {
    range.shape = "clumps";
    for (int left = count; left > 0;) {
      const int members = 1 + random.Below(left);
      clump(extent * random.Part(), extent * random.Part(), extent / (2 + random.Below(60)),
            members);
      left -= members;
    }
  } else if (shape == 2) {
    range.shape = "lattice";
    FillLattice(range, random, points);
  } else if (shape == 3) {
    range.shape = "few places";
    clump(0, 0, extent, 2 + random.Below(6));
    RepeatAndShuffle(range, random, count);
  } else if (shape == 4) {
    range.shape = "slanted line";
    const double slope = random.Part();
    for (int i = 0; i < count; ++i) {
      const double along = extent * random.Part();
      maker.Add(along * slope, along);
    }
  } else if (shape == 5) {
    range.shape = "on one line";
    const bool alongNorth = random.Below(2) == 0;
    for (int i = 0; i < count; ++i) {
      const double along = extent * random.Part();
      maker.Add(alongNorth ? along : 0, alongNorth ? 0 : along);
    }
  } else if (shape == 6) {
    range.shape = "rings";
    for (int i = 0; i < count; ++i) {
      const double radius = extent * (1 + random.Below(3)) + extent / 50 * random.Part();
      const double angle = Pi * random.Part();
      maker.Add(radius * std::sin(angle), radius * std::cos(angle));
    }
  } else if (shape == 7) {
    range.shape = "whole metres";
    const int side = 2 + random.Below(40);
    for (int i = 0; i < count; ++i) maker.Add(random.Below(side), random.Below(side));
  } else {
    range.shape = "walk";
    double north = 0;
    double east = 0;
    for (int i = 0; i < count; ++i) {
      north += extent / 10 * random.Part();
      east += extent / 10 * random.Part();
      maker.Add(north, east);
      if (random.Below(10) == 0) north = east = 0;
    }
  }
  if (shape != 2 && random.Below(2) == 0) {
    RepeatAndShuffle(range, random, random.Below(count) + 1);
  }
  return range;
}

}  // namespace orvane
