#include "ranges/clusters.h"
namespace orvane {
std::unique_ptr<ClusterTree> ClusterPoints(PointSpan, Messages&) { return nullptr; }
std::optional<std::string> ClusterLevelLine(const Range&, int, bool) { return std::nullopt; }
}  // namespace orvane
