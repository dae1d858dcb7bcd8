#pragma once

#include <array>
#include <string_view>

namespace orvane {

/// The words of a trail's style in a map file; a word's place in its list is the value it stands
/// for. Reader and writer share them. An empty word stands for "unset".
constexpr std::array<std::string_view, 4> LineStyleWords = {"", "Solid", "Dotted", "Dashed"};
constexpr std::array<std::string_view, 5> LabelModeWords = {"", "None", "FirstLast", "All", "Auto"};
constexpr std::array<std::string_view, 8> MarkStyleWords = {
    "None", "Circle", "Cross", "Tick", "Rect", "Plus", "HalfTick", "BackHalfTick"};

}  // namespace orvane
