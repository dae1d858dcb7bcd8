#pragma once

#include "elevation/contours_work.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

/// The places where levels cross the lines of a grid, and the search that chains them.
///
/// Each grid line has a list. Along a row the crossings of the eastern cells come first, along a
/// column those of the northern cells; within a cell they are in rising order. A search walks
/// from the head of a list and stops at the first crossing that is 3 steps or more beyond where it
/// looks from, so whatever is left further on hides what is near. That cuts lines to pieces, and
/// the pieces stay as they are (see "The search for the next crossing is short" in
/// docs/compatibility.md).

/// The lists of all rows, or of all columns, of a grid. Crossings are only ever taken out.
class CrossingLists {
 public:
  /// A crossing's place along its grid line.
  struct Crossing {
    double coordinate = 0;  ///< degrees of longitude on a row, of latitude on a column
    float level = 0;        ///< metres
    bool taken = false;
  };
  /// Names a crossing while the lists exist.
  using Index = std::uint32_t;

  /// \param lists  number of lists
  /// \param cells  number of cells along each
  /// \param origin, step  a cell's crossings are from `origin` + cell * `step` to a step beyond
  CrossingLists(int lists, int cells, double origin, double step);

  /// Adds the crossings of a cell's edge, at most once for each cell. Crossings are where the
  /// level is between the altitudes of the ends, measured from the lower one.
  /// \param start  the edge's west or south end in degrees; the fraction is always measured from
  ///               there, also where the ground falls and the crossing comes out mirrored within
  ///               its cell; see "Classic contours mirror crossings" in docs/compatibility.md.
  /// \return false if the edge has more than `MostLevelsOfEdge` or all have more than
  ///         `MostCrossings`
  bool Add(int list, int cell, double start, double fromAltitude, double toAltitude,
           double interval);

  /// Takes the head off a list. \return nothing if the list is empty
  std::optional<Index> TakeHead(int list);

  /// The nearest crossing of a level less than 3 steps from `reference`, among those before the
  /// first one at `reference` + 3 steps or beyond; the first of the list of two equally near ones.
  /// It is the answer of a walk from the head of the list, found by looking only at near cells.
  std::optional<Index> FindNextCrossing(int list, double reference, float level);
  void Take(Index index) { crossings_[index].taken = true; }

  const Crossing& At(Index index) const { return crossings_[index]; }
  size_t Size() const { return crossings_.size(); }

 private:
  /// What is left of a cell's crossings: indexes from `begin` to before `end`.
  struct Edge {
    Index begin = 0;
    Index end = 0;
  };
  Edge& EdgeAt(int list, int cell) {
    return edges_[static_cast<size_t>(list) * static_cast<size_t>(cells_) +
                  static_cast<size_t>(cell)];
  }
  /// Drops what was taken from both ends of an edge. \return true if anything is left
  bool Trim(Edge& edge) const;
  /// The last cell of a list that has crossings left, which holds the list's head; -1 for none.
  int HeadCell(int list);
  /// What an edge has of a level, taken or not: one crossing, unless levels are so large that
  /// neighbours are the same number.
  std::span<const Crossing> OfLevel(const Edge& edge, float level) const;

  int cells_;
  double origin_;
  double step_;
  bool isFine_;  ///< a step is so small that rounding can move a crossing out of its cell
  std::vector<Crossing> crossings_;
  std::vector<Edge> edges_;
  std::vector<int> headCells_;
};

}  // namespace orvane
