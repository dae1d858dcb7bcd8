#pragma once

#include "elevation/contours_lines.h"
#include "elevation/contours_work.h"

#include <vector>

namespace orvane {

/// Makes contour lines for the eye, as trails in front of `map.continuousContours`: on the same
/// surface, grid and levels as `GenerateContours`, with lines that end nowhere but on the border of
/// the grid. Each crossing is where the straight line between the altitudes of its edge's ends
/// has the level, and each cell joins the crossings on its sides, so that no line can be lost. Of
/// the two ways through a cell in which the level crosses all four sides the mean of its corners
/// chooses. Lines of one level never cross; they can touch at a corner that has just that altitude.
///
/// Names, types and vertices are as with `GenerateContours`, with a numbering of their own. A
/// summit of one sample that has just the level is a line of two vertices at one place.
///
/// \param interval  metres between levels
/// \return as `GenerateContours`
ContourOutcome GenerateContinuousContours(Map& map, int interval,
                                          const ContourProgress& progress = {});

/// Traces the continuous contours of a grid that has been sampled: the last stage.
/// \param work   its places, altitudes, interval and progress are used
/// \param lines  receives the lines
/// \return `ContourMade`, `ContourCanceled`, or `ContourRefused` for too many crossings, of which
///         nothing is reported
ContourOutcome TraceContinuousContours(const ContourWork& work, std::vector<ContourLine>& lines);

}  // namespace orvane
