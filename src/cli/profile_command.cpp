#include "cli/profile_command.h"

#include "base/latin1.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "elevation/profile.h"
#include "model/point_names.h"
#include "places/resolve_location.h"
#include "reports/profile_table.h"

#include <nlohmann/json.hpp>

namespace orvane {

namespace {

/// \return a number as in JSON: reading it gives the same value again
std::string NumberText(double value) { return nlohmann::json(value).dump(); }

}  // namespace

std::optional<ElevationView> OpenProfile(Map& map, LineMessages& messages, const std::string& trail,
                                         const std::vector<std::string>& transect) {
  const auto cannotFind = [&messages](const std::string& name) {
    NoteError(messages, "Can't find %s", {name});
    return std::nullopt;
  };
  if (transect.empty()) {
    const Trail* found =
        FindTyped(trail, [&map](std::string_view each) { return FindTrailOrContour(map, each); });
    if (found == nullptr) return cannotFind(trail);
    return OpenElevation(map, *found);
  }
  LatLon ends[2];
  for (size_t i = 0; i < 2; ++i) {
    const auto location = FindTyped(
        transect[i], [&map](std::string_view each) { return ResolveLocation(map, each); });
    if (!location) return cannotFind(transect[i]);
    ends[i] = location->place;
  }
  return OpenTransect(map, ends[0], ends[1]);
}

int ProfileCommand(Map& map, LineMessages& messages, const ProfileRequest& request) {
  auto view = OpenProfile(map, messages, request.trail, request.transect);
  if (!view) return ExitFailed;
  LayoutColumns(*view, request.width);
  FillGaps(*view);
  Print(ProfileTable(*view, NumberText));
  return ExitDone;
}

}  // namespace orvane
