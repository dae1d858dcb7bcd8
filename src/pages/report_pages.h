#pragma once

#include "elevation/profile.h"
#include "geo/angle_text.h"
#include "pages/page_device.h"
#include "pages/printed_pages.h"
#include "reports/point_index_view.h"
#include "reports/range_stats_view.h"
#include "reports/trail_summary_view.h"

#include <string>
#include <vector>

namespace orvane {

/// The printed reports. Each page repeats the headings, and no line is cut or printed twice. A line
/// in the bottom margin names the map, the date and the page.

/// What all pages of a report share.
struct ReportPageFrame {
  PageDevice device;
  std::string mapName;  ///< for the foot line
  std::string date;     ///< of printing, for the foot line
};

/// A report that `Measure` cuts into pages.
class ReportPages : public PrintedPages {
 public:
  explicit ReportPages(ReportPageFrame frame) : frame_(std::move(frame)) {}

  int Count() const override { return count_; }
  void Measure(Canvas& canvas) override { count_ = CutIntoPages(canvas); }
  bool IsTooWide() const override { return ContentWidth() > frame_.device.width; }
  void DrawPage(int page, Canvas& canvas) override;

 protected:
  const PageDevice& Device() const { return frame_.device; }
  /// Sets size and font of a report to those of the page.
  void SetUp(ReportView& view, const Canvas& canvas) const;
  /// \return how many pages there are, at least 1
  virtual int CutIntoPages(Canvas& canvas) = 0;
  virtual void DrawReport(int page, Canvas& canvas) = 0;
  /// How many pixels the longest line takes, as cut into pages.
  virtual int ContentWidth() const = 0;

 private:
  ReportPageFrame frame_;
  int count_ = 1;
};

/// The Trail Summary of trails in the order of the pane.
class TrailSummaryPages final : public ReportPages {
 public:
  TrailSummaryPages(ReportPageFrame frame, std::vector<Trail*> trails, double magneticDeviation);
  std::string Title() const override { return "Trail Summary"; }
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return view_.contentWidth; }

 private:
  TrailSummaryView view_;
  std::vector<ReportLines> pages_;
};

/// The Point Index.
class PointIndexPages final : public ReportPages {
 public:
  PointIndexPages(ReportPageFrame frame, PointIndex index, CoordinateDisplay display);
  std::string Title() const override { return "Point Summary"; }
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return view_.contentWidth - view_.columnGap / 2; }

 private:
  PointIndex index_;
  PointIndexView view_;
  int linesOfPage_ = 1;
};

/// Range Stats of rows in the order of the pane. The rows must outlive the pages.
class RangeStatsPages final : public ReportPages {
 public:
  RangeStatsPages(ReportPageFrame frame, std::vector<const RangePanelRow*> rows, MeasureNames names,
                  TravelChartMode chartMeasure);
  std::string Title() const override { return "Range Stats"; }
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& canvas) override;
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return view_.contentWidth; }

 private:
  /// A part with its place on its page.
  struct Placed {
    const RangeStatsPart* part = nullptr;
    int page = 0;
    int top = 0;
  };
  /// Places the parts of one block, from `begin` to just before `end`.
  void PlaceBlock(size_t begin, size_t end, Placed& next);

  RangeStatsView view_;
  std::vector<Placed> placed_;  ///< by page
};

/// The profile of a trail or a transect, on one page.
class ProfilePages final : public ReportPages {
 public:
  ProfilePages(ReportPageFrame frame, ElevationView view, CoordinateDisplay display);
  /// The name of the trail, or "Transect".
  std::string Title() const override;
  PageFonts Fonts() const override;

 protected:
  int CutIntoPages(Canvas& /*canvas*/) override { return 1; }
  void DrawReport(int page, Canvas& canvas) override;
  int ContentWidth() const override { return 0; }  // the line fills the page

 private:
  ElevationView view_;
  CoordinateDisplay display_;
};

}  // namespace orvane
