#include "paint/qt_canvas.h"

#include "paint/painted_picture.h"
#include "support/dice.h"
#include "view/label_layer.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Marks = std::set<std::pair<int, int>>;

constexpr Color Blue = 0x0000FF;
constexpr Color Green = 0x008000;

/// All pixels of a rectangle.
Marks PixelsOf(const PixelRect& rect) {
  Marks pixels;
  for (int y = rect.top; y < rect.bottom; ++y) {
    for (int x = rect.left; x < rect.right; ++x) pixels.emplace(x, y);
  }
  return pixels;
}

TEST(QtCanvas, DrawsHairlinesOnTheirPixels) {
  for (const int width : {0, 1}) {
    for (const bool antialias : {false, true}) {
      PaintedPicture picture(20, 20, {.antialias = antialias});
      picture.Paper().SetPen({.width = width, .color = Blue});
      picture.Paper().DrawLine({3, 5}, {12, 5});
      picture.Paper().DrawLine({15, 2}, {15, 9});
      const Marks marked = picture.Marked();
      // Whether the pixel of the far end belongs to a line is the painter's choice.
      for (int x = 4; x < 12; ++x) EXPECT_EQ(picture.ColorAt(x, 5), Blue) << width << antialias;
      for (int y = 3; y < 9; ++y) EXPECT_EQ(picture.ColorAt(15, y), Blue) << width << antialias;
      for (const auto& [x, y] : marked) EXPECT_TRUE(y == 5 || x == 15) << x << "," << y;
    }
  }
}

TEST(QtCanvas, CentersWideLinesOnTheirPixels) {
  for (const bool antialias : {false, true}) {
    PaintedPicture odd(30, 30, {.antialias = antialias});
    odd.Paper().SetPen({.width = 3, .color = Blue});
    odd.Paper().DrawLine({8, 10}, {20, 10});
    for (int y = 0; y < 30; ++y) {
      EXPECT_EQ(odd.ColorAt(14, y), y >= 9 && y <= 11 ? Blue : 0xFFFFFF) << y << antialias;
    }
    PaintedPicture even(30, 30, {.antialias = antialias});
    even.Paper().SetPen({.width = 4, .color = Blue});
    even.Paper().DrawLine({8, 10}, {20, 10});
    for (int y = 0; y < 30; ++y) {
      EXPECT_EQ(even.ColorAt(14, y), y >= 8 && y <= 11 ? Blue : 0xFFFFFF) << y << antialias;
    }
  }
}

TEST(QtCanvas, CutsThePointOfASharpCorner) {
  for (const bool antialias : {false, true}) {
    PaintedPicture picture(200, 60, {.antialias = antialias});
    picture.Paper().SetPen({.width = 9, .color = Blue});
    picture.Paper().DrawPolygon({{20, 20}, {150, 30}, {20, 40}});
    EXPECT_LE(picture.MarkedBounds().right, 150 + 9 / 2 + 1) << antialias;
    EXPECT_GE(picture.MarkedBounds().right, 150) << antialias;
  }
}

TEST(QtCanvas, RightAngledCornersOfAreasArePointed) {
  PaintedPicture picture(40, 40);
  picture.Paper().SetPen({.width = 5, .color = Blue});
  picture.Paper().DrawPolygon({{10, 10}, {30, 10}, {30, 30}, {10, 30}});
  EXPECT_EQ(picture.ColorAt(8, 8), Blue);
  EXPECT_EQ(picture.ColorAt(32, 32), Blue);
}

/// Draws labels with marks, most of them under others.
/// \param perDraw  how many are drawn at a time; those do not draw what they hide of each other
void DrawCrowd(Canvas& canvas, int perDraw) {
  static const std::vector<std::string> Names = {"Pj", "fWAy_123456", "Oru sleeping tree",
                                                 "\xC9t\xE9", "A\u030A\u0301\u0302g"};
  canvas.SetFont(CanvasFont::Label);
  MapWindow view;
  view.target = &canvas;
  TakeFontMetrics(view);
  std::vector<Point> points(40);
  constexpr std::uint64_t Seed = 8;
  Dice dice(Seed);
  for (size_t i = 0; i < points.size(); ++i) {
    points[i].name = Names[i % Names.size()];
    points[i].markShape = static_cast<std::uint8_t>(i / 5 % 3);
    points[i].markSize = dice.Int(0, 4);
    if (i % 2 == 0) points[i].flags |= PointMarkFilled;
  }
  LabelLayer layer(view);
  for (int i = 0; i < 3000; ++i) {
    const Point& point = points[static_cast<size_t>(i) % points.size()];
    const Pixel at{dice.Int(-60, 320), dice.Int(-20, 220)};
    const MarkLook look{StyleOf<MarkStyle>(dice.Int(0, 7)), i % 5, dice.Int(0, 0xFFFFFF),
                        LetterWidth(view)};
    const Pixel mark{at.x + dice.Int(-30, 30), at.y + dice.Int(-30, 30)};
    const Pixel previous{mark.x + dice.Int(-9, 9), mark.y + dice.Int(-9, 9)};
    layer.Add(point, mark, previous, LabelSpot{at, canvas.TextWidth(point.name)}, look);
    if (i % perDraw == 0) layer.Draw();
  }
  layer.Draw();
}

TEST(QtCanvas, ACrowdOfLabelsLooksTheSameWithoutWhatIsHidden) {
  for (const bool antialias : {false, true}) {
    for (const double pixelRatio : {1.0, 2.0}) {
      PaintedPicture whole(300, 200, {.antialias = antialias}, pixelRatio);
      DrawCrowd(whole.Paper(), 1);
      PaintedPicture part(300, 200, {.antialias = antialias}, pixelRatio);
      DrawCrowd(part.Paper(), 3000);
      EXPECT_TRUE(whole.Image() == part.Image()) << antialias << pixelRatio;
    }
  }
}

TEST(QtCanvas, DrawsRectanglesWithinTheirBounds) {
  const PixelRect rect{4, 6, 14, 12};
  PaintedPicture outlined(20, 20);
  outlined.Paper().SetPen({.color = Blue});
  outlined.Paper().SetBrush({.solid = true, .color = Green});
  outlined.Paper().DrawRect(rect);
  EXPECT_EQ(outlined.Marked(), PixelsOf(rect));
  EXPECT_EQ(outlined.ColorAt(4, 6), Blue);
  EXPECT_EQ(outlined.ColorAt(13, 11), Blue);
  EXPECT_EQ(outlined.ColorAt(5, 7), Green);

  PaintedPicture filled(20, 20);
  filled.Paper().SetPen({.pattern = PenPattern::Hollow});
  filled.Paper().SetBrush({.solid = true, .color = Green});
  filled.Paper().DrawRect(rect);
  EXPECT_EQ(filled.Marked(), PixelsOf(rect));
  EXPECT_EQ(filled.ColorAt(4, 6), Green);

  PaintedPicture hollow(20, 20);
  hollow.Paper().SetPen({.color = Blue});
  hollow.Paper().SetBrush({});
  hollow.Paper().DrawRect(rect);
  EXPECT_EQ(hollow.ColorAt(8, 8), 0xFFFFFF);
}

TEST(QtCanvas, DrawsSymmetricOvalsWithinTheirBounds) {
  for (const bool outlined : {true, false}) {
    for (const int size : {4, 5, 6, 7, 9, 12, 21, 41}) {
      PaintedPicture picture(60, 60);
      const PenPattern pattern = outlined ? PenPattern::Solid : PenPattern::Hollow;
      picture.Paper().SetPen({.pattern = pattern, .color = Blue});
      picture.Paper().SetBrush({.solid = !outlined, .color = Green});
      picture.Paper().DrawOval({10, 10, 10 + size, 10 + size});
      EXPECT_EQ(picture.MarkedBounds(), (PixelRect{10, 10, 10 + size, 10 + size})) << size;
      EXPECT_EQ(picture.ColorAt(10 + size / 2, 10 + size / 2), outlined ? 0xFFFFFF : Green);
      const Marks marked = picture.Marked();
      for (const auto& [x, y] : marked) {
        EXPECT_TRUE(marked.contains({19 + size - x, y})) << size << ": " << x << "," << y;
        EXPECT_TRUE(marked.contains({x, 19 + size - y})) << size << ": " << x << "," << y;
      }
    }
  }
}

/// Draws ovals of one size, some of them over the edges of a picture of 90 x 90 pixels.
/// \param draw  called with the left and the top of each
template <typename Draw>
void DrawOvals(int size, const Draw& draw) {
  Dice dice(static_cast<std::uint64_t>(size));
  for (int i = 0; i < 5; ++i) draw(dice.Int(-size, 90), dice.Int(-size, 90));
}

// Small ovals are copies of a picture. They look as the painter draws them.
TEST(QtCanvas, ACopiedOvalIsThePaintersOwn) {
  for (const double pixelRatio : {1.0, 1.75, 2.0}) {
    for (const bool filled : {false, true}) {
      PaintedPicture copied(90, 90, {}, pixelRatio);
      QImage painted(90, 90, QImage::Format_RGB32);
      painted.fill(Qt::white);
      QPainter painter(&painted);
      painter.setPen(QPen(PaintColor(Blue), 0));
      painter.setBrush(filled ? QBrush(PaintColor(Green)) : QBrush(Qt::NoBrush));
      copied.Paper().SetPen({.color = Blue});
      copied.Paper().SetBrush({.solid = filled, .color = Green});
      for (int size = 1; size <= 70; ++size) {
        const int height = size % 3 == 0 ? size / 2 + 1 : size;
        DrawOvals(size, [&](int left, int top) {
          copied.Paper().DrawOval({left, top, left + size, top + height});
          painter.drawEllipse(QRect(left, top, size - 1, height - 1));
        });
      }
      painter.end();
      painted.setDevicePixelRatio(pixelRatio);
      EXPECT_TRUE(copied.Image() == painted) << pixelRatio << filled;
    }
  }
}

TEST(QtCanvas, ACopiedOvalTakesEachPenAndBrush) {
  PaintedPicture picture(200, 20);
  QtCanvas& paper = picture.Paper();
  const auto drawAt = [&paper](int left) { paper.DrawOval({left, 4, left + 9, 13}); };
  for (const int left : {0, 100}) {
    paper.SetPen({.color = Blue});
    paper.SetBrush({});
    drawAt(left);
    paper.SetPen({.color = Green});
    drawAt(left + 20);
    paper.SetBrush({.solid = true, .color = Blue});
    drawAt(left + 40);
    paper.SetPen({.pattern = PenPattern::Hollow, .color = Green});
    drawAt(left + 60);
    paper.SetBrush({});
    drawAt(left + 80);
  }
  for (const int left : {0, 100}) {
    const auto colors = [&](int at) {
      return std::vector<int>{picture.ColorAt(at, 8), picture.ColorAt(at + 4, 8)};
    };
    EXPECT_EQ(colors(left), (std::vector<int>{Blue, 0xFFFFFF}));
    EXPECT_EQ(colors(left + 20), (std::vector<int>{Green, 0xFFFFFF}));
    EXPECT_EQ(colors(left + 40), (std::vector<int>{Green, Blue}));
    EXPECT_EQ(colors(left + 60), (std::vector<int>{Blue, Blue}));
    EXPECT_EQ(colors(left + 80), (std::vector<int>{0xFFFFFF, 0xFFFFFF}));
  }
}

TEST(QtCanvas, FillsRectanglesOfAnySizeToTheirEdges) {
  for (const bool antialias : {false, true}) {
    for (const auto& [width, height] :
         {std::pair(1, 1), {50, 9}, {128, 32}, {129, 32}, {128, 33}, {190, 80}}) {
      PaintedPicture picture(200, 90, {.antialias = antialias});
      picture.Paper().SetPen({.pattern = PenPattern::Hollow});
      picture.Paper().SetBrush({.solid = true, .color = Blue});
      picture.Paper().DrawRect({0, 0, 200, 90});
      const PixelRect rect{3, 4, 3 + width, 4 + height};
      for (const Color color : {Green, 0xFFFFFF}) {
        picture.Paper().SetBrush({.solid = true, .color = color});
        picture.Paper().DrawRect(rect);
      }
      EXPECT_EQ(picture.Marked().size(), 200U * 90U - static_cast<size_t>(width * height))
          << antialias << width << "x" << height;
      for (const auto& [x, y] : picture.Marked()) ASSERT_EQ(picture.ColorAt(x, y), Blue);
      EXPECT_EQ(picture.ColorAt(3, 4), 0xFFFFFF);
    }
  }
}

TEST(QtCanvas, FillsPolygonsWithTheBrushAndOutlinesThemWithThePen) {
  PaintedPicture picture(30, 30);
  picture.Paper().SetPen({.color = Blue});
  picture.Paper().SetBrush({.solid = true, .color = Green});
  picture.Paper().DrawPolygon({{5, 5}, {20, 5}, {20, 20}, {5, 20}});
  EXPECT_EQ(picture.ColorAt(5, 10), Blue);
  EXPECT_EQ(picture.ColorAt(12, 20), Blue);
  EXPECT_EQ(picture.ColorAt(12, 12), Green);
  EXPECT_EQ(picture.MarkedBounds(), (PixelRect{5, 5, 21, 21}));
}

TEST(QtCanvas, DrawsNoLineForFewerThanTwoPoints) {
  PaintedPicture picture(10, 10);
  picture.Paper().SetPen({.width = 3, .color = Blue});
  picture.Paper().DrawPolyline({});
  picture.Paper().DrawPolyline({{5, 5}});
  EXPECT_TRUE(picture.Marked().empty());
}

TEST(QtCanvas, HollowPensDrawNoLines) {
  PaintedPicture picture(20, 20);
  picture.Paper().SetPen({.width = 3, .pattern = PenPattern::Hollow, .color = Blue});
  picture.Paper().DrawLine({2, 2}, {15, 15});
  picture.Paper().DrawPolyline({{2, 15}, {15, 2}});
  EXPECT_TRUE(picture.Marked().empty());
}

TEST(QtCanvas, LongWideLinesHaveNoGaps) {
  PaintedPicture picture(1000, 40);
  picture.Paper().SetPen({.width = 5, .color = Blue});
  std::vector<Pixel> points;
  for (int x = 5; x < 995; ++x) points.push_back({x, 20});
  picture.Paper().DrawPolyline(points);
  for (int x = 5; x < 994; ++x) ASSERT_EQ(picture.ColorAt(x, 20), Blue) << x;
}

TEST(QtCanvas, DottedLinesAreSparserThanDashedOnes) {
  const auto marksOf = [](PenPattern pattern, int width) {
    PaintedPicture picture(400, 20);
    picture.Paper().SetPen({.width = width, .pattern = pattern, .color = Blue});
    picture.Paper().DrawPolyline({{0, 10}, {399, 10}});
    return picture.Marked().size();
  };
  for (const int width : {0, 3}) {
    const size_t solid = marksOf(PenPattern::Solid, width);
    const size_t dashed = marksOf(PenPattern::Dashed, width);
    const size_t dotted = marksOf(PenPattern::Dotted, width);
    EXPECT_GT(dotted, solid / 5);
    EXPECT_GT(dashed, dotted + solid / 10);
    EXPECT_GT(solid, dashed + solid / 10);
  }
}

TEST(QtCanvas, KeepsWithinItsClip) {
  PaintedPicture picture(40, 40);
  QtCanvas& canvas = picture.Paper();
  canvas.SetClip({10, 10, 20, 20});
  canvas.SetPen({.color = Blue});
  canvas.DrawText({0, 18}, "mmmmmmmm");
  canvas.DrawLine({0, 15}, {39, 15});
  canvas.SetClip({25, 25, 30, 30});
  canvas.Clear(Green);
  EXPECT_EQ(canvas.Clip(), (PixelRect{25, 25, 30, 30}));
  canvas.SetClip({30, 30, 30, 30});
  canvas.Clear(Blue);
  canvas.DrawLine({0, 32}, {39, 32});
  const Marks inLine = PixelsOf({10, 10, 20, 20});
  const Marks cleared = PixelsOf({25, 25, 30, 30});
  for (const auto& pixel : picture.Marked()) {
    EXPECT_TRUE(inLine.contains(pixel) || cleared.contains(pixel))
        << pixel.first << "," << pixel.second;
  }
  EXPECT_EQ(picture.ColorAt(15, 15), Blue);
  EXPECT_EQ(picture.ColorAt(29, 29), Green);
}

TEST(QtCanvas, ClearsTheClipAndNothingElse) {
  PaintedPicture picture(20, 20);
  QtCanvas& canvas = picture.Paper();
  canvas.SetPen({.color = Blue});
  canvas.DrawLine({0, 3}, {19, 3});
  canvas.SetClip({5, 0, 10, 20});
  canvas.Clear(0xFFFFFF);
  canvas.SetClip({0, 0, 20, 20});
  canvas.DrawLine({0, 8}, {19, 8});
  EXPECT_EQ(picture.ColorAt(7, 3), 0xFFFFFF);
  EXPECT_EQ(picture.ColorAt(3, 3), Blue);
  EXPECT_EQ(picture.ColorAt(12, 3), Blue);
  EXPECT_EQ(picture.ColorAt(7, 8), Blue);
}

TEST(QtCanvas, AlternatesBetweenPensAndTextWithoutMixingThem) {
  PaintedPicture picture(200, 40);
  QtCanvas& canvas = picture.Paper();
  canvas.SetForeColor(Green);
  canvas.SetPen({.color = Blue});
  canvas.DrawText({10, 20}, "III");
  canvas.DrawLine({100, 5}, {150, 5});
  canvas.SetPen({.color = 0xFF0000});
  canvas.DrawText({60, 20}, "III");
  canvas.DrawLine({100, 9}, {150, 9});
  canvas.SetForeColor(Blue);
  canvas.DrawLine({100, 13}, {150, 13});
  EXPECT_EQ(picture.ColorAt(120, 5), Blue);
  EXPECT_EQ(picture.ColorAt(120, 9), 0xFF0000);
  EXPECT_EQ(picture.ColorAt(120, 13), 0xFF0000);
  // Letters are smoothed, but never take on the colour of a line: red stays at least as strong as
  // in the text's own green.
  for (int x = 0; x < 90; ++x) {
    for (int y = 0; y < 40; ++y) {
      const int color = picture.ColorAt(x, y);
      EXPECT_GE((color >> 8) & 0xFF, color & 0xFF);
    }
  }
}

TEST(QtCanvas, GivesTheSpecialColorsALook) {
  EXPECT_EQ(PaintColor(ForegroundColor), QColor(Qt::black));
  EXPECT_EQ(PaintColor(NoColor), QColor(Qt::black));
  EXPECT_EQ(PaintColor(0x12AB34), QColor(0x12, 0xAB, 0x34));
  const QColor marker = PaintColor(MarkerColor);
  EXPECT_EQ(marker.alpha(), 255);
  // Far from the paper and from the usual colours of maps.
  for (const Color usual : {0xFFFFFF, 0x000000, 0x008000, 0x0000FF, 0xA0A0A0, 0x808000}) {
    const QColor other = PaintColor(usual);
    const int distance = std::abs(marker.red() - other.red()) +
                         std::abs(marker.green() - other.green()) +
                         std::abs(marker.blue() - other.blue());
    EXPECT_GT(distance, 150) << usual;
  }
}

TEST(QtCanvas, CountsInDevicePixelsOnFineScreens) {
  for (const double ratio : {1.5, 2.0}) {
    PaintedPicture picture(60, 60, {}, ratio);
    picture.Paper().SetPen({.color = Blue});
    picture.Paper().DrawLine({3, 31}, {50, 31});
    picture.Paper().SetPen({.pattern = PenPattern::Hollow});
    picture.Paper().SetBrush({.solid = true, .color = Green});
    picture.Paper().DrawRect({10, 40, 20, 45});
    for (int y = 0; y < 40; ++y) {
      EXPECT_EQ(picture.ColorAt(30, y), y == 31 ? Blue : 0xFFFFFF) << ratio << " " << y;
    }
    for (int y = 40; y < 60; ++y) {
      EXPECT_EQ(picture.ColorAt(10, y), y < 45 ? Green : 0xFFFFFF) << ratio << " " << y;
    }
  }
}

TEST(QtCanvas, LeavesThePainterAsItWas) {
  QImage image(20, 20, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setPen(Qt::red);
  const QTransform before = painter.transform();
  const CanvasFonts fonts(96);
  {
    QtCanvas canvas(painter, fonts, {0, 0, 20, 20});
    canvas.SetClip({3, 3, 5, 5});
    canvas.SetPen({.width = 4, .color = Blue});
    canvas.DrawLine({0, 0}, {9, 9});
  }
  EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
  EXPECT_FALSE(painter.hasClipping());
  EXPECT_EQ(painter.transform(), before);
}

}  // namespace
}  // namespace orvane
