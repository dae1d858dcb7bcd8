#pragma once

#include "model/map.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

namespace orvane {

/// Finds the records of the open maps to which nothing leads any more, and frees them.
///
/// At first these are all records that no map holds in its lists, and to which no listed record
/// leads. What points to records from elsewhere keeps them; then the rest can go.
class UnusedRecords {
 public:
  /// Overwrites `PointVisited`.
  explicit UnusedRecords(Workspace& workspace);

  /// Keeps a record, and all to which it leads. It is looked at only if it is among the unused ones,
  /// so it can be null, and it can be one that is gone.
  void Keep(const Point* point);
  void Keep(const Trail* trail);
  void Keep(const Range* range);
  void Keep(const Grid* grid);
  void Keep(const GridShade* shade);

  /// Keeps all to which the records of a map lead that is not open: one that holds what an open map
  /// held before.
  void KeepLeadsOf(const Map& map);

  /// \return the memory of the unused records that were kept so far, in bytes
  size_t KeptBytes() const { return keptBytes_; }

  /// Frees what was not kept, and with it the memory of its texts and readings. If memory runs out,
  /// it frees nothing, and can be called again.
  void Free();

 private:
  void KeepLeadsOfLists(const Map& map);
  template <typename Record>
  bool TakeFromUnused(const Record* record);
  void KeepLeads(const Point& point);
  void KeepLeads(const Range& range);
  void FollowPoints();
  template <typename Points>
  void KeepAll(const Points& points) {
    for (const Point* point : points) Keep(point);
  }

  Workspace& workspace_;
  std::unordered_set<const void*> unused_;
  std::vector<const Point*> kept_;  ///< points whose leads are not kept yet
  size_t keptBytes_ = 0;
  bool isFollowing_ = false;
};

/// Those who point to records from outside the maps, also if an edit has removed these: open editors,
/// for example.
class RecordHolders {
 public:
  /// Keeps the records to which one of them points.
  using Keep = std::function<void(UnusedRecords& records)>;

  /// \return a token: `keep` is called as long as it lives
  [[nodiscard]] std::shared_ptr<const Keep> Add(Keep keep);

  void KeepAll(UnusedRecords& records);

 private:
  std::vector<std::weak_ptr<const Keep>> holders_;
};

}  // namespace orvane
