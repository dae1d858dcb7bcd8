#pragma once

#include "pages/print_map_window.h"
#include "pages/printed_pages.h"

#include <optional>
#include <string>

namespace orvane {

/// One line of the legend: the credits of the map, the label, the scale, the centre, what is up on
/// the page, the magnetic deviation.
/// \param index  from 0
/// \return nothing after the last line; an empty line has no text but takes its room
std::optional<std::string> LegendLine(const PrintMapWindow& view, int index);

/// \return true if the job has a legend, on its last page
bool HasLegend(const PrintMapWindow& view);

/// The fonts of a map page with a text of `pointSize`.
PageFonts LegendFonts(int pointSize);

/// Draws the legend in the bottom right corner of the page: a white box with its lines and, beside
/// the line with the scale, the scale bar.
void DrawLegend(const PrintMapWindow& view);

}  // namespace orvane
