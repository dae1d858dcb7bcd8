#include "shell/reports/report_commands.h"

#include "shell/bring_to_front.h"
#include "shell/map_window_widget.h"
#include "shell/reports/point_index_window.h"
#include "shell/reports/range_estimates_window.h"
#include "shell/reports/range_stats_window.h"
#include "shell/reports/survey_quality_window.h"
#include "shell/reports/trail_summary_window.h"
#include "shell/shell.h"

namespace orvane {
namespace {

/// Finds the report of a map window, or makes it.
/// \param make  returns a new one, which deletes itself when it is closed
template <typename Window, typename Make>
Window& Open(MapWindowWidget& window, Make make) {
  Window* open = nullptr;
  for (ProgramWindow* each : window.Dependents()) {
    if (open == nullptr) open = dynamic_cast<Window*>(each);
  }
  if (open == nullptr) open = make();
  open->setEnabled(true);
  BringToFront(*open);
  return *open;
}

}  // namespace

Reports::Reports(Shell& shell) : QObject(&shell), shell_(shell) {}

TrailSummaryWindow& Reports::OpenTrailSummary(MapWindowWidget& window) {
  return Open<TrailSummaryWindow>(window, [&] { return new TrailSummaryWindow(shell_, window); });
}

PointIndexWindow& Reports::OpenPointIndex(MapWindowWidget& window) {
  return Open<PointIndexWindow>(window, [&] { return new PointIndexWindow(shell_, window); });
}

RangeStatsWindow& Reports::OpenRangeStats(MapWindowWidget& window) {
  return Open<RangeStatsWindow>(window,
                                [&] { return new RangeStatsWindow(shell_, window, counts_); });
}

RangeEstimatesWindow& Reports::OpenRangeEstimates(MapWindowWidget& window) {
  return Open<RangeEstimatesWindow>(window,
                                    [&] { return new RangeEstimatesWindow(shell_, window); });
}

SurveyQualityWindow& Reports::OpenSurveyQuality(MapWindowWidget& window) {
  return Open<SurveyQualityWindow>(window, [&] { return new SurveyQualityWindow(shell_, window); });
}

void PlugReports(Shell& shell) {
  auto* reports = new Reports(shell);  // the shell frees it
  shell.Commands().PlugOnMapSide(CommandTrailSummary, [reports](MapWindowWidget& window) {
    reports->OpenTrailSummary(window);
  });
  shell.Commands().PlugOnMapSide(
      CommandPointIndex, [reports](MapWindowWidget& window) { reports->OpenPointIndex(window); });
  shell.Commands().PlugOnMapSide(
      CommandRangeStats, [reports](MapWindowWidget& window) { reports->OpenRangeStats(window); });
  shell.Commands().PlugOnMapSide(CommandRangeEstimates, [reports](MapWindowWidget& window) {
    reports->OpenRangeEstimates(window);
  });
  shell.Commands().PlugOnMapSide(CommandSurveyQuality, [reports](MapWindowWidget& window) {
    reports->OpenSurveyQuality(window);
  });
}

}  // namespace orvane
