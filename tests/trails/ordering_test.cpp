#include "trails/ordering.h"

#include "trail_maps.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::NamesOf;
using test::TrailMap;

using Texts = std::vector<std::string>;

TEST(OrderTrailByNumber, SortsByTheMarksAndFillsDurations) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pdeend", "Pde100", "Pde20m", "Pde-5"});
  trail.points[0]->duration = 77;
  OrderTrailByNumber(trail, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"Pde-5", "Pde20m", "Pde100", "Pdeend"}));
  EXPECT_EQ(trail.points[0]->duration, 25);
  EXPECT_EQ(trail.points[1]->duration, 80);
  // 2147483547 cut to its lower 16 bits.
  EXPECT_EQ(trail.points[2]->duration, -101);
  EXPECT_EQ(trail.points[3]->duration, 77) << "the last point keeps what it has";
  EXPECT_TRUE(data.Texts().empty());
}

TEST(OrderTrailByNumber, PutsPointsThatDoNotFitBeforeTheEndPoint) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"PdeEND", "Camp", "", "Pde5", "PDEend"});
  OrderTrailByNumber(trail, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"Pde5", "Camp", "", "PDEend", "PdeEND"}));
  EXPECT_EQ(data.Texts(), (Texts{"Can't fit point Camp into trail Pde",
                                 "Can't fit point <nameless point> into trail Pde",
                                 "Can't fit point PDEend into trail Pde"}));
  EXPECT_EQ(data.messages.Entries()[0].severity, Severity::Error);
}

TEST(OrderTrailByNumber, KeepsTheOrderOfEqualNumbers) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pde5", "Pde05", "Pde1", "Pde5m"});
  OrderTrailByNumber(trail, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"Pde1", "Pde5", "Pde05", "Pde5m"}));
}

TEST(OrderTrailByNumber, KeepsATrailWithoutNumbers) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"b", "a"});
  OrderTrailByNumber(trail, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"b", "a"}));
  EXPECT_TRUE(data.Texts().empty());
}

TEST(OrderTrailByTime, SortsByTheTimeNames) {
  TrailMap data;
  Trail& trail = data.AddNames("", {"1010", "0800-0815", "Camp", "", "9:05"});
  OrderTrailByTime(trail, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"0800-0815", "9:05", "1010", "Camp", ""}));
  EXPECT_EQ(trail.points[0]->duration, 65);
  EXPECT_EQ(trail.points[1]->duration, 65);
  EXPECT_EQ(data.Texts(),
            (Texts{"Can't fit point Camp into trail", "Can't fit nameless point into trail"}));
}

TEST(OrderTrail, PostsAnErrorForATableThatDoesNotFitTheList) {
  TrailMap data;
  Trail& trail = data.AddNames("", {"a", "b", "c"});
  OrderTrail(trail, {{trail.points[2], 1}, {trail.points[0], 0}}, data.messages);
  EXPECT_EQ(NamesOf(trail), (Texts{"a", "c", "c"}));
  EXPECT_EQ(data.Texts(), Texts{"OrderTrail: inconsistant lists"});
  EXPECT_EQ(data.messages.Entries()[0].severity, Severity::InternalError);
}

TEST(InsertPointByNumber, InsertsBeforeTheFirstGreaterNumber) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pde10", "Camp", "Pde30", "Pdeend"});
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("x"), "Pde20"), 2U);
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("y"), "Pde30m"), 4U) << "after equal ones";
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("z"), "Pde-7"), 0U);
  EXPECT_EQ(NamesOf(trail), (Texts{"z", "Pde10", "Camp", "x", "Pde30", "y", "Pdeend"}));
}

TEST(InsertPointByNumber, NeverStopsAtAPointWithoutANumber) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Camp", "Pde10"});
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("x"), "Pde-20"), 1U);
}

TEST(InsertPointByNumber, AppendsToAListOfSmallerNumbers) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {});
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("x"), "Pde20"), 0U);
  EXPECT_EQ(InsertPointByNumber(trail, data.Named("y"), "Other99"), 1U)
      << "the number counts, whatever comes before it";
}

TEST(InsertPointByNumber, InsertsNothingWithoutANumber) {
  TrailMap data;
  Trail& trail = data.AddNames("Pde", {"Pde10"});
  EXPECT_FALSE(InsertPointByNumber(trail, data.Named("x"), "Camp").has_value());
  EXPECT_FALSE(InsertPointByNumber(trail, data.Named("x"), "20").has_value());
  EXPECT_EQ(trail.points.size(), 1U);
}

}  // namespace
}  // namespace orvane
