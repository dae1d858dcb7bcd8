// Questions that the panes ask before they close an editor or delete rows.

#include "panes/open_editors.h"

#include "pane_fixture.h"
#include "panes/delete_rows.h"
#include "panes/pane_clicks.h"
#include "ranges/analysis.h"
#include "support/scripted_messages.h"

namespace orvane {
namespace {

constexpr int AnswerNo = 2;
constexpr int AnswerCancel = 3;

/// A view whose questions are answered by a script.
struct OpenEditorsTest : testing::Test {
  ScriptedMessages messages;
  Workspace workspace{messages};
  Map& map =
      MapFromText(workspace, std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  MapWindow view;
  EditHistory history{workspace};

  OpenEditorsTest() {
    view.map = &map;
    BuildTrailRows(view);
    BuildRangeRows(view);
    history.Listen([this](const EditNews& news) { FollowEdit(view, news); });
  }
  RangePanelRow& RangeRow(std::string_view text) {
    for (RangePanelRow& row : view.rangeViews) {
      if (row.range != nullptr && row.text == text) return row;
    }
    ADD_FAILURE() << "no row " << text;
    return view.rangeViews.back();
  }
  RangePanelRow& Overlap() {
    for (RangePanelRow& row : view.rangeViews) {
      if (row.intersection != nullptr) return row;
    }
    ADD_FAILURE() << "no overlap";
    return view.rangeViews.back();
  }
  std::vector<std::string> Said() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
};

TEST_F(OpenEditorsTest, ATrailEditorClosesWithoutSavingOrStaysAsAnswered) {
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetCell(0, 3, "50");
  messages.answers = {AnswerCancel, AnswerNo};
  EXPECT_EQ(RequestCloseTrailEditor(editor, history), SaveOutcome::Stays);
  EXPECT_EQ(RequestCloseTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(history.Steps(), 0U);
  ASSERT_EQ(messages.Questions().size(), 2U);
  EXPECT_EQ(messages.Questions()[0].buttons, (std::vector<std::string>{"OK", "No", "Cancel"}));
}

TEST_F(OpenEditorsTest, ARangeEditorAsksOnlyIfItHasChanges) {
  RangeEditor editor(map, RangeRow("Blue").range, 0);
  EXPECT_EQ(RequestCloseRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_TRUE(messages.Questions().empty());
  editor.SetCell(0, 0, "Cebus");
  messages.answers = {AnswerCancel, AnswerNo, 1};
  EXPECT_EQ(RequestCloseRangeEditor(editor, view, history), SaveOutcome::Stays);
  EXPECT_EQ(RequestCloseRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Blue").range->keys.front().type, "Papio");
  EXPECT_EQ(RequestCloseRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Blue").range->keys.front().type, "Cebus");
  ASSERT_EQ(messages.Questions().size(), 3U);
  EXPECT_EQ(messages.Questions()[0].text,
            "You have made changes to this range.  Do you want to save it?");
}

TEST_F(OpenEditorsTest, ATextThatIsStillTypedCountsAsAChange) {
  TrailEditor trail(map, FindTrail(map, "Path"));
  CellTable trailCells(trail);
  trailCells.BeginEdit(0, 0);
  EXPECT_EQ(RequestCloseTrailEditor(trail, history, &trailCells), SaveOutcome::Closes);
  EXPECT_TRUE(messages.Questions().empty());
  trailCells.SetText("A9");
  EXPECT_EQ(RequestCloseTrailEditor(trail, history, &trailCells), SaveOutcome::Closes);
  EXPECT_EQ(messages.Questions().size(), 1U);
  EXPECT_NE(FindPointByName(map, nullptr, "A9"), nullptr);

  RangeEditor range(map, RangeRow("Blue").range, 0);
  CellTable rangeCells(range);
  rangeCells.BeginEdit(0, 0);
  rangeCells.SetText("Cebus");
  EXPECT_EQ(RequestCloseRangeEditor(range, view, history, &rangeCells), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Blue").range->keys.front().type, "Cebus");
}

TEST_F(OpenEditorsTest, ATextThatIsRefusedKeepsTheEditorOpen) {
  RangeEditor range(map, RangeRow("Blue").range, 0);
  CellTable rangeCells(range);
  rangeCells.BeginEdit(0, 2);
  rangeCells.SetText("soon");
  EXPECT_EQ(RequestCloseRangeEditor(range, view, history, &rangeCells), SaveOutcome::Stays);
  EXPECT_EQ(Said(), std::vector<std::string>{"Bad date"});

  TrailEditor trail(map, FindTrail(map, "Path"));
  CellTable trailCells(trail);
  trailCells.BeginEdit(0, 3);
  trailCells.SetText("high");
  EXPECT_EQ(RequestCloseTrailEditor(trail, history, &trailCells), SaveOutcome::Stays);
  EXPECT_EQ(Said().size(), 2U);
  EXPECT_EQ(history.Steps(), 0U);
}

TEST_F(OpenEditorsTest, AnOverlapHasNoEditor) {
  ClickRangeRow(view, &Overlap(), false);
  EXPECT_EQ(RangeToEdit(view), nullptr);
  EXPECT_EQ(Said(), std::vector<std::string>{"You may not modify an intersection directly"});
  ClickRangeRow(view, &RangeRow("Red"), false);
  EXPECT_EQ(RangeToEdit(view), &RangeRow("Red"));
}

TEST_F(OpenEditorsTest, ANewRangeGetsItsRowWithoutAListener) {
  EditHistory quiet(workspace);
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetName("Green");
  editor.SetColorText("green");
  editor.SetCell(0, 0, "Papio");
  ASSERT_EQ(SaveRangeEditor(editor, view, quiet), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Green").color, 0x008000);
  EXPECT_EQ(RangeRow("Green").range, &map.ranges.front());
}

TEST_F(OpenEditorsTest, TrailsOfABasisStayIfTheUserSaysSo) {
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  view.map = &above;
  BuildTrailRows(view);
  ClickTrailRow(view, FindTrailRow(view, *FindTrail(map, "Path")), false);
  messages.answers = {AnswerNo};
  DeleteSelectedTrails(view, history);
  EXPECT_NE(FindTrail(map, "Path"), nullptr);
  EXPECT_EQ(history.Steps(), 0U);
  DeleteSelectedTrails(view, history);
  EXPECT_EQ(FindTrail(map, "Path"), nullptr);
  EXPECT_EQ(messages.Questions().size(), 2U);
}

TEST_F(OpenEditorsTest, NothingSelectedIsNothingDeleted) {
  DeleteSelectedTrails(view, history);
  DeleteSelectedRanges(view, history);
  EXPECT_EQ(history.Steps(), 0U);
  EXPECT_EQ(Said(), std::vector<std::string>{});
}

TEST_F(OpenEditorsTest, ARangeIsDeletedThoughAnOverlapIsSelectedToo) {
  ClickRangeRow(view, &Overlap(), false);
  ClickRangeRow(view, &RangeRow("Blue"), true);
  DeleteSelectedRanges(view, history);
  EXPECT_EQ(FindRange(map, "Blue"), nullptr);
  EXPECT_EQ(Said(), std::vector<std::string>{"1 range deleted. Undo: Alt+Backspace"});
}

TEST_F(OpenEditorsTest, ContoursAreNotDeleted) {
  map.contourEnabled = 1;
  map.contourInterval = 10;
  Trail& line = map.contourTrails.emplace_front();
  line.type = "Contour  100";
  line.flags |= TrailContour;
  BuildTrailRows(view);
  for (TrailPanelRow& row : view.trailViews) row.selected = row.text == "Contours";
  EXPECT_TRUE(SelectedTrails(view).empty());
  DeleteSelectedTrails(view, history);
  EXPECT_EQ(std::distance(map.contourTrails.begin(), map.contourTrails.end()), 1);
}

TEST_F(OpenEditorsTest, OverlapsAreNotDeletedHoweverManyAreSelected) {
  map.ranges.emplace_front().name = "Green";
  map.ranges.front().keys.emplace_front().type = "Papio";
  AnalyzeAllRanges(map);
  BuildRangeRows(view);
  int overlaps = 0;
  for (RangePanelRow& row : view.rangeViews) {
    row.selected = row.intersection != nullptr;
    overlaps += row.selected ? 1 : 0;
  }
  ASSERT_GT(overlaps, 1);
  DeleteSelectedRanges(view, history);
  EXPECT_EQ(Said(), std::vector<std::string>{"You may not delete an intersection directly"});
}

TEST_F(OpenEditorsTest, ASelectedTrailIsEdited) {
  ClickTrailRow(view, FindTrailRow(view, *FindTrail(map, "Path")), false);
  EXPECT_EQ(TrailToEdit(view), FindTrail(map, "Path"));
}

}  // namespace
}  // namespace orvane
