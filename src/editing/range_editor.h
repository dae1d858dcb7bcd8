#pragma once

#include "base/field_text.h"
#include "base/utf8.h"
#include "editing/cell_model.h"
#include "editing/editor_origin.h"
#include "editing/trail_form.h"
#include "model/map.h"
#include "model/unused_records.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A search key in the editor's table. A key that was never given a type has none.
struct RangeRow {
  std::optional<std::string> type;
  std::optional<std::string> focalAnimal;
  int timeFrom = 0;  ///< minutes after midnight; equal to `timeTo` for no limit
  int timeTo = 0;
  PackedDate dateFrom = 0;  ///< 0 for no limit
  PackedDate dateTo = 0;
};

enum RangeColumn : size_t {
  ColumnType = 0,
  ColumnFocal = 1,
  ColumnDateFrom = 2,
  ColumnDateTo = 3,
  ColumnTimeFrom = 4,
  ColumnTimeTo = 5,
};

/// The map that holds the range: `map`, or one in its basis chain.
/// \return null for a range that was deleted
Map* MapOfRange(Map& map, const Range* range);

/// The range editor without its window: a private copy of a range's name, colour and keys.
class RangeEditor final : public CellModel {
 public:
  /// \param map    of the window that opens the editor
  /// \param range  the range to edit; null for a new one
  /// \param color  of the row of the range; not looked at for a new one, which starts grey
  RangeEditor(Map& map, Range* range, Color color);
  // Either can point into its own copy of a range that is lost.
  RangeEditor(const RangeEditor&) = delete;
  RangeEditor& operator=(const RangeEditor&) = delete;

  Map& WindowMap() const { return map_; }
  Range* Edited() const { return range_; }
  std::string Title() const;
  /// Turns the editor of a range that was deleted into that of a new one, which gets the note of the
  /// deleted one.
  void MakeAgain();
  /// \return what the editor was opened with; nothing for a new range
  const std::optional<RangeOrigin>& Origin() const { return origin_; }
  /// Makes this the continuation of an editor of an earlier run, opened with `origin`. If this was
  /// made without a range, it becomes the editor of one that was deleted.
  void TakeOrigin(const RangeOrigin& origin);

  /// \return the note of the deleted range after `MakeAgain`, or nothing
  const std::optional<std::string>& KeptNote() const { return keptNote_; }

  const std::string& Name() const { return name_; }
  const std::string& ColorText() const { return color_; }
  /// Both fields take `MostFieldBytes`.
  void SetName(std::string_view text) { name_ = CutText(FieldText(text), MostFieldBytes); }
  void SetColorText(std::string_view text) { color_ = CutText(text, MostFieldBytes); }

  /// True once the table was changed; name and colour don't count.
  bool IsChanged() const { return changed_; }

  const std::vector<RangeRow>& Rows() const { return rows_; }
  /// Puts back rows that were kept for an editor that was lost.
  void RestoreRows(std::vector<RangeRow> rows);

  const std::vector<CellColumn>& Columns() const override;
  size_t RowCount() const override { return rows_.size(); }
  std::string GetCell(size_t row, size_t column) const override;
  bool SetCell(size_t row, size_t column, std::string_view text) override;
  /// A key can be inserted before the first only.
  bool InsertRow(size_t row) override;
  void DeleteRow(size_t row) override;
  void MoveRow(size_t from, size_t to) override;
  bool IsReadOnly() const override { return false; }

  /// \return true if name or keys of the range are no longer what they were when the editor was
  ///         opened
  bool WasChangedElsewhere() const;

  /// Call after maps were read again, as long as what they held before is there: finds the range
  /// again as `FindAgain` does. One that is not there counts as deleted.
  void FollowReread();

 private:
  void KeepLost(const std::optional<std::string>& name, const std::optional<std::string>& note);

  Map& map_;
  Range* range_;
  std::optional<Range> lost_;  ///< name and note of a range that no map has; for the above
  std::string name_;
  std::string color_;
  std::vector<RangeRow> rows_;
  bool changed_ = false;
  std::optional<std::string> keptNote_;
  std::optional<RangeOrigin> origin_;
  std::shared_ptr<const RecordHolders::Keep> kept_;  ///< keeps the range, also if it is deleted
};

}  // namespace orvane
