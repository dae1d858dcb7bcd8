#pragma once

#include "elevation/contours_work.h"

namespace orvane {

/// Makes the contour lines of a map from the altitudes of its points, as trails in front of
/// `map.contourTrails`.
///
/// The surface (contours_surface.h) is sampled on a grid in degrees. Where a level is between the
/// altitudes of neighbours it crosses the grid line between them, and crossings of one level are
/// chained from cell to cell. The chaining looks only so far, so that many lines end in the open or
/// fall to pieces; `GenerateContinuousContours` makes lines for the eye. These are for comparing
/// with the classic contours, crossing by crossing.
///
/// A line is a trail with the type "Contour %4.0f" of its level and the name "Contour %4.0f #%d",
/// numbered over all maps of the workspace. Its vertices are in `map.contourPoints`; the first one
/// is repeated at the end where the line closes.
///
/// \param interval  metres between levels
/// \return `ContourNothing` if the interval is not above 0, no point has an altitude, or all
///         altitudes are the same. `ContourRefused`, after an error, if the grid would have more
///         than `MostGridNodes`, an edge more than `MostLevelsOfEdge`, all of them more than
///         `MostCrossings`, or rivers and ridges would add more than `MostBarrierPoints`.
ContourOutcome GenerateContours(Map& map, int interval, const ContourProgress& progress = {});

}  // namespace orvane
