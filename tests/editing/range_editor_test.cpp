#include "editing/range_editor.h"

#include "editing/edit_history.h"
#include "editing/save_range.h"
#include "editing/trail_editor.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace orvane {
namespace {

struct RangeEditorTest : MapFixture {
  Map& map = Open(
      "T\t\tPapio\t\t2020-3-1\nG\t8:00\tS21 15\tE47 25\nG\t8:30\tS21 15.1\tE47 25\n"
      "G\t9:00\tS21 15\tE47 25.1\nR\tBlue\nK\tPapio\tAna\t10:00-11:00\t2020-1-1 2020-2-1\n");
  EditHistory history{workspace};

  SaveOutcome Ok(RangeEditor& editor) {
    return SaveRangeEditor(editor, history, [](Range&, Color) {});
  }
};

// A copy could point into the lost record of the original.
static_assert(!std::is_copy_constructible_v<RangeEditor>);
static_assert(!std::is_copy_constructible_v<TrailEditor>);

TEST_F(RangeEditorTest, ShowsTheKeys) {
  const RangeEditor editor(map, &map.ranges.front(), 0x808080);
  EXPECT_EQ(editor.Title(), "Blue");
  EXPECT_EQ(editor.ColorText(), "gray");
  EXPECT_EQ(RowAsText(editor, 0), "Papio\tAna\t2020-1-1\t2020-2-1\t10:00\t11:00");
}

TEST_F(RangeEditorTest, ANewRangeStartsGray) {
  const RangeEditor editor(map, nullptr, NoColor);
  EXPECT_EQ(editor.Title(), "New Range");
  EXPECT_EQ(editor.ColorText(), "gray");
  EXPECT_EQ(editor.RowCount(), 0U);
}

TEST_F(RangeEditorTest, ItsFieldsTakeNoMoreThanIsRead) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetName(std::string(40, 'x'));
  EXPECT_EQ(editor.Name(), std::string(MostFieldBytes, 'x'));
  editor.SetColorText("gray" + std::string(30, ' '));
  EXPECT_EQ(editor.ColorText().size(), MostFieldBytes);
}

TEST_F(RangeEditorTest, ATabOrLineEndBecomesABlank) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetName("Blue\tRed");
  EXPECT_EQ(editor.Name(), "Blue Red");
  EXPECT_TRUE(CommitCell(editor, 0, ColumnType, "Papio\nT\tRidge"));
  EXPECT_EQ(editor.GetCell(0, ColumnType), "Papio T Ridge");
}

TEST_F(RangeEditorTest, ACellTakes999Bytes) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_TRUE(CommitCell(editor, 0, ColumnType, std::string(1200, 'x')));
  EXPECT_EQ(editor.GetCell(0, ColumnType).size(), MostCellBytes);
}

TEST_F(RangeEditorTest, EqualTimesAreNoLimit) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetCell(0, ColumnTimeFrom, "10:00");
  EXPECT_EQ(RowAsText(editor, 0), "\t\t\t\t10:00\t0:00");
  editor.SetCell(0, ColumnTimeTo, "");
  EXPECT_EQ(RowAsText(editor, 0), "\t\t\t\t\t") << "emptying one empties both";
  editor.SetCell(0, ColumnTimeFrom, "7:00");
  editor.SetCell(0, ColumnTimeTo, "7:00");
  EXPECT_EQ(RowAsText(editor, 0), "\t\t\t\t\t");
}

TEST_F(RangeEditorTest, RefusesWhatIsNoDateOrTime) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_FALSE(editor.SetCell(0, ColumnDateFrom, "1999-3-x"));
  EXPECT_FALSE(editor.SetCell(0, ColumnTimeTo, "noon"));
  EXPECT_EQ(Said(), (Texts{"Bad date", "Bad Time"}));
  EXPECT_EQ(editor.RowCount(), 0U) << "a refused text adds no row";
  EXPECT_FALSE(editor.IsChanged());
}

TEST_F(RangeEditorTest, ADateOfOneNumberIsWhatItReadsAs) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_TRUE(editor.SetCell(0, ColumnDateFrom, "3"));
  EXPECT_EQ(editor.Rows()[0].dateFrom, ParseDate("3", false).date);
  EXPECT_EQ(editor.GetCell(0, ColumnDateFrom), "2000-2-31");
  EXPECT_FALSE(editor.SetCell(0, ColumnDateFrom, "3 March"));
  EXPECT_EQ(editor.GetCell(0, ColumnDateFrom), "2000-2-31");
}

TEST_F(RangeEditorTest, KeepsATemplateAsTyped) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetCell(0, ColumnType, "Points: Pde*");
  EXPECT_EQ(editor.GetCell(0, ColumnType), "Points: Pde*");
}

TEST_F(RangeEditorTest, InsertsBeforeTheFirstRowOnlyAndMovesAnywhere) {
  RangeEditor editor(map, nullptr, NoColor);
  for (const size_t row : {0U, 1U, 2U}) editor.SetCell(row, 0, std::string(1, char('a' + row)));
  EXPECT_FALSE(editor.InsertRow(1));
  EXPECT_TRUE(editor.InsertRow(0));
  editor.MoveRow(0, 4);
  editor.MoveRow(2, 0);
  Texts types;
  for (size_t row = 0; row < editor.RowCount(); ++row) types.push_back(editor.GetCell(row, 0));
  EXPECT_EQ(types, (Texts{"c", "a", "b", ""}));
}

TEST_F(RangeEditorTest, OkNeedsANameAKeyAndAColor) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_EQ(Ok(editor), SaveOutcome::Stays);
  editor.SetName("Red");
  EXPECT_EQ(Ok(editor), SaveOutcome::Stays);
  editor.SetColorText("muddy");
  EXPECT_EQ(Ok(editor), SaveOutcome::Stays);
  EXPECT_EQ(Said(), (Texts{"You must supply a name", "Put something in the range first",
                           "Sorry, I don't know that color"}));
}

TEST_F(RangeEditorTest, OkAnalysesChangedKeys) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetName("Red");
  editor.SetCell(0, ColumnType, "Papio");
  EXPECT_EQ(Ok(editor), SaveOutcome::Closes);
  const Range& made = map.ranges.front();
  EXPECT_EQ(made.name, "Red");
  EXPECT_GT(made.mcpArea, 0);
  EXPECT_EQ(*history.UndoName(map), "New Range Red");
  history.Undo(map);
  EXPECT_EQ(Length(map.ranges), 1);
}

TEST_F(RangeEditorTest, AKeyWithoutATypeIsDropped) {
  Range& blue = map.ranges.front();
  RangeEditor editor(map, &blue, 0);
  editor.DeleteRow(0);
  editor.SetCell(0, ColumnDateFrom, "2020-1-1");
  EXPECT_EQ(Ok(editor), SaveOutcome::Closes);
  EXPECT_TRUE(blue.keys.empty());
}

TEST_F(RangeEditorTest, AChangeOfOnlyTheNameKeepsTheResults) {
  Range& blue = map.ranges.front();
  blue.mcpArea = 17;
  RangeEditor editor(map, &blue, 0);
  editor.SetName("Azure");
  EXPECT_FALSE(editor.IsChanged());
  EXPECT_EQ(Ok(editor), SaveOutcome::Closes);
  EXPECT_EQ(blue.name, "Azure");
  EXPECT_EQ(blue.mcpArea, 17);
  EXPECT_NE(map.flags & MapDirty, 0U);
}

TEST_F(RangeEditorTest, AsksBeforeAChangeOfAnotherWindowIsReplaced) {
  Range& blue = map.ranges.front();
  RangeEditor editor(map, &blue, 0);
  blue.keys.front().type = "Cebus";
  Ok(editor);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Range changed");
}

TEST_F(RangeEditorTest, PastesCellsUpToTheFirstRefusal) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_FALSE(PasteCells(editor, 0, 4, {{"6:00", "7:00", "lost"}, {"8:00"}}).refused);
  EXPECT_EQ(editor.RowCount(), 2U);
  EXPECT_EQ(PasteCells(editor, 0, 2, {{"2020-1-1", "x"}, {"2020-2-2"}}).refused, "x");
  EXPECT_EQ(editor.GetCell(0, ColumnDateFrom), "2020-1-1");
  EXPECT_EQ(editor.GetCell(1, ColumnDateFrom), "");
}

TEST_F(RangeEditorTest, RowsAndColumnsBeyondTheTableHoldNothing) {
  RangeEditor editor(map, nullptr, NoColor);
  EXPECT_TRUE(editor.SetCell(3, ColumnType, "Papio"));
  EXPECT_EQ(editor.RowCount(), 0U);
  editor.SetCell(0, ColumnType, "Papio");
  EXPECT_EQ(editor.GetCell(0, ColumnTimeTo + 1), "");
  EXPECT_EQ(editor.GetCell(1, ColumnType), "");
  editor.DeleteRow(1);
  editor.MoveRow(1, 0);
  EXPECT_EQ(editor.RowCount(), 1U);
}

TEST_F(RangeEditorTest, AFocalAnimalThatIsEmptiedIsNone) {
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetCell(0, ColumnFocal, " Ana");
  EXPECT_EQ(editor.Rows()[0].focalAnimal, "Ana");
  editor.SetCell(0, ColumnFocal, "");
  EXPECT_FALSE(editor.Rows()[0].focalAnimal);
}

}  // namespace
}  // namespace orvane
