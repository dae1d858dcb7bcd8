#include "commands/map_edits.h"

#include "commands/map_facts.h"

namespace orvane {

Edit DeviationEdit(Map& map, double deviation) {
  return {.name = "Set Magnetic Deviance", .map = &map, .change = [&map, deviation](EditFollowUp&) {
            map.magneticDeviation = deviation;
            return true;
          }};
}

Edit BasisEdit(Map& map, Map& basis) {
  return {.name = "Set Basis",
          .map = &map,
          .marksDirty = false,
          .change = [&map, &basis](EditFollowUp& followUp) {
            followUp.freshTrailRows = true;
            followUp.unlikeFile.push_back(&map);
            return SetBasis(map, basis);
          }};
}

}  // namespace orvane
