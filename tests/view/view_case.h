#pragma once

#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "support/recording_canvas.h"
#include "view/map_window.h"
#include "view/panel_rows.h"
#include "view/view_transform.h"

#include <cstdint>
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

/// Numbers that are the same with every library: the 48-bit generator of long standing.
class Numbers {
 public:
  explicit Numbers(std::uint64_t seed) : state_(seed) {}
  /// From `low` up to but not including `high`.
  double Between(double low, double high) {
    state_ = (state_ * 0x5DEECE66DULL + 11) & ((1ULL << 48) - 1);
    return low + (high - low) * (static_cast<double>(state_ >> 16) / 4294967296.0);
  }
  int Int(int low, int high) { return static_cast<int>(Between(low, high)); }

 private:
  std::uint64_t state_;
};

}  // namespace orvane
