#include "view/pointer.h"

#include "view_case.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

/// Keeps what it is given.
class KeptPositions : public InputTarget {
 public:
  void TakePosition(const LatLon& place) override { places.push_back(place); }
  std::vector<LatLon> places;
};

/// Presses at one pixel, moves and lets go at another.
PointerOutcome Drag(MapWindow& view, Pixel from, Pixel to, const HeldKeys& keys = {},
                    bool otherButton = false) {
  PressPointer(view, from, otherButton);
  MovePointer(view, to);
  return ReleasePointer(view, to, keys);
}

bool HasSelection(const MapWindow& view) { return (view.flags & MapWindowSelection) != 0; }

constexpr double Tolerance = 1e-9;

TEST(Pointer, APressNotesItsPlaceAndBeginsADrag) {
  ViewCase c;
  PressPointer(c.view, {30, 40}, false);
  EXPECT_EQ(c.view.pressPoint.x, 30);
  EXPECT_EQ(c.view.pressPoint.y, 40);
  EXPECT_EQ(c.view.pointer.x, 30);
  EXPECT_EQ(c.view.savedTop, c.view.top);
  EXPECT_EQ(c.view.savedLeft, c.view.left);
  EXPECT_EQ(c.view.flags & (MapWindowDrag | MapWindowPan), std::uint32_t{MapWindowDrag});
  EXPECT_TRUE(IsBandDrawn(c.view));
}

TEST(Pointer, AnyOtherButtonPans) {
  ViewCase c;
  PressPointer(c.view, {30, 40}, true);
  EXPECT_NE(c.view.flags & MapWindowPan, 0U);
  EXPECT_FALSE(IsBandDrawn(c.view));
}

TEST(Pointer, WithoutADragItOnlyFollows) {
  ViewCase c;
  const double top = c.view.top;
  EXPECT_FALSE(MovePointer(c.view, {-50, 70}));
  EXPECT_EQ(c.view.pointer.x, -50);
  EXPECT_EQ(c.view.pointer.y, 70);
  EXPECT_EQ(c.view.top, top);
}

TEST(Pointer, ABandOfFourPixelsIsNoSelection) {
  for (const Pixel to : {Pixel{104, 100}, Pixel{102, 98}, Pixel{100, 96}, Pixel{100, 100}}) {
    ViewCase c;
    const PointerOutcome outcome = Drag(c.view, {100, 100}, to);
    EXPECT_FALSE(HasSelection(c.view));
    EXPECT_FALSE(outcome.viewMoved);
    EXPECT_EQ(c.view.scale, 1);
    EXPECT_EQ(c.view.flags & (MapWindowDrag | MapWindowPan), 0U);
  }
}

TEST(Pointer, ABandOfFivePixelsIsOneAndZooms) {
  for (const Pixel to : {Pixel{105, 100}, Pixel{102, 97}, Pixel{100, 95}}) {
    ViewCase c;
    EXPECT_TRUE(Drag(c.view, {100, 100}, to).viewMoved);
    EXPECT_TRUE(HasSelection(c.view));
    EXPECT_GT(c.view.scale, 10);
  }
}

TEST(Pointer, TheSelectionRunsFromThePressToTheRelease) {
  ViewCase c;
  const LatLon begin = ScreenToMap(c.view, {150, 60});
  const LatLon end = ScreenToMap(c.view, {50, 210});
  Drag(c.view, {150, 60}, {50, 210});
  EXPECT_NEAR(c.view.selection[0].lat, begin.lat, Tolerance);
  EXPECT_NEAR(c.view.selection[0].lon, begin.lon, Tolerance);
  EXPECT_NEAR(c.view.selection[1].lat, end.lat, Tolerance);
  EXPECT_NEAR(c.view.selection[1].lon, end.lon, Tolerance);
}

TEST(Pointer, ABandShowsItsBoxInTheMiddle) {
  ViewCase c;
  Drag(c.view, {100, 50}, {200, 110});
  EXPECT_FLOAT_EQ(c.view.scale, 4);  // 400 / 100 against 300 / 60
  const LatLon middle = ScreenToMap(c.view, {200, 150});
  EXPECT_NEAR(middle.lat * MetersPerDegree, 70, 0.01);
  EXPECT_NEAR(middle.lon * MetersPerDegree, -50, 0.01);
}

TEST(Pointer, ALevelBandCountsAsOnePixelHigh) {
  ViewCase c;
  Drag(c.view, {100, 50}, {140, 50});
  EXPECT_FLOAT_EQ(c.view.scale, 10);
}

TEST(Pointer, ShiftSelectsWithoutAnythingElse) {
  ViewCase c;
  const PointerOutcome outcome = Drag(c.view, {100, 50}, {200, 110}, {.shift = true});
  EXPECT_TRUE(HasSelection(c.view));
  EXPECT_FALSE(outcome.viewMoved);
  EXPECT_FALSE(outcome.transectDrawn);
  EXPECT_EQ(c.view.scale, 1);
  EXPECT_FALSE(c.view.transectMode);
}

TEST(Pointer, TheAreaForThePrinterIsShownUntilTheNextSelection) {
  ViewCase c;
  Drag(c.view, {100, 50}, {200, 110}, {.shift = true});
  EXPECT_NE(c.view.flags & MapWindowAreaShown, 0U);
  Drag(c.view, {100, 50}, {101, 51});  // too short for a band
  EXPECT_NE(c.view.flags & MapWindowAreaShown, 0U);
  Drag(c.view, {100, 50}, {200, 110});
  EXPECT_EQ(c.view.flags & MapWindowAreaShown, 0U);
  Drag(c.view, {100, 50}, {200, 110}, {.shift = true, .control = true});
  EXPECT_EQ(c.view.flags & MapWindowAreaShown, 0U);
}

TEST(Pointer, TheCornersOfTheSelectionAreWhereTheyAreAtAnyScale) {
  ViewCase c;
  Drag(c.view, {100, 50}, {210, 130}, {.shift = true});
  for (const float scale : {1.0F, 4096.0F}) {
    c.view.scale = scale;
    CenterOn(c.view, c.view.selection[0]);
    const auto [a, b] = SelectionCorners(c.view);
    EXPECT_NEAR(a.column, c.view.centerColumn, 1);
    EXPECT_NEAR(a.row, c.view.centerRow, 1);
    EXPECT_NEAR((b.column - a.column) / static_cast<double>(scale), 110, 1);
    EXPECT_NEAR((b.row - a.row) / static_cast<double>(scale), 80, 1);
    EXPECT_EQ(a.column, std::floor(a.column));
  }
}

TEST(Pointer, EscapeHidesTheAreaAndKeepsTheSelection) {
  ViewCase c;
  EXPECT_FALSE(EscapePointer(c.view));
  Drag(c.view, {100, 50}, {200, 110}, {.shift = true});
  EXPECT_TRUE(EscapePointer(c.view));
  EXPECT_EQ(c.view.flags & MapWindowAreaShown, 0U);
  EXPECT_TRUE(HasSelection(c.view));
  EXPECT_FALSE(EscapePointer(c.view));
}

TEST(Pointer, EscapeEndsTransectModeAndADrag) {
  ViewCase c;
  c.view.transectMode = true;
  EXPECT_TRUE(EscapePointer(c.view));
  EXPECT_FALSE(c.view.transectMode);
  PressPointer(c.view, {10, 10}, true);
  EXPECT_TRUE(EscapePointer(c.view));
  EXPECT_EQ(c.view.flags & (MapWindowDrag | MapWindowPan), 0U);
}

TEST(Pointer, PanByMovesTheMapAlsoWhenTurned) {
  for (const float rotation : {0.0F, 30.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    c.view.pressPoint = {7, 9};
    const LatLon place = ScreenToMap(c.view, {100, 50});
    EXPECT_TRUE(PanBy(c.view, 40, -25));
    const Pixel now = MapToScreen(c.view, place);
    EXPECT_NEAR(now.x, 140, 1);
    EXPECT_NEAR(now.y, 25, 1);
    EXPECT_EQ(c.view.pressPoint.x, 7);
    EXPECT_FALSE(PanBy(c.view, 0, 0));
  }
}

TEST(Pointer, PanByWaitsForADragToEnd) {
  ViewCase c;
  PressPointer(c.view, {10, 10}, false);
  const double top = c.view.top;
  EXPECT_FALSE(PanBy(c.view, 40, -25));
  EXPECT_EQ(c.view.top, top);
}

TEST(Pointer, ControlDrawsATransect) {
  ViewCase c;
  const PointerOutcome outcome = Drag(c.view, {100, 50}, {200, 110}, {.control = true});
  EXPECT_TRUE(outcome.transectDrawn);
  EXPECT_TRUE(c.view.transectMode);
  EXPECT_TRUE(HasSelection(c.view));
  EXPECT_EQ(c.view.scale, 1);
}

TEST(Pointer, InTransectModeEveryBandIsOne) {
  ViewCase c;
  c.view.transectMode = true;
  EXPECT_TRUE(Drag(c.view, {100, 50}, {200, 110}).transectDrawn);
  EXPECT_TRUE(Drag(c.view, {100, 50}, {200, 110}, {.shift = true}).transectDrawn);
  EXPECT_FALSE(Drag(c.view, {100, 50}, {101, 50}).transectDrawn);
  EXPECT_EQ(c.view.scale, 1);
}

TEST(Pointer, AnInputTargetGetsThePlaceOfThePress) {
  ViewCase c;
  KeptPositions target;
  c.view.inputTarget = &target;
  const LatLon pressed = ScreenToMap(c.view, {100, 50});
  const PointerOutcome outcome = Drag(c.view, {100, 50}, {200, 110});
  ASSERT_EQ(target.places.size(), 1U);
  EXPECT_EQ(target.places[0].lat, pressed.lat);
  EXPECT_EQ(target.places[0].lon, pressed.lon);
  EXPECT_FALSE(HasAltitude(target.places[0].altitude));
  EXPECT_FALSE(HasSelection(c.view));
  EXPECT_FALSE(outcome.viewMoved);
  EXPECT_EQ(c.view.scale, 1);
}

TEST(Pointer, AnInputTargetGetsNothingFromAPan) {
  ViewCase c;
  KeptPositions target;
  c.view.inputTarget = &target;
  Drag(c.view, {100, 50}, {200, 110}, {}, true);
  EXPECT_TRUE(target.places.empty());
}

TEST(Pointer, AReleaseWithoutAPressIsNothing) {
  ViewCase c;
  KeptPositions target;
  c.view.inputTarget = &target;
  c.view.pressPoint = {10, 10};
  const PointerOutcome outcome = ReleasePointer(c.view, {300, 200}, {});
  EXPECT_FALSE(outcome.viewMoved);
  EXPECT_TRUE(target.places.empty());
  EXPECT_FALSE(HasSelection(c.view));
}

TEST(Pointer, APanKeepsThePlaceUnderThePointerAlsoWhenTurned) {
  for (const float rotation : {0.0F, 30.0F, 90.0F, -145.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    CenterOn(c.view, LatLon{.lat = 2, .lon = 3});
    const LatLon grasped = ScreenToMap(c.view, {250, 100});
    PressPointer(c.view, {250, 100}, true);
    EXPECT_TRUE(MovePointer(c.view, {200, 130}));
    EXPECT_TRUE(MovePointer(c.view, {90, 260}));
    EXPECT_FALSE(MovePointer(c.view, {90, 260}));
    const LatLon now = ScreenToMap(c.view, {90, 260});
    EXPECT_NEAR(now.lat, grasped.lat, 1e-7) << rotation;
    EXPECT_NEAR(now.lon, grasped.lon, 1e-7) << rotation;
    EXPECT_EQ(c.view.pressPoint.x, 90);  // the press goes along
    ReleasePointer(c.view, {90, 260}, {});
    EXPECT_FALSE(HasSelection(c.view));
    EXPECT_EQ(c.view.scale, 1);
  }
}

TEST(Pointer, ALastLeapOfAPanSelectsButDoesNotZoom) {
  ViewCase c;
  PressPointer(c.view, {250, 100}, true);
  const PointerOutcome outcome = ReleasePointer(c.view, {200, 100}, {});
  EXPECT_TRUE(HasSelection(c.view));
  EXPECT_FALSE(outcome.viewMoved);
  EXPECT_EQ(c.view.scale, 1);
}

TEST(ScrollToward, GoesAFortiethOfTheSizeAndTheWayBeyondTheEdge) {
  ViewCase c;
  PressPointer(c.view, {100, 100}, false);
  const double top = c.view.top;
  EXPECT_TRUE(MovePointer(c.view, {-5, 310}));
  // Columns: -(400 / 40) - 5; rows: 300 / 40 + 310 - 300, both cut.
  EXPECT_EQ(c.view.pressPoint.x, 115);
  EXPECT_EQ(c.view.pressPoint.y, 83);
  EXPECT_DOUBLE_EQ(c.view.top, top - 17);
  EXPECT_NEAR(c.view.centralLongitude * MetersPerDegree, -15, 1e-6);
  EXPECT_EQ(c.view.pointer.x, -5);
}

TEST(ScrollToward, TheEdgeItselfIsOutsideOnlyAtRightAndBottom) {
  ViewCase c;
  PressPointer(c.view, {100, 100}, false);
  EXPECT_FALSE(MovePointer(c.view, {0, 0}));
  EXPECT_FALSE(MovePointer(c.view, {399, 299}));
  EXPECT_TRUE(MovePointer(c.view, {400, 299}));
  EXPECT_EQ(c.view.pressPoint.x, 90);
  EXPECT_EQ(c.view.pressPoint.y, 100);
}

TEST(ScrollToward, TakesColumnsAsMetersAtAnyScaleAndRowsAsPixels) {
  ViewCase c;
  c.view.scale = 4;
  CenterOn(c.view, LatLon{});
  const double top = c.view.top;
  PressPointer(c.view, {100, 100}, false);
  MovePointer(c.view, {-5, -5});
  EXPECT_NEAR(c.view.centralLongitude * MetersPerDegree, -15, 1e-6);
  EXPECT_DOUBLE_EQ(c.view.top, top + 12 / 4.0);
}

TEST(ScrollToward, StaysWithinItsNumbersHoweverLongItGoesOn) {
  ViewCase c;
  PressPointer(c.view, {100, 100}, false);
  for (int i = 0; i < 5000; ++i) MovePointer(c.view, {-500, 900});
  EXPECT_LE(c.view.pressPoint.x, LargestPixel);
  EXPECT_GE(c.view.pressPoint.y, -LargestPixel);
  EXPECT_GE(c.view.centralLongitude, -180);
  EXPECT_LT(c.view.centralLongitude, 180);
}

TEST(Pointer, AScrolledBandSelectsFromWhereThePressHasGone) {
  ViewCase c;
  PressPointer(c.view, {100, 100}, false);
  MovePointer(c.view, {100, 310});
  const LatLon begin = ScreenToMap(c.view, c.view.pressPoint);
  ReleasePointer(c.view, {100, 299}, {.shift = true});
  EXPECT_EQ(c.view.selection[0].lat, begin.lat);
}

TEST(Pointer, ACanceledDragLeavesNothing) {
  ViewCase c;
  PressPointer(c.view, {100, 100}, true);
  CancelPointer(c.view);
  EXPECT_EQ(c.view.flags & (MapWindowDrag | MapWindowPan), 0U);
  EXPECT_FALSE(ReleasePointer(c.view, {300, 200}, {}).viewMoved);
  EXPECT_FALSE(HasSelection(c.view));
}

}  // namespace
}  // namespace orvane
