#include "cli/contours_command.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "elevation/contours.h"
#include "elevation/contours_continuous.h"
#include "panes/trail_tree.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

/// Shows progress on one line of the terminal, and writes only when the percentage changes.
class ProgressLine {
 public:
  bool operator()(const char* stage, int percent) {
    if (stage == nullptr) {
      std::fputc('\n', stderr);
    } else if (stage != stage_ || percent != percent_) {
      std::fprintf(stderr, "Contour: %s %d%%        \r", stage, percent);
      std::fflush(stderr);
    }
    stage_ = stage;
    percent_ = percent;
    return true;
  }

 private:
  const char* stage_ = nullptr;
  int percent_ = 0;
};

Json LineJson(const Trail& trail) {
  Json coordinates = Json::array();
  for (const Point* point : trail.points) {
    coordinates.push_back(Json::array({point->geo.lon, point->geo.lat}));
  }
  const Point* const first = trail.points.front();
  return {{"type", "Feature"},
          {"properties",
           {{"name", *trail.name},
            {"type", trail.type},
            {"level", double{first->geo.altitude}},
            {"closed", first == trail.points.back()}}},
          {"geometry", {{"type", "LineString"}, {"coordinates", std::move(coordinates)}}}};
}

}  // namespace

Map* MakeContours(Map& map, LineMessages& messages, const ContoursRequest& request) {
  Map* source = MapWithContours(&map);
  if (source == nullptr && !request.interval) {
    NoteError(messages, "No contour interval in %s", {map.shownName});
    return nullptr;
  }
  if (source == nullptr) source = &map;
  const int interval = request.interval.value_or(source->contourInterval);
  ContourProgress progress;
  if (isatty(STDERR_FILENO) != 0) progress = ProgressLine();
  const ContourOutcome outcome = request.continuous
                                     ? GenerateContinuousContours(*source, interval, progress)
                                     : GenerateContours(*source, interval, progress);
  return outcome == ContourRefused ? nullptr : source;
}

int ContoursCommand(Map& map, LineMessages& messages, const ContoursRequest& request) {
  const Map* const source = MakeContours(map, messages, request);
  if (source == nullptr) return ExitFailed;
  std::cout << R"({"type": "FeatureCollection", "features": [)";
  const char* separator = "";
  for (const Trail& trail :
       request.continuous ? source->continuousContours : source->contourTrails) {
    std::cout << separator << LineJson(trail).dump();
    separator = ", ";
  }
  std::cout << "]}\n";
  return ExitDone;
}

}  // namespace orvane
