#pragma once

#include "model/altitude_estimates.h"
#include "view/map_window.h"

#include <string>
#include <vector>

namespace orvane {

/// The info panel: what is under the pointer and, during a rubber band, how far it reaches.

/// One row of the panel.
struct InfoRow {
  bool mark = false;   ///< an upward arrow in front: the row shows a difference
  std::string text;    ///< may be empty
  std::string offset;  ///< goes into a column after the coordinates; may be empty
};

/// What the panel reads, from the top: four rows, and a fifth one during a rubber band between two
/// places of which one is on the equator.
///
/// At rest and while the map is dragged: latitude, longitude (or UTM in the first row and none in
/// the second), altitude, and the scale with the grid cell; after the first three the way from the map's origin, if it or a basis has one. During a
/// rubber band: how far down and to the right the pointer is from where the band began, each with
/// how far it is to the true north and east; the rise and slope; and the distance with the bearing.
/// Altitudes are cut to whole metres.
/// \param altitudes  those of `view.map`
std::vector<InfoRow> InfoRows(const MapWindow& view, const AltitudeEstimates& altitudes);

/// What the panel shows of any place, in three rows: latitude, longitude and altitude, each with the
/// way from the map's origin, if it or a basis has one.
/// \param place  with the altitude to show, or `NoAltitude`
std::vector<InfoRow> PlaceRows(const Map& map, const LatLon& place, CoordinateDisplay display);

/// Sets the form of angles that the panel shows.
inline void SetDisplayMode(MapWindow& view, CoordinateDisplay display) {
  view.coordinateDisplay = display;
}

/// The scale as the panel shows it: "1px=0.5m".
/// \param scale  logical pixels per metre
std::string ScaleLabel(float scale);

/// The figure of the row "GreatCircle", by tangents that take degrees as they are and an arc tangent
/// that is taken as degrees. It is not a distance on the earth (see the rule on the great circle in
/// docs/compatibility.md).
/// \return metres; 0 unless one of the two is exactly on the equator, less than 90 degrees of
///         longitude from the other
double GreatCircleDistance(const LatLon& pointer, const LatLon& press);

/// Width and height in device pixels.
struct InfoPanelSize {
  int width = 0;
  int height = 0;
};

/// The size that the panel needs: four lines high and as wide as a sample of its text, more where a
/// row would not fit. The canvas is set to its small font.
InfoPanelSize MeasureInfoPanel(Canvas& canvas, const std::vector<InfoRow>& rows);

/// Draws the panel with its upper left corner at (0, 0).
/// \param size  of the panel: it has a thin line along its left and lower edge
void DrawInfoPanel(Canvas& canvas, const std::vector<InfoRow>& rows, const InfoPanelSize& size,
                   Color background);

}  // namespace orvane
