#include "editing/trail_editor.h"

#include "base/messages.h"
#include "base/utf8.h"
#include "editing/trail_cells.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <utility>

namespace orvane {
namespace {

/// As much of a name as a title shows.
constexpr size_t TitleBytes = 20;

/// A row made below another takes everything but what belongs to one point.
TrailRow CopyForNewPoint(const TrailRow& row) {
  TrailRow copy = row;
  copy.name.clear();
  copy.comment.reset();
  copy.mark = {};
  return copy;
}

}  // namespace

std::string ShortNameOf(const Trail& trail) {
  const auto cut = [](const std::string& text) { return std::string(CutText(text, TitleBytes)); };
  if (trail.name) return cut(*trail.name);
  std::string text = FormatDate(trail.date);
  if (trail.focalAnimal) text += " " + cut(*trail.focalAnimal);
  return text;
}

TrailEditor::TrailEditor(Map& map, Trail* trail)
    : map_(map), trail_(trail), smColumns_(SmColumnsOf(map)) {
  if (trail_ != nullptr) {
    form_ = TrailForm(*trail_);
    openedColor_ = trail_->color;
    rows_ = LoadTrailRows(*trail_);
    openedPoints_ = trail_->points;
    origin_ = OriginOf(map, *trail_);
  }
  for (const TrailRow& row : rows_) NoteReadingsOf(row);
  EntryMode mode = EntryMode::Relative;
  if (hasGps_) mode = hasCompass_ ? EntryMode::Mixture : EntryMode::Gps;
  SetMode(mode);
  kept_ = map.workspace->holders.Add([this](UnusedRecords& records) { KeepRecords(records); });
}

void TrailEditor::KeepRecords(UnusedRecords& records) const {
  records.Keep(trail_);
  records.Keep(deleted_);
  for (const auto* points : {&deletedPoints_, &openedPoints_}) {
    for (const Point* point : *points) records.Keep(point);
  }
}

void TrailEditor::NoteReadingsOf(const TrailRow& row) {
  if (row.isGps) {
    hasGps_ = true;
  } else if (!row.isAltitude && !row.isRepeat) {
    hasCompass_ = true;
  }
}

Messages& TrailEditor::TheMessages() const { return map_.workspace->messages; }

void TrailEditor::MakeAgain() {
  deletedPoints_ = std::exchange(openedPoints_, {});  // a deleted trail has no points
  deleted_ = trail_;
  trail_ = nullptr;
}

void TrailEditor::LeaveDeleted() {
  openedPoints_ = std::exchange(deletedPoints_, {});
  trail_ = std::exchange(deleted_, nullptr);
}

std::string TrailEditor::Title() const {
  return trail_ == nullptr ? "New Trail" : "Trail: " + ShortNameOf(*trail_);
}

void TrailEditor::SetField(TrailField field, std::string_view text) {
  const std::string before = form_.Text(field);
  form_.SetText(field, text);
  changed_ = changed_ || form_.Text(field) != before;
}

bool TrailEditor::IsModeEnabled(EntryMode mode) const {
  if (mode == EntryMode::Relative) return !hasGps_;
  if (mode == EntryMode::Gps) return !hasCompass_;
  return true;
}

void TrailEditor::SetMode(EntryMode mode) {
  mode_ = mode;
  columns_ = TrailColumns(mode, map_);
}

void TrailEditor::RestoreRows(std::vector<TrailRow> rows) {
  rows_ = std::move(rows);
  for (const TrailRow& row : rows_) NoteReadingsOf(row);
  if (!IsModeEnabled(mode_)) SetMode(EntryMode::Mixture);
  changed_ = true;
}

TrailRow TrailEditor::CopyOfLast() const {
  return rows_.empty() ? TrailRow{} : CopyForNewPoint(rows_.back());
}

void TrailEditor::AddGpsRow(const LatLon& place) {
  TrailRow row = CopyOfLast();
  row.gps = {.lat = place.lat, .lon = place.lon};
  row.altitude = WholeMeters(place.altitude);
  row.isGps = true;
  row.isAltitude = false;
  row.isRepeat = false;
  rows_.push_back(std::move(row));
  hasGps_ = true;
  changed_ = true;
}

std::string TrailEditor::GetCell(size_t row, size_t column) const {
  if (row >= rows_.size()) return {};
  return TrailCellText(rows_[row], TrailColumnOf(mode_, column), smColumns_);
}

bool TrailEditor::SetCell(size_t row, size_t column, std::string_view text) {
  if (row > rows_.size() || (rows_.empty() && row != 0)) return true;
  const bool isNew = row == rows_.size();
  TrailRow changed = isNew ? CopyOfLast() : rows_[row];
  const TrailCellResult result =
      SetTrailCellText(changed, TrailColumnOf(mode_, column), smColumns_, text);
  if (result.refusal != nullptr) {
    NoteError(TheMessages(), result.refusal);
    return false;
  }
  if (isNew) {
    rows_.push_back(std::move(changed));
  } else {
    rows_[row] = std::move(changed);
  }
  hasGps_ = hasGps_ || result.gps;
  hasCompass_ = hasCompass_ || result.compass;
  changed_ = true;
  return true;
}

bool TrailEditor::InsertRow(size_t row) {
  if (row != 0) return false;
  rows_.insert(rows_.begin(), rows_.empty() ? TrailRow{} : CopyForNewPoint(rows_.front()));
  changed_ = true;
  return true;
}

void TrailEditor::DeleteRow(size_t row) {
  if (row >= rows_.size()) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  changed_ = true;
}

void TrailEditor::MoveRow(size_t from, size_t to) {
  if (from >= rows_.size()) return;
  MoveItem(rows_, from, to);
  changed_ = true;
}

bool TrailEditor::IsReadOnly() const { return trail_ != nullptr && IsContour(*trail_); }

void TrailEditor::KeepLost(const Trail& trail) {
  if (lost_ && &trail == &*lost_) return;
  lost_ = trail;
  lost_->points.clear();
}

void TrailEditor::TakeOrigin(const TrailOrigin& origin) {
  origin_ = origin;
  if (trail_ != nullptr) return;
  lost_ = origin.trail;
  trail_ = &*lost_;
  form_ = TrailForm(*trail_);
  openedColor_ = trail_->color;
}

void TrailEditor::FollowReread() {
  if (deleted_ != nullptr) {
    KeepLost(*deleted_);
    deleted_ = &*lost_;
    deletedPoints_.clear();
  }
  // One that only was deleted can come back.
  if (trail_ == nullptr || HoldsTrail(map_, *trail_) || IsRemoved(map_, *trail_)) return;
  TrailOrigin before = *origin_;
  if (!IsLost()) {
    // It may have changed since the editor was opened.
    before.trail = *trail_;
    before.equals.Own() = ContentMark(*trail_);
  }
  openedPoints_.clear();
  Trail* now = FindAgain(map_, before);
  if (now == nullptr) {
    KeepLost(*trail_);
    trail_ = &*lost_;
    return;
  }
  trail_ = now;
  if (!WasChangedElsewhere()) openedPoints_ = trail_->points;
}

bool TrailEditor::WasChangedElsewhere() const {
  return trail_ != nullptr && ContentMark(*trail_) != origin_->equals.Own();
}

}  // namespace orvane
