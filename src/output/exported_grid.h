#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <cstdint>
#include <string>

namespace orvane {

/// The cells and lines of a grid for an export. The corner is the place (0, 0). Rows count to the
/// south and columns to the east of it, turned by the angle of the grid:
///
///     corner o----+----+ (0, 2)
///            | A1 | A2 |
///            +----+----+
///            | B1 | B2 |
///     (2, 0) +----+----+ (2, 2)
///
/// A grid that extends to the other side of its corner has no rows or columns here, no cells and no
/// lines.
class ExportedGrid {
 public:
  /// \param grid  has a corner, and outlives this
  explicit ExportedGrid(const Grid& grid);

  const Grid& GetGrid() const { return grid_; }
  std::int64_t Rows() const { return rows_; }
  std::int64_t Columns() const { return columns_; }
  std::uint64_t Cells() const { return static_cast<std::uint64_t>(rows_ * columns_); }
  std::uint64_t Lines() const {
    return isNegative_ ? 0 : static_cast<std::uint64_t>(rows_ + columns_);
  }

  /// The place where two lines of the grid meet, without altitude.
  LatLon Place(std::int64_t row, std::int64_t column) const;
  /// The parts of the name of a cell; empty for a style without names.
  std::string RowLabel(std::int64_t row) const;
  std::string ColumnLabel(std::int64_t column) const;

 private:
  const Grid& grid_;
  bool isNegative_;  ///< has rows or columns below 0
  std::int64_t rows_;
  std::int64_t columns_;
  double cosine_;
  double sine_;
};

}  // namespace orvane
