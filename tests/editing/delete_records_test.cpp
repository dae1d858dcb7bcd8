#include "editing/delete_records.h"

#include "editing/range_editor.h"
#include "editing/save_range.h"
#include "editing/save_trail.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct DeleteRecordsTest : MapFixture {
  Map& map = Open(
      "T\tMain\tTrail\nG\tA\tS21 15\tE47 25\nC\tB\tA\t30\t90\t0\nC\tC\tB\t30\t90\t0\n"
      "T\tSpur\tTrail\nC\tD\tB\t30\t0\t0\nP\tA\nT\tRidge\tTrail\nC\tE\tD\t20\t0\t0\nP\tA\n"
      "T\t\tPapio\t\t2020-3-1\nG\t8:00\tS21 15\tE47 25\nG\t8:30\tS21 15.1\tE47 25\n"
      "G\t9:00\tS21 15\tE47 25.1\nR\tBlue\nK\tPapio\nR\tRed\nK\tPapio\n",
      "site.map");
  EditHistory history{workspace};

  std::string Saved(Map& which) { return MapFileText(which, which.fileName, true); }
  std::string Saved() { return Saved(map); }
  std::string LastNote() const {
    return messages.Entries().empty() ? "" : messages.Entries().back().text;
  }
};

TEST_F(DeleteRecordsTest, PointsOfOtherTrailsAndBasesOfReadingsStay) {
  DeleteTrails(map, {FindTrail(map, "Main")}, history);
  EXPECT_EQ(FindTrail(map, "Main"), nullptr);
  EXPECT_EQ(Named(map, "A").trail, FindTrail(map, "Spur")) << "the first trail that holds it";
  EXPECT_EQ(Readings(Named(map, "A")).size(), 1U);
  EXPECT_EQ(Named(map, "B").trail, nullptr) << "D is measured from it";
  EXPECT_EQ(map.loosePoints.front(), &Named(map, "B"));
  EXPECT_EQ(FindPointByName(map, nullptr, "C"), nullptr);
  EXPECT_EQ(LastNote(), "1 trail and 1 point deleted. Undo: Alt+Backspace");
  EXPECT_EQ(messages.Entries().back().severity, Severity::Note);
}

// Trail by trail, the points of one would stay as bases for the readings of the next.
TEST_F(DeleteRecordsTest, TrailsThatNeedEachOtherGoTogether) {
  DeleteTrails(map, {FindTrail(map, "Main"), FindTrail(map, "Spur"), FindTrail(map, "Ridge")},
               history);
  for (const char* name : {"A", "B", "C", "D", "E"}) {
    EXPECT_EQ(FindPointByName(map, nullptr, name), nullptr) << name;
  }
  EXPECT_TRUE(map.loosePoints.empty());
  EXPECT_EQ(LastNote(), "3 trails and 5 points deleted. Undo: Alt+Backspace");
  EXPECT_EQ(history.Steps(), 1U);
}

TEST_F(DeleteRecordsTest, UndoAndRedoLeadThroughTheSameFiles) {
  const std::string before = Saved();
  Trail* main = FindTrail(map, "Main");
  DeleteTrails(map, {main}, history);
  const std::string after = Saved();
  EXPECT_NE(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(), before);
  EXPECT_EQ(FindTrail(map, "Main"), main);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Redo(map));
  EXPECT_EQ(Saved(), after);
}

TEST_F(DeleteRecordsTest, OneStepTakesTrailsOfTheBasisToo) {
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  ReadMapText(above, "T\tOwn\tTrail\nC\tF\tE\t20\t0\t0\nP\tC\n");
  FinishMap(above);
  const std::string below = Saved(map);
  const std::string own = Saved(above);
  DeleteTrails(above, {FindTrail(above, "Own"), FindTrail(above, "Main")}, history);
  EXPECT_EQ(history.Steps(), 1U);
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_NE(above.flags & MapDirty, 0U);
  EXPECT_EQ(FindPointByName(above, nullptr, "C"), nullptr) << "both of its trails went";
  ASSERT_TRUE(history.Undo(above));
  EXPECT_EQ(Saved(map), below);
  EXPECT_EQ(Saved(above), own);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_EQ(above.flags & MapDirty, 0U);
}

TEST_F(DeleteRecordsTest, ARangeTakesItsOverlapsAlong) {
  ASSERT_EQ(Length(map.intersections), 1);
  Range* blue = FindRange(map, "Blue");
  DeleteRanges(map, {blue}, history);
  EXPECT_EQ(Length(map.ranges), 1);
  EXPECT_TRUE(map.intersections.empty());
  EXPECT_EQ(LastNote(), "1 range deleted. Undo: Alt+Backspace");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(FindRange(map, "Blue"), blue);
  EXPECT_EQ(Length(map.intersections), 1);
}

TEST_F(DeleteRecordsTest, AnEditorOfADeletedTrailOffersToMakeItAgain) {
  Trail* main = FindTrail(map, "Main");
  main->note = "steep";
  TrailEditor editor(map, main);
  editor.SetCell(0, 0, "A0");
  DeleteTrails(map, {main}, history);
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].text, "This trail was deleted.  Do you want to make it again?");
  Trail* made = FindTrail(map, "Main");
  ASSERT_NE(made, nullptr);
  EXPECT_NE(made, main);
  EXPECT_EQ(made->note, "steep");
  EXPECT_EQ(NamesOf(*made), (Texts{"A0", "B", "C"}));
  EXPECT_EQ(Named(map, "A0").trail, made);
}

/// The editor had become that of a new trail, which the trail of the same name then refused for ever.
TEST_F(DeleteRecordsTest, AnEditorGoesOnWithATrailThatComesBackAfterARefusal) {
  Trail* main = FindTrail(map, "Main");
  TrailEditor editor(map, main);
  editor.SetField(TrailField::LineColor, "NoSuch");
  DeleteTrails(map, {main}, history);
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  EXPECT_EQ(editor.Title(), "Trail: Main");
  ASSERT_TRUE(history.Undo(map));
  editor.SetField(TrailField::LineColor, "red");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(FindTrail(map, "Main"), main);
  EXPECT_EQ(main->color, 0xFF0000);
  EXPECT_EQ(*history.UndoName(map), "Edit of Trail Main");
}

/// Once, the readings and notes of points on other trails too were in the map twice afterwards.
TEST_F(DeleteRecordsTest, ATrailThatIsMadeAgainGivesItsSharedPointsBackOnce) {
  Trail* main = FindTrail(map, "Main");
  Named(map, "A").note = "gate";
  Named(map, "B").markShape = 2;
  const std::string before = Saved();
  TrailEditor editor(map, main);
  DeleteTrails(map, {main}, history);
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Readings(Named(map, "A")).size(), 1U);
  EXPECT_EQ(Named(map, "A").note, "gate");
  EXPECT_EQ(Readings(Named(map, "B")).size(), 1U);
  EXPECT_EQ(Named(map, "B").markShape, 2);
  ASSERT_TRUE(history.Undo(map));
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(), before);
}

TEST_F(DeleteRecordsTest, AnEditorOfADeletedRangeOffersToMakeItAgain) {
  Range* blue = FindRange(map, "Blue");
  blue->note = "by the river";
  RangeEditor editor(map, blue, 0);
  DeleteRanges(map, {blue}, history);
  const auto show = [](Range& /*range*/, Color /*color*/) {};
  ASSERT_EQ(SaveRangeEditor(editor, history, show), SaveOutcome::Closes);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Range deleted");
  ASSERT_NE(FindRange(map, "Blue"), nullptr);
  EXPECT_NE(FindRange(map, "Blue"), blue);
  EXPECT_GT(FindRange(map, "Blue")->mcpArea, 0);
  EXPECT_EQ(FindRange(map, "Blue")->note, "by the river");
}

TEST_F(DeleteRecordsTest, NothingIsNotAStep) {
  DeleteTrails(map, {}, history);
  DeleteRanges(map, {}, history);
  EXPECT_EQ(history.Steps(), 0U);
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(DeleteRecordsTest, SeveralRangesAreOneStep) {
  DeleteRanges(map, {FindRange(map, "Red"), FindRange(map, "Blue")}, history);
  EXPECT_TRUE(map.ranges.empty());
  EXPECT_TRUE(map.intersections.empty());
  EXPECT_EQ(LastNote(), "2 ranges deleted. Undo: Alt+Backspace");
  EXPECT_EQ(*history.UndoName(map), "Deletion of 2 Ranges");
  DeleteRanges(map, {}, history);
  EXPECT_EQ(history.Steps(), 1U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Length(map.ranges), 2);
}

}  // namespace
}  // namespace orvane
