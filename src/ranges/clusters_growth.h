#pragma once

#include "base/progress.h"
#include "ranges/clusters_forest.h"
#include "ranges/clusters_index.h"
#include "ranges/clusters_locations.h"

namespace orvane {

/// Takes up all pairs of locations in their order until everything is in one tree.
/// \param locations  all free; at least 2
/// \param index, sets, forest  of these locations, nothing made in them yet
/// \param progress  may call it off; the tree is then not whole
void GrowClusters(const ClusterLocations& locations, const LocationIndex& index,
                  const ClusterSets& sets, ClusterForest& forest, Progress* progress = nullptr);

}  // namespace orvane
