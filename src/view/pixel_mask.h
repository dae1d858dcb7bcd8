#pragma once

#include "view/canvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane {

/// The pixels that two rectangles have in common; right is left or less if there are none.
inline PixelRect CommonRect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

/// The smallest rectangle around two others.
inline PixelRect RectAround(const PixelRect& a, const PixelRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

/// True if `inner` is within `outer`, edges included.
inline bool Contains(const PixelRect& outer, const PixelRect& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

/// A set of pixels of a rectangle, a bit each. What is outside the rectangle is ignored.
class PixelMask {
 public:
  explicit PixelMask(const PixelRect& area);

  void Add(const PixelRect& rect);
  /// True if `rect` meets the area, and each pixel of it there is in the set.
  bool HasAll(const PixelRect& rect) const;
  /// True if any pixel of `rect` is in the set.
  bool HasAny(const PixelRect& rect) const;
  /// The smallest range of columns with every pixel of `rect` that is in the area but not in the
  /// set; empty if there is none.
  PixelColumns MissingColumns(const PixelRect& rect) const;

 private:
  /// Calls `visit` for each 64 columns that the rectangle touches: with the index of its word in the
  /// top row, the number of rows, whose words follow, and the bits that it touches. Ends when
  /// `visit` returns false. \return false then
  template <typename Visit>
  bool VisitColumns(const PixelRect& rect, Visit visit) const;
  /// Those of `bits` that are in the set in each of the rows that begin with a word.
  std::uint64_t BitsInAll(size_t top, size_t rows, std::uint64_t bits) const;

  PixelRect area_;
  size_t height_;                     ///< rows
  std::vector<std::uint64_t> words_;  ///< of 64 columns, row by row; then of the next 64
};

}  // namespace orvane
