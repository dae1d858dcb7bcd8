#include "entry/fix_draft.h"

#include "base/file_names.h"
#include "base/number_text.h"
#include "entry/fix_cells.h"
#include "entry/import_summary.h"
#include "model/workspace.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace orvane {

namespace {

FixField FieldOf(FixRole role) { return static_cast<FixField>(static_cast<int>(role) - 1); }

std::vector<size_t>& ColumnsOf(FixColumns& columns, FixRole role) {
  return role == FixRole::Visible ? columns.visible
                                  : columns.of[static_cast<size_t>(FieldOf(role))];
}

/// \return a number from `least` on; nothing for any other text
std::optional<double> NumberFrom(const std::string& text, double least) {
  const auto number = CellNumber(TrimCell(text));
  return number && *number >= least ? number : std::nullopt;
}

/// Reads the fields. \return the first that can't be read
FixFormField ReadForm(const FixForm& form, FixOptions& options) {
  const auto clock = ReadFixClock(std::string(TrimCell(form.clock)));
  if (!clock) return FixFormField::Clock;
  options.clock = *clock;
  const std::string every(TrimCell(form.every));
  const auto [end, error] =
      std::from_chars(every.data(), every.data() + every.size(), options.filters.every);
  if (error != std::errc() || end != every.data() + every.size() || options.filters.every == 0) {
    return FixFormField::Every;
  }
  const auto minutes = NumberFrom(form.minMinutes, 0);
  if (!minutes) return FixFormField::MinMinutes;
  const auto meters = NumberFrom(form.minMeters, 0);
  if (!meters) return FixFormField::MinMeters;
  options.filters.minMinutes = *minutes;
  options.filters.minMeters = *meters;
  if (!TrimCell(form.maxSpeed).empty()) {
    const auto speed = NumberFrom(form.maxSpeed, std::numeric_limits<double>::denorm_min());
    if (!speed) return FixFormField::MaxSpeed;
    options.filters.maxSpeed = *speed;
  }
  options.type = form.type;
  options.filters.keepsOutliers = !form.leavesOutliers;
  options.makesRanges = form.makesRanges;
  return FixFormField::None;
}

}  // namespace

std::string_view FixRoleName(FixRole role) {
  static constexpr std::string_view Names[FixRoleCount] = {
      "",         "Time",     "Date",   "Latitude", "Longitude", "Easting", "Northing",
      "UTM zone", "Altitude", "Animal", "Species",  "Outlier",   "Visible"};
  return Names[static_cast<size_t>(role)];
}

std::string FixFormFault(FixFormField field) {
  switch (field) {
    case FixFormField::None:
      return {};
    case FixFormField::Clock:
      return "The offset from UTC is auto, +HH:MM, -HH:MM or the name of a time zone.";
    case FixFormField::Every:
      return "Every n-th fix needs a whole number from 1 on.";
    case FixFormField::MinMinutes:
      return "The least minutes are a number from 0 on.";
    case FixFormField::MinMeters:
      return "The least metres are a number from 0 on.";
    case FixFormField::MaxSpeed:
      return "The fastest speed is a number above 0, or empty for no limit.";
  }
  return {};
}

FixDraft::FixDraft(const Map& map, std::string name, std::string text)
    : map_(map), name_(std::move(name)), text_(std::move(text)), layout_(GuessFixLayout(text_)) {}

std::vector<FixRole> FixDraft::Roles() const {
  std::vector<FixRole> roles(layout_.captions.size(), FixRole::None);
  for (size_t i = 1; i < FixRoleCount; ++i) {
    const auto role = static_cast<FixRole>(i);
    const std::vector<size_t>& columns =
        role == FixRole::Visible ? layout_.columns.visible : layout_.columns.Of(FieldOf(role));
    for (const size_t column : columns) roles[column] = role;
  }
  return roles;
}

void FixDraft::Assign(size_t column, FixRole role) {
  for (std::vector<size_t>& columns : layout_.columns.of) std::erase(columns, column);
  std::erase(layout_.columns.visible, column);
  if (role != FixRole::None) {
    std::vector<size_t>& columns = ColumnsOf(layout_.columns, role);
    columns.insert(columns.begin(), column);
  }
  isRead_ = false;
}

/// Reads the rows of the table with the columns as they are. \return false if it was cancelled
bool FixDraft::ReadRows(const FixOptions& options) {
  if (import_) text_ = std::move(import_->table.text);
  import_.reset();
  FixOptions withLayout = options;
  withLayout.reading.layout = layout_;
  import_ = ReadFixImportOfText(map_, text_, name_, withLayout);
  if (import_) text_ = {};
  return import_.has_value();
}

FixFormField FixDraft::Plan(const FixForm& form) {
  FixOptions options;
  if (const FixFormField bad = ReadForm(form, options); bad != FixFormField::None) return bad;
  if (!isRead_) {
    isRead_ = HasTimeAndPosition(layout_.columns) && ReadRows(options);
    return FixFormField::None;
  }
  import_->options = options;
  import_->table.fixes = std::move(import_->plan.fixes);
  for (Fix& fix : import_->table.fixes) fix.state = FixState::Used;
  import_->plan = {};
  if (!import_->table.fixes.empty()) import_->plan = PlanFixes(import_->table, options, map_);
  return FixFormField::None;
}

bool FixDraft::CanImport() const { return isRead_ && HasPlan() && AddsAnything(*import_); }

Preview FixDraft::FirstRows(size_t most) const {
  if (isRead_) return PreviewFixes(*import_, most);
  Preview preview;
  preview.captions = layout_.captions;
  TableRows rows(import_ ? import_->table.text : text_, layout_.separator);
  TableRow row;
  for (size_t number = 1; preview.rows.size() < most && rows.Next(row); ++number) {
    if (number > layout_.headingRow) preview.rows.push_back({number, "", "", row.cells});
  }
  return preview;
}

std::string FixDraft::CountsText() const {
  if (!HasTimeAndPosition(layout_.columns)) {
    return "Choose the columns of the time and of the position in the heading.";
  }
  if (!isRead_) return "The table was not read.";
  const FixTable& table = import_->table;
  std::string text = Counted(table.rowCount, "fix", "fixes") + ": ";
  if (!HasPlan()) return text + "none can be used.";
  return text + StateCountsText(import_->plan, "used") + "; makes " +
         Counted(import_->plan.trails.size(), "trail", "trails") + " and " +
         Counted(import_->plan.ranges.size(), "range", "ranges") + ".";
}

std::string FixDraft::ClockReason() const {
  if (!isRead_ || !HasPlan()) return {};
  const FixClock& clock = import_->options.clock;
  if (clock.zone || clock.offsetMinutes) return {};
  return "UTC" + OffsetText(import_->plan.offsetMinutes) + " is usual at the mean longitude " +
         FormatGeneral(import_->plan.meanLon, 4);
}

std::string FixDraft::DateWarning() const {
  return isRead_ ? DayOrderText(import_->table.dayOrder) : std::string();
}

bool FixDraft::LeavesOut() const {
  if (!isRead_) return false;
  const auto used = HasPlan() ? import_->plan.counts[static_cast<size_t>(FixState::Used)] : 0;
  return used < import_->table.rowCount;
}

std::string FixDraft::LeftOutName() const {
  const std::string_view base = BaseName(name_);
  return std::string(base.substr(0, base.rfind('.'))) + " left out.txt";
}

std::string FixDraft::LeftOutText() const {
  Preview preview = FirstRows(std::numeric_limits<size_t>::max());
  std::erase_if(preview.rows,
                [](const PreviewRow& row) { return row.state == FixStateName(FixState::Used); });
  return PreviewText(preview);
}

}  // namespace orvane
