#include "cli/commands.h"

#include "base/latin1.h"
#include "cli/dump.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "mapfile/writer.h"
#include "model/point_names.h"
#include "places/resolve_location.h"
#include "trails/checks.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view CannotFind = "Can't find %s";

template <typename Named>
Json NameOrNull(const Named* named) {
  if (named == nullptr || !named->name) return nullptr;
  return ToUtf8(*named->name);
}

}  // namespace

int DumpCommand(Map& map, const LineMessages& messages) {
  DumpMap(map, messages, std::cout);
  return ExitDone;
}

int SaveCommand(Map& map, const std::string& output, bool simple) {
  if (output == "-") {
    Print(MapFileText(map, map.fileName, !simple));
    return ExitDone;
  }
  return WriteMapFile(map, output, !simple) ? ExitDone : ExitFailed;
}

int LocateCommand(Map& map, LineMessages& messages, const std::string& text) {
  const auto location =
      FindTyped(text, [&map](std::string_view each) { return ResolveLocation(map, each); });
  if (!location) {
    NoteError(messages, CannotFind, {text});
    return ExitFailed;
  }
  const LatLon& place = location->place;
  Json trail = NameOrNull(location->trail);
  if (location->trail != nullptr && trail.is_null()) trail = ToUtf8(location->trail->type);
  const Json json = {
      {"lat", place.lat},
      {"lon", place.lon},
      {"altitude", HasAltitude(place.altitude) ? Json(double{place.altitude}) : Json(nullptr)},
      {"point", location->point == nullptr ? Json(nullptr) : Json(ToUtf8(location->point->name))},
      {"trail", trail},
      {"range", NameOrNull(location->range)}};
  Print(json.dump() + '\n');
  return ExitDone;
}

int CheckCommand(Map& map, LineMessages& messages, const std::vector<std::string>& trailNames,
                 bool showAll) {
  std::vector<Trail*> trails;
  for (const std::string& name : trailNames) {
    Trail* trail =
        FindTyped(name, [&map](std::string_view each) { return FindTrailOrContour(map, each); });
    if (trail == nullptr) {
      NoteError(messages, CannotFind, {name});
      return ExitFailed;
    }
    trails.push_back(trail);
  }
  if (trailNames.empty()) {
    for (Map* level = &map; level != nullptr; level = level->basis) {
      for (Trail& trail : level->trails) trails.push_back(&trail);
    }
  }
  messages.PrintAsResult();
  for (Trail* trail : trails) CheckTrail(*trail, showAll, messages);
  return ExitDone;
}

}  // namespace orvane
