#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"
#include "support/made_survey.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <list>

namespace orvane {
namespace {

/// Keeps the maps of earlier rounds, so that freeing them is not measured: a run of the program
/// frees none.
struct Session {
  RecordedMessages messages;
  Workspace workspace{messages};
};

Map& Read(Workspace& workspace, const std::string& text) {
  Map& map = MakeMap(workspace, "bench.map");
  ReadMapText(map, text);
  FinishMap(map);
  return map;
}

const std::string& Survey() {
  static const std::string text = MadeSurvey({100000, 1000, 50});
  return text;
}

void ReadSolvedPlaces(benchmark::State& state) {
  const std::string text = MadePlaces(static_cast<int>(state.range(0)));
  std::list<Session> sessions;
  for (auto _ : state) {
    Map& map = Read(sessions.emplace_back().workspace, text);
    benchmark::DoNotOptimize(map.pointStore.size());
    state.PauseTiming();
    sessions.clear();
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(ReadSolvedPlaces)->Arg(50000)->Arg(200000)->Unit(benchmark::kMillisecond);

void ReadSurvey(benchmark::State& state) {
  std::list<Session> sessions;
  for (auto _ : state) {
    Map& map = MakeMap(sessions.emplace_back().workspace, "bench.map");
    ReadMapText(map, Survey());
    state.PauseTiming();
    sessions.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(ReadSurvey)->Unit(benchmark::kMillisecond);

void ReadAndSolveSurvey(benchmark::State& state) {
  std::list<Session> sessions;
  for (auto _ : state) {
    Read(sessions.emplace_back().workspace, Survey());
    state.PauseTiming();
    sessions.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(ReadAndSolveSurvey)->Unit(benchmark::kMillisecond);

void FormatSurvey(benchmark::State& state) {
  Session session;
  Map& map = Read(session.workspace, Survey());
  for (auto _ : state) benchmark::DoNotOptimize(MapFileText(map, "bench.map", true));
}
BENCHMARK(FormatSurvey)->Unit(benchmark::kMillisecond);

void SaveSurvey(benchmark::State& state) {
  Session session;
  Map& map = Read(session.workspace, Survey());
  std::string folder = std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX";
  if (::mkdtemp(folder.data()) == nullptr) {
    state.SkipWithError("no folder to save in");
    return;
  }
  for (auto _ : state) WriteMapFile(map, folder + "/bench.map", true);
  std::filesystem::remove_all(folder);
}
BENCHMARK(SaveSurvey)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvane
