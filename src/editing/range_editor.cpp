#include "editing/range_editor.h"

#include "base/dates.h"
#include "base/messages.h"
#include "base/number_text.h"
#include "editing/trail_form.h"
#include "model/point_names.h"
#include "model/time_names.h"
#include "model/workspace.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr int ColumnWidth = 70;
constexpr int MinutesOfHour = 60;

const std::vector<CellColumn>& RangeColumns() {
  static const std::vector<CellColumn> columns = {
      {.title = "Trail Type",
       .hint = "Enter a type of trail\nyou are interested\nin putting in this range\n"
               "(ie. \"Ha II\" for\nHapalemur aureus\ntroop 2)\nOr enter a template\nfor a set of "
               "points\nas: \"Points: Pde*\"",
       .width = ColumnWidth},
      {.title = "Focal",
       .hint = "Enter the focal animal\nyou wish to restrict\nthis search to\n(or leave blank)",
       .width = ColumnWidth},
      {.title = "Date From",
       .hint = "Enter a starting date\nfor this range\n(or leave blank)",
       .width = ColumnWidth},
      {.title = "Date To",
       .hint = "Enter an ending date\nfor this range\n(or leave blank)",
       .width = ColumnWidth},
      {.title = "Time From",
       .hint = "Enter a starting time\nfor this range\n(or leave blank)",
       .width = ColumnWidth},
      {.title = "Time To",
       .hint = "Enter an ending time\nfor this range\n(or leave blank)",
       .width = ColumnWidth},
  };
  return columns;
}

std::string TimeText(const RangeRow& row, int minutes) {
  if (row.timeFrom == row.timeTo) return {};
  const std::string text = std::to_string(minutes % MinutesOfHour);
  return std::to_string(minutes / MinutesOfHour) + (text.size() < 2 ? ":0" : ":") + text;
}

std::string RangeCellText(const RangeRow& row, size_t column) {
  switch (column) {
    case ColumnType:
      return row.type.value_or("");
    case ColumnFocal:
      return row.focalAnimal.value_or("");
    case ColumnDateFrom:
      return FormatDate(row.dateFrom);
    case ColumnDateTo:
      return FormatDate(row.dateTo);
    case ColumnTimeFrom:
      return TimeText(row, row.timeFrom);
    case ColumnTimeTo:
      return TimeText(row, row.timeTo);
    default:
      return {};
  }
}

const char* TakeDate(std::string_view text, bool europeanDates, PackedDate& date) {
  const DatePrefix read = ParseDate(text, europeanDates);
  if (read.length != text.size()) return "Bad date";
  date = read.date;
  return nullptr;
}

/// Equal times mean no limit, so emptying one of the two cells empties both.
const char* TakeTime(std::string_view text, RangeRow& row, int& minutes) {
  if (text.empty()) {
    row.timeFrom = 0;
    row.timeTo = 0;
    return nullptr;
  }
  if (!IsTimeName(text)) return "Bad Time";
  minutes = ParseTimeName(text);
  return nullptr;
}

/// \return the message if the text is refused; then the row is as it was
const char* SetRangeCellText(RangeRow& row, size_t column, std::string_view text,
                             bool europeanDates) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  switch (column) {
    case ColumnType:
      row.type = text;
      return nullptr;
    case ColumnFocal:
      row.focalAnimal = text.empty() ? std::nullopt : std::optional<std::string>(text);
      return nullptr;
    case ColumnDateFrom:
      return TakeDate(text, europeanDates, row.dateFrom);
    case ColumnDateTo:
      return TakeDate(text, europeanDates, row.dateTo);
    case ColumnTimeFrom:
      return TakeTime(text, row, row.timeFrom);
    default:
      return TakeTime(text, row, row.timeTo);
  }
}

}  // namespace

Map* MapOfRange(Map& map, const Range* range) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (const Range& each : level->ranges) {
      if (&each == range) return level;
    }
  }
  return nullptr;
}

RangeEditor::RangeEditor(Map& map, Range* range, Color color)
    : map_(map), range_(range), color_("gray") {
  kept_ = map.workspace->holders.Add([this](UnusedRecords& records) { records.Keep(range_); });
  if (range_ == nullptr) return;
  SetName(range_->name.value_or(""));
  color_ = ColorFieldText(color);
  origin_ = OriginOf(map, *range_);
  for (const SearchKey& key : range_->keys) {
    rows_.push_back({.type = key.type,
                     .focalAnimal = key.focalAnimal,
                     .timeFrom = key.timeFrom,
                     .timeTo = key.timeTo,
                     .dateFrom = key.dateFrom,
                     .dateTo = key.dateTo});
  }
}

std::string RangeEditor::Title() const {
  return range_ == nullptr ? "New Range" : range_->name.value_or("");
}

void RangeEditor::MakeAgain() {
  keptNote_ = range_->note;
  range_ = nullptr;
  changed_ = true;
}

void RangeEditor::RestoreRows(std::vector<RangeRow> rows) {
  rows_ = std::move(rows);
  changed_ = true;
}

const std::vector<CellColumn>& RangeEditor::Columns() const { return RangeColumns(); }

std::string RangeEditor::GetCell(size_t row, size_t column) const {
  return row < rows_.size() ? RangeCellText(rows_[row], column) : std::string();
}

bool RangeEditor::SetCell(size_t row, size_t column, std::string_view text) {
  if (row > rows_.size()) return true;
  RangeRow changed = row < rows_.size() ? rows_[row] : RangeRow{};
  const Workspace& workspace = *map_.workspace;
  const char* refusal =
      SetRangeCellText(changed, column, text, workspace.preferences.europeanDates);
  if (refusal != nullptr) {
    NoteError(workspace.messages, refusal);
    return false;
  }
  if (row == rows_.size()) {
    rows_.push_back(std::move(changed));
  } else {
    rows_[row] = std::move(changed);
  }
  changed_ = true;
  return true;
}

bool RangeEditor::InsertRow(size_t row) {
  if (row != 0) return false;
  rows_.insert(rows_.begin(), RangeRow{});
  changed_ = true;
  return true;
}

void RangeEditor::DeleteRow(size_t row) {
  if (row >= rows_.size()) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  changed_ = true;
}

void RangeEditor::MoveRow(size_t from, size_t to) {
  if (from >= rows_.size()) return;
  MoveItem(rows_, from, to);
  changed_ = true;
}

void RangeEditor::KeepLost(const std::optional<std::string>& name,
                           const std::optional<std::string>& note) {
  lost_.emplace();
  lost_->name = name;
  lost_->note = note;
  range_ = &*lost_;
}

void RangeEditor::TakeOrigin(const RangeOrigin& origin) {
  origin_ = origin;
  if (range_ == nullptr) KeepLost(origin.name, origin.note);
}

void RangeEditor::FollowReread() {
  // One that only was deleted can come back.
  if (range_ == nullptr || MapOfRange(map_, range_) != nullptr || IsRemoved(map_, *range_)) {
    return;
  }
  const bool isLost = lost_ && range_ == &*lost_;
  RangeOrigin before = *origin_;
  if (!isLost) {
    // It may have changed since the editor was opened.
    before.name = range_->name;
    before.equals.Own() = ContentMark(*range_);
  }
  if (Range* now = FindAgain(map_, before)) {
    range_ = now;
  } else if (!isLost) {
    KeepLost(range_->name, range_->note);
  }
}

bool RangeEditor::WasChangedElsewhere() const {
  return range_ != nullptr && ContentMark(*range_) != origin_->equals.Own();
}

}  // namespace orvane
