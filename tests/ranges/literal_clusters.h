#pragma once

// The clusters of a range in the plainest way: a table of all ordered pairs of locations, sorted,
// and walked from its start over and over. It is slow and takes the memory of the table, and it
// has nothing in common with `ClusterPoints` but the geometry kit, so it is what that is compared
// with. Tables of more than a few hundred locations are not for tests.

#include "geometry/convex_hull.h"
#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "model/records.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <map>
#include <memory>
#include <vector>

namespace orvane::literal {

struct LiteralCluster;

/// One distinct location.
struct LiteralPoint {
  double north = 0;
  double east = 0;
  Point* point = nullptr;
  int count = 1;
  LiteralCluster* cluster = nullptr;
  int step = 0;
};

struct LiteralBounds {
  double maxNorth = 0;
  double minNorth = 0;
  double maxEast = 0;
  double minEast = 0;

  void Widen(const LiteralBounds& other) {
    maxNorth = std::max(maxNorth, other.maxNorth);
    minNorth = std::min(minNorth, other.minNorth);
    maxEast = std::max(maxEast, other.maxEast);
    minEast = std::min(minEast, other.minEast);
  }
  bool Overlaps(const LiteralBounds& other) const {
    return maxNorth >= other.minNorth && minNorth <= other.maxNorth && maxEast >= other.minEast &&
           minEast <= other.maxEast;
  }
  bool Holds(const LiteralPoint& point) const {
    return point.north <= maxNorth && point.north >= minNorth && point.east <= maxEast &&
           point.east >= minEast;
  }
};

struct LiteralCluster {
  std::list<LiteralPoint*> points;      ///< newest first
  std::list<LiteralCluster*> children;  ///< newest first
  LiteralCluster* parent = nullptr;
  int mergedAt = NeverMerged;
  int madeAt = 0;
  LiteralBounds bounds;
};

struct LiteralEdge {
  double length = 0;
  LiteralPoint* a = nullptr;
  LiteralPoint* b = nullptr;
  bool done = false;
};

/// One run. `Run` may be called once.
class LiteralClusters {
 public:
  explicit LiteralClusters(Messages& messages) : messages_(messages) {}

  std::unique_ptr<ClusterTree> Run(PointSpan points) {
    if (!BuildClusterTree(points)) return nullptr;
    auto tree = std::make_unique<ClusterTree>();
    tree->steps = steps_;
    std::map<const LiteralCluster*, Cluster*> made;
    for (const LiteralCluster& cluster : all_) {
      Cluster& record = tree->clusters.emplace_back();
      record.madeAt = cluster.madeAt;
      record.mergedAt = cluster.mergedAt;
      made[&cluster] = &record;
    }
    for (const LiteralCluster& cluster : all_) {
      if (cluster.parent != nullptr) made[&cluster]->parent = made[cluster.parent];
    }
    for (size_t level = 0; level < ClusterLevels; ++level) {
      const int limit = (static_cast<int>(level) + 1) * steps_ / 20;
      for (const LiteralCluster& cluster : all_) {
        if (cluster.madeAt >= limit || cluster.mergedAt <= limit) continue;
        Cluster& record = *made[&cluster];
        record.hull[level] = ClusterHull(cluster, limit);
        record.area[level] = PolygonArea(record.hull[level]);
      }
    }
    return tree;
  }

 private:
  using Cell = std::list<LiteralPoint*>;  // newest first

  bool BuildClusterTree(PointSpan points) {
    if (points.empty()) return false;
    const LatLon mean = MeanPlace(points);
    ProjectPoints(points, mean.lon, mean.lat);
    const Meters& first = points.front()->projected;
    LiteralBounds& bounds = bounds_;
    bounds = {first.north, first.north, first.east, first.east};
    for (const Point* point : points) {
      const Meters& place = point->projected;
      bounds.Widen({place.north, place.north, place.east, place.east});
    }
    if (bounds.maxNorth - bounds.minNorth < 1e-6) return false;
    if (bounds.maxEast - bounds.minEast < 1e-6) return false;

    size_ = 16;
    cells_.assign(size_ * size_, {});
    for (Point* point : points) AddLocation(*point);
    for (;;) {
      BuildEdges();
      ProcessEdges();
      if (size_ == 1) break;
      MergeRectangles();
    }
    return true;
  }

  Cell& CellOf(const LiteralPoint& location) {
    const auto size = static_cast<double>(size_);
    const double height = (bounds_.maxNorth - bounds_.minNorth) / size;
    const double width = (bounds_.maxEast - bounds_.minEast) / size;
    const auto clamped = [&](double cell) {
      return static_cast<size_t>(std::clamp(std::trunc(cell), 0.0, size - 1));
    };
    const size_t row = clamped((location.north - bounds_.minNorth) / height);
    const size_t column = clamped((location.east - bounds_.minEast) / width);
    return cells_[row * size_ + column];
  }

  void AddLocation(Point& point) {
    LiteralPoint location;
    location.north = point.projected.north;
    location.east = point.projected.east;
    location.point = &point;
    Cell& cell = CellOf(location);
    for (LiteralPoint* old : cell) {
      if (old->north != location.north || old->east != location.east) continue;
      ++old->count;
      return;
    }
    locations_.push_back(location);
    cell.push_front(&locations_.back());
    ofPoint_[&point] = &locations_.back();
  }

  void BuildEdges() {
    edges_.clear();
    for (const Cell& first : cells_) {
      for (const Cell& second : cells_) {
        for (LiteralPoint* a : first) {
          for (LiteralPoint* b : second) {
            if (a == b && a->count < 2) continue;
            if (a->cluster != nullptr && a->cluster == b->cluster) continue;
            const double north = a->north - b->north;
            const double east = a->east - b->east;
            edges_.push_back({std::sqrt(north * north + east * east), a, b, false});
          }
        }
      }
    }
    std::stable_sort(edges_.begin(), edges_.end(), [](const LiteralEdge& x, const LiteralEdge& y) {
      if (x.length != y.length) return x.length < y.length;
      return x.length == 0 && x.a->count > y.a->count;
    });
    firstOpen_ = 0;
  }

  void ProcessEdges() {
    for (;;) {
      ChooseSeed();
      size_t e = firstOpen_;
      while (e < edges_.size() && edges_[e].length < threshold_) {
        SweepEdge(e);
        ++e;
      }
      if (e == edges_.size() || seedA_ == NoEdge) return;
      LiteralEdge& a = edges_[seedA_];
      LiteralEdge& b = edges_[seedB_];
      if (!a.done && !b.done && IsFree(a) && IsFree(b)) SeedCluster();
    }
  }

  void SweepEdge(size_t e) {
    LiteralEdge& edge = edges_[e];
    if (edge.done || (edge.a->cluster == nullptr && edge.b->cluster == nullptr)) return;
    if (edge.a->cluster == nullptr) {
      JoinCluster(*edge.b->cluster, *edge.a);
    } else if (edge.b->cluster == nullptr) {
      JoinCluster(*edge.a->cluster, *edge.b);
    } else if (edge.a->cluster != edge.b->cluster) {
      MergeClusters(*edge.a->cluster, *edge.b->cluster);
    }
    edge.done = true;
    if (e == firstOpen_) SkipDone();
  }

  void SkipDone() {
    while (firstOpen_ < edges_.size() && edges_[firstOpen_].done) ++firstOpen_;
  }

  static bool IsFree(const LiteralEdge& edge) {
    return edge.a->cluster == nullptr && edge.b->cluster == nullptr;
  }
  static bool ShareEnd(const LiteralEdge& x, const LiteralEdge& y) {
    return x.a == y.a || x.a == y.b || x.b == y.a || x.b == y.b;
  }

  void ChooseSeed() {
    for (size_t e = firstOpen_; e < edges_.size() && edges_[e].length == 0; ++e) {
      // An edge that is taken up already could never seed: the walk would not end.
      if (edges_[e].done || edges_[e].a->count < 3 || !IsFree(edges_[e])) continue;
      threshold_ = 0;
      seedA_ = seedB_ = e;
      return;
    }
    double best = 1e17;
    size_t chosenA = 0;
    size_t chosenB = 0;
    for (size_t i = 0; i < edges_.size() && edges_[i].length < best; ++i) {
      if (edges_[i].done || !IsFree(edges_[i])) continue;
      for (size_t j = i + 1; j < edges_.size() && edges_[i].length + edges_[j].length < best; ++j) {
        if (edges_[j].done || !IsFree(edges_[j]) || !ShareEnd(edges_[i], edges_[j])) continue;
        best = edges_[i].length + edges_[j].length;
        chosenA = i;
        chosenB = j;
        break;
      }
      if (i == chosenA) break;
    }
    if (best == 1e17) {
      threshold_ = 1e17;
      seedA_ = seedB_ = NoEdge;
      return;
    }
    threshold_ = best / 2;
    seedA_ = chosenA;
    seedB_ = chosenB;
  }

  void SeedCluster() {
    LiteralEdge& a = edges_[seedA_];
    LiteralEdge& b = edges_[seedB_];
    all_.emplace_back();
    LiteralCluster& cluster = all_.back();
    if (!ShareEnd(a, b)) NoteInternalError(messages_, "Bad cluster creation");
    cluster.bounds = {a.a->north, a.a->north, a.a->east, a.a->east};
    for (LiteralPoint* point : {a.a, a.b, b.a, b.b}) {
      if (point->cluster != &cluster) AddClusterPoint(cluster, *point);
    }
    cluster.madeAt = steps_;
    ++steps_;
    a.done = b.done = true;
    if (seedA_ == firstOpen_ || seedB_ == firstOpen_) {
      SkipDone();
      SkipDone();
    }
  }

  void AddClusterPoint(LiteralCluster& cluster, LiteralPoint& point) {
    if (point.cluster != nullptr) {
      NoteInternalError(messages_, "Point added to 2 different clusters");
    }
    point.cluster = &cluster;
    cluster.points.push_front(&point);
    point.step = steps_;
    cluster.bounds.Widen({point.north, point.north, point.east, point.east});
  }

  void JoinCluster(LiteralCluster& cluster, LiteralPoint& point) {
    AddClusterPoint(cluster, point);
    ++steps_;
    AbsorbOverlaps(cluster);
  }

  static LiteralCluster& TopOf(LiteralCluster& cluster) {
    LiteralCluster* top = &cluster;
    while (top->parent != nullptr) top = top->parent;
    return *top;
  }

  static size_t CountPoints(const LiteralCluster& cluster) {
    size_t count = cluster.points.size();
    for (const LiteralCluster* child : cluster.children) count += CountPoints(*child);
    return count;
  }

  void MergeClusters(LiteralCluster& a, LiteralCluster& b) {
    LiteralCluster* larger = &TopOf(a);
    LiteralCluster* smaller = &TopOf(b);
    if (larger == smaller) return;
    if (CountPoints(*larger) < CountPoints(*smaller)) std::swap(larger, smaller);
    smaller->parent = larger;
    larger->children.push_front(smaller);
    smaller->mergedAt = steps_;
    ++steps_;
    larger->bounds.Widen(smaller->bounds);
    AbsorbOverlaps(*larger);
  }

  void AbsorbOverlaps(LiteralCluster& cluster) {
    LiteralCluster& top = TopOf(cluster);
    Poly topHull;
    for (LiteralCluster& other : all_) {
      if (other.parent != nullptr || &other == &top || !other.bounds.Overlaps(top.bounds)) continue;
      if (topHull.empty()) {
        topHull = ClusterHull(top, steps_);
        if (topHull.empty()) return;
      }
      bool hit = AnyInside(other, top.bounds, topHull);
      if (!hit) {
        const Poly otherHull = ClusterHull(other, steps_);
        hit = AnyInside(top, other.bounds, otherHull);
      }
      if (!hit) continue;
      --steps_;
      MergeClusters(other, top);
      return;
    }
  }

  static bool AnyInside(const LiteralCluster& cluster, const LiteralBounds& bounds,
                        const Poly& hull) {
    for (const LiteralPoint* point : cluster.points) {
      const Meters& place = point->point->projected;
      if (bounds.Holds(*point) && PointInPolygon(place.east, place.north, hull)) return true;
    }
    for (const LiteralCluster* child : cluster.children) {
      if (child->bounds.Overlaps(bounds) && AnyInside(*child, bounds, hull)) return true;
    }
    return false;
  }

  static void PointListFromCluster(const LiteralCluster& cluster, int limit,
                                   std::vector<Point*>& list) {
    for (const LiteralPoint* point : cluster.points) {
      if (point->step < limit) list.push_back(point->point);
    }
    for (const LiteralCluster* child : cluster.children) {
      if (child->mergedAt < limit) PointListFromCluster(*child, limit, list);
    }
  }

  Poly ClusterHull(const LiteralCluster& cluster, int limit) {
    std::vector<Point*> list;
    PointListFromCluster(cluster, limit, list);
    // Each point is pushed on the front, so the last one heads the list.
    std::reverse(list.begin(), list.end());
    const auto result = ConvexHull(list, messages_);
    return result ? result->hull : Poly{};
  }

  void MergeRectangles() {
    const size_t oldSize = size_;
    std::vector<Cell> old(size_ * size_ / 4);
    size_ /= 2;
    old.swap(cells_);
    for (size_t row = 0; row < oldSize; ++row) {
      for (size_t column = 0; column < oldSize; ++column) {
        for (LiteralPoint* location : old[row * oldSize + column]) {
          if (location->cluster != nullptr) continue;
          cells_[row / 2 * size_ + column / 2].push_front(location);
        }
      }
    }
    for (LiteralCluster& cluster : all_) {
      if (cluster.parent != nullptr) continue;
      for (Point* vertex : ClusterHull(cluster, steps_)) {
        LiteralPoint* location = ofPoint_[vertex];
        CellOf(*location).push_front(location);
      }
    }
    firstOpen_ = 0;
  }

  static constexpr size_t NoEdge = SIZE_MAX;

  Messages& messages_;
  std::deque<LiteralPoint> locations_;
  std::map<const Point*, LiteralPoint*> ofPoint_;
  LiteralBounds bounds_;
  size_t size_ = 0;
  std::vector<Cell> cells_;
  std::vector<LiteralEdge> edges_;
  size_t firstOpen_ = 0;
  std::list<LiteralCluster> all_;  // in order of creation
  int steps_ = 0;
  double threshold_ = 0;
  size_t seedA_ = NoEdge;
  size_t seedB_ = NoEdge;
};

}  // namespace orvane::literal
