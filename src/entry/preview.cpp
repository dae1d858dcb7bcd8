#include "entry/preview.h"

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
  auto rows = GisRows(import, fields);
  if (!rows) return std::nullopt;
  rows->resize(std::min(rows->size(), most));
  const std::vector<GisCells> texts = ReadGisCells(*import.text, rows->size());
  for (const GisRow& row : *rows) {
    const GisCells& cells = texts[row.number];
    PreviewRow& shown = preview.rows.emplace_back(
        PreviewRow{row.line, row.fate.state, std::string(row.fate.reason), {}});
    shown.cells.assign(cells.begin(), cells.end());
    // A track without a name has got one.
    if (shown.cells[0].empty() && row.track != nullptr) shown.cells[0] = *row.track;
  }
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
