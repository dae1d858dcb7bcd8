#pragma once

#include "base/messages.h"
#include "model/map.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <string>
#include <vector>

namespace orvane {

/// A map made in place: points about (1 N, 10 E), given in metres north and east of it.
class SmallMap {
 public:
  SmallMap() : workspace_(messages_), map_(MakeMap(workspace_, "small.map")) {}

  Map& TheMap() { return map_; }
  Workspace& TheWorkspace() { return workspace_; }

  Point& AddPoint(const std::string& name, double north, double east) {
    Point& point = MakePoint(map_, name);
    point.geo.lat = 1 + north / 111120;
    point.geo.lon = 10 + east / 111120;
    point.flags |= PointPlaced;
    if (!name.empty()) AddPointName(map_, point, name);
    return point;
  }

  Point& AddLoosePoint(const std::string& name, double north, double east) {
    Point& point = AddPoint(name, north, east);
    map_.loosePoints.push_front(&point);
    return point;
  }

  Trail& AddTrail(const std::string& name, const std::vector<Point*>& points, Color color) {
    Trail& trail = map_.trails.emplace_front();
    trail.name = name;
    trail.type = "Trail";
    trail.points = points;
    trail.color = color;
    trail.lineStyle = LineStyle::Solid;
    trail.labelMode = LabelMode::All;
    for (Point* point : points) point->trail = &trail;
    return trail;
  }

  /// A view of `width` x `height` pixels, one metre to the pixel, with (1 N, 10 E) in the middle.
  MapWindow View(int width, int height) {
    MapWindow view;
    view.map = &map_;
    BuildTrailRows(view);
    SizeView(view, width, height);
    view.scale = 1;
    CenterOn(view, LatLon{.lat = 1, .lon = 10});
    return view;
  }

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map& map_;
};

}  // namespace orvane
