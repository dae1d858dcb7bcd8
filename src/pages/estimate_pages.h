#pragma once

#include "pages/table_pages.h"
#include "reports/estimates_report.h"

#include <vector>

namespace orvane {

/// The Range Estimates on pages: the table, and after it the charts of each range. The charts of a
/// range that do not fit on the rest of a page begin on the next one.
class EstimatePages final : public TablePages {
 public:
  /// \param charts  of the ranges of the table, in their order
  EstimatePages(ReportPageFrame frame, TableReport table, std::vector<EstimateCharts> charts);

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;

 private:
  /// Where the charts of a range are.
  struct Placed {
    int page = 0;
    PixelRect place;
  };

  std::vector<EstimateCharts> charts_;
  std::vector<Placed> placed_;  ///< of each of `charts_`
  int tablePages_ = 1;
};

}  // namespace orvane
