#pragma once

#include "geo/magnetic_field.h"
#include "model/map.h"

#include <optional>
#include <string>

namespace orvane {

/// What a model of the magnetic field says of a map, for the prompt on its deviation.
struct DeviationOffer {
  std::string text;      ///< for the field, as `DeviationText`
  std::string sentence;  ///< which model says so, of which day
};

/// Asks an installed model for the middle of the placed points of the map, or of the first map down
/// its basis chain that has any, and for the day in the middle of its dated trails.
/// \param today   the day for a map without dated trails
/// \param folder  of the models
/// \return nothing without placed points or without a model that covers the day
std::optional<DeviationOffer> OfferDeviation(const Map& map, PackedDate today,
                                             const std::string& folder = FieldModelFolder());

}  // namespace orvane
