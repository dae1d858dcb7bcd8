#include "cli/print_command.h"
#include "view/view_transform.h"

#include <algorithm>
#include <initializer_list>

namespace orvane {

namespace {

/// An option with what it needs.
struct OptionUse {
  bool given;
  const char* name;
  bool fits;
  const char* needs;
};

std::string FirstMisfit(std::initializer_list<OptionUse> uses) {
  for (const OptionUse& use : uses) {
    if (use.given && !use.fits) return std::string(use.name) + " requires " + use.needs;
  }
  return {};
}

std::string WrongReportOptions(const PrintRequest& request) {
  const PrintedKind kind = request.kind;
  const bool isProfile = kind == PrintedKind::Profile;
  std::string misfit = FirstMisfit({
      {!request.trails.empty(), "--trail", kind == PrintedKind::Trails || isProfile,
       "--report trails or --report profile"},
      {!request.ranges.empty(), "--range", kind == PrintedKind::Ranges, "--report ranges"},
      {request.measure.has_value(), "--measure", kind == PrintedKind::Ranges, "--report ranges"},
      {request.format.has_value(), "--format", kind == PrintedKind::Index, "--report index"},
      {!request.transect.empty(), "--transect", isProfile, "--report profile"},
  });
  if (!misfit.empty() || !isProfile) return misfit;
  const size_t lines = request.trails.size() + (request.transect.empty() ? 0 : 1);
  return lines == 1 ? "" : "--report profile requires one --trail or --transect";
}

}  // namespace

std::string WrongPrintOptions(const PrintRequest& request) {
  constexpr double MillimetersPerInch = 25.4;
  const double longest = std::max(request.paper.width, request.paper.height);
  if (longest / MillimetersPerInch * request.resolution > LargestPixel) {
    return "--dpi: " + std::to_string(request.resolution) + " on " + request.paper.name +
           " makes a page of more than " + std::to_string(LargestPixel) + " pixels";
  }
  const bool isMap = request.kind == PrintedKind::Map;
  const bool hasArea = !request.area.empty();
  const bool hasPoint = !request.around.empty();
  if (hasArea && hasPoint) return "--area excludes --around";
  std::string misfit = FirstMisfit({
      {hasArea, "--area", isMap, "a map, not a report"},
      {hasPoint, "--around", isMap, "a map, not a report"},
      {request.label.has_value(), "--label", isMap, "a map, not a report"},
      {request.pointSize.has_value(), "--point-size", isMap, "a map, not a report"},
      {request.gridColor.has_value(), "--grid-color", isMap, "a map, not a report"},
      {request.scale.has_value(), "--scale", hasArea || hasPoint, "--area or --around"},
      {request.vertical.has_value(), "--vertical", hasPoint, "--around"},
      {request.horizontal.has_value(), "--horizontal", hasPoint, "--around"},
      {request.rotation.has_value(), "--rotate", hasPoint, "--around"},
  });
  return misfit.empty() ? WrongReportOptions(request) : misfit;
}

}  // namespace orvane
