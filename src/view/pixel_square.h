#pragma once

#include "view/view_transform.h"

#include <cmath>
#include <optional>
#include <vector>

namespace orvane {

/// Lines and areas that reach beyond the square of pixels that drawing takes, +-`LargestPixel` in
/// rows and columns. They are cut at its edges, so what is inside stays exactly where it is.

/// A straight piece of a line.
struct ExactSegment {
  ExactPixel from;
  ExactPixel to;
};

/// True for a pixel inside the square or on its edge.
bool InSquare(const ExactPixel& pixel);

/// The part of a segment within the square. An end inside is kept as it is.
/// \return nothing if no part of it is inside
std::optional<ExactSegment> CutSegment(const ExactSegment& segment);

/// The part of an area within the square, with whole pixels as corners.
/// \param ring  its corners in order, open or closed
/// \return the corners of the cut area, open; empty if no part of it is inside. Where the area
///         falls into several parts, edges along the square join them.
std::vector<Pixel> CutRing(const std::vector<ExactPixel>& ring);

/// Rounds both coordinates by floor(v + 0.5), also beyond the square.
inline ExactPixel WholePixel(const ExactPixel& pixel) {
  return {std::floor(pixel.row + 0.5), std::floor(pixel.column + 0.5)};
}

/// Rounds both coordinates by floor(v + 0.5), within the square.
inline Pixel RoundedPixel(const ExactPixel& pixel) {
  return {RoundToPixel(pixel.column), RoundToPixel(pixel.row)};
}

}  // namespace orvane
