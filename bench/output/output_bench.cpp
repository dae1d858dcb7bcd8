#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "output/shapefiles.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace orvane {
namespace {

/// Named points with altitudes on trails of a hundred points each, some of them areas, that wander
/// over a site of ten kilometres.
class Site {
 public:
  explicit Site(int points) : workspace_(messages_), map_(MakeMap(workspace_, "bench.map")) {
    std::uint64_t state = 7;
    const auto next = [&state] {
      state = (state * 0x5DEECE66DULL + 11) & ((1ULL << 48) - 1);
      return static_cast<double>(state >> 16) / 4294967296.0;
    };
    double north = 0;
    double east = 0;
    Trail* trail = nullptr;
    for (int i = 0; i < points; ++i) {
      if (i % 100 == 0) {
        trail = &map_.trails.emplace_front();
        trail->name = "trail " + std::to_string(i);
        trail->type = "Path";
        trail->filled = i % 1000 == 0;
        north = 10000 * next();
        east = 10000 * next();
      }
      north += 40 * next() - 20;
      east += 40 * next() - 20;
      Point& point = MakePoint(map_, "P" + std::to_string(i));
      point.geo = MetersToLatLon(DegreesToMeters(1.5) + north, east);
      point.geo.lon += 30;
      point.geo.altitude = static_cast<float>(300 * next());
      point.flags |= PointPlaced;
      AddPointName(map_, point, point.name);
      trail->points.push_back(&point);
    }
  }
  Map& GetMap() { return map_; }

 private:
  RecordedMessages messages_;
  Workspace workspace_;
  Map& map_;
};

/// A folder that goes at the end.
class Folder {
 public:
  Folder() {
    path_ = std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

void WriteShapefiles(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  const Folder folder;
  for (auto unused : state) {
    (void)unused;
    if (!ExportShapefiles(site.GetMap(), folder.Path())) state.SkipWithError("not written");
  }
}
BENCHMARK(WriteShapefiles)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same without waiting for the disk, which differs by machine.
void MakeShapefiles(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  const Folder folder;
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
