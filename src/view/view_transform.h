#pragma once

#include "view/map_window.h"

#include <cmath>
#include <string>

namespace orvane {

/// From places to pixels and back, and the operations that set scale and centre. North and east
/// are those of `LatLonToMeters`, each place scaled by the cosine of its own latitude; under a
/// rotation both directions turn about pixel (0, 0). None of these functions repaints.

/// The largest row or column, to both sides, that drawing can take.
constexpr int LargestPixel = 32000;

/// A pixel before rounding.
struct ExactPixel {
  double row = 0;
  double column = 0;
};

/// The pixel of a place, moved into the 16-bit range along the line to the centre of the window,
/// so that a line that leaves the window keeps its direction. Always within +-`LargestPixel`; a
/// place that is not a number comes out somewhere within it.
Pixel MapToScreen(const MapWindow& view, const LatLon& place);
/// The same before rounding by floor(v + 0.5).
ExactPixel MapToScreenExact(const MapWindow& view, const LatLon& place);

/// What `MapToScreen` takes from a view, worked out once for drawing many places: the results are
/// the same to the bit. Good until the view changes.
class ScreenTransform {
 public:
  explicit ScreenTransform(const MapWindow& view);

  /// North and east in metres, east from the central longitude with the wrap.
  Meters Project(const LatLon& place) const;
  ExactPixel ToExactPixel(const Meters& projected) const;
  /// Where a place is, however far beyond the range that drawing takes: for lines, which are cut
  /// at its edges. Always finite; a place too far away to count pixels comes out on the line from
  /// the centre towards it.
  ExactPixel ToUnboundedPixel(const Meters& projected) const;
  Pixel ToPixel(const Meters& projected) const;
  Pixel ToPixel(const LatLon& place) const { return ToPixel(Project(place)); }

 private:
  ExactPixel Turned(const Meters& projected) const;

  double top_;
  double left_;
  double scale_;
  double centralLongitude_;
  int longitudeWrap_;
  int centerColumn_;
  int centerRow_;
  bool rotated_;
  double cosine_;
  double sine_;
};

/// Cuts the fraction off and brings the value within +-`LargestPixel`; 0 for a value that is not a
/// number.
inline int TruncateToPixel(double value) {
  if (value >= -LargestPixel && value <= LargestPixel) return static_cast<int>(value);
  if (std::isnan(value)) return 0;
  return value > 0 ? LargestPixel : -LargestPixel;
}
/// Rounds by floor(v + 0.5), within the same bounds.
inline int RoundToPixel(double value) { return TruncateToPixel(std::floor(value + 0.5)); }

/// The place under a pixel; `longitudeWrap` does not count and the longitude may be beyond 180.
/// No altitude.
LatLon ScreenToMap(const MapWindow& view, Pixel pixel);

/// Sets the size of the client rectangle, each side from 1 to `LargestPixel` pixels, and its
/// centre, and nothing else.
void SetClientSize(MapWindow& view, int width, int height);

/// Sets how many pixels of the device make a logical one: 2 on a screen that is twice as fine as
/// usual. The place at the middle and the logical scale stay.
/// \param ratio  above 0; any other changes nothing
void SetPixelRatio(MapWindow& view, double ratio);

/// The scale in logical pixels per metre.
float LogicalScale(const MapWindow& view);

/// \return the pixels that come next to a length in logical pixels; at least 1
int DevicePixels(const MapWindow& view, int logicalPixels);

/// Brings a longitude into -180 up to but not including 180. One turn is taken off as a plain
/// difference, so that a longitude that is one turn out loses no digits.
double WrapLongitude(double longitude);

/// \return the scale within `SmallestScale` and `LargestScale` that is next to `scale`; the
///         smallest for a value that is not a number
float BoundedScale(double scale);

/// Puts a place at the middle of the client rectangle; scale and rotation stay.
void CenterOn(MapWindow& view, const LatLon& place);
/// \param north, east  metres; east from longitude 0
void CenterOnMeters(MapWindow& view, double north, double east);

/// A view kept from an earlier run, for the map of one file.
struct SavedView {
  std::string fileName;  ///< the map that it belongs to
  double latitude = 0;   ///< degrees, of the centre
  double longitude = 0;  ///< degrees, of the centre
  double scale = 0;      ///< logical pixels per metre; 0 (or less) for no saved view
  double rotation = 0;   ///< degrees
  bool hideGrids = false;
};

/// The first placing of a view, after `SetClientSize`: the saved view if it belongs to the map's
/// very file, else about one standard deviation of the points to each side of their mean.
/// \param saved  may be null
void InitView(MapWindow& view, const SavedView* saved = nullptr);

/// Fits the edges of the view to a client rectangle or a scale that has changed. The place at the
/// middle, the scale and the rotation stay.
void ResizeView(MapWindow& view);

/// The whole of a change of size: `SetClientSize`, then `InitView` the first time (it sets
/// `MapWindowPlaced`), `ResizeView` always.
void SizeView(MapWindow& view, int width, int height, const SavedView* saved = nullptr);

/// Puts the middle of a box at the middle of the view, at the scale at which the box shows with a
/// margin of a fortieth at each side. The scale is that of a view that is not turned, so the
/// corners of a box may be outside a turned one. A box of no extent in either direction is shown
/// like a map of one point, with a metre about it.
/// \param north, south, east, west  degrees
void FitToBounds(MapWindow& view, double north, double south, double east, double west);

/// The scales, in pixels per metre, within which the functions of this file keep a view that they
/// zoom: from the whole earth within a few pixels to a thousandth of a millimetre.
constexpr double SmallestScale = 1e-7;
constexpr double LargestScale = 1e6;

/// Centre and radius of the points of a map, in metres.
struct Extent {
  double north = 0;
  double east = 0;   ///< from longitude 0
  float radius = 1;  ///< above 0
};

/// Mean and spread of the points of the first map down the basis chain that has trails or loose
/// points: those of its trails, or of its loose points if its trails have none. Points that are
/// not placed do not count.
Extent MapExtent(const Map& map);

/// True if a pixel is outside the client rectangle.
bool ViewOutOfWindow(const MapWindow& view, Pixel pixel);

/// Moves the map under the pointer from `pressPoint`, which follows, to `pixel`.
void PanTo(MapWindow& view, Pixel pixel);

/// Keys that are held while a key or a button is pressed.
struct HeldKeys {
  bool shift = false;
  bool control = false;
};

/// Directions of the arrow keys.
enum class ViewStep { North, South, East, West };
/// Moves the centre by a tenth of the view; by a hundredth with shift, a thirtieth with control.
void StepView(MapWindow& view, ViewStep step, const HeldKeys& keys);

/// Multiplies the scale and centres on the place under `pixel`: the keys "+" and "-" with 2 and
/// 0.5 at the pointer, and the double click.
void ZoomOnPixel(MapWindow& view, Pixel pixel, double factor);
/// Multiplies the scale; the place under `pixel` stays there, as the mouse wheel wants it.
void ZoomAboutPixel(MapWindow& view, Pixel pixel, double factor);
/// What a double click does: in by 2, or out if shift is held or, the other way round, for a
/// button other than the left one.
void ZoomByDoubleClick(MapWindow& view, const HeldKeys& keys, bool otherButton);
/// Shows the box of two pixels of a rubber band.
void ZoomToPixels(MapWindow& view, Pixel a, Pixel b);

}  // namespace orvane
