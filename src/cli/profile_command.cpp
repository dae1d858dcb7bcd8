#include "cli/profile_command.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "elevation/profile.h"
#include "model/point_names.h"
#include "places/resolve_location.h"

#include <nlohmann/json.hpp>

namespace orvane {

namespace {

/// \return a number as in JSON: reading it gives the same value again
std::string NumberText(double value) { return nlohmann::json(value).dump(); }

std::string SampleText(const ElevationView& view, size_t column) {
  const ElevationSample& sample = view.samples[column];
  const double distance = static_cast<double>(column) * view.metresPerPixelX + view.viewStart;
  std::string line = std::to_string(column) + '\t' + NumberText(distance) + '\t' +
                     NumberText(sample.position.lat) + '\t' + NumberText(sample.position.lon) +
                     '\t';
  if (HasAltitude(sample.position.altitude)) line += NumberText(double{sample.position.altitude});
  line += '\t';
  if (sample.label != nullptr) line += *sample.label;
  return line + '\n';
}

void PrintProfile(ElevationView& view, int width) {
  LayoutColumns(view, width);
  FillGaps(view);
  std::string text = "column\tdistance\tlat\tlon\taltitude\tlabel\n";
  for (size_t i = 0; i < view.samples.size(); ++i) text += SampleText(view, i);
  Print(FieldsToUtf8(text));
}

}  // namespace

std::optional<ElevationView> OpenProfile(Map& map, LineMessages& messages, const std::string& trail,
                                         const std::vector<std::string>& transect) {
  const auto cannotFind = [&messages](const std::string& name) {
    NoteError(messages, "Can't find %s", {name});
    return std::nullopt;
  };
  if (transect.empty()) {
    const Trail* found = FindTrailOrContour(map, trail);
    if (found == nullptr) return cannotFind(trail);
    return OpenElevation(map, *found);
  }
  LatLon ends[2];
  for (size_t i = 0; i < 2; ++i) {
    const auto location = ResolveLocation(map, transect[i]);
    if (!location) return cannotFind(transect[i]);
    ends[i] = location->place;
  }
  return OpenTransect(map, ends[0], ends[1]);
}

int ProfileCommand(Map& map, LineMessages& messages, const ProfileRequest& request) {
  auto view = OpenProfile(map, messages, request.trail, request.transect);
  if (!view) return ExitFailed;
  PrintProfile(*view, request.width);
  return ExitDone;
}

}  // namespace orvane
