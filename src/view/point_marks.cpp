#include "view/point_marks.h"

#include "view/view_transform.h"

#include <cmath>

namespace orvane {

namespace {

// The letter is one of middle width; with it a mark is about as wide as a line of text is high.
constexpr std::string_view SizeLetter = "n";

int Sum(int a, int b) { return TruncateToPixel(1.0 * a + b); }

/// The radius of a mark that comes from the list.
int RadiusOf(const MarkLook& look) { return TruncateToPixel(2.0 * look.letterWidth / 3); }

/// The square of `radius` pixels to each side of a pixel.
PixelRect Around(Pixel pixel, int radius) {
  return {Sum(pixel.x, -radius), Sum(pixel.y, -radius), Sum(pixel.x, radius) + 1,
          Sum(pixel.y, radius) + 1};
}

void DrawOwnMark(Canvas& canvas, const MarkLook& look, const Point& point, Pixel pixel) {
  const PixelRect box = Around(pixel, OwnMarkRadius(point, look.letterWidth));
  canvas.SetBrush({(point.flags & PointMarkFilled) != 0, look.color});
  if (point.markShape == PointMarkCircle) {
    canvas.DrawOval(box);
  } else {
    canvas.DrawRect(box);
  }
}

/// To which sides of the way a tick goes.
enum class TickSides { Both, Right, Left };

/// A tick at right angles to the way from the point before.
void DrawTick(Canvas& canvas, Pixel pixel, const Pixel* previous, double length, TickSides sides) {
  if (previous == nullptr) return;
  const double dx = pixel.x - previous->x;
  const double dy = pixel.y - previous->y;
  const double size = std::hypot(dx, dy);
  if (size == 0) return;
  const double x = -dy / size * length;
  const double y = dx / size * length;
  const Pixel rightEnd{RoundToPixel(pixel.x + x), RoundToPixel(pixel.y + y)};
  const Pixel leftEnd{RoundToPixel(pixel.x - x), RoundToPixel(pixel.y - y)};
  canvas.DrawLine(sides == TickSides::Right ? pixel : leftEnd,
                  sides == TickSides::Left ? pixel : rightEnd);
}

void DrawCross(Canvas& canvas, Pixel p, int arm) {
  const PixelRect box{Sum(p.x, -arm), Sum(p.y, -arm), Sum(p.x, arm), Sum(p.y, arm)};
  canvas.DrawLine({box.left, box.top}, {box.right, box.bottom});
  canvas.DrawLine({box.left, box.bottom}, {box.right, box.top});
}

void DrawPlus(Canvas& canvas, Pixel p, int arm) {
  canvas.DrawLine({Sum(p.x, -arm), p.y}, {Sum(p.x, arm), p.y});
  canvas.DrawLine({p.x, Sum(p.y, -arm)}, {p.x, Sum(p.y, arm)});
}

}  // namespace

int LetterWidth(const MapWindow& view) { return view.target->TextWidth(SizeLetter); }

int OwnMarkRadius(const Point& point, int letterWidth) {
  return TruncateToPixel(1.0 * letterWidth * point.markSize / 3);
}

bool HasMark(const MarkLook& look, const Point& point) {
  return look.shape != MarkStyle::None || point.markShape != PointMarkNone;
}

int MarkReach(const MarkLook& look, const Point& point) {
  const bool own = point.markShape != PointMarkNone;
  const int radius = own ? OwnMarkRadius(point, look.letterWidth) : RadiusOf(look);
  // A thin outline of a circle or a square is inside its edge; a wide one is centred on it.
  if (own || look.shape == MarkStyle::Circle || look.shape == MarkStyle::Rect) {
    return Sum(radius, look.thickness > 1 ? look.thickness / 2 + 1 : 0);
  }
  // Lines are as much longer as they are thick, and their round ends and their sides add half.
  return Sum(radius, look.thickness + look.thickness / 2 + 1);
}

void DrawPointMark(Canvas& canvas, const MarkLook& look, const Point& point, Pixel pixel,
                   const Pixel* previous) {
  canvas.SetPen({look.thickness, PenPattern::Solid, look.color});
  if (point.markShape != PointMarkNone) {
    DrawOwnMark(canvas, look, point, pixel);
    return;
  }
  const int size = RadiusOf(look);
  const int arm = Sum(size, look.thickness - 1);
  const int tick = Sum(size, look.thickness);
  canvas.SetBrush({false, look.color});
  switch (look.shape) {
    case MarkStyle::Circle:
      canvas.DrawOval(Around(pixel, size));
      break;
    case MarkStyle::Rect:
      canvas.DrawRect(Around(pixel, size));
      break;
    case MarkStyle::Cross:
      DrawCross(canvas, pixel, arm);
      break;
    case MarkStyle::Plus:
      DrawPlus(canvas, pixel, arm);
      break;
    case MarkStyle::Tick:
      DrawTick(canvas, pixel, previous, tick, TickSides::Both);
      break;
    case MarkStyle::HalfTick:
      DrawTick(canvas, pixel, previous, tick, TickSides::Right);
      break;
    case MarkStyle::BackHalfTick:
      DrawTick(canvas, pixel, previous, tick, TickSides::Left);
      break;
    default:
      break;
  }
}

}  // namespace orvane
