#include "view/point_marks.h"

#include "view/view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// What is drawn for a mark at (100, 100) where a letter is 6 pixels wide, so that a mark has a
/// radius of 4.
Lines Drawn(MarkStyle shape, int thickness, const Pixel* previous = nullptr,
            const Point& point = {}) {
  RecordingCanvas canvas(400, 300);
  DrawPointMark(canvas, MarkLook{shape, thickness, 0x00AA00, 6}, point, {100, 100}, previous);
  return canvas.Lines();
}

TEST(DrawPointMark, CircleAndRectAreTwoThirdsOfALetterRound) {
  EXPECT_EQ(Drawn(MarkStyle::Circle, 2),
            (Lines{"pen 2 solid 00aa00", "brush hollow", "oval 96,96 105,105"}));
  EXPECT_EQ(Drawn(MarkStyle::Rect, 0),
            (Lines{"pen 0 solid 00aa00", "brush hollow", "rect 96,96 105,105"}));
}

TEST(DrawPointMark, CrossAndPlusReachFartherWithTheThickness) {
  EXPECT_EQ(Drawn(MarkStyle::Cross, 3), (Lines{"pen 3 solid 00aa00", "brush hollow",
                                               "line 94,94 106,106", "line 94,106 106,94"}));
  EXPECT_EQ(Drawn(MarkStyle::Plus, 1), (Lines{"pen 1 solid 00aa00", "brush hollow",
                                              "line 96,100 104,100", "line 100,96 100,104"}));
}

TEST(DrawPointMark, TicksAreAtRightAnglesToTheWay) {
  const Pixel west{40, 100};  // the way leads to the right, so its right hand is below
  EXPECT_EQ(Drawn(MarkStyle::Tick, 1, &west).back(), "line 100,95 100,105");
  EXPECT_EQ(Drawn(MarkStyle::HalfTick, 1, &west).back(), "line 100,100 100,105");
  EXPECT_EQ(Drawn(MarkStyle::BackHalfTick, 1, &west).back(), "line 100,95 100,100");
  const Pixel below{100, 150};
  EXPECT_EQ(Drawn(MarkStyle::HalfTick, 0, &below).back(), "line 100,100 104,100");
}

TEST(DrawPointMark, ATickNeedsAPointBeforeAtAnotherPixel) {
  const Pixel same{100, 100};
  for (const MarkStyle shape : {MarkStyle::Tick, MarkStyle::HalfTick, MarkStyle::BackHalfTick}) {
    EXPECT_EQ(Drawn(shape, 1).size(), 2U);
    EXPECT_EQ(Drawn(shape, 1, &same).size(), 2U);
  }
}

TEST(DrawPointMark, APointsOwnMarkGoesByItsSize) {
  Point point;
  point.markShape = PointMarkCircle;
  point.markSize = 3;
  EXPECT_EQ(Drawn(MarkStyle::Cross, 1, nullptr, point),
            (Lines{"pen 1 solid 00aa00", "brush hollow", "oval 94,94 107,107"}));
  point.markShape = PointMarkSquare;
  point.markSize = 1;
  point.flags |= PointMarkFilled;
  EXPECT_EQ(Drawn(MarkStyle::None, 1, nullptr, point),
            (Lines{"pen 1 solid 00aa00", "brush solid 00aa00", "rect 98,98 103,103"}));
}

TEST(DrawPointMark, UnknownShapesDrawNothing) {
  EXPECT_EQ(Drawn(MarkStyle::None, 1).size(), 2U);
  EXPECT_EQ(Drawn(MarkStyle::Unknown, 1).size(), 2U);
}

TEST(DrawPointMark, StaysWithinThePixelsForAnySize) {
  RecordingCanvas canvas(400, 300);
  Point point;
  point.markShape = PointMarkCircle;
  point.markSize = 2000000000;
  const MarkLook look{MarkStyle::Cross, LargestPixel, 0, 3000};
  DrawPointMark(canvas, look, point, {-LargestPixel, LargestPixel}, nullptr);
  point.markShape = PointMarkNone;
  DrawPointMark(canvas, look, point, {LargestPixel, LargestPixel}, nullptr);
  EXPECT_LE(canvas.Farthest(), LargestPixel + 1);
}

}  // namespace
}  // namespace orvane
