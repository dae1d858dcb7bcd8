#pragma once

#include "model/map.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane {

/// Indexes of one map that replace walks over all its trails or names.
struct NameIndex {
  std::unordered_map<std::string, Trail*> trails;  ///< the first trail of each folded name
  /// The points, in the order of the buckets, that `FindPointLoosely` can find under a name that no
  /// point has: those with a hidden name, or with a time name among their names.
  std::vector<Point*> loose;
};

/// While it exists, names are looked up in a map and its basis chain through indexes: the results
/// are the same, but a survey with a hundred thousand texts to look up takes only a moment. Names,
/// trails and the basis must not change meanwhile. Scopes on one map do not nest.
class NameIndexScope {
 public:
  explicit NameIndexScope(Map& map);
  ~NameIndexScope();
  NameIndexScope(const NameIndexScope&) = delete;
  NameIndexScope& operator=(const NameIndexScope&) = delete;

 private:
  Map& map_;
  std::deque<NameIndex> indexes_;
};

}  // namespace orvane
