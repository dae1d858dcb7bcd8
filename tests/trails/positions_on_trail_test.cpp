#include "trails/positions_on_trail.h"

#include "trail_maps.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::OffsetOf;
using test::TrailMap;

using Names = std::vector<std::string>;

TEST(TrailNumberStart, FindsTheNumberAtTheEnd) {
  EXPECT_EQ(TrailNumberStart("Pde120"), 3U);
  EXPECT_EQ(TrailNumberStart("Pde120m"), 3U);
  EXPECT_EQ(TrailNumberStart("Pde120M"), 3U);
  EXPECT_EQ(TrailNumberStart("Pde-20"), 3U);
  EXPECT_EQ(TrailNumberStart("Pde--20"), 4U);
  EXPECT_EQ(TrailNumberStart("Pde-"), 3U) << "a sign without digits counts as 0";
}

TEST(TrailNumberStart, TakesASingleMForANumber) {
  EXPECT_EQ(TrailNumberStart("Pdem"), 3U);
  EXPECT_EQ(TrailNumberValue("m"), 0);
}

TEST(TrailNumberStart, NeedsANumberAndSomethingInFrontOfIt) {
  for (const char* name : {"", "m", "120", "-20", "120m", "Pde", "Pde120x"}) {
    EXPECT_FALSE(TrailNumberStart(name).has_value()) << name;
  }
}

TEST(TrailNumberValue, KeepsTheSignAndStaysWithin32Bits) {
  EXPECT_EQ(TrailNumberValue("-20m"), -20);
  EXPECT_EQ(TrailNumberValue("0035"), 35);
  EXPECT_EQ(TrailNumberValue(""), 0);
  EXPECT_EQ(TrailNumberValue("3000000000"), 2147483647);
  EXPECT_EQ(TrailNumberValue("-3000000000"), -2147483647 - 1);
  EXPECT_EQ(TrailNumberValue("99999999999999999999999"), 2147483647);
  EXPECT_EQ(TrailNumberValue("-99999999999999999999999m"), -2147483647 - 1);
}

TEST(PointNumberOnTrail, ReadsTheNumberAfterTheTrailsName) {
  Trail trail;
  trail.name = "Pde";
  EXPECT_EQ(PointNumberOnTrail(trail, "Pde120"), 120);
  EXPECT_EQ(PointNumberOnTrail(trail, "pDE120m"), 120) << "without regard to case";
  EXPECT_EQ(PointNumberOnTrail(trail, "Pd120"), -1);
  EXPECT_EQ(PointNumberOnTrail(trail, "Pdes120"), -1);
  EXPECT_EQ(PointNumberOnTrail(trail, "Pde"), -1);
  EXPECT_EQ(PointNumberOnTrail(trail, "Pdem"), 0);
}

TEST(PointNumberOnTrail, TakesAMinusForASeparator) {
  Trail trail;
  trail.name = "Pde";
  Point point;
  point.name = "Pde-20";
  EXPECT_EQ(PointNumberOnTrail(trail, point.name), 20);
  EXPECT_EQ(TrailNumberValue(*TrailNumberText(trail, point)), -20);
}

TEST(PointNumberOnTrail, LetsAPrimedTrailGoWithoutItsMark) {
  Trail trail;
  trail.name = "Pde'";
  EXPECT_EQ(PointNumberOnTrail(trail, "Pde200"), 200);
  EXPECT_EQ(PointNumberOnTrail(trail, "Pde'200"), 200);
  EXPECT_EQ(PointNumberOnTrail(trail, "Pde''200"), -1);
}

TEST(PointNumberOnTrail, GivesNoneOnANamelessTrail) {
  EXPECT_EQ(PointNumberOnTrail(Trail{}, "Pde120"), -1);
}

TEST(TrailNumberText, MindsTheCaseAndLooksAtSynonymsInOrder) {
  Trail trail;
  trail.name = "Pde";
  Point point;
  point.name = "Camp";
  point.synonyms = {"pde10", "Pde20m", "Pde30"};
  EXPECT_EQ(TrailNumberText(trail, point), "20m");
  point.name = "Pde5";
  EXPECT_EQ(TrailNumberText(trail, point), "5");
  point.name = "PDE5";
  point.synonyms.clear();
  EXPECT_FALSE(TrailNumberText(trail, point).has_value());
  EXPECT_FALSE(TrailNumberText(Trail{}, point).has_value());
}

TEST(PointNumericSynonym, NeverLooksAtThePointsOwnName) {
  Point point;
  point.name = "120";
  EXPECT_EQ(PointNumericSynonym(point), nullptr);
  point.synonyms = {"12x", "Camp", "1.5e2", "7"};
  ASSERT_NE(PointNumericSynonym(point), nullptr);
  EXPECT_EQ(*PointNumericSynonym(point), "1.5e2");
  point.synonyms = {"inf", "nan", "1e999"};
  EXPECT_EQ(PointNumericSynonym(point), nullptr);
}

TEST(FindPrimeTrail, LooksForTheNameWithAMarkAfterIt) {
  TrailMap data;
  Trail& prime = data.AddNames("Pde'", {"Pde0"});
  EXPECT_EQ(FindPrimeTrail(data.map, "Pde"), &prime);
  EXPECT_EQ(FindPrimeTrail(data.map, "Pd"), nullptr);
  const std::string longest(97, 'a');
  Trail& cut = data.AddNames(longest + "'", {"x"});
  EXPECT_EQ(FindPrimeTrail(data.map, longest + "tail"), &cut);
}

TEST(PositionOnTrail, SharesTheMeasuredPathByTheMarks) {
  TrailMap data;
  // 250 m of path between the marks 0 and 100, round a corner.
  data.AddTrail("Pde",
                {&data.At("Pde0", 0, 0), &data.At("corner", 150, 0), &data.At("Pde100", 150, 100)});
  const auto place = PositionOnTrail(data.map, "Pde50");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 125, 1e-3);
  EXPECT_NEAR(OffsetOf(*place).east, 0, 1e-3);
  const auto beyond = PositionOnTrail(data.map, "pde80m");
  ASSERT_TRUE(beyond.has_value());
  EXPECT_NEAR(OffsetOf(*beyond).north, 150, 1e-3);
  EXPECT_NEAR(OffsetOf(*beyond).east, 50, 1e-3);
}

TEST(PositionOnTrail, TakesTheFirstOfEqualMarksBelowAndTheLastAbove) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde10", 0, 0), &data.At("Pde10m", 50, 0),
                        &data.At("Pde20", 100, 0), &data.At("Pde20m", 200, 0)});
  const auto place = PositionOnTrail(data.map, "Pde15");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 100, 1e-3);
}

TEST(PositionOnTrail, LooksAlongTheNextLegAtATurn) {
  TrailMap data;
  // There and back again, so that the turn is exactly half way.
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("turn", 100, 0), &data.At("Pde10", 0, 0)});
  double bearing = -1;
  const auto place = PositionOnTrail(data.map, "Pde5", &bearing);
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 100, 1e-3);
  EXPECT_NEAR(std::fabs(bearing), Pi, 1e-9);
}

TEST(PositionOnTrail, ReachesTheVeryEndAfterTheLastMark) {
  TrailMap data;
  // A climb on the spot is 10 m long to the last bit.
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0, 100), &data.At("top", 0, 0, 110)});
  const auto place = PositionOnTrail(data.map, "Pde10");
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->altitude, 110);
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde11").has_value());
}

TEST(PositionOnTrail, TakesTheWholeNameOfALongTrail) {
  TrailMap data;
  const std::string name(120, 'a');
  data.AddTrail(name, {&data.At(name + "0", 0, 0), &data.At(name + "10", 10, 0)});
  EXPECT_TRUE(PositionOnTrail(data.map, name + "5").has_value());
}

TEST(PositionOnTrail, GivesAMarkThatAPointHas) {
  TrailMap data;
  Point& mark = data.At("Pde40", 10, 20, 700);
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &mark, &data.At("Pde100", 100, 100)});
  const auto place = PositionOnTrail(data.map, "Pde40m");
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->lat, mark.geo.lat);
  EXPECT_EQ(place->lon, mark.geo.lon);
  EXPECT_EQ(place->altitude, 700);
}

TEST(PositionOnTrail, FindsMarksThatDescendAlongTheList) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde100", 0, 0), &data.At("Pde0", 200, 0)});
  const auto place = PositionOnTrail(data.map, "Pde30");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 140, 1e-3);
}

TEST(PositionOnTrail, TakesMetresAfterTheLastMark) {
  TrailMap data;
  data.AddTrail("Pde",
                {&data.At("Pde0", 0, 0), &data.At("Pde100", 100, 0), &data.At("end", 110, 0)});
  const auto place = PositionOnTrail(data.map, "Pde107");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 107, 1e-3);
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde120").has_value());
}

TEST(PositionOnTrail, CutsTheRestToWholeMetresAtEachPointPassed) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("a", 10.25, 0), &data.At("b", 50, 0)});
  // 20 - 10.25 = 9.75, cut to 9.
  const auto place = PositionOnTrail(data.map, "Pde20");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 19.25, 1e-3);
}

TEST(PositionOnTrail, TakesMetresBeforeTheFirstMark) {
  TrailMap data;
  // A hair below 40 m of path, so that the head counts as 60 after cutting.
  data.AddTrail("Pde", {&data.At("start", 0, 0), &data.At("Pde100", 39.9, 0)});
  const auto place = PositionOnTrail(data.map, "Pde80");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 39.9 / 2, 1e-3);
  const auto head = PositionOnTrail(data.map, "Pde60");
  ASSERT_TRUE(head.has_value());
  EXPECT_NEAR(OffsetOf(*head).north, 0, 1e-6);
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde59").has_value());
}

TEST(PositionOnTrail, ContinuesAlongAPrimedTrail) {
  TrailMap data;
  Point& junction = data.At("Pde100", 100, 0);
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &junction});
  data.AddTrail("Pde'", {&junction, &data.At("Pde200", 100, 100)});
  const auto mark = PositionOnTrail(data.map, "Pde200");
  ASSERT_TRUE(mark.has_value());
  EXPECT_NEAR(OffsetOf(*mark).east, 100, 1e-3);
  // The lower mark is found on the second trail too only if it is greater; 100 is not, so the
  // walk leads from the end of the first trail over the head of the second.
  const auto between = PositionOnTrail(data.map, "Pde150");
  ASSERT_TRUE(between.has_value());
  EXPECT_NEAR(OffsetOf(*between).north, 100, 1e-2);
  EXPECT_NEAR(OffsetOf(*between).east, 50, 1e-2);
}

TEST(PositionOnTrail, UsesOnlyThePrimedTrailIfThereIsNoOther) {
  TrailMap data;
  data.AddTrail("Pde'", {&data.At("Pde0", 0, 0), &data.At("Pde100", 100, 0)});
  const auto place = PositionOnTrail(data.map, "Pde25");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 25, 1e-3);
}

TEST(PositionOnTrail, DoesNotSearchBeyondTheTrailThatHoldsBothMarks) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("Pde100", 100, 0)});
  data.AddTrail("Pde'", {&data.At("Pde40", 500, 500), &data.At("Pde60", 500, 600)});
  EXPECT_NEAR(OffsetOf(*PositionOnTrail(data.map, "Pde50")).north, 50, 1e-3);
}

TEST(PositionOnTrail, FailsBeforeTheFirstMarkWhenASecondTrailWasSearchedLast) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("start", 0, 0), &data.At("Pde100", 40, 0)});
  data.AddTrail("Pde'", {&data.At("Pde200", 140, 0)});
  // The head of the trail searched last does not lead to the mark on the other one.
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde80").has_value());
}

TEST(PositionOnTrail, FindsTheTrailsOfTheBasis) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("Pde100", 100, 0)});
  Map& season = MakeMap(data.workspace, "season.map");
  season.basis = &data.map;
  EXPECT_TRUE(PositionOnTrail(season, "Pde50").has_value());
}

TEST(PositionOnTrail, ReadsSynonymsExceptOfHiddenPoints) {
  TrailMap data;
  Point& camp = data.At("Camp", 100, 0);
  camp.synonyms = {"Pde100"};
  Point& hidden = data.At("_aux", 30, 0);
  hidden.synonyms = {"Pde90"};
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &hidden, &camp});
  EXPECT_NEAR(OffsetOf(*PositionOnTrail(data.map, "Pde100")).north, 100, 1e-3);
  EXPECT_NEAR(OffsetOf(*PositionOnTrail(data.map, "Pde90")).north, 90, 1e-3);
}

TEST(PositionOnTrail, ReadsATargetWithItsSign) {
  TrailMap data;
  Point& start = data.At("Pde-20", 20, 0);
  data.AddTrail("Pde", {&start, &data.At("Pde100", 100, 0)});
  // The point counts as 20, so -20 is before the head.
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde-20").has_value());
  EXPECT_TRUE(PositionOnTrail(data.map, "Pde20").has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde-1").has_value());
}

TEST(PositionOnTrail, MeasuresOverTheGroundWhereBothAltitudesAreKnown) {
  TrailMap data;
  data.AddTrail("Pde",
                {&data.At("Pde0", 0, 0, 0), &data.At("top", 30, 0, 40), &data.At("Pde100", 80, 0)});
  // 50 m up to the top and 50 m in plan from there.
  const auto place = PositionOnTrail(data.map, "Pde25");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 15, 1e-3);
  EXPECT_NEAR(place->altitude, 20, 1e-3);
  EXPECT_EQ(PositionOnTrail(data.map, "Pde75")->altitude, NoAltitude);
}

TEST(PositionOnTrail, GivesTheDirectionOfTravel) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("Pde100", 0, 100),
                        &data.At("Pde200", 100, 100), &data.At("last", 100, 0)});
  double bearing = 9;
  PositionOnTrail(data.map, "Pde50", &bearing);
  EXPECT_NEAR(bearing, Pi / 2, 1e-9);
  PositionOnTrail(data.map, "Pde100", &bearing);
  EXPECT_NEAR(bearing, 0, 1e-3) << "from the mark to the next point";
  PositionOnTrail(data.map, "Pde230", &bearing);
  EXPECT_NEAR(bearing, -Pi / 2, 1e-3);
}

TEST(PositionOnTrail, GivesNoDirectionAtTheEndOfATrail) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &data.At("Pde100", 0, 100)});
  double bearing = 9;
  PositionOnTrail(data.map, "Pde100", &bearing);
  EXPECT_EQ(bearing, 0);
  // Descending marks: the lower one is the last point, so there is none between them either.
  data.AddTrail("Old", {&data.At("Old100", 0, 0), &data.At("Old0", 0, 100)});
  bearing = 9;
  EXPECT_TRUE(PositionOnTrail(data.map, "Old50", &bearing).has_value());
  EXPECT_EQ(bearing, 0);
}

TEST(PositionOnTrail, KeepsTheBearingForANameThatIsNotAMark) {
  TrailMap data;
  data.AddNames("Pde", {"Pde0"});
  double bearing = 9;
  EXPECT_FALSE(PositionOnTrail(data.map, "Camp", &bearing).has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "Other20", &bearing).has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "", &bearing).has_value());
  EXPECT_EQ(bearing, 9);
}

TEST(PositionOnTrail, TakesTheDirectionAtAMarkFromThePresentPlaneOfThePoints) {
  TrailMap data;
  Point& mark = data.At("Pde0", 0, 0);
  Point& next = data.At("Pde100", 100, 0);
  data.AddTrail("Pde", {&mark, &next});
  next.projected = {mark.projected.north, mark.projected.east + 5};
  double bearing = 0;
  PositionOnTrail(data.map, "Pde0", &bearing);
  EXPECT_NEAR(bearing, Pi / 2, 1e-9) << "this path projects no point again";
}

TEST(PositionOnTrail, GivesNoPlaceFromAPointThatIsNotPlaced) {
  TrailMap data;
  Point& middle = data.At("middle", 50, 0);
  Point& end = data.At("Pde100", 100, 0);
  Point& behind = data.At("behind", 150, 0);
  data.AddTrail("Pde", {&data.At("Pde0", 0, 0), &middle, &end, &behind});
  end.flags = 0;
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde100").has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde70").has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde120").has_value());
  end.flags = PointPlaced;
  middle.flags = 0;
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde70").has_value());
  EXPECT_TRUE(PositionOnTrail(data.map, "Pde120").has_value());
  behind.flags = 0;
  double bearing = 9;
  EXPECT_TRUE(PositionOnTrail(data.map, "Pde100", &bearing).has_value());
  EXPECT_EQ(bearing, 0) << "nothing leads on to a known place";
}

TEST(PositionOnTrail, OfATrailWithoutMarksOrPointsFails) {
  TrailMap data;
  data.AddNames("Pde", {"a", "b"});
  data.AddTrail("Empty", {});
  EXPECT_FALSE(PositionOnTrail(data.map, "Pde10").has_value());
  EXPECT_FALSE(PositionOnTrail(data.map, "Empty10").has_value());
}

TEST(PositionOnTrail, OfMarksInOnePlaceIsThatPlace) {
  TrailMap data;
  data.AddTrail("Pde", {&data.At("Pde0", 5, 5), &data.At("Pde100", 5, 5)});
  const auto place = PositionOnTrail(data.map, "Pde50");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 5, 1e-6);
}

}  // namespace
}  // namespace orvane
