#include "estimates/density_rings.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

namespace orvane {

namespace {

/// An edge of the lattice: the column and row of its south or west end, and whether it runs north.
using Edge = std::tuple<std::int64_t, std::int64_t, bool>;

/// A piece of an outline within one square of the lattice.
struct Piece {
  PlanePlace from;
  Edge start;
  Edge end;
};

/// A corner of a square of the lattice.
struct Corner {
  std::int64_t row;
  std::int64_t column;
  double above;  ///< its value less the level
};

using Square = std::array<Corner, 4>;  ///< counterclockwise from the south-west

Edge EdgeBetween(const Corner& a, const Corner& b) {
  return {std::min(a.row, b.row), std::min(a.column, b.column), a.row != b.row};
}

/// Collects the pieces of the outline, square by square.
class PieceCollector {
 public:
  explicit PieceCollector(double step) : step_(step) {}

  void AddSquare(const Square& square) {
    const auto isInside = [&](size_t i) { return square[i % 4].above >= 0; };
    for (size_t start = 0; start < 4; ++start) {
      if (!isInside(start) || isInside(start + 1)) continue;
      // The outline enters across this edge, which leaves the set as the edges are walked, and ends
      // at one that returns to it. Where both edges beside it do, the mean of the corners decides.
      size_t end = start + 1;
      while (isInside(end) || !isInside(end + 1)) ++end;
      const bool isSaddle = isInside(start + 2) && !isInside(start + 3);
      if (isSaddle && MeanAbove(square) < 0) end = start + 3;
      pieces_.push_back({Crossing(square[start], square[(start + 1) % 4]),
                         EdgeBetween(square[start], square[(start + 1) % 4]),
                         EdgeBetween(square[end % 4], square[(end + 1) % 4])});
    }
  }

  /// Joins the pieces to rings, in the order of their first pieces.
  std::vector<std::vector<PlanePlace>> Rings() const {
    std::map<Edge, size_t> starts;
    for (size_t i = 0; i < pieces_.size(); ++i) starts[pieces_[i].start] = i;
    std::vector<std::vector<PlanePlace>> rings;
    for (const Piece& first : pieces_) {
      std::vector<PlanePlace> ring;
      for (auto at = starts.find(first.start); at != starts.end();) {
        const Piece& piece = pieces_[at->second];
        ring.push_back(piece.from);
        starts.erase(at);
        at = starts.find(piece.end);
      }
      if (!ring.empty()) rings.push_back(std::move(ring));
    }
    return rings;
  }

 private:
  static double MeanAbove(const Square& square) {
    return (square[0].above + square[1].above + square[2].above + square[3].above) / 4;
  }

  /// Where the density has the level, between a corner inside and one outside.
  PlanePlace Crossing(const Corner& inside, const Corner& outside) const {
    const double part = inside.above / (inside.above - outside.above);
    const auto between = [&](std::int64_t from, std::int64_t to) {
      return (static_cast<double>(from) + part * static_cast<double>(to - from)) * step_;
    };
    return {between(inside.row, outside.row), between(inside.column, outside.column)};
  }

  double step_;
  std::vector<Piece> pieces_;
};

}  // namespace

std::vector<std::vector<PlanePlace>> RingsAtLevel(const KernelDensity& density, double level) {
  constexpr size_t Side = DensityTiles::Side;
  constexpr size_t Width = Side + 1;
  const double share = level * density.Step() * density.Step();
  PieceCollector pieces(density.Step());
  std::vector<double> values;
  for (const auto& tile : density.Shares().Tiles()) {
    const std::int64_t row = tile.row * DensityTiles::Side;
    const std::int64_t column = tile.column * DensityTiles::Side;
    density.Shares().Copy(row, column, Width, Width, values);
    const auto corner = [&](size_t i, size_t j) {
      return Corner{row + static_cast<std::int64_t>(i), column + static_cast<std::int64_t>(j),
                    values[i * Width + j] - share};
    };
    for (size_t i = 0; i < Side; ++i) {
      for (size_t j = 0; j < Side; ++j) {
        pieces.AddSquare({corner(i, j), corner(i, j + 1), corner(i + 1, j + 1), corner(i + 1, j)});
      }
    }
  }
  return pieces.Rings();
}

double SignedArea(std::span<const PlanePlace> ring) {
  if (ring.empty()) return 0;
  double twiceArea = 0;
  const PlanePlace& origin = ring.front();
  for (size_t i = 1; i + 1 < ring.size(); ++i) {
    const PlanePlace& a = ring[i];
    const PlanePlace& b = ring[i + 1];
    twiceArea += (a.east - origin.east) * (b.north - origin.north) -
                 (a.north - origin.north) * (b.east - origin.east);
  }
  return twiceArea / 2;
}

}  // namespace orvane
