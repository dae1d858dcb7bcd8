#pragma once

#include "view/label_boxes.h"
#include "view/label_layer.h"
#include "view/map_window.h"
#include "view/point_marks.h"
#include "view/shown_trails.h"

#include <forward_list>
#include <optional>
#include <vector>

namespace orvane {

/// Which points of a list get label and mark.
enum class PointMode {
  None,
  FirstLast,
  All,
  Auto,   ///< all, thinned by the labels that Auto has placed before
  Loose,  ///< all; the points do not follow one another
  Sm1,    ///< marks of the points with that measure; no labels
  Sm2,
  Sm3
};

/// Places the names and marks of the points: along the trails whose rows are visible, in the order
/// of the pane, then of the loose and the nameless points of each map of the chain. A point gets
/// one label in a pass, however many lists it is in. The pass begins with `longitudeWrap` 0; with
/// another wrap the labels placed before still count, except those of a turned view that were
/// outside it and show only now. The font of labels must be the current one.
/// \param shown  from `ShownTrails`
/// \return what is to be drawn
LabelLayer PlaceLabels(MapWindow& view, const std::vector<ShownTrail>& shown);

/// Draws the points of one list at once, with labels and marks in one colour. The font of labels
/// must be the current one.
/// \param boxes  the labels that Auto has placed in this pass; Auto adds to them, all avoid them
void DrawTrailPoints(MapWindow& view, const std::vector<Point*>& points, PointMode mode,
                     const MarkLook& look, LabelBoxes& boxes);

/// What became of a label.
enum class LabelResult {
  Refused,        ///< it would overlap a kept label
  Placed,         ///< placed now
  PlacedEarlier,  ///< the point has its label in this pass already
};

/// What `PlaceLabel` returns.
struct PlacedLabel {
  LabelResult result = LabelResult::Refused;
  LabelSpot spot;  ///< where the label is drawn, if it was placed now
};

/// What `PlaceLabel` needs to know about the surroundings of a point.
struct LabelSite {
  Pixel pixel;                    ///< of the point
  std::optional<Pixel> last;      ///< of the last point of the list that was labelled
  std::optional<Pixel> previous;  ///< of the point before; none at the start of a list
  std::optional<Pixel> next;      ///< of the point after; none at the end of a list
  bool keepBox = false;           ///< the label's box is kept, for others to avoid
  int letterWidth = 0;            ///< from `LetterWidth`
};

/// Places the label of a named point so that it keeps clear of the line that leads to it: as a rule
/// to the lower right, before a line's first point and after its last one. A label whose box hits a
/// kept one is refused unless the point has a mark of its own. Marks the point as labelled.
PlacedLabel PlaceLabel(const MapWindow& view, Point& point, const LabelSite& site,
                       LabelBoxes& boxes);

}  // namespace orvane
