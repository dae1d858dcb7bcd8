#pragma once

#include "model/records.h"
#include "view/estimate_lines.h"

#include <array>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

struct RangeIntersection;

/// What a view shows of its map, and how, apart from the map itself: a tree of trail rows and a
/// list of range rows. The panes beside the map show and change them, the drawing walks them. They
/// live in their `MapWindow`, so two windows on one map can show different things.

/// A row of the tree: one trail, a group of them, or the row "New" at the end. `fillPattern`
/// takes the values of the field of `Trail`.
struct TrailPanelRow {
  std::string text;       ///< what the pane shows
  bool visible = false;   ///< drawn on the map
  bool open = false;      ///< the pane shows the children
  bool selected = false;  ///< selected in the pane
  bool filled = false;    ///< drawn as a filled area too
  bool fixed = false;     ///< the row "New", the last of all
  LineStyle lineStyle = LineStyle::Unset;
  LabelMode labelMode = LabelMode::Unset;
  int fillPattern = 0;
  MarkStyle markStyle = MarkStyle::None;
  Color color = 0;
  Trail* trail = nullptr;             ///< null for a group and for "New"; not owned
  std::list<TrailPanelRow> children;  ///< sorted by text; rows never move in memory
};

/// How the area of a range is drawn. The numbers are those of the scripts of `edit`.
enum class RangeDrawMode { Clear = 0, Hash = 1, CoreGrid = 2, Sm1 = 3, Sm2 = 4, Sm3 = 5 };

/// A row of the range list: a range, an intersection of two, or the row "New" at the end.
struct RangePanelRow {
  std::optional<std::string> text;  ///< name of the range or the intersection, or "New"
  bool visible = false;
  bool selected = false;
  bool fixed = false;                      ///< the row "New"
  int shading = 0;                         ///< fill pattern, 0 to 5; 6 and more for none
  bool showSm[3] = {false, false, false};  ///< show the points with that measure
  RangeDrawMode drawMode = RangeDrawMode::Clear;
  std::uint32_t clusterMask = 0;   ///< bit i shows the contour of (100 - 5 i) %
  std::uint32_t estimateMask = 0;  ///< bit i shows the outline of estimate i of those offered
  std::shared_ptr<const EstimateLines> estimates;  ///< these outlines, or null
  Color color = 0;
  Range* range = nullptr;                     ///< or null; not owned
  RangeIntersection* intersection = nullptr;  ///< or null; not owned
  /// The two ranges of the intersection. Known without its record, which an analysis replaces.
  std::array<const Range*, 2> overlapOf{};
};

/// Every row of a tree in the order of the pane: each row, then its children.
std::vector<TrailPanelRow*> TrailRowsInOrder(std::list<TrailPanelRow>& rows);

}  // namespace orvane
