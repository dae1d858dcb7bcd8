#include "ranges/report_lines.h"

#include "ranges/range_case.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(const std::function<std::optional<std::string>(int)>& lineAt, int most = 100) {
  Lines lines;
  for (int i = 0; i < most; ++i) {
    const auto line = lineAt(i);
    if (!line) break;
    lines.push_back(*line);
  }
  return lines;
}

// --- Ranges ---------------------------------------------------------------------------------

struct RangeLinesTest : testing::Test {
  Range range;
  Trail follow;

  RangeLinesTest() {
    range.name = "Ana";
    range.mcpArea = 34567.8;
    range.gridArea = 1234567;
    range.follows = {&follow, &follow};
    range.totalMinutes = 150;
  }
  void GiveTravel() {
    range.meanDailyPath = 1234;
    range.meanFollowPath = 987;
    range.hours[8].distance = 88.5;
    range.hours[8].count = 26;
    range.hours[23].distance = 1000.4;
    range.hours[23].count = 12000;
  }
  /// Clusters of which one shows at levels 17 to 19 and another one at 18.
  void GiveClusters() {
    range.clusters = std::make_unique<ClusterTree>();
    Cluster& first = range.clusters->clusters.emplace_back();
    first.area[19] = 34567;
    first.area[18] = 10000;
    first.area[17] = 400;
    Cluster& second = range.clusters->clusters.emplace_back();
    second.area[18] = 2000;
    const std::vector<Point*> hull(3, nullptr);
    for (const size_t level : {size_t{0}, size_t{17}, size_t{18}, size_t{19}})
      first.hull[level] = hull;
    second.hull[18] = hull;
  }
  Lines Report() const {
    return LinesOf([&](int line) { return RangeReportLine(range, line); });
  }
  Lines Tip(std::uint32_t mask, int most = 100) const {
    return LinesOf([&](int line) { return RangeTipLine(range, mask, line); }, most);
  }
};

TEST_F(RangeLinesTest, ShowTheAreasFirst) {
  EXPECT_EQ(RangeReportLine(range, 0),
            "MCP area: 3.5ha                          Grid area: 1.2km^2");
}

TEST_F(RangeLinesTest, ShowPathsAndHours) {
  GiveTravel();
  const Lines lines = Report();
  ASSERT_EQ(lines.size(), 14U);
  EXPECT_EQ(
      lines[1],
      "Mean daily path:  1234m                 Mean follow:   987m (n=2, total time: 3 hours)");
  EXPECT_EQ(lines[2], "Distance 00:00-01:00:   0m (n=  0.0)    01:00-02:00:   0m (n=  0.0)");
  EXPECT_EQ(lines[6], "Distance 08:00-09:00:  89m (n=  2.2)    09:00-10:00:   0m (n=  0.0)");
  EXPECT_EQ(lines[13], "Distance 22:00-23:00:   0m (n=  0.0)    23:00-24:00: 1000m (n=1000.0)");
}

TEST_F(RangeLinesTest, GoOnWithTheClusters) {
  GiveTravel();
  GiveClusters();
  const Lines lines = Report();
  ASSERT_EQ(lines.size(), 17U);
  EXPECT_EQ(lines[14], "100% area: 3.5ha    clusters: 1");
  EXPECT_EQ(lines[15], " 95% area: 1.2ha    clusters: 2");
  EXPECT_EQ(lines[16], " 90% area: 400m^2   clusters: 1");
}

TEST_F(RangeLinesTest, HaveTheClustersSecondWithoutTravel) {
  GiveClusters();
  const Lines lines = Report();
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[1], "100% area: 3.5ha    clusters: 1");
}

TEST_F(RangeLinesTest, AreOneForAnEmptyRange) {
  const Range empty;
  EXPECT_EQ(LinesOf([&](int line) { return RangeReportLine(empty, line); }),
            (Lines{"MCP area: 0m^2                          Grid area: 0m^2"}));
}

TEST_F(RangeLinesTest, RoundHoursDifferentlyInReportAndTip) {
  GiveTravel();
  range.totalMinutes = 89;  // (89 + 30) / 60 and (89 + 3) / 60
  EXPECT_NE(RangeReportLine(range, 1)->find("total time: 1 hours"), std::string::npos);
  EXPECT_EQ(RangeTipLine(range, 0, 1), "number of follows: 2 (1 hours)");
  range.totalMinutes = 90;
  EXPECT_NE(RangeReportLine(range, 1)->find("total time: 2 hours"), std::string::npos);
  EXPECT_EQ(RangeTipLine(range, 0, 1), "number of follows: 2 (1 hours)");
  range.totalMinutes = 117;
  EXPECT_EQ(RangeTipLine(range, 0, 1), "number of follows: 2 (2 hours)");
}

TEST_F(RangeLinesTest, MakeATip) {
  GiveTravel();
  const Lines tip = Tip(0);
  EXPECT_EQ(tip, (Lines{"  Ana", "number of follows: 2 (2 hours)", "Mean daily path: 1234m",
                        "MCP area: 3.5ha", "Grid area: 1.2km^2"}));
}

TEST_F(RangeLinesTest, ShowTheLevelsOfTheMaskInATip) {
  GiveClusters();
  range.clusters->clusters[0].area[0] = 3;
  const Lines tip = Tip(0b101, 9);
  ASSERT_EQ(tip.size(), 9U);
  EXPECT_EQ(tip[5], "100% area: 3.5ha clusters: 1");
  EXPECT_EQ(tip[6], " 90% area: 400m^2 clusters: 1");
  // The mask is used up: the last level comes again and again.
  EXPECT_EQ(tip[7], "  5% area: 3m^2 clusters: 1");
  EXPECT_EQ(tip[8], tip[7]);
  EXPECT_EQ(RangeTipLine(range, 0b101, 24), tip[7]);
  EXPECT_EQ(RangeTipLine(range, 0b101, 25), std::nullopt);
}

TEST_F(RangeLinesTest, HaveNoNegativeNumber) {
  EXPECT_EQ(RangeReportLine(range, -1), std::nullopt);
  EXPECT_EQ(RangeTipLine(range, 0xFFFFF, -1), std::nullopt);
  EXPECT_EQ(NewRangeTipLine(0), "Create a new range");
  EXPECT_EQ(NewRangeTipLine(1), std::nullopt);
}

TEST_F(RangeLinesTest, EndureFiguresThatAreNotNumbers) {
  GiveTravel();
  GiveClusters();
  for (const double bad : {std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity(), -1e300}) {
    range.mcpArea = range.gridArea = range.hours[3].distance = bad;
    EXPECT_FALSE(Report().empty());
    EXPECT_FALSE(Tip(1, 20).empty());
  }
}

// --- Overlaps -------------------------------------------------------------------------------

struct OverlapLinesTest : testing::Test {
  Range a;
  Range b;
  RangeIntersection record;
  MeasureNames names = {"feed", "rest", "call"};

  OverlapLinesTest() {
    a.name = "Ana";
    b.name = "Bob";
    record.a.range = &a;
    record.b.range = &b;
    record.area = 12345;
    record.bothCellsArea = 10000;
    record.a.timeShare = 12.345F;
    record.a.cellShare = 50;
    record.b.timeShare = 100;
    record.b.cellShare = 1.0F / 3;
    a.totalMinutes = 200;
    b.totalMinutes = 400;
    Fill(record.a, 1);
    Fill(record.b, 2);
    for (int k = 0; k < 3; ++k) {
      a.tally.measure[k] = 1000 * (k + 1);
      b.tally.measure[k] = 100 * (k + 1);
    }
  }
  /// A different figure in each field.
  static void Fill(OverlapShare& share, std::int64_t base) {
    std::int64_t figure = base;
    for (CellTally* tally : {&share.tally, &share.beyond, &share.withinOther, &share.withinOwn}) {
      tally->minutes = figure += 2;
      for (std::int64_t& measure : tally->measure) measure = figure += 2;
    }
  }
  Lines Report() const {
    return LinesOf([&](int line) { return IntersectionReportLine(record, names, line); });
  }
  Lines Tip() const {
    return LinesOf([&](int line) { return RangeTipLine(record, names, line); });
  }
};

TEST_F(OverlapLinesTest, ReportEveryFigure) {
  // Minutes and measures of A: tally 3, 5, 7, 9; beyond 11 to 17; within the other 19 to 25;
  // within the own 27 to 33. Those of B are one more.
  const Lines expected = {
      "MCP area: 1.2ha",
      "Area of grid cells used by both: 1.0ha",
      "Time of Ana in Bob: 12.35%",
      "Time of Ana in grid cells of Bob: 50.00%",
      "Time of Bob in Ana: 100.00%",
      "Time of Bob in grid cells of Ana: 0.33%",
      "Time of Ana just beyond Bob: 5.50%,  and just within: 9.50%",
      "Time of Bob just beyond Ana: 3.00%,  and just within: 5.00%",
      "Time of Ana in Bob just within Ana: 13.50%",
      "Time of Bob in Ana just within Bob: 7.00%",
      // SM1
      "feed of Ana in Bob: 0.50%",
      "feed of Ana just beyond Bob: 1.30%,  and just within: 2.10%",
      "feed of Ana in Bob just within Ana: 2.90%",
      "feed of Bob in Ana: 6.00%",
      "feed of Bob just beyond Ana: 1.40%,  and just within: 2.20%",
      "feed of Bob in Ana just within Bob: 30.00%",
      // SM2
      "rest of Ana in Bob: 0.35%",
      "rest of Ana just beyond Bob: 0.75%,  and just within: 1.15%",
      "rest of Ana in Bob just within Ana: 1.55%",
      "rest of Bob in Ana: 4.00%",
      "rest of Bob just beyond Ana: 0.80%,  and just within: 1.20%",
      "rest of Bob in Ana just within Bob: 16.00%",
      // SM3: two of the lines have the name of SM2
      "rest of Ana in Bob: 0.30%",
      "call of Ana just beyond Bob: 0.57%,  and just within: 0.83%",
      "call of Ana in Bob just within Ana: 1.10%",
      "rest of Bob in Ana: 3.33%",
      "call of Bob just beyond Ana: 0.60%,  and just within: 0.87%",
      "call of Bob in Ana just within Bob: 11.33%",
  };
  EXPECT_EQ(Report(), expected);
}

TEST_F(OverlapLinesTest, ShowEveryFigureInATip) {
  const Lines expected = {
      "MCP area: 1.2ha",
      "Area of grid cells used by both: 1.0ha",
      "Time of Ana in Bob: 12.35%",
      "Time of Ana in grid cells of Bob: 50.00%",
      "Time of Bob in Ana: 100.00%",
      "Time of Bob in grid cells of Ana: 0.33%",
      "feed of Ana in Bob: 0.50%",
      "feed of Bob in Ana: 6.00%",
      "rest of Ana in Bob: 0.35%",
      "rest of Bob in Ana: 4.00%",
      "rest of Ana in Bob: 0.30%",
      "rest of Bob in Ana: 3.33%",
  };
  EXPECT_EQ(Tip(), expected);
}

TEST_F(OverlapLinesTest, EndAtTheFirstMeasureWithoutAName) {
  names = {"feed", std::nullopt, "call"};
  EXPECT_EQ(Report().size(), 16U);
  EXPECT_EQ(Tip().size(), 8U);
  names[0].reset();
  EXPECT_EQ(Report().size(), 10U);
  EXPECT_EQ(Tip().size(), 6U);
  // Lines after the end still have a text when asked for by number.
  EXPECT_EQ(IntersectionReportLine(record, names, 23),
            "call of Ana just beyond Bob: 0.57%,  and just within: 0.83%");
}

TEST_F(OverlapLinesTest, LookAtTheTotalOfBAndDivideByThatOfA) {
  b.tally.measure[0] = 0;
  EXPECT_EQ(Report()[14], "feed of Bob just beyond Ana: 0.00%,  and just within: 0.00%");
  b.tally.measure[0] = 7;
  EXPECT_EQ(Report()[14], "feed of Bob just beyond Ana: 1.40%,  and just within: 2.20%");
  a.tally.measure[0] = 0;
  EXPECT_EQ(Report()[14], "feed of Bob just beyond Ana: 0.00%,  and just within: 0.00%");
}

TEST_F(OverlapLinesTest, PrintNothingSharedAsZero) {
  a = Range{};
  b = Range{};
  record.a.timeShare = record.a.cellShare = record.b.timeShare = record.b.cellShare = 0;
  const Lines lines = Report();
  ASSERT_EQ(lines.size(), 28U);
  for (size_t i = 2; i < lines.size(); ++i) {
    EXPECT_NE(lines[i].find("0.00%"), std::string::npos) << lines[i];
  }
  EXPECT_EQ(lines[2], "Time of  in : 0.00%");
}

TEST_F(OverlapLinesTest, HaveNoNegativeNumber) {
  EXPECT_EQ(IntersectionReportLine(record, names, -1), std::nullopt);
  EXPECT_EQ(IntersectionReportLine(record, names, 28), std::nullopt);
  EXPECT_EQ(RangeTipLine(record, names, -1), std::nullopt);
  EXPECT_EQ(RangeTipLine(record, names, 12), std::nullopt);
}

}  // namespace
}  // namespace orvane
