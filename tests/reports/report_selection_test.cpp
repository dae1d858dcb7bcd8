#include "reports/report_selection.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Lines = std::set<int>;

TEST(ReportSelection, AClickSelectsOneLineOnly) {
  ReportSelection selection;
  SelectLine(selection, 3, SelectionMode::Only);
  SelectLine(selection, 5, SelectionMode::Only);
  EXPECT_EQ(selection.lines, Lines{5});
  EXPECT_EQ(selection.current, 5);
}

TEST(ReportSelection, AToggleAddsALineAndTakesItAway) {
  ReportSelection selection;
  SelectLine(selection, 3, SelectionMode::Only);
  SelectLine(selection, 7, SelectionMode::Toggle);
  EXPECT_EQ(selection.lines, (Lines{3, 7}));
  SelectLine(selection, 3, SelectionMode::Toggle);
  EXPECT_EQ(selection.lines, Lines{7});
  EXPECT_EQ(selection.current, 3);
}

TEST(ReportSelection, ExtendsFromTheAnchorBothWays) {
  ReportSelection selection;
  SelectLine(selection, 5, SelectionMode::Only);
  SelectLine(selection, 7, SelectionMode::Extend);
  EXPECT_EQ(selection.lines, (Lines{5, 6, 7}));
  SelectLine(selection, 4, SelectionMode::Extend);
  EXPECT_EQ(selection.lines, (Lines{4, 5}));
  EXPECT_EQ(selection.anchor, 5);
  EXPECT_EQ(selection.current, 4);
}

TEST(ReportSelection, ExtendsFromItselfWithoutAnAnchor) {
  ReportSelection selection;
  SelectLine(selection, 2, SelectionMode::Extend);
  EXPECT_EQ(selection.lines, Lines{2});
  SelectLine(selection, 3, SelectionMode::Extend);
  EXPECT_EQ(selection.lines, (Lines{2, 3}));
}

TEST(ReportSelection, AMoveKeepsTheSelectedLines) {
  ReportSelection selection;
  SelectLine(selection, 2, SelectionMode::Only);
  SelectLine(selection, 9, SelectionMode::Move);
  EXPECT_EQ(selection.lines, Lines{2});
  EXPECT_EQ(selection.current, 9);
  EXPECT_EQ(selection.anchor, 9);
}

TEST(ReportSelection, AClickBesideTheLinesClearsItUnlessAKeyIsHeld) {
  ReportSelection selection;
  SelectLine(selection, 2, SelectionMode::Only);
  SelectLine(selection, -1, SelectionMode::Toggle);
  SelectLine(selection, -1, SelectionMode::Extend);
  EXPECT_EQ(selection.lines, Lines{2});
  SelectLine(selection, -1, SelectionMode::Only);
  EXPECT_TRUE(selection.lines.empty());
  EXPECT_EQ(selection.current, -1);
}

TEST(ReportSelection, SelectsAllAndForgetsLinesThatAreGone) {
  ReportSelection selection;
  SelectLine(selection, 4, SelectionMode::Only);
  SelectAllLines(selection, 5);
  EXPECT_EQ(selection.lines, (Lines{0, 1, 2, 3, 4}));
  EXPECT_EQ(selection.current, 4);
  HoldSelection(selection, 4);
  EXPECT_EQ(selection.lines, (Lines{0, 1, 2, 3}));
  EXPECT_EQ(selection.current, -1);
  EXPECT_EQ(selection.anchor, -1);
}

TEST(ReportSelection, StepsStayWithinTheLines) {
  ReportSelection selection;
  EXPECT_EQ(SteppedLine(selection, 3, 1, 10), 3) << "no line is current: it begins there";
  selection.current = 8;
  EXPECT_EQ(SteppedLine(selection, 3, 1, 10), 9);
  EXPECT_EQ(SteppedLine(selection, 3, 5, 10), 9);
  EXPECT_EQ(SteppedLine(selection, 3, -20, 10), 0);
}

TEST(ReportSelection, LinesThatAreStillThereStaySelected) {
  ReportSelection selection;
  SelectLine(selection, 1, SelectionMode::Only);
  HoldSelection(selection, 2);
  EXPECT_EQ(selection.lines, std::set<int>{1});
  EXPECT_EQ(selection.current, 1);
  EXPECT_EQ(selection.anchor, 1);
}

}  // namespace
}  // namespace orvane
