#include "cli/reports_command.h"

#include "base/latin1.h"
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

int PrintReport(const std::string& report) {
  Print(FieldsToUtf8(report));
  return ExitDone;
}

}  // namespace

std::optional<std::vector<Trail*>> NamedTrails(MapWindow& view, LineMessages& messages,
                                               const std::vector<std::string>& names) {
  std::set<const Trail*> named;
  for (const std::string& name : names) {
    const Trail* trail = FindTyped(
        name, [&view](std::string_view each) { return FindTrailOrContour(*view.map, each); });
    if (trail == nullptr) {
      NoteError(messages, "Can't find %s", {name});
      return std::nullopt;
    }
    named.insert(trail);
  }
  std::vector<Trail*> trails;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
    if (row->trail == nullptr) continue;
    if (named.empty() || named.contains(row->trail)) trails.push_back(row->trail);
  }
  return trails;
}

std::optional<std::vector<const RangePanelRow*>> NamedRanges(
    const MapWindow& view, LineMessages& messages, const std::vector<std::string>& names) {
  const auto hasName = [](const RangePanelRow& row, const std::string& name) {
    return !row.fixed && row.text && IsTypedName(*row.text, name);
  };
  for (const std::string& name : names) {
    if (std::none_of(view.rangeViews.begin(), view.rangeViews.end(),
                     [&](const RangePanelRow& row) { return hasName(row, name); })) {
      NoteError(messages, "Can't find %s", {name});
      return std::nullopt;
    }
  }
  std::vector<const RangePanelRow*> rows;
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.fixed) continue;
    if (names.empty() || std::any_of(names.begin(), names.end(),
                                     [&](const auto& name) { return hasName(row, name); })) {
      rows.push_back(&row);
    }
  }
  return rows;
}

int TrailsCommand(Map& map, LineMessages& messages, const std::vector<std::string>& trailNames) {
  MapWindow view = NewView(map);
  const auto trails = NamedTrails(view, messages, trailNames);
  if (!trails) return ExitFailed;
  return PrintReport(TrailSummaryText(*trails, map.magneticDeviation));
}

int IndexCommand(Map& map, CoordinateDisplay display) {
  return PrintReport(PointIndexText(BuildPointIndex(map, NewView(map).centralLongitude), display));
}

int RangesCommand(Map& map, LineMessages& messages, const std::vector<std::string>& rangeNames) {
  const MapWindow view = NewView(map);
  const auto rows = NamedRanges(view, messages, rangeNames);
  if (!rows) return ExitFailed;
  return PrintReport(RangeStatsText(*rows, map.smName));
}

}  // namespace orvane
