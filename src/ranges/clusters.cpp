#include "ranges/clusters.h"

#include "base/number_text.h"
#include "geometry/convex_hull.h"
#include "geometry/polygon.h"
#include "ranges/clusters_forest.h"
#include "ranges/clusters_growth.h"
#include "ranges/clusters_index.h"
#include "ranges/clusters_locations.h"
#include "ranges/format_area.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace orvane {
namespace {

/// The column of the number of clusters in a padded line.
constexpr size_t ClustersColumn = 19;

std::unique_ptr<ClusterTree> TreeOf(const ClusterForest& forest) {
  auto tree = std::make_unique<ClusterTree>();
  tree->steps = forest.Steps();
  tree->clusters.resize(forest.Clusters().size());
  for (size_t i = 0; i < tree->clusters.size(); ++i) {
    const ClusterLinks& grown = forest.Clusters()[i];
    Cluster& cluster = tree->clusters[i];
    cluster.madeAt = grown.madeAt;
    cluster.mergedAt = grown.mergedAt;
    if (grown.parent != NoIndex) {
      cluster.parent = &tree->clusters[static_cast<size_t>(grown.parent)];
    }
  }
  return tree;
}

void FillLevels(const ClusterForest& forest, ClusterTree& tree, Messages& messages) {
  for (size_t level = 0; level < ClusterLevels; ++level) {
    const auto part = static_cast<std::int64_t>(level + 1);
    const auto limit = static_cast<int>(part * tree.steps / ClusterLevels);
    for (size_t i = 0; i < tree.clusters.size(); ++i) {
      Cluster& cluster = tree.clusters[i];
      if (cluster.madeAt >= limit || cluster.mergedAt <= limit) continue;
      const auto points = forest.PointListFromCluster(static_cast<int>(i), limit);
      auto result = ConvexHull(points, messages);
      if (!result) continue;
      cluster.hull[level] = std::move(result->hull);
      cluster.area[level] = PolygonArea(cluster.hull[level]);
    }
  }
}

}  // namespace

void NoteTooComplex(Messages& messages, size_t count) {
  NoteFatal(messages, "That range is too complex to be analyzed: %s", {std::to_string(count)});
}

std::unique_ptr<ClusterTree> ClusterPoints(PointSpan points, Messages& messages,
                                           size_t mostLocations, Progress* progress) {
  size_t count = points.size();
  try {
    std::optional<ClusterLocations> locations = FindLocations(points);
    if (!locations) return nullptr;
    count = locations->size();
    if (count > mostLocations) {
      NoteTooComplex(messages, count);
      return nullptr;
    }
    ClusterSets sets;
    LocationIndex index(*locations, sets);
    ClusterForest forest(*locations, index, sets, messages);
    GrowClusters(*locations, index, sets, forest, progress);
    if (IsCanceled(progress)) return nullptr;
    std::unique_ptr<ClusterTree> tree = TreeOf(forest);
    FillLevels(forest, *tree, messages);
    return tree;
  } catch (const std::bad_alloc&) {
    NoteTooComplex(messages, count);
    return nullptr;
  }
}

std::optional<std::string> ClusterLevelLine(const Range& range, int level, bool pad) {
  if (range.clusters == nullptr || level < 0 || level >= ClusterLevels) return std::nullopt;
  const auto at = static_cast<size_t>(level);
  double area = 0;
  int count = 0;
  for (const Cluster& cluster : range.clusters->clusters) {
    area += cluster.area[at];
    if (!cluster.hull[at].empty()) ++count;
  }
  if (area == 0) return std::nullopt;
  std::string percent = std::to_string((level + 1) * 100 / ClusterLevels);
  percent.insert(0, percent.size() < 3 ? 3 - percent.size() : 0, ' ');
  std::string line = FormatArea(percent + "% area: ", area);
  if (pad && line.size() < ClustersColumn) line.resize(ClustersColumn, ' ');
  return line + " clusters: " + std::to_string(count);
}

}  // namespace orvane
