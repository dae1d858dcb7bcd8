#include "pages/report_pages.h"

#include "base/dates.h"
#include "geo/earth.h"
#include "pages/small_pages.h"
#include "support/counted_progress.h"
#include "support/recording_canvas.h"
#include "support/small_map.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <map>

namespace orvane {
namespace {

/// The texts of all pages, each page with its operations.
std::vector<RecordingCanvas> DrawAll(ReportPages& pages) {
  RecordingCanvas measuring(1, 1);
  pages.Measure(measuring);
  std::vector<RecordingCanvas> drawn;
  for (int page = 0; page < pages.Count(); ++page) {
    RecordingCanvas& canvas = drawn.emplace_back(400, 205);
    pages.DrawPage(page, canvas);
  }
  return drawn;
}

/// How often each of the texts that begin with `start` is drawn, and where it ends on its page.
struct Found {
  int count = 0;
  int baseline = 0;
};
std::map<std::string, Found> TextsFrom(const std::vector<RecordingCanvas>& pages,
                                       const std::string& start) {
  std::map<std::string, Found> found;
  for (const RecordingCanvas& page : pages) {
    for (const std::string& line : page.Having("text")) {
      const size_t text = line.find(' ', 5) + 1;
      if (line.compare(text, start.size(), start) != 0) continue;
      Found& one = found[line.substr(text)];
      ++one.count;
      one.baseline = std::stoi(line.substr(line.find(',') + 1));
    }
  }
  return found;
}

TEST(TrailSummaryPagesTest, PrintsEachLineOnceAndTheHeadingsOnEachPage) {
  SmallMap map;
  std::vector<Trail*> trails;
  for (int i = 0; i < 100; ++i) {
    Point& a = map.AddPoint("", i, 0);
    Point& b = map.AddPoint("", i, 100);
    trails.push_back(&map.AddTrail("T" + std::to_string(1000 + i), {&a, &b, &a}, 0));
  }
  // 18 lines fit on a page. The totals and the aspect table have 11, and two gaps.
  const std::map<size_t, int> pagesFor = {{0, 1}, {1, 1}, {6, 1}, {7, 2}, {8, 2}, {100, 7}};
  for (const auto& [count, expected] : pagesFor) {
    TrailSummaryPages pages(SmallPages(),
                            {trails.begin(), trails.begin() + static_cast<int>(count)}, 0);
    const std::vector<RecordingCanvas> drawn = DrawAll(pages);
    const auto names = TextsFrom(drawn, "T1");
    EXPECT_EQ(names.size(), count);
    for (const auto& [name, found] : names) {
      EXPECT_EQ(found.count, 1) << name;
      EXPECT_GE(found.baseline - RecordingCanvas::SmallAscent, 22) << name;
      EXPECT_LE(found.baseline + 2, 205) << name;
    }
    EXPECT_EQ(TextsFrom(drawn, "Totals").at("Totals").count, 1);
    EXPECT_EQ(TextsFrom(drawn, "Trail").at("Trail").count, pages.Count());
    EXPECT_EQ(TextsFrom(drawn, "site.map").at("site.map").count, pages.Count());
    EXPECT_EQ(TextsFrom(drawn, "2026").at("2026-3-1").count, pages.Count());
    const std::string last =
        "page " + std::to_string(pages.Count()) + " of " + std::to_string(pages.Count());
    EXPECT_EQ(TextsFrom(drawn, last).size(), 1U);
    EXPECT_EQ(pages.Count(), expected) << count;
  }
}

TEST(TrailSummaryPagesTest, NamesATrailWithoutANameAsItsWindowDoes) {
  SmallMap map;
  Trail& follow = map.AddTrail("", {&map.AddPoint("", 0, 0), &map.AddPoint("", 0, 100)}, 0);
  follow.name.reset();
  follow.date = PackDate(2003, 3, 5);
  follow.focalAnimal = "Pim";
  TrailSummaryPages pages(SmallPages(), {&follow}, 0);
  EXPECT_EQ(TextsFrom(DrawAll(pages), "2003").count("2003-3-5 Pim"), 1U);
}

/// A name has six pixels a letter, and so has a date of eight letters: it begins at 176.
TEST(TrailSummaryPagesTest, KeepsTheFootLineOnAPageWithNarrowMargins) {
  SmallMap map;
  Point& a = map.AddPoint("", 0, 0);
  Point& b = map.AddPoint("", 0, 100);
  std::vector<Trail*> trails;
  trails.reserve(40);
  for (int i = 0; i < 40; ++i) {
    trails.push_back(&map.AddTrail("T" + std::to_string(1000 + i), {&a, &b}, 0));
  }
  ReportPageFrame frame = SmallPages();
  frame.device.marginBelow = 19;
  TrailSummaryPages pages(frame, trails, 0);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  EXPECT_EQ(TextsFrom(drawn, "site.map").at("site.map").baseline, 203);
  for (const auto& [name, found] : TextsFrom(drawn, "T1")) {
    EXPECT_LE(found.baseline + 2, 205 - 15) << name;
  }
  frame.device.marginBelow = 20;
  TrailSummaryPages wide(frame, trails, 0);
  EXPECT_EQ(TextsFrom(DrawAll(wide), "site.map").at("site.map").baseline, 215);
}

TEST(TrailSummaryPagesTest, CutsALongNameBeforeTheDate) {
  ReportPageFrame frame = SmallPages();
  frame.mapName = std::string(200, 'm');
  TrailSummaryPages pages(frame, {}, 0);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  const int date = (400 - drawn[0].TextWidth(frame.date)) / 2;
  const int blanks = drawn[0].TextWidth("  ");
  const std::string cut = "clip 0,0 " + std::to_string(date - blanks) + ",244";
  const std::vector<std::string> clips = drawn[0].Having("clip");
  EXPECT_EQ(std::count(clips.begin(), clips.end(), cut), 1) << clips.back();
}

TEST(PointIndexPagesTest, PrintsEachNameOnce) {
  PointIndex index;
  for (int i = 0; i < 200; ++i) {
    PointIndexEntry& entry = index.entries.emplace_back();
    entry.name = "P" + std::to_string(1000 + i);
    entry.position = {.lat = 1, .lon = 10};
  }
  ReportPageFrame frame = SmallPages();
  // On a narrower page the end of the second name's place would be cut.
  frame.device.width = 400;
  PointIndexPages narrow(frame, index, CoordinateDisplay::Degrees);
  EXPECT_EQ(DrawAll(narrow).size(), 11U);
  frame.device.width = 409;
  PointIndexPages pages(frame, index, CoordinateDisplay::Degrees);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  // The headings take 12 pixels, so 19 lines of two names fit on a page.
  EXPECT_EQ(pages.Count(), 6);
  const auto names = TextsFrom(drawn, "P1");
  EXPECT_EQ(names.size(), 200U);
  for (const auto& [name, found] : names) {
    EXPECT_EQ(found.count, 1) << name;
    EXPECT_LE(found.baseline + 2, 205) << name;
  }
  EXPECT_EQ(TextsFrom(drawn, "Lat/Lon").at("Lat/Lon").count, 2 * pages.Count());
  EXPECT_EQ(pages.Title(), "Point Summary");
}

struct RangeStatsPagesTest : testing::Test {
  std::deque<Range> ranges;
  std::deque<RangePanelRow> rows;

  std::vector<const RangePanelRow*> Rows(int count, bool travel) {
    std::vector<const RangePanelRow*> made;
    for (int i = 0; i < count; ++i) {
      Range& range = ranges.emplace_back();
      if (travel) {
        range.meanDailyPath = 100;
        range.hours[8].distance = 100;
      }
      RangePanelRow& row = rows.emplace_back();
      row.range = &range;
      row.text = "R" + std::to_string(rows.size());
      made.push_back(&row);
    }
    return made;
  }
};

TEST_F(RangeStatsPagesTest, BeginsABlockThatFitsOnOnePageOnTheNext) {
  RangeStatsPages pages(SmallPages(), Rows(9, false), {}, TravelChartMode::Distance);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  // Blocks of 25 pixels: eight on a page.
  EXPECT_EQ(pages.Count(), 2);
  EXPECT_EQ(TextsFrom({drawn[0]}, "R").size(), 8U);
  EXPECT_EQ(TextsFrom({drawn[1]}, "R9").at("R9").baseline, 10);
  EXPECT_TRUE(pages.Fonts().monospaced);
}

TEST_F(RangeStatsPagesTest, BreaksALongBlockBetweenLinesNotThroughItsChart) {
  RangeStatsPages pages(SmallPages(), Rows(2, true), {}, TravelChartMode::Distance);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  // A title of 15, a chart of 170 and 14 lines: the first page holds two of the lines.
  ASSERT_GE(pages.Count(), 3);
  EXPECT_EQ(TextsFrom(drawn, "Hourly Travel").at("Hourly Travel").count, 2);
  EXPECT_EQ(TextsFrom({drawn[0]}, "MCP area").size(), 1U);
  EXPECT_EQ(TextsFrom({drawn[0]}, "Distance").size(), 0U);
  EXPECT_EQ(TextsFrom({drawn[1]}, "Distance").size(), 12U);
  for (const auto& [text, found] : TextsFrom(drawn, "Distance")) {
    EXPECT_EQ(found.count, 2) << text;
    EXPECT_LE(found.baseline + 2, 205) << text;
  }
  for (const char* title : {"R1", "R2"}) EXPECT_EQ(TextsFrom(drawn, title).at(title).count, 1);
}

TEST_F(RangeStatsPagesTest, OverlapsHaveTheLinesOfTheWindow) {
  Rows(2, false);
  RangeIntersection overlap;
  overlap.a.range = &ranges[0];
  overlap.b.range = &ranges[1];
  RangePanelRow& row = rows.emplace_back();
  row.text = "R1 & R2";
  row.intersection = &overlap;
  RangeStatsPages pages(SmallPages(), {&row}, {}, TravelChartMode::Distance);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  int lines = 0;
  for (; auto line = IntersectionReportLine(overlap, {}, lines); ++lines) {
    EXPECT_EQ(TextsFrom(drawn, *line).count(*line), 1U) << *line;
  }
  EXPECT_EQ(lines, 10);
}

TEST_F(RangeStatsPagesTest, PrintsAnEmptyPageWithoutRows) {
  RangeStatsPages pages(SmallPages(), {}, {}, TravelChartMode::Distance);
  EXPECT_EQ(DrawAll(pages).size(), 1U);
}

TEST(ProfilePagesTest, HasOnePageWithTheWholeLine) {
  SmallMap map;
  Point& a = map.AddPoint("Camp", 0, 0);
  Point& b = map.AddPoint("Ridge", 1000, 0);
  a.geo.altitude = 100;
  b.geo.altitude = 300;
  const Trail& trail = map.AddTrail("Path", {&a, &b}, 0);
  auto view = OpenElevation(map.TheMap(), trail);
  ASSERT_TRUE(view);
  ProfilePages pages(SmallPages(), std::move(*view), CoordinateDisplay::Minutes);
  EXPECT_EQ(pages.Title(), "Path");
  EXPECT_EQ(pages.Fonts().text, 7);
  const std::vector<RecordingCanvas> drawn = DrawAll(pages);
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_EQ(TextsFrom(drawn, "Camp").size(), 1U);
  EXPECT_EQ(TextsFrom(drawn, "300").size(), 1U);
  const std::vector<std::string> lines = drawn[0].Having("polyline");
  ASSERT_EQ(lines.size(), 1U);
  // One vertex for each column right of the altitudes.
  const auto vertices = std::count(lines[0].begin(), lines[0].end(), ',');
  EXPECT_EQ(vertices, 400 - (3 * 6 + 3));

  // A page with narrow margins has room for the foot line below the distances.
  ReportPageFrame narrow = SmallPages();
  narrow.device.marginBelow = 0;
  ProfilePages low(narrow, *OpenElevation(map.TheMap(), trail), CoordinateDisplay::Minutes);
  const std::vector<RecordingCanvas> page = DrawAll(low);
  const int foot = TextsFrom(page, "site.map").at("site.map").baseline;
  EXPECT_LE(TextsFrom(page, "0m").at("0m").baseline + 12, foot);

  auto transect = OpenTransect(map.TheMap(), a.geo, b.geo);
  ASSERT_TRUE(transect);
  EXPECT_EQ(ProfilePages(SmallPages(), std::move(*transect), CoordinateDisplay::Minutes).Title(),
            "Transect");
}

/// The estimates take nearly all the time of a page, and ran to their end.
TEST(ProfilePagesTest, StopsEstimatingWhenTheJobIsCanceled) {
  SmallMap map;
  Point& a = map.AddPoint("Camp", 0, 0);
  Point& b = map.AddPoint("Ridge", 1000, 0);
  a.geo.altitude = 100;
  b.geo.altitude = 300;
  const Trail& trail = map.AddTrail("Path", {&a, &b}, 0);
  ProfilePages pages(SmallPages(), *OpenElevation(map.TheMap(), trail), CoordinateDisplay::Minutes);
  const auto vertices = [&pages] {
    RecordingCanvas canvas(400, 205);
    pages.Measure(canvas);
    canvas.Forget();
    pages.DrawPage(0, canvas);
    const std::vector<std::string> lines = canvas.Having("polyline");
    return lines.empty() ? 0 : std::count(lines[0].begin(), lines[0].end(), ',');
  };
  Workspace& workspace = *map.TheMap().workspace;
  CountedProgress patient;
  workspace.progress = &patient;
  const auto all = vertices();
  EXPECT_TRUE(patient.inBounds);
  EXPECT_EQ(all, 400 - (3 * 6 + 3));
  EXPECT_GT(patient.stages.size(), 10U);
  CountedProgress impatient(3);
  workspace.progress = &impatient;
  EXPECT_LT(vertices(), all / 2);
  EXPECT_EQ(impatient.stages, std::vector<WorkStage>(3, WorkStage::Printing));
  workspace.progress = nullptr;
  EXPECT_EQ(vertices(), all);
}

}  // namespace
}  // namespace orvane
