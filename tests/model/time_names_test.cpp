#include "model/time_names.h"

#include "model/workspace.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace orvane {
namespace {

TEST(TimeNames, FourDigitsOrAColonMakeATimeName) {
  for (const char* name : {"0830", "0830-0915", "8:30", "8:30-8:45", "2560", "0000", "0830-",
                           "08:", ":", ":30", "123456:7", "0830-Camp", "8:30-"}) {
    EXPECT_TRUE(IsTimeName(name)) << name;
  }
  for (const char* name : {"830", "08300", "12:30pm", "8:30 ", " 0830", "", "-", "083a", "0830 ",
                           "8:3a", "a0830", "8.30", "0830/0915", "830-0915", "8:30:10"}) {
    EXPECT_FALSE(IsTimeName(name)) << name;
  }
}

TEST(TimeNames, ReadsMinutesAfterMidnight) {
  EXPECT_EQ(ParseTimeName("0830"), 510);
  EXPECT_EQ(ParseTimeName("8:30"), 510);
  EXPECT_EQ(ParseTimeName("0830-0915"), 510);
  EXPECT_EQ(ParseTimeName("8:30-8:45"), 510);
  EXPECT_EQ(ParseTimeName("0000"), 0);
  EXPECT_EQ(ParseTimeName("2359"), 1439);
  EXPECT_EQ(ParseTimeName("0875"), 555);  // no range is checked
  EXPECT_EQ(ParseTimeName("25:61"), 1561);
  EXPECT_EQ(ParseTimeName(":30"), 30);
}

TEST(TimeNames, PmAddsTwelveHoursBelowNoon) {
  EXPECT_EQ(ParseTimeName("830pm"), 1230);
  EXPECT_EQ(ParseTimeName("8:30pm"), 1230);
  EXPECT_EQ(ParseTimeName("8:30PM"), 1230);
  EXPECT_EQ(ParseTimeName("8:30Pm"), 1230);
  EXPECT_EQ(ParseTimeName("12:30pm"), 750);
  EXPECT_EQ(ParseTimeName("8:30am"), 510);
  EXPECT_EQ(ParseTimeName("8:30 pm"), 510);
  EXPECT_EQ(ParseTimeName("8:30p"), 510);
}

TEST(TimeNames, DurationIsTheSpanOfTheName) {
  EXPECT_EQ(TimeNameDuration("0830-0915"), 45);
  EXPECT_EQ(TimeNameDuration("8:30-8:45"), 15);
  EXPECT_EQ(TimeNameDuration("0830-8:45"), 15);
  EXPECT_EQ(TimeNameDuration("0830-0830"), 0);
  EXPECT_EQ(TimeNameDuration("0915-0830"), -45);
  EXPECT_EQ(TimeNameDuration("0830-0915-1000"), 45);
}

TEST(TimeNames, NameWithoutASpanHasTheDurationMinusOne) {
  EXPECT_EQ(TimeNameDuration("0830"), -1);
  EXPECT_EQ(TimeNameDuration("0830-"), -1);
  EXPECT_EQ(TimeNameDuration("0830-915"), -1);
  EXPECT_EQ(TimeNameDuration("0830-Camp"), -1);
  EXPECT_EQ(TimeNameDuration(""), -1);
}

TEST(TimeNames, HugeNumbersStayWithinRange) {
  EXPECT_NO_FATAL_FAILURE(ParseTimeName("99999999999999999999:99999999999999999999"));
  EXPECT_EQ(ParseTimeName("999999999999:0"), 2147483647);
  EXPECT_EQ(TimeNameDuration("999999999999:0-0000"), -2147483647);
}

TEST(TimeNames, PointHasTheTimeOfItsNameOrElseOfItsFirstSynonym) {
  Point point;
  point.name = "Camp";
  EXPECT_EQ(PointTimeName(point), nullptr);
  point.synonyms = {"HQ", "0900", "0800"};
  ASSERT_NE(PointTimeName(point), nullptr);
  EXPECT_EQ(*PointTimeName(point), "0900");
  point.name = "0830";
  EXPECT_EQ(*PointTimeName(point), "0830");
}

struct FillPointTimesTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "a.map");
  Trail& trail = map.trails.emplace_front();

  void Walk(std::initializer_list<const char*> names) {
    for (const char* name : names) {
      Point& point = MakePoint(map, name);
      point.timeOfDay = -7;
      point.duration = -8;
      trail.points.push_back(&point);
    }
    FillPointTimes(trail);
  }
  std::string Times() const {
    std::string text;
    for (const Point* point : trail.points) {
      text += std::to_string(point->timeOfDay) + "+" + std::to_string(point->duration) + " ";
    }
    return text;
  }
};

TEST_F(FillPointTimesTest, DurationReachesToTheNextTimeNamedPoint) {
  Walk({"0800", "Camp", "0830", "0900"});
  EXPECT_EQ(Times(), "480+30 -7+-8 510+30 -7+-8 ");
}

TEST_F(FillPointTimesTest, SpanOfTheNameIsTheDuration) {
  Walk({"0800-0810", "0830", "0900-0905"});
  EXPECT_EQ(Times(), "480+10 510+30 540+5 ");
}

TEST_F(FillPointTimesTest, SpanBelowOneMinuteCountsAsNone) {
  Walk({"0800-0800", "0830-0820", "0900-0900"});
  EXPECT_EQ(Times(), "480+30 510+30 -7+-8 ");
}

TEST_F(FillPointTimesTest, TimesMayRunBackward) {
  Walk({"0900", "0830", "0845"});
  EXPECT_EQ(Times(), "540+-30 510+15 -7+-8 ");
}

TEST_F(FillPointTimesTest, TrailThatBeginsWithAnotherNameIsUnchanged) {
  Walk({"Camp", "0830", "0900"});
  EXPECT_EQ(Times(), "-7+-8 -7+-8 -7+-8 ");
}

TEST_F(FillPointTimesTest, SynonymOfTheFirstPointDoesNotCountButOfLaterOnes) {
  Walk({"Camp", "0830"});
  trail.points[0]->synonyms = {"0800"};
  FillPointTimes(trail);
  EXPECT_EQ(trail.points[0]->timeOfDay, -7);
  trail.points[0]->name = "0800";
  trail.points[1]->name = "Hut";
  trail.points[1]->synonyms = {"0815"};
  FillPointTimes(trail);
  EXPECT_EQ(Times(), "480+15 -7+-8 ");
}

TEST_F(FillPointTimesTest, EmptyTrailIsUnchanged) {
  Walk({});
  EXPECT_TRUE(trail.points.empty());
}

}  // namespace
}  // namespace orvane
