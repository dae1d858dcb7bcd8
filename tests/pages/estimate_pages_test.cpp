#include "pages/estimate_pages.h"

#include "pages/small_pages.h"
#include "support/recording_canvas.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

/// Pages of 600 x 800 pixels: three charts beside each other, and 215 pixels high.
ReportPageFrame WidePages() {
  ReportPageFrame frame = SmallPages();
  frame.device.width = 600;
  frame.device.height = 800;
  return frame;
}

TableReport TableOf(int rows) {
  TableReport table;
  table.notes = {"A note."};
  table.columns = {{"Figure"}};
  for (int i = 0; i < rows; ++i) table.rows.push_back({"row" + std::to_string(i) + "."});
  return table;
}

std::vector<EstimateCharts> ChartsOfRanges(int count) {
  std::vector<EstimateCharts> charts;
  for (int i = 0; i < count; ++i) {
    EstimateCharts& each = charts.emplace_back();
    each.rangeName = "range" + std::to_string(i);
    each.polygons.title = "Polygons";
    each.polygons.lines = {{"", 0, true, {{50, 1}, {100, 2}}}};
    each.days.title = "Days";
  }
  return charts;
}

/// Where a text is: its page, and its baseline.
using Place = std::pair<int, int>;

struct DrawnPages {
  std::vector<RecordingCanvas> pages;

  explicit DrawnPages(EstimatePages& printed, int height = 800) {
    RecordingCanvas measuring(1, 1);
    printed.Measure(measuring);
    for (int page = 0; page < printed.Count(); ++page) {
      printed.DrawPage(page, pages.emplace_back(600, height));
    }
  }
  std::vector<Place> PlacesOf(const std::string& text) const {
    std::vector<Place> places;
    for (size_t page = 0; page < pages.size(); ++page) {
      for (const std::string& line : pages[page].Having("text")) {
        if (line.substr(line.find(' ', 5) + 1) != text) continue;
        places.emplace_back(static_cast<int>(page), std::stoi(line.substr(line.find(',') + 1)));
      }
    }
    return places;
  }
};

TEST(EstimatePages, ChartsThatDoNotFitBelowTheTableBeginOnTheNextPage) {
  EstimatePages pages(WidePages(), TableOf(10), ChartsOfRanges(4));
  EXPECT_EQ(pages.Title(), "Range Estimates");
  const DrawnPages drawn(pages);
  ASSERT_EQ(pages.Count(), 2);
  // The table ends at 130; a gap of a line, then the charts of two ranges.
  EXPECT_EQ(drawn.PlacesOf("row9."), (std::vector<Place>{{0, 128}}));
  EXPECT_EQ(drawn.PlacesOf("range0"), (std::vector<Place>{{0, 140 + 10}}));
  EXPECT_EQ(drawn.PlacesOf("range1"), (std::vector<Place>{{0, 365 + 10}}));
  EXPECT_EQ(drawn.PlacesOf("range2"), (std::vector<Place>{{1, 10}}));
  EXPECT_EQ(drawn.PlacesOf("range3"), (std::vector<Place>{{1, 225 + 10}}));
  EXPECT_EQ(drawn.PlacesOf("Polygons").size(), 4U);
  EXPECT_EQ(drawn.PlacesOf("There is no kernel.").size(), 4U);
  EXPECT_EQ(drawn.PlacesOf("Figure"), (std::vector<Place>{{0, 25}})) << "no rows, no headings";
  EXPECT_EQ(drawn.PlacesOf("page 2 of 2").size(), 1U);
  for (const RecordingCanvas& page : drawn.pages) {
    EXPECT_EQ(page.Count("polyline"), 2);
    for (const std::string& line : page.Having("polyline")) {
      EXPECT_LE(std::stoi(line.substr(line.rfind(',') + 1)), 800);
    }
  }
}

TEST(EstimatePages, ChartsFollowTheLastPageOfALongTable) {
  // 78 rows on the first page, 80 on each other; the last page has 12.
  EstimatePages pages(WidePages(), TableOf(170 - 1), ChartsOfRanges(1));
  const DrawnPages drawn(pages);
  ASSERT_EQ(pages.Count(), 3);
  const auto last = drawn.PlacesOf("row168.");
  ASSERT_EQ(last.size(), 1U);
  EXPECT_EQ(last[0].first, 2);
  EXPECT_EQ(drawn.PlacesOf("range0"), (std::vector<Place>{{2, last[0].second + 2 + 10 + 10}}));
  EXPECT_EQ(drawn.PlacesOf("Figure").size(), 3U);
}

TEST(EstimatePages, ChartsHigherThanAPageAreMadeToFit) {
  // Here two charts fit beside each other, so that they would be 415 pixels high.
  EstimatePages pages(SmallPages(), TableOf(1), ChartsOfRanges(2));
  const DrawnPages drawn(pages, 205);
  ASSERT_EQ(pages.Count(), 3);
  EXPECT_EQ(drawn.PlacesOf("range0"), (std::vector<Place>{{1, 10}}));
  EXPECT_EQ(drawn.PlacesOf("range1"), (std::vector<Place>{{2, 10}}));
  for (const Place& place : drawn.PlacesOf("There is no kernel.")) EXPECT_LT(place.second, 205);
}

TEST(EstimatePages, WithoutRangesAreASentence) {
  TableReport table;
  table.notes = {"No range is selected in the list beside the map."};
  EstimatePages pages(WidePages(), table, {});
  const DrawnPages drawn(pages);
  ASSERT_EQ(pages.Count(), 1);
  EXPECT_EQ(drawn.PlacesOf(table.notes[0]).size(), 1U);
}

TEST(EstimatePages, AreTheSameEachTime) {
  EstimatePages pages(WidePages(), TableOf(3), ChartsOfRanges(5));
  const DrawnPages first(pages);
  const DrawnPages second(pages);
  ASSERT_EQ(first.pages.size(), second.pages.size());
  for (size_t i = 0; i < first.pages.size(); ++i) {
    EXPECT_EQ(first.pages[i].Text(), second.pages[i].Text());
  }
}

}  // namespace
}  // namespace orvane
