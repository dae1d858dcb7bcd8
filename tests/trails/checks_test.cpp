#include "trails/checks.h"

#include "support/scripted_messages.h"
#include "trail_maps.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::TrailMap;

using Texts = std::vector<std::string>;

TEST(CheckTrail, AcceptsALastPointThatRepeatsTheFirst) {
  TrailMap data;
  Point& a = data.Named("a");
  Point& b = data.Named("b");
  CheckTrail(data.AddTrail("Plot", {&a, &b, &data.Named("c"), &a}), false, data.messages);
  EXPECT_TRUE(data.Texts().empty());
  CheckTrail(data.AddTrail("Loop", {&a, &b, &a, &b}), false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point a occurs twice on trail Loop"});
}

TEST(CheckTrail, WarnsOfARepeatInTheMiddleAtMostFourTimes) {
  TrailMap data;
  Point& a = data.Named("a");
  Trail& trail = data.AddTrail("Pde", {&a, &a, &a, &a, &a, &a, &a, &a});
  EXPECT_FALSE(CheckTrail(trail, true, data.messages)) << "no check of the order applies";
  EXPECT_EQ(data.Texts(), Texts(4, "Point a occurs twice on trail Pde"));
  EXPECT_EQ(data.messages.Entries()[0].severity, Severity::Warning);
}

TEST(CheckTrail, NamesWhatHasNoName) {
  TrailMap data;
  Point& a = data.Named("");
  Trail& trail = data.AddTrail("", {&a, &a, &data.Named("b")});
  CheckTrail(trail, false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point <nameless point> occurs twice on trail <nameless trail>"});
}

TEST(CheckTrail, PrefersNumbersToValuesAndTimesForNamelessTrails) {
  TrailMap data;
  Trail& numbers = data.AddTrail("Pde", {&data.Named("Pde10", {"7"}), &data.Named("Pde20", {"7"})});
  EXPECT_TRUE(CheckTrail(numbers, false, data.messages));
  EXPECT_TRUE(data.Texts().empty());
  Trail& values = data.AddTrail("Old", {&data.Named("a", {"7"}), &data.Named("b", {"7"})});
  EXPECT_TRUE(CheckTrail(values, false, data.messages));
  EXPECT_EQ(data.Texts(), Texts{"Point 7 (b) occurs twice on trail Old"});
  data.messages.Clear();
  Trail& times = data.AddNames("", {"0800", "0800"});
  EXPECT_TRUE(CheckTrail(times, false, data.messages));
  EXPECT_EQ(data.Texts(), Texts{"Point 8:00 (0800) occurs twice on trail <nameless trail>"});
}

TEST(CheckTrail, NeverChangesTheTrail) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pde30", "Pde10", "Pde20"});
  const std::vector<Point*> before = trail.points;
  CheckTrail(trail, true, data.messages);
  EXPECT_EQ(trail.points, before);
}

TEST(CheckTrailNumbers, LetsTheFirstStepFixTheDirection) {
  TrailMap data;
  CheckTrailNumbers(data.AddNames("Up", {"Up10", "Up20", "Up15"}), false, data.messages);
  CheckTrailNumbers(data.AddNames("Down", {"Down30", "Down20", "Down25"}), false, data.messages);
  EXPECT_EQ(data.Texts(), (Texts{"Point 15 (Up15) occurs out of order on trail Up",
                                 "Point 25 (Down25) occurs out of order on trail Down"}));
}

TEST(CheckTrailNumbers, LeavesTheDirectionOpenAfterEqualNumbers) {
  TrailMap data;
  CheckTrailNumbers(data.AddNames("Pde", {"Pde10", "Pde10", "Pde5", "Pde3"}), false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point 10 (Pde10) occurs twice on trail Pde"});
}

TEST(CheckTrailNumbers, ComparesWithThePointBeforeEvenIfThatWasOutOfOrder) {
  TrailMap data;
  CheckTrailNumbers(data.AddNames("Pde", {"Pde10", "Pde20", "Pde5", "Pde15"}), false,
                    data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point 5 (Pde5) occurs out of order on trail Pde"});
}

TEST(CheckTrailNumbers, TakesMinusOneForNoPredecessor) {
  TrailMap data;
  // 5 to -1 falls, but what follows -1 starts afresh with the direction kept.
  CheckTrailNumbers(data.AddNames("Pde", {"Pde-1", "Pde-1", "Pde7"}), false, data.messages);
  EXPECT_TRUE(data.Texts().empty());
  CheckTrailNumbers(data.AddNames("Old", {"Old-2", "Old-2"}), false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point -2 (Old-2) occurs twice on trail Old"});
}

TEST(CheckTrailNumbers, AppliesOnlyIfSomePointHasANumber) {
  TrailMap data;
  EXPECT_FALSE(CheckTrailNumbers(data.AddNames("Pde", {"a", "b"}), true, data.messages));
  EXPECT_FALSE(CheckTrailNumbers(data.AddNames("Old", {}), true, data.messages));
  EXPECT_TRUE(data.Texts().empty());
}

TEST(CheckTrailNumbers, WarnsOnceOfPointsThatDoNotBelong) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pde10", "Camp", "", "pde20", "_aux", "@aux", "Pde30"});
  CheckTrailNumbers(trail, false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point Camp occurs on a trail it does not seem to belong on, Pde"});
  data.messages.Clear();
  CheckTrailNumbers(trail, true, data.messages);
  EXPECT_EQ(data.Texts(),
            (Texts{"Point Camp occurs on a trail it does not seem to belong on, Pde",
                   "Point <nameless point> occurs on a trail it does not seem to belong on, Pde",
                   "Point pde20 occurs on a trail it does not seem to belong on, Pde"}));
}

TEST(CheckTrailNumbers, AcceptsBeginAndEndWithTheTrailsExactName) {
  TrailMap data;
  CheckTrailNumbers(data.AddNames("Pde", {"PdeBegin", "Pde10", "Pdeend"}), true, data.messages);
  EXPECT_TRUE(data.Texts().empty());
  CheckTrailNumbers(data.AddNames("Pde", {"Pde10", "PDEend", "Pdeends"}), true, data.messages);
  EXPECT_EQ(data.Texts(),
            (Texts{"Point PDEend occurs on a trail it does not seem to belong on, Pde",
                   "Point Pdeends occurs on a trail it does not seem to belong on, Pde"}));
}

TEST(CheckTrailNumbers, EndsWithTheSixthWarningUnlessAllAreShown) {
  TrailMap data;
  Trail& trail =
      data.AddNames("Pde", {"Pde1", "Pde1", "Pde1", "Pde1", "Pde1", "Pde1", "Pde1", "Pde1", "x"});
  EXPECT_TRUE(CheckTrailNumbers(trail, false, data.messages));
  Texts expected(5, "Point 1 (Pde1) occurs twice on trail Pde");
  expected.emplace_back("Too many warnings for trail Pde");
  EXPECT_EQ(data.Texts(), expected);
  data.messages.Clear();
  EXPECT_TRUE(CheckTrailNumbers(trail, true, data.messages));
  EXPECT_EQ(data.Texts().size(), 8U);
  EXPECT_EQ(data.Texts().back(), "Point x occurs on a trail it does not seem to belong on, Pde");
}

TEST(CheckTrailNumbers, CountsBothKindsOfWarningButNotStrangers) {
  TrailMap data;
  Trail& trail = data.AddNames(
      "Pde", {"x", "Pde1", "Pde3", "Pde2", "Pde2", "Pde1", "Pde1", "Pde0", "Pde5", "Pde4"});
  CheckTrailNumbers(trail, false, data.messages);
  EXPECT_EQ(data.Texts(), (Texts{"Point x occurs on a trail it does not seem to belong on, Pde",
                                 "Point 2 (Pde2) occurs out of order on trail Pde",
                                 "Point 2 (Pde2) occurs twice on trail Pde",
                                 "Point 1 (Pde1) occurs out of order on trail Pde",
                                 "Point 1 (Pde1) occurs twice on trail Pde",
                                 "Point 0 (Pde0) occurs out of order on trail Pde",
                                 "Too many warnings for trail Pde"}));
}

TEST(CheckTrailValues, ComparesTheSynonymsThatAreNumbers) {
  TrailMap data;
  Trail& trail = data.AddTrail(
      "Old", {&data.Named("a", {"1.5"}), &data.Named("Oldend"), &data.Named("b", {"1e6"}),
              &data.Named("12", {"x"}), &data.Named("c", {"2.25"})});
  EXPECT_TRUE(CheckTrailValues(trail, true, data.messages));
  EXPECT_EQ(data.Texts(),
            (Texts{"Point Oldend occurs on a trail it does not seem to belong on, Old",
                   "Point 12 occurs on a trail it does not seem to belong on, Old",
                   "Point 2.25 (c) occurs out of order on trail Old"}));
}

TEST(CheckTrailValues, ShowsNumbersInTheirGeneralForm) {
  TrailMap data;
  CheckTrailValues(data.AddTrail("Old", {&data.Named("a", {"1e6"}), &data.Named("b", {"1000000"})}),
                   false, data.messages);
  EXPECT_EQ(data.Texts(), Texts{"Point 1e+06 (b) occurs twice on trail Old"});
}

TEST(CheckTrailTimes, ReadsNamesAndSynonyms) {
  TrailMap data;
  Trail& trail = data.AddTrail("", {&data.Named("0830"), &data.Named("Camp", {"x", "9:05"}),
                                    &data.Named("0805-0845"), &data.Named("nest")});
  EXPECT_TRUE(CheckTrailTimes(trail, false, data.messages));
  EXPECT_EQ(
      data.Texts(),
      (Texts{"Point 8:05 (0805-0845) occurs out of order on trail <nameless trail>",
             "Point nest occurs on a trail it does not seem to belong on, <nameless trail>"}));
}

TEST(CheckAllTrails, TakesTheBasisAfterTheMapWithLimitedWarnings) {
  TrailMap data;
  data.AddNames("Base", {"Base1", "Base1"});
  Map& season = MakeMap(data.workspace, "season.map");
  season.basis = &data.map;
  Trail& own = season.trails.emplace_front();
  own.name = "Own";
  own.points.assign(8, &data.Named("Own5"));
  CheckAllTrails(season, data.messages);
  Texts expected(4, "Point Own5 occurs twice on trail Own");
  expected.insert(expected.end(), 5, "Point 5 (Own5) occurs twice on trail Own");
  expected.emplace_back("Too many warnings for trail Own");
  expected.emplace_back("Point 1 (Base1) occurs twice on trail Base");
  EXPECT_EQ(data.Texts(), expected);
}

TEST(CheckTrail, ItsWarningsAreAboutAPointUnlessThatHasATimeName) {
  ScriptedMessages messages;
  TrailMap data;
  Point& a = data.Named("a");
  CheckTrail(data.AddTrail("Pde", {&a, &a, &data.Named("b")}), false, messages);
  ASSERT_EQ(messages.origins.size(), 1U);
  EXPECT_EQ(messages.origins[0].file, data.map.fileName);
  EXPECT_EQ(messages.origins[0].point, "a");
  Point& stop = data.Named("0700");
  CheckTrail(data.AddTrail("Follow", {&stop, &stop, &a}), false, messages);
  ASSERT_GT(messages.origins.size(), 1U);
  EXPECT_EQ(messages.origins[1].file, data.map.fileName);
  EXPECT_EQ(messages.origins[1].point, "");
  EXPECT_EQ(messages.Origin(), nullptr);
}

}  // namespace
}  // namespace orvane
