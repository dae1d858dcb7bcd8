#include "editing/cell_table.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// A table of texts that refuses "bad".
class TextModel final : public CellModel {
 public:
  explicit TextModel(size_t rows = 0) {
    for (size_t i = 0; i < rows; ++i) cells.push_back({std::to_string(i), "", ""});
  }

  const std::vector<CellColumn>& Columns() const override { return columns; }
  size_t RowCount() const override { return cells.size(); }
  std::string GetCell(size_t row, size_t column) const override {
    return row < cells.size() ? cells[row][column] : std::string();
  }
  bool SetCell(size_t row, size_t column, std::string_view text) override {
    ++stored;
    if (text == "bad") return false;
    if (row == cells.size()) cells.push_back({"", "", ""});
    cells[row][column] = text;
    return true;
  }
  bool InsertRow(size_t row) override {
    if (row != 0) return false;
    cells.insert(cells.begin(), {"new", "", ""});
    return true;
  }
  void DeleteRow(size_t row) override {
    if (row < cells.size()) cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(row));
  }
  void MoveRow(size_t from, size_t to) override { MoveItem(cells, from, to); }
  bool IsReadOnly() const override { return readOnly; }

  std::vector<CellColumn> columns = std::vector<CellColumn>(3);
  std::vector<std::vector<std::string>> cells;
  int stored = 0;
  bool readOnly = false;
};

struct CellTableTest : testing::Test {
  /// The open cell as "row,column"; "-" if none is.
  std::string Open() const {
    if (table.State() != CellTableState::Editing) return "-";
    return std::to_string(table.CurrentRow()) + "," + std::to_string(table.CurrentColumn());
  }
  std::string FirstColumn() const {
    std::string text;
    for (const auto& row : model.cells) text += row[0] + " ";
    return text;
  }

  TextModel model{2};
  CellTable table{model};
};

TEST_F(CellTableTest, TabGoesThroughAllCellsAndFromTheBlankRowToTheFirst) {
  table.BeginEdit(0, 1);
  std::string way;
  for (int i = 0; i < 9; ++i) {
    EXPECT_TRUE(table.NextCell());
    way += Open() + " ";
  }
  EXPECT_EQ(way, "0,2 1,0 1,1 1,2 2,0 2,1 2,2 0,0 0,1 ");
  EXPECT_EQ(model.stored, 0) << "nothing was typed";
}

TEST_F(CellTableTest, ShiftTabGoesBackAndFromTheFirstCellToTheLastRowOfTheModel) {
  table.BeginEdit(1, 1);
  std::string way;
  for (int i = 0; i < 6; ++i) {
    EXPECT_TRUE(table.PreviousCell());
    way += Open() + " ";
  }
  EXPECT_EQ(way, "1,0 0,2 0,1 0,0 1,2 1,1 ");
}

TEST_F(CellTableTest, ShiftTabInAnEmptyTableStaysInTheBlankRow) {
  model.cells.clear();
  table.BeginEdit(0, 0);
  EXPECT_TRUE(table.PreviousCell());
  EXPECT_EQ(Open(), "0,2");
}

TEST_F(CellTableTest, ATextInTheBlankRowMakesARow) {
  model.cells.clear();
  table.BeginEdit(0, 0);
  table.SetText("Camp");
  EXPECT_TRUE(table.NextCell());
  EXPECT_EQ(model.RowCount(), 1U);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(table.ShownRows(), 2U);
}

TEST_F(CellTableTest, AnUnchangedTextIsNotStored) {
  table.BeginEdit(2, 0);
  table.SetText("");
  EXPECT_TRUE(table.Commit());
  EXPECT_EQ(model.stored, 0);
  table.SetText("x");
  table.SetText("");
  EXPECT_TRUE(table.HasTypedText()) << "typed, even if it is the same again";
}

TEST_F(CellTableTest, ARefusedTextStaysOpenWhateverKeyIsPressed) {
  table.BeginEdit(0, 1);
  table.SetText("bad");
  EXPECT_FALSE(table.NextCell());
  EXPECT_FALSE(table.PreviousCell());
  EXPECT_FALSE(table.EndLine());
  EXPECT_FALSE(table.CellBelow());
  EXPECT_FALSE(table.CellAbove());
  EXPECT_FALSE(table.Commit());
  EXPECT_FALSE(table.SelectRow(1));
  EXPECT_EQ(table.PressCell(1, 1), CellPress::Refused);
  EXPECT_EQ(table.PressHandle(1), CellPress::Refused);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(table.Text(), "bad");
}

TEST_F(CellTableTest, ReturnGoesOnInTheNextRowAndEndsInTheFirstColumn) {
  table.BeginEdit(0, 2);
  table.SetText("x");
  EXPECT_TRUE(table.EndLine());
  EXPECT_EQ(model.cells[0][2], "x");
  EXPECT_EQ(Open(), "1,0");
  EXPECT_TRUE(table.EndLine());
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(table.State(), CellTableState::Idle);
  table.BeginEdit(2, 1);
  EXPECT_TRUE(table.EndLine());
  EXPECT_EQ(Open(), "2,0") << "no row follows the blank one";
}

TEST_F(CellTableTest, ArrowsStayInTheirColumn) {
  table.BeginEdit(1, 1);
  EXPECT_TRUE(table.CellBelow());
  EXPECT_TRUE(table.CellBelow());
  EXPECT_EQ(Open(), "2,1");
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(table.CellAbove());
  EXPECT_EQ(Open(), "0,1");
}

TEST_F(CellTableTest, EscapeBringsTheTextBackThenClosesTheCell) {
  table.BeginEdit(1, 0);
  table.SetText("other");
  table.Escape();
  EXPECT_EQ(table.Text(), "1");
  EXPECT_EQ(Open(), "1,0");
  table.Escape();
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(model.stored, 0);
}

TEST_F(CellTableTest, APressOnAHandleSelectsAndASecondOneDrags) {
  table.BeginEdit(0, 0);
  table.SetText("typed");
  EXPECT_EQ(table.PressHandle(1), CellPress::Done);
  EXPECT_EQ(model.cells[0][0], "typed");
  EXPECT_EQ(table.State(), CellTableState::RowSelected);
  EXPECT_EQ(table.SelectedRow(), 1U);
  EXPECT_EQ(table.PressHandle(1), CellPress::DragRow);
  EXPECT_EQ(table.PressCell(0, 2), CellPress::Done);
  EXPECT_FALSE(table.SelectedRow());
  EXPECT_EQ(Open(), "0,2");
}

TEST_F(CellTableTest, UnderTheBlankRowAPressEndsEverything) {
  table.SelectRow(0);
  EXPECT_EQ(table.PressCell(3, 0), CellPress::OutOfRows);
  EXPECT_EQ(table.State(), CellTableState::Idle);
  EXPECT_EQ(table.PressHandle(3), CellPress::OutOfRows);
  EXPECT_EQ(table.PressHandle(2), CellPress::Done) << "the blank row itself";
}

TEST_F(CellTableTest, RowsAreInsertedDeletedAndMovedBySelection) {
  EXPECT_FALSE(table.InsertRow());
  EXPECT_FALSE(table.DeleteRow());
  EXPECT_FALSE(table.MoveRow(0));
  table.SelectRow(1);
  EXPECT_FALSE(table.InsertRow()) << "before the first row only";
  EXPECT_TRUE(table.MoveRow(0));
  EXPECT_EQ(FirstColumn(), "1 0 ");
  EXPECT_EQ(table.SelectedRow(), 1U) << "the selection stays";
  EXPECT_TRUE(table.DeleteRow());
  EXPECT_EQ(FirstColumn(), "1 ");
  table.SelectRow(0);
  EXPECT_TRUE(table.InsertRow());
  EXPECT_EQ(FirstColumn(), "new 1 ");
  EXPECT_TRUE(table.MoveRow(2)) << "on the blank row";
  EXPECT_EQ(FirstColumn(), "1 new ");
  table.SelectRow(2);
  EXPECT_FALSE(table.MoveRow(0)) << "the blank row can't be moved";
}

TEST_F(CellTableTest, AReadOnlyTableSelectsButOpensAndChangesNothing) {
  model.readOnly = true;
  EXPECT_EQ(table.PressCell(0, 0), CellPress::Done);
  EXPECT_EQ(table.State(), CellTableState::Idle);
  table.SelectRow(0);
  EXPECT_EQ(table.SelectedRow(), 0U);
  EXPECT_FALSE(table.InsertRow());
  EXPECT_FALSE(table.DeleteRow());
  EXPECT_FALSE(table.MoveRow(1));
}

TEST_F(CellTableTest, PastedCellsFillTheTableFromTheOpenCellOn) {
  table.BeginEdit(1, 1);
  EXPECT_TRUE(table.Paste("a\tb\tlost\r\nc\n"));
  EXPECT_EQ(model.cells[1], (std::vector<std::string>{"1", "a", "b"}));
  EXPECT_EQ(model.cells[2], (std::vector<std::string>{"", "c", ""}));
  EXPECT_EQ(model.RowCount(), 3U);
  EXPECT_EQ(Open(), "1,1");
  EXPECT_EQ(table.Text(), "a");
}

TEST_F(CellTableTest, ARefusedTextOfAPasteStaysInItsCell) {
  table.BeginEdit(0, 1);
  EXPECT_FALSE(table.Paste("a\tbad\nc\td"));
  EXPECT_EQ(model.cells[0][1], "a");
  EXPECT_EQ(model.cells[1][1], "") << "the rest is not pasted";
  EXPECT_EQ(Open(), "0,2");
  EXPECT_EQ(table.Text(), "bad");
  EXPECT_TRUE(table.HasTypedText());
}

TEST(CellsOfText, KeepsEmptyCellsAndDropsTheLastLineEnd) {
  const std::vector<std::vector<std::string>> cells = {{"a", "", "b"}, {""}, {"", ""}};
  EXPECT_EQ(CellsOfText("a\t\tb\n\n\t\n"), cells);
  EXPECT_TRUE(CellsOfText("").empty());
}

TEST(CellTableGeometry, TheLastColumnReachesToTheEnd) {
  EXPECT_EQ(ColumnEdges({70, 50}, 100), (std::vector<int>{3, 73, 123}));
  EXPECT_EQ(ColumnEdges({70, 50}, 300), (std::vector<int>{3, 73, 300}));
}

TEST(CellTableGeometry, AnEdgeIsTwoPixelsWide) {
  const std::vector<int> edges = {3, 73, 123};
  EXPECT_FALSE(ColumnEdgeAt(edges, 3));
  EXPECT_FALSE(ColumnEdgeAt(edges, 71));
  EXPECT_EQ(ColumnEdgeAt(edges, 72), 0U);
  EXPECT_EQ(ColumnEdgeAt(edges, 73), 0U);
  EXPECT_FALSE(ColumnEdgeAt(edges, 74));
  EXPECT_EQ(ColumnEdgeAt(edges, 122), 1U);
  EXPECT_EQ(ColumnAt(edges, 10), 0U);
  EXPECT_EQ(ColumnAt(edges, 73), 0U);
  EXPECT_EQ(ColumnAt(edges, 74), 1U);
  EXPECT_EQ(ColumnAt(edges, 500), 1U);
}

TEST(CellTableGeometry, WidthsGrowWithTheLetters) {
  EXPECT_EQ(WidthForLetters(70, 20.0 / 3, 50), 70);
  EXPECT_EQ(WidthForLetters(70, 10, 50), 105);
  EXPECT_EQ(WidthForLetters(70, 5, 50), 70) << "never narrower";
  EXPECT_EQ(WidthForLetters(50, 10, 90), 96) << "the caption shows whole";
}

TEST(CellTableGeometry, ARowIsBroughtIntoViewUnderTheOneAbove) {
  // Five rows of 20 pixels are shown of 30.
  EXPECT_EQ(TopRowShowing(4, 0, 30, 100, 20), 0U);
  EXPECT_EQ(TopRowShowing(5, 0, 30, 100, 20), 4U);
  EXPECT_EQ(TopRowShowing(5, 0, 30, 119, 20), 4U) << "only part of it shows";
  EXPECT_EQ(TopRowShowing(3, 8, 30, 100, 20), 2U);
  EXPECT_EQ(TopRowShowing(0, 8, 30, 100, 20), 0U);
  EXPECT_EQ(TopRowShowing(29, 0, 30, 100, 20), 25U) << "no empty space at the end";
  EXPECT_EQ(TopRowShowing(7, 0, 30, 20, 20), 7U) << "one row is all that shows";
  EXPECT_EQ(TopRowShowing(1, 0, 2, 100, 20), 0U);
}

TEST(CellTableGeometry, ADropIsOnTheRowUnderThePointer) {
  EXPECT_EQ(DropRow(39, 3, 10, 20), 4U);
  EXPECT_EQ(DropRow(-1, 3, 10, 20), 2U);
  EXPECT_EQ(DropRow(-100, 3, 10, 20), 0U);
  EXPECT_EQ(DropRow(900, 3, 10, 20), 9U) << "the blank row";
}

TEST(CellTableGeometry, APageLeavesTwoRowsInView) {
  EXPECT_EQ(RowsOfPage(100, 20), 3);
  EXPECT_EQ(RowsOfPage(10, 20), 1);
}

TEST_F(CellTableTest, WithoutAnOpenCellNothingIsTypedOrPasted) {
  table.SetText("typed");
  EXPECT_EQ(table.Text(), "");
  EXPECT_FALSE(table.HasTypedText());
  EXPECT_TRUE(table.Paste("a\tb"));
  EXPECT_EQ(model.stored, 0);
  table.SelectRow(1);
  EXPECT_TRUE(table.MoveRow(1)) << "onto itself";
  EXPECT_EQ(FirstColumn(), "0 1 ");
}

}  // namespace
}  // namespace orvane
