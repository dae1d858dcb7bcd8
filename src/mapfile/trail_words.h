#pragma once

#include <array>
#include <string_view>

namespace orvane {

/// The words of a trail's style in a map file, for reader and writer; the number of a
/// style (model/styles.h) is the place of its word. An empty word means "unset".
constexpr std::array<std::string_view, 4> LineStyleWords = {"", "Solid", "Dotted", "Dashed"};
constexpr std::array<std::string_view, 5> LabelModeWords = {"", "None", "FirstLast", "All", "Auto"};
constexpr std::array<std::string_view, 8> MarkStyleWords = {
    "None", "Circle", "Cross", "Tick", "Rect", "Plus", "HalfTick", "BackHalfTick"};

}  // namespace orvane
