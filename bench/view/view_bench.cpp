#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"
#include "support/wandering_trails.h"
#include "view/draw_map.h"
#include "view/fills.h"
#include "view/view_transform.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <string>

namespace orvane {
namespace {

/// Takes every operation and draws nothing, so that only the work before the device is measured.
/// It counts, which keeps the compiler from leaving anything out.
class NullCanvas : public Canvas {
 public:
  void SetPen(const Pen&) override { ++operations_; }
  void SetBrush(const Brush&) override { ++operations_; }
  void SetForeColor(Color) override { ++operations_; }
  void SetFont(CanvasFont) override { ++operations_; }
  void DrawLine(Pixel, Pixel) override { ++operations_; }
  void DrawPolyline(const std::vector<Pixel>& points) override { operations_ += points.size(); }
  void DrawPolygon(const std::vector<Pixel>& points) override { operations_ += points.size(); }
  void DrawRect(const PixelRect&) override { ++operations_; }
  void DrawOval(const PixelRect&) override { ++operations_; }
  void DrawText(Pixel, std::string_view) override { ++texts_; }
  int TextWidth(std::string_view text) const override {
    ++widths_;
    return 6 * static_cast<int>(text.size());
  }
  PixelRect TextExtent(std::string_view text) const override {
    return {0, -10, 6 * static_cast<int>(text.size()), 3};
  }
  int Ascent(CanvasFont) const override { return 10; }
  int LineHeight(CanvasFont) const override { return 13; }
  PixelRect Clip() const override { return {0, 0, 1600, 1200}; }
  void SetClip(const PixelRect&) override { ++operations_; }
  void Clear(Color) override { ++operations_; }

  size_t Texts() const { return texts_; }
  size_t Widths() const { return widths_; }

 private:
  size_t operations_ = 0;
  size_t texts_ = 0;
  mutable size_t widths_ = 0;
};

/// Trails of a hundred points that wander over a site of ten kilometres.
class Site {
 public:
  explicit Site(int points) : workspace_(messages_), map_(MakeMap(workspace_, "bench.map")) {
    AddWanderingTrails(map_, points);
    int number = 0;
    for (Trail& trail : map_.trails) trail.type = "Path " + std::to_string(++number % 7);
    view.map = &map_;
    view.target = &canvas;
    TakeFontMetrics(view);
    SetClientSize(view, 1600, 1200);
    BuildTrailRows(view);
    FitToBounds(view, 1.59, 1.5, 30.09, 30);
  }

  void Draw() { DrawMap(view, {0, 0, 1600, 1200}); }

  MapWindow view;
  NullCanvas canvas;

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map& map_;
};

void Run(benchmark::State& state, Site& site) {
  for (auto unused : state) {
    (void)unused;
    site.Draw();
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["labels"] = static_cast<double>(site.canvas.Texts()) / runs;
  state.counters["widths"] = static_cast<double>(site.canvas.Widths()) / runs;
}

void DrawWholeSite(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  Run(state, site);
}
BENCHMARK(DrawWholeSite)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

void DrawTurnedSite(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  site.view.rotation = 30;
  CenterOn(site.view, {.lat = 1.545, .lon = 30.045});
  Run(state, site);
}
BENCHMARK(DrawTurnedSite)->Arg(200000)->Unit(benchmark::kMillisecond);

void DrawZoomedInSite(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  site.view.scale = 2;
  CenterOn(site.view, {.lat = 1.545, .lon = 30.045});
  Run(state, site);
}
BENCHMARK(DrawZoomedInSite)->Arg(200000)->Unit(benchmark::kMillisecond);

void BuildRows(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  for (auto unused : state) {
    (void)unused;
    BuildTrailRows(site.view);
  }
}
BENCHMARK(BuildRows)->Arg(200000)->Unit(benchmark::kMillisecond);

void ProjectPlaces(benchmark::State& state) {
  Site site(100);
  const ScreenTransform transform(site.view);
  LatLon place{.lat = 1.5, .lon = 30};
  for (auto unused : state) {
    (void)unused;
    place.lat += 1e-9;
    benchmark::DoNotOptimize(transform.ToPixel(place));
  }
}
BENCHMARK(ProjectPlaces);

}  // namespace
}  // namespace orvane
