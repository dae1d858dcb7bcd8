#pragma once

#include "reports/report_view.h"
#include "reports/trail_summary.h"
#include "view/panel_rows.h"

#include <list>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The Trail Summary as it is drawn: a table with headings, a line a trail, a line of totals and,
/// if a trail is closed, the aspect table.
struct TrailSummaryView : ReportView {
  std::vector<Trail*> trails;    ///< in the order of the pane; not owned
  double magneticDeviation = 0;  ///< degrees, of the map
  float scale = 1;               ///< how much the columns are spread to fill the width
  TrailTotals totals;
  std::array<int, AspectClasses> aspects{};
};

/// The trails of the selected rows, top to bottom. Of a row with children, only the children count.
std::vector<Trail*> SelectedTrails(const std::list<TrailPanelRow>& rows);

/// The title of the window: "Trail Summary of", and the selected groups as far as 100 bytes hold
/// them.
std::string TrailSummaryTitle(const std::list<TrailPanelRow>& rows);

/// Works out the totals, the columns and the height of the table for `trails`, and holds the scroll.
void LayoutTrailSummary(TrailSummaryView& view);

/// The lines below the headings: the trails, the totals, the aspect table.
int TrailSummaryLines(const TrailSummaryView& view);
/// The pixels from the first line to a line.
/// \param line  from 0
int TrailSummaryLineTop(const TrailSummaryView& view, int line);

/// Lines that are drawn: from `first` to just before `end`.
struct ReportLines {
  int first = 0;
  int end = 0;
};

/// Draws headings and lines on a canvas whose clip is what has to be drawn.
/// \param lines  only these, or all that the view shows
void DrawTrailSummary(const TrailSummaryView& view, Canvas& canvas,
                      const std::optional<ReportLines>& lines = std::nullopt);

}  // namespace orvane
