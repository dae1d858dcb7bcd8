// The import of a long follow sheet: 100,000 rows are some years of a field station. The rows name
// marks, places between marks, and places beside them; a stop lasts three rows, a follow 250.

#include "entry/sheet_fields.h"
#include "entry/sheet_import.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <benchmark/benchmark.h>
#include <string>

namespace orvane {
namespace {

constexpr int Trails = 20;
constexpr int MarksOfTrail = 100;
constexpr int RowsOfFollow = 250;
constexpr int RowsOfStop = 3;

std::string MadeSite(const std::string& more) {
  std::string text = "Z\tfruit,leaf,rest\n";
  for (int trail = 0; trail < Trails; ++trail) {
    const std::string name = "Trail" + std::string(1, static_cast<char>('a' + trail));
    text += "T\t" + name + "\tTrail\n";
    for (int mark = 0; mark < MarksOfTrail; ++mark) {
      text += "G\t" + name + std::to_string(25 * mark) + "\tN1 " + std::to_string(trail) + "." +
              std::to_string(100 + mark) + "'\tE10 0." + std::to_string(100 + mark) + "'\t" +
              std::to_string(100 + mark) + "\n";
    }
  }
  return text + more;
}

std::string MadePlace(Dice& dice, bool variedTexts) {
  std::string place = "Trail" + std::string(1, static_cast<char>('a' + dice.Below(Trails)));
  const int kind = variedTexts ? dice.Below(3) : 0;
  const int marks = MarksOfTrail - 1;
  if (kind == 0) return place + std::to_string(25 * dice.Below(marks));
  place += std::to_string(dice.Below(25 * marks));
  if (kind == 1) return place;
  return std::to_string(1 + dice.Below(60)) + "m west of " + place;
}

std::string MadeSheet(int rows, bool variedTexts) {
  Dice dice(7);
  std::string sheet;
  std::string place;
  for (int row = 0; row < rows; ++row) {
    const int follow = row / RowsOfFollow;
    const int time = 5 * 60 + 4 * (row % RowsOfFollow);
    if (row % RowsOfStop == 0) place = MadePlace(dice, variedTexts);
    sheet += "Group " + std::to_string(follow % 5) + "\tAnimal " + std::to_string(follow % 7) +
             "\t" + std::to_string(1990 + follow / 336) + "-" +
             std::to_string(1 + follow / 28 % 12) + "-" + std::to_string(1 + follow % 28) + "\t" +
             std::to_string(time / 60 * 100 + time % 60) + "\t" + place + "\tfeed\t" +
             std::to_string(dice.Below(4)) + "\t1\tin the crown with two others\n";
  }
  return sheet;
}

SheetFields UsualFields() {
  SheetFields fields;
  fields[SheetSpecies] = "A";
  fields[SheetFocal] = "B";
  fields[SheetDate] = "C";
  fields[SheetTime] = "D";
  fields[SheetLocation] = "E";
  fields[SheetActivity] = "F";
  fields[SheetSm1] = "G";
  fields[SheetSm2] = "H";
  fields[SheetSm3Code] = "rest";
  return fields;
}

/// Times only `RunSpreadsheetImport`: the rows, the logs, the solving of the map, its ranges.
void Run(benchmark::State& state, const std::string& sheet, const std::string& more) {
  for (auto unused : state) {
    state.PauseTiming();
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& map = MakeMap(workspace, "site.map");
    ReadMapText(map, MadeSite(more));
    FinishMap(map);
    SheetReading reading = ReadSheetFields(UsualFields(), map);
    const FollowSheet read{.text = sheet};
    reading.spec.sheet = &read;
    SheetLogs logs;
    state.ResumeTiming();
    RunSpreadsheetImport(reading.spec, logs,
                         [](const std::string&, std::string_view) { return WriteResult::Done; });
    state.PauseTiming();
    state.counters["points"] = static_cast<double>(map.pointStore.size());
    state.counters["messages"] = static_cast<double>(messages.Entries().size());
    state.ResumeTiming();
  }
}

void ImportOfMarks(benchmark::State& state) {
  Run(state, MadeSheet(static_cast<int>(state.range(0)), false), "");
}

void ImportOfAnyPlaces(benchmark::State& state) {
  Run(state, MadeSheet(static_cast<int>(state.range(0)), true), "");
}

/// With a range of one group, whose areas and travel are computed again at the end.
void ImportIntoARange(benchmark::State& state) {
  Run(state, MadeSheet(static_cast<int>(state.range(0)), true), "R\tGroup 1\nK\tGroup 1\n");
}

BENCHMARK(ImportOfMarks)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportOfAnyPlaces)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportIntoARange)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
