#include "reports/table_report.h"

#include <algorithm>

namespace orvane {

namespace {

/// Only so many rows decide on the widths of the columns.
constexpr size_t MostMeasuredRows = 3000;

std::string Joined(const std::vector<std::string>& cells) {
  std::string text;
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += '\t';
    text += cells[i];
  }
  return text;
}

/// Adds the lines of a sentence, cut between words.
void Wrap(const std::string& note, int width, const Canvas& canvas,
          std::vector<std::string>& lines) {
  std::string line;
  size_t begin = 0;
  while (begin <= note.size()) {
    const size_t end = std::min(note.find(' ', begin), note.size());
    const std::string word = note.substr(begin, end - begin);
    const std::string longer = line.empty() ? word : line + ' ' + word;
    if (!line.empty() && canvas.TextWidth(longer) > width) {
      lines.push_back(line);
      line = word;
    } else {
      line = longer;
    }
    begin = end + 1;
  }
  lines.push_back(line);
}

int Gap(const TableReportView& view) { return view.lineHeight; }
int Margin(const TableReportView& view) { return view.lineHeight / 3; }

int NotesHeight(const TableReportView& view) {
  if (view.noteLines.empty()) return 0;
  return static_cast<int>(view.noteLines.size()) * view.lineHeight + view.lineHeight / 2;
}

void DrawCell(const TableReportView& view, Canvas& canvas, size_t column, int left, int baseline,
              const std::string& text) {
  if (text.empty()) return;
  const int room = view.widths[column] - canvas.TextWidth(text);
  canvas.DrawText({left + (view.table.columns[column].isNumber ? room : 0), baseline}, text);
}

void DrawHeadings(const TableReportView& view, Canvas& canvas) {
  canvas.SetFont(CanvasFont::Small);
  int baseline = view.ascent + view.lineHeight / 4;
  for (const std::string& line : view.noteLines) {
    canvas.DrawText({Margin(view), baseline}, line);
    baseline += view.lineHeight;
  }
  canvas.SetFont(CanvasFont::Bold);
  const int captions = NotesHeight(view) + view.ascent + view.lineHeight / 4;
  int left = Margin(view) - view.scrollX;
  for (size_t i = 0; i < view.table.columns.size(); ++i) {
    DrawCell(view, canvas, i, left, captions, view.table.columns[i].caption);
    left += view.widths[i] + Gap(view);
  }
}

}  // namespace

std::string TableReportText(const TableReport& table) {
  std::string text;
  for (const std::string& note : table.notes) text += note + '\n';
  if (!table.notes.empty()) text += '\n';
  std::vector<std::string> captions;
  for (const TableColumn& column : table.columns) captions.push_back(column.caption);
  text += Joined(captions) + '\n';
  for (const auto& row : table.rows) text += Joined(row) + '\n';
  return text;
}

void LayOutTable(TableReportView& view, Canvas& canvas) {
  view.noteLines.clear();
  canvas.SetFont(CanvasFont::Small);
  for (const std::string& note : view.table.notes) {
    Wrap(note, view.viewWidth - 2 * Margin(view), canvas, view.noteLines);
  }
  view.widths.assign(view.table.columns.size(), 0);
  const size_t measured = std::min(view.table.rows.size(), MostMeasuredRows);
  for (size_t i = 0; i < measured; ++i) {
    for (size_t column = 0; column < view.widths.size(); ++column) {
      view.widths[column] =
          std::max(view.widths[column], canvas.TextWidth(view.table.rows[i][column]));
    }
  }
  canvas.SetFont(CanvasFont::Bold);
  int width = 2 * Margin(view) - Gap(view);
  for (size_t column = 0; column < view.widths.size(); ++column) {
    view.widths[column] =
        std::max(view.widths[column], canvas.TextWidth(view.table.columns[column].caption));
    width += view.widths[column] + Gap(view);
  }
  canvas.SetFont(CanvasFont::Small);
  view.headerHeight = NotesHeight(view) + view.lineHeight + view.lineHeight / 2;
  view.contentWidth = width;
  view.contentHeight = static_cast<int>(view.table.rows.size()) * view.lineHeight;
  HoldReportScroll(view);
}

void DrawTable(const TableReportView& view, Canvas& canvas) {
  const PixelRect clip = canvas.Clip();
  canvas.Clear(view.background);
  canvas.SetForeColor(view.foreground);
  if (clip.top < view.headerHeight) DrawHeadings(view, canvas);
  canvas.SetFont(CanvasFont::Small);
  canvas.SetClip({clip.left, std::max(clip.top, view.headerHeight), clip.right, clip.bottom});
  const int top = view.scrollY + std::max(0, clip.top - view.headerHeight);
  const int bottom = view.scrollY + std::min(clip.bottom, view.viewHeight) - view.headerHeight;
  const int rows = static_cast<int>(view.table.rows.size());
  const int line = std::max(1, view.lineHeight);
  for (int i = std::clamp(top / line, 0, rows); i < rows && i * line < bottom; ++i) {
    const int baseline = view.headerHeight + i * line - view.scrollY + view.ascent;
    int left = Margin(view) - view.scrollX;
    for (size_t column = 0; column < view.widths.size(); ++column) {
      DrawCell(view, canvas, column, left, baseline,
               view.table.rows[static_cast<size_t>(i)][column]);
      left += view.widths[column] + Gap(view);
    }
  }
  canvas.SetClip(clip);
}

void ShownTable::LayOut(Canvas& canvas) {
  TakeReportFont(view_, canvas);
  LayOutTable(view_, canvas);
}

PixelRect ShownTable::LinePlace(int line) const {
  const int top = view_.headerHeight + line * view_.lineHeight - view_.scrollY;
  return {0, top, view_.viewWidth, top + view_.lineHeight};
}

std::string ShownTable::LineText(int line) const {
  return Joined(view_.table.rows[static_cast<size_t>(line)]);
}

}  // namespace orvane
