// The growth of clusters by single linkage, without a table of pairs.
//
// The rule is written for walks over the sorted table of all ordered pairs: (1) the first free pair
// (with two free ends) and the next one that shares an end with it are the seeds, and a threshold
// is half way between their lengths; (2) a walk over the pairs below the threshold takes each that
// has a clustered end: its free end joins, or two trees merge; (3) if the seeds are still free they
// become a cluster. Without seeds the threshold is beyond everything, and that walk is the last.
//
// What the table would hold follows from the state of the locations:
//
// - A pair needs no mark when it is done. Its ends are then in one tree and stay there, and a pair
//   with both ends in one tree changes nothing. A pair that does change something has therefore
//   never been taken. So it does not matter where the first pair is that is not done.
// - The first free pair always has a partner while another location is free: if its ends differ,
//   its own reverse comes after it; if it is a location with two points, any pair with another free
//   location does. So the search for seeds never needs a second candidate.
// - A location of three points or more paired with itself comes before all else and is a seed by
//   itself.
// - The last walk leaves one tree: at most one location is free when it begins, every distance is
//   below the last threshold, and two trees have a pair between them. A further round over coarser
//   cells, with hull vertices put back, finds no pair that changes anything.
//
// A walk needs the first pair after its place that has a clustered end and leads out of that end's
// tree. Each clustered location keeps its own first pair in a heap. These pairs only move back as
// trees grow, so a pair that is now within one tree is replaced when it reaches the head. Pairs
// that become useful after the walk has passed them wait for the next walk: these have two free
// ends and are below the threshold of a location of two points.

#include "ranges/clusters_growth.h"

#include <queue>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvane {
namespace {

/// A pair and the location that keeps it.
struct KeptEdge {
  ClusterEdge edge;
  int holder = NoIndex;
};

struct Later {
  const ClusterLocations* locations;
  bool operator()(const KeptEdge& x, const KeptEdge& y) const {
    return Precedes(*locations, y.edge, x.edge);
  }
};

/// The pair that comes first is at the head.
using EdgeHeap = std::priority_queue<KeptEdge, std::vector<KeptEdge>, Later>;

struct Seeds {
  double threshold = BeyondAllEdges;  ///< metres
  ClusterEdge first;                  ///< none if nothing can seed
  ClusterEdge second;
};

/// Pairs between two checks whether the user has cancelled.
constexpr unsigned PairsOfStep = 256;

class Growth {
 public:
  Growth(const ClusterLocations& locations, const LocationIndex& index, const ClusterSets& sets,
         ClusterForest& forest, Progress* progress)
      : locations_(locations),
        index_(index),
        sets_(sets),
        forest_(forest),
        kept_(locations.size()),
        foreign_(Later{&locations}),
        free_(Later{&locations}),
        freeCount_(locations.size()),
        steps_(progress, WorkStage::Analyzing, locations.size(), PairsOfStep) {
    for (size_t i = 0; i < locations.size(); ++i) {
      const int location = static_cast<int>(i);
      if (locations[i].count >= 2) repeated_.push_back(location);
      KeepFree(location);
    }
    std::sort(repeated_.begin(), repeated_.end(),
              [&](int x, int y) { return Precedes(locations, WithItself(x), WithItself(y)); });
  }

  void ProcessEdges() {
    while (GoesOn()) {
      const Seeds seeds = ChooseSeed();
      Sweep(seeds.threshold);
      if (seeds.first.IsNone()) return;
      if (IsFree(seeds.first) && IsFree(seeds.second)) Seed(seeds);
    }
  }

 private:
  bool GoesOn() { return steps_.Next(locations_.size() - freeCount_); }

  const ClusterPoint& At(int location) const { return locations_[static_cast<size_t>(location)]; }
  bool IsFree(int location) const { return At(location).cluster == NoIndex; }
  bool IsFree(const ClusterEdge& edge) const { return IsFree(edge.a) && IsFree(edge.b); }
  static ClusterEdge WithItself(int location) { return {0, location, location}; }
  bool IsBehind(const ClusterEdge& edge, const ClusterEdge& other) const {
    return Precedes(locations_, other, edge);
  }

  // --- Seeds ---

  void KeepFree(int location) {
    const ClusterEdge edge = index_.FirstFreeEdge(location, BeforeAllEdges);
    if (!edge.IsNone()) free_.push({edge, location});
  }

  /// The first of all pairs with two free ends, or none.
  ClusterEdge FirstFreeEdge() {
    while (!free_.empty()) {
      const KeptEdge head = free_.top();
      if (IsFree(head.edge)) break;
      free_.pop();
      if (IsFree(head.holder)) KeepFree(head.holder);
    }
    while (nextRepeated_ < repeated_.size() && !IsFree(repeated_[nextRepeated_])) ++nextRepeated_;
    ClusterEdge first = {BeyondAllEdges, NoIndex, NoIndex};
    if (!free_.empty()) first = free_.top().edge;
    if (nextRepeated_ < repeated_.size()) {
      const ClusterEdge own = WithItself(repeated_[nextRepeated_]);
      if (IsBehind(first, own)) first = own;
    }
    return first;
  }

  /// The first free pair after `edge` that shares an end with it, or none.
  ClusterEdge FirstPartner(const ClusterEdge& edge) const {
    ClusterEdge first = {BeyondAllEdges, NoIndex, NoIndex};
    for (const int end : {edge.a, edge.b}) {
      const ClusterEdge own = WithItself(end);
      if (At(end).count >= 2 && IsBehind(own, edge) && IsBehind(first, own)) first = own;
      const ClusterEdge next = index_.FirstFreeEdge(end, edge);
      if (IsBehind(first, next)) first = next;
    }
    return first;
  }

  Seeds ChooseSeed() {
    const ClusterEdge first = FirstFreeEdge();
    if (first.IsNone()) return {};
    if (first.length == 0 && At(first.a).count >= 3) return {0, first, first};
    const ClusterEdge second = FirstPartner(first);
    if (second.IsNone()) return {};
    return {(first.length + second.length) / 2, first, second};
  }

  void Seed(const Seeds& seeds) {
    forest_.SeedCluster(seeds.first, seeds.second);
    const int ends[] = {seeds.first.a, seeds.first.b, seeds.second.a, seeds.second.b};
    for (size_t i = 0; i < std::size(ends); ++i) {
      if (std::find(ends, ends + i, ends[i]) == ends + i) Enter(ends[i]);
    }
  }

  // --- Walks ---

  void Keep(int location, const ClusterEdge& edge) {
    kept_[static_cast<size_t>(location)] = edge;
    if (!edge.IsNone()) foreign_.push({edge, location});
  }

  /// Finds the first pair of a location that a walk still meets. If the walk has passed an earlier
  /// one, the location is checked again after the walk.
  void KeepFirst(int location) {
    ClusterEdge edge = index_.FirstForeignEdge(location, BeforeAllEdges);
    if (!edge.IsNone() && !IsBehind(edge, passed_)) {
      passedOver_.push_back(location);
      edge = index_.FirstForeignEdge(location, passed_);
    }
    Keep(location, edge);
  }

  /// Adds a location that has just joined a cluster.
  void Enter(int location) {
    --freeCount_;
    KeepFirst(location);
  }

  bool LeadsOut(const KeptEdge& kept) const {
    const int other = kept.edge.a == kept.holder ? kept.edge.b : kept.edge.a;
    return IsFree(other) || sets_.TopOf(At(other).cluster) != sets_.TopOf(At(kept.holder).cluster);
  }

  void TakeUp(const ClusterEdge& edge) {
    if (IsFree(edge.a)) {
      forest_.JoinCluster(At(edge.b).cluster, edge.a);
      Enter(edge.a);
    } else if (IsFree(edge.b)) {
      forest_.JoinCluster(At(edge.a).cluster, edge.b);
      Enter(edge.b);
    } else {
      forest_.MergeClusters(At(edge.a).cluster, At(edge.b).cluster);
    }
  }

  void Sweep(double threshold) {
    while (!foreign_.empty() && foreign_.top().edge.length < threshold) {
      if ((freeCount_ == 0 && forest_.CountTops() == 1) || !GoesOn()) break;
      const KeptEdge head = foreign_.top();
      foreign_.pop();
      const ClusterEdge& current = kept_[static_cast<size_t>(head.holder)];
      if (current.a != head.edge.a || current.b != head.edge.b) continue;
      if (LeadsOut(head)) {
        passed_ = head.edge;
        TakeUp(head.edge);
      }
      Keep(head.holder, index_.FirstForeignEdge(head.holder, passed_));
    }
    passed_ = BeforeAllEdges;
    for (const int location : passedOver_) KeepFirst(location);
    passedOver_.clear();
  }

  const ClusterLocations& locations_;
  const LocationIndex& index_;
  const ClusterSets& sets_;
  ClusterForest& forest_;

  std::vector<ClusterEdge> kept_;  // by clustered location; what else is in the heap is void
  EdgeHeap foreign_;
  ClusterEdge passed_ = BeforeAllEdges;  // the last pair that the walk took up
  std::vector<int> passedOver_;

  EdgeHeap free_;
  size_t freeCount_ = 0;
  std::vector<int> repeated_;  // locations of two points or more, in the order of their own pairs
  size_t nextRepeated_ = 0;

  ProgressSteps steps_;
};

}  // namespace

void GrowClusters(const ClusterLocations& locations, const LocationIndex& index,
                  const ClusterSets& sets, ClusterForest& forest, Progress* progress) {
  Growth(locations, index, sets, forest, progress).ProcessEdges();
}

}  // namespace orvane
