#include "pages/estimate_pages.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

constexpr Color PaperColor = 0xFFFFFF;

}  // namespace

EstimatePages::EstimatePages(ReportPageFrame frame, TableReport table,
                             std::vector<EstimateCharts> charts)
    : TablePages(std::move(frame), "Range Estimates", std::move(table)),
      charts_(std::move(charts)) {}

int EstimatePages::CutIntoPages(Canvas& canvas) {
  tablePages_ = TablePages::CutIntoPages(canvas);
  const int gap = canvas.LineHeight(CanvasFont::Small);
  const PixelRect page = PlaceOfPages();
  const int height = std::min(EstimateChartsHeight(page.right, canvas), page.bottom);
  int at = tablePages_ - 1;
  int top = BottomOfPart(at) + gap;
  placed_.clear();
  for (size_t i = 0; i < charts_.size(); ++i) {
    if (top > 0 && top + height > page.bottom) {
      ++at;
      top = 0;
    }
    placed_.push_back({at, {0, top, page.right, top + height}});
    top += height + gap;
  }
  return at + 1;
}

void EstimatePages::DrawReport(int page, Canvas& canvas) {
  canvas.Clear(PaperColor);
  if (page < tablePages_) TablePages::DrawReport(page, canvas);
  for (size_t i = 0; i < charts_.size(); ++i) {
    const PixelRect& place = placed_[i].place;
    if (placed_[i].page != page) continue;
    DrawEstimateCharts(charts_[i], place, EstimateChartColumns(place.right, canvas), canvas);
  }
}

}  // namespace orvane
