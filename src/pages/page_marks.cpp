#include "pages/page_marks.h"

namespace orvane {

namespace {

constexpr Color Black = 0;

/// Draws an L whose arms meet in `corner`.
/// \param inward  one step from the corner into the page, along both edges
void DrawMark(const PrintMapWindow& view, Pixel corner, Pixel inward) {
  Canvas& canvas = *view.target;
  const int across = view.device.horizontalResolution / 2;
  const int down = view.device.verticalResolution / 2;
  canvas.DrawLine(corner, {corner.x + inward.x * across, corner.y});
  canvas.DrawLine(corner, {corner.x, corner.y + inward.y * down});
}

}  // namespace

void DrawPageMarks(const PrintMapWindow& view, PagePlace page) {
  const int lastRow = view.pagesDown - 1;
  const int lastColumn = view.pagesAcross - 1;
  const auto isAt = [&page](int row, int column) {
    return page.row == row && page.column == column;
  };
  const int right = view.device.width - 1;
  const int bottom = view.device.height - 1;
  view.target->SetPen({0, PenPattern::Solid, Black});
  if (!isAt(0, 0)) DrawMark(view, {0, bottom}, {1, -1});
  if (!isAt(0, lastColumn)) DrawMark(view, {right, bottom}, {-1, -1});
  if (!isAt(lastRow, 0)) DrawMark(view, {0, 0}, {1, 1});
  if (!isAt(lastRow, lastColumn)) DrawMark(view, {right, 0}, {-1, 1});
}

}  // namespace orvane
