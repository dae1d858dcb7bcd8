// From OK in the trail editor to the drawn window: the trail is made again, the map is solved, the
// ranges are analysed, panes and map are painted.

#include "open_program.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "support/made_survey.h"
#include "view/fit_to_map.h"

#include <QLineEdit>
#include <QPushButton>

#include <benchmark/benchmark.h>

namespace orvane {
namespace {

/// A cell with a distance that can be typed over.
struct DistanceCell {
  Trail* trail = nullptr;
  size_t row = 0;
  size_t column = 0;
};

/// \return none for a trail without shots, or with readings that an editor asks about
DistanceCell FindDistance(Map& map, Trail& trail) {
  const TrailEditor editor(map, &trail);
  DistanceCell cell;
  for (size_t row = 0; row < editor.RowCount(); ++row) {
    if (editor.Rows()[row].showsNear) return {};
    if (cell.trail != nullptr || !editor.Rows()[row].basePoint) continue;
    const bool isMixture = editor.Mode() == EntryMode::Mixture;
    cell = {.trail = &trail, .row = row, .column = isMixture ? ColumnDistance : size_t{2}};
  }
  return cell;
}

DistanceCell FindDistance(Map& map) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (Trail& trail : level->trails) {
      if (const DistanceCell cell = FindDistance(map, trail); cell.trail != nullptr) return cell;
    }
  }
  return {};
}

void PressOk(benchmark::State& state, const std::string& file) {
  OpenProgram program(file);
  MapWindowWidget& window = program.Window();
  FitToMap(window.Shown());
  auto& editors = *program.TheShell().findChild<Editors*>();
  const DistanceCell cell = FindDistance(window.TheMap());
  if (cell.trail == nullptr) {
    state.SkipWithError("no distance to change");
    return;
  }
  int turn = 0;
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    TrailEditorWindow& editor = editors.OpenTrail(window, cell.trail);
    editor.Cells().OpenCell(cell.row, cell.column);
    editor.Cells().EditField().setText(QStringLiteral("%1m").arg(24 + ++turn % 2));
    OpenProgram::Handle();
    state.ResumeTiming();
    editor.findChild<QPushButton*>(QStringLiteral("ok"))->click();
    OpenProgram::Handle();
  }
  if (program.TheShell().History().Steps() == 0) state.SkipWithError("nothing was saved");
}

void OkOnSite(benchmark::State& state) { PressOk(state, EXAMPLE_MAP); }
BENCHMARK(OkOnSite)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

/// Stations, with loops and fixes.
void OkOnSurvey(benchmark::State& state) {
  const WrittenMap map(MadeSurvey({static_cast<int>(state.range(0)), 1000, 50}));
  PressOk(state, map.File());
}
BENCHMARK(OkOnSurvey)->Arg(100000)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
