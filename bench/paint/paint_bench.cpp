#include "base/messages.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "paint/drawing_session.h"
#include "paint/qt_canvas.h"
#include "view/draw_map.h"
#include "view/panel_rows.h"
#include "view/view_transform.h"

#include <QImage>

#include <benchmark/benchmark.h>
#include <memory>
#include <random>
#include <string>

namespace orvane {
namespace {

constexpr int Width = 1600;
constexpr int Height = 1200;
constexpr int PointsOfTrail = 200;

/// Points on winding trails over some 10 km, each named and shown in the given label mode.
class WideMap {
 public:
  WideMap(int pointCount, int labelMode) : workspace_(messages_) {
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
        trail.lineStyle = LineSolid;
        trail.labelMode = labelMode;
        trail.markStyle = MarkCircle;
      }
      lat += (unit() - 0.5) * 0.0006;
      lon += (unit() - 0.5) * 0.0006;
      Point& point = MakePoint(*map_, "P" + std::to_string(i));
      point.geo.lat = lat;
      point.geo.lon = lon;
      point.flags |= PointPlaced;
      point.trail = &map_->trails.front();
      map_->trails.front().points.push_back(&point);
    }
    view_.map = map_;
    BuildTrailRows(view_);
    SizeView(view_, Width, Height);
    FitToBounds(view_, 0.1, 0, 0.1, 0);
  }

  MapWindow& View() { return view_; }

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map* map_ = nullptr;
  MapWindow view_;
};

void DrawAgainAndAgain(benchmark::State& state, WideMap& wide) {
  QImage image(Width, Height, QImage::Format_RGB32);
  const CanvasFonts fonts(96);
  MapWindow& view = wide.View();
  for ([[maybe_unused]] auto _ : state) {
    QPainter painter(&image);
    QtCanvas canvas(painter, fonts, {0, 0, Width, Height});
    view.target = &canvas;
    TakeFontMetrics(view);
    canvas.Clear(view.background);
    DrawMap(view, {0, 0, Width, Height});
    view.target = nullptr;
  }
}

void DrawLabelled(benchmark::State& state) {
  WideMap wide(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  DrawAgainAndAgain(state, wide);
}
BENCHMARK(DrawLabelled)
    ->ArgNames({"points", "labelMode"})
    ->Args({20000, LabelAuto})
    ->Args({200000, LabelAuto})
    ->Args({20000, LabelNone})
    ->Args({20000, LabelAll})
    ->Args({200000, LabelNone})
    ->Unit(benchmark::kMillisecond);

void DrawZoomedIn(benchmark::State& state) {
  WideMap wide(static_cast<int>(state.range(0)), LabelAuto);
  FitToBounds(wide.View(), 0.055, 0.045, 0.055, 0.045);
  DrawAgainAndAgain(state, wide);
}
BENCHMARK(DrawZoomedIn)->Arg(200000)->Unit(benchmark::kMillisecond);

void MeasureNames(benchmark::State& state) {
  const CanvasFonts fonts(96);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(fonts.TextWidth(CanvasFont::Label, "P123456"));
  }
}
BENCHMARK(MeasureNames);

void DrawNames(benchmark::State& state) {
  QImage image(Width, Height, QImage::Format_RGB32);
  image.fill(Qt::white);
  const CanvasFonts fonts(96);
  QPainter painter(&image);
  QtCanvas canvas(painter, fonts, {0, 0, Width, Height});
  int i = 0;
  for ([[maybe_unused]] auto _ : state) {
    canvas.DrawText({(i * 37) % Width, (i * 91) % Height}, "P123456");
    ++i;
  }
}
BENCHMARK(DrawNames);

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  const orvane::DrawingSession session;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
