#include "base/messages.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/listed_points.h"
#include "model/workspace.h"
#include "survey/blunders.h"
#include "survey/elimination.h"
#include "survey/positions.h"
#include "survey/residuals.h"
#include "survey/solver.h"
#include "survey/survey_network.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr int StationsOfTrail = 100;
constexpr int Reach = 3000;  ///< a trail branches off one of so many stations before it

/// A made-up survey in one piece: trails that branch off each other, 1 loop for each 100 stations,
/// 1 fix for each 2000.
std::string SurveyText(int stations) {
  std::mt19937 random(5);
  const auto below = [&](int limit) {
    return static_cast<int>(random() % static_cast<std::uint32_t>(limit));
  };
  const auto name = [](int i) {
    return "T" + std::to_string(i / StationsOfTrail) + "_" +
           std::to_string(i % StationsOfTrail * 25);
  };
  std::string text;
  const auto shoot = [&](int from, int to) {
    text += "C\t" + name(from) + "\t" + name(to) + "\t" + std::to_string(10 + below(30)) + "." +
            std::to_string(below(10)) + "\t" + std::to_string(below(360)) + "\t" +
            std::to_string(below(20) - 10) + "\n";
  };
  text += "T\tT0\tTrail\nG\tT0_0\tN4 24.0'\tE22 10.0'\t300\n";
  for (int i = 1; i < stations; ++i) {
    const bool begins = i % StationsOfTrail == 0;
    if (begins) text += "T\tT" + std::to_string(i / StationsOfTrail) + "\tTrail\n";
    shoot(i, begins ? std::max(0, i - 1 - below(Reach)) : i - 1);
  }
  text += "T\n";
  for (int i = 0; i < stations / 100; ++i) {
    const int from = Reach + below(stations - Reach);
    shoot(from, from - 5 - below(Reach - 5));
  }
  for (int i = 0; i < stations / 2000; ++i) {
    text += "G\t" + name(below(stations)) + "\tN4 24." + std::to_string(below(10)) +
            "'\tE22 10.0'\t300\n";
  }
  return text;
}

void ReadAndSolveSurvey(benchmark::State& state) {
  const std::string text = SurveyText(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& map = MakeMap(workspace, "survey.map");
    ReadMapText(map, text);
    FinishMap(map);
    benchmark::DoNotOptimize(map.trails.front().points.front()->geo.lat);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadAndSolveSurvey)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void SolveSurvey(benchmark::State& state) {
  RecordedMessages messages;
  Workspace workspace(messages);
  Map& map = MakeMap(workspace, "survey.map");
  ReadMapText(map, SurveyText(static_cast<int>(state.range(0))));
  FinishMap(map);
  for (auto _ : state) {
    ClearOwnPositions(map);
    SolveMap(map);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SolveSurvey)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// What Survey Quality does with a survey: the network, the errors of its parts, the blunders.
void LookForBlunders(benchmark::State& state) {
  RecordedMessages messages;
  Workspace workspace(messages);
  Map& map = MakeMap(workspace, "survey.map");
  ReadMapText(map, SurveyText(static_cast<int>(state.range(0))));
  FinishMap(map);
  for (auto _ : state) {
    SurveyNetwork network = BuildSurveyNetwork(map);
    benchmark::DoNotOptimize(FindBlunders(network).size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LookForBlunders)->Arg(4000)->Arg(15000)->Unit(benchmark::kMillisecond);

void ListResiduals(benchmark::State& state) {
  RecordedMessages messages;
  Workspace workspace(messages);
  Map& map = MakeMap(workspace, "survey.map");
  ReadMapText(map, SurveyText(static_cast<int>(state.range(0))));
  FinishMap(map);
  const std::vector<const Point*> points = ListedPoints(map);
  for (auto _ : state) benchmark::DoNotOptimize(ReadingResiduals(map, points).size());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ListResiduals)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// A chain of points, each near the one before, the last one first.
void ReadAndSolveNearChain(benchmark::State& state) {
  std::string text = "T\tW\nG\tP0\tN1\tE1\n";
  for (std::int64_t i = state.range(0); i > 0; --i) {
    text += "N\tP" + std::to_string(i) + "\tP" + std::to_string(i - 1) + "\n";
  }
  for (auto _ : state) {
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& map = MakeMap(workspace, "chain.map");
    ReadMapText(map, text);
    FinishMap(map);
    benchmark::DoNotOptimize(map.trails.front().points.back()->geo.lat);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadAndSolveNearChain)->Arg(8000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The junctions of such a survey: a tree with loops that reach a little way back.
NormalSystem JunctionSystem(int size) {
  std::mt19937 random(7);
  NormalSystem system;
  system.size = size;
  system.rightSides.assign(3, std::vector<double>(static_cast<size_t>(size)));
  const auto add = [&](int from, int to) {
    system.entries.push_back({from, from, 1});
    system.entries.push_back({from, to, -1});
    system.entries.push_back({to, from, -1});
    system.entries.push_back({to, to, 1});
    for (auto& side : system.rightSides) {
      const double step = std::ldexp(static_cast<double>(random()), -24) - 128;
      side[static_cast<size_t>(from)] -= step;
      side[static_cast<size_t>(to)] += step;
    }
  };
  constexpr int reach = 90;
  for (int i = 1; i < size; ++i) {
    const auto back = static_cast<int>(random() % static_cast<std::uint32_t>(std::min(i, reach)));
    add(i - 1 - back, i);
    if (i > reach && i % 3 == 0) add(i - reach, i);
  }
  for (int i = 0; i < size; i += 60) system.entries.push_back({i, i, 1});
  return system;
}

void Eliminate(benchmark::State& state) {
  const NormalSystem system = JunctionSystem(static_cast<int>(state.range(0)));
  constexpr std::array<double, 3> freeValues{0, 0, -9999};
  for (auto _ : state) {
    NormalSystem solved = system;
    EliminateNormal(solved, freeValues);
    benchmark::DoNotOptimize(solved.rightSides[0][0]);
  }
}
BENCHMARK(Eliminate)->Arg(300)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
