#pragma once

#include "model/map.h"
#include "model/unused_records.h"
#include "ranges/analysis.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orvane {

/// How two states of some maps differ, for the code that shows them.
struct MapChange {
  bool trails = false;  ///< a trail was added or removed, or has other points or another identity
  bool points = false;  ///< a point was added or removed, or has other names, readings or notes
  bool survey = false;  ///< a point was added, removed or moved, or has other names or readings
  bool positions = false;  ///< a point was moved, placed, or has lost its place
  bool ranges = false;     ///< a range was added or removed, or has another name or other keys
  bool style = false;      ///< a trail has another colour, line, mark, fill or label mode
  bool settings = false;   ///< basis, deviation, grids, contour interval, comments, credits, ...

  bool Any() const { return trails || points || positions || ranges || style || settings; }

  /// Adds what differs in `other`.
  MapChange& operator|=(const MapChange& other);
};

/// The difference between two states of some maps: whatever a map file holds, and where each point
/// is. One of the states is in the maps, the delta holds what the other one has instead.
///
/// Records are identified by their addresses, so pointers to them stay valid: a trail, range or grid
/// that the present state does not have is kept in `Map::removed`, and a point in
/// `Map::pointStore`. They are freed when no delta leads to them any more (`Keep`).
class MapDelta {
 public:
  MapDelta();
  ~MapDelta();
  MapDelta(MapDelta&&) noexcept;
  MapDelta& operator=(MapDelta&&) noexcept;

  /// Exchanges the state of the maps with the one held here. A second call brings the first state
  /// back. Between the two nothing else may have changed these maps, except by deltas that were
  /// swapped back.
  ///
  /// What follows from the records is left to the caller (`RefreshAfterSwap`): the solver's sums, the
  /// analysis of the ranges. Trails lose their metrics where a point has moved.
  void Swap();

  /// \return true if both states are the same, even in what follows from the records
  bool IsEmpty() const { return maps_.empty(); }
  /// \return the maps in which something differs
  std::vector<Map*> Maps() const;
  /// \return true if something differs in `map`
  bool Touches(const Map& map) const;
  /// What differs in `map`, or in all of them. Nothing differs in a map that is not touched.
  MapChange ChangeOf(const Map& map) const;
  MapChange Change() const;

  /// \return true if in `map` nothing differs but ranges and the style of trails
  bool KeepsFollows(const Map& map) const;
  /// \return true if ranges or overlaps of `map` differ, or what their analysis has found
  bool DiffersInAnalysis(const Map& map) const;
  /// The ranges of `map` that both states have with another analysis, if `KeepsFollows`.
  std::vector<Range*> ChangedRanges(const Map& map) const;
  /// The overlaps that `map` had in the state that the last `Swap` brought back, in list order.
  std::vector<OverlapPair> OverlapsThen(const Map& map) const;

  /// Keeps the records to which this leads. After the maps were read again, those in `FormerContents`
  /// are safe there.
  void Keep(UnusedRecords& records) const;

  /// \return the memory that this holds, in bytes, close to the truth for large deltas
  size_t Bytes() const;

  /// Finds out what `RemovedBytes` returns. Call it after each `Swap`, while the maps are in the state
  /// that this leads from. If memory runs out, the former result stays.
  void Weigh();
  /// The memory of the records that the other state has and the present one has not, in bytes, close
  /// to the truth. Between them the deltas of all steps count each record that only they keep. Those
  /// that are in `FormerContents`, because the maps were read again, count there.
  size_t RemovedBytes() const;

  /// \return at least as much memory as `Swap` needs, in bytes
  size_t SwapBytes() const;

  struct OneMap;

 private:
  friend class MapSnapshot;
  const OneMap* Find(const Map& map) const;

  std::vector<std::unique_ptr<OneMap>> maps_;
};

/// Holds the state of all maps of a workspace at one moment, to find out later what has changed.
/// It takes a few hundred bytes a point, so it lives no longer than one edit.
class MapSnapshot {
 public:
  explicit MapSnapshot(Workspace& workspace);
  ~MapSnapshot();
  MapSnapshot(const MapSnapshot&) = delete;
  MapSnapshot& operator=(const MapSnapshot&) = delete;

  /// \return the difference between now and the time of the snapshot, which is empty from then on.
  ///         Maps that were made since are not in it. If memory runs out, it can be called again.
  MapDelta TakeDelta();

  struct OneMap;

 private:
  std::vector<std::unique_ptr<OneMap>> maps_;
};

}  // namespace orvane
