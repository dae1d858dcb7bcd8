#pragma once

#include "formats/layers.h"
#include "model/map.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The layers of a map, each of features of one kind with the same fields:
///
///     points     named points and the stops of trails; the field `kind` says which
///     trails     trails as lines, with altitudes
///     areas      filled trails
///     grids      the cells of all grids
///     shades     the shaded cells
///     ranges     the hulls of ranges
///     clusters   the hulls of clusters, level by level
///     overlaps   the overlaps of two ranges
///     contours   the contour lines that were made; see `VisitContours`
///     estimates  the outlines of estimates of ranges; only if it is named, since they take long
///
/// What they hold is described in map_features.h.
constexpr std::string_view LayerNames[] = {"points",   "trails",   "areas",    "grids",
                                           "shades",   "ranges",   "clusters", "overlaps",
                                           "contours", "estimates"};

/// How many of `LayerNames`, from the first, are meant if none is named.
constexpr std::size_t UnnamedLayers = 9;

/// \return true for one of `LayerNames`
bool IsLayerName(std::string_view name);

/// \param names  of `LayerNames`, in any order
/// \return those names in the order of `LayerNames`, each once; if there are none, the first
///         `UnnamedLayers`
std::vector<std::string_view> LayersMeant(const std::vector<std::string>& names);

/// Looks through the map and describes layers of it. Estimates are made here; if the progress of the
/// workspace cancels that, some are missing.
/// \param map    must outlive the layers and stay as it is
/// \param names  as for `LayersMeant`
/// \return the layers in the order of `LayerNames`, each once, also those without features
std::vector<ExportedLayer> LayersOf(Map& map, const std::vector<std::string>& names);

}  // namespace orvane
