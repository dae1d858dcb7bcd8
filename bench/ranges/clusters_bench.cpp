// The clusters of one range: a season of follows that wander, locations strewn evenly, and
// locations visited three times each, of which every one is a cluster by itself.

#include "geo/earth.h"
#include "ranges/clusters.h"
#include "support/dice.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <deque>
#include <vector>

namespace orvane {
namespace {

class MadeUpRange {
 public:
  void Add(double north, double east) {
    Point& point = store_.emplace_back();
    point.geo.lat = Latitude + MetersToDegrees(north);
    point.geo.lon = 102.6 + MetersToDegrees(east) / std::cos(Latitude * RadiansPerDegree);
    list_.push_back(&point);
  }
  void AddAgain(int times) { list_.insert(list_.end(), static_cast<size_t>(times), list_.back()); }
  /// \return from -1 to 1
  double Part() { return dice_.Between(-1, 1); }
  const std::vector<Point*>& List() const { return list_; }

 private:
  static constexpr double Latitude = -21.25;
  std::deque<Point> store_;
  std::vector<Point*> list_;
  Dice dice_{7};
};

void Run(benchmark::State& state, const MadeUpRange& range) {
  RecordedMessages messages;
  int steps = 0;
  for (auto unused : state) {
    const auto tree = ClusterPoints(range.List(), messages);
    steps = tree ? tree->steps : 0;
    benchmark::DoNotOptimize(steps);
  }
  state.counters["steps"] = steps;
}

void ClustersOfFollows(benchmark::State& state) {
  MadeUpRange range;
  double north = 0;
  double east = 0;
  for (int i = 0; i < state.range(0); ++i) {
    if (i % 40 == 0) {
      north = 1000 * range.Part();
      east = 1000 * range.Part();
    }
    north += 60 * range.Part();
    east += 60 * range.Part();
    range.Add(north, east);
  }
  Run(state, range);
}

void ClustersOfEvenGround(benchmark::State& state) {
  MadeUpRange range;
  for (int i = 0; i < state.range(0); ++i) range.Add(5000 * range.Part(), 5000 * range.Part());
  Run(state, range);
}

void ClustersOfTriples(benchmark::State& state) {
  MadeUpRange range;
  for (int i = 0; i < state.range(0); ++i) {
    range.Add(5000 * range.Part(), 5000 * range.Part());
    range.AddAgain(2);
  }
  Run(state, range);
}

BENCHMARK(ClustersOfFollows)->Arg(2000)->Arg(4000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ClustersOfEvenGround)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ClustersOfTriples)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
