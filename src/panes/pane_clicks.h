#pragma once

#include "elevation/contours_work.h"
#include "view/map_window.h"

namespace orvane {

/// What the mouse and the keys do to the rows of the two panes. The caller repaints what it shows.

/// A click on a trail row: without Shift the selection is cleared first, then `selected` of the row
/// and of each row below it is flipped, each its own.
/// \param row  null for a click below the last row, which clears the selection; so does "New"
///             without Shift
void ClickTrailRow(MapWindow& view, TrailPanelRow* row, bool shift);

/// A click on the tick of a trail row: flips `visible` of the row and of each row below it, each its
/// own, and clears the selection. Contours are made first where the row shows them for the first
/// time; if that is cancelled, nothing changes. The row "New" has no tick.
void ClickTrailTick(MapWindow& view, TrailPanelRow& row, const ContourProgress& progress = {});

/// \return true for a row that can be opened and closed
bool HasTriangle(const TrailPanelRow& row);

/// A click on the triangle: makes contours where the row shows them for the first time, then opens
/// or closes a row that has children and clears the selection.
void ClickTriangle(MapWindow& view, TrailPanelRow& row, const ContourProgress& progress = {});

/// The same for a row of the range pane.
void ClickRangeRow(MapWindow& view, RangePanelRow* row, bool shift);
void ClickRangeTick(MapWindow& view, RangePanelRow& row);

void ClearTrailSelection(MapWindow& view);
void ClearRangeSelection(MapWindow& view);
/// Selects every range and intersection.
void SelectAllRanges(MapWindow& view);

/// \return true for a row "Contours" or "Continuous contours" of the top level as long as it has no
///         lines
bool AwaitsContours(const MapWindow& view, const TrailPanelRow& row);

/// Fills such a row with the contours of the nearest map in the basis chain that offers them: makes
/// them if they were not made yet, and adds their rows.
/// \return false if that was cancelled; then nothing has changed
bool ShowContours(MapWindow& view, const TrailPanelRow& row, const ContourProgress& progress = {});

/// Makes the lines of the map that a map's contours come from, unless some were made. Does nothing if
/// no map of the chain asks for contours.
/// \return false if it was cancelled
bool MakeMissingContours(Map& map, const ContourProgress& progress = {});

}  // namespace orvane
