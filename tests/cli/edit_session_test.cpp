// Random edits of a session with undos and redos: panes, document and saved file are those from
// before the edit, and after a redo those from after it.

#include "cli/edit_session.h"

#include "base/text.h"
#include "cli/dump.h"
#include "editing/save_trail.h"
#include "elevation/contours.h"
#include "mapfile/writer.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/range_drops.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <optional>
#include <regex>
#include <sstream>

namespace orvane {
namespace {

/// Follows whose ranges overlap, on a grid, so that every stop gets its minute.
constexpr char SiteText[] =
    "M\t2\nZ\tFeed,Rest\t1,100\n"
    "T\tPath\tTrail\t\t\t1.5,#804000\nG\tA\tS21 15.1\tE47 25.1\t120\nC\tB\tA\t40\t80\t2\n"
    "C\tC\tB\t50\t90\t-3\nG\tD\tS21 15.2\tE47 25.3\t90\t2\t2k,3,4,c3\tat the stream\nP\tA\n"
    "T\tBrook\tRiver\nC\tE\tC\t30\t10\t0\nC\tF\tE\t35\t20\t1\nP\tD\nC\tG\tD\t20\t200\t0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS21 15.15\tE47 25.15\nG\t8:30\tS21 15.25\tE47 25.2\n"
    "G\t9:10\tS21 15.05\tE47 25.35\n"
    "T\t\tPapio\t\t2020-3-2\nG\t7:00\tS21 15.3\tE47 25.1\nG\t7:45\tS21 15.1\tE47 25.25\n"
    "G\t8:45\tS21 15.2\tE47 25.05\n"
    "T\t\tPapio\t\t2020-3-2\nG\t7:00\tS21 15.31\tE47 25.1\nG\t7:45\tS21 15.1\tE47 25.2\n"
    "G\t8:45\tS21 15.2\tE47 25.0\n"
    "T\t\tCebus\tBo\t2020-3-1\nG\t7:00-7:20\tS21 15.2\tE47 25.1\nG\t8:05\tS21 15.0\tE47 25.3\n"
    "G\t9:45\tS21 15.3\tE47 25.3\n"
    "H\tA\t50\t8\t8\t15\tA1\t1\n"
    "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\nK\tPoints:*\n";

/// What a person sees, and what would be saved.
struct SessionState {
  std::string panes;
  std::string document;
  std::string file;
};

/// What no undo of an earlier step brings back, if a person has changed it since.
std::string WithoutTicks(const std::string& panes) {
  static const std::regex ticks("\"(selected|visible)\":(true|false),");
  return std::regex_replace(panes, ticks, "");
}

/// \return where two long texts begin to differ
std::string Difference(const std::string& a, const std::string& b) {
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  const auto from = static_cast<size_t>(std::max<std::ptrdiff_t>(inA - a.begin() - 200, 0));
  return a == b ? "" : a.substr(from, 400) + "\n  against\n" + b.substr(from, 400);
}

class EditSessionTest : public MapFixture {
 protected:
  void Begin() {
    session_.reset();
    workspace.maps.clear();
    workspace.rangeRowsMade = 0;
    session_.emplace(Open(SiteText, "site.map"), lines_);
  }
  EditSession& Session() { return *session_; }
  MapWindow& View() { return session_->view; }

  SessionState Now() {
    std::ostringstream document;
    DumpMap(session_->map, noMessages_, document);
    return {.panes = PanesJson(*session_),
            .document = document.str(),
            .file = MapFileText(session_->map, "site.map", true)};
  }
  static void ExpectSame(const SessionState& is, const SessionState& was, const std::string& when) {
    EXPECT_EQ(Difference(is.panes, was.panes), "") << when;
    EXPECT_EQ(Difference(is.document, was.document), "") << when;
    EXPECT_EQ(Difference(is.file, was.file), "") << when;
  }

  TrailPanelRow& AnyTrailRow(Dice& dice) {
    std::vector<TrailPanelRow*> rows = TrailRowsInOrder(View().trailViews);
    rows.pop_back();  // "New"
    return *dice.Of(rows);
  }
  RangePanelRow& AnyRangeRow(Dice& dice) {
    std::vector<RangePanelRow*> rows;
    for (RangePanelRow& row : View().rangeViews) rows.push_back(&row);
    return *dice.Of(rows);
  }

  /// Clicks, ticks and opens rows; none of these is an edit.
  void Click(Dice& dice) {
    ClickTrailRow(View(), &AnyTrailRow(dice), dice.OneIn(2));
    ClickRangeRow(View(), &AnyRangeRow(dice), dice.OneIn(2));
    if (dice.OneIn(3)) ClickTrailTick(View(), AnyTrailRow(dice));
    if (dice.OneIn(3)) ClickTriangle(View(), View().trailViews.front());
    if (dice.OneIn(3)) ClickRangeTick(View(), AnyRangeRow(dice));
    if (dice.OneIn(3)) View().rangeViews.front().drawMode = StyleOf<RangeDrawMode>(dice.Below(3));
    // Undoing a visibility dialog keeps the ticks, so the dialog must not change any.
    const TrailPanelRow* first = FirstSelectedRow(View().trailViews);
    for (TrailPanelRow* row : TrailRowsInOrder(View().trailViews)) {
      if (row->selected) row->visible = first->visible;
    }
  }

  void EditTrail(Dice& dice);
  void EditRange(Dice& dice);
  void ShowOtherwise(Dice& dice);
  void DoAny(Dice& dice);

 private:
  LineMessages lines_;
  LineMessages noMessages_;
  std::optional<EditSession> session_;
};

void EditSessionTest::EditTrail(Dice& dice) {
  TrailPanelRow& row = AnyTrailRow(dice);
  TrailEditor editor(Session().map, dice.OneIn(3) ? nullptr : row.trail);
  const std::string tenth = std::to_string(dice.Below(10));
  if (editor.Edited() == nullptr) {
    editor.SetField(TrailField::Type, dice.OneIn(2) ? "papio" : "Trail");
    editor.SetField(TrailField::Name, "N" + std::to_string(dice.Below(100)));
  }
  if (dice.OneIn(2)) editor.SetField(TrailField::LineColor, "#00" + tenth + "0ff");
  if (!editor.IsReadOnly()) {
    const auto rowNumber = static_cast<size_t>(dice.Below(2)) % (editor.RowCount() + 1);
    editor.SetMode(EntryMode::Mixture);
    editor.SetCell(rowNumber, ColumnName, dice.OneIn(2) ? "A" : "Q" + tenth);
    editor.SetCell(rowNumber, ColumnLat, "S21 15." + tenth);
    editor.SetCell(rowNumber, ColumnLon, "E47 25.1");
    if (dice.OneIn(3)) editor.DeleteRow(1);
  }
  SaveTrailEditor(editor, Session().history);
}

void EditSessionTest::EditRange(Dice& dice) {
  const RangePanelRow& row = AnyRangeRow(dice);
  RangeEditor editor(Session().map, row.range, row.color);
  if (row.range == nullptr || dice.OneIn(2)) editor.SetName("R" + std::to_string(dice.Below(9)));
  if (dice.OneIn(2)) editor.SetColorText("#12345" + std::to_string(dice.Below(10)));
  if (dice.OneIn(2) || editor.RowCount() == 0) {
    editor.SetCell(0, ColumnType, dice.OneIn(2) ? "Papio" : "Cebus");
  }
  if (dice.OneIn(3)) editor.SetCell(0, ColumnTimeFrom, "7:30");
  SaveRangeEditor(editor, View(), Session().history);
}

/// The visibility dialog. It makes no step if only groups are selected.
void EditSessionTest::ShowOtherwise(Dice& dice) {
  for (const TrailPanelRow* row : TrailRowsInOrder(View().trailViews)) {
    if (row->selected && row->trail == nullptr) return;
  }
  auto dialog = OpenTrailVisibility(View());
  if (!dialog) return;
  dialog->color = dice.OneIn(2) ? "red" : "";
  dialog->markStyle = StyleOf<MarkStyle>(dice.Below(6));
  dialog->filled = dice.OneIn(2);
  ApplyTrailVisibility(View(), *dialog, Session().history);
}

void EditSessionTest::DoAny(Dice& dice) {
  switch (dice.Below(6)) {
    case 0:
      return EditTrail(dice);
    case 1:
      return EditRange(dice);
    case 2:
      DropSelection(View(), AnyRangeRow(dice), Session().history);
      return;
    case 3:
      return ShowOtherwise(dice);
    case 4:
      return DeleteSelectedRanges(View(), Session().history);
    default:
      if (Length(Session().map.trails) > 3) DeleteSelectedTrails(View(), Session().history);
  }
}

TEST_F(EditSessionTest, UndoAndRedoBringBackWhatWasShown) {
  for (std::uint64_t seed = 1; seed <= 10 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    Begin();
    EditHistory& history = Session().history;
    for (int turn = 0; turn < 25 && !HasFailure(); ++turn) {
      Click(dice);
      const SessionState before = Now();
      const unsigned rowsMade = workspace.rangeRowsMade;
      const size_t steps = history.Steps();
      DoAny(dice);
      if (history.Steps() == steps) continue;
      const std::string what = *history.UndoName(Session().map);
      const SessionState after = Now();
      history.Undo(Session().map);
      ExpectSame(Now(), before, "undo of " + what);
      history.Redo(Session().map);
      ExpectSame(Now(), after, "redo of " + what);
      EXPECT_GE(workspace.rangeRowsMade, rowsMade) << what;
    }
  }
}

/// The states of many steps, one after the other. Rows that are still there keep what a person did
/// to them in between, so here nothing is clicked.
TEST_F(EditSessionTest, ManyStepsGoBackAndForth) {
  for (std::uint64_t seed = 1; seed <= 6 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    Begin();
    EditHistory& history = Session().history;
    std::vector<SessionState> states{Now()};
    while (states.size() < 20) {
      ClickTrailRow(View(), &AnyTrailRow(dice), false);
      ClickRangeRow(View(), &AnyRangeRow(dice), false);
      DoAny(dice);
      while (states.size() <= history.Steps()) states.push_back(Now());
    }
    size_t at = history.Steps();
    for (int turn = 0; turn < 60 && !HasFailure(); ++turn) {
      if (dice.OneIn(2)) {
        history.Undo(Session().map);
      } else {
        history.Redo(Session().map);
      }
      at = history.Steps();
      const SessionState now = Now();
      EXPECT_EQ(Difference(WithoutTicks(now.panes), WithoutTicks(states[at].panes)), "") << at;
      EXPECT_EQ(Difference(now.document, states[at].document), "") << at;
      EXPECT_EQ(Difference(now.file, states[at].file), "") << at;
    }
  }
}

}  // namespace
}  // namespace orvane
