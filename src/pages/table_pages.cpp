#include "pages/table_pages.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

constexpr int TableSize = 9;  // points

}  // namespace

TablePages::TablePages(ReportPageFrame frame, std::string title, TableReport table)
    : ReportPages(std::move(frame)), title_(std::move(title)), table_(std::move(table)) {}

PageFonts TablePages::Fonts() const { return {.text = TableSize}; }

int TablePages::RowsWithRoom(int headerHeight) const {
  return std::max(1, (view_.viewHeight - headerHeight) / std::max(1, view_.lineHeight));
}

int TablePages::CutIntoPages(Canvas& canvas) {
  SetUp(view_, canvas);
  view_.table = table_;
  view_.table.notes.clear();
  LayOutTable(view_, canvas);
  laterPageRows_ = RowsWithRoom(view_.headerHeight);
  view_.table = table_;
  LayOutTable(view_, canvas);
  firstPageRows_ = RowsWithRoom(view_.headerHeight);
  const int more = static_cast<int>(table_.rows.size()) - firstPageRows_;
  return 1 + (more <= 0 ? 0 : (more + laterPageRows_ - 1) / laterPageRows_);
}

TableReportView TablePages::PartOf(int page) const {
  const auto rows = static_cast<int>(table_.rows.size());
  const int begin = page == 0 ? 0 : std::min(rows, firstPageRows_ + (page - 1) * laterPageRows_);
  const int end = std::min(rows, begin + (page == 0 ? firstPageRows_ : laterPageRows_));
  // The columns are as wide as those of the whole table.
  TableReportView part = view_;
  part.table.rows.assign(table_.rows.begin() + begin, table_.rows.begin() + end);
  if (page > 0) {
    part.headerHeight -= static_cast<int>(part.noteLines.size()) * part.lineHeight;
    if (!part.noteLines.empty()) part.headerHeight -= part.lineHeight / 2;
    part.noteLines.clear();
  }
  return part;
}

int TablePages::BottomOfPart(int page) const {
  const TableReportView part = PartOf(page);
  return part.headerHeight + static_cast<int>(part.table.rows.size()) * part.lineHeight;
}

void TablePages::DrawReport(int page, Canvas& canvas) { DrawTable(PartOf(page), canvas); }

}  // namespace orvane
