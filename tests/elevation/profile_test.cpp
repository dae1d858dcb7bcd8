#include "elevation/profile.h"

#include "base/number_text.h"
#include "model/cells.h"
#include "support/map_from_text.h"
#include "trails/metrics.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

/// 0.001 degrees of longitude on the equator, in metres.
constexpr double Step = 111.12;

struct Profile : MapFixture {
  /// A line along the equator with a point every 111.12 m.
  Map& LineMap(const std::vector<std::string>& names, const std::vector<std::string>& altitudes) {
    std::string text = "T\tLine\tRidge\n";
    for (size_t i = 0; i < names.size(); ++i) {
      text += "L\t" + names[i] + "\t0\t" + FormatFixed(static_cast<double>(i) * 0.001, 6) + "\t" +
              altitudes[i] + "\n";
    }
    return Open(text);
  }
  static ElevationView OpenLine(Map& map, int columns) {
    auto view = OpenElevation(map, *FindTrail(map, "Line"));
    EXPECT_TRUE(view);
    LayoutColumns(*view, columns);
    return std::move(*view);
  }
  static Texts Labels(const ElevationView& view) {
    Texts labels;
    for (const ElevationSample& sample : view.samples) {
      labels.push_back(sample.label == nullptr ? "" : *sample.label);
    }
    return labels;
  }
  static std::vector<float> Altitudes(const ElevationView& view) {
    std::vector<float> altitudes;
    for (const ElevationSample& sample : view.samples) {
      altitudes.push_back(sample.position.altitude);
    }
    return altitudes;
  }
  /// A map of scattered altitudes and a line between them.
  Map& MadeMap(unsigned seed, int points) {
    std::mt19937 random(seed);
    const auto below = [&](unsigned n) { return static_cast<double>(random() % n); };
    std::string text;
    for (int trail = 0; trail < 2; ++trail) {
      text += trail == 0 ? "T\tLine\tTrail\n" : "T\tRest\tTrail\n";
      for (int i = 0; i < points; ++i) {
        text += "L\tP" + std::to_string(trail) + "_" + std::to_string(i) + "\t" +
                FormatFixed(1 + below(1000) * 1e-5, 7) + "\t" +
                FormatFixed(115 + below(1000) * 1e-5, 7) + "\t" +
                (random() % 3 == 0 ? "" : FormatFixed(below(400), 0)) + "\n";
      }
    }
    return Open(text, "made" + std::to_string(seed) + ".map");
  }
};

// --- Opening --------------------------------------------------------------------------------

TEST_F(Profile, ATrailOpensWithAllOfItInView) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "", "5"});
  const auto view = OpenElevation(map, *FindTrail(map, "Line"));
  ASSERT_TRUE(view);
  EXPECT_EQ(view->minAltitude, 5);
  EXPECT_EQ(view->maxAltitude, 20);
  EXPECT_EQ(view->viewStart, 0);
  EXPECT_EQ(view->viewEnd, view->lineLength);
  EXPECT_NEAR(view->lineLength, 2 * Step, 1e-6);
  EXPECT_TRUE(view->flags & ElevationInfoShown);
  EXPECT_EQ(ElevationTitle(*view), "Elevation of Line Ridge");
}

TEST_F(Profile, ATrailOfFewerThanTwoPointsIsRefused) {
  Map& map = LineMap({"A"}, {"20"});
  EXPECT_FALSE(OpenElevation(map, *FindTrail(map, "Line")));
  EXPECT_EQ(Said(), Texts{"The trail to be displayed must have at least two points"});
}

TEST_F(Profile, ATransectTakesTheEstimatesAtItsEnds) {
  Map& map = LineMap({"A", "B"}, {"20", "40"});
  const auto view = OpenTransect(map, {0, 0}, {0.001, 0.0005});
  ASSERT_TRUE(view);
  ASSERT_EQ(view->points.size(), 2U);
  EXPECT_EQ(view->points[0]->geo.altitude, 20);
  EXPECT_EQ(view->points[1]->geo.altitude, EstimateAltitude(map, {0.001, 0.0005}));
  EXPECT_TRUE(view->points[1]->flags & PointScratch);
  EXPECT_TRUE(view->flags & ElevationOwnsPoints);
  EXPECT_FALSE(ElevationTitle(*view));
}

TEST_F(Profile, ATransectNeedsSomeAltitudeOfTheMapItself) {
  Map& map = LineMap({"A", "B"}, {"", ""});
  EXPECT_FALSE(OpenTransect(map, {0, 0}, {0.001, 0}));
  EXPECT_EQ(Said(), Texts{"Sorry, no altitude information available"});
}

TEST_F(Profile, ATrailWithoutANameHasNoTitle) {
  Map& map = Open("T\t\tRidge\nL\tA\t0\t0\t1\nL\tB\t0\t1\t1\n");
  EXPECT_FALSE(ElevationTitle(*OpenElevation(map, map.trails.front())));
}

// --- Samples --------------------------------------------------------------------------------

TEST_F(Profile, AMapWithoutAltitudesGivesABlankProfile) {
  Map& map = LineMap({"A", "B"}, {"", ""});
  ElevationView view = OpenLine(map, 10);
  EXPECT_EQ(view.minAltitude, -9999);
  EXPECT_EQ(view.maxAltitude, -9999);
  std::vector<ElevationStep> steps;
  EXPECT_FALSE(FillGapsPass(view, &steps));
  EXPECT_TRUE(steps.empty());
  FillGaps(view);
  EXPECT_EQ(Altitudes(view), std::vector<float>(10, NoAltitude));
}

TEST_F(Profile, TheFirstColumnIsMeasuredAndTheOthersEstimated) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "30", "50"});
  ElevationView view = OpenLine(map, 6);
  EXPECT_EQ(view.samples[0].position.altitude, 20);
  EXPECT_EQ(view.samples[1].position.altitude, NoAltitude);
  EXPECT_NEAR(view.samples[5].position.altitude, 50, 1e-3);
  FillGaps(view);
  for (size_t i = 1; i < 5; ++i) {
    EXPECT_EQ(view.samples[i].position.altitude, EstimateAltitude(map, view.samples[i].position));
  }
}

TEST_F(Profile, TheLastColumnIsTheLastPointWithItsMeasuredAltitude) {
  // Another trail measured the same place higher up.
  Map& map = Open(
      "T\tOther\tTrail\nL\tX\t0\t0.0071\t150\nT\tLine\tRidge\nL\tA\t0\t0\t20\n"
      "L\tB\t0.0013\t0.0037\t60\nL\tC\t0\t0.0071\t350\n");
  for (const int columns : {7, 60, 333, 800}) {
    const ElevationView view = OpenLine(map, columns);
    const LatLon& last = view.samples.back().position;
    EXPECT_EQ(last.lat, 0) << columns;
    EXPECT_EQ(last.lon, 0.0071) << columns;
    EXPECT_EQ(last.altitude, 350) << columns;
  }
  ElevationView part = OpenLine(map, 60);
  part.viewEnd = part.lineLength / 2;
  LayoutColumns(part, 60);
  EXPECT_NE(part.samples.back().position.altitude, 350);
}

TEST_F(Profile, APointWithoutAltitudeOnAColumnIsEstimatedOnlyAtTheEnds) {
  Map& map = LineMap({"A", "B", "C"}, {"", "30", ""});
  ElevationView view = OpenLine(map, 4);
  EXPECT_EQ(Altitudes(view), (std::vector<float>{30, NoAltitude, NoAltitude, 30}));
}

TEST_F(Profile, ALineShorterThanItsPlotHasASampleForEachColumn) {
  Map& map = Open("T\tLine\nL\tA\t0\t0\t10\nL\tB\t0\t0.00001\t11\n");
  ElevationView view = OpenLine(map, 500);
  FillGaps(view);
  ASSERT_EQ(view.samples.size(), 500U);
  for (const ElevationSample& sample : view.samples)
    EXPECT_TRUE(HasAltitude(sample.position.altitude));
  EXPECT_NEAR(view.samples[499].position.lon, 0.00001, 1e-12);
}

TEST_F(Profile, ALineWithoutLengthStaysInItsPlace) {
  Map& map = Open("T\tLine\nL\tA\t0.5\t0.25\t10\nP\tB\nP\tA\n");
  Named(map, "B").geo = Named(map, "A").geo;
  Named(map, "B").geo.altitude = NoAltitude;
  ElevationView view = OpenLine(map, 8);
  FillGaps(view);
  for (const ElevationSample& sample : view.samples) {
    EXPECT_EQ(sample.position.lat, 0.5);
    EXPECT_EQ(sample.position.lon, 0.25);
    EXPECT_EQ(sample.position.altitude, 10);
  }
}

TEST_F(Profile, ATransectGoesStraightOnBeyondItsEnds) {
  Map& map = LineMap({"A", "B"}, {"20", "40"});
  auto view = OpenTransect(map, {0, 0.001}, {0, 0.002});
  ASSERT_TRUE(view);
  view->viewStart = -Step;
  view->viewEnd = 2 * Step;
  LayoutColumns(*view, 4);
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(view->samples[i].position.lon, 0.001 * static_cast<double>(i), 1e-9);
    EXPECT_NEAR(view->samples[i].position.lat, 0, 1e-12);
  }
  FillGaps(*view);
  for (const ElevationSample& sample : view->samples) {
    EXPECT_TRUE(HasAltitude(sample.position.altitude));
  }
}

// --- Labels ---------------------------------------------------------------------------------

/// Points at 0, 1 and 2.5 steps.
constexpr const char* UnevenLine =
    "T\tLine\nL\tA\t0\t0\t1\nL\tB\t0\t0.001\t2\nL\tC\t0\t0.0025\t3\n";

TEST_F(Profile, AColumnJustBeforeAPointHasTheNameOfThePointBefore) {
  // Columns are 0.3125 steps apart, and the fourth one 0.0625 before B.
  const ElevationView view = OpenLine(Open(UnevenLine), 9);
  EXPECT_EQ(Labels(view), (Texts{"A", "", "", "A", "", "", "", "", "B"}));
}

TEST_F(Profile, AColumnJustAfterAPointHasItsName) {
  // Columns are 0.357 steps apart, and the fourth one 0.071 after B.
  const ElevationView view = OpenLine(Open(UnevenLine), 8);
  EXPECT_EQ(Labels(view), (Texts{"A", "", "", "B", "", "", "", "B"}));
}

TEST_F(Profile, HiddenAndEmptyNamesGiveNoLabel) {
  Map& map =
      Open("T\tLine\nL\t_A\t0\t0\t1\nL\t@B\t0\t0.001\t2\nG\t\tN0\tE0.002\t3\nL\tD\t0\t0.003\t4\n");
  const ElevationView view = OpenLine(map, 4);
  EXPECT_EQ(Labels(view), Texts(4, ""));
}

// --- Filling --------------------------------------------------------------------------------

TEST_F(Profile, APassHalvesEachGap) {
  Map& map = LineMap({"A", "B"}, {"20", "40"});
  ElevationView view = OpenLine(map, 9);
  std::vector<ElevationStep> steps;
  const auto told = [&] {
    std::vector<std::vector<int>> list;
    list.reserve(steps.size());
    for (const ElevationStep& step : steps) list.push_back({step.from, step.middle, step.to});
    return list;
  };
  EXPECT_TRUE(FillGapsPass(view, &steps));
  EXPECT_EQ(told(), (std::vector<std::vector<int>>{{0, 4, 8}}));
  EXPECT_TRUE(FillGapsPass(view, &steps));
  EXPECT_EQ(told(), (std::vector<std::vector<int>>{{0, 2, 4}, {4, 6, 8}}));
  EXPECT_FALSE(FillGapsPass(view, &steps));
  EXPECT_EQ(told(), (std::vector<std::vector<int>>{{0, 1, 2}, {2, 3, 4}, {4, 5, 6}, {6, 7, 8}}));
  EXPECT_FALSE(FillGapsPass(view, &steps));
  EXPECT_TRUE(steps.empty());
}

TEST_F(Profile, AGapOfEvenWidthIsHalvedDownwards) {
  Map& map = LineMap({"A", "B"}, {"20", "40"});
  ElevationView view = OpenLine(map, 4);
  std::vector<ElevationStep> steps;
  EXPECT_TRUE(FillGapsPass(view, &steps));
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].middle, 1);
  EXPECT_FALSE(FillGapsPass(view, &steps));
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].middle, 2);
}

TEST_F(Profile, PlacesThatHaveNoEstimateEndTheFilling) {
  // So far away that its weight is nothing, and no weight is left.
  Map& map = LineMap({"A", "B"}, {"", ""});
  Named(map, "A").geo.altitude = 30;
  ElevationView view = OpenLine(map, 5);
  for (ElevationSample& sample : view.samples) sample.position.lat = 1e200;
  view.samples[2].position.altitude = NoAltitude;
  FillGaps(view);
  EXPECT_FALSE(HasAltitude(view.samples[2].position.altitude));
}

/// Every column is at its place and has the altitude that a question for only that place gives.
TEST_F(Profile, EveryColumnAgreesWithASingleQuestion) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Map& map = MadeMap(seed, 12);
    ElevationView view = OpenLine(map, 101);
    FillGaps(view);
    for (size_t i = 0; i < view.samples.size(); ++i) {
      const ElevationSample& sample = view.samples[i];
      const double distance = static_cast<double>(i) * view.metresPerPixelX + view.viewStart;
      double rest = 0;
      const auto link = SegmentAtDistance(view.points, distance, &rest);
      ASSERT_TRUE(link);
      const Point& point = *view.points[*link];
      if (rest == 0 && HasAltitude(point.geo.altitude)) {
        EXPECT_EQ(sample.position.altitude, point.geo.altitude);
      } else {
        EXPECT_EQ(sample.position.altitude, EstimateAltitude(map, sample.position));
      }
      const bool isLast = *link + 1 == view.points.size();
      const Point& from = isLast ? *view.points[*link - 1] : point;
      const Point& to = isLast ? point : *view.points[*link + 1];
      const double along =
          std::hypot(sample.position.lat - from.geo.lat, sample.position.lon - from.geo.lon);
      const double across = std::hypot(to.geo.lat - from.geo.lat, to.geo.lon - from.geo.lon);
      const double left =
          std::hypot(to.geo.lat - sample.position.lat, to.geo.lon - sample.position.lon);
      EXPECT_NEAR(along + left, across, 1e-12);
    }
  }
}

TEST_F(Profile, ManyEstimatesAtOnceAreThoseOfEach) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Map& map = MadeMap(seed, 40);
    const AltitudeEstimates estimates(map);
    std::vector<LatLon> places;
    std::mt19937 random(seed);
    places.reserve(100);
    for (int i = 0; i < 43; ++i) {
      places.push_back({1 + static_cast<double>(random() % 1000) * 1e-5,
                        115 + static_cast<double>(random() % 1000) * 1e-5});
    }
    for (const Point* point : map.trails.front().points) places.push_back(point->geo);
    places.push_back({1e200, 0});
    places.push_back({std::nan(""), 0});
    std::vector<float> altitudes(places.size());
    estimates.At(places, altitudes);
    for (size_t i = 0; i < places.size(); ++i) {
      EXPECT_EQ(altitudes[i], EstimateAltitude(map, places[i])) << i;
      EXPECT_EQ(estimates.At(places[i]), altitudes[i]) << i;
    }
  }
}

TEST_F(Profile, FillingInPortionsEndsWithTheSameAltitudes) {
  Map& map = MadeMap(3, 30);
  ElevationView whole = OpenLine(map, 333);
  ElevationView portions = OpenLine(map, 333);
  FillGaps(whole);
  GapFilling filling;
  int runs = 0;
  EXPECT_FALSE(filling.IsDone());
  size_t known = 2;
  while (!filling.Run(portions, [] { return false; })) {
    ++runs;
    size_t now = 0;
    for (const float altitude : Altitudes(portions)) now += HasAltitude(altitude) ? 1U : 0U;
    EXPECT_GT(now, known) << runs;
    EXPECT_LE(now, known + 8) << runs;
    known = now;
  }
  EXPECT_GE(runs, 331 / 8);
  EXPECT_TRUE(filling.IsDone());
  EXPECT_EQ(Altitudes(portions), Altitudes(whole));
  filling.Restart();
  EXPECT_FALSE(filling.IsDone());
  EXPECT_TRUE(filling.Run(portions, [] { return false; })) << "nothing is left to do";
}

TEST_F(Profile, FillingInPortionsEndsWithoutEstimates) {
  Map& map = LineMap({"A", "B"}, {"", ""});
  ElevationView view = OpenLine(map, 50);
  view.samples.front().position.altitude = 1;
  view.samples.back().position.altitude = 1;
  GapFilling filling;
  EXPECT_TRUE(filling.Run(view, [] { return true; }));
}

TEST_F(Profile, SamplingLeavesThePlaneOfThePoints) {
  Map& map = LineMap({"A", "B", "C"}, {"1", "2", "3"});
  Named(map, "B").projected = {12, 34, 56};
  OpenLine(map, 20);
  EXPECT_EQ(Named(map, "B").projected.north, 12);
  EXPECT_EQ(Named(map, "B").projected.east, 34);
  EXPECT_EQ(Named(map, "B").projected.altitude, 56);
}

// --- Following a map ------------------------------------------------------------------------

TEST_F(Profile, AChangedMapIsFollowedWithItsPlacesAndAltitudes) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "30", "50"});
  ElevationView view = OpenLine(map, 6);
  Named(map, "C").geo = {0, 0.004, 80};
  LayoutColumns(view, 6);
  EXPECT_NEAR(view.samples[3].position.lon, 0.0016, 1e-9) << "of the old lengths";
  FollowLine(view);
  EXPECT_NEAR(view.lineLength, 4 * Step, 1e-6);
  EXPECT_EQ(view.viewEnd, view.lineLength) << "the whole line stays in view";
  EXPECT_EQ(view.maxAltitude, 80);
  LayoutColumns(view, 6);
  FillGaps(view);
  EXPECT_EQ(view.samples[5].position.altitude, 80);
  EXPECT_NEAR(view.samples[3].position.lon, 0.0024, 1e-9);
  EXPECT_EQ(view.samples[3].position.altitude, EstimateAltitude(map, view.samples[3].position));
}

TEST_F(Profile, AChangedTrailIsFollowedAndThePartInViewStays) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "30", "50"});
  ElevationView view = OpenLine(map, 6);
  view.viewStart = 10;
  view.viewEnd = 90;
  FindTrail(map, "Line")->points.pop_back();
  FollowLine(view);
  EXPECT_EQ(view.points.size(), 2U);
  EXPECT_NEAR(view.lineLength, Step, 1e-6);
  EXPECT_EQ(view.viewStart, 10);
  EXPECT_EQ(view.viewEnd, 90);
  FindTrail(map, "Line")->points.pop_back();
  FollowLine(view);
  EXPECT_EQ(view.points.size(), 2U) << "one point makes no line";
}

TEST_F(Profile, ADeletedTrailKeepsTheLineThatIsShown) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "30", "50"});
  ElevationView view = OpenLine(map, 6);
  Trail* trail = FindTrail(map, "Line");
  map.removed.trails.splice_after(map.removed.trails.before_begin(), map.trails,
                                  map.trails.before_begin());
  trail->points.pop_back();
  FollowLine(view);
  EXPECT_EQ(view.points.size(), 3U);
  EXPECT_EQ(view.maxAltitude, 50);
  EXPECT_TRUE(IsLineThere(view));
}

TEST_F(Profile, ATransectTakesTheNewEstimatesAtItsEnds) {
  Map& map = LineMap({"A", "B"}, {"20", "40"});
  auto view = OpenTransect(map, {0, 0}, {0, 0.001});
  Named(map, "B").geo.altitude = 70;
  FollowLine(*view);
  EXPECT_EQ(view->minAltitude, 20);
  EXPECT_EQ(view->maxAltitude, 70);
  EXPECT_NEAR(view->lineLength, Step, 1e-6);
}

TEST_F(Profile, ACopyShowsTheSamePartOfTheSameLine) {
  Map& map = LineMap({"A", "B", "C"}, {"20", "30", "50"});
  ElevationView trail = OpenLine(map, 20);
  trail.viewStart = 10;
  trail.viewEnd = 90;
  ElevationView transect = *OpenTransect(map, {0, 0.0005}, {0, 0.0015});
  for (ElevationView* view : {&trail, &transect}) {
    ElevationView copy = CopyOf(*view);
    EXPECT_EQ(copy.trail, view->trail);
    LayoutColumns(*view, 20);
    LayoutColumns(copy, 20);
    FillGaps(*view);
    FillGaps(copy);
    EXPECT_EQ(Altitudes(copy), Altitudes(*view));
    EXPECT_EQ(copy.samples[7].position.lon, view->samples[7].position.lon);
    EXPECT_EQ(copy.maxAltitude, view->maxAltitude);
  }
  EXPECT_NE(CopyOf(transect).points.front(), transect.points.front());
}

TEST_F(Profile, ATrailIsFoundAgainByItsLine) {
  const char* const text =
      "T\t\tPapio\tAna\t2020-3-1\nL\tA\t0\t0\t1\nL\tB\t0\t0.001\t2\n"
      "T\t\tPapio\tAna\t2020-3-1\nL\tC\t0\t0.002\t3\nL\tD\t0\t0.003\t4\n"
      "T\t\tPapio\tBea\t2020-3-1\nL\tE\t0\t0.004\t5\nL\tF\t0\t0.005\t6\n";
  Map& map = Open(text);
  Map& other = Open(text, "other.map");
  int number = 0;
  for (const Trail& trail : map.trails) {
    ElevationView view = *OpenElevation(map, trail);
    const std::string first = view.points.front()->name;
    const LineIdentity identity = IdentityOf(view);
    EXPECT_TRUE(IsLineThere(view));
    view.map = &other;
    EXPECT_FALSE(IsLineThere(view));
    ASSERT_TRUE(FindLineAgain(view, identity));
    EXPECT_EQ(view.points.front()->name, first);
    EXPECT_NE(view.trail, &trail);
    ++number;
  }
  EXPECT_EQ(number, 3);
  ElevationView view = *OpenElevation(map, map.trails.front());
  LineIdentity gone = IdentityOf(view);
  gone.animal = "Cora";
  EXPECT_FALSE(FindLineAgain(view, gone));
  EXPECT_TRUE(view.points.empty());
  EXPECT_FALSE(IsLineThere(view));
  ElevationView transect = *OpenTransect(map, {0, 0}, {0, 0.001});
  EXPECT_TRUE(FindLineAgain(transect, IdentityOf(transect)));
}

TEST_F(Profile, AltitudesOfABasisAreNotThoseOfTheMap) {
  Map& basis = Open("T\tLine\nL\tA\t0\t0\t10\n", "basis.map");
  Map& map = Open("T\tRidge\nL\tB\t0\t0\nL\tC\t0\t1\n", "above.map");
  EXPECT_FALSE(HasBasisAltitudes(map));
  map.basis = &basis;
  EXPECT_TRUE(HasBasisAltitudes(map));
  EXPECT_FALSE(HasBasisAltitudes(basis));
  map.basis = nullptr;
}

// --- Finding --------------------------------------------------------------------------------

TEST_F(Profile, FindCentersOnThePointWithHalfTheSpan) {
  Map& map = LineMap({"A", "B=Bee", "_C", "c"}, {"1", "2", "3", "4"});
  ElevationView view = OpenLine(map, 10);
  ASSERT_TRUE(ElevationFindPoint(view, "bEE", messages));
  EXPECT_NEAR(view.viewStart, Step - 3 * Step / 4, 1e-6);
  EXPECT_NEAR(view.viewEnd, Step + 3 * Step / 4, 1e-6);
}

TEST_F(Profile, FindTakesAnExactNameBeforeAHiddenOne) {
  Map& map = LineMap({"_C", "c", "_D"}, {"1", "2", "3"});
  ElevationView view = OpenLine(map, 10);
  ASSERT_TRUE(ElevationFindPoint(view, "C", messages));
  EXPECT_NEAR((view.viewStart + view.viewEnd) / 2, Step, 1e-6);
  ASSERT_TRUE(ElevationFindPoint(view, "d", messages));
  EXPECT_NEAR((view.viewStart + view.viewEnd) / 2, 2 * Step, 1e-6);
}

TEST_F(Profile, FindReportsWhatIsNotOnTheLine) {
  Map& map = LineMap({"A", "B"}, {"1", "2"});
  ElevationView view = OpenLine(map, 10);
  EXPECT_FALSE(ElevationFindPoint(view, "Z", messages));
  EXPECT_EQ(Said(), Texts{"Can't find Z"});
  EXPECT_EQ(view.viewEnd, view.lineLength);
}

}  // namespace
}  // namespace orvane
