#include "entry/fix_import.h"

#include "base/files.h"
#include "base/number_text.h"
#include "entry/entered_fixes.h"
#include "entry/import_summary.h"
#include "mapfile/open_map.h"
#include "model/workspace.h"
#include "ranges/analysis.h"

#include <utility>

namespace orvane {

namespace {

/// Rows of one kind that are named one by one.
constexpr size_t MostNamed = 5;

std::string RowText(std::uint32_t row) { return "row " + std::to_string(row); }

std::string MoreText(size_t count) {
  return Counted(count, "more row is left out", "more rows are left out");
}

/// Names the first rows without a usable fix.
void AppendBadRows(const FixTable& table, std::vector<std::string>& notes) {
  FixRows rows(table);
  size_t named = 0;
  while (named < MostNamed && named < table.badRows.size() && rows.Next()) {
    const BadFixRow& bad = table.badRows[named];
    if (rows.Number() != bad.row) continue;
    notes.push_back("Left out " + RowText(bad.row) + ": " + FaultOfRow(table, bad, rows.Cells()));
    ++named;
  }
  if (table.badRows.size() > named) notes.push_back(MoreText(table.badRows.size() - named));
}

/// Names the first fixes that are faster than the limit.
void AppendFastRows(const FixImport& import, std::vector<std::string>& notes) {
  size_t named = 0;
  for (const Fix& fix : import.plan.fixes) {
    if (fix.state != FixState::TooFast) continue;
    if (named == MostNamed) break;
    notes.push_back("Left out " + RowText(fix.row) + ": faster than " +
                    FormatGeneral(import.options.filters.maxSpeed) + " km/h");
    ++named;
  }
  const size_t count = import.plan.counts[static_cast<size_t>(FixState::TooFast)];
  if (count > named) notes.push_back(MoreText(count - named) + " as too fast");
}

std::string CountsText(const FixImport& import) {
  const FixPlan& plan = import.plan;
  std::string text =
      "Read " + Counted(import.table.rowCount, "fix", "fixes") + " from " + import.fileName + ": ";
  text += StateCountsText(plan, "taken") + "; " + Counted(plan.trails.size(), "trail", "trails") +
          " and " + Counted(plan.ranges.size(), "range", "ranges");
  if (import.options.clock.zone) return text + " added";
  text += " added; times are UTC" + OffsetText(plan.offsetMinutes);
  if (!import.options.clock.offsetMinutes) {
    text += ", as is usual at the mean longitude " + FormatGeneral(plan.meanLon, 4);
  }
  return text;
}

void AddTrails(Map& map, const FixImport& import) {
  const FixPlan& plan = import.plan;
  auto last = map.trails.before_begin();
  while (std::next(last) != map.trails.end()) ++last;
  for (const PlannedTrail& planned : plan.trails) {
    last = map.trails.emplace_after(last);
    Trail& trail = *last;
    trail.type = plan.types[planned.animal];
    trail.focalAnimal = import.table.animals[planned.animal].name;
    trail.date = planned.date;
    trail.points.reserve(planned.count);
    for (size_t i = 0; i < planned.count; ++i) {
      const Fix& fix = plan.fixes[plan.order[planned.first + i]];
      Point& point = MakePoint(map, ClockText(fix.local));
      point.trail = &trail;
      AddFix(point, {fix.lat, fix.lon}, fix.altitude);
      trail.points.push_back(&point);
    }
  }
}

void AddRanges(Map& map, const FixImport& import) {
  auto last = map.ranges.before_begin();
  while (std::next(last) != map.ranges.end()) ++last;
  for (const std::uint32_t animal : import.plan.ranges) {
    last = map.ranges.emplace_after(last);
    const std::string& name = import.table.animals[animal].name;
    last->name = name;
    last->keys.push_front({.type = import.plan.types[animal], .focalAnimal = name});
  }
}

}  // namespace

std::optional<std::string> ReadFixText(Messages& messages, const std::string& path,
                                       const SheetChooser& choose) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) {
    NoteError(messages, "Can't open file %s", {path});
    return std::nullopt;
  }
  if (IsSpreadsheetName(path)) {
    return ReadSpreadsheet(messages, path, *bytes, choose, ClockForm::Seconds, true);
  }
  if (WantsMissingSheet(messages, path, choose)) return std::nullopt;
  return TableText(std::move(*bytes));
}

std::optional<FixImport> ReadFixImportOfText(const Map& map, std::string text,
                                             const std::string& name, const FixOptions& options) {
  Workspace& workspace = *map.workspace;
  FixReading reading = options.reading;
  reading.europeanDates = workspace.preferences.europeanDates;
  auto table = ReadFixTable(std::move(text), name, reading, workspace.messages, workspace.progress);
  if (!table) return std::nullopt;
  FixImport import{name, std::move(*table), {}, options};
  if (!import.table.fixes.empty()) import.plan = PlanFixes(import.table, options, map);
  return import;
}

std::optional<FixImport> ReadFixImport(const Map& map, const std::string& path,
                                       const FixOptions& options) {
  auto text = ReadFixText(map.workspace->messages, path, options.chooseSheet);
  if (!text) return std::nullopt;
  return ReadFixImportOfText(map, std::move(*text), path, options);
}

bool HasUsableFixes(const FixImport& import, Messages& messages) {
  if (!import.plan.fixes.empty()) return true;
  NoteError(messages, "No usable fixes in %s", {import.fileName});
  return false;
}

std::optional<FixImport> StartFixImport(const Map& map, const std::string& path,
                                        const FixOptions& options) {
  auto import = ReadFixImport(map, path, options);
  if (!import || !HasUsableFixes(*import, map.workspace->messages)) return std::nullopt;
  return import;
}

std::optional<FixImport> StartFixImportOfText(const Map& map, std::string bytes,
                                              const std::string& name, const FixOptions& options) {
  auto import = ReadFixImportOfText(map, TableText(std::move(bytes)), name, options);
  if (!import || !HasUsableFixes(*import, map.workspace->messages)) return std::nullopt;
  return import;
}

std::string DayOrderText(const DayOrder& order) {
  if (order.ambiguousRow == 0) return {};
  const std::string which = order.dayFirst ? "the day is first" : "the month is first";
  const std::string text =
      "The date in " + RowText(order.ambiguousRow) + " can be read in two ways: ";
  if (order.decidingRow > 0) return text + RowText(order.decidingRow) + " shows that " + which;
  return text + "no row shows which, and " + which + " as European dates are " +
         (order.dayFirst ? "on" : "off");
}

std::string StateCountsText(const FixPlan& plan, const std::string& used) {
  std::vector<std::string> parts;
  for (size_t i = 0; i < FixStateCount; ++i) {
    const auto state = static_cast<FixState>(i);
    if (plan.counts[i] == 0 && state != FixState::Used) continue;
    const std::string name = state == FixState::Used ? used : std::string(FixStateName(state));
    parts.push_back(std::to_string(plan.counts[i]) + " " + name);
  }
  return Joined(parts);
}

std::vector<std::string> FixNotes(const FixImport& import) {
  std::vector<std::string> notes;
  if (std::string order = DayOrderText(import.table.dayOrder); !order.empty()) {
    notes.push_back(std::move(order));
  }
  if (import.table.openQuoteRow > 0) {
    notes.push_back("A double quote in " + RowText(import.table.openQuoteRow) +
                    " is never closed, so the rest of the table is one cell of that row");
  }
  AppendBadRows(import.table, notes);
  AppendFastRows(import, notes);
  notes.push_back(CountsText(import));
  return notes;
}

bool AddsAnything(const FixImport& import) {
  return !import.plan.trails.empty() || !import.plan.ranges.empty();
}

void EnterFixes(Map& map, FixImport& import, NewRanges ranges) {
  import.table.text = {};
  AddTrails(map, import);
  if (ranges == NewRanges::NotAnalyzed) {
    FinishImport(map);
    AddRanges(map, import);
    return;
  }
  AddRanges(map, import);
  {
    const MustFinish whole(map.workspace->progress);
    FinishPoints(map);
  }
  AnalyzeAllRangesOfOpenMap(map);
  map.flags |= MapDirty;
}

}  // namespace orvane
