#pragma once

#include "model/map.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace orvane {

/// Finds trails by name while one map is read. Walking the list for each `T` line would take a time
/// quadratic in the number of trails.
class TrailNames {
 public:
  explicit TrailNames(Map& map) : map_(map) {}

  /// \return the result of `FindTrail`
  Trail* Find(std::string_view name);
  /// Must be called for each new trail with a name.
  void Add(Trail& trail);
  /// Must be called when the list of trails was reversed.
  void NoteReversed();
  /// Must be called when trails can have come in another way: with a basis.
  void Forget() { filled_ = false; }

 private:
  void Fill();

  Map& map_;
  bool filled_ = false;
  bool doubled_ = false;  ///< two trails of one map have the same name, so their order matters
  std::unordered_map<std::string, Trail*> byName_;  ///< by folded name
};

/// Finds the time-named points of the trail that is being read. Walking its points for each line
/// would take a time quadratic in their number. Meanwhile the trail only grows at its end.
class TrailTimes {
 public:
  /// Must be called when another trail begins or the points of this one are dropped.
  void Forget();
  /// \return the result of `FindTimePoint(trail.points, name)`; `name` is a time name
  Point* Find(const Trail& trail, std::string_view name);
  /// Must be called for a time name that `point` got as a synonym.
  void AddName(const Point& point, std::string_view name);

 private:
  size_t indexed_ = 0;                                ///< points of the trail that are in the index
  std::unordered_map<const Point*, size_t> firstAt_;  ///< first place of a point on the trail
  std::unordered_map<std::string, size_t> byName_;    ///< first point of each folded time name
};

}  // namespace orvane
