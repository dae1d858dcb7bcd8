#pragma once

#include "editing/edit_history.h"
#include "view/map_window.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>

namespace orvane {

/// Keeps the rows of a view up to date with `FollowEdit`, and remembers what each step did to them.
/// After an undo or a redo, rows that come back look as they did when they were removed, and rows
/// to which the step gave another colour or style get the former one back. All other rows keep
/// what they have.
class PaneFollower {
 public:
  /// Listens to the history from now on. Both must outlive it.
  PaneFollower(MapWindow& view, EditHistory& history);
  PaneFollower(const PaneFollower&) = delete;
  PaneFollower& operator=(const PaneFollower&) = delete;

 private:
  struct TrailLook {
    bool visible = false;
    bool open = false;
    bool selected = false;
    bool filled = false;
    int lineStyle = 0;
    int labelMode = 0;
    int fillPattern = 0;
    int markStyle = 0;
    Color color = 0;
  };
  struct RangeLook {
    bool visible = false;
    bool selected = false;
    int shading = 0;
    std::array<bool, 3> showSm{};
    int drawMode = 0;
    std::uint32_t clusterMask = 0;
    Color color = 0;
  };
  /// A row of a trail by its trail, a group by the texts from the top.
  struct TrailKey {
    const Trail* trail = nullptr;
    std::string path;
    friend bool operator<(const TrailKey& a, const TrailKey& b) {
      return std::tie(a.trail, a.path) < std::tie(b.trail, b.path);
    }
  };
  /// A range, or the two of an overlap.
  using RangeKey = std::array<const Range*, 2>;
  struct Looks {
    std::map<TrailKey, TrailLook> trails;
    std::map<RangeKey, RangeLook> ranges;
  };
  struct StepLooks {
    Looks gone;    ///< of rows that the step, or its undo, removed
    Looks before;  ///< of rows that the step changed, before it
    Looks after;   ///< of the same rows, after it
  };

  template <typename Row>
  static auto FieldsOf(Row& row);
  template <typename Row>
  static auto StyleOf(Row& row);
  template <typename Visit>
  static void VisitTrails(std::list<TrailPanelRow>& rows, const std::string& above, Visit visit);
  static RangeKey KeyOf(const RangePanelRow& row);

  Looks LooksNow();
  void NoteGone(const Looks& now, Looks& gone) const;
  void NoteChanged(const Looks& now, StepLooks& step) const;
  void BringBack(const StepLooks& step, bool undone);
  void Follow(const EditNews& news);

  MapWindow& view_;
  Looks before_;  ///< when the edit, undo or redo began
  std::map<std::uint64_t, StepLooks> steps_;
};

}  // namespace orvane
