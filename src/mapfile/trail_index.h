#pragma once

#include "model/map.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace orvane {

/// Finds trails by name while one map is read, where walking the list for each `T` line would
/// take a time that grows with the square of the number of trails.
class TrailNames {
 public:
  explicit TrailNames(Map& map) : map_(map) {}

  /// \return what `FindTrail` would find
  Trail* Find(std::string_view name);
  /// To be told of each new trail with a name.
  void Add(Trail& trail);
  /// To be told when the list of trails was turned round.
  void NoteReversed();
  /// To be told when trails may have come otherwise: with a basis.
  void Forget() { filled_ = false; }

 private:
  void Fill();

  Map& map_;
  bool filled_ = false;
  bool doubled_ = false;  ///< two trails of one map have the same name, so their order counts
  std::unordered_map<std::string, Trail*> byName_;  ///< by folded name
};

/// Finds the time-named points of the trail that is being read, where walking its points for each
/// line would take a time that grows with the square of their number. The trail only grows at its
/// end while it is looked at.
class TrailTimes {
 public:
  /// To be told when another trail begins or the points of this one are dropped.
  void Forget();
  /// \return what `FindTimePoint(trail.points, name)` would find; `name` is a time name
  Point* Find(const Trail& trail, std::string_view name);
  /// To be told of a time name that `point` got as a synonym.
  void AddName(const Point& point, std::string_view name);

 private:
  size_t indexed_ = 0;                                ///< points of the trail that were taken up
  std::unordered_map<const Point*, size_t> firstAt_;  ///< where a point stands first on the trail
  std::unordered_map<std::string, size_t> byName_;    ///< first point of each folded time name
};

}  // namespace orvane
