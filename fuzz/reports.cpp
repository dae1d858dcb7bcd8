// Reads any text as a map and makes everything that the program reports on it: checks, the tables
// of trails, names and ranges, tips, contours of both kinds, profiles and
// GeoJSON. Nothing may crash, hang or be undefined, and the GeoJSON is JSON in valid UTF-8.

#include "elevation/contours.h"
#include "elevation/contours_continuous.h"
#include "elevation/profile.h"
#include "fuzzed_map.h"
#include "output/geojson.h"
#include "reports/point_index.h"
#include "reports/profile_labels.h"
#include "reports/profile_view.h"
#include "reports/range_stats.h"
#include "reports/trail_summary.h"
#include "trails/checks.h"
#include "trails/metrics.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

void MakeTables(orvane::Map& map, orvane::MapWindow& view) {
  orvane::CheckAllTrails(map, map.workspace->messages);
  std::vector<orvane::Trail*> trails;
  for (orvane::TrailPanelRow* row : orvane::TrailRowsInOrder(view.trailViews)) {
    int line = 0;
    while (orvane::TrailTipLine(row->trail, row->fixed, map.magneticDeviation, line)) ++line;
    if (row->trail != nullptr) trails.push_back(row->trail);
  }
  orvane::TrailSummaryText(trails, map.magneticDeviation);
  const orvane::PointIndex index = orvane::BuildPointIndex(map, view.centralLongitude);
  for (const auto display : {orvane::CoordinateDisplay::Degrees, orvane::CoordinateDisplay::Minutes,
                             orvane::CoordinateDisplay::Seconds}) {
    orvane::PointIndexText(index, display);
  }
  std::vector<const orvane::RangePanelRow*> rows;
  for (const orvane::RangePanelRow& row : view.rangeViews) {
    rows.push_back(&row);
    int line = 0;
    while (row.range != nullptr && orvane::RangeTipLine(*row.range, 0x12481, line)) ++line;
  }
  orvane::RangeStatsText(rows, map.smName);
}

/// A run is cancelled after some steps, so that a map with a fine grid costs no more than others.
orvane::ContourProgress Patience(int steps) {
  return [steps](const char*, int) mutable { return --steps > 0; };
}

void MakeContours(orvane::Map& map) {
  constexpr int Steps = 400;
  const int interval = map.contourInterval > 0 ? map.contourInterval : 5;
  orvane::GenerateContours(map, interval, Patience(Steps));
  orvane::GenerateContinuousContours(map, interval, Patience(Steps));
}

void DrawProfile(std::optional<orvane::ElevationView> view, orvane::Messages& messages) {
  if (!view) return;
  const auto textWidth = [](std::string_view text) { return static_cast<int>(text.size()) * 6; };
  view->lineHeight = 12;
  view->ascent = 9;
  orvane::ElevationTitle(*view);
  orvane::RefreshElevation(*view, 120, 80, textWidth);
  orvane::ElevationFindPoint(*view, view->points.front()->name, messages);
  orvane::ZoomElevationAbout(*view, 40, true);
  orvane::ShiftElevation(*view, -7);
  orvane::RefreshElevation(*view, 90, 50, textWidth);
  orvane::FillGaps(*view);
  orvane::ElevationScrollBar(*view);
  orvane::PlaceNameTexts(*view, orvane::CoordinateDisplay::Minutes, textWidth);
  orvane::DistanceTexts(*view, textWidth);
  orvane::AltitudeTexts(*view);
  orvane::ElevationLine(*view);
}

void DrawProfiles(orvane::Map& map) {
  constexpr int MostTrails = 4;
  int drawn = 0;
  for (const orvane::Trail& trail : map.trails) {
    if (++drawn > MostTrails) break;
    DrawProfile(orvane::OpenElevation(map, trail), map.workspace->messages);
    if (trail.points.size() < 2) continue;
    DrawProfile(orvane::OpenTransect(map, trail.points.front()->geo, trail.points.back()->geo),
                map.workspace->messages);
  }
}

void Export(orvane::Map& map) {
  // A large grid takes long and shows nothing new.
  constexpr double MostCells = 10000;
  for (const orvane::Grid& grid : map.grids) {
    if (std::fabs(static_cast<double>(grid.rows) * grid.columns) > MostCells) return;
  }
  std::string text;
  const bool complete = orvane::WriteGeoJson(map, [&](std::string_view piece) {
    text += piece;
    return true;
  });
  if (complete) fuzz::Require(nlohmann::json::accept(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzedMaps maps;
  orvane::Map& map = maps.Open(std::string(data, data + size));
  orvane::MapWindow view = fuzz::ViewOf(map);
  MakeTables(map, view);
  DrawProfiles(map);
  MakeContours(map);
  Export(map);
  return 0;
}
