#include "gis/sheet_rows.h"

namespace orvane {

std::string CellPlaceText(std::uint64_t row, std::uint64_t column) {
  constexpr std::uint64_t Letters = 26;
  std::string name;
  for (++column; column > 0; column = (column - 1) / Letters) {
    name.insert(name.begin(), static_cast<char>('A' + (column - 1) % Letters));
  }
  return "row " + std::to_string(row) + ", column " + name;
}

void AppendToCell(std::string& text, std::string_view more) {
  if (text.size() <= LongestCell) text += more.substr(0, LongestCell + 1 - text.size());
}

void SheetRows::StartRow(std::uint64_t number) {
  number_ = number;
  cells_.clear();
}

void SheetRows::SetCell(std::uint64_t column, std::string_view text) {
  if (!fault_.empty()) return;
  if (++set_ > MostSheetCells) return RefuseCells(column);
  if (text.empty()) return;
  if (column >= MostSheetColumns) {
    fault_ = "a row has more than " + std::to_string(MostSheetColumns) + " columns";
    return;
  }
  if (text.size() > LongestCell) {
    fault_ = "the cell in " + CellPlaceText(number_, column) + " has more than " +
             std::to_string(LongestCell >> 10U) + " KiB of text";
    return;
  }
  if (cells_.size() <= column) cells_.resize(static_cast<size_t>(column) + 1);
  cells_[static_cast<size_t>(column)] = text;
}

void SheetRows::EndRow(std::uint64_t times) {
  if (cells_.empty() || times == 0 || !fault_.empty() || isDone_) return;
  if (number_ <= given_) {
    fault_ = "its rows are not in order";
  } else if (number_ > MostSheetRows || times > MostSheetRows - number_ + 1) {
    fault_ = "it has more than " + std::to_string(MostSheetRows) + " rows";
  } else {
    std::uint64_t size = 0;
    for (const std::string& cell : cells_) size += cell.size() + 1;
    if (size > (LargestSpreadsheet - bytes_) / times) {
      fault_ = TooLarge();
      return;
    }
    if (cells_.size() > (MostSheetCells - width_) / times) return RefuseCells(cells_.size() - 1);
    bytes_ += size * times;
    width_ += cells_.size() * times;
    while (given_ + 1 < number_) Give({});
    for (; times > 0 && fault_.empty() && !isDone_; --times) Give(cells_);
  }
  cells_.clear();
}

void SheetRows::RefuseCells(std::uint64_t column) {
  fault_ = "it has more than " + std::to_string(MostSheetCells) + " cells, counted up to " +
           CellPlaceText(number_, column);
}

void SheetRows::Give(const std::vector<std::string>& cells) {
  ++given_;
  isDone_ = !take_(cells);
}

}  // namespace orvane
