#pragma once

#include "base/progress.h"
#include "ranges/clusters_forest.h"
#include "ranges/clusters_index.h"
#include "ranges/clusters_locations.h"

namespace orvane {

/// Takes all pairs of locations in their order until everything is in one tree.
/// \param locations  all free; at least 2
/// \param index, sets, forest  of these locations, with nothing made in them yet
/// \param progress  can cancel; the tree is then incomplete
void GrowClusters(const ClusterLocations& locations, const LocationIndex& index,
                  const ClusterSets& sets, ClusterForest& forest, Progress* progress = nullptr);

}  // namespace orvane
