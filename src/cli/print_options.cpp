#include "cli/print_command.h"

namespace orvane {

std::string WrongPrintOptions(const PrintRequest& request) {
  const bool hasArea = !request.area.empty();
  const bool hasPoint = !request.around.empty();
  if (hasArea && hasPoint) return "--area excludes --around";
  if (request.scale && !hasArea && !hasPoint) return "--scale requires --area or --around";
  if (hasPoint) return {};
  if (request.vertical) return "--vertical requires --around";
  if (request.horizontal) return "--horizontal requires --around";
  if (request.rotation) return "--rotate requires --around";
  return {};
}

}  // namespace orvane
