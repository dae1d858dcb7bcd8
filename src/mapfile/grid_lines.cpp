#include "base/text.h"
#include "mapfile/field_cursor.h"
#include "mapfile/line_context.h"
#include "model/cells.h"
#include "model/point_names.h"

// The lines of grids: `H` makes one, `HS` shades a cell of one.

namespace orvane {

namespace {

/// How one axis is labelled: a style letter directly followed by a start number.
struct AxisSpec {
  GridStyle style;
  int start;
};

AxisSpec TakeAxisSpec(FieldCursor& cursor, GridStyle defaultStyle) {
  AxisSpec spec{defaultStyle, 0};
  const auto take = [&](GridStyle style) {
    spec.style = style;
    cursor.Skip(1);
  };
  switch (cursor.Peek()) {
    case 'i':
      take(GridStyle::RomanLower);
      break;
    case 'I':
      take(GridStyle::RomanUpper);
      break;
    case 'a':
      take(GridStyle::LettersLower);
      break;
    case 'A':
      take(GridStyle::LettersUpper);
      break;
    case 'n':
    case 'N':
      take(GridStyle::Unlabeled);
      break;
    default:
      if (cursor.AtDigit()) take(GridStyle::Decimal);
      break;
  }
  if (cursor.AtDigit() || cursor.At('-')) spec.start = cursor.TakeInteger();
  return spec;
}

/// The newest grid of the first map of the basis chain that has any; null if none has.
Grid* NewestGrid(Map& map) {
  for (Map* level = &map; level != nullptr; level = level->basis) {
    if (!level->grids.empty()) return &level->grids.front();
  }
  return nullptr;
}

/// Reads a cell's name into the shade. \return the length of the name, 0 if the grid's cells have
/// no names
size_t ReadCell(const Grid& grid, std::string_view text, GridShade& shade) {
  const bool columnFirst = ColumnComesFirst(grid);
  const auto first = ParseCellNumber(text, columnFirst ? grid.columnStyle : grid.rowStyle);
  if (!first) return 0;
  const auto second =
      ParseCellNumber(text.substr(first->length), columnFirst ? grid.rowStyle : grid.columnStyle);
  if (!second) return 0;
  const auto offset = [](int number, int start) {
    return static_cast<int>(std::clamp(long{number} - start, -0x7FFFFFFFL, 0x7FFFFFFFL));
  };
  shade.row = offset(columnFirst ? second->number : first->number, grid.rowStart);
  shade.column = offset(columnFirst ? first->number : second->number, grid.columnStart);
  return first->length + second->length;
}

/// The field after the colour: an outline, an inset cell, or the angle of hatches.
double ReadShadeValue(FieldCursor& cursor) {
  if (cursor.AtEnd()) return ShadeFull;
  cursor.Skip(1);  // the separator
  if (cursor.At('b')) return ShadeOutline;
  if (cursor.At('c')) return ShadeInset;
  return cursor.TakeReal();
}

}  // namespace

void ReadGridLine(LineContext& context, std::string_view line) {
  if (line.size() == 1) return;
  FieldCursor cursor(line);
  cursor.Skip(1);
  if (!cursor.At('\t')) NoteError(context.messages, "Bad grid spec: %s", {line});
  cursor.Skip(1);
  const std::string_view cornerName = cursor.TakeField();
  Point* corner = ResolvePointName(context.map, nullptr, cornerName);
  context.trailTimes.Forget();  // the line can give a point of the trail a time as synonym
  if (corner == nullptr) {
    NoteError(context.messages, "Bad pointname in grid %s", {cornerName});
    return;
  }
  Grid& grid = context.map.grids.emplace_front();
  grid.corner = corner;
  for (int* field : {&grid.cellSize, &grid.rows, &grid.columns}) {
    cursor.SkipTab();
    *field = cursor.TakeInteger();
    cursor.SkipField();
  }
  cursor.SkipTab();
  grid.angle = cursor.TakeReal();
  cursor.SkipField();
  cursor.SkipTab();
  const AxisSpec rows = TakeAxisSpec(cursor, GridStyle::LettersUpper);
  cursor.SkipField();
  cursor.SkipTab();
  const AxisSpec columns = TakeAxisSpec(cursor, GridStyle::Decimal);
  grid.rowStyle = rows.style;
  grid.rowStart = rows.start;
  grid.columnStyle = columns.style;
  grid.columnStart = columns.start;
}

void ReadShadeLine(LineContext& context, std::string_view line) {
  constexpr size_t TagLength = 2;
  if (line.size() == TagLength) return;
  Grid* grid = NewestGrid(context.map);
  if (grid == nullptr) {
    NoteError(context.messages, "No grid for grid shading %s", {line});
    return;
  }
  FieldCursor cursor(line);
  cursor.Skip(TagLength);
  if (!cursor.At('\t')) NoteError(context.messages, "Bad grid spacing spec: %s", {line});
  cursor.Skip(1);
  GridShade shade;
  const std::string_view cell = cursor.Field();
  const size_t used = ReadCell(*grid, cell, shade);
  cursor.Skip(used);
  if (used == 0 || !cursor.SkipByte('\t')) {
    NoteError(context.messages, "Bad grid location in grid spacing: %s", {cell});
    return;
  }
  const std::string_view rest = cursor.Rest();
  const std::string_view color = rest.substr(0, FindAnyOf(rest, " \t\n\v\f\r,"));
  cursor.Skip(color.size());
  shade.color = ParseColor(color);
  shade.value = ReadShadeValue(cursor);
  shade.grid = grid;
  context.map.gridShades.push_front(shade);
}

}  // namespace orvane
