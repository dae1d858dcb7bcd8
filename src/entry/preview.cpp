#include "entry/preview.h"

#include "base/number_text.h"
#include "entry/fix_cells.h"

#include <algorithm>

namespace orvane {

namespace {

std::string UseOfFix(const FixImport& import, const Fix& fix) {
  std::string name = ClockText(fix.local) + " of " + import.table.animals[fix.animal].name +
                     " on " + FormatDate(DateOfLocal(fix.local));
  switch (fix.state) {
    case FixState::Outlier:
      return "the table marks it as an outlier";
    case FixState::Repeat:
      return name + " is there before it";
    case FixState::TooFast:
      return "faster than the limit";
    case FixState::Thinned:
      return "too soon after another, or too near";
    case FixState::AlreadyThere:
      return "the map has a trail of that day";
    default:
      return name;
  }
}

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
      return {"bad time", "no time"};
  }
  return {};
}

std::vector<std::string> GisCells(const std::string& name, const std::string& date,
                                  const GisFix& fix) {
  const std::string time =
      fix.utc ? FormatDate(DateOfLocal(*fix.utc)) + ' ' + ClockText(*fix.utc) + 'Z' : date;
  const std::string altitude =
      HasAltitude(fix.altitude) ? FormatGeneral(double{fix.altitude}) : std::string();
  return {name, time, FormatShortest(fix.lat), FormatShortest(fix.lon), altitude};
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
  auto fix = import.plan.fixes.begin();
  auto bad = import.table.badRows.begin();
  // Each row with a value is either a fix or a bad row, and both lists have the order of the file.
  while (preview.rows.size() < most && rows.Next()) {
    PreviewRow row{rows.Number(), {}, {}, rows.Cells()};
    if (bad != import.table.badRows.end() && bad->row == rows.Number()) {
      row.state = FixStateName(bad->state);
      row.reason = FaultOfRow(import.table, *bad++, rows.Cells());
    } else {
      row.state = FixStateName(fix->state);
      row.reason = UseOfFix(import, *fix++);
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
  std::vector<PreviewRow>& rows = preview.rows;
  for (const GisTrack& track : import.file.tracks) {
    const auto states = StatesOfFixes(import, track, fields);
    if (!states) return std::nullopt;
    for (size_t i = 0; i < track.fixes.size(); ++i) {
      const GisFix& fix = track.fixes[i];
      const GisFate fate = FateOf((*states)[i]);
      rows.push_back(
          {fix.line, fate.state, std::string(fate.reason), GisCells(track.name, track.date, fix)});
    }
  }
  for (const GisWaypoint& waypoint : import.file.waypoints) {
    rows.push_back(
        {waypoint.fix.line, "used", "waypoint", GisCells(waypoint.name, "", waypoint.fix)});
  }
  for (const size_t line : import.file.badLines) {
    rows.push_back({line, "unknown place", "no position", {}});
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const PreviewRow& a, const PreviewRow& b) { return a.row < b.row; });
  rows.resize(std::min(rows.size(), most));
  return preview;
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
