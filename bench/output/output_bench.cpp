#include "base/messages.h"
#include "model/map.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "output/shapefiles.h"
#include "support/dice.h"
#include "support/temporary_folder.h"
#include "support/wandering_trails.h"

#include <benchmark/benchmark.h>
#include <string>

namespace orvane {
namespace {

/// Named points with altitudes on trails of a hundred points each, some of them areas, that wander
/// over a site of ten kilometres.
class Site {
 public:
  explicit Site(int points) : workspace_(messages_), map_(MakeMap(workspace_, "bench.map")) {
    AddWanderingTrails(map_, points);
    Dice dice(8);
    int number = 0;
    for (Trail& trail : map_.trails) {
      trail.type = "Path";
      trail.filled = ++number % 10 == 0;
      for (Point* point : trail.points) {
        point->geo.altitude = static_cast<float>(dice.Between(0, 300));
        AddPointName(map_, *point, point->name);
      }
    }
  }
  Map& GetMap() { return map_; }

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map& map_;
};

void WriteShapefiles(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  const TemporaryFolder folder;
  for (auto unused : state) {
    (void)unused;
    if (!ExportShapefiles(site.GetMap(), folder.Path())) state.SkipWithError("not written");
  }
}
BENCHMARK(WriteShapefiles)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same without waiting for the disk, which differs by machine.
void MakeShapefiles(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  const TemporaryFolder folder;
  FileSystem system = SystemFiles();
  system.flush = [](int) { return 0; };
  for (auto unused : state) {
    (void)unused;
    if (!ExportShapefiles(site.GetMap(), folder.Path(), {}, system)) {
      state.SkipWithError("not written");
    }
  }
}
BENCHMARK(MakeShapefiles)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvane
