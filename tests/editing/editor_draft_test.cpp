#include "editing/editor_draft.h"

#include "editing/edit_history.h"
#include "editing/save_trail.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct EditorDraftTest : MapFixture {
  Map& map = Open(
      "T\tPath\tTrail\nG\tA\tS20 0.12345\tE47 0\nN\tB\tA, 20m north\nC\tC\tA\t30\t40\n"
      "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nR\tBlue\nK\tPapio\tAna\t10:00-11:00\t"
      "2020-1-1 2020-2-1\n");

  Trail* FollowOfAna() {
    for (Trail& trail : map.trails) {
      if (trail.date != 0) return &trail;
    }
    return nullptr;
  }
  static EditorDraft ThroughText(const EditorDraft& draft) {
    const auto read = ParseDraft(DraftText(draft));
    EXPECT_TRUE(read);
    return read.value_or(EditorDraft{});
  }
  static std::string AllCells(const CellModel& cells) {
    std::string text;
    for (size_t row = 0; row < cells.RowCount(); ++row) text += RowAsText(cells, row) + "\n";
    return text;
  }
};

TEST_F(EditorDraftTest, BringsBackANewTrail) {
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Tr%il");
  editor.SetField(TrailField::Name, "Ridge\twith a tab");
  editor.SetField(TrailField::Width, "bad text");
  editor.SetMode(EntryMode::Mixture);
  editor.SetCell(0, ColumnName, "R1");
  editor.SetCell(0, ColumnLat, "S20 0.123456789");
  editor.SetCell(0, ColumnFirstSm, "says \"%n\"\nand more");
  editor.SetCell(1, ColumnName, "R2");
  editor.SetCell(1, ColumnPoint, "A");
  editor.SetCell(1, ColumnBearing, "A12.5");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_EQ(DraftTitle(draft), "New Trail Ridge with a tab");
  const auto again = TrailEditorOf(map, draft);
  EXPECT_EQ(AllCells(*again), AllCells(editor));
  EXPECT_EQ(again->Rows()[0].gps.lat, editor.Rows()[0].gps.lat) << "to the last bit";
  EXPECT_EQ(again->Mode(), EntryMode::Mixture);
  EXPECT_FALSE(again->IsModeEnabled(EntryMode::Gps));
  EXPECT_FALSE(again->Form().IsEnabled(TrailField::Date));
  EXPECT_EQ(again->Form().Text(TrailField::Width), "bad text");
  EXPECT_TRUE(again->IsChanged());
}

TEST_F(EditorDraftTest, BringsBackTheEditorOfATrailOfTheMap) {
  for (Trail& trail : map.trails) {
    TrailEditor editor(map, &trail);
    editor.DeleteRow(0);
    const auto again = TrailEditorOf(map, ThroughText(DraftOf(editor)));
    EXPECT_EQ(again->Edited(), &trail);
    EXPECT_EQ(again->Title(), editor.Title());
    EXPECT_EQ(AllCells(*again), AllCells(editor));
    EXPECT_FALSE(again->WasChangedElsewhere());
  }
}

TEST_F(EditorDraftTest, BringsBackTheMarksOfNamelessPoints) {
  Map& brook = Open("T\tBrook\tRiver\nG\t\tS20 0\tE47 0\t\t\t,,,,C4\nG\t\tS20 1\tE47 0\n");
  TrailEditor editor(brook, &brook.trails.front());
  editor.SetCell(0, ColumnName, "B");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_EQ(draft.trailRows.at(0).mark.shape, PointMarkCircle);
  EXPECT_TRUE(draft.trailRows[0].mark.filled);
  EXPECT_EQ(draft.trailRows[0].mark.size, 4);
  EXPECT_EQ(draft.trailRows.at(1).mark.shape, PointMarkNone);
}

TEST_F(EditorDraftTest, ATrailThatIsGoneIsANewOne) {
  TrailEditor editor(map, FollowOfAna());
  editor.SetCell(1, ColumnName, "9:00");
  const EditorDraft draft = DraftOf(editor);
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  const auto again = TrailEditorOf(other, draft);
  EXPECT_EQ(again->Edited(), nullptr);
  EditHistory history(workspace);
  EXPECT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Closes);
  ASSERT_FALSE(other.trails.empty());
  EXPECT_EQ(other.trails.front().type, "Papio");
  EXPECT_EQ(other.trails.front().focalAnimal, "Ana");
}

TEST_F(EditorDraftTest, BringsBackARange) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  editor.SetName("Green");
  editor.SetCell(1, ColumnDateFrom, "2020-5-5");
  EditorDraft written = DraftOf(editor);
  written.openCell = {.row = 2, .column = 1, .text = "not\tyet"};
  const EditorDraft draft = ThroughText(written);
  ASSERT_TRUE(draft.openCell);
  EXPECT_EQ(draft.openCell->row, 2);
  EXPECT_EQ(draft.openCell->column, 1);
  EXPECT_EQ(draft.openCell->text, "not\tyet");
  EXPECT_EQ(DraftTitle(draft), "Range Green");
  const auto again = RangeEditorOf(map, draft, 0);
  EXPECT_EQ(again->Edited(), &map.ranges.front());
  EXPECT_EQ(again->Name(), "Green");
  EXPECT_EQ(AllCells(*again), AllCells(editor));
  EXPECT_FALSE(again->Rows()[1].type) << "never given";
}

TEST_F(EditorDraftTest, DamagedTextHasDefaults) {
  EXPECT_FALSE(ParseDraft(""));
  EXPECT_FALSE(ParseDraft("kind=trail\nrow=x"));
  const auto draft = ParseDraft("map=a.map\nmode=99\nrow=R1\t1\nrow=\nfield=Trail");
  ASSERT_TRUE(draft);
  EXPECT_EQ(draft->mode, EntryMode::Mixture);
  ASSERT_EQ(draft->trailRows.size(), 2U);
  EXPECT_TRUE(draft->trailRows[0].isGps);
  EXPECT_EQ(draft->fields[0], "Trail");
}

TEST_F(EditorDraftTest, KeepsEveryCharacterOfATextAndOfItsEnd) {
  RangeEditor editor(map, nullptr, 0);
  EditorDraft written = DraftOf(editor);
  written.mapFile = "/a\tb\nc\rd%n%%e%";
  written.rangeName = "%t";
  EXPECT_EQ(ThroughText(written).mapFile, written.mapFile);
  EXPECT_EQ(ThroughText(written).rangeName, "%t");
  // A sign at the end of a damaged line is only that.
  EXPECT_EQ(ParseDraft("map=a%").value_or(EditorDraft{}).mapFile, "a%");
  EXPECT_EQ(ParseDraft("map=a%x").value_or(EditorDraft{}).mapFile, "ax");
}

TEST_F(EditorDraftTest, ADamagedMarkHasNoShape) {
  Map& brook = Open("T\tBrook\tRiver\nG\t\tS20 0\tE47 0\t\t\t,,,,s4\n");
  TrailEditor editor(brook, &brook.trails.front());
  EditorDraft draft = DraftOf(editor);
  ASSERT_EQ(draft.trailRows.size(), 1U);
  EXPECT_EQ(ThroughText(draft).trailRows[0].mark.shape, PointMarkSquare);
  draft.trailRows[0].mark.shape = 77;
  EXPECT_EQ(ThroughText(draft).trailRows[0].mark.shape, PointMarkNone);
}

TEST_F(EditorDraftTest, AnsweredByTheWordsThatAreThere) {
  const auto read = [](const std::string& text) {
    return ParseDraft("map=a.map\n" + text).value_or(EditorDraft{});
  };
  EXPECT_TRUE(read("kind=trail").ofTrail);
  EXPECT_FALSE(read("kind=range").ofTrail);
  EXPECT_TRUE(read("kind=other").ofTrail);
  EXPECT_FALSE(read("new=0").isNew);
  EXPECT_TRUE(read("new=1").isNew);
  EXPECT_TRUE(read("europeanDates=1").europeanDates);
  EXPECT_FALSE(read("europeanDates=0").europeanDates);
  EXPECT_EQ(read("mode=-3").mode, static_cast<EntryMode>(0));
  EXPECT_EQ(read("kind=range\nrow=+Papio\t-\t60\t120").rangeRows.at(0).timeTo, 120);
  EXPECT_TRUE(read("unknown=1\nnonsense").trailRows.empty());
  // More fields than an editor has are left out.
  std::string fields;
  for (size_t i = 0; i <= TrailFields; ++i) fields += "field=f" + std::to_string(i) + "\n";
  EXPECT_EQ(read(fields).fields.back(), "f" + std::to_string(TrailFields - 1));
}

TEST_F(EditorDraftTest, ARangeThatIsGoneIsANewOne) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  const EditorDraft draft = DraftOf(editor);
  EXPECT_EQ(draft.rangeName, "Blue");
  EXPECT_EQ(RangeOf(map, draft), &map.ranges.front());
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  EXPECT_EQ(RangeOf(other, draft), nullptr);
  RangeEditor fresh(map, nullptr, 0);
  EXPECT_EQ(RangeOf(map, DraftOf(fresh)), nullptr);
  EXPECT_EQ(DraftTitle(DraftOf(fresh)), "New Range ");
}

}  // namespace
}  // namespace orvane
