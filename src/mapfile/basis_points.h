#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// Keeps the points of a basis chain as they are while the text of a map above is read back into
/// memory. A save writes the points of a basis that its trails visit with all that they hold, so
/// reading the text gives each of them its readings, its note and its place a second time.
class BasisPoints {
 public:
  /// \param basis  the nearest map of the chain; may be null
  explicit BasisPoints(const Map* basis);

  /// Takes back what the points have now for a second time. What they had not before stays: the
  /// map above gave it to them.
  void TakeBackRepeats();
  /// Makes the points as they were, but for their further names. For a basis that has changed: what
  /// the map above gave them can't be told from what they had before the change.
  void TakeBackAll();

 private:
  struct Kept {
    Point* point;
    Point before;
  };
  std::vector<Kept> kept_;
};

/// Takes one tab from the beginning of the note of each point that `map` made: a save puts one
/// there, and the reader leaves it.
void TakeTabsFromNotes(Map& map);

}  // namespace orvane
