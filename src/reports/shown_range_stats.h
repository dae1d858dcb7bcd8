#pragma once

#include "reports/range_stats_view.h"
#include "reports/shown_report.h"

#include <string>
#include <vector>

namespace orvane {

/// Range Stats in its window. The titles of blocks, their charts and their lines count as lines.
class ShownRangeStats final : public ShownReport {
 public:
  /// \param counts  shared by all windows of the program; must outlive this
  explicit ShownRangeStats(RangeStatsCounts& counts) : counts_(counts) {}

  /// Takes the rows to show; the caller then lays out.
  /// \param rows   in the order of the pane; must live until others are shown, or `Drop`
  /// \param names  the measures of the map
  /// \return true if they are other rows than before
  bool Show(std::vector<const RangePanelRow*> rows, const MeasureNames& names);

  /// As `ChooseChartMeasure`.
  bool ChooseMeasure(TravelChartMode measure) { return ChooseChartMeasure(view_, measure); }

  /// The range whose chart is meant: that of the block with the current line, else the first whose
  /// chart is in view at least in part, else the first with a chart. Null without any.
  /// \param line  the current one, or -1
  const RangePanelRow* ChartRow(int line) const;
  bool IsChart(int line) const;
  TravelChartMode Measure() const { return view_.chartMeasure; }
  const MeasureNames& Names() const { return view_.names; }
  const std::vector<const RangePanelRow*>& Rows() const { return view_.rows; }

  ReportView& View() override { return view_; }
  const ReportView& View() const override { return view_; }
  void LayOut(Canvas& canvas) override;
  void Draw(Canvas& canvas) const override { DrawRangeStats(view_, canvas); }
  int LineCount() const override { return static_cast<int>(view_.parts.size()); }
  PixelRect LinePlace(int line) const override;
  std::string LineText(int line) const override;
  std::string FileText() const override;
  int PageStep() const override;
  void Drop() override;

 private:
  const RangeStatsPart& PartOf(int line) const { return view_.parts[static_cast<size_t>(line)]; }

  /// What a block is about, to find out whether it is still the same.
  struct Subject {
    const Range* range = nullptr;
    std::array<const Range*, 2> overlapOf{};
    bool operator==(const Subject&) const = default;
  };

  RangeStatsView view_;
  RangeStatsCounts& counts_;
  std::vector<Subject> subjects_;
};

}  // namespace orvane
