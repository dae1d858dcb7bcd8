#pragma once

#include "formats/spreadsheets.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// \return "row 2, column AB"
/// \param row     from 1
/// \param column  from 0
std::string CellPlaceText(std::uint64_t row, std::uint64_t column);

/// Appends to the text of a cell, but not much more than a cell may have, so that `SheetRows` refuses it.
void AppendToCell(std::string& text, std::string_view more);

/// Passes on the rows of a sheet from the first, with those between that the file leaves out, up to the
/// last one with a text. It keeps only one row, so that a sheet with endless empty rows costs nothing,
/// and stops at what no spreadsheet program would write.
class SheetRows {
 public:
  explicit SheetRows(const RowTaker& take) : take_(take) {}

  /// Starts a row, without cells.
  /// \param number  from 1, above that of the row before with a text
  void StartRow(std::uint64_t number);
  /// \param column  from 0; of cells that are there already only the later counts
  void SetCell(std::uint64_t column, std::string_view text);
  /// Ends a row.
  /// \param times  how often it is there
  void EndRow(std::uint64_t times = 1);

  /// \return why no more rows are taken, as a part of a sentence; empty if they are
  const std::string& Fault() const { return fault_; }
  bool IsDone() const { return isDone_; }

 private:
  void RefuseCells(std::uint64_t column);
  void Give(const std::vector<std::string>& cells);

  const RowTaker& take_;
  std::vector<std::string> cells_;
  std::uint64_t given_ = 0;   ///< rows
  std::uint64_t bytes_ = 0;   ///< of texts, a separator for each cell
  std::uint64_t number_ = 0;  ///< of the row
  std::uint64_t set_ = 0;     ///< cells, with empty ones
  std::uint64_t width_ = 0;   ///< of all rows
  std::string fault_;
  bool isDone_ = false;
};

}  // namespace orvane
