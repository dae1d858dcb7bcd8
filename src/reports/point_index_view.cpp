#include "reports/point_index_view.h"

#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <string>

namespace orvane {

namespace {

enum Column : size_t { Name, Place, Altitude, GridCell, MetersNE, Columns };
using ColumnCaptions = std::array<std::string_view, Columns>;

ColumnCaptions CaptionsOf(const PointIndexView& view) {
  return {"Name", PositionCaption(view.display), "Altitude", "Grid", "Meters N/E"};
}

std::string CellText(const PointIndexView& view, const PointIndexEntry& entry, size_t column) {
  switch (column) {
    case Name:
      return entry.name;
    case Place:
      return FormatLatLon(entry.position, view.display);
    case Altitude:
      if (!HasAltitude(entry.position.altitude)) return {};
      return FormatFixed(double{entry.position.altitude}, 0) + "m";
    case GridCell:
      return entry.gridCell;
    default:
      return view.index->hasOrigin ? FormatMeters(entry) : std::string();
  }
}

std::array<int, Columns> Widths(const PointIndexView& view) {
  return {view.nameWidth, view.positionWidth, view.altitudeWidth, view.gridWidth, view.metersWidth};
}

/// The left edge of each column in its group, a gap between one and the next.
std::array<int, Columns> LeftEdges(const PointIndexView& view) {
  std::array<int, Columns> edges{};
  int edge = 0;
  const std::array<int, Columns> widths = Widths(view);
  for (size_t column = 0; column < Columns; ++column) {
    edges[column] = edge;
    if (widths[column] > 0) edge += widths[column] + view.columnGap;
  }
  return edges;
}

void DrawCaptions(const PointIndexView& view, Canvas& canvas) {
  const std::array<int, Columns> widths = Widths(view);
  const std::array<int, Columns> edges = LeftEdges(view);
  const ColumnCaptions captions = CaptionsOf(view);
  const int baseline = view.ascent + view.lineHeight / 8;
  for (int group = 0; group < view.groupsAcross; ++group) {
    const int left = group * view.groupWidth - view.scrollX + view.columnGap / 2;
    for (size_t column = 0; column < Columns; ++column) {
      if (widths[column] == 0) continue;
      DrawHeading(canvas, {left + edges[column] + widths[column] / 2, baseline}, captions[column]);
    }
  }
}

}  // namespace

void LayoutPointIndex(PointIndexView& view, Canvas& canvas) {
  MeasurePointIndex(view, canvas);
  PlacePointIndex(view);
}

void MeasurePointIndex(PointIndexView& view, Canvas& canvas) {
  const int room = 8 * view.unit;
  canvas.SetFont(CanvasFont::Small);
  std::array<int, Columns> widths{};
  const ColumnCaptions captions = CaptionsOf(view);
  for (const size_t column : {Name, Place}) {
    widths[column] = canvas.TextWidth(captions[column]) + room;
  }
  for (const PointIndexEntry& entry : view.index->entries) {
    for (size_t column = 0; column < Columns; ++column) {
      const std::string text = CellText(view, entry, column);
      if (!text.empty()) widths[column] = std::max(widths[column], canvas.TextWidth(text));
    }
  }
  view.nameWidth = widths[Name];
  view.positionWidth = widths[Place];
  view.altitudeWidth = widths[Altitude];
  view.gridWidth = widths[GridCell];
  view.metersWidth = widths[MetersNE];
  view.columnGap = canvas.TextWidth("0") * 3;
  view.groupGap = 2 * view.columnGap;
  int width = -view.columnGap;
  for (const int column : widths) width += column > 0 ? column + view.columnGap : 0;
  view.groupWidth = width + view.groupGap;
}

void PlacePointIndex(PointIndexView& view) {
  view.groupsAcross = view.viewWidth / view.groupWidth;
  // The last group needs no gap after it.
  if ((view.groupsAcross + 1) * view.groupWidth - view.groupGap <= view.viewWidth) {
    ++view.groupsAcross;
  }
  view.groupsAcross = std::max(1, view.groupsAcross);
  view.headerHeight = view.lineHeight + view.lineHeight / 4;
  view.contentHeight = PointIndexLines(view) * view.lineHeight;
  view.contentWidth = view.groupsAcross * view.groupWidth - view.groupGap + view.columnGap;
  HoldReportScroll(view);
}

std::string PointIndexLine(const PointIndexView& view, const PointIndexEntry& entry) {
  const std::array<int, Columns> widths = Widths(view);
  std::string text;
  for (size_t column = 0; column < Columns; ++column) {
    if (widths[column] == 0) continue;
    if (column > 0) text += '\t';
    text += CellText(view, entry, column);
  }
  return text;
}

int PointIndexLines(const PointIndexView& view) {
  const auto count = static_cast<int>(view.index->entries.size());
  return (count + view.groupsAcross - 1) / view.groupsAcross;
}

void DrawPointIndex(const PointIndexView& view, Canvas& canvas) {
  const PixelRect clip = canvas.Clip();
  canvas.Clear(view.background);
  canvas.SetForeColor(view.foreground);
  if (clip.top < view.headerHeight) DrawCaptions(view, canvas);
  canvas.SetFont(CanvasFont::Small);
  const PixelRect body{clip.left, std::max(clip.top, view.headerHeight), clip.right, clip.bottom};
  canvas.SetClip(body);
  const std::array<int, Columns> edges = LeftEdges(view);
  const std::vector<PointIndexEntry>& entries = view.index->entries;
  const int lines = PointIndexLines(view);
  const int firstLine =
      std::max(0, (body.top - view.headerHeight + view.scrollY) / view.lineHeight);
  for (int line = firstLine; line < lines; ++line) {
    const int top = view.headerHeight + line * view.lineHeight - view.scrollY;
    if (top >= body.bottom) break;
    for (int group = 0; group < view.groupsAcross; ++group) {
      const auto number = static_cast<size_t>(line) * static_cast<size_t>(view.groupsAcross) +
                          static_cast<size_t>(group);
      if (number >= entries.size()) break;
      const int begin = group * view.groupWidth - view.scrollX;
      if (begin >= clip.right || begin + view.groupWidth <= clip.left) continue;
      const int left = begin + view.columnGap / 2;
      for (size_t column = 0; column < Columns; ++column) {
        const std::string text = CellText(view, entries[number], column);
        if (!text.empty()) canvas.DrawText({left + edges[column], top + view.ascent}, text);
      }
    }
  }
  canvas.SetClip(clip);
}

}  // namespace orvane
