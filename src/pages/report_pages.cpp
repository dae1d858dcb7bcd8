#include "pages/report_pages.h"

#include "reports/profile_drawing.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

constexpr int TableSize = 9;    // points
constexpr int ProfileSize = 7;  // points

/// Pixels that the foot line takes from the page itself: none if the bottom margin has room for it.
int FootRoom(const PageDevice& device, const Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  return device.marginBelow >= 2 * line ? 0 : line + line / 2;
}

/// Draws the line in the bottom margin, or at the end of a page whose margin is too narrow.
void DrawFootLine(const ReportPageFrame& frame, int page, int count, Canvas& canvas) {
  const PageDevice& device = frame.device;
  const bool inMargin = FootRoom(device, canvas) == 0;
  const int bottom = device.height + (inMargin ? device.marginBelow : 0);
  const int baseline = inMargin ? device.height + device.marginBelow / 2
                                : device.height - canvas.LineHeight(CanvasFont::Small) +
                                      canvas.Ascent(CanvasFont::Small);
  canvas.SetFont(CanvasFont::Small);
  canvas.SetForeColor(ForegroundColor);
  const std::string number = "page " + std::to_string(page + 1) + " of " + std::to_string(count);
  const int dateLeft = (device.width - canvas.TextWidth(frame.date)) / 2;
  // A long name is cut before the date.
  canvas.SetClip({0, 0, dateLeft - canvas.TextWidth("  "), bottom});
  canvas.DrawText({0, baseline}, frame.mapName);
  canvas.SetClip({0, 0, device.width, bottom});
  canvas.DrawText({dateLeft, baseline}, frame.date);
  canvas.DrawText({device.width - canvas.TextWidth(number), baseline}, number);
}

}  // namespace

void ReportPages::SetUp(ReportView& view, const Canvas& canvas) const {
  view.viewWidth = frame_.device.width;
  view.viewHeight = frame_.device.height - FootRoom(frame_.device, canvas);
  view.scrollX = 0;
  view.scrollY = 0;
  TakeReportFont(view, canvas);
}

void ReportPages::DrawPage(int page, Canvas& canvas) {
  canvas.SetClip({0, 0, frame_.device.width, frame_.device.height});
  DrawReport(page, canvas);
  DrawFootLine(frame_, page, Count(), canvas);
}

TrailSummaryPages::TrailSummaryPages(ReportPageFrame frame, std::vector<Trail*> trails,
                                     double magneticDeviation)
    : ReportPages(std::move(frame)) {
  view_.trails = std::move(trails);
  view_.magneticDeviation = magneticDeviation;
}

PageFonts TrailSummaryPages::Fonts() const { return {.text = TableSize}; }

int TrailSummaryPages::CutIntoPages(Canvas& canvas) {
  SetUp(view_, canvas);
  LayoutTrailSummary(view_);
  const int room =
      std::max(1, (view_.viewHeight - view_.headerHeight) / view_.lineHeight) * view_.lineHeight;
  pages_.clear();
  const int lines = TrailSummaryLines(view_);
  for (int first = 0; first < lines;) {
    const int top = TrailSummaryLineTop(view_, first);
    int end = first + 1;
    while (end < lines && TrailSummaryLineTop(view_, end) + view_.lineHeight - top <= room) ++end;
    pages_.push_back({first, end});
    first = end;
  }
  return static_cast<int>(pages_.size());
}

void TrailSummaryPages::DrawReport(int page, Canvas& canvas) {
  const ReportLines lines = pages_[static_cast<size_t>(page)];
  view_.scrollY = TrailSummaryLineTop(view_, lines.first);
  DrawTrailSummary(view_, canvas, lines);
}

PointIndexPages::PointIndexPages(ReportPageFrame frame, PointIndex index, CoordinateDisplay display)
    : ReportPages(std::move(frame)), index_(std::move(index)) {
  view_.index = &index_;
  view_.display = display;
}

PageFonts PointIndexPages::Fonts() const { return {.text = TableSize}; }

int PointIndexPages::CutIntoPages(Canvas& canvas) {
  SetUp(view_, canvas);
  MeasurePointIndex(view_, canvas);
  view_.viewWidth -= view_.columnGap / 2;  // the margin on the left; a page does not scroll
  PlacePointIndex(view_);
  linesOfPage_ = std::max(1, (view_.viewHeight - view_.headerHeight) / view_.lineHeight);
  return std::max(1, (PointIndexLines(view_) + linesOfPage_ - 1) / linesOfPage_);
}

void PointIndexPages::DrawReport(int page, Canvas& canvas) {
  const int height = linesOfPage_ * view_.lineHeight;
  view_.scrollY = page * height;
  const PixelRect clip = canvas.Clip();
  // A line that fits only in part is on the next page.
  canvas.SetClip(
      {clip.left, clip.top, clip.right, std::min(clip.bottom, view_.headerHeight + height)});
  DrawPointIndex(view_, canvas);
  canvas.SetClip(clip);
}

RangeStatsPages::RangeStatsPages(ReportPageFrame frame, std::vector<const RangePanelRow*> rows,
                                 MeasureNames names, TravelChartMode chartMeasure)
    : ReportPages(std::move(frame)) {
  view_.rows = std::move(rows);
  view_.names = std::move(names);
  view_.printing = true;
  ChooseChartMeasure(view_, chartMeasure);
}

PageFonts RangeStatsPages::Fonts() const { return {.text = TableSize, .monospaced = true}; }

void RangeStatsPages::PlaceBlock(size_t begin, size_t end, Placed& next) {
  const std::vector<RangeStatsPart>& parts = view_.parts;
  const int blockEnd = end < parts.size() ? parts[end].top : view_.contentHeight;
  const int height = blockEnd - parts[begin].top;
  const int room = view_.viewHeight;
  if (next.top > 0 && next.top + height > room && height <= room)
    next = {nullptr, next.page + 1, 0};
  for (size_t i = begin; i < end; ++i) {
    // A title stays with what follows it.
    const int kept = parts[i].height + (i == begin && i + 1 < end ? parts[i + 1].height : 0);
    if (next.top > 0 && next.top + kept > room) next = {nullptr, next.page + 1, 0};
    placed_.push_back({&parts[i], next.page, next.top});
    next.top += parts[i].height;
  }
  const RangeStatsPart& last = parts[end - 1];
  next.top += blockEnd - (last.top + last.height);
}

int RangeStatsPages::CutIntoPages(Canvas& canvas) {
  SetUp(view_, canvas);
  canvas.SetFont(CanvasFont::Small);
  view_.letterWidth = canvas.TextWidth("0");
  RangeStatsCounts unused;
  LayoutRangeStats(view_, unused);
  placed_.clear();
  Placed next;
  for (size_t begin = 0; begin < view_.parts.size();) {
    size_t end = begin + 1;
    while (end < view_.parts.size() && view_.parts[end].kind != RangeStatsPart::Kind::Title) ++end;
    PlaceBlock(begin, end, next);
    begin = end;
  }
  return placed_.empty() ? 1 : placed_.back().page + 1;
}

void RangeStatsPages::DrawReport(int page, Canvas& canvas) {
  canvas.Clear(view_.background);
  canvas.SetForeColor(ForegroundColor);
  canvas.SetFont(CanvasFont::Small);
  const auto [first, end] =
      std::equal_range(placed_.begin(), placed_.end(), Placed{nullptr, page, 0},
                       [](const Placed& a, const Placed& b) { return a.page < b.page; });
  for (auto placed = first; placed != end; ++placed) {
    DrawRangeStatsPart(view_, *placed->part, canvas, placed->top);
  }
}

ProfilePages::ProfilePages(ReportPageFrame frame, ElevationView view, CoordinateDisplay display)
    : ReportPages(std::move(frame)), view_(std::move(view)), display_(display) {}

std::string ProfilePages::Title() const {
  return view_.trail != nullptr && view_.trail->name ? *view_.trail->name : "Transect";
}

PageFonts ProfilePages::Fonts() const { return {.text = ProfileSize}; }

void ProfilePages::DrawReport(int /*page*/, Canvas& canvas) {
  canvas.Clear(0xFFFFFF);
  PixelRect area = canvas.Clip();
  area.bottom -= FootRoom(Device(), canvas);
  PrintElevation(view_, display_, area, canvas);
}

}  // namespace orvane
