// Taking an import of 10,000 rows back, on a survey of 20,000 points; deleting 1,000 trails on a map
// of 100,000.

#include "editing/delete_records.h"
#include "entry/import_edits.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/workspace.h"
#include "support/made_survey.h"
#include "support/time_limit.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr int Rows = 10000;
constexpr int RowsOfFollow = 100;

/// Messages without texts: none of the edits here has to say anything.
struct Site {
  explicit Site(const std::string& text) : map(MakeMap(workspace, "site.map")) {
    ReadMapText(map, text);
    FinishMap(map);
  }

  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map;
  EditHistory history{workspace};
};

std::string MadeSheet() {
  std::string sheet;
  for (int row = 0; row < Rows; ++row) {
    const int follow = row / RowsOfFollow;
    const int time = 5 * 60 + 5 * (row % RowsOfFollow);
    sheet += std::to_string(2000 + follow / 28) + "-1-" + std::to_string(1 + follow % 28) + "\t" +
             std::to_string(time / 60) + ":" + std::to_string(10 + time % 50) + "\tT" +
             std::to_string(row * 7 % 200) + "_" + std::to_string(row % 100 * 25) + "\n";
  }
  return sheet;
}

std::vector<Trail*> TrailsOfType(Map& map, std::string_view type) {
  std::vector<Trail*> trails;
  for (Trail& trail : map.trails) {
    if (trail.type == type) trails.push_back(&trail);
  }
  return trails;
}

void Report(benchmark::State& state, const Site& site) {
  state.counters["points"] = static_cast<double>(site.map.pointStore.size());
  state.counters["MB"] = static_cast<double>(site.history.Bytes()) / 1e6;
}

/// Takes an import of a follow sheet back and makes it again; each by itself takes half.
void UndoAndRedoImport(benchmark::State& state) {
  Site site(MadeSurvey({.stations = 20000, .loops = 2000, .fixes = 200}));
  const FollowSheet sheet{.text = MadeSheet()};
  ImportSpec spec;
  spec.map = &site.map;
  spec.sheet = &sheet;
  spec.fileName = "rains.txt";
  spec.dateColumn = 0;
  spec.timeColumn = 1;
  spec.locationColumn = 2;
  spec.speciesAlways = "Papio";
  SheetLogs logs;
  SheetOutcome outcome;
  site.history.Apply(SheetEdit(
      spec, logs, [](const std::string&, std::string_view) { return WriteResult::Done; }, outcome));
  TimeLimit limit(0.2);
  for (auto unused : state) {
    limit.Measure([&] { site.history.Undo(site.map); });
    site.history.Redo(site.map);
  }
  limit.Check(state);
  Report(state, site);
  state.counters["trails"] = static_cast<double>(TrailsOfType(site.map, "Papio").size());
}

/// Trails of the type "Side" with 20 stations each, which branch off the trails of a made survey.
std::string SideTrails(int count) {
  constexpr int Stations = 20;
  std::string text;
  for (int trail = 0; trail < count; ++trail) {
    std::string base = "T" + std::to_string(trail % 800) + "_0";
    text += "T\tside " + std::to_string(trail) + "\tSide\n";
    for (int station = 0; station < Stations; ++station) {
      const std::string name = "S" + std::to_string(trail) + "_" + std::to_string(station * 25);
      text += "C\t" + name + "\t" + base + "\t25\t" + std::to_string(trail % 360) + "\t0\n";
      base = name;
    }
  }
  return text;
}

/// Deletes a group of 1,000 trails with 20,000 points, and solves what is left.
void DeleteGroup(benchmark::State& state) {
  Site site(MadeSurvey({.stations = 80000, .loops = 1000, .fixes = 50}) + SideTrails(1000));
  const std::vector<Trail*> group = TrailsOfType(site.map, "Side");
  TimeLimit limit(1);
  for (auto unused : state) {
    limit.Measure([&] { DeleteTrails(site.map, group, site.history); });
    state.PauseTiming();
    if (!TrailsOfType(site.map, "Side").empty()) state.SkipWithError("the trails are still there");
    site.history.Undo(site.map);
    state.ResumeTiming();
  }
  limit.Check(state);
  Report(state, site);
  state.counters["trails"] = static_cast<double>(group.size());
}

BENCHMARK(DeleteGroup)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(UndoAndRedoImport)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvane
