#pragma once

#include <QColor>

namespace orvane {

/// The colours of a cell table, light or dark desktop alike; and those of a selected row.
constexpr QColor CellBackground(0xC0, 0xC0, 0xC0);
constexpr QColor CellInk(0, 0, 0);
constexpr QColor InvertedCellBackground(0x3F, 0x3F, 0x3F);
constexpr QColor InvertedCellInk(0xFF, 0xFF, 0xFF);

}  // namespace orvane
