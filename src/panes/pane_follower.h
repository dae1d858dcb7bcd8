#pragma once

#include "editing/edit_history.h"
#include "panes/row_memory.h"
#include "view/map_window.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

namespace orvane {

/// Keeps the rows of a view up to date with `FollowEdit`, and remembers what each step did to them.
/// After an undo or a redo, rows that come back look as they did when they were removed, and rows
/// to which the step gave another look get the former one back. All other rows keep what they
/// have; so do ticks that a visibility dialog set. Where maps are read again, rows are found again by
/// their texts (`RowMemory`).
class PaneFollower : public EditListener {
 public:
  /// Follows the history from now on. Both must outlive it.
  PaneFollower(MapWindow& view, EditHistory& history);
  ~PaneFollower() override;
  PaneFollower(const PaneFollower&) = delete;
  PaneFollower& operator=(const PaneFollower&) = delete;

  /// \return true if the last edit, undo or redo can have changed what the view shows
  bool ShowsChange() const { return showsChange_; }
  /// \return how many steps it remembers
  size_t Remembered() const { return steps_.size(); }

  void BeforeEdit() override;
  void BeforeReread() override;
  void AfterEdit(const EditNews& news) override;
  void StepDropped(std::uint64_t step) override { steps_.erase(step); }

 private:
  struct TrailLook {
    int rank = 0;  ///< among rows of equal text on its level
    std::string text;
    bool visible = false;
    bool open = false;
    bool selected = false;
    bool filled = false;
    LineStyle lineStyle = LineStyle::Unset;
    LabelMode labelMode = LabelMode::Unset;
    int fillPattern = 0;
    MarkStyle markStyle = MarkStyle::None;
    Color color = 0;
  };
  struct RangeLook {
    int rank = 0;  ///< likewise
    bool visible = false;
    bool selected = false;
    int shading = 0;
    std::array<bool, 3> showSm{};
    RangeDrawMode drawMode = RangeDrawMode::Clear;
    std::uint32_t clusterMask = 0;
    std::uint32_t estimateMask = 0;
    Color color = 0;
  };
  /// A range, or the two of an overlap.
  using RangeKey = std::array<const Range*, 2>;
  struct Looks {
    std::unordered_map<const Trail*, TrailLook> trails;
    std::map<std::string, TrailLook> groups;  ///< by the texts from the top
    std::map<RangeKey, RangeLook> ranges;
  };
  struct StepLooks {
    bool madeTrails = false;  ///< the step made all rows of trails again
    bool madeRanges = false;  ///< the same of ranges
    Looks gone;               ///< of rows that the step, or its undo, removed
    Looks before;             ///< of rows that the step changed, before it
    Looks after;              ///< of the same rows, after it
    /// Of a step that read maps again: rows that it, its undo or its redo met, as they were then.
    RowMemory rows;
  };

  template <typename Row>
  static auto FieldsOf(Row& row);
  template <typename Row>
  static auto StyleOf(Row& row);
  template <typename Visit>
  static void VisitLevel(std::list<TrailPanelRow>& rows, const std::string& above,
                         const Visit& visit);

  Looks LooksNow();
  void NoteGone(const Looks& now, Looks& gone) const;
  void NoteChanged(const Looks& now, StepLooks& step) const;
  void FollowRows(const EditNews& news);
  void BringBack(const StepLooks& step, bool undone);
  void FollowReread(const EditNews& news);
  void KeepRecords(UnusedRecords& records) const;

  MapWindow& view_;
  EditHistory& history_;
  Looks before_;      ///< when the edit, undo or redo began
  RowMemory memory_;  ///< when maps were about to be read again
  std::unordered_map<std::uint64_t, StepLooks> steps_;
  bool showsChange_ = false;
  /// Looks and the trail that Find has marked are found by address, so no other record may get that of
  /// one which can come back.
  std::shared_ptr<const RecordHolders::Keep> kept_;
};

}  // namespace orvane
