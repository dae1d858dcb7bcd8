#pragma once

#include "formats/layers.h"
#include "model/map.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The layers of a map, each of features of one kind with the same fields:
///
///     points    named points and the stops of trails; the field `kind` says which
///     trails    trails as lines, with altitudes
///     areas     filled trails
///     grids     the cells of all grids
///     shades    the shaded cells
///     ranges    the hulls of ranges
///     clusters  the hulls of clusters, level by level
///     overlaps  the overlaps of two ranges
///     contours  the contour lines that were made; see `VisitContours`
///
/// What they hold is described in map_features.h.
constexpr std::string_view LayerNames[] = {"points", "trails",   "areas",    "grids",   "shades",
                                           "ranges", "clusters", "overlaps", "contours"};

/// \return true for one of `LayerNames`
bool IsLayerName(std::string_view name);

/// Looks through the map and describes layers of it.
/// \param map    must outlive the layers and stay as it is
/// \param names  of `LayerNames`, in any order; all if there are none
/// \return the layers in the order of `LayerNames`, each once, also those without features
std::vector<ExportedLayer> LayersOf(Map& map, const std::vector<std::string>& names);

}  // namespace orvane
