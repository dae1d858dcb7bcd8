#pragma once

#include "pages/report_pages.h"
#include "reports/table_report.h"

#include <string>

namespace orvane {

/// A plain table on pages: the notes on the first page only, the headings on each.
class TablePages : public ReportPages {
 public:
  TablePages(ReportPageFrame frame, std::string title, TableReport table);
  std::string Title() const override { return title_; }
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return view_.contentWidth; }

  /// What the pages have for the report, in pixels. Known after `CutIntoPages`, as the next.
  PixelRect PlaceOfPages() const { return {0, 0, view_.viewWidth, view_.viewHeight}; }
  /// Where the last row of a page ends.
  int BottomOfPart(int page) const;

 private:
  int RowsWithRoom(int headerHeight) const;
  TableReportView PartOf(int page) const;

  std::string title_;
  TableReport table_;
  TableReportView view_;
  int firstPageRows_ = 1;
  int laterPageRows_ = 1;
};

}  // namespace orvane
