#include "reports/profile_table.h"

#include "base/utf8.h"

namespace orvane {

namespace {

std::string LineOf(const ElevationView& view, size_t column,
                   const std::function<std::string(double)>& number) {
  const ElevationSample& sample = view.samples[column];
  const double distance = static_cast<double>(column) * view.metresPerPixelX + view.viewStart;
  std::string line = std::to_string(column) + '\t' + number(distance) + '\t' +
                     number(sample.position.lat) + '\t' + number(sample.position.lon) + '\t';
  if (HasAltitude(sample.position.altitude)) {
    line += number(double{sample.position.altitude});
  }
  line += '\t';
  if (sample.label != nullptr) line += ToUtf8(*sample.label);
  return line + '\n';
}

}  // namespace

std::string ProfileTable(const ElevationView& view,
                         const std::function<std::string(double)>& number) {
  std::string text = "column\tdistance\tlat\tlon\taltitude\tlabel\n";
  for (size_t i = 0; i < view.samples.size(); ++i) text += LineOf(view, i, number);
  return text;
}

}  // namespace orvane
