#pragma once

#include "geo/angle_text.h"
#include "geo/positions.h"
#include "model/map.h"
#include "view/canvas.h"
#include "view/error_overlay.h"
#include "view/panel_rows.h"

#include <cmath>
#include <cstdint>
#include <list>

namespace orvane {

/// Bits of `MapWindow::flags`. The form of angles has a field of its own, `coordinateDisplay`.
enum MapWindowFlag : std::uint32_t {
  MapWindowPlaced = 1,         ///< the view has its first place
  MapWindowInfoShown = 2,      ///< the info panel is shown
  MapWindowInfoWaits = 4,      ///< the info panel is shown at the next change of size
  MapWindowDrag = 8,           ///< a mouse button is held
  MapWindowPan = 16,           ///< the drag moves the map
  MapWindowPrint = 32,         ///< the view is one of paper
  MapWindowGridsHidden = 64,   ///< no grids are drawn
  MapWindowFindMarker = 512,   ///< the Find marker is at `highlight`
  MapWindowTrailFlash = 1024,  ///< `selectedTrail` is shown by Find
  MapWindowNotesDue = 2048,    ///< the map's notes are to be shown
  MapWindowNotesShown = 4096,  ///< the map's notes are up
  MapWindowSelection = 8192,   ///< `selection` holds a rubber band
  MapWindowAreaShown = 16384,  ///< `selection` is an area for the printer, and its box is shown
};

/// Takes the places that are clicked while it is set as the target of a view.
class InputTarget {
 public:
  virtual ~InputTarget() = default;
  /// \param place  where the button went down; no altitude
  virtual void TakePosition(const LatLon& place) = 0;
};

/// Where the thumb of a scroll bar rests: a third of its way from either end.
constexpr int ScrollRest = 60;

/// One view of a map: where it looks, what it shows and what it draws on. It is plain: the
/// functions of view_transform.h move it and `DrawMap` draws it; neither knows a window, so a
/// caller that changes a view asks for its own repaint. Screen, picture and paper are alike; a job
/// on paper works on a copy (which copies the rows, a few hundred records).
///
/// Pixels are those of the device. What users set or read in pixels, such as a label limit or
/// "1px=", counts logical pixels, of which a screen of fine pixels shows as many as any other.
struct MapWindow {
  Map* map = nullptr;        ///< what is shown; not owned
  Canvas* target = nullptr;  ///< what is drawn on now; not owned

  // Where the view looks.
  double top = 0;               ///< metres north of the equator at the upper edge
  double bottom = 0;            ///< the same at the lower edge
  double left = 0;              ///< metres east of the central longitude; normally -`right`
  double right = 0;             ///< the same at the right edge
  float scale = 1;              ///< pixels per metre
  float rotation = 0;           ///< degrees; at 0 north is up, at 90 east is
  double centralLongitude = 0;  ///< degrees, from -180 up to but not including 180
  int longitudeWrap = 0;        ///< 0, 360 or -360; not 0 only inside `DrawMap`
  double pixelRatio = 1;        ///< pixels to a logical one; set by `SetPixelRatio`
  int clientWidth = 0;          ///< pixels; set by `SetClientSize`, as the next three
  int clientHeight = 0;         ///< pixels
  int centerColumn = 0;         ///< half the width
  int centerRow = 0;            ///< half the height

  // How it is drawn.
  std::uint32_t flags = 0;  ///< `MapWindowFlag` bits
  CoordinateDisplay coordinateDisplay = CoordinateDisplay::Minutes;
  Color background = 0xFFFFFF;  ///< what the canvas is cleared to
  Color gridColor = 0xA0A0A0;   ///< grid lines on paper
  bool fewColors = false;       ///< the display has too few colours for light greys
  int ascent = 0;               ///< pixels above the baseline of the small font
  int lineHeight = 0;           ///< pixels of its ascent and descent
  int labelAscent = 0;          ///< the same for the font of labels
  int labelHeight = 0;
  float penWidthFactor = 1;  ///< unit of thick lines: `labelHeight` / 8 on a screen

  std::list<TrailPanelRow> trailViews;  ///< which trails are drawn and how; the tree's top level
  std::list<RangePanelRow> rangeViews;  ///< which ranges are drawn and how

  ErrorOverlay errors;                   ///< drawn over the trails
  const Trail* selectedTrail = nullptr;  ///< drawn thick in `MarkerColor`, even if not visible
  LatLon highlight;                      ///< where the Find marker is

  // What the pointer does.
  Pixel pressPoint;     ///< the last press of a button; moves with a pan
  Pixel pointer;        ///< where the pointer is
  double savedTop = 0;  ///< `top` and `left` at the last press
  double savedLeft = 0;
  LatLon selection[2];        ///< the corners of the last rubber band: its beginning, its end
  bool transectMode = false;  ///< the next rubber band is a transect
  InputTarget* inputTarget = nullptr;  ///< takes clicks, or null; not owned
  int verticalPos = ScrollRest;        ///< the last place of each thumb
  int horizontalPos = ScrollRest;
};

/// True for a view of paper.
inline bool IsPrint(const MapWindow& view) { return (view.flags & MapWindowPrint) != 0; }

/// True for a point with a place that can be drawn: it is placed, and its place is a number.
inline bool IsDrawable(const Point& point) {
  return IsPlaced(point) && std::isfinite(point.geo.lat) && std::isfinite(point.geo.lon);
}

/// The colour that a record's colour is drawn in: the foreground if it has none.
inline Color DrawnColor(Color color) { return color == NoColor ? ForegroundColor : color; }

/// Takes the measures of both fonts from `view.target`, and the unit of thick lines for a screen.
void TakeFontMetrics(MapWindow& view);

}  // namespace orvane
