#pragma once

#include "reports/range_stats_view.h"

#include <QObject>

namespace orvane {

class MapWindowWidget;
class PointIndexWindow;
class RangeEstimatesWindow;
class RangeStatsWindow;
class Shell;
class SurveyQualityWindow;
class TrailSummaryWindow;

/// Opens the reports of a shell. There is one of each kind at most for each map window: opening it
/// again brings it to the front.
class Reports final : public QObject {
  Q_OBJECT

 public:
  /// \param shell  owns this from now on
  explicit Reports(Shell& shell);

  TrailSummaryWindow& OpenTrailSummary(MapWindowWidget& window);
  PointIndexWindow& OpenPointIndex(MapWindowWidget& window);
  RangeStatsWindow& OpenRangeStats(MapWindowWidget& window);
  RangeEstimatesWindow& OpenRangeEstimates(MapWindowWidget& window);
  SurveyQualityWindow& OpenSurveyQuality(MapWindowWidget& window);

 private:
  Shell& shell_;
  RangeStatsCounts counts_;
};

/// Plugs in the commands that open reports. Those of an open report are in its window.
void PlugReports(Shell& shell);

}  // namespace orvane
