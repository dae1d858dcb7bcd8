#pragma once

#include "cli/line_messages.h"
#include "elevation/profile.h"
#include "model/map.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The arguments of `profile`: a trail, or two locations.
struct ProfileRequest {
  std::string trail;
  std::vector<std::string> transect;  ///< none or two
  int width = 800;                    ///< columns of the plot
};

/// Opens the profile of the trail or of the line between the two locations.
/// \return nothing, after a message, on failure
std::optional<ElevationView> OpenProfile(Map& map, LineMessages& messages, const std::string& trail,
                                         const std::vector<std::string>& transect);

/// Prints the samples of a profile, all gaps filled: a heading and a line for each column, with
/// tabs between the fields. \return an `ExitStatus`
int ProfileCommand(Map& map, LineMessages& messages, const ProfileRequest& request);

}  // namespace orvane
