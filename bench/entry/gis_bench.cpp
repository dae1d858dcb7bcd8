// The import of a season's GPS tracks: a million fixes, with and without the solving that follows.

#include "base/number_text.h"
#include "entry/gis_import.h"
#include "model/workspace.h"

#include <benchmark/benchmark.h>
#include <string>

namespace orvane {
namespace {

constexpr int FixesOfTrack = 5000;

double Latitude(int fix) { return 1.3 + 1e-6 * (fix % 4001); }
double Longitude(int fix) { return 115.6 + 1e-6 * (fix % 7919); }

std::string MadeLines(int fixes) {
  std::string text = "name,time,symbol,colour,latitude,longitude,altitude\n";
  for (int i = 0; i < fixes; ++i) {
    text += "Track " + std::to_string(i / FixesOfTrack) + ",2003-6-3 06:12:21,Dot,Red," +
            FormatFixed(Latitude(i), 7) + "," + FormatFixed(Longitude(i), 7) + "," +
            std::to_string(200 + i % 100) + "\n";
  }
  return text;
}

std::string MadeGpx(int fixes) {
  std::string text = "<gpx>";
  for (int i = 0; i < fixes; ++i) {
    if (i % FixesOfTrack == 0) text += "<trk><trkseg>\n";
    text += "<trkpt lat=\"" + FormatFixed(Latitude(i), 7) + "\" lon=\"" +
            FormatFixed(Longitude(i), 7) + "\"><ele>200</ele><time>2003-06-03T06:12:21Z</time>" +
            "</trkpt>\n";
    if (i % FixesOfTrack == FixesOfTrack - 1) text += "</trkseg></trk>\n";
  }
  return text + "</gpx>";
}

void ReadGis(benchmark::State& state, const std::string& text) {
  RecordedMessages messages;
  for (auto _ : state) benchmark::DoNotOptimize(ReadGisText(text, "gps.txt", messages));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void ReadGisLines(benchmark::State& state) {
  ReadGis(state, MadeLines(static_cast<int>(state.range(0))));
}
BENCHMARK(ReadGisLines)->Arg(1000000)->Unit(benchmark::kMillisecond);

void ReadGpx(benchmark::State& state) { ReadGis(state, MadeGpx(static_cast<int>(state.range(0)))); }
BENCHMARK(ReadGpx)->Arg(1000000)->Unit(benchmark::kMillisecond);

void ImportAndSolveGisLines(benchmark::State& state) {
  const std::string text = MadeLines(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& map = MakeMap(workspace, "bench.map");
    auto import = StartGisImportOfText(map, text, "gps.txt", {});
    TakeAllTracks(*import, StartFields(*import, {}));
    benchmark::DoNotOptimize(map.pointStore.size());
  }
}
BENCHMARK(ImportAndSolveGisLines)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
