#include "view/pixel_square.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// Narrows the part of a segment, from `enter` to `leave` (0 at its start, 1 at its end), to what
/// is between the two edges of one coordinate. \return false if nothing is left
bool Narrow(double start, double delta, double& enter, double& leave) {
  if (delta == 0) return std::abs(start) <= LargestPixel;
  const double a = (-LargestPixel - start) / delta;
  const double b = (LargestPixel - start) / delta;
  enter = std::max(enter, std::min(a, b));
  leave = std::min(leave, std::max(a, b));
  return enter <= leave;
}

ExactPixel Between(const ExactPixel& a, const ExactPixel& b, double part) {
  return {a.row + part * (b.row - a.row), a.column + part * (b.column - a.column)};
}

/// Cuts a ring along one edge of the square: keeps what has `sign` times the coordinate up to
/// `LargestPixel`.
std::vector<ExactPixel> CutAlong(const std::vector<ExactPixel>& ring, double ExactPixel::*along,
                                 double sign) {
  std::vector<ExactPixel> kept;
  for (size_t i = 0; i < ring.size(); ++i) {
    const ExactPixel& a = ring[i];
    const ExactPixel& b = ring[(i + 1) % ring.size()];
    const bool insideA = sign * (a.*along) <= LargestPixel;
    const bool insideB = sign * (b.*along) <= LargestPixel;
    if (insideA) kept.push_back(a);
    if (insideA == insideB) continue;
    ExactPixel crossing = Between(a, b, (sign * LargestPixel - a.*along) / (b.*along - a.*along));
    crossing.*along = sign * LargestPixel;
    kept.push_back(crossing);
  }
  return kept;
}

}  // namespace

bool InSquare(const ExactPixel& pixel) {
  return std::abs(pixel.row) <= LargestPixel && std::abs(pixel.column) <= LargestPixel;
}

std::optional<ExactSegment> CutSegment(const ExactSegment& segment) {
  const auto& [from, to] = segment;
  double enter = 0;
  double leave = 1;
  if (!Narrow(from.row, to.row - from.row, enter, leave) ||
      !Narrow(from.column, to.column - from.column, enter, leave)) {
    return std::nullopt;
  }
  return ExactSegment{enter > 0 ? Between(from, to, enter) : from,
                      leave < 1 ? Between(from, to, leave) : to};
}

std::vector<Pixel> CutRing(const std::vector<ExactPixel>& ring) {
  std::vector<ExactPixel> cut = ring;
  if (!std::all_of(ring.begin(), ring.end(), InSquare)) {
    for (const double sign : {-1.0, 1.0}) {
      cut = CutAlong(cut, &ExactPixel::row, sign);
      cut = CutAlong(cut, &ExactPixel::column, sign);
    }
  }
  std::vector<Pixel> pixels(cut.size());
  std::transform(cut.begin(), cut.end(), pixels.begin(), RoundedPixel);
  return pixels;
}

}  // namespace orvane
