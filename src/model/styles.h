#pragma once

#include <type_traits>

namespace orvane {

/// How trails and grids look. The numbers are those of dumps and of the scripts of `edit`; map files
/// have words and letters in their place (mapfile/trail_words.h, `GridStyleLetter`).

enum class LineStyle { Unset = 0, Solid = 1, Dotted = 2, Dashed = 3 };

/// Which points of a trail have a label. `Auto` thins them out.
enum class LabelMode { Unset = 0, None = 1, FirstLast = 2, All = 3, Auto = 4 };

/// The marks at the points of a trail. An unknown word in a file gives `Unknown`.
enum class MarkStyle {
  None = 0,
  Circle = 1,
  Cross = 2,
  Tick = 3,
  Rect = 4,
  Plus = 5,
  HalfTick = 6,
  BackHalfTick = 7,
  Unknown = 15
};

/// How the cells of a grid are named along one axis.
enum class GridStyle {
  Unlabeled = 0,
  Decimal = 1,
  RomanLower = 2,  ///< accepted and kept; names no cell
  RomanUpper = 3,  ///< accepted and kept; names no cell
  LettersLower = 4,
  LettersUpper = 5
};

/// The number of a style.
template <typename Style>
constexpr int NumberOf(Style style) {
  static_assert(std::is_enum_v<Style>);
  return static_cast<int>(style);
}

/// The style with a number, which must be that of one.
template <typename Style>
constexpr Style StyleOf(int number) {
  static_assert(std::is_enum_v<Style>);
  return static_cast<Style>(number);
}

}  // namespace orvane
