#pragma once

#include "pages/report_pages.h"
#include "reports/table_report.h"

#include <string>

namespace orvane {

/// A plain table on pages: the notes on the first page only, the headings on each.
class TablePages final : public ReportPages {
 public:
  TablePages(ReportPageFrame frame, std::string title, TableReport table);
  std::string Title() const override { return title_; }
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return view_.contentWidth; }

 private:
  int RowsWithRoom(int headerHeight) const;

  std::string title_;
  TableReport table_;
  TableReportView view_;
  int firstPageRows_ = 1;
  int laterPageRows_ = 1;
};

}  // namespace orvane
