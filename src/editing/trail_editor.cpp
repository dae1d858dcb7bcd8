#include "editing/trail_editor.h"

#include "base/messages.h"
#include "base/utf8.h"
#include "editing/trail_cells.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <algorithm>

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

/// The readings of two points by their values, with bases of the same names.
bool HaveSameReadings(const Point& a, const Point& b) {
  return std::equal(a.measurements.begin(), a.measurements.end(), b.measurements.begin(),
                    b.measurements.end(), [](const Measurement& one, const Measurement& other) {
                      if ((one.base == nullptr) != (other.base == nullptr)) return false;
                      if (one.base != nullptr && one.base->name != other.base->name) return false;
                      Measurement likeOther = one;
                      likeOther.base = other.base;
                      return likeOther == other;
                    });
}

/// True if two trails, of a map before and after it was read again, have the same points.
bool HaveSamePoints(const Trail& a, const Trail& b) {
  return std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                    [](const Point* one, const Point* other) {
                      return one->name == other->name && HaveSameReadings(*one, *other);
                    });
}

Trail* FindSameTrail(Map& map, const Trail& trail) {
  if (IsContour(trail)) return nullptr;  // contours are made anew
  if (trail.name) return FindTrail(map, *trail.name);
  return FindTrailByDate(map, trail.type, trail.date, trail.focalAnimal.value_or(""));
}

}  // namespace

TrailFingerprint FingerprintOf(const Trail& trail) {
  TrailFingerprint print{.name = trail.name,
                         .type = trail.type,
                         .focalAnimal = trail.focalAnimal,
                         .date = trail.date,
                         .points = trail.points,
                         .readings = {}};
  for (const Point* point : trail.points) print.readings.push_back(point->measurements);
  return print;
}

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
    opened_ = FingerprintOf(*trail_);
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
  for (const Point* point : deletedPoints_) records.Keep(point);
  if (!opened_) return;
  for (const Point* point : opened_->points) records.Keep(point);
  for (const auto& readings : opened_->readings) {
    for (const Measurement& reading : readings) records.Keep(reading.base);
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
  // A deleted trail has no points. Those of a map that was read again are gone.
  const bool isLost = lost_ && trail_ == &*lost_;
  if (opened_ && !isLost && !hasFormerPoints_) deletedPoints_ = opened_->points;
  hasFormerPoints_ = false;
  deleted_ = trail_;
  trail_ = nullptr;
  opened_.reset();
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

void TrailEditor::FollowReread() {
  if (deleted_ != nullptr) {
    KeepLost(*deleted_);
    deleted_ = &*lost_;
    deletedPoints_.clear();
  }
  if (trail_ == nullptr || MapOfTrail(map_, *trail_) != nullptr) return;
  Trail* now = FindSameTrail(map_, *trail_);
  if (now == nullptr) {
    KeepLost(*trail_);
    trail_ = &*lost_;
    return;
  }
  const bool isAsOpened = !WasChangedElsewhere() && HaveSamePoints(*trail_, *now);
  trail_ = now;
  if (isAsOpened) opened_ = FingerprintOf(*trail_);
  hasFormerPoints_ = !isAsOpened;
}

bool TrailEditor::WasChangedElsewhere() const {
  return trail_ != nullptr && opened_ && FingerprintOf(*trail_) != *opened_;
}

}  // namespace orvane
