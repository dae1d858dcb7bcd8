#include "view/trail_lines.h"

#include "geo/earth.h"
#include "view/pixel_square.h"
#include "view/view_transform.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr int SelectedWidth = 5;    // logical pixels, at least
constexpr double HalfTurn = 180.0;  // degrees

PenPattern PatternOf(LineStyle lineStyle) {
  if (lineStyle == LineStyle::Solid) return PenPattern::Solid;
  return lineStyle == LineStyle::Dotted ? PenPattern::Dotted : PenPattern::Dashed;
}

/// Joins segments that follow each other into one line of the canvas, so that dots and dashes run
/// on over the points of a trail.
class LineRun {
 public:
  explicit LineRun(Canvas& canvas) : canvas_(canvas) {}

  bool Empty() const { return given_ == 0; }

  void Add(Pixel pixel) {
    ++given_;
    // Points that fall on one pixel add nothing to be seen.
    const bool same =
        !pixels_.empty() && pixels_.back().x == pixel.x && pixels_.back().y == pixel.y;
    if (!same) pixels_.push_back(pixel);
  }

  void End() {
    if (given_ >= 2) {
      if (pixels_.size() == 1) pixels_.push_back(pixels_.front());
      canvas_.DrawPolyline(pixels_);
    }
    pixels_.clear();
    given_ = 0;
  }

 private:
  Canvas& canvas_;
  std::vector<Pixel> pixels_;
  size_t given_ = 0;
};

/// An end of a segment. It is projected only when the cheaper tests leave it open.
struct LineEnd {
  LatLon place;
  double north = 0;  ///< metres
  double turn = 0;   ///< degrees east of the centre, with the wrap
  Meters projected;  ///< the place in the plane of the view, once `isProjected`
  bool isProjected = false;
};

class TrailLine {
 public:
  explicit TrailLine(const MapWindow& view) : view_(view), transform_(view), run_(*view.target) {}

  void Draw(const Trail& trail) {
    bool joined = false;  // `last` is the end that the next segment starts from
    LineEnd last;
    for (const Point* point : trail.points) {
      if (!IsDrawable(*point)) {
        run_.End();
        joined = false;
        continue;
      }
      LineEnd end = MakeEnd(point->geo);
      if (joined) Segment(last, end);
      last = end;
      joined = true;
    }
    run_.End();
  }

 private:
  LineEnd MakeEnd(const LatLon& place) const {
    LineEnd end;
    end.place = place;
    end.north = DegreesToMeters(place.lat);
    end.turn = place.lon - view_.centralLongitude + view_.longitudeWrap;
    return end;
  }

  const Meters& Projected(LineEnd& end) const {
    if (!end.isProjected) end.projected = transform_.Project(end.place);
    end.isProjected = true;
    return end.projected;
  }

  bool Skipped(LineEnd& a, LineEnd& b) const {
    if (view_.rotation != 0) return false;
    if (a.north > view_.top && b.north > view_.top) return true;
    if (a.north < view_.bottom && b.north < view_.bottom) return true;
    if (a.turn < -HalfTurn && b.turn < -HalfTurn) return true;
    if (a.turn > HalfTurn && b.turn > HalfTurn) return true;
    const double eastA = Projected(a).east;
    const double eastB = Projected(b).east;
    return (eastA > view_.right && eastB > view_.right) ||
           (eastA < view_.left && eastB < view_.left);
  }

  void Segment(LineEnd& a, LineEnd& b) {
    if (Skipped(a, b)) {
      run_.End();
      return;
    }
    const bool alongParallel = view_.rotation == 0 && a.place.lat == b.place.lat;
    const bool pullA = alongParallel && IsBeyond(a);
    const bool pullB = alongParallel && IsBeyond(b);
    const ExactPixel from = pullA ? PulledPixel(a) : transform_.ToUnboundedPixel(Projected(a));
    const ExactPixel to = pullB ? PulledPixel(b) : transform_.ToUnboundedPixel(Projected(b));
    if (InSquare(from) && InSquare(to)) {
      AddSegment({RoundedPixel(from), pullA}, {RoundedPixel(to), pullB});
    } else if (const auto cut = CutSegment({from, to})) {
      AddSegment({RoundedPixel(cut->from), pullA || !InSquare(from)},
                 {RoundedPixel(cut->to), pullB || !InSquare(to)});
    } else {
      run_.End();
    }
  }

  /// An end of a segment.
  struct SegmentEnd {
    Pixel at;
    bool isLoose;  ///< the line does not run on into the segment beside it
  };

  void AddSegment(const SegmentEnd& from, const SegmentEnd& to) {
    if (from.isLoose) run_.End();
    if (run_.Empty()) run_.Add(from.at);
    run_.Add(to.at);
    if (to.isLoose) run_.End();
  }

  static bool IsBeyond(const LineEnd& end) { return end.turn > HalfTurn || end.turn < -HalfTurn; }

  /// The pixel of an end beyond the limit of the map, moved along its parallel to the limit.
  ExactPixel PulledPixel(const LineEnd& end) const {
    LatLon place = end.place;
    const double limit = end.turn > 0 ? HalfTurn : -HalfTurn;
    place.lon = view_.centralLongitude + limit - view_.longitudeWrap;
    return transform_.ToUnboundedPixel(transform_.Project(place));
  }

  const MapWindow& view_;
  const ScreenTransform transform_;
  LineRun run_;
};

}  // namespace

void DrawTrails(const MapWindow& view, const std::vector<ShownTrail>& shown) {
  for (const auto& [row, bounds] : shown) {
    if (IsBeyondView(view, bounds)) continue;
    Pen pen{PixelsOfWidth(view, row->trail->width), PatternOf(row->lineStyle),
            DrawnColor(row->color)};
    if (row->trail == view.selectedTrail) {
      pen.width = std::max(pen.width, DevicePixels(view, SelectedWidth));
      pen.color = MarkerColor;
    }
    view.target->SetPen(pen);
    DrawTrailLine(view, *row->trail);
  }
}

void DrawTrailLine(const MapWindow& view, const Trail& trail) { TrailLine(view).Draw(trail); }

int PixelsOfWidth(const MapWindow& view, double meters) {
  return std::max(0, TruncateToPixel(meters * static_cast<double>(view.scale) + 0.5));
}

}  // namespace orvane
