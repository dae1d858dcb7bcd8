#include "trails/trail_names.h"

#include "base/text.h"

namespace orvane {

std::string ShownName(const Point& point) {
  return point.name.empty() ? "<nameless point>" : point.name;
}

std::string ShownName(const Trail& trail) { return trail.name.value_or("<nameless trail>"); }

bool IsTrailNameWith(const Trail& trail, const Point& point, std::string_view word) {
  if (!trail.name) return false;
  const auto rest = StartsWith(*trail.name, point.name);
  return rest && SameName(*rest, word);
}

}  // namespace orvane
