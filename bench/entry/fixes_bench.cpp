// The import of a table of fixes of ten collars: a million fixes, two minutes apart. Reading and
// planning, then the whole import without the figures of the new ranges.

#include "base/number_text.h"
#include "entry/fix_import.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <benchmark/benchmark.h>
#include <string>

namespace orvane {
namespace {

constexpr int Collars = 10;
constexpr int MinutesBetween = 2;

std::string TwoDigits(int number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

/// A table in the form of Movebank; each collar wanders from one place.
std::string MadeTable(int fixes) {
  Dice dice(15);
  std::string text =
      "event-id,visible,timestamp,location-long,location-lat,height-above-msl,"
      "individual-taxon-canonical-name,individual-local-identifier\n";
  double lat = 0;
  double lon = 0;
  const int ofCollar = fixes / Collars;
  for (int i = 0; i < fixes; ++i) {
    if (i % ofCollar == 0) {
      lat = 1.3;
      lon = 115.6;
    }
    lat += dice.Between(-1e-4, 1e-4);
    lon += dice.Between(-1e-4, 1e-4);
    const int minutes = i % ofCollar * MinutesBetween;
    const int days = minutes / 1440;
    text += std::to_string(i) + ",true," + std::to_string(2000 + days / 336) + '-' +
            TwoDigits(1 + days / 28 % 12) + '-' + TwoDigits(1 + days % 28) + ' ' +
            TwoDigits(minutes / 60 % 24) + ':' + TwoDigits(minutes % 60) + ":07.000," +
            FormatFixed(lon, 7) + ',' + FormatFixed(lat, 7) + ",203.5,Pongo pygmaeus,Collar " +
            std::to_string(i / ofCollar) + '\n';
  }
  return text;
}

void RunImport(benchmark::State& state, bool enters) {
  const std::string text = MadeTable(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& map = MakeMap(workspace, "bench.map");
    auto import = StartFixImportOfText(map, text, "collars.csv", {});
    if (enters) EnterFixes(map, *import, NewRanges::NotAnalyzed);
    benchmark::DoNotOptimize(map.pointStore.size());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void PlanFixesOfCollars(benchmark::State& state) { RunImport(state, false); }
BENCHMARK(PlanFixesOfCollars)->Arg(1000000)->Unit(benchmark::kMillisecond);

void ImportFixesOfCollars(benchmark::State& state) { RunImport(state, true); }
BENCHMARK(ImportFixesOfCollars)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
