#include "mapfile/trail_index.h"

#include "base/text.h"
#include "model/time_names.h"

#include <algorithm>

namespace orvane {

Trail* TrailNames::Find(std::string_view name) {
  if (!filled_) Fill();
  const auto found = byName_.find(FoldedText(name));
  return found == byName_.end() ? nullptr : found->second;
}

void TrailNames::Add(Trail& trail) {
  // A new trail is in front of all others, so it is the one found.
  if (filled_) byName_[FoldedText(*trail.name)] = &trail;
}

void TrailNames::NoteReversed() {
  if (doubled_) Forget();
}

void TrailNames::Fill() {
  byName_.clear();
  doubled_ = false;
  for (Map* level = &map_; level != nullptr; level = level->basis) {
    for (Trail& trail : level->trails) {
      if (!trail.name) continue;
      const bool isNew = byName_.try_emplace(FoldedText(*trail.name), &trail).second;
      doubled_ = doubled_ || (!isNew && level == &map_);
    }
  }
  filled_ = true;
}

void TrailTimes::Forget() {
  indexed_ = 0;
  firstAt_.clear();
  byName_.clear();
}

Point* TrailTimes::Find(const Trail& trail, std::string_view name) {
  for (; indexed_ < trail.points.size(); ++indexed_) {
    const Point& point = *trail.points[indexed_];
    if (!firstAt_.try_emplace(&point, indexed_).second) continue;
    if (IsTimeName(point.name)) AddName(point, point.name);
    for (const std::string& synonym : point.synonyms) {
      if (IsTimeName(synonym)) AddName(point, synonym);
    }
  }
  const auto found = byName_.find(FoldedText(name));
  return found == byName_.end() ? nullptr : trail.points[found->second];
}

void TrailTimes::AddName(const Point& point, std::string_view name) {
  const auto at = firstAt_.find(&point);
  if (at == firstAt_.end()) return;  // not on the trail, or not in the index yet
  size_t& first = byName_.try_emplace(FoldedText(name), at->second).first->second;
  first = std::min(first, at->second);
}

}  // namespace orvane
