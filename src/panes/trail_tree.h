#pragma once

#include "view/map_window.h"

#include <array>
#include <forward_list>
#include <list>
#include <optional>
#include <string_view>

namespace orvane {

/// The tree of trails in the upper pane: how its rows are made from a map, and found.

/// The two groups of contour lines.
enum class ContourKind { Classic, Continuous };
constexpr std::array<ContourKind, 2> ContourKinds = {ContourKind::Classic, ContourKind::Continuous};
/// The text of the group: "Contours" or "Continuous contours".
std::string_view ContourGroupText(ContourKind kind);
/// \return the kind of the lines of a group; nothing for another row
std::optional<ContourKind> ContourKindOf(const TrailPanelRow& row);
/// The lines of that kind that were made for a map.
std::forward_list<Trail>& ContoursOf(Map& map, ContourKind kind);
/// \return true if the map asks for contours
bool OffersContours(const Map& map);
/// \return the nearest map of a basis chain that asks for contours, or null
Map* MapWithContours(Map* map);

/// Rebuilds the trail rows of a view: all trails of the basis chain, deepest first, then the
/// map's own, and for each map that offers contours the hidden groups "Contours" and "Continuous
/// contours"; "New" comes last. What was open, selected and visible is lost.
void BuildTrailRows(MapWindow& view);

/// Adds the row of one trail in the group of its type, which is made if there is none, after the
/// rows of a smaller or equal text.
/// \return the row; good until the rows are rebuilt
TrailPanelRow& AddTrailRow(MapWindow& view, Trail& trail);

/// Adds the row of a contour trail below the group of its kind, in a group of its type.
TrailPanelRow& AddContourRow(MapWindow& view, Trail& trail,
                             ContourKind kind = ContourKind::Classic);

/// Adds, hidden, the contour groups that the maps of the view offer and it lacks, with the lines
/// that were made.
void AddContourGroups(MapWindow& view);

/// The row of a group on one level; made if there is none with that text, in any case of letters.
/// A new row goes after the last row with a smaller text, so each level stays sorted, and before
/// the row "New".
/// \param rows    the level: `MapWindow::trailViews`, or the children of `parent`
/// \param parent  the row above, or null on the top level
/// \param sample  the trail for which a group is made, or null
TrailPanelRow& RowForText(std::list<TrailPanelRow>& rows, const TrailPanelRow* parent,
                          std::string_view text, const Trail* sample);

/// The look of a new row: that of its parent, or by the type that the text of a group names; then
/// what the trail or, without one, the sample says itself.
/// \param trail  the trail of the row, or null for a group
TrailPanelRow MakeTrailRow(const TrailPanelRow* parent, std::string_view text, Trail* trail,
                           const Trail* sample);

/// \return the row of that trail, depth first, or null
TrailPanelRow* FindTrailRow(MapWindow& view, const Trail& trail);

/// \return the first selected row of a tree, depth first, or null
TrailPanelRow* FirstSelectedRow(std::list<TrailPanelRow>& rows);
/// \return the first selected row of a list, or null
RangePanelRow* FirstSelectedRow(std::list<RangePanelRow>& rows);

}  // namespace orvane
