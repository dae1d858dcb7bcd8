#include "pages/map_pages.h"

#include "geo/earth.h"
#include "pages/page_case.h"
#include "pages/page_marks.h"
#include "pages/paper.h"
#include "support/recording_canvas.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace orvane {
namespace {

TEST(PrintViewTest, TakesRowsAndHiddenGridsFromTheWindow) {
  PageCase c;
  c.window.flags |= MapWindowGridsHidden | MapWindowFindMarker | MapWindowTrailFlash;
  c.window.rotation = 20;
  const PrintMapWindow view = MakePrintView(c.window, c.device);
  EXPECT_EQ(view.flags, static_cast<std::uint32_t>(MapWindowPrint | MapWindowGridsHidden));
  EXPECT_EQ(view.trailViews.size(), c.window.trailViews.size());
  EXPECT_EQ(view.selectedTrail, nullptr);
  EXPECT_EQ(view.centerColumn, 1050);
  EXPECT_EQ(view.centerRow, 1500);
}

TEST(SetPrintFrameTest, CentersTheFrameOnItsPages) {
  PageCase c;
  SetPrintFrame(
      c.view, {.center = {.lat = 1, .lon = 10}, .vertical = 3000, .horizontal = 3000, .scale = 1});
  EXPECT_EQ(c.view.pagesDown, 1);
  EXPECT_EQ(c.view.pagesAcross, 2);
  EXPECT_DOUBLE_EQ(c.view.top, 111120 + 1500);
  EXPECT_DOUBLE_EQ(c.view.bottom, 111120 - 1500);
  EXPECT_DOUBLE_EQ(c.view.left, -2100);
  EXPECT_DOUBLE_EQ(c.view.right, 2100);
}

TEST(SetPrintFrameTest, NeedsNoSecondPageForAnExactFit) {
  PageCase c;
  for (const double scale : {0.1, 0.3, 1.0, 7.7, 300.0 / 5000 / 0.0254}) {
    SetPrintFrame(
        c.view,
        {.center = {}, .vertical = 3000 / scale, .horizontal = 2 * 2100 / scale, .scale = scale});
    EXPECT_EQ(c.view.pagesDown, 1) << scale;
    EXPECT_EQ(c.view.pagesAcross, 2) << scale;
  }
  SetPrintFrame(c.view, {.center = {}, .vertical = 3000.2, .horizontal = 2101, .scale = 1});
  EXPECT_EQ(PageCount(c.view), 4);
}

/// A pixel just beyond the edge of one page is at the near edge of the next one.
TEST(PlacePageTest, CutsTheMapWithoutGapOrOverlap) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> angle(-360, 360);
  for (int run = 0; run < 50; ++run) {
    PageCase c;
    const double rotation = run == 0 ? 0 : angle(random);
    SetPrintFrame(c.view, {.center = {.lat = 1, .lon = 10},
                           .vertical = 7000,
                           .horizontal = 5000,
                           .scale = 1.1,
                           .rotation = static_cast<float>(rotation)});
    ASSERT_EQ(c.view.pagesDown, 3);
    ASSERT_EQ(c.view.pagesAcross, 3);
    PlacePage(c.view, {1, 1});
    const LatLon rightEdge = ScreenToMap(c.view, {2100, 700});
    const LatLon lowerEdge = ScreenToMap(c.view, {300, 3000});
    const LatLon middle = ScreenToMap(c.view, {1050, 1500});
    EXPECT_NEAR(middle.lat, 1, 1e-9);
    EXPECT_NEAR(middle.lon, 10, 1e-9);
    PlacePage(c.view, {1, 2});
    const ExactPixel right = MapToScreenExact(c.view, rightEdge);
    EXPECT_NEAR(right.column, 0, 0.01) << rotation;
    EXPECT_NEAR(right.row, 700, 0.01) << rotation;
    PlacePage(c.view, {2, 1});
    const ExactPixel lower = MapToScreenExact(c.view, lowerEdge);
    EXPECT_NEAR(lower.column, 300, 0.01) << rotation;
    EXPECT_NEAR(lower.row, 0, 0.01) << rotation;
  }
}

TEST(PlacePageTest, TakesTheSineOfATurnedPageWithTheOtherSign) {
  PageCase c;
  const PrintFrame frame{
      .center = {.lat = 1, .lon = 10}, .vertical = 1, .horizontal = 1, .scale = 1, .rotation = 90};
  SetPrintFrame(c.view, frame);
  PlacePage(c.view, {});
  // The page reaches 1050 m to the north and south of its middle and 1500 m to the east and west.
  EXPECT_NEAR(c.view.top, DegreesToMeters(1) + 1050, 1e-6);
  EXPECT_NEAR(c.view.left, 1500, 1e-6);
  EXPECT_NEAR(c.view.bottom, c.view.top + 2100, 1e-6) << "and not - 2100";
  EXPECT_NEAR(c.view.right, c.view.left + 3000, 1e-6) << "and not - 3000";
}

/// The corners of a page that have a mark, such as "BR TL".
std::string MarkedCorners(int down, int across, PagePlace page) {
  PageCase c;
  RecordingCanvas canvas(2100, 3000);
  c.view.target = &canvas;
  c.view.pagesDown = down;
  c.view.pagesAcross = across;
  DrawPageMarks(c.view, page);
  const std::vector<std::string> lines = canvas.Having("line");
  const std::set<std::string> drawn(lines.begin(), lines.end());
  // An arm is half an inch, along the outermost pixels.
  struct Corner {
    const char* name;
    const char* across;
    const char* down;
  };
  static const Corner Corners[] = {{"BL", "line 0,2999 150,2999", "line 0,2999 0,2849"},
                                   {"BR", "line 2099,2999 1949,2999", "line 2099,2999 2099,2849"},
                                   {"TL", "line 0,0 150,0", "line 0,0 0,150"},
                                   {"TR", "line 2099,0 1949,0", "line 2099,0 2099,150"}};
  std::string found;
  for (const Corner& corner : Corners) {
    EXPECT_EQ(drawn.contains(corner.across), drawn.contains(corner.down));
    if (drawn.contains(corner.across)) found += std::string(corner.name) + " ";
  }
  EXPECT_EQ(lines.size(), found.size() / 3 * 2);
  return found;
}

TEST(PageMarksTest, MarksTheCornersThatPagesAreJoinedBy) {
  EXPECT_EQ(MarkedCorners(2, 2, {0, 0}), "BR TL TR ");
  EXPECT_EQ(MarkedCorners(2, 2, {0, 1}), "BL TL TR ");
  EXPECT_EQ(MarkedCorners(2, 2, {1, 0}), "BL BR TR ");
  EXPECT_EQ(MarkedCorners(2, 2, {1, 1}), "BL BR TL ");
  EXPECT_EQ(MarkedCorners(1, 1, {0, 0}), "");
  EXPECT_EQ(MarkedCorners(3, 3, {1, 1}), "BL BR TL TR ");
  EXPECT_EQ(MarkedCorners(1, 2, {0, 0}), "BR TR ");
}

TEST(MapPagesTest, DrawsTheLegendOnTheLastPageOnly) {
  PageCase c;
  c.ChooseAroundPoint();
  c.dialog.label = "Rains";
  c.dialog.vertical = "5km";
  c.dialog.horizontal = "3km";
  c.map.TheMap().fileName = "maps/rains.map";
  ASSERT_EQ(c.Accept(), "");
  MapPages pages(c.view);
  ASSERT_EQ(pages.Count(), 4);
  EXPECT_EQ(pages.Title(), "rains.map");
  EXPECT_EQ(pages.Fonts().text, 5);
  for (int page = 0; page < 4; ++page) {
    RecordingCanvas canvas(2100, 3000);
    pages.DrawPage(page, canvas);
    EXPECT_EQ(canvas.Count("font") > 0 && canvas.Text().find("Rains") != std::string::npos,
              page == 3)
        << page;
    EXPECT_EQ(canvas.Count("line"), 6) << page;  // three corners
  }
}

TEST(MapPagesTest, DrawsAPageTwiceAlike) {
  PageCase c;
  Point& a = c.map.AddPoint("A", 0, -800);
  Point& b = c.map.AddPoint("B", 10, 800);
  c.map.AddTrail("Ridge", {&a, &b}, 0xFF0000);
  c.window = c.map.View(1000, 500);
  c.view = MakePrintView(c.window, c.device);
  c.ChooseAroundPoint();
  c.dialog.horizontal = "3km";
  ASSERT_EQ(c.Accept(), "");
  MapPages pages(c.view);
  ASSERT_EQ(pages.Count(), 2);
  RecordingCanvas first(2100, 3000);
  pages.DrawPage(0, first);
  RecordingCanvas other(2100, 3000);
  pages.DrawPage(1, other);
  RecordingCanvas again(2100, 3000);
  pages.DrawPage(0, again);
  EXPECT_EQ(first.Lines(), again.Lines());
  EXPECT_NE(first.Lines(), other.Lines());
  EXPECT_NE(first.Text().find("text"), std::string::npos);
}

TEST(MapPagesTest, DrawsNeitherFindMarkerNorFoundTrail) {
  PageCase c;
  Point& a = c.map.AddPoint("A", 0, -300);
  Point& b = c.map.AddPoint("B", 0, 300);
  const Trail& trail = c.map.AddTrail("Ridge", {&a, &b}, 0xFF0000);
  c.window = c.map.View(1000, 500);
  c.window.selectedTrail = &trail;
  c.window.highlight = {.lat = 1, .lon = 10};
  c.window.flags |= MapWindowFindMarker | MapWindowTrailFlash;
  c.view = MakePrintView(c.window, c.device);
  ASSERT_EQ(c.Accept(), "");
  RecordingCanvas canvas(2100, 3000);
  MapPages(c.view).DrawPage(0, canvas);
  EXPECT_EQ(canvas.Text().find("6ffff00"), std::string::npos);
}

TEST(PapersTest, FindsASheetInAnyCase) {
  ASSERT_TRUE(FindPaper("letter"));
  EXPECT_DOUBLE_EQ(FindPaper("LETTER")->width, 215.9);
  EXPECT_FALSE(FindPaper("A99"));
  EXPECT_EQ(Papers().front().name, "A4");
}

}  // namespace
}  // namespace orvane
