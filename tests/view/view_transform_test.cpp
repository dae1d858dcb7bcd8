#include "view/view_transform.h"

#include "view/view_case.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

LatLon At(double lat, double lon) { return {.lat = lat, .lon = lon}; }

bool Same(Pixel a, Pixel b) { return a.x == b.x && a.y == b.y; }

void ExpectAtMiddle(const MapWindow& view, const LatLon& place) {
  const Pixel pixel = MapToScreen(view, place);
  EXPECT_NEAR(pixel.x, view.centerColumn, 1) << "turned by " << view.rotation;
  EXPECT_NEAR(pixel.y, view.centerRow, 1) << "turned by " << view.rotation;
}

TEST(MapToScreen, PutsTheCenterInTheMiddle) {
  ViewCase c;
  CenterOn(c.view, At(-3.5, 29.25));
  EXPECT_TRUE(Same(MapToScreen(c.view, At(-3.5, 29.25)), {200, 150}));
}

TEST(MapToScreen, RunsNorthUpAndEastRight) {
  ViewCase c;
  EXPECT_TRUE(Same(MapToScreen(c.view, MetersToLatLon(50, -30)), {170, 100}));
}

TEST(MapToScreen, RoundsHalvesUp) {
  ViewCase c;
  c.view.top = 100.5;  // the place at north 0 is at row 100.5
  c.view.left = 50.5;  // and at column -50.5
  EXPECT_TRUE(Same(MapToScreen(c.view, At(0, 0)), {-50, 101}));
  const ExactPixel exact = MapToScreenExact(c.view, At(0, 0));
  EXPECT_EQ(exact.row, 100.5);
  EXPECT_EQ(exact.column, -50.5);
}

TEST(MapToScreen, ARotationOf90PutsEastUp) {
  ViewCase c;
  c.view.rotation = 90;
  CenterOn(c.view, At(0, 0));
  EXPECT_TRUE(Same(MapToScreen(c.view, MetersToLatLon(0, 100)), {200, 50}));
  EXPECT_TRUE(Same(MapToScreen(c.view, MetersToLatLon(100, 0)), {100, 150}));
}

TEST(MapToScreen, AFarPointKeepsTheSlopeOfItsLine) {
  ViewCase c;
  c.view.scale = 10;
  CenterOn(c.view, At(0, 0));
  const LatLon far = MetersToLatLon(8000, 6000);  // 10 km off: row -79850, column 60200
  const Pixel pixel = MapToScreen(c.view, far);
  EXPECT_EQ(pixel.y, -32000);
  EXPECT_NEAR((pixel.x - 200.0) / (150.0 - pixel.y), 6.0 / 8.0, 1e-4);
}

TEST(MapToScreen, AnEdgeOfExactly32000IsUnchanged) {
  ViewCase c;
  c.view.top = 32000;
  c.view.left = -77;
  const ExactPixel edge = MapToScreenExact(c.view, At(0, 0));
  EXPECT_EQ(edge.row, 32000);
  EXPECT_EQ(edge.column, 77);
  c.view.top = 32001;
  const ExactPixel beyond = MapToScreenExact(c.view, At(0, 0));
  EXPECT_EQ(beyond.row, 32000);
  EXPECT_NE(beyond.column, 77);
}

TEST(MapToScreen, TheWrapMovesPlacesRoundTheEarth) {
  ViewCase c;
  CenterOn(c.view, At(0, 179.9995));
  const LatLon east = At(0, -179.9995);  // 111 m to the east, across the meridian
  EXPECT_EQ(MapToScreen(c.view, east).x, -32000);
  c.view.longitudeWrap = 360;
  EXPECT_EQ(MapToScreen(c.view, east).x, 311);
}

TEST(MapToScreen, StaysWithin16BitsForAnyInput) {
  const double bad[] = {0,
                        1e300,
                        -1e300,
                        std::nan(""),
                        std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        1e-300};
  ViewCase c;
  for (const float scale : {0.0F, 1.0F, 1e38F, std::numeric_limits<float>::infinity(), -1.0F}) {
    for (const float rotation : {0.0F, 33.0F, std::numeric_limits<float>::quiet_NaN()}) {
      c.view.scale = scale;
      c.view.rotation = rotation;
      for (const double lat : bad) {
        for (const double lon : bad) {
          const Pixel pixel = MapToScreen(c.view, At(lat, lon));
          EXPECT_LE(std::abs(pixel.x), LargestPixel);
          EXPECT_LE(std::abs(pixel.y), LargestPixel);
        }
      }
    }
  }
}

TEST(ScreenTransform, AgreesWithMapToScreenToTheBit) {
  Dice dice(4);
  for (int i = 0; i < 500; ++i) {
    ViewCase c;
    c.view.scale = static_cast<float>(dice.Between(1e-4, 10));
    c.view.rotation = static_cast<float>(dice.Int(-2, 3) * 37);
    CenterOn(c.view, At(dice.Between(-80, 80), dice.Between(-180, 180)));
    const ScreenTransform transform(c.view);
    const LatLon place = At(dice.Between(-80, 80), dice.Between(-180, 180));
    const ExactPixel one = MapToScreenExact(c.view, place);
    const ExactPixel other = transform.ToExactPixel(transform.Project(place));
    EXPECT_EQ(one.row, other.row);
    EXPECT_EQ(one.column, other.column);
  }
}

TEST(ScreenToMap, UndoesMapToScreenUpToAPixel) {
  constexpr std::uint64_t Seed = 71;
  Dice dice(Seed);
  for (int i = 0; i < 2000; ++i) {
    ViewCase c;
    SetClientSize(c.view, dice.Int(50, 2000), dice.Int(50, 2000));
    c.view.scale = static_cast<float>(std::exp(dice.Between(-3, 3)));
    c.view.rotation = i % 3 == 0 ? 0 : static_cast<float>(dice.Between(-360, 360));
    CenterOn(c.view, At(dice.Between(-70, 70), dice.Between(-180, 180)));
    const Pixel pixel{dice.Int(0, c.view.clientWidth), dice.Int(0, c.view.clientHeight)};
    const Pixel back = MapToScreen(c.view, ScreenToMap(c.view, pixel));
    EXPECT_LE(std::abs(back.x - pixel.x), 1) << "seed " << Seed << " round " << i;
    EXPECT_LE(std::abs(back.y - pixel.y), 1) << "seed " << Seed << " round " << i;
  }
}

TEST(ScreenToMap, LeavesTheWrapOut) {
  ViewCase c;
  const double lon = ScreenToMap(c.view, {10, 10}).lon;
  c.view.longitudeWrap = 360;
  EXPECT_EQ(ScreenToMap(c.view, {10, 10}).lon, lon);
}

TEST(CenterOn, KeepsTheCentralLongitudeInItsRange) {
  ViewCase c;
  CenterOn(c.view, At(0, 180));
  EXPECT_EQ(c.view.centralLongitude, -180);
  CenterOn(c.view, At(0, -180));
  EXPECT_EQ(c.view.centralLongitude, -180);
  CenterOn(c.view, At(0, -190));
  EXPECT_EQ(c.view.centralLongitude, 170);
  CenterOn(c.view, At(0, 1e17));
  EXPECT_GE(c.view.centralLongitude, -180);
  EXPECT_LT(c.view.centralLongitude, 180);
}

TEST(CenterOn, TakesTheLatitudeModulo360) {
  ViewCase c;
  CenterOn(c.view, At(361, 0));
  EXPECT_EQ((c.view.top + c.view.bottom) / 2, DegreesToMeters(1));
  CenterOn(c.view, At(-725, 0));
  EXPECT_EQ((c.view.top + c.view.bottom) / 2, DegreesToMeters(-5));
}

TEST(CenterOn, TurnsTheHalfExtentsWithTheView) {
  ViewCase c;
  c.view.rotation = 90;
  CenterOn(c.view, At(0, 0));
  EXPECT_NEAR(c.view.top, 200, 1e-9);
  EXPECT_NEAR(c.view.left, 150, 1e-9);
  EXPECT_NEAR(c.view.bottom, -200, 1e-9);
  EXPECT_NEAR(c.view.right, -150, 1e-9);
}

TEST(CenterOn, LeavesTheViewForAPlaceThatIsNotANumber) {
  ViewCase c;
  CenterOn(c.view, At(std::nan(""), 4));
  EXPECT_EQ(c.view.top, 150);
  EXPECT_EQ(c.view.centralLongitude, 0);
}

TEST(ResizeView, KeepsNorthAtTheCenterAndScale) {
  ViewCase c;
  CenterOn(c.view, At(1, 2));
  SetClientSize(c.view, 100, 80);
  ResizeView(c.view);
  EXPECT_EQ(c.view.top, DegreesToMeters(1) + 40);
  EXPECT_EQ(c.view.bottom, DegreesToMeters(1) - 40);
  EXPECT_EQ(c.view.left, -50);
  EXPECT_EQ(c.view.right, 50);
  EXPECT_EQ(c.view.centerColumn, 50);
  EXPECT_EQ(c.view.centerRow, 40);
}

TEST(ResizeView, KeepsThePlaceAtTheMiddleOfATurnedView) {
  for (const float rotation : {30.0F, 90.0F, 180.0F, 275.5F}) {
    ViewCase c;
    c.view.rotation = rotation;
    CenterOn(c.view, At(-2, 31));
    SetClientSize(c.view, 900, 100);
    ResizeView(c.view);
    ExpectAtMiddle(c.view, At(-2, 31));
    SetClientSize(c.view, 200, 700);
    ResizeView(c.view);
    ExpectAtMiddle(c.view, At(-2, 31));
  }
}

TEST(MapExtent, OfNoPointsIsAMetreAboutTheOrigin) {
  ViewCase c;
  const Extent extent = MapExtent(c.map);
  EXPECT_EQ(extent.north, 0);
  EXPECT_EQ(extent.east, 0);
  EXPECT_EQ(extent.radius, 1);
}

TEST(MapExtent, OfOnePointHasARadiusOfOne) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 1000, 2000)});
  const Extent extent = MapExtent(c.map);
  EXPECT_NEAR(extent.north, 1000.5, 1e-6);
  EXPECT_NEAR(extent.east, 2000.5, 1e-6);
  EXPECT_EQ(extent.radius, 1);
}

TEST(MapExtent, IsMeanAndSpreadOfTheTrails) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 30, 0)});
  c.AddTrail("u", {&c.Add("c", 60, 30)});
  c.map.loosePoints.push_front(&c.Add("far", 9000, 9000));  // not counted while trails have points
  const Extent extent = MapExtent(c.map);
  EXPECT_NEAR(extent.north, 30.5, 1e-6);
  EXPECT_NEAR(extent.east, 10.5, 1e-4);
  EXPECT_NEAR(extent.radius, 30 + std::sqrt(300.0), 1e-4);  // n = 3: both divided by 2
}

TEST(MapExtent, OfPointsAtOnePlaceHasARadiusOfOne) {
  ViewCase c;
  Point& a = c.Add("a", 0, 0);
  c.AddTrail("t", {&a, &a});
  EXPECT_EQ(MapExtent(c.map).radius, 1);
}

TEST(MapExtent, TakesLoosePointsWhereTrailsHaveNone) {
  ViewCase c;
  c.AddTrail("empty", {});
  c.map.loosePoints.push_front(&c.Add("a", 70, 0));
  EXPECT_NEAR(MapExtent(c.map).north, 70.5, 1e-6);
}

TEST(MapExtent, GoesDownToTheFirstMapThatHasAnything) {
  ViewCase c;
  Map& upper = MakeMap(c.workspace, "upper.map");
  upper.basis = &c.map;
  c.map.loosePoints.push_front(&c.Add("a", 70, 0));
  EXPECT_NEAR(MapExtent(upper).north, 70.5, 1e-6);
}

TEST(MapExtent, LeavesOutWhatIsNotPlaced) {
  ViewCase c;
  Point& lost = MakePoint(c.map, "lost");
  c.AddTrail("t", {&c.Add("a", 1000, 0), &lost, &c.AddAt("n", std::nan(""), 0)});
  EXPECT_NEAR(MapExtent(c.map).north, 1000.5, 1e-6);
  EXPECT_EQ(MapExtent(c.map).radius, 1);
}

TEST(InitView, ShowsAMetreAboutASinglePoint) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 5000, 0)});
  InitView(c.view);
  EXPECT_EQ(c.view.scale, 150);
  EXPECT_NEAR(c.view.top, 5000.5 + 1, 1e-6);
  EXPECT_NEAR(c.view.bottom, 5000.5 - 1, 1e-6);
  EXPECT_NEAR(c.view.right, 200.0 / 150, 1e-9);
  EXPECT_EQ(c.view.left, -c.view.right);
}

TEST(InitView, OfAnEmptyMapOpensAtTheOrigin) {
  ViewCase c;
  InitView(c.view);
  EXPECT_EQ(c.view.scale, 150);
  EXPECT_EQ(c.view.centralLongitude, 0);
  EXPECT_EQ(c.view.top, 1);
}

TEST(InitView, OfAContinentLooksAtTheMeridianOfGreenwich) {
  ViewCase c;
  c.AddTrail("t", {&c.AddAt("a", -60, 100), &c.AddAt("b", 60, 120)});
  InitView(c.view);
  EXPECT_LT(c.view.scale, 0.00002F);
  EXPECT_EQ(c.view.centralLongitude, 0);
}

TEST(InitView, TakesTheSavedViewOfTheVerySameFile) {
  ViewCase c;
  SavedView saved{"case.map", -2.5, 33, 0.5, 0, true};
  InitView(c.view, &saved);
  EXPECT_EQ(c.view.scale, 0.5F);
  EXPECT_EQ(c.view.rotation, 0);
  EXPECT_EQ(c.view.centralLongitude, 33);
  EXPECT_EQ(c.view.top, DegreesToMeters(-2.5) + 300);
  EXPECT_EQ(c.view.bottom, DegreesToMeters(-2.5) - 300);
  EXPECT_EQ(c.view.left, -400);
  EXPECT_TRUE((c.view.flags & MapWindowGridsHidden) != 0);
}

TEST(InitView, ASavedViewThatIsTurnedHasItsPlaceAtTheMiddle) {
  for (const double rotation : {45.0, 90.0, 200.0}) {
    ViewCase c;
    const SavedView saved{"case.map", -2.5, 33, 0.5, rotation, false};
    SizeView(c.view, 800, 250, &saved);
    EXPECT_EQ(c.view.rotation, static_cast<float>(rotation));
    ExpectAtMiddle(c.view, At(-2.5, 33));
  }
}

TEST(InitView, IgnoresASavedViewOfAnotherFileOrWithoutScale) {
  ViewCase c;
  SavedView other{"CASE.MAP", -2.5, 33, 0.5, 90, true};  // another file where case counts
  InitView(c.view, &other);
  EXPECT_EQ(c.view.scale, 150);
  SavedView unscaled{"case.map", -2.5, 33, 0, 90, true};
  InitView(c.view, &unscaled);
  EXPECT_EQ(c.view.scale, 150);
  unscaled.scale = -3;
  InitView(c.view, &unscaled);
  EXPECT_EQ(c.view.scale, 150);
  EXPECT_EQ(c.view.flags, 0U);
}

TEST(InitView, StaysFiniteWherePlacesAreBeyondAllBounds) {
  for (const double lat : {1e308, -1.7e308, 1e200, 90.0}) {
    ViewCase c;
    c.AddTrail("t", {&c.AddAt("a", lat, 1e308), &c.AddAt("b", lat, 10), &c.AddAt("c", lat, 12)});
    InitView(c.view);
    EXPECT_TRUE(std::isfinite(c.view.top) && std::isfinite(c.view.bottom)) << lat;
    EXPECT_TRUE(std::isfinite(c.view.left) && std::isfinite(c.view.right)) << lat;
    EXPECT_TRUE(c.view.centralLongitude >= -180 && c.view.centralLongitude < 180) << lat;
  }
}

TEST(InitView, IgnoresASavedViewWithoutAPlace) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double far = std::numeric_limits<double>::max();
  for (const SavedView& saved :
       {SavedView{"case.map", none, 33, 0.5, 0, true}, SavedView{"case.map", far, 33, 0.5, 0, true},
        SavedView{"case.map", 1, none, 0.5, 0, true}, SavedView{"case.map", 1, 2, none, 0, true},
        SavedView{"case.map", 1, 2, 0.5, none, true},
        SavedView{"case.map", 1, 2, 0.5, far, true}}) {
    ViewCase c;
    InitView(c.view, &saved);
    EXPECT_EQ(c.view.scale, 150);
    EXPECT_EQ(c.view.flags, 0U);
  }
}

TEST(SizeView, PlacesAViewOnce) {
  ViewCase c;
  SizeView(c.view, 200, 100);
  EXPECT_EQ(c.view.scale, 50);
  SizeView(c.view, 400, 300);
  EXPECT_EQ(c.view.scale, 50);
  EXPECT_EQ(c.view.right, 4);
}

TEST(FitToBounds, WidensEachSideByAFortieth) {
  ViewCase c;
  FitToBounds(c.view, 0.4, 0, 0.1, 0);
  // North gains 0.01, south loses a fortieth of 0.41.
  const double north = 0.41;
  const double south = -0.41 / 40;
  EXPECT_NEAR(c.view.scale, 300 / DegreesToMeters(north - south), 1e-9);
  EXPECT_NEAR(c.view.top, DegreesToMeters(north), 1e-3);
  EXPECT_NEAR(c.view.bottom, DegreesToMeters(south), 1e-3);
  EXPECT_NEAR(c.view.centralLongitude, (0.1025 - 0.1025 / 40) / 2, 1e-12);
}

TEST(FitToBounds, AWideBoxFitsByItsWidth) {
  ViewCase c;
  FitToBounds(c.view, 0.01, 0, 4, 0);
  const LatLon corner = ScreenToMap(c.view, {400, 150});
  EXPECT_NEAR(corner.lon, 4.1, 1e-6);
}

TEST(FitToBounds, ABoxOfNoExtentShowsAMetreAboutIt) {
  ViewCase c;
  FitToBounds(c.view, 3, 3, 7, 7);
  EXPECT_EQ(c.view.scale, 150);
  EXPECT_NEAR((c.view.top + c.view.bottom) / 2, DegreesToMeters(3), 1e-6);
  EXPECT_EQ(c.view.centralLongitude, 7);
}

TEST(FitToBounds, PutsTheMiddleOfTheBoxAtTheMiddleOfATurnedView) {
  for (const float rotation : {30.0F, 90.0F, 180.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    FitToBounds(c.view, 0.02, 0.01, 0.05, 0.01);
    // Each side is widened by a fortieth, the second by a little more.
    ExpectAtMiddle(c.view, At((0.02025 + 0.00974375) / 2, (0.051 + 0.008975) / 2));
  }
}

TEST(FitToBounds, KeepsAScaleForAnyBox) {
  ViewCase c;
  for (const double a : {0.0, 1e-300, 90.0, 1e9, -1e9}) {
    for (const double b : {0.0, -1e-12, 90.0, 1e9}) {
      FitToBounds(c.view, a, b, b, a);
      EXPECT_GT(c.view.scale, 0);
      EXPECT_TRUE(std::isfinite(c.view.scale));
      EXPECT_TRUE(std::isfinite(c.view.top));
      EXPECT_GE(c.view.centralLongitude, -180);
      EXPECT_LT(c.view.centralLongitude, 180);
    }
  }
}

TEST(ViewOutOfWindow, CountsTheFarEdgesAsOutside) {
  ViewCase c;
  EXPECT_FALSE(ViewOutOfWindow(c.view, {0, 0}));
  EXPECT_FALSE(ViewOutOfWindow(c.view, {399, 299}));
  EXPECT_TRUE(ViewOutOfWindow(c.view, {400, 0}));
  EXPECT_TRUE(ViewOutOfWindow(c.view, {0, 300}));
  EXPECT_TRUE(ViewOutOfWindow(c.view, {-1, 0}));
  EXPECT_TRUE(ViewOutOfWindow(c.view, {0, -1}));
}

TEST(PanTo, KeepsThePlaceUnderThePointerUnderARotation) {
  for (const float rotation : {0.0F, 30.0F, 90.0F, 200.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    CenterOn(c.view, At(2, 179.9999));
    const LatLon place = ScreenToMap(c.view, {50, 60});
    c.view.pressPoint = {50, 60};
    PanTo(c.view, {250, 200});
    const LatLon now = ScreenToMap(c.view, {250, 200});
    EXPECT_NEAR(now.lat, place.lat, 1e-7) << rotation;
    EXPECT_NEAR(std::remainder(now.lon - place.lon, 360), 0, 1e-7) << rotation;
    EXPECT_TRUE(Same(c.view.pressPoint, {250, 200}));
    EXPECT_LT(c.view.centralLongitude, 180);
  }
}

TEST(PanTo, TheSamePixelChangesNothing) {
  ViewCase c;
  const MapWindow before = c.view;
  PanTo(c.view, c.view.pressPoint);
  EXPECT_EQ(c.view.top, before.top);
  EXPECT_EQ(c.view.centralLongitude, before.centralLongitude);
}

TEST(StepView, MovesTheCenterByAPartOfTheView) {
  ViewCase c;
  StepView(c.view, ViewStep::North, {});
  EXPECT_NEAR((c.view.top + c.view.bottom) / 2, 30, 1e-6);
  StepView(c.view, ViewStep::South, {.shift = true});
  EXPECT_NEAR((c.view.top + c.view.bottom) / 2, 27, 1e-6);
  StepView(c.view, ViewStep::East, {.control = true});
  EXPECT_NEAR(DegreesToMeters(c.view.centralLongitude), 400.0 / 30, 1e-6);
}

TEST(StepView, TheArrowsKeepTheirDirectionUnderARotation) {
  for (const float rotation : {0.0F, 60.0F, 90.0F, 180.0F, 270.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    CenterOn(c.view, At(0, 0));
    StepView(c.view, ViewStep::North, {});
    const Pixel old = MapToScreen(c.view, At(0, 0));
    EXPECT_EQ(old.x, 200) << rotation;
    EXPECT_GT(old.y, 150) << rotation;
  }
}

TEST(ZoomOnPixel, CentersOnThePlace) {
  ViewCase c;
  const LatLon place = ScreenToMap(c.view, {300, 100});
  ZoomOnPixel(c.view, {300, 100}, 2);
  EXPECT_EQ(c.view.scale, 2);
  EXPECT_TRUE(Same(MapToScreen(c.view, place), {200, 150}));
}

TEST(ZoomAboutPixel, KeepsThePlaceUnderThePointer) {
  constexpr std::uint64_t Seed = 5;
  Dice dice(Seed);
  for (int i = 0; i < 500; ++i) {
    ViewCase c;
    c.view.scale = static_cast<float>(dice.Between(1e-3, 2));
    c.view.rotation = i % 2 == 0 ? 0 : static_cast<float>(dice.Between(-180, 180));
    CenterOn(c.view, At(dice.Between(-60, 60), dice.Between(-180, 180)));
    const Pixel pixel{dice.Int(0, 400), dice.Int(0, 300)};
    const LatLon place = ScreenToMap(c.view, pixel);
    ZoomAboutPixel(c.view, pixel, i % 3 == 0 ? 0.8 : 1.25);
    const LatLon now = ScreenToMap(c.view, pixel);
    const double metersPerPixel = 1 / static_cast<double>(c.view.scale);
    EXPECT_LT(std::abs(DegreesToMeters(now.lat - place.lat)), metersPerPixel / 100) << Seed << i;
    EXPECT_LT(std::abs(DegreesToMeters(std::remainder(now.lon - place.lon, 360))),
              metersPerPixel / 20)
        << Seed << " " << i;
    // The view stays one that `CenterOn` could have made.
    EXPECT_NEAR(c.view.left, -c.view.right, 1e-6);
  }
}

TEST(ZoomAboutPixel, StopsAtTheLargestAndSmallestScale) {
  ViewCase c;
  for (int i = 0; i < 200; ++i) ZoomAboutPixel(c.view, {10, 10}, 1.5);
  EXPECT_EQ(c.view.scale, static_cast<float>(LargestScale));
  for (int i = 0; i < 400; ++i) ZoomAboutPixel(c.view, {399, 0}, 0.7);
  EXPECT_EQ(c.view.scale, static_cast<float>(SmallestScale));
  EXPECT_TRUE(std::isfinite(c.view.top));
  EXPECT_TRUE(std::isfinite(c.view.centralLongitude));
}

TEST(ZoomByDoubleClick, ShiftAndTheOtherButtonEachTurnItRound) {
  const auto scaleAfter = [](bool shift, bool otherButton) {
    ViewCase c;
    ZoomByDoubleClick(c.view, {.shift = shift}, otherButton);
    return c.view.scale;
  };
  EXPECT_EQ(scaleAfter(false, false), 2);
  EXPECT_EQ(scaleAfter(true, false), 0.5F);
  EXPECT_EQ(scaleAfter(false, true), 0.5F);
  EXPECT_EQ(scaleAfter(true, true), 2);
}

TEST(ZoomToPixels, ShowsTheBox) {
  ViewCase c;
  const LatLon middle = ScreenToMap(c.view, {150, 75});
  ZoomToPixels(c.view, {100, 50}, {200, 100});
  EXPECT_EQ(c.view.scale, 4);
  EXPECT_TRUE(Same(MapToScreen(c.view, middle), {200, 150}));
}

TEST(ZoomToPixels, ABoxOfOnePixelCountsAsOneByOne) {
  ViewCase c;
  ZoomToPixels(c.view, {100, 50}, {100, 50});
  EXPECT_EQ(c.view.scale, 300);
}

}  // namespace
}  // namespace orvane
