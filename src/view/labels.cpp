#include "view/labels.h"

#include "base/text.h"
#include "geo/earth.h"
#include "model/workspace.h"
#include "view/label_layer.h"
#include "view/trail_lines.h"
#include "view/view_transform.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace orvane {

namespace {

constexpr double HalfTurn = 180.0;  // degrees

std::uint32_t VisitedBit(const MapWindow& view) {
  return IsPrint(view) ? PointVisitedPrint : PointVisited;
}

bool ShowsHiddenNames(const MapWindow& view) {
  return view.map->workspace != nullptr && view.map->workspace->preferences.showHiddenNames;
}

int AddPixels(int a, int b) { return TruncateToPixel(1.0 * a + b); }

/// Works out where a label goes from its surroundings. The width of the text is asked
/// for only where the place depends on it, since it is what takes most of the time.
class LabelPlace {
 public:
  LabelPlace(const MapWindow& view, const Point& point, const LabelSite& site)
      : view_(view), site_(site), text_(LabelText(point)) {
    if (point.markShape != PointMarkNone) radius_ = OwnMarkRadius(point, site.letterWidth);
    dx_ = view.ascent / 2 + radius_;
    dy_ = view.labelAscent / 2 + radius_;
    KeepClearOfPrevious();
    KeepClearOfLineEnds();
  }

  /// The spot without the width of the text.
  LabelSpot LeftEnd() const {
    return {{AddPixels(site_.pixel.x, dx_), AddPixels(site_.pixel.y, dy_)}, 0};
  }
  LabelSpot Spot() const { return {LeftEnd().baseline, Width()}; }

 private:
  int Width() const {
    if (width_ < 0) width_ = std::clamp(view_.target->TextWidth(text_), 0, LargestPixel);
    return width_;
  }

  /// Moves the label off a line that comes from the point before at a flat angle or a steep one.
  void KeepClearOfPrevious() {
    if (!site_.previous) return;
    int row = site_.previous->y - site_.pixel.y;
    int col = site_.previous->x - site_.pixel.x;
    if (col < 0) {
      row = -row;
      col = -col;
    }
    if (row == 0 && col == 0) return;
    if (row >= 0 && row <= view_.labelHeight) {
      if (row >= 2 * col) {
        dy_ += view_.labelAscent / 2;
      } else if (col >= 3 * row && col < Width()) {
        Center();
      }
    } else if (row < 0 && row >= -view_.labelHeight) {
      // The width of the text does not count here; see "A label counts its width only if the point
      // before is below" in docs/compatibility.md.
      if (-row >= 2 * col) {
        dy_ += view_.labelAscent / 2;
      } else if (col >= -3 * row) {
        Center();
      }
    }
  }

  void Center() {
    dx_ = -Width() / 2;
    dy_ = view_.labelAscent - view_.labelHeight - view_.labelAscent / 3 - radius_;
  }

  /// Keeps the first and the last label of a list away from the line. A mark of the
  /// point's own does not count here.
  void KeepClearOfLineEnds() {
    if (!site_.next && site_.last) {
      if (IsFlatBetween(*site_.last, site_.pixel)) {
        StandBehind();
      } else if (IsFlatBetween(site_.pixel, *site_.last)) {
        StandBefore();
      }
    } else if (site_.next && !site_.last) {
      if (IsFlatBetween(*site_.next, site_.pixel)) {
        StandBehind();
      } else if (IsFlatBetween(site_.pixel, *site_.next)) {
        StandBefore();
      }
    }
  }

  /// True if `right` is to the right of `left`, by more than twice what it is above or below.
  static bool IsFlatBetween(Pixel left, Pixel right) {
    const int rows = right.y - left.y;
    const int columns = right.x - left.x;
    return columns > 2 * rows && columns > -2 * rows;
  }

  void StandBehind() {
    dx_ = view_.ascent / 2;
    dy_ = view_.labelAscent / 2;
  }
  void StandBefore() {
    dx_ = -Width() - view_.ascent / 2;
    dy_ = view_.labelAscent / 2;
  }

  const MapWindow& view_;
  const LabelSite& site_;
  const std::string_view text_;
  mutable int width_ = -1;
  int radius_ = 0;
  int dx_ = 0;
  int dy_ = 0;
};

/// Adds the points of one list to a layer; `Iterator` walks over `Point*`.
class PointListPlacer {
 public:
  PointListPlacer(MapWindow& view, PointMode mode, const MarkLook& look, LabelBoxes& boxes,
                  LabelLayer& layer)
      : view_(view),
        transform_(view),
        mode_(mode),
        look_(look),
        boxes_(boxes),
        layer_(layer),
        metersPerPixel_(view.scale > 0 ? 1 / LogicalScale(view) : 1),
        showHidden_(ShowsHiddenNames(view)) {}

  template <typename Iterator>
  void Place(Iterator begin, Iterator end) {
    if (mode_ == PointMode::None) return;
    const Point* previous = nullptr;
    for (Iterator at = begin; at != end; ++at) {
      const Iterator following = std::next(at);
      const Point* next = following != end && mode_ != PointMode::Loose ? *following : nullptr;
      const bool isEnd = at == begin || following == end;
      if (ModeTakes(**at, isEnd)) {
        if (const auto projected = ProjectedIfShown(**at)) {
          AddPoint(**at, transform_.ToPixel(*projected), previous, next);
        }
      }
      previous = *at;
    }
  }

 private:
  bool ModeTakes(const Point& point, bool isEnd) const {
    if (mode_ == PointMode::FirstLast) return isEnd;
    if (mode_ < PointMode::Sm1 || mode_ > PointMode::Sm3) return true;
    return point.sm[NumberOf(mode_) - NumberOf(PointMode::Sm1)] != 0;
  }

  /// The tests are in the order of what they cost: of a large map most points are outside.
  std::optional<Meters> ProjectedIfShown(const Point& point) const {
    if (!IsDrawable(point)) return std::nullopt;
    const bool turned = view_.rotation != 0;
    if (!turned) {
      const double north = DegreesToMeters(point.geo.lat);
      if (north > view_.top || north < view_.bottom) return std::nullopt;
      const double turn = point.geo.lon - view_.centralLongitude + view_.longitudeWrap;
      if (turn > HalfTurn || turn < -HalfTurn) return std::nullopt;
    }
    const Meters projected = transform_.Project(point.geo);
    if (!turned && (projected.east > view_.right || projected.east < view_.left)) {
      return std::nullopt;
    }
    const bool hasMark = point.markShape != PointMarkNone;
    if (!hasMark && (point.name.empty() || (!showHidden_ && IsHiddenName(point.name)))) {
      return std::nullopt;
    }
    // In the precision of the scale, so that a limit given as a round number holds at its value.
    if (point.labelLimit != 0 && static_cast<float>(point.labelLimit) < metersPerPixel_) {
      return std::nullopt;
    }
    return projected;
  }

  void AddPoint(Point& point, Pixel pixel, const Point* previous, const Point* next) {
    LabelSite site;
    site.pixel = pixel;
    site.previous = previous != nullptr && previous == added_ ? addedPixel_ : PixelOf(previous);
    added_ = &point;
    addedPixel_ = pixel;
    std::optional<LabelSpot> spot;
    if (mode_ < PointMode::Sm1 && !point.name.empty()) {
      site.last = last_;
      site.next = PixelOfNext(next, pixel);
      site.keepBox = mode_ == PointMode::Auto;
      site.letterWidth = look_.letterWidth;
      const PlacedLabel label = PlaceLabel(view_, point, site, boxes_);
      if (label.result == LabelResult::Refused) return;
      if (label.result == LabelResult::Placed) {
        last_ = pixel;
        spot = label.spot;
      }
    }
    layer_.Add(point, pixel, site.previous, spot, look_);
  }

  /// Once the list has a label it matters only whether there is a next point, and its place need
  /// not be worked out.
  std::optional<Pixel> PixelOfNext(const Point* next, Pixel standIn) const {
    if (last_ && next != nullptr && IsDrawable(*next)) return standIn;
    return PixelOf(next);
  }

  std::optional<Pixel> PixelOf(const Point* point) const {
    if (point == nullptr || !IsDrawable(*point)) return std::nullopt;
    return transform_.ToPixel(point->geo);
  }

  MapWindow& view_;
  const ScreenTransform transform_;
  const PointMode mode_;
  const MarkLook& look_;
  LabelBoxes& boxes_;
  LabelLayer& layer_;
  const float metersPerPixel_;  ///< of a logical pixel
  const bool showHidden_;
  std::optional<Pixel> last_;  ///< of the last label that was placed
  const Point* added_ =
      nullptr;  ///< the last point that was added, which is often the previous one
  Pixel addedPixel_;
};

void ForgetLabels(const MapWindow& view) {
  const std::uint32_t bit = VisitedBit(view);
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    ForEachPoint(*map, [bit](Point& point) {
      if ((point.flags & bit) != 0) point.flags &= ~bit;
    });
  }
}

/// A turned view draws the labels of points outside it, too, since no point is left out there. So
/// what was labelled outside without a wrap, but shows under the present one, has no label yet.
void ForgetLabelsOutside(MapWindow& view) {
  const std::uint32_t bit = VisitedBit(view);
  const ScreenTransform wrapped(view);
  const int wrap = std::exchange(view.longitudeWrap, 0);
  const ScreenTransform plain(view);
  view.longitudeWrap = wrap;
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    ForEachPoint(*map, [&](Point& point) {
      if ((point.flags & bit) == 0 || ViewOutOfWindow(view, wrapped.ToPixel(point.geo))) return;
      if (ViewOutOfWindow(view, plain.ToPixel(point.geo))) point.flags &= ~bit;
    });
  }
}

/// Which labels a row shows; one without a label mode of its own thins them out.
PointMode ModeOfRow(const TrailPanelRow& row) {
  switch (row.labelMode) {
    case LabelMode::None:
      return PointMode::None;
    case LabelMode::FirstLast:
      return PointMode::FirstLast;
    case LabelMode::All:
      return PointMode::All;
    case LabelMode::Auto:
    case LabelMode::Unset:
      break;
  }
  return PointMode::Auto;
}

}  // namespace

PlacedLabel PlaceLabel(const MapWindow& view, Point& point, const LabelSite& site,
                       LabelBoxes& boxes) {
  const std::uint32_t visited = VisitedBit(view);
  if ((point.flags & visited) != 0) return {LabelResult::PlacedEarlier, {}};
  const LabelPlace place(view, point, site);
  const bool mayHit = point.markShape != PointMarkNone || boxes.IsEmpty();
  // What hits without any width hits with one; most labels of a dense map end here.
  if (!mayHit && boxes.Hits(LabelBox(view, place.LeftEnd()))) return {LabelResult::Refused, {}};
  const LabelSpot spot = place.Spot();
  if (!mayHit && boxes.Hits(LabelBox(view, spot))) return {LabelResult::Refused, {}};
  if (site.keepBox) boxes.Add(LabelBox(view, spot));
  point.flags |= visited;
  return {LabelResult::Placed, spot};
}

void DrawTrailPoints(MapWindow& view, const std::vector<Point*>& points, PointMode mode,
                     const MarkLook& look, LabelBoxes& boxes) {
  LabelLayer layer(view);
  PointListPlacer(view, mode, look, boxes, layer).Place(points.begin(), points.end());
  layer.Draw();
}

LabelLayer PlaceLabels(MapWindow& view, const std::vector<ShownTrail>& shown) {
  if (view.longitudeWrap == 0) {
    ForgetLabels(view);
  } else if (view.rotation != 0) {
    ForgetLabelsOutside(view);
  }
  LabelLayer layer(view);
  LabelBoxes boxes;
  const int letterWidth = LetterWidth(view);
  for (const auto& [row, bounds] : shown) {
    if (!row->visible || IsBeyondView(view, bounds)) continue;
    const MarkLook look{row->markStyle, PixelsOfWidth(view, row->trail->width),
                        DrawnColor(row->color), letterWidth};
    const std::vector<Point*>& points = row->trail->points;
    PointListPlacer(view, ModeOfRow(*row), look, boxes, layer).Place(points.begin(), points.end());
  }
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    const MarkLook loose{MarkStyle::Circle, 1, ForegroundColor, letterWidth};
    PointListPlacer(view, PointMode::Loose, loose, boxes, layer)
        .Place(map->loosePoints.begin(), map->loosePoints.end());
    const MarkLook nameless{MarkStyle::None, 1, ForegroundColor, letterWidth};
    PointListPlacer(view, PointMode::Loose, nameless, boxes, layer)
        .Place(map->namelessPoints.begin(), map->namelessPoints.end());
  }
  return layer;
}

}  // namespace orvane
