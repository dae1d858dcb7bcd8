#include "entry/preview.h"

#include "base/number_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "entry/fix_cells.h"
#include "entry/gis_values.h"
#include "entry/import_summary.h"
#include "entry/sheet_cells.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {

namespace {

/// \return the speed of a fix that is too fast, in tenths of km/h: "5003.5 km/h"
std::string SpeedText(double speed) {
  constexpr double Tenths = 10;
  return FormatGeneral(std::round(speed * Tenths) / Tenths, 9) + " km/h";
}

/// \param index  of the fix in the plan
std::string UseOfFix(const FixImport& import, size_t index) {
  const Fix& fix = import.plan.fixes[index];
  std::string name = ClockText(fix.local) + " of " + import.table.animals[fix.animal].name +
                     " on " + FormatDate(DateOfLocal(fix.local));
  switch (fix.state) {
    case FixState::Outlier:
      return "the table marks it as an outlier";
    case FixState::Repeat:
      return name + " is there before it";
    case FixState::TooFast:
      return SpeedText(import.plan.speeds.at(static_cast<std::uint32_t>(index))) +
             ", faster than the limit";
    case FixState::Thinned:
      return "too soon after another, or too near";
    case FixState::AlreadyThere:
      return "the map has a trail of that day";
    default:
      return name;
  }
}

constexpr std::string_view BadTime = "bad time";
constexpr size_t MostShownBytes = 40;  ///< of a cell, in a reason

struct GisFate {
  std::string_view state;
  std::string_view reason;
};

GisFate FateOf(GisFixState state) {
  switch (state) {
    case GisFixState::Used:
      return {"used", ""};
    case GisFixState::Thinned:
      return {"thinned", "too soon after another, or too near"};
    case GisFixState::Repeat:
      return {"repeat", "in one minute with another"};
    case GisFixState::WithoutTime:
      return {BadTime, "no time"};
  }
  return {};
}

GisFate FateOf(GisWaypointState state) {
  switch (state) {
    case GisWaypointState::Used:
      return {"used", "waypoint"};
    case GisWaypointState::BadName:
      return {"bad name", "no point can have this name"};
    case GisWaypointState::InBasis:
      return {"bad name", "a point of the basis has this name"};
    case GisWaypointState::NoName:
      return {"bad name", "no save keeps a waypoint without a name"};
    case GisWaypointState::TimeName:
      return {"bad name", "no save keeps a waypoint named like a time of day"};
  }
  return {};
}

/// A row of the preview of a GPS file, and where its fix is in the file.
struct GisRow {
  std::uint32_t number;  ///< `GisFix::number`
  std::uint32_t line;
  GisFate fate;
  const std::string* track;  ///< its name; null for a waypoint
};

/// The rows of all fixes in the order of the file.
/// \return nothing if a field cannot be read
std::optional<std::vector<GisRow>> GisRows(const GisImport& import, const GisTrailFields& fields) {
  std::vector<GisRow> rows;
  for (const GisTrack& track : import.file.tracks) {
    const auto states = StatesOfFixes(import, track, fields);
    if (!states) return std::nullopt;
    for (size_t i = 0; i < track.fixes.size(); ++i) {
      const GisFix& fix = track.fixes[i];
      rows.push_back({fix.number, fix.line, FateOf((*states)[i]), &track.name});
    }
  }
  for (size_t i = 0; i < import.file.waypoints.size(); ++i) {
    const GisFix& fix = import.file.waypoints[i].fix;
    rows.push_back({fix.number, fix.line, FateOf(import.waypointStates[i]), nullptr});
  }
  for (const BadGisFix& bad : import.file.badFixes) {
    rows.push_back({bad.number, bad.line, {"unknown place", "no position"}, nullptr});
  }
  std::sort(rows.begin(), rows.end(),
            [](const GisRow& a, const GisRow& b) { return a.number < b.number; });
  return rows;
}

/// Which of the first two numbers of a date is the day.
enum class DayPlace { Unknown, First, Second, Either };

DayPlace DayPlaceOf(std::string_view date) {
  constexpr int Months = 12;
  constexpr int LastDay = 31;
  const size_t one = FindAnyOf(date, "-/.");
  const size_t two = one == date.npos ? one : FindAnyOf(date.substr(one + 1), "-/.");
  if (two == date.npos) return DayPlace::Unknown;
  const int first = ReadInt32(date.substr(0, one));
  const int second = ReadInt32(date.substr(one + 1, two));
  if (first < 1 || second < 1 || first > LastDay || second > LastDay || first == second) {
    return DayPlace::Unknown;
  }
  if (first > Months) return second > Months ? DayPlace::Unknown : DayPlace::First;
  return second > Months ? DayPlace::Second : DayPlace::Either;
}

void AppendLine(std::string& text, const std::vector<std::string>& cells) {
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += '\t';
    text += WithoutControls(cells[i]);
  }
  text += '\n';
}

}  // namespace

Preview PreviewFixes(const FixImport& import, size_t most) {
  Preview preview;
  preview.captions = import.table.captions;
  FixRows rows(import.table);
  size_t fix = 0;
  auto bad = import.table.badRows.begin();
  // Each row with a value is either a fix or a bad row, and both lists have the order of the file.
  while (preview.rows.size() < most && rows.Next()) {
    PreviewRow row{rows.Number(), {}, {}, rows.Cells()};
    if (bad != import.table.badRows.end() && bad->row == rows.Number()) {
      row.state = FixStateName(bad->state);
      row.reason = FaultOfRow(import.table, *bad++, rows.Cells());
    } else {
      row.state = FixStateName(import.plan.fixes[fix].state);
      row.reason = UseOfFix(import, fix++);
    }
    preview.rows.push_back(std::move(row));
  }
  return preview;
}

Preview PreviewSheet(const ImportSpec& spec, size_t most) {
  Preview preview;
  for (SheetRowFate& fate : TrySpreadsheetImport(spec, most)) {
    PreviewRow row{fate.line, fate.state, std::move(fate.reason), {}};
    for (size_t begin = 0; begin <= fate.row.size();) {
      const size_t end = std::min(fate.row.find('\t', begin), fate.row.size());
      row.cells.emplace_back(fate.row.substr(begin, end - begin));
      begin = end + 1;
    }
    preview.rows.push_back(std::move(row));
  }
  return preview;
}

std::optional<Preview> PreviewGis(const GisImport& import, const GisTrailFields& fields,
                                  size_t most) {
  Preview preview;
  preview.captions = {"name", "time", "latitude", "longitude", "altitude"};
  auto rows = GisRows(import, fields);
  if (!rows) return std::nullopt;
  rows->resize(std::min(rows->size(), most));
  const std::vector<GisCells> texts = ReadGisCells(*import.text, rows->size());
  for (const GisRow& row : *rows) {
    const GisCells& cells = texts[row.number];
    PreviewRow& shown = preview.rows.emplace_back(
        PreviewRow{row.line, row.fate.state, std::string(row.fate.reason), {}});
    shown.cells.assign(cells.begin(), cells.end());
    const std::string_view time = TrimSpace(cells[GisTimeColumn]);
    if (row.fate.state == BadTime && !time.empty()) {
      shown.reason = '"' + std::string(CutText(time, MostShownBytes)) + "\" is not a usable time";
    }
    // A track without a name has got one.
    if (shown.cells[0].empty() && row.track != nullptr) shown.cells[0] = *row.track;
  }
  return preview;
}

std::string DateOrderWarning(const Preview& all, size_t column, bool dayFirst,
                             std::string_view remedy) {
  size_t ambiguous = 0;
  size_t deciding = 0;
  bool isDayFirst = false;
  for (const PreviewRow& row : all.rows) {
    if (column >= row.cells.size()) continue;
    const std::string_view cell = ColumnText(row.cells[column], 0);
    const DayPlace place = DayPlaceOf(cell.substr(0, cell.find(' ')));
    if (place == DayPlace::Either && ambiguous == 0) ambiguous = row.row;
    const bool decides = place == DayPlace::First || place == DayPlace::Second;
    if (!decides || deciding > 0) continue;
    deciding = row.row;
    isDayFirst = place == DayPlace::First;
  }
  if (ambiguous == 0) return {};
  std::string text = "The date in row " + std::to_string(ambiguous) +
                     " can be read in two ways. It is read with the " +
                     (dayFirst ? "day" : "month") + " first; ";
  if (deciding == 0) return text + "no row shows whether that is right.";
  text += "row " + std::to_string(deciding) + " shows that this is ";
  if (isDayFirst == dayFirst) return text + "right.";
  return text + "wrong: " + std::string(remedy) + '.';
}

PreviewPage PageOfPreview(Preview all) {
  std::vector<std::pair<std::string_view, size_t>> states;  // in the order in which they are met
  Preview leftOut;
  leftOut.captions = all.captions;
  for (const PreviewRow& row : all.rows) {
    const auto state = std::find_if(states.begin(), states.end(),
                                    [&](const auto& each) { return each.first == row.state; });
    if (state == states.end()) {
      states.emplace_back(row.state, 1);
    } else {
      ++state->second;
    }
    if (row.state != "used") leftOut.rows.push_back(row);
  }
  std::vector<std::string> parts;
  parts.reserve(states.size());
  for (const auto& [state, count] : states) {
    parts.push_back(std::to_string(count) + " " + std::string(state));
  }
  PreviewPage page;
  page.counts = Counted(all.rows.size(), "row", "rows");
  if (!parts.empty()) page.counts += ": " + Joined(parts);
  if (all.rows.size() > MostPreviewRows) {
    page.counts += "; the first " + std::to_string(MostPreviewRows) + " are shown";
    all.rows.resize(MostPreviewRows);
  }
  if (!leftOut.rows.empty()) page.leftOut = PreviewText(leftOut);
  page.first = std::move(all);
  return page;
}

std::string PreviewText(const Preview& preview) {
  std::vector<std::string> heading = {"row", "state", "reason"};
  heading.insert(heading.end(), preview.captions.begin(), preview.captions.end());
  std::string text;
  AppendLine(text, heading);
  for (const PreviewRow& row : preview.rows) {
    std::vector<std::string> cells = {std::to_string(row.row), std::string(row.state), row.reason};
    cells.insert(cells.end(), row.cells.begin(), row.cells.end());
    AppendLine(text, cells);
  }
  return text;
}

}  // namespace orvane
