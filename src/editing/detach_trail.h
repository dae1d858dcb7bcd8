#pragma once

#include "editing/trail_rows.h"
#include "model/map.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane {

/// Empties a trail so that it can be rebuilt from rows: removes the readings of its points, and
/// removes the points that neither a row nor anything else names.
class TrailDetacher {
 public:
  TrailDetacher(Map& map, Trail& trail, const std::vector<TrailRow>& rows);

  void Detach();

  /// Gives a new point the mark of the removed point that had its name.
  void RestoreMark(Point& point) const;

 private:
  struct Mark {
    std::uint8_t shape;
    bool filled;
    int size;
  };
  struct Found {
    bool exact = false;  ///< a row's name is the point's name
    bool named = false;  ///< a part of a row's name is one of its names
  };

  Found FindInRows(const Point& point) const;
  void FindHolders();
  void DetachPoint(Point& point);
  void KeepMark(const Point& point);
  void TakeOut(Point& point);
  void RemoveGone();

  Map& map_;
  Trail& trail_;
  std::vector<std::string> rowNames_;  ///< folded, sorted
  std::vector<std::string> rowParts_;  ///< folded, sorted; of names with "=" each part
  /// Points of the trail that other trails hold too: the first one in this map, or null where only
  /// trails of maps above do.
  std::unordered_map<const Point*, Trail*> holders_;
  std::vector<Point*> going_;
  std::map<std::string, Mark> marks_;  ///< by folded name
};

}  // namespace orvane
