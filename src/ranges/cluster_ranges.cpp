#include "ranges/cluster_ranges.h"

#include "base/parallel.h"
#include "ranges/clusters.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <unordered_map>
#include <vector>

// Clusters follow from the places of the points and the order of their list, but computing them
// overwrites the `projected` fields. So each range is clustered on copies of its points: ranges
// that share points do not interfere, and the vertices of the hulls are replaced by the range's
// points at the end.

namespace orvane {

namespace {

constexpr size_t PointsForThreads = 2000;  // below, a thread costs more than it saves
constexpr unsigned MostThreads = 8;

/// Copies of the points of one range, with only what clusters need.
class PointCopies {
 public:
  explicit PointCopies(const std::vector<Point*>& points) {
    std::unordered_map<Point*, size_t> places;
    std::vector<size_t> order;
    for (Point* point : points) {
      const auto [entry, isNew] = places.try_emplace(point, originals_.size());
      if (isNew) originals_.push_back(point);
      order.push_back(entry->second);
    }
    copies_.resize(originals_.size());
    for (size_t i = 0; i < copies_.size(); ++i) copies_[i].geo = originals_[i]->geo;
    for (const size_t place : order) points_.push_back(&copies_[place]);
  }

  const std::vector<Point*>& Points() const { return points_; }

  Point* OriginalOf(const Point* copy) const {
    return originals_[static_cast<size_t>(copy - copies_.data())];
  }

 private:
  std::vector<Point*> originals_;
  std::vector<Point> copies_;
  std::vector<Point*> points_;
};

/// For the helping threads: shows nothing, and stops when the work of the first thread stops.
class Follower final : public Progress {
 public:
  explicit Follower(const Progress* leader) : leader_(leader) {}
  void Reach(WorkStage, size_t, size_t) override {
    if (IsCanceled(leader_)) Cancel();
  }

 private:
  const Progress* leader_;
};

void ClusterOnCopies(Range& range, Messages& messages, Progress* progress) {
  try {
    const PointCopies copies(range.points);
    range.clusters = ClusterPoints(copies.Points(), messages, MostClusterLocations, progress);
    if (range.clusters == nullptr) return;
    for (Cluster& cluster : range.clusters->clusters) {
      for (auto& hull : cluster.hull) {
        for (Point*& vertex : hull) vertex = copies.OriginalOf(vertex);
      }
    }
  } catch (const std::bad_alloc&) {
    // Thrown out of a thread, this would end the program without a message.
    NoteTooComplex(messages, range.points.size());
  }
}

bool IsTooComplex(const RecordedMessages& said) {
  const auto& entries = said.Entries();
  return std::any_of(entries.begin(), entries.end(),
                     [](const auto& entry) { return entry.severity == Severity::Fatal; });
}

unsigned ThreadsFor(std::span<Range* const> ranges) {
  size_t points = 0;
  for (const Range* range : ranges) points += range->points.size();
  if (points < PointsForThreads) return 1;
  return static_cast<unsigned>(std::min<size_t>(ThreadsUpTo(MostThreads), ranges.size()));
}

}  // namespace

void ClusterRanges(std::span<Range* const> ranges, Messages& messages, Progress* progress) {
  std::vector<RecordedMessages> said(ranges.size());
  std::atomic<size_t> next{0};
  const unsigned workers = RunInParallel(ThreadsFor(ranges), [&](unsigned worker) {
    Follower follower(progress);
    Progress* watching = worker == 0 ? progress : &follower;
    for (size_t i = next++; i < ranges.size() && !IsCanceled(watching); i = next++) {
      ClusterOnCopies(*ranges[i], said[i], watching);
    }
  });
  for (size_t i = 0; i < ranges.size() && workers > 1; ++i) {
    if (!IsTooComplex(said[i])) continue;
    // Several at once may need more memory than one that has all of it.
    said[i] = RecordedMessages();
    ClusterOnCopies(*ranges[i], said[i], progress);
  }
  for (const RecordedMessages& ofRange : said) {
    for (const auto& entry : ofRange.Entries()) messages.Post(entry.severity, entry.text);
  }
}

}  // namespace orvane
