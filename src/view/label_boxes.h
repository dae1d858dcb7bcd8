#pragma once

#include "view/canvas.h"

#include <cstdint>
#include <vector>

namespace orvane {

/// True if two boxes have more than an edge in common. A box of no width still hits one that it
/// is inside.
inline bool BoxesOverlap(const PixelRect& a, const PixelRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// The boxes of the labels that were placed in one pass. Answers as if each kept box were
/// looked at; finding is by buckets of pixels, so a view full of labels costs no more for each.
class LabelBoxes {
 public:
  void Add(const PixelRect& box);
  bool IsEmpty() const { return entries_.empty(); }
  /// True if `box` overlaps a kept one.
  bool Hits(const PixelRect& box) const;

 private:
  struct Entry {
    PixelRect box;
    std::int32_t next;  ///< index of the next entry of the same bucket, -1 for none
  };
  struct BucketRange {
    int firstBand, lastBand, firstColumn, lastColumn;
  };
  static BucketRange BucketsOf(const PixelRect& box);

  std::vector<std::vector<std::int32_t>> bands_;  ///< by band, then column: newest entry or -1
  std::vector<Entry> entries_;
};

}  // namespace orvane
