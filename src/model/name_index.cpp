#include "model/name_index.h"

#include "base/text.h"
#include "model/time_names.h"

#include <algorithm>
#include <unordered_set>

namespace orvane {

namespace {

bool IsFoundLoosely(const Point& point) {
  const auto isLoose = [](const std::string& name) {
    return IsHiddenName(name) || IsTimeName(name);
  };
  return isLoose(point.name) || std::any_of(point.synonyms.begin(), point.synonyms.end(), isLoose);
}

void Fill(NameIndex& index, Map& map) {
  for (Trail& trail : map.trails) {
    if (trail.name) index.trails.try_emplace(FoldedText(*trail.name), &trail);
  }
  std::unordered_set<const Point*> seen;  // those with synonyms, which are in several buckets
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) {
      if (!point->synonyms.empty() && !seen.insert(point).second) continue;
      if (IsFoundLoosely(*point)) index.loose.push_back(point);
    }
  }
}

}  // namespace

NameIndexScope::NameIndexScope(Map& map) : map_(map) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    Fill(indexes_.emplace_back(), *level);
    level->nameIndex = &indexes_.back();
  }
}

NameIndexScope::~NameIndexScope() {
  for (Map* level = &map_; level != nullptr; level = level->basis) level->nameIndex = nullptr;
}

}  // namespace orvane
