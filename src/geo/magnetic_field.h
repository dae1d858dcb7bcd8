#pragma once

#include "base/dates.h"
#include "geo/positions.h"

#include <optional>
#include <string>

namespace orvane {

/// What a model of the earth's magnetic field says of one place and date.
struct FieldDeclination {
  double degrees = 0;  ///< from true to magnetic north, east positive
  std::string model;   ///< such as "wmm2025"
};

/// The folder in which GeographicLib looks for models of the magnetic field, after the variables
/// GEOGRAPHICLIB_MAGNETIC_PATH and GEOGRAPHICLIB_DATA of the environment.
std::string FieldModelFolder();

/// Asks an installed model for the declination at sea level. Of several models that cover the date,
/// it is the one that GeographicLib uses by default, else the first by name.
/// \param place   its altitude does not count
/// \param folder  holds files such as "wmm2025.wmm"
/// \return nothing without a readable model that covers the date, and for a place that is not finite
std::optional<FieldDeclination> DeclinationAt(const LatLon& place, PackedDate date,
                                              const std::string& folder = FieldModelFolder());

}  // namespace orvane
