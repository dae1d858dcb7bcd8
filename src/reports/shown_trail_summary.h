#pragma once

#include "reports/shown_report.h"
#include "reports/trail_summary_view.h"

#include <string>
#include <vector>

namespace orvane {

/// The Trail Summary in its window. Its lines are those of the trails, the totals and the counts of
/// aspects.
class ShownTrailSummary final : public ShownReport {
 public:
  /// Takes the trails to show; the caller then lays out.
  /// \param trails             must live until others are shown, or `Drop`
  /// \param magneticDeviation  degrees, of the map
  /// \return true if they are other trails than before
  bool Show(std::vector<Trail*> trails, double magneticDeviation);

  ReportView& View() override { return view_; }
  const ReportView& View() const override { return view_; }
  void LayOut(Canvas& canvas) override;
  void Draw(Canvas& canvas) const override { DrawTrailSummary(view_, canvas); }
  int LineCount() const override { return TrailSummaryLines(view_); }
  PixelRect LinePlace(int line) const override;
  std::string LineText(int line) const override;
  std::string FileText() const override;
  void Drop() override;

 private:
  TrailSummaryView view_;
};

}  // namespace orvane
