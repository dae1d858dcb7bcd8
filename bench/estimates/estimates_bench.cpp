// A year of observation: 10,000 fixes on 365 days, in three parts of a range of some kilometres.

#include "estimates/area_curve.h"
#include "estimates/kernel.h"
#include "estimates/percent_hulls.h"
#include "support/dice.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace orvane {
namespace {

constexpr int Fixes = 10000;
constexpr int Days = 365;

std::vector<std::vector<PlanePlace>> YearOfFixes() {
  constexpr int Sum = 6;
  constexpr double Middles[][2] = {{0, 0}, {1500, 800}, {-900, 1900}};
  Dice dice(7);
  std::vector<std::vector<PlanePlace>> days(Days);
  for (int i = 0; i < Fixes; ++i) {
    const auto* middle = Middles[dice.Below(3)];
    PlanePlace place = {middle[0], middle[1]};
    for (int j = 0; j < Sum; ++j) {
      place.north += dice.Between(-400, 400);
      place.east += dice.Between(-300, 300);
    }
    days[static_cast<size_t>(i % Days)].push_back(place);
  }
  return days;
}

std::vector<PlanePlace> AllFixes() {
  std::vector<PlanePlace> places;
  for (const auto& day : YearOfFixes()) places.insert(places.end(), day.begin(), day.end());
  return places;
}

/// \param state  the bandwidth factor, in tenths
void KernelOfAYear(benchmark::State& state) {
  constexpr double Tenths = 10;
  const auto places = AllFixes();
  const double factor = static_cast<double>(state.range(0)) / Tenths;
  for (auto _ : state) {
    const KernelDensity density(places, *ReferenceBandwidth(places, factor));
    benchmark::DoNotOptimize(density.SetOf(50).area + density.SetOf(95).area);
  }
}
BENCHMARK(KernelOfAYear)->Arg(1)->Arg(3)->Arg(10)->Arg(20)->Unit(benchmark::kMillisecond);

void CurveOfAYear(benchmark::State& state) {
  const auto days = YearOfFixes();
  for (auto _ : state) benchmark::DoNotOptimize(AreaCurve(days, 1, nullptr).back().most.mean);
}
BENCHMARK(CurveOfAYear)->Unit(benchmark::kMillisecond)->UseRealTime();

void PolygonsOfAYear(benchmark::State& state) {
  const auto places = AllFixes();
  const PlanePlace centroid = CentroidOf(places);
  PercentHulls hulls;
  for (auto _ : state) {
    for (int percent = 50; percent <= 100; percent += 5) {
      benchmark::DoNotOptimize(hulls.Area(places, centroid, percent));
    }
  }
}
BENCHMARK(PolygonsOfAYear)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
