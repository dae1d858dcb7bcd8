#pragma once

#include "base/messages.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"
#include "view/view_transform.h"

#include <random>
#include <string>

namespace orvane {

constexpr int PointsOfTrail = 200;

/// Points on winding trails over some 10 km, each named and shown in the given label mode.
class WideMap {
 public:
  WideMap(int pointCount, LabelMode labelMode) : workspace_(messages_) {
    map_ = &MakeMap(workspace_, "wide.map");
    std::mt19937 random(7);
    const auto unit = [&random] { return static_cast<double>(random()) / 4294967296.0; };
    double lat = 0;
    double lon = 0;
    for (int i = 0; i < pointCount; ++i) {
      if (i % PointsOfTrail == 0) {
        lat = unit() * 0.1;
        lon = unit() * 0.1;
        Trail& trail = map_->trails.emplace_front();
        trail.name = "T" + std::to_string(i / PointsOfTrail);
        trail.type = "Trail";
        trail.color = 0x606060;
        trail.lineStyle = LineStyle::Solid;
        trail.labelMode = labelMode;
        trail.markStyle = MarkStyle::Circle;
      }
      lat += (unit() - 0.5) * 0.0006;
      lon += (unit() - 0.5) * 0.0006;
      Point& point = MakePoint(*map_, "P" + std::to_string(i));
      point.geo.lat = lat;
      point.geo.lon = lon;
      point.geo.altitude = static_cast<float>(300 + i % 200);
      point.flags |= PointPlaced;
      point.trail = &map_->trails.front();
      map_->trails.front().points.push_back(&point);
    }
  }

  /// Makes the view: all of the map within so many pixels.
  void Look(int width, int height) {
    view_.map = map_;
    BuildTrailRows(view_);
    SizeView(view_, width, height);
    FitToBounds(view_, 0.1, 0, 0.1, 0);
  }

  Map& TheMap() { return *map_; }

  MapWindow& View() { return view_; }

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map* map_ = nullptr;
  MapWindow view_;
};

}  // namespace orvane
