#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// Protects the points of a basis chain while the text of a map above is read back into memory. A
/// save writes the points of the basis on its trails with everything that they have, so reading the
/// text gives each of them its readings, its note and its place a second time.
class BasisPoints {
 public:
  /// \param basis  the nearest map of the chain; may be null
  explicit BasisPoints(const Map* basis);

  /// Removes what the points now have twice. What is new stays: the map above gave it to them.
  void TakeBackRepeats();
  /// Restores the points, except for their further names. For a basis that has changed: what the
  /// map above gave them can't be distinguished from what they had before the change.
  void TakeBackAll();

 private:
  struct Kept {
    Point* point;
    Point before;
  };
  std::vector<Kept> kept_;
};

/// Removes one tab from the front of the note of each point that `map` made: a save adds one, and
/// the reader keeps it.
void TakeTabsFromNotes(Map& map);

}  // namespace orvane
