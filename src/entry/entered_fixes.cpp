#include "entry/entered_fixes.h"

#include "mapfile/open_map.h"
#include "model/workspace.h"

namespace orvane {

void AddFix(Point& point, const LatLon& place, float altitude) {
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureGps;
  reading.position = {place.lat, place.lon, NoAltitude};
  reading.altitude = altitude;
  point.flags &= ~std::uint32_t{PointPlaced};
}

void FinishImport(Map& map) {
  const MustFinish finish(map.workspace->progress);
  FinishMap(map);
  map.flags |= MapDirty;
}

}  // namespace orvane
