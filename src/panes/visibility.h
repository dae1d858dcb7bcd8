#pragma once

#include "editing/edit_history.h"
#include "elevation/contours_work.h"
#include "view/map_window.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace orvane {

/// What the dialog "Trail Visibility" shows and takes. The numbers are those of the rows.
struct TrailVisibility {
  bool visible = false;
  std::string color;  ///< as typed
  LineStyle lineStyle = LineStyle::Solid;
  bool filled = false;
  int fillPattern = 0;
  LabelMode labelMode = LabelMode::Auto;
  MarkStyle markStyle = MarkStyle::None;
  bool gavePattern = false;  ///< opening gave the first row its pattern
};

/// What the dialog "Range Visibility" shows and takes.
struct RangeVisibility {
  bool visible = false;
  std::string color;  ///< as typed
  int shading = 0;
  RangeDrawMode drawMode = RangeDrawMode::Clear;
  std::array<bool, 3> showSm{};
  std::uint32_t clusterMask = 0;
  std::uint32_t estimateMask = 0;  ///< of `OfferedOutlines`
};

/// `RangeVisibility::shading` of the button "None".
constexpr int NoShading = 7;
/// The list of cluster levels: row i is (100 - 5 i) %, and is bit i of the mask.
constexpr int ClusterListRows = 16;

/// The values of the first selected row, as the dialog shows them. A row that is neither filled nor
/// has a pattern gets the solid one there and then.
/// \return nothing without a selection
std::optional<TrailVisibility> OpenTrailVisibility(MapWindow& view);

/// Which controls can be used while the dialog holds these values.
bool IsLineStyleEnabled(const TrailVisibility& dialog, LineStyle lineStyle);
bool IsFillPatternEnabled(const TrailVisibility& dialog, int fillPattern);

/// OK: gives the values to all selected rows, and the style to their trails. The file of the map is
/// not marked as changed. A group "Contours" that is shown for the first time has its lines made.
/// \return false, after "Bad Color", if the colour can't be read; then nothing has changed
bool ApplyTrailVisibility(MapWindow& view, const TrailVisibility& dialog, EditHistory& history,
                          const ContourProgress& progress = {});

/// As `OpenTrailVisibility`.
/// \return nothing, after "Select a range first", without a selection
std::optional<RangeVisibility> OpenRangeVisibility(MapWindow& view);

/// Which controls the dialog shows, or lets the user change, for the first selected row.
struct RangeControls {
  std::array<bool, NoShading + 1> shading{};  ///< by value; 6 has no button
  std::array<bool, 6> drawMode{};             ///< by value
  std::array<bool, 3> showSm{};
  bool clusters = false;
  bool estimates = false;
};
RangeControls ControlsOfRange(MapWindow& view);

/// OK: gives the values to all selected rows. Estimates that are to be drawn are computed.
/// \param progress  as for `UpdateEstimateLines`
/// \return false, after "Bad Color", if the colour can't be read
bool ApplyRangeVisibility(MapWindow& view, const RangeVisibility& dialog,
                          Progress* progress = nullptr);

}  // namespace orvane
