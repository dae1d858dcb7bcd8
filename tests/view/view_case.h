#pragma once

#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "support/dice.h"
#include "support/recording_canvas.h"
#include "view/map_window.h"
#include "view/panel_rows.h"
#include "view/view_transform.h"

#include <string>
#include <vector>

namespace orvane {

/// A map and a view of 400 x 300 pixels, one metre to the pixel, with (0 N, 0 E) in the middle. So
/// the place at (north, east) metres is at pixel (200 + east, 150 - north).
class ViewCase {
 public:
  ViewCase() : workspace(messages), map(MakeMap(workspace, "case.map")), canvas(400, 300) {
    view.map = &map;
    view.target = &canvas;
    TakeFontMetrics(view);
    SetClientSize(view, 400, 300);
    CenterOn(view, LatLon{});
  }

  static void Place(Point& point, double north, double east) {
    point.geo = MetersToLatLon(north, east);
    point.flags |= PointPlaced;
  }
  Point& Add(const std::string& name, double north, double east) {
    Point& point = MakePoint(map, name);
    Place(point, north, east);
    return point;
  }
  Point& AddAt(const std::string& name, double lat, double lon) {
    Point& point = MakePoint(map, name);
    point.geo.lat = lat;
    point.geo.lon = lon;
    point.flags |= PointPlaced;
    return point;
  }
  Trail& AddTrail(const std::string& name, const std::vector<Point*>& points) {
    Trail& trail = map.trails.emplace_front();
    trail.name = name;
    trail.type = "Path";
    trail.points = points;
    trail.color = 0x112233;
    return trail;
  }
  Grid& AddGrid(Point& corner, int cellSize, int rows, int columns) {
    Grid& grid = map.grids.emplace_front();
    grid.corner = &corner;
    grid.cellSize = cellSize;
    grid.rows = rows;
    grid.columns = columns;
    return grid;
  }
  PixelRect All() const { return {0, 0, view.clientWidth, view.clientHeight}; }

  RecordedMessages messages;
  Workspace workspace;
  Map& map;
  RecordingCanvas canvas;
  MapWindow view;
};

}  // namespace orvane
