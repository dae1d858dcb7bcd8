#include "cli/estimates_command.h"

#include "base/latin1.h"
#include "base/text.h"
#include "cli/edit_session.h"
#include "cli/exit_status.h"
#include "cli/json_values.h"
#include "cli/text_output.h"
#include "estimates/range_estimates.h"
#include "model/workspace.h"
#include "view/map_window.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

bool IsNamed(const Range& range, const std::string& name) {
  return range.name && IsTypedName(*range.name, name);
}

/// \return the ranges of the request in the order of the pane; nothing, after a message, if one is
///         missing
std::optional<std::vector<const Range*>> FindRanges(Map& map, LineMessages& messages,
                                                    const std::vector<std::string>& names) {
  const MapWindow view = NewView(map);
  std::vector<const Range*> ranges;
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.range != nullptr) ranges.push_back(row.range);
  }
  for (const std::string& name : names) {
    if (std::none_of(ranges.begin(), ranges.end(),
                     [&](const Range* range) { return IsNamed(*range, name); })) {
      NoteError(messages, "Can't find %s", {name});
      return std::nullopt;
    }
  }
  if (names.empty()) return ranges;
  std::erase_if(ranges, [&](const Range* range) {
    return std::none_of(names.begin(), names.end(),
                        [&](const std::string& name) { return IsNamed(*range, name); });
  });
  return ranges;
}

Json NameOrNull(const Range& range) {
  return range.name ? Json(ToUtf8(*range.name)) : Json(nullptr);
}

Json DateOrNull(PackedDate date) { return date == 0 ? Json(nullptr) : Json(date); }

Json AreasJson(const std::vector<AreaOfPercent>& areas) {
  Json list = Json::array();
  for (const AreaOfPercent& area : areas) list.push_back(Json::array({area.percent, area.area}));
  return list;
}

Json KernelJson(const std::optional<KernelEstimate>& kernel) {
  if (!kernel) return nullptr;
  return {{"bandwidth", kernel->bandwidth}, {"areas", AreasJson(kernel->areas)}};
}

Json CurveJson(const std::vector<CurveRow>& curve) {
  Json list = Json::array();
  for (const CurveRow& row : curve) {
    Json json = Json::array({row.days, row.fixes});
    for (const CurveAreas* areas : {&row.all, &row.most}) {
      for (const double area : {areas->firstDays, areas->mean, areas->low, areas->high}) {
        json.push_back(area);
      }
    }
    list.push_back(std::move(json));
  }
  return list;
}

Json OverlapsJson(const std::vector<DensityOverlap>& overlaps) {
  Json list = Json::array();
  for (const DensityOverlap& overlap : overlaps) {
    list.push_back({{"range", NameOrNull(*overlap.other)},
                    {"inside95", ValueOrNull(overlap.inside95)},
                    {"affinity", ValueOrNull(overlap.affinity)}});
  }
  return list;
}

Json EstimateJson(const RangeEstimate& estimate) {
  return {{"range", NameOrNull(*estimate.range)},
          {"fixes", estimate.fixes},
          {"days", estimate.days},
          {"firstDate", DateOrNull(estimate.firstDate)},
          {"lastDate", DateOrNull(estimate.lastDate)},
          {"mcp", AreasJson(estimate.mcp)},
          {"kernel", KernelJson(estimate.kernel)},
          {"curve", CurveJson(estimate.curve)},
          {"overlaps", OverlapsJson(estimate.overlaps)}};
}

}  // namespace

int EstimatesCommand(Map& map, LineMessages& messages, const EstimatesRequest& request) {
  const auto ranges = FindRanges(map, messages, request.ranges);
  if (!ranges) return ExitFailed;
  EstimateSettings settings;
  settings.bandwidthFactor = request.bandwidthFactor;
  settings.seed = request.seed;
  Json list = Json::array();
  for (const RangeEstimate& estimate : EstimateRanges(*ranges, settings, map.workspace->progress)) {
    list.push_back(EstimateJson(estimate));
  }
  Print(list.dump() + "\n");
  return ExitDone;
}

}  // namespace orvane
