#include "cli/reports_command.h"

#include "base/text.h"
#include "cli/edit_session.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "model/point_names.h"
#include "panes/range_list.h"
#include "reports/point_index.h"
#include "reports/range_stats.h"
#include "reports/trail_summary.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <algorithm>
#include <set>

namespace orvane {

namespace {

int CannotFind(LineMessages& messages, const std::string& name) {
  NoteError(messages, "Can't find %s", {name});
  return ExitFailed;
}

int PrintReport(const std::string& report) {
  Print(FieldsToUtf8(report));
  return ExitDone;
}

}  // namespace

int TrailsCommand(Map& map, LineMessages& messages, const std::vector<std::string>& trailNames) {
  std::set<const Trail*> named;
  for (const std::string& name : trailNames) {
    const Trail* trail = FindTrailOrContour(map, name);
    if (trail == nullptr) return CannotFind(messages, name);
    named.insert(trail);
  }
  MapWindow view = NewView(map);
  std::vector<Trail*> trails;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
    if (row->trail == nullptr) continue;
    if (named.empty() || named.contains(row->trail)) trails.push_back(row->trail);
  }
  return PrintReport(TrailSummaryText(trails, map.magneticDeviation));
}

int IndexCommand(Map& map, CoordinateDisplay display) {
  return PrintReport(PointIndexText(BuildPointIndex(map, NewView(map).centralLongitude), display));
}

int RangesCommand(Map& map, LineMessages& messages, const std::vector<std::string>& rangeNames) {
  const MapWindow view = NewView(map);
  const auto bears = [](const RangePanelRow& row, const std::string& name) {
    return !row.fixed && row.text && SameName(*row.text, name);
  };
  for (const std::string& name : rangeNames) {
    if (std::none_of(view.rangeViews.begin(), view.rangeViews.end(),
                     [&](const RangePanelRow& row) { return bears(row, name); })) {
      return CannotFind(messages, name);
    }
  }
  std::vector<const RangePanelRow*> rows;
  for (const RangePanelRow& row : view.rangeViews) {
    if (rangeNames.empty() || std::any_of(rangeNames.begin(), rangeNames.end(),
                                          [&](const auto& name) { return bears(row, name); })) {
      rows.push_back(&row);
    }
  }
  return PrintReport(RangeStatsText(rows, map.smName));
}

}  // namespace orvane
