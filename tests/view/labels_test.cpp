#include "view/labels.h"

#include "panes/trail_tree.h"
#include "view/view_case.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

// The fonts of the recording canvas: ascents 8 and 9, heights 10 and 12, letters 6 wide. A label
// that nothing moves is 4 right of its point and 4 below.

/// The baseline of the label of "abc" when its point is at (100, 100).
Pixel PlaceAt100(const LabelSite& around, int markSize = 0) {
  ViewCase c;
  Point& point = c.Add("abc", 0, 0);
  if (markSize > 0) {
    point.markShape = PointMarkCircle;
    point.markSize = markSize;
  }
  LabelSite site = around;
  site.pixel = {100, 100};
  site.letterWidth = 6;
  LabelBoxes boxes;
  const PlacedLabel placed = PlaceLabel(c.view, point, site, boxes);
  EXPECT_EQ(placed.result, LabelResult::Placed);
  EXPECT_EQ(placed.spot.width, 18);
  return placed.spot.baseline;
}

void ExpectAt(const LabelSite& around, int x, int y, int markSize = 0) {
  const Pixel placed = PlaceAt100(around, markSize);
  EXPECT_EQ(placed.x, 100 + x);
  EXPECT_EQ(placed.y, 100 + y);
}

LabelSite Previous(int x, int y) {
  LabelSite site;
  site.previous = Pixel{100 + x, 100 + y};
  return site;
}

TEST(PlaceLabel, GoesToTheLowerRight) { ExpectAt({}, 4, 4); }

TEST(PlaceLabel, AMarkOfItsOwnPushesItOut) {
  ExpectAt({}, 8, 8, 2);  // 6 x 2 / 3
}

TEST(PlaceLabel, ASteepLineFromThePreviousPointPushesItDown) {
  ExpectAt(Previous(0, 12), 4, 8);
  ExpectAt(Previous(0, 13), 4, 4);  // farther than a line of text: not looked at
  ExpectAt(Previous(5, 10), 4, 8);
  ExpectAt(Previous(6, 11), 4, 4);
  ExpectAt(Previous(5, -10), 4, 8);
  ExpectAt(Previous(0, -12), 4, 8);
  ExpectAt(Previous(0, -13), 4, 4);
}

TEST(PlaceLabel, AFlatLineFromThePreviousPointCentersIt) {
  // "abc" is 18 wide; the baseline is 9 - 12 - 9 / 3 from the point.
  ExpectAt(Previous(15, 5), -9, -6);
  ExpectAt(Previous(15, 6), 4, 4);
  ExpectAt(Previous(17, 0), -9, -6);
  ExpectAt(Previous(18, 0), 4, 4);  // as far off as the text is wide
  ExpectAt(Previous(30, -10), -9, -6);
  ExpectAt(Previous(500, -10), -9, -6);  // above, the width is not looked at
  ExpectAt(Previous(29, -10), 4, 4);
  ExpectAt(Previous(15, 5), -9, -8, 1);  // with a mark: 6 x 1 / 3 farther
}

TEST(PlaceLabel, APreviousPointToTheLeftCountsAsMirrored) {
  ExpectAt(Previous(-15, -5), -9, -6);   // as (15, 5)
  ExpectAt(Previous(-500, 10), -9, -6);  // as (500, -10)
  ExpectAt(Previous(-18, 0), 4, 4);
}

TEST(PlaceLabel, APreviousPointOnTheSamePixelChangesNothing) { ExpectAt(Previous(0, 0), 4, 4); }

TEST(PlaceLabel, TheLastLabelKeepsAwayFromTheOneBefore) {
  LabelSite site;
  site.last = Pixel{50, 100};
  ExpectAt(site, 4, 4);
  ExpectAt(site, 4, 4, 5);  // its own mark does not count here
  site.last = Pixel{150, 100};
  ExpectAt(site, -18 - 4, 4);
  site.last = Pixel{150, 124};
  ExpectAt(site, -18 - 4, 4);
  site.last = Pixel{150, 125};  // exactly twice as far right as down: neither
  ExpectAt(site, 4, 4);
  site.last = Pixel{150, 75};
  ExpectAt(site, 4, 4);
}

TEST(PlaceLabel, TheFirstLabelKeepsAwayFromTheNextPoint) {
  LabelSite site;
  site.next = Pixel{50, 100};
  ExpectAt(site, 4, 4);
  ExpectAt(site, 4, 4, 5);
  site.next = Pixel{150, 100};
  ExpectAt(site, -18 - 4, 4);
  site.next = Pixel{150, 124};
  ExpectAt(site, -18 - 4, 4);
  site.next = Pixel{150, 76};
  ExpectAt(site, -18 - 4, 4);
  site.next = Pixel{150, 125};  // exactly twice as far right as down: neither
  ExpectAt(site, 4, 4);
  site.next = Pixel{150, 75};
  ExpectAt(site, 4, 4);
  site.next = Pixel{101, 400};  // steeply to the right
  ExpectAt(site, 4, 4);
  site.next = Pixel{90, 400};  // steeply to the left
  ExpectAt(site, 4, 4);
}

TEST(PlaceLabel, InTheMiddleOfALabeledListOnlyThePreviousPointCounts) {
  LabelSite site;
  site.last = Pixel{150, 100};
  site.next = Pixel{200, 100};
  ExpectAt(site, 4, 4);
}

TEST(PlaceLabel, RefusesABoxThatHitsAKeptOne) {
  ViewCase c;
  LabelBoxes boxes;
  LabelSite site;
  site.keepBox = true;
  site.pixel = {100, 100};
  Point& first = c.Add("abc", 0, 0);
  EXPECT_EQ(PlaceLabel(c.view, first, site, boxes).result, LabelResult::Placed);
  site.pixel = {118, 100};  // its box begins where the first one ends
  EXPECT_EQ(PlaceLabel(c.view, c.Add("def", 0, 0), site, boxes).result, LabelResult::Placed);
  site.pixel = {100, 109};  // one row too high
  Point& third = c.Add("ghi", 0, 0);
  EXPECT_EQ(PlaceLabel(c.view, third, site, boxes).result, LabelResult::Refused);
  EXPECT_EQ(third.flags & PointVisited, 0U);
  third.markShape = PointMarkSquare;
  EXPECT_EQ(PlaceLabel(c.view, third, site, boxes).result, LabelResult::Placed);
}

TEST(PlaceLabel, APointIsLabeledOnceInAPassOfEachKind) {
  ViewCase c;
  LabelBoxes boxes;
  LabelSite site;
  Point& point = c.Add("abc", 0, 0);
  EXPECT_EQ(PlaceLabel(c.view, point, site, boxes).result, LabelResult::Placed);
  EXPECT_EQ(PlaceLabel(c.view, point, site, boxes).result, LabelResult::PlacedEarlier);
  c.view.flags |= MapWindowPrint;
  EXPECT_EQ(PlaceLabel(c.view, point, site, boxes).result, LabelResult::Placed);
  EXPECT_EQ(PlaceLabel(c.view, point, site, boxes).result, LabelResult::PlacedEarlier);
  EXPECT_EQ(point.flags & PointVisited, std::uint32_t{PointVisited});
  EXPECT_EQ(point.flags & PointVisitedPrint, std::uint32_t{PointVisitedPrint});
}

TEST(PlaceLabel, AsksForNoWidthOfALabelThatIsRefusedAnyway) {
  ViewCase c;
  LabelBoxes boxes;
  boxes.Add({0, 0, 300, 300});
  LabelSite site;
  site.pixel = {100, 100};
  EXPECT_EQ(PlaceLabel(c.view, c.Add("abc", 0, 0), site, boxes).result, LabelResult::Refused);
  EXPECT_EQ(c.canvas.widthsAsked, 0);
}

/// The names written by `DrawTrailPoints`, joined.
std::string Names(const RecordingCanvas& canvas) {
  std::string names;
  for (const std::string& line : canvas.Having("text")) {
    names += (names.empty() ? "" : " ") + line.substr(line.find(' ', 5) + 1);
  }
  return names;
}

std::vector<Point*> FarApart(ViewCase& c) {
  return {&c.Add("a", 100, -150), &c.Add("b", 50, -20), &c.Add("c", 10, -90), &c.Add("d", -60, 60)};
}

std::string NamesInMode(ViewCase& c, const std::vector<Point*>& points, PointMode mode) {
  LabelBoxes boxes;
  c.canvas.Forget();
  DrawTrailPoints(c.view, points, mode, MarkLook{MarkStyle::Rect, 1, 0, 6}, boxes);
  for (Point* point : points) point->flags &= ~std::uint32_t{PointVisited};
  return Names(c.canvas);
}

TEST(DrawTrailPoints, EachModeTakesItsPoints) {
  ViewCase c;
  const std::vector<Point*> points = FarApart(c);
  points[1]->sm[0] = 4;
  points[2]->sm[1] = -1;
  points[3]->sm[2] = 2;
  const auto marks = [&](PointMode mode) {
    NamesInMode(c, points, mode);
    return std::count_if(c.canvas.Lines().begin(), c.canvas.Lines().end(),
                         [](const std::string& line) { return line == "pen 1 solid 000000"; });
  };
  EXPECT_EQ(NamesInMode(c, points, PointMode::None), "");
  EXPECT_EQ(marks(PointMode::None), 0);
  EXPECT_EQ(NamesInMode(c, points, PointMode::FirstLast), "a d");
  EXPECT_EQ(marks(PointMode::FirstLast), 2);
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "a b c d");
  EXPECT_EQ(NamesInMode(c, points, PointMode::Auto), "a b c d");
  EXPECT_EQ(marks(PointMode::Auto), 4);
  EXPECT_EQ(NamesInMode(c, points, PointMode::Loose), "a b c d");
  EXPECT_EQ(NamesInMode(c, points, PointMode::Sm1), "");
  EXPECT_EQ(marks(PointMode::Sm1), 1);
  EXPECT_EQ(c.canvas.Having("rect").back(), "rect 176,96 185,105");
  EXPECT_EQ(marks(PointMode::Sm2), 1);
  EXPECT_EQ(c.canvas.Having("rect").back(), "rect 106,136 115,145");
  EXPECT_EQ(marks(PointMode::Sm3), 1);
}

TEST(DrawTrailPoints, LoosePointsSeeNoNextPoint) {
  ViewCase c;
  const std::vector<Point*> points{&c.Add("a", 0, 0), &c.Add("b", 40, 100)};
  NamesInMode(c, points, PointMode::All);
  EXPECT_EQ(c.canvas.Having("text").front(), "text 190,154 a");  // before the line to b
  NamesInMode(c, points, PointMode::Loose);
  EXPECT_EQ(c.canvas.Having("text").front(), "text 204,154 a");
}

TEST(DrawTrailPoints, AutoThinsWhatItPlacesAndOthersAvoidIt) {
  ViewCase c;
  const std::vector<Point*> crowd{&c.Add("aaa", 0, 0), &c.Add("bbb", -1, -2),
                                  &c.Add("ccc", -2, -4)};
  EXPECT_EQ(NamesInMode(c, crowd, PointMode::Auto), "aaa");
  EXPECT_EQ(c.canvas.Count("oval"), 0);
  // The mark goes with the label: one mark beside the cleared box.
  EXPECT_EQ(c.canvas.Count("rect"), 2);
  EXPECT_EQ(NamesInMode(c, crowd, PointMode::All), "aaa bbb ccc");
  LabelBoxes boxes;
  c.canvas.Forget();
  const MarkLook look{MarkStyle::None, 1, 0, 6};
  const auto draw = [&](Point* point, PointMode mode) {
    DrawTrailPoints(c.view, std::vector<Point*>{point}, mode, look, boxes);
  };
  draw(crowd[0], PointMode::Auto);
  draw(crowd[1], PointMode::All);
  draw(&c.Add("far", 100, 100), PointMode::All);
  draw(&c.Add("near", 101, 101), PointMode::All);
  EXPECT_EQ(Names(c.canvas), "aaa far near");
}

TEST(DrawTrailPoints, HiddenNamesAreSkippedUnlessAskedForOrMarked) {
  ViewCase c;
  std::vector<Point*> points{&c.Add("_under", 100, 0), &c.Add("@at", 50, 0), &c.Add("", 0, 0),
                             &c.Add("plain", -50, 0)};
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "plain");
  points[0]->markShape = PointMarkCircle;
  points[2]->markShape = PointMarkCircle;
  points[2]->markSize = 2;
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "_under plain");
  EXPECT_EQ(c.canvas.Having("oval").back(), "oval 196,146 205,155");  // of the nameless one
  c.workspace.preferences.showHiddenNames = true;
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "_under @at plain");
}

TEST(DrawTrailPoints, ANameVanishesAboveItsLimit) {
  ViewCase c;
  std::vector<Point*> points{&c.Add("a", 0, 0)};
  points[0]->labelLimit = 1000;
  points[0]->markShape = PointMarkCircle;
  const auto namesAt = [&](double metersPerPixel) {
    c.view.scale = static_cast<float>(1 / metersPerPixel);
    CenterOn(c.view, LatLon{});
    std::string names = NamesInMode(c, points, PointMode::All);
    EXPECT_EQ(c.canvas.Count("oval"), names.empty() ? 0 : 1);
    return names;
  };
  EXPECT_EQ(namesAt(1001), "");
  EXPECT_EQ(namesAt(1000), "a");
  EXPECT_EQ(namesAt(10), "a");
  points[0]->labelLimit = 300;
  EXPECT_EQ(namesAt(300), "a");
  EXPECT_EQ(namesAt(301), "");
}

TEST(DrawTrailPoints, WithoutAScaleAPixelCountsAsAMetre) {
  ViewCase c;
  std::vector<Point*> points{&c.Add("a", 0, 0)};
  c.view.scale = 0;
  points[0]->labelLimit = 0.5;
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "");
  points[0]->labelLimit = 1;
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "a");
}

TEST(DrawTrailPoints, PointsOutsideTheViewAreSkippedOnlyWithoutARotation) {
  ViewCase c;
  std::vector<Point*> points{&c.Add("in", 0, 0), &c.Add("n", 151, 0), &c.Add("s", -151, 0),
                             &c.Add("e", 0, 201), &c.Add("w", 0, -201)};
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "in");
  points[1] = &c.Add("edge", 150, 0);
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "in edge");
  c.view.rotation = 90;
  CenterOn(c.view, LatLon{});
  EXPECT_EQ(NamesInMode(c, points, PointMode::All), "in edge s");  // east is up, and out
}

TEST(DrawTrailPoints, PointsWithoutAPlaceAreSkipped) {
  ViewCase c;
  Point& lost = MakePoint(c.map, "lost");
  EXPECT_EQ(NamesInMode(c, {&lost, &c.AddAt("odd", 0, std::nan("")), &c.Add("a", 0, 0), &lost},
                        PointMode::All),
            "a");
}

/// The rows of a case drawn by `PlaceLabels`.
void DrawRows(ViewCase& c) {
  BuildTrailRows(c.view);
  c.canvas.Forget();
  PlaceLabels(c.view, ShownTrails(c.view)).Draw();
}

TEST(PlaceLabels, APointOnTwoTrailsHasOneLabelAndTheMarkOfEach) {
  ViewCase c;
  Point& shared = c.Add("shared", 0, 0);
  c.AddTrail("one", {&shared}).markStyle = MarkStyle::Circle;
  c.AddTrail("two", {&shared}).markStyle = MarkStyle::Cross;
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "shared");
  EXPECT_EQ(c.canvas.Count("oval"), 1);
  EXPECT_EQ(c.canvas.Count("line"), 2);
}

TEST(PlaceLabels, LabelsTakeTheColorOfTheirRow) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0)}).width = 3;
  c.map.trails.front().markStyle = MarkStyle::Plus;
  DrawRows(c);
  EXPECT_EQ(c.canvas.Having("fore"), Lines{"fore 112233"});
  EXPECT_EQ(c.canvas.Having("pen").back(), "pen 3 solid 112233");
}

TEST(PlaceLabels, ARowWithoutModeShowsAuto) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("aaa", 0, 0), &c.Add("bbb", -1, -2)});
  BuildTrailRows(c.view);
  c.view.trailViews.front().children.front().labelMode = LabelMode::Unset;
  PlaceLabels(c.view, ShownTrails(c.view)).Draw();
  EXPECT_EQ(Names(c.canvas), "aaa");
}

TEST(PlaceLabels, HiddenRowsHaveNoLabels) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0)}).flags |= TrailHidden;
  c.view.selectedTrail = &c.map.trails.front();
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "");
}

TEST(PlaceLabels, LoosePointsHaveNameAndCircleNamelessOnesOnlyTheirMark) {
  ViewCase c;
  c.map.loosePoints.push_front(&c.Add("loose", 50, 0));
  Point& marked = c.Add("", -50, 0);
  marked.markShape = PointMarkSquare;
  marked.markSize = 2;
  c.map.namelessPoints.push_front(&marked);
  c.map.namelessPoints.push_front(&c.Add("", -90, 0));
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "loose");
  EXPECT_EQ(c.canvas.Having("fore"), Lines{"fore 7000000"});
  EXPECT_EQ(c.canvas.Having("oval"), Lines{"oval 196,96 205,105"});
  EXPECT_EQ(c.canvas.Having("rect").back(), "rect 196,196 205,205");
  EXPECT_EQ(c.canvas.Having("pen").back(), "pen 1 solid 7000000");
}

TEST(PlaceLabels, LoosePointsOfTheWholeChainAreDrawn) {
  ViewCase c;
  Map& upper = MakeMap(c.workspace, "upper.map");
  upper.basis = &c.map;
  c.map.loosePoints.push_front(&c.Add("lower", 50, 0));
  upper.loosePoints.push_front(&c.Add("upper", -50, 0));
  c.view.map = &upper;
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "upper lower");
}

TEST(PlaceLabels, EachPassForgetsTheOneBeforeButNotUnderAWrap) {
  ViewCase c;
  c.map.loosePoints.push_front(&c.Add("a", 0, 0));
  DrawRows(c);
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "a");
  c.view.rotation = 10;
  CenterOn(c.view, LatLon{});
  c.view.longitudeWrap = 360;
  DrawRows(c);
  EXPECT_EQ(Names(c.canvas), "");
}

TEST(PlaceLabels, AutoNeverLetsTwoLabelsMeet) {
  constexpr std::uint64_t Seed = 6;
  Dice dice(Seed);
  for (int round = 0; round < 20; ++round) {
    ViewCase c;
    for (int t = 0; t < 10; ++t) {
      std::vector<Point*> points;
      for (int i = 0; i < 60; ++i) {
        points.push_back(&c.Add(std::string(static_cast<size_t>(dice.Int(1, 7)), 'x'),
                                dice.Between(-160, 160), dice.Between(-210, 210)));
      }
      c.AddTrail("t" + std::to_string(t), points);
    }
    c.view.rotation = round % 2 == 0 ? 0 : 33;
    CenterOn(c.view, LatLon{});
    DrawRows(c);
    std::vector<PixelRect> boxes;
    for (const std::string& line : c.canvas.Having("text")) {
      Pixel at;
      ASSERT_EQ(std::sscanf(line.c_str(), "text %d,%d", &at.x, &at.y), 2);
      const int width = static_cast<int>(line.size() - line.rfind(' ') - 1) * 6;
      const PixelRect box{at.x, at.y - 8, at.x + width, at.y + 2};
      for (const PixelRect& other : boxes) {
        EXPECT_FALSE(BoxesOverlap(box, other)) << "seed " << Seed << " round " << round;
      }
      boxes.push_back(box);
    }
    EXPECT_GT(boxes.size(), 40U);
  }
}

}  // namespace
}  // namespace orvane
