#pragma once

#include "model/map.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {

/// A map to put altitudes on, and short ways to look at its contours.
struct GroundFixture : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map* map = &MakeMap(workspace, "ground.map");

  /// A nameless point; the one added last is first in lists.
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
