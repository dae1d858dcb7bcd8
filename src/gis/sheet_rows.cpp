#include "gis/sheet_rows.h"

namespace orvane {

void SheetRows::SetCell(std::uint64_t column, std::string_view text) {
  if (text.empty()) return;
  if (column >= MostSheetColumns) {
    fault_ = "a row has more than " + std::to_string(MostSheetColumns) + " columns";
    return;
  }
  if (cells_.size() <= column) cells_.resize(static_cast<size_t>(column) + 1);
  cells_[static_cast<size_t>(column)] = text;
}

void SheetRows::EndRow(std::uint64_t number, std::uint64_t times) {
  if (cells_.empty() || times == 0 || !fault_.empty() || isDone_) return;
  if (number <= given_) {
    fault_ = "its rows are not in order";
  } else if (number > MostSheetRows || times > MostSheetRows - number + 1) {
    fault_ = "it has more than " + std::to_string(MostSheetRows) + " rows";
  } else {
    std::uint64_t size = 0;
    for (const std::string& cell : cells_) size += cell.size() + 1;
    if (size > (LargestSpreadsheet - bytes_) / times) {
      fault_ = TooLarge();
      return;
    }
    bytes_ += size * times;
    while (given_ + 1 < number) Give({});
    for (; times > 0 && fault_.empty() && !isDone_; --times) Give(cells_);
  }
  cells_.clear();
}

void SheetRows::Give(const std::vector<std::string>& cells) {
  ++given_;
  isDone_ = !take_(cells);
}

}  // namespace orvane
