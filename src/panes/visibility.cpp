#include "panes/visibility.h"

#include "base/messages.h"
#include "editing/trail_form.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "panes/estimate_lines.h"
#include "panes/pane_clicks.h"
#include "panes/trail_tree.h"
#include "view/fills.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace orvane {
namespace {

/// \return false, after a message, if the text means no colour; the empty text means none
bool ReadColorField(const MapWindow& view, const std::string& text, Color& color) {
  color = ParseColor(text);
  if (color != NoColor || text.empty()) return true;
  NoteError(view.map->workspace->messages, "Bad Color");
  return false;
}

size_t IndexOf(RangeDrawMode mode) { return static_cast<size_t>(mode); }

void GiveStyle(const TrailVisibility& dialog, Color color, TrailPanelRow& row) {
  row.visible = dialog.visible;
  row.lineStyle = dialog.lineStyle;
  row.labelMode = dialog.labelMode;
  row.color = color;
  row.fillPattern = dialog.fillPattern;
  row.filled = dialog.filled;
  row.markStyle = dialog.markStyle;
}

/// \return true if the trail had another style
bool GiveStyle(const TrailVisibility& dialog, Color color, Trail& trail) {
  auto style = std::tie(trail.lineStyle, trail.labelMode, trail.color, trail.fillPattern,
                        trail.filled, trail.markStyle);
  const auto wanted = std::tie(dialog.lineStyle, dialog.labelMode, color, dialog.fillPattern,
                               dialog.filled, dialog.markStyle);
  const bool differs = style != wanted;
  style = wanted;
  return differs;
}

std::vector<Map*> BasesOf(const Map& map) {
  std::vector<Map*> bases;
  for (Map* below = map.basis; below != nullptr; below = below->basis) bases.push_back(below);
  return bases;
}

}  // namespace

std::optional<TrailVisibility> OpenTrailVisibility(MapWindow& view) {
  TrailPanelRow* row = FirstSelectedRow(view.trailViews);
  if (row == nullptr) return std::nullopt;
  const bool givesPattern = !row->filled && row->fillPattern == 0;
  if (givesPattern) row->fillPattern = FillSolid;
  TrailVisibility dialog{.visible = row->visible,
                         .color = ColorFieldText(row->color),
                         .lineStyle = row->lineStyle,
                         .filled = row->filled,
                         .fillPattern = row->fillPattern,
                         .labelMode = row->labelMode,
                         .markStyle = row->markStyle,
                         .gavePattern = givesPattern};
  if (dialog.lineStyle != LineStyle::Solid && dialog.lineStyle != LineStyle::Dotted) {
    dialog.lineStyle = LineStyle::Dashed;
  }
  if (dialog.labelMode < LabelMode::None || dialog.labelMode > LabelMode::All)
    dialog.labelMode = LabelMode::Auto;
  if (dialog.markStyle < MarkStyle::None || dialog.markStyle > MarkStyle::Rect)
    dialog.markStyle = MarkStyle::Plus;
  return dialog;
}

bool IsLineStyleEnabled(const TrailVisibility& dialog, LineStyle lineStyle) {
  // The check "Filled" rules the button "Solid" of the lines too.
  if (lineStyle == LineStyle::Solid) return dialog.filled;
  return lineStyle == LineStyle::Dotted || lineStyle == LineStyle::Dashed;
}

bool IsFillPatternEnabled(const TrailVisibility& dialog, int fillPattern) {
  if (fillPattern == FillSolid) return true;
  return dialog.filled && fillPattern >= FillRising && fillPattern <= FillCross;
}

bool ApplyTrailVisibility(MapWindow& view, const TrailVisibility& dialog, EditHistory& history,
                          const ContourProgress& progress) {
  Color color = NoColor;
  if (!ReadColorField(view, dialog.color, color)) return false;
  // An undo of the dialog takes the pattern back that opening it gave.
  TrailPanelRow* first = FirstSelectedRow(view.trailViews);
  if (dialog.gavePattern && first != nullptr && !first->filled) first->fillPattern = 0;
  return history.Apply({.name = "Trail Visibility",
                        .map = view.map,
                        .others = BasesOf(*view.map),
                        .marksDirty = false,
                        .change = [&](EditFollowUp& followUp) {
                          for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
                            if (!row->selected) continue;
                            const bool isCanceled = dialog.visible && AwaitsContours(view, *row) &&
                                                    !ShowContours(view, *row, progress);
                            const bool wasVisible = row->visible;
                            GiveStyle(dialog, color, *row);
                            if (row->trail != nullptr && GiveStyle(dialog, color, *row->trail)) {
                              followUp.unlikeFile.push_back(MapOfTrail(*view.map, *row->trail));
                            }
                            if (isCanceled) row->visible = wasVisible;
                          }
                          return true;
                        }});
}

std::optional<RangeVisibility> OpenRangeVisibility(MapWindow& view) {
  const RangePanelRow* row = FirstSelectedRow(view.rangeViews);
  if (row == nullptr) {
    NoteError(view.map->workspace->messages, "Select a range first");
    return std::nullopt;
  }
  RangeVisibility dialog{.visible = row->visible,
                         .color = ColorFieldText(row->color),
                         .shading = row->shading > FillCross ? NoShading : row->shading,
                         .drawMode = row->drawMode,
                         .clusterMask = row->clusterMask,
                         .estimateMask = row->estimateMask};
  std::copy(std::begin(row->showSm), std::end(row->showSm), dialog.showSm.begin());
  return dialog;
}

RangeControls ControlsOfRange(MapWindow& view) {
  RangeControls controls;
  const RangePanelRow* row = FirstSelectedRow(view.rangeViews);
  if (row == nullptr) return controls;
  const bool isOverlap = row->intersection != nullptr;
  for (int pattern = FillRising; pattern <= FillVertical; ++pattern) {
    controls.shading[static_cast<size_t>(pattern)] = !isOverlap;
  }
  controls.shading[FillDiagonals] = isOverlap;
  controls.shading[FillCross] = isOverlap;
  controls.shading[NoShading] = true;
  controls.clusters = !isOverlap;
  controls.estimates = row->range != nullptr;
  controls.drawMode[IndexOf(RangeDrawMode::Clear)] = true;
  controls.drawMode[IndexOf(RangeDrawMode::Hash)] = true;
  if (row->range == nullptr) return controls;
  const bool hasGrid = row->range->grid != nullptr;
  controls.drawMode[IndexOf(RangeDrawMode::CoreGrid)] = hasGrid;
  for (size_t i = 0; i < controls.showSm.size(); ++i) {
    controls.showSm[i] = view.map->smName[i].has_value();
    controls.drawMode[IndexOf(RangeDrawMode::Sm1) + i] = hasGrid && controls.showSm[i];
  }
  return controls;
}

bool ApplyRangeVisibility(MapWindow& view, const RangeVisibility& dialog, Progress* progress) {
  Color color = NoColor;
  if (!ReadColorField(view, dialog.color, color)) return false;
  for (RangePanelRow& row : view.rangeViews) {
    if (!row.selected) continue;
    row.visible = dialog.visible;
    row.color = color;
    row.shading = dialog.shading;
    std::copy(dialog.showSm.begin(), dialog.showSm.end(), std::begin(row.showSm));
    row.drawMode = dialog.drawMode;
    row.clusterMask = dialog.clusterMask;
    if (row.range != nullptr) row.estimateMask = dialog.estimateMask;
  }
  UpdateEstimateLines(view, progress);
  return true;
}

}  // namespace orvane
