#pragma once

#include "editing/cell_model.h"
#include "editing/editor_origin.h"
#include "editing/trail_columns.h"
#include "editing/trail_form.h"
#include "editing/trail_rows.h"
#include "model/map.h"
#include "model/unused_records.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

class Messages;

/// A trail as titles and the names of edits have it: its name, or its date and focal animal.
std::string ShortNameOf(const Trail& trail);

/// The trail editor without its window: a private copy of a trail as form and rows. The map is
/// changed only by `SaveTrailEditor`.
class TrailEditor final : public CellModel {
 public:
  /// \param map    of the window that opens the editor
  /// \param trail  the trail to edit, of `map` or a map below it; null for a new one
  TrailEditor(Map& map, Trail* trail);
  // Either can point into its own copy of a trail that is lost.
  TrailEditor(const TrailEditor&) = delete;
  TrailEditor& operator=(const TrailEditor&) = delete;

  Map& WindowMap() const { return map_; }
  /// \return null for a trail that is not made yet
  Trail* Edited() const { return trail_; }

  /// Turns the editor of a trail that was deleted into that of a new one, which gets the looks and the
  /// note of the deleted one.
  void MakeAgain();
  /// Takes `MakeAgain` back, for a trail that is not made after all.
  void LeaveDeleted();
  /// \return the deleted trail after `MakeAgain`, or null
  const Trail* Deleted() const { return deleted_; }
  /// \return the points that the deleted trail had when the editor was opened; none if its map was
  ///         read again since
  const std::vector<Point*>& DeletedPoints() const { return deletedPoints_; }

  /// \return what the editor was opened with; nothing for a new trail
  const std::optional<TrailOrigin>& Origin() const { return origin_; }
  /// Makes this the continuation of an editor of an earlier run, opened with `origin`. Call it before
  /// anything is typed. If this was made without a trail, it becomes the editor of one that was
  /// deleted.
  void TakeOrigin(const TrailOrigin& origin);

  /// The title of the window.
  std::string Title() const;

  const TrailForm& Form() const { return form_; }
  /// \return the colour that the trail had when the editor was opened; none for a new trail
  Color OpenedColor() const { return openedColor_; }
  /// Types a text into a field that is enabled.
  void SetField(TrailField field, std::string_view text);

  /// True once the user has changed something.
  bool IsChanged() const { return changed_; }

  EntryMode Mode() const { return mode_; }
  /// A mode can't be entered once readings of the kind that it hides exist; mixture always can.
  bool IsModeEnabled(EntryMode mode) const;
  /// Chooses other columns; no row changes.
  void SetMode(EntryMode mode);
  /// \return true if clicks on the map can add rows
  bool TakesClicks() const { return mode_ != EntryMode::Relative && !IsReadOnly(); }

  const std::vector<TrailRow>& Rows() const { return rows_; }
  /// Puts back rows that were kept for an editor that was lost.
  void RestoreRows(std::vector<TrailRow> rows);

  /// Appends a GPS row, a copy of the last row otherwise.
  /// \param place  degrees; its altitude in metres is cut to a whole number
  void AddGpsRow(const LatLon& place);

  const std::vector<CellColumn>& Columns() const override { return columns_; }
  size_t RowCount() const override { return rows_.size(); }
  std::string GetCell(size_t row, size_t column) const override;
  bool SetCell(size_t row, size_t column, std::string_view text) override;
  /// A row can be inserted before the first only; elsewhere typing in the blank row makes one.
  bool InsertRow(size_t row) override;
  void DeleteRow(size_t row) override;
  void MoveRow(size_t from, size_t to) override;
  /// True for a contour.
  bool IsReadOnly() const override;

  /// \return true if the trail's identity, points or readings are no longer those that it had when
  ///         the editor was opened
  bool WasChangedElsewhere() const;

  /// Call after maps were read again, as long as what they held before is there: finds the trail
  /// again as `FindAgain` does. One that is not there counts as deleted.
  void FollowReread();

 private:
  Messages& TheMessages() const;
  bool IsLost() const { return lost_ && trail_ == &*lost_; }
  void KeepLost(const Trail& trail);
  void KeepRecords(UnusedRecords& records) const;
  TrailRow CopyOfLast() const;
  void NoteReadingsOf(const TrailRow& row);

  Map& map_;
  Trail* trail_;
  Trail* deleted_ = nullptr;
  std::vector<Point*> deletedPoints_;
  std::optional<Trail> lost_;  ///< a copy without points of a trail that no map has; for the above
  TrailForm form_;
  Color openedColor_ = NoColor;
  std::vector<TrailRow> rows_;
  size_t smColumns_;
  EntryMode mode_ = EntryMode::Relative;
  std::vector<CellColumn> columns_;
  bool changed_ = false;
  bool hasGps_ = false;      ///< a fix exists: the relative columns would hide it
  bool hasCompass_ = false;  ///< a compass reading exists, likewise for the GPS columns
  std::optional<TrailOrigin> origin_;
  std::vector<Point*> openedPoints_;  ///< when the editor was opened, unless they may be gone since
  /// Keeps the trail and the points that it had, also if both are deleted.
  std::shared_ptr<const RecordHolders::Keep> kept_;
};

}  // namespace orvane
