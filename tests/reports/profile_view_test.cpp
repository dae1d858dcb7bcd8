#include "reports/profile_view.h"

#include "base/number_text.h"
#include "reports/profile_choice.h"
#include "reports/profile_labels.h"
#include "reports/profile_table.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr double Step = 111.12;

/// Every letter is six pixels wide.
int SixEach(std::string_view text) { return static_cast<int>(text.size()) * 6; }

struct ProfileView : MapFixture {
  Map& map = Open(
      "T\tLine\tRidge\nL\tA\t0\t0\t100\nL\tBee\t0\t0.001\t150\nL\tCee\t0\t0.002\t200\n"
      "L\tDee\t0\t0.01\t120\n");

  ElevationView Shown(int right = 521, int bottom = 300) {
    auto view = OpenElevation(map, map.trails.front());
    return Laid(std::move(*view), right, bottom);
  }
  ElevationView Transect(int right = 521) {
    auto view = OpenTransect(map, {0, 0}, {0, 0.01});
    return Laid(std::move(*view), right, 300);
  }
  static ElevationView Laid(ElevationView view, int right, int bottom) {
    view.lineHeight = 12;
    view.ascent = 9;
    RefreshElevation(view, right, bottom, SixEach);
    return view;
  }
  static void Refresh(ElevationView& view) { RefreshElevation(view, 521, 300, SixEach); }
  static Texts TextsOf(const std::vector<ElevationText>& list) {
    Texts texts;
    for (const ElevationText& text : list) texts.push_back(text.text);
    return texts;
  }
};

// --- Layout ---------------------------------------------------------------------------------

TEST_F(ProfileView, TheLayoutFollowsFromSizeAndFont) {
  const ElevationView view = Shown();
  EXPECT_EQ(view.leftMargin, 3 * 6 + 3);
  EXPECT_EQ(view.plotWidth, 500);
  EXPECT_EQ(view.plotHeight, 276);
  EXPECT_EQ(view.plotBottom, 90);
  EXPECT_DOUBLE_EQ(view.metresPerPixelY, 120.0 / 276);
  EXPECT_DOUBLE_EQ(view.metresPerPixelX, view.lineLength / 499);
  EXPECT_EQ(view.samples.size(), 500U);
}

TEST_F(ProfileView, ThePlotDoesNotBeginBelowSeaLevelForDryLand) {
  Map& low = Open("T\tLine\nL\tA\t0\t0\t1\nL\tB\t0\t1\t101\n", "low.map");
  EXPECT_EQ(Laid(*OpenElevation(low, low.trails.front()), 300, 300).plotBottom, 0);
  Map& deep = Open("T\tLine\nL\tA\t0\t0\t-10\nL\tB\t0\t1\t90\n", "deep.map");
  EXPECT_EQ(Laid(*OpenElevation(deep, deep.trails.front()), 300, 300).plotBottom, -20);
}

TEST_F(ProfileView, ATinyWindowStillHasTwoColumnsAndOneRow) {
  const ElevationView view = Shown(0, 0);
  EXPECT_EQ(view.plotWidth, 2);
  EXPECT_EQ(view.plotHeight, 1);
}

TEST_F(ProfileView, ThePointerStaysWithinThePlot) {
  ElevationView view = Shown();
  MoveElevationPointer(view, 5000, 7);
  EXPECT_EQ(PointerColumn(view), 499);
  Refresh(view);
  EXPECT_EQ(view.pointerX, 499);
  MoveElevationPointer(view, 21 + 30, 7);
  EXPECT_EQ(PointerColumn(view), 30);
  MoveElevationPointer(view, 3, 7);
  EXPECT_EQ(PointerColumn(view), 0);
}

// --- The view on the line -------------------------------------------------------------------

TEST_F(ProfileView, ZoomingOutOnATrailStopsAtTheWholeLine) {
  ElevationView view = Shown();
  for (int i = 0; i < 5; ++i) {
    ZoomElevation(view, false);
    Refresh(view);
  }
  EXPECT_EQ(view.viewStart, 0);
  EXPECT_EQ(view.viewEnd, view.lineLength);
}

TEST_F(ProfileView, ZoomingOutOnATransectGoesOnPastBothEnds) {
  ElevationView view = Transect();
  ZoomElevation(view, false);
  Refresh(view);
  EXPECT_NEAR(view.viewStart, -5 * Step, 1e-6);
  EXPECT_NEAR(view.viewEnd, 15 * Step, 1e-6);
  EXPECT_NEAR(view.samples.front().position.lon, -0.005, 1e-9);
  EXPECT_NEAR(view.samples.back().position.lon, 0.015, 1e-9);
}

TEST_F(ProfileView, ATrailsViewIsMovedBackWithItsSpan) {
  ElevationView view = Shown();
  view.viewStart = -3 * Step;
  view.viewEnd = 2 * Step;
  Refresh(view);
  EXPECT_EQ(view.viewStart, 0);
  EXPECT_DOUBLE_EQ(view.viewEnd, 5 * Step);
  view.viewStart = 7 * Step;
  view.viewEnd = 12 * Step;
  Refresh(view);
  EXPECT_NEAR(view.viewStart, 5 * Step, 1e-9);
  EXPECT_EQ(view.viewEnd, view.lineLength);
}

TEST_F(ProfileView, PlusAndMinusKeepTheMiddle) {
  ElevationView view = Shown();
  ZoomElevation(view, true);
  EXPECT_DOUBLE_EQ(view.viewStart, 2.5 * Step);
  EXPECT_DOUBLE_EQ(view.viewEnd, 7.5 * Step);
  ZoomElevation(view, false);
  EXPECT_NEAR(view.viewStart, 0, 1e-9);
  EXPECT_NEAR(view.viewEnd, 10 * Step, 1e-9);
}

TEST_F(ProfileView, ADoubleClickZoomsAboutThePointer) {
  ElevationView view = Shown();
  const double under = DistanceUnder(view, 21 + 250);
  EXPECT_DOUBLE_EQ(under, 250 * view.metresPerPixelX);
  ZoomElevationAbout(view, 21 + 250, true);
  EXPECT_DOUBLE_EQ(view.viewStart, under - 2.5 * Step);
  EXPECT_DOUBLE_EQ(view.viewEnd, under + 2.5 * Step);
  Refresh(view);
  const double next = DistanceUnder(view, 21);
  ZoomElevationAbout(view, 21, false);
  EXPECT_DOUBLE_EQ(view.viewStart, next - 5 * Step);
  EXPECT_DOUBLE_EQ(view.viewEnd, next + 5 * Step);
}

TEST_F(ProfileView, APanKeepsTheLineUnderThePointer) {
  ElevationView view = Shown();
  ZoomElevation(view, true);
  Refresh(view);
  const double held = DistanceUnder(view, 200);
  EXPECT_FALSE(MoveElevationPointer(view, 200, 50));
  StartElevationPan(view, 200);
  EXPECT_TRUE(MoveElevationPointer(view, 120, 60));
  Refresh(view);
  EXPECT_NEAR(DistanceUnder(view, 120), held, 1e-9);
  EXPECT_EQ(view.pointerX, 200);
  EndElevationPan(view);
  EXPECT_FALSE(MoveElevationPointer(view, 130, 60));
  EXPECT_EQ(view.pointerX, 130);
}

TEST_F(ProfileView, KeysAndScrollLinesMoveByEighths) {
  ElevationView view = Shown();
  ZoomElevation(view, true);
  ShiftElevation(view, 1);
  EXPECT_DOUBLE_EQ(view.viewStart, (2.5 + 5.0 / 8) * Step);
  ShiftElevation(view, -7);
  EXPECT_DOUBLE_EQ(view.viewStart, (2.5 - 6 * 5.0 / 8) * Step);
}

TEST_F(ProfileView, TheScrollBarOfATrailShowsWhereTheViewIs) {
  ElevationView view = Shown();
  ElevationScroll bar = ElevationScrollBar(view);
  EXPECT_EQ(bar.first, 0);
  EXPECT_EQ(bar.last, 499);
  EXPECT_EQ(bar.proportion, 499);
  EXPECT_EQ(bar.position, 0);
  view.viewStart = 2 * Step;
  view.viewEnd = 4 * Step;
  Refresh(view);
  bar = ElevationScrollBar(view);
  EXPECT_EQ(bar.proportion, 99);
  EXPECT_EQ(bar.position, 99);
  ScrollElevationTo(view, 249);
  EXPECT_DOUBLE_EQ(view.viewStart, 249 * view.lineLength / 499);
  EXPECT_NEAR(view.viewEnd - view.viewStart, 2 * Step, 1e-9);
}

TEST_F(ProfileView, TheScrollBarOfATransectStaysInTheMiddle) {
  ElevationView view = Transect();
  const ElevationScroll bar = ElevationScrollBar(view);
  EXPECT_EQ(bar.first, 0);
  EXPECT_EQ(bar.last, 140);
  EXPECT_EQ(bar.proportion, 20);
  EXPECT_EQ(bar.position, 60);
  ScrollElevationTo(view, 100);
  EXPECT_EQ(view.viewStart, 0);
}

TEST_F(ProfileView, ZoomingAndMovingStopSomewhere) {
  ElevationView view = Transect();
  for (int i = 0; i < 3000; ++i) ZoomElevation(view, false);
  EXPECT_LE(view.viewEnd - view.viewStart, 1e9);
  for (int i = 0; i < 3000; ++i) ShiftElevation(view, 7);
  EXPECT_LE(view.viewEnd, 1e10);
  for (int i = 0; i < 3000; ++i) ZoomElevation(view, true);
  EXPECT_GT(view.viewEnd, view.viewStart);
  Refresh(view);
  FillGaps(view);
  EXPECT_FALSE(DistanceTexts(view, SixEach).empty());
}

TEST_F(ProfileView, ALineWithoutLengthCanBeLookedAt) {
  Map& dot = Open("T\tLine\nL\tA\t0\t0\t10\nP\tA\n", "dot.map");
  dot.trails.front().points.push_back(dot.trails.front().points.front());
  ElevationView view = Laid(*OpenElevation(dot, dot.trails.front()), 300, 300);
  ZoomElevation(view, true);
  ZoomElevationAbout(view, 40, false);
  ShiftElevation(view, 1);
  ScrollElevationTo(view, 9);
  RefreshElevation(view, 300, 300, SixEach);
  FillGaps(view);
  EXPECT_EQ(view.viewStart, 0);
  EXPECT_EQ(view.viewEnd, 0);
  EXPECT_EQ(ElevationScrollBar(view).proportion, view.plotWidth - 1);
  // Level ground: the line is on the bottom of the plot.
  for (const Pixel vertex : ElevationLine(view)) EXPECT_EQ(vertex.y, view.plotHeight);
}

// --- Texts ----------------------------------------------------------------------------------

TEST_F(ProfileView, NamesThatWouldCollideAreLeftOutButNotInTheLastColumn) {
  ElevationView view = Shown();
  static const std::string names[] = {"Long name", "B", "Far", "Last one"};
  for (ElevationSample& sample : view.samples) sample.label = nullptr;
  view.samples[0].label = &names[0];
  view.samples[30].label = &names[1];  // 30 - 3 is left of the edge
  view.samples[63].label = &names[1];  // within the text of the first, up to 59, and after it
  view.samples[450].label = &names[2];
  view.samples[499].label = &names[3];
  const auto texts = PlaceNameTexts(view, CoordinateDisplay::Minutes, SixEach);
  EXPECT_EQ(TextsOf(texts), (Texts{"Long name", "B", "Far", "Last one"}));
  EXPECT_EQ(texts[0].at.x, 21);
  EXPECT_EQ(texts[1].at.x, 63 - 3 + 21);
  EXPECT_EQ(texts[2].at.x, 450 - 9 + 21);
  EXPECT_EQ(texts[3].at.x, 499 - 48 + 21);
  EXPECT_EQ(texts[3].at.y, 276 + 9);
}

TEST_F(ProfileView, ANameAtTheLeftEdgeIsNotCut) {
  ElevationView view = Shown();
  static const std::string name = "Long name";
  for (ElevationSample& sample : view.samples) sample.label = nullptr;
  view.samples[40].label = &name;
  const auto texts = PlaceNameTexts(view, CoordinateDisplay::Minutes, SixEach);
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(texts[0].at.x, 40 - 27 + 21);
  view.samples[40].label = nullptr;
  view.samples[0].label = &name;
  EXPECT_EQ(PlaceNameTexts(view, CoordinateDisplay::Minutes, SixEach)[0].at.x, 21);
}

TEST_F(ProfileView, ALabelThatFindsNoRoomLeavesTheEndsWithoutCoordinates) {
  ElevationView view = Transect();
  const std::string name = "LongName";
  view.samples[3].label = &name;  // its left half would be beyond the edge
  EXPECT_TRUE(PlaceNameTexts(view, CoordinateDisplay::Minutes, SixEach).empty());
}

TEST_F(ProfileView, WithoutNamesTheEndsAreGivenByTheirCoordinates) {
  const ElevationView view = Transect();
  const auto texts = PlaceNameTexts(view, CoordinateDisplay::Minutes, SixEach);
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0].text, "N0\xB0 0.000' E0\xB0 0.000'");
  EXPECT_EQ(texts[1].text, "N0\xB0 0.000' E0\xB0 0.600'");
  EXPECT_EQ(texts[0].at.x, view.leftMargin);
  EXPECT_EQ(texts[1].at.x + SixEach(texts[1].text), view.leftMargin + view.plotWidth - 1);
}

TEST_F(ProfileView, DistancesAreAsCloseAsTheyFit) {
  const ElevationView view = Shown();
  const auto texts = DistanceTexts(view, SixEach);
  ASSERT_GE(texts.size(), 4U);
  EXPECT_EQ(texts[0].text, "0m");
  EXPECT_EQ(texts[0].at.x, 21);
  EXPECT_EQ(texts[0].at.y, 276 + 9 + 12);
  // The first text is 12 wide, so the edge is 17. Behind it, "60.1m" at 27 would need half of its 30
  // pixels; the first that is short enough is "69m", which needs 9.
  EXPECT_EQ(texts[1].at.x - 21, 31);
  EXPECT_EQ(texts[1].text, "69m");
  for (size_t i = 1; i < texts.size(); ++i) {
    EXPECT_GE(texts[i].at.x, texts[i - 1].at.x + SixEach(texts[i - 1].text)) << i;
    EXPECT_EQ(texts[i].text, FormatDistance((texts[i].at.x - 21) * view.metresPerPixelX));
  }
}

/// The room of a label is counted from the widths of those before it, not from where it is. See
/// docs/compatibility.md.
TEST_F(ProfileView, ALongDistanceReachesToAShorterOneAfterIt) {
  ElevationView view = Shown();
  const auto gapBefore = [&view](const char* text) {
    const auto texts = DistanceTexts(view, SixEach);
    for (size_t i = 1; i < texts.size(); ++i) {
      if (texts[i].text != text) continue;
      return texts[i].at.x - texts[i - 1].at.x - SixEach(texts[i - 1].text);
    }
    ADD_FAILURE() << text;
    return 0;
  };
  view.metresPerPixelX = 20;
  EXPECT_EQ(gapBefore("3km"), 0) << "after 2.4km";
  view.metresPerPixelX = 7.5;
  EXPECT_EQ(gapBefore("2km"), -4) << "after 1.75km";
}

TEST_F(ProfileView, TextsWithoutWidthEndAllTheSame) {
  const ElevationView view = Shown();
  const TextWidth none = [](std::string_view) { return 0; };
  EXPECT_FALSE(PlaceNameTexts(view, CoordinateDisplay::Degrees, none).empty());
  EXPECT_LE(DistanceTexts(view, none).size(), 500U);
}

TEST_F(ProfileView, TheAltitudesAreAtTheirHeights) {
  const auto texts = AltitudeTexts(Shown());
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0].text, "100");
  EXPECT_EQ(texts[1].text, "200");
  EXPECT_EQ(texts[0].at.x, 1);
  EXPECT_EQ(texts[0].at.y, static_cast<int>(276 - 10 / (120.0 / 276)) + 9);
  EXPECT_EQ(texts[1].at.y, static_cast<int>(276 - 110 / (120.0 / 276)) + 9);
}

TEST_F(ProfileView, TheLineRunsOverTheKnownColumns) {
  ElevationView view = Shown();
  auto line = ElevationLine(view);
  ASSERT_EQ(line.size(), 2U);
  EXPECT_EQ(line[0].x, 21);
  EXPECT_EQ(line[0].y, static_cast<int>(276 - 10 / (120.0 / 276)));
  EXPECT_EQ(line[1].x, 21 + 499);
  FillGaps(view);
  EXPECT_EQ(ElevationLine(view).size(), 500U);
}

TEST_F(ProfileView, ABlankProfileHasNoLine) {
  Map& blank = Open("T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\n", "blank.map");
  ElevationView view = Laid(*OpenElevation(blank, blank.trails.front()), 300, 300);
  FillGaps(view);
  EXPECT_TRUE(ElevationLine(view).empty());
  EXPECT_EQ(TextsOf(AltitudeTexts(view)), (Texts{"-9999", "-9999"}));
}

TEST_F(ProfileView, OneAltitudeHasAScaleOfAMeterToThePixel) {
  Map& one = Open("T\tLine\nL\tA\t0\t0\t200\nL\tB\t0\t1\nT\tRest\nL\tC\t0\t1.1\t260\n", "one.map");
  ElevationView view = Laid(*OpenElevation(one, *FindTrail(one, "Line")), 300, 300);
  FillGaps(view);
  const auto line = ElevationLine(view);
  EXPECT_EQ(line.front().y, view.plotHeight);
  const float end = view.samples.back().position.altitude;
  EXPECT_GT(end, 230);
  EXPECT_EQ(line.back().y, static_cast<int>(view.plotHeight - (double{end} - 200)));
}

TEST_F(ProfileView, AltitudesAroundATrailWithoutAnyAreOutsideThePlot) {
  Map& around = Open("T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\nT\tRest\nL\tC\t0\t0.5\t300\n", "around.map");
  ElevationView view = Laid(*OpenElevation(around, *FindTrail(around, "Line")), 300, 300);
  FillGaps(view);
  EXPECT_EQ(view.samples[5].position.altitude, 300);
  for (const Pixel vertex : ElevationLine(view)) EXPECT_LT(vertex.y, -10000);
}

TEST_F(ProfileView, TheWheelKeepsWhatIsUnderThePointer) {
  ElevationView view = Shown();
  const double under = DistanceUnder(view, 21 + 100);
  ScaleElevation(view, 21 + 100, 2);
  Refresh(view);
  EXPECT_NEAR(DistanceUnder(view, 21 + 100), under, 1e-9);
  EXPECT_NEAR(view.viewEnd - view.viewStart, view.lineLength / 2, 1e-9);
  ScaleElevation(view, 21 + 100, 0);
  EXPECT_NEAR(view.viewEnd - view.viewStart, view.lineLength / 2, 1e-9);
  PanElevation(view, 10);
  EXPECT_NEAR(DistanceUnder(view, 21 + 110), under, 1e-9);
  const double span = view.viewEnd - view.viewStart;
  ShowLineEnd(view, true);
  EXPECT_EQ(view.viewEnd, view.lineLength);
  EXPECT_NEAR(view.viewEnd - view.viewStart, span, 1e-9);
  ShowLineEnd(view, false);
  EXPECT_NEAR(view.viewStart, 0, 1e-9);
  ShowWholeLine(view);
  EXPECT_EQ(view.viewStart, 0);
  EXPECT_EQ(view.viewEnd, view.lineLength);
}

TEST_F(ProfileView, KeysMoveTheColumnOfTheInfoPaneWithinThePlot) {
  ElevationView view = Shown();
  StepElevationPointer(view, 5);
  EXPECT_EQ(PointerColumn(view), 5);
  StepElevationPointer(view, -9);
  EXPECT_EQ(PointerColumn(view), 0);
  StepElevationPointer(view, 5000);
  EXPECT_EQ(PointerColumn(view), 499);
}

TEST_F(ProfileView, TheInfoPaneShowsPlaceAltitudeAndLabel) {
  ElevationView view = Shown();
  MoveElevationPointer(view, 0, 0);
  const auto rows = ElevationInfoRows(view, CoordinateDisplay::Degrees);
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[0].text, FormatLatitude(0, CoordinateDisplay::Degrees));
  EXPECT_EQ(rows[1].text, FormatLongitude(0, CoordinateDisplay::Degrees));
  EXPECT_EQ(rows[2].text, " Alt: 100m");
  EXPECT_EQ(rows[3].text, "A");
  MoveElevationPointer(view, 21 + 3, 0);
  const auto unknown = ElevationInfoRows(view, CoordinateDisplay::Degrees);
  EXPECT_EQ(unknown[2].text, "");
  EXPECT_EQ(unknown[3].text, "");
  EXPECT_TRUE(ElevationInfoRows(ElevationView(), CoordinateDisplay::Degrees).empty());
}

TEST_F(ProfileView, AnEmptyPlotSaysWhy) {
  EXPECT_TRUE(EmptyPlotTexts(Shown()).empty());
  EXPECT_TRUE(EmptyPlotTexts(ElevationView()).empty());
  Map& blank = Open("T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\n", "blank.map");
  const auto textsOf = [](Map& shown) {
    return EmptyPlotTexts(Laid(*OpenElevation(shown, *FindTrail(shown, "Line")), 300, 300));
  };
  EXPECT_EQ(textsOf(blank), std::vector<std::string_view>{"This map has no altitudes."});
  blank.basis = &map;
  EXPECT_EQ(textsOf(blank), (std::vector<std::string_view>{
                                "This map has no altitudes of its own.",
                                "Its basis has some, but a profile does not use them."}));
  blank.basis = nullptr;
  Map& around = Open("T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\nT\tRest\nL\tC\t0\t0.5\t300\n", "around.map");
  EXPECT_EQ(textsOf(around),
            std::vector<std::string_view>{"No point of this line has an altitude."});
}

TEST_F(ProfileView, TheTableHasALineForEachColumn) {
  ElevationView view = Shown(23);
  Named(map, "A").name =
      "Stra\xDF"
      "e";
  EXPECT_EQ(ProfileTable(view, [](double value) { return FormatFixed(value, 2); }),
            "column\tdistance\tlat\tlon\taltitude\tlabel\n"
            "0\t0.00\t0.00\t0.00\t100.00\tStra\xC3\x9F"
            "e\n"
            "1\t1111.20\t0.00\t0.01\t120.00\tCee\n");
  view.samples[0].position.altitude = NoAltitude;
  view.samples[1].label = nullptr;
  EXPECT_EQ(ProfileTable(view, [](double value) { return FormatFixed(value, 0); }),
            "column\tdistance\tlat\tlon\taltitude\tlabel\n"
            "0\t0\t0\t0\t\tStra\xC3\x9F"
            "e\n"
            "1\t1111\t0\t0\t120\t\n");
}

// --- What the command opens -----------------------------------------------------------------

struct ProfileChoice : ProfileView {
  MapWindow view;
  ProfileChoice() {
    view.map = &map;
    TrailPanelRow& group = view.trailViews.emplace_back();
    TrailPanelRow& inner = group.children.emplace_back();
    inner.children.emplace_back().trail = &map.trails.front();
    view.trailViews.emplace_back().fixed = true;
  }
};

TEST_F(ProfileChoice, AGroupIsFollowedDownToItsFirstTrail) {
  view.trailViews.front().selected = true;
  const auto profile = OpenSelectedProfile(view);
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->trail, &map.trails.front());
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ProfileChoice, WithoutATrailThereIsAMessage) {
  EXPECT_FALSE(OpenSelectedProfile(view));
  view.trailViews.back().selected = true;
  EXPECT_FALSE(OpenSelectedProfile(view)) << "the row New";
  EXPECT_EQ(Said(), (Texts{"Please specify a trail or transect first",
                           "Please specify a trail or transect first"}));
}

TEST_F(ProfileChoice, ATransectRunsFromThePressToTheRelease) {
  view.transectMode = true;
  view.selection[0] = {0, 0.004};
  view.selection[1] = {0, 0.001};
  const auto profile = OpenDraggedTransect(view);
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->trail, nullptr);
  EXPECT_EQ(profile->points.front()->geo.lon, 0.004);
  EXPECT_EQ(profile->points.back()->geo.lon, 0.001);
  EXPECT_FALSE(view.transectMode);
}

TEST_F(ProfileChoice, ARefusedTransectEndsTheModeToo) {
  Map& blank = Open("", "blank.map");
  view.map = &blank;
  view.transectMode = true;
  EXPECT_FALSE(OpenDraggedTransect(view));
  EXPECT_EQ(Said(), Texts{"Sorry, no altitude information available"});
  EXPECT_FALSE(view.transectMode);
}

TEST_F(ProfileChoice, AnEmptyGroupIsNotATrail) {
  view.trailViews.clear();
  view.trailViews.emplace_back().selected = true;
  EXPECT_FALSE(OpenSelectedProfile(view));
}

}  // namespace
}  // namespace orvane
