// Contours of rolling ground with scattered altitudes: the samples, the steepest slope, and a whole
// run. The wall time is that of all processors together, the process time the cost.

#include "elevation/contours.h"
#include "elevation/contours_continuous.h"
#include "elevation/contours_samples.h"
#include "elevation/contours_surface.h"
#include "geo/earth.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <string>

namespace orvane {
namespace {

constexpr double Extent = 0.05;  // degrees each way
constexpr int Interval = 10;     // metres

/// A map whose grid gets a chosen number of nodes: one pair of points is the steepest, and the
/// step follows from it.
class MadeUpGround {
 public:
  MadeUpGround(int points, double nodes) {
    const double step = Extent / (std::sqrt(nodes) - 2);
    for (int i = 0; i < points - 2; ++i) {
      const double north = dice_.Part();
      const double east = dice_.Part();
      Add(north * Extent, east * Extent,
          200 + 90 * std::sin(north * 9) * std::cos(east * 7) +
              40 * std::sin(north * 23 + east * 17));
    }
    const double near = MetersToDegrees(3.5);
    Add(0, 0, 200);
    Add(0, near, 200 + near * Interval / 2 / step);
    Add(Extent, Extent, 200);
  }
  Map& map() { return map_; }

 private:
  void Add(double north, double east, double altitude) {
    Point& point = MakePoint(map_, "");
    point.geo = {1.3 + north, 115.6 + east, static_cast<float>(altitude)};
    map_.namelessPoints.push_front(&point);
  }

  RecordedMessages messages_;
  Workspace workspace_{messages_};
  Map& map_ = MakeMap(workspace_, "made up.map");
  Dice dice_{1};
};

template <ContourOutcome (*Generate)(Map&, int, const ContourProgress&)>
void Contours(benchmark::State& state) {
  size_t vertices = 0;
  size_t lines = 0;
  for ([[maybe_unused]] auto round : state) {
    state.PauseTiming();
    auto ground =
        std::make_unique<MadeUpGround>(state.range(1), static_cast<double>(state.range(0)));
    state.ResumeTiming();
    Generate(ground->map(), Interval, {});
    state.PauseTiming();
    vertices = ground->map().contourPoints.store.size();
    for (const auto* list : {&ground->map().contourTrails, &ground->map().continuousContours}) {
      lines += static_cast<size_t>(std::distance(list->begin(), list->end()));
    }
    ground.reset();
    state.ResumeTiming();
  }
  state.counters["vertices"] = static_cast<double>(vertices);
  state.counters["lines"] = static_cast<double>(lines) / static_cast<double>(state.iterations());
}
BENCHMARK(Contours<GenerateContours>)
    ->Args({930000, 5000})
    ->Args({270000, 1000})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(Contours<GenerateContinuousContours>)
    ->Args({930000, 5000})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

/// One row of 1000 places, on one processor.
void SampleRow(benchmark::State& state) {
  MadeUpGround ground(5000, 930000);
  const SurfacePoints points(CollectAltitudePoints(ground.map()));
  std::vector<double> lons(1000);
  for (size_t c = 0; c < lons.size(); ++c) lons[c] = 115.6 + static_cast<double>(c) * Extent / 1000;
  std::vector<double> values(lons.size());
  const auto path = static_cast<SurfacePath>(state.range(0));
  for ([[maybe_unused]] auto round : state) {
    SampleSurfaceRow(points, 1.32, lons, values, path);
    benchmark::DoNotOptimize(values.data());
  }
  state.SetItemsProcessed(state.iterations() * 1000 * 5000);
}
BENCHMARK(SampleRow)->DenseRange(SurfacePlain, FastestSurfacePath())->Unit(benchmark::kMillisecond);

void Slope(benchmark::State& state) {
  MadeUpGround ground(static_cast<int>(state.range(0)), 930000);
  const std::vector<Point*> points = CollectAltitudePoints(ground.map());
  for ([[maybe_unused]] auto round : state) benchmark::DoNotOptimize(MaxSlope(points));
}
BENCHMARK(Slope)->Arg(1000)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
