#pragma once

#include "editing/trail_rows.h"
#include "model/map.h"

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orvane {

/// Empties trails of one map, to rebuild one from rows or to delete them: removes the readings of
/// their points, and removes the points that neither a row nor anything else names.
class TrailDetacher {
 public:
  /// \param rows  give the points back; empty for trails that are deleted
  TrailDetacher(Map& map, std::vector<Trail*> trails, const std::vector<TrailRow>& rows);

  /// \return how many points left the map
  size_t Detach();

  /// Keeps the marks of the points of a trail that was deleted and is made again now.
  void KeepMarks(const std::vector<Point*>& points);

  /// Gives a new point the mark of the removed point that had its name.
  /// \return false if there was none
  bool RestoreMark(Point& point) const;

 private:
  struct Found {
    bool exact = false;  ///< a row's name is the point's name
    bool named = false;  ///< a part of a row's name is one of its names
  };

  Found FindInRows(const Point& point) const;
  void FindHolders();
  bool IsEmptied(const Trail* trail) const { return trails_.contains(trail); }
  void DetachPoint(Point& point);
  void KeepMark(const Point& point);
  void TakeOut(Point& point);
  size_t RemoveGone();

  Map& map_;
  std::vector<Trail*> order_;
  std::unordered_set<const Trail*> trails_;  ///< the same
  std::vector<std::string> rowNames_;        ///< folded, sorted
  std::vector<std::string> rowParts_;        ///< folded, sorted; of names with "=" each part
  /// Points of the trails that other trails hold too: the first one in this map, or null where only
  /// trails of maps above do.
  std::unordered_map<const Point*, Trail*> holders_;
  std::vector<Point*> going_;
  std::map<std::string, OwnMark> marks_;  ///< by folded name
};

/// \return those of the points that trails of their map, or of maps above, hold
std::vector<Point*> PointsHeld(Map& map, const std::vector<Point*>& points);

}  // namespace orvane
