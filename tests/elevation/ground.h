#pragma once

#include "model/map.h"
#include "model/workspace.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {

/// Numbers that are the same with every library.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed * 2654435761U + 12345) {}
  /// \return from 0 to 1
  double Part() {
    state_ = (state_ * 0x5DEECE66DULL + 11) & ((1ULL << 48) - 1);
    return static_cast<double>(state_ >> 16) / 4294967296.0;
  }
  int Below(int count) { return static_cast<int>(Part() * count); }

 private:
  std::uint64_t state_;
};

/// A map to put altitudes on, and short ways to look at its contours.
struct GroundFixture : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map* map = &MakeMap(workspace, "ground.map");

  /// A nameless point; the one added last stands first in lists.
  Point& Add(double lat, double lon, double altitude) {
    Point& point = MakePoint(*map, "");
    point.geo = {lat, lon, static_cast<float>(altitude)};
    map->namelessPoints.push_front(&point);
    return point;
  }
  Trail& AddTrail(const char* type, const std::vector<Point*>& points) {
    Trail& trail = map->trails.emplace_front();
    trail.type = type;
    trail.points = points;
    return trail;
  }
  Point& AddTo(double lat, double lon, float altitude = NoAltitude) {
    Point& point = MakePoint(*map, "");
    point.geo = {lat, lon, altitude};
    return point;
  }
  static std::vector<std::string> NamesOf(const std::forward_list<Trail>& trails) {
    std::vector<std::string> names;
    for (const Trail& trail : trails) names.push_back(trail.name.value_or("<none>"));
    return names;
  }
  std::vector<std::string> Said() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
};

}  // namespace orvane
