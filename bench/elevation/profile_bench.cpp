// A profile of 800 columns across a large map: every column asks all altitudes.

#include "elevation/profile.h"
#include "model/cells.h"
#include "model/workspace.h"

#include <benchmark/benchmark.h>
#include <string>

namespace orvane {
namespace {

constexpr int Columns = 800;

struct MadeGround {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "bench.map");

  explicit MadeGround(int points) {
    Trail& trail = map.trails.emplace_front();
    for (int i = 0; i < points; ++i) {
      Point& point = MakePoint(map, "");
      point.geo = {1 + 1e-6 * (i % 40009), 115 + 1e-6 * (i % 79193),
                   static_cast<float>(200 + i % 97)};
      trail.points.push_back(&point);
    }
  }
};

void ProfileOfTransect(benchmark::State& state) {
  const MadeGround ground(static_cast<int>(state.range(0)));
  auto view = OpenTransect(ground.map, {1.001, 115.001}, {1.03, 115.07});
  for (auto _ : state) {
    LayoutColumns(*view, Columns);
    FillGaps(*view);
    benchmark::DoNotOptimize(view->samples.data());
  }
}
BENCHMARK(ProfileOfTransect)->Arg(5000)->Arg(200000)->Unit(benchmark::kMillisecond);

/// The same with a walk over the map for each column.
void ProfileByWalks(benchmark::State& state) {
  const MadeGround ground(static_cast<int>(state.range(0)));
  auto view = OpenTransect(ground.map, {1.001, 115.001}, {1.03, 115.07});
  LayoutColumns(*view, Columns);
  for (auto _ : state) {
    for (const ElevationSample& sample : view->samples) {
      benchmark::DoNotOptimize(EstimateAltitude(ground.map, sample.position));
    }
  }
}
BENCHMARK(ProfileByWalks)->Arg(200000)->Unit(benchmark::kMillisecond);

/// The profile of a trail with as many points as the map has.
void ProfileOfLongTrail(benchmark::State& state) {
  const MadeGround ground(static_cast<int>(state.range(0)));
  auto view = OpenElevation(ground.map, ground.map.trails.front());
  for (auto _ : state) {
    LayoutColumns(*view, Columns);
    FillGaps(*view);
    benchmark::DoNotOptimize(view->samples.data());
  }
}
BENCHMARK(ProfileOfLongTrail)->Arg(200000)->Unit(benchmark::kMillisecond);

/// What a window does between two looks at its events while the line gets finer.
void OnePortionOfFilling(benchmark::State& state) {
  const MadeGround ground(static_cast<int>(state.range(0)));
  auto view = OpenTransect(ground.map, {1.001, 115.001}, {1.03, 115.07});
  LayoutColumns(*view, Columns);
  GapFilling filling;
  for (auto _ : state) {
    if (filling.Run(*view, [] { return false; })) {
      state.PauseTiming();
      LayoutColumns(*view, Columns);
      filling.Restart();
      state.ResumeTiming();
    }
  }
}
BENCHMARK(OnePortionOfFilling)->Arg(5000)->Arg(200000)->Unit(benchmark::kMillisecond);

/// A step of a drag: other samples for all columns, with the altitudes collected before.
void SamplesOfAMovedView(benchmark::State& state) {
  const MadeGround ground(static_cast<int>(state.range(0)));
  auto view = OpenTransect(ground.map, {1.001, 115.001}, {1.03, 115.07});
  for (auto _ : state) {
    view->viewStart += 1;
    view->viewEnd += 1;
    LayoutColumns(*view, Columns);
    benchmark::DoNotOptimize(view->samples.data());
  }
}
BENCHMARK(SamplesOfAMovedView)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
