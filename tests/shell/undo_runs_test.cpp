// Long random runs of edits of every kind with undos and redos in between. Each state is compared
// with the bytes that a save gave when it was first reached.

#include "commands/map_edits.h"
#include "editing/range_editor.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "entry/import_edits.h"
#include "mapfile/reread_maps.h"
#include "mapfile/writer.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/pane_follower.h"
#include "panes/range_drops.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/trail_pane.h"
#include "shell/shell_case.h"
#include "support/dice.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr char BasisText[] =
    "M\t2\nT\tPath\tTrail\nG\tA\tS21 15.1\tE47 25.1\t120\nC\tB\tA\t40\t80\t2\nC\tC\tB\t50\t90\t-3\n"
    "T\tBrook\tRiver\nC\tE\tC\t30\t10\t0\nC\tF\tE\t35\t20\t1\nP\tA\n";
constexpr char SeasonText[] =
    "Z\tFeed,Rest\t1,100\nT\tKana\tHuman\nG\tCamp\tS21 15.2\tE47 25.2\nC\tNest\tCamp\t80\t10\t0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS21 15.15\tE47 25.15\nG\t8:30\tS21 15.25\tE47 25.2\n"
    "G\t9:10\tS21 15.05\tE47 25.35\n"
    "T\t\tCebus\tBo\t2020-3-1\nG\t7:00-7:20\tS21 15.2\tE47 25.1\nG\t8:05\tS21 15.0\tE47 25.3\n"
    "G\t9:45\tS21 15.3\tE47 25.3\n"
    "H\tCamp\t50\t8\t8\t15\tA1\t1\nR\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n";

/// Everything that can be undone, at random: on a map and its basis, through views on both.
class RandomEdits {
 public:
  /// \param basis, season  views whose rows follow `history`; all must outlive this
  RandomEdits(std::uint64_t seed, EditHistory& history, MapWindow& basis, MapWindow& season)
      : dice_(seed), history_(history), basis_(basis), season_(season) {}

  static constexpr std::array Kinds{
      "sheet", "GPS file", "fixes", "submap", "deviation", "basis",          "reload",
      "style", "drop",     "range", "trail",  "new trail", "trail deletion", "range deletion"};

  /// \return the kind; what it did need not be a step
  const char* DoAny() {
    MapWindow& view = dice_.OneIn(3) ? basis_ : season_;
    Map& map = *view.map;
    switch (dice_.Below(25)) {
      case 0:
        return ImportSheet(map), "sheet";
      case 1:
        return ImportGps(map), "GPS file";
      case 2:
        return ImportFixes(map), "fixes";
      case 3:
        return ImportSubmap(map), "submap";
      case 4:
        return history_.Apply(DeviationEdit(map, dice_.Below(5))), "deviation";
      case 5:
        if (season_.map->basis == nullptr) history_.Apply(BasisEdit(*season_.map, *basis_.map));
        return "basis";
      case 6:
        if (dice_.OneIn(3)) Reload(map);
        return "reload";
      case 7:
      case 8:
        return ChangeLooks(view), "style";
      case 9:
      case 10:
        ClickTrailRow(view, &AnyTrailRow(view), false);
        return DropSelection(view, AnyRangeRow(view), history_), "drop";
      case 11:
      case 12:
      case 13:
        return EditRange(view), "range";
      case 14:
      case 15:
      case 16:
        ClickTrailRow(view, &AnyTrailRow(view), false);
        return DeleteSelectedTrails(view, history_), "trail deletion";
      case 17:
      case 18:
        ClickRangeRow(view, &AnyRangeRow(view), false);
        return DeleteSelectedRanges(view, history_), "range deletion";
      case 19:
      case 20:
        return EditTrail(view, nullptr), "new trail";
      default:
        return EditTrail(view, AnyTrailRow(view).trail), "trail";
    }
  }

 private:
  TrailPanelRow& AnyTrailRow(MapWindow& view) {
    std::vector<TrailPanelRow*> rows = TrailRowsInOrder(view.trailViews);
    return *dice_.Of(rows);
  }
  RangePanelRow& AnyRangeRow(MapWindow& view) {
    std::vector<RangePanelRow*> rows;
    for (RangePanelRow& row : view.rangeViews) rows.push_back(&row);
    return *dice_.Of(rows);
  }
  std::string Digit() { return std::to_string(dice_.Below(10)); }

  void EditTrail(MapWindow& view, Trail* trail) {
    TrailEditor editor(*view.map, trail);
    if (editor.Edited() == nullptr) {
      editor.SetField(TrailField::Type, dice_.OneIn(2) ? "papio" : "Trail");
      editor.SetField(TrailField::Name, "N" + Digit() + Digit());
    }
    if (dice_.OneIn(2)) editor.SetField(TrailField::LineColor, "#00" + Digit() + "0ff");
    const auto row = static_cast<size_t>(dice_.Below(2)) % (editor.RowCount() + 1);
    editor.SetMode(EntryMode::Mixture);
    editor.SetCell(row, ColumnName, dice_.OneIn(2) ? "A" : "Q" + Digit());
    editor.SetCell(row, ColumnLat, "S21 15." + Digit());
    editor.SetCell(row, ColumnLon, "E47 25.1");
    if (dice_.OneIn(3)) editor.DeleteRow(1);
    SaveTrailEditor(editor, history_);
  }

  void EditRange(MapWindow& view) {
    const RangePanelRow& row = AnyRangeRow(view);
    if (row.intersection != nullptr) return;
    RangeEditor editor(*view.map, row.range, row.color);
    if (row.range == nullptr || dice_.OneIn(2)) editor.SetName("R" + Digit());
    if (dice_.OneIn(2) || editor.RowCount() == 0) {
      editor.SetCell(0, ColumnType, dice_.OneIn(2) ? "Papio" : "Cebus");
    }
    SaveRangeEditor(editor, view, history_);
  }

  void ChangeLooks(MapWindow& view) {
    ClickTrailRow(view, &AnyTrailRow(view), false);
    auto dialog = OpenTrailVisibility(view);
    if (!dialog) return;
    dialog->color = dice_.OneIn(2) ? "red" : "";
    dialog->markStyle = StyleOf<MarkStyle>(dice_.Below(6));
    ApplyTrailVisibility(view, *dialog, history_);
  }

  void ImportSheet(Map& map) {
    const FollowSheet sheet{.text = "7:" + Digit() + "0\tA\t2020-3-" +
                                    std::to_string(3 + dice_.Below(9)) + "\n9:00\t" + Digit() +
                                    "0m north of A\t2020-3-1\n"};
    ImportSpec spec;
    spec.map = &map;
    spec.sheet = &sheet;
    spec.fileName = "rains.txt";
    spec.timeColumn = 0;
    spec.locationColumn = 1;
    spec.dateColumn = 2;
    spec.speciesAlways = "Papio";
    SheetLogs logs;
    SheetOutcome outcome;
    const auto write = [](const std::string&, std::string_view) { return WriteResult::Done; };
    history_.Apply(SheetEdit(spec, logs, write, outcome));
  }

  void ImportGps(Map& map) {
    const std::string name = "W" + Digit();
    const bool isTrack = dice_.OneIn(2);
    const std::string path = folder_.Write(
        "gps.txt", "name,date,a,b,lat,lon,alt\n" + name + ",,,,-21.25" + Digit() + ",47.42,5\n" +
                       (isTrack ? name : "V" + Digit()) + ",,,,-21.26,47.42" + Digit() + ",6\n");
    const GisBoxes boxes;
    std::optional<GisImport> import;
    history_.Apply(GisFileEdit(map, path, boxes, import));
    if (!import || CurrentTrack(*import) == nullptr) return;
    GisField bad = GisField::None;
    history_.Apply(TrackEdit(*import, StartFields(*import, boxes), true, bad));
  }

  void ImportSubmap(Map& map) {
    std::string sentence;
    const std::string path =
        folder_.Write("more.map", "T\tLoop" + Digit() + "\tTrail\nG\tX" + Digit() +
                                      "\tS21 15.1\tE47 25.3\nP\tA\n");
    history_.Apply(SubmapEdit(map, path, sentence));
  }

  void ImportFixes(Map& map) {
    const std::string day = "2021-5-" + std::to_string(1 + dice_.Below(28)) + " 0";
    auto import = StartFixImportOfText(map,
                                       "time,lat,lon,id\n" + day + "4:10,-21.25" + Digit() +
                                           ",47.42,Kiki\n" + day + "5:20,-21.26,47.42" + Digit() +
                                           (dice_.OneIn(2) ? ",Kiki\n" : ",Lola\n"),
                                       "collar.csv", FixOptions());
    if (import) history_.Apply(FixesEdit(map, *import));
  }

  void Reload(Map& map) {
    history_.Reread(map, "Reload from Disk", [&](FormerContents& former) {
      return RereadMap(map, &former) == RereadOutcome::Done;
    });
  }

  Dice dice_;
  EditHistory& history_;
  MapWindow& basis_;
  MapWindow& season_;
  TemporaryFolder folder_;
};

/// A walk through edits, undos and redos, which compares each state that it comes back to. Steps can be
/// dropped on the way.
class UndoWalk final : EditListener {
 public:
  UndoWalk(std::uint64_t seed, EditHistory& history, MapWindow& basis, MapWindow& season)
      : dice_(seed),
        history_(history),
        basis_(basis),
        season_(season),
        edits_(seed + 1, history, basis, season) {
    history_.Add(*this);
    states_.push_back(State());
  }
  ~UndoWalk() override { history_.Remove(*this); }
  UndoWalk(const UndoWalk&) = delete;
  UndoWalk& operator=(const UndoWalk&) = delete;

  void Turn() {
    const int choice = dice_.Below(10);
    if (choice < 3 && CanUndo()) {
      Undo();
    } else if (choice < 5 && CanRedo()) {
      Redo();
    } else {
      Do();
    }
    ExpectRowsOfMap(basis_);
    ExpectRowsOfMap(season_);
  }

  /// Back to the start, or to the oldest state to which a step leads.
  void UndoAll() {
    while (CanUndo() && !testing::Test::HasFailure()) Undo();
  }
  void RedoAll() {
    while (CanRedo() && !testing::Test::HasFailure()) Redo();
  }

  int Edits() const { return edited_; }
  int Undos() const { return undone_; }
  int Redos() const { return redone_; }
  size_t Dropped() const { return dropped_.size(); }
  bool IsAtStart() const { return at_ == 0; }
  int CountOf(const char* kind) const {
    const auto found = kinds_.find(kind);
    return found == kinds_.end() ? 0 : found->second;
  }

 private:
  struct Step {
    std::uint64_t number = 0;
    Map* map = nullptr;  ///< that it is about, so that this very step can be undone
  };

  void BeforeEdit() override {}
  void AfterEdit(const EditNews& news) override {
    last_ = {.number = news.step, .map = news.map};
    if (news.kind == EditNews::Kind::TakenBack) last_ = {};
  }
  void StepDropped(std::uint64_t step) override { dropped_.insert(step); }

  bool CanUndo() const { return at_ > 0 && !dropped_.contains(steps_[at_ - 1].number); }
  bool CanRedo() const { return at_ < steps_.size() && !dropped_.contains(steps_[at_].number); }

  void Undo() {
    const Step& step = steps_[--at_];
    ASSERT_TRUE(history_.Undo(*step.map));
    ASSERT_EQ(last_.number, step.number);
    ASSERT_EQ(State(), states_[at_]) << "undone to " << at_;
    ++undone_;
  }

  void Redo() {
    const Step& step = steps_[at_++];
    ASSERT_TRUE(history_.Redo(*step.map));
    ASSERT_EQ(last_.number, step.number);
    ASSERT_EQ(State(), states_[at_]) << "redone to " << at_;
    ++redone_;
  }

  void Do() {
    last_ = {};
    const char* kind = edits_.DoAny();
    const bool isDropped = dropped_.contains(last_.number);
    std::string state = State();
    if (last_.map == nullptr || (isDropped && state == states_[at_])) {
      ASSERT_EQ(state, states_[at_]) << kind << " changed something without a step";
      return;
    }
    ++edited_;
    ++kinds_[kind];
    steps_.resize(at_++);
    steps_.push_back(last_);
    states_.resize(at_);
    states_.push_back(std::move(state));
  }

  /// What saves would write, and which maps are marked.
  std::string State() const {
    std::string state;
    for (Map* map : {basis_.map, season_.map}) {
      state += MapFileText(*map, map->fileName, true) + "\n-- " +
               std::to_string(map->flags & (MapDirty | MapUnlikeFile)) + "\n";
    }
    return state;
  }

  /// The rows of a view must be those of its maps.
  static void ExpectRowsOfMap(MapWindow& view) {
    std::set<const Trail*> trails;
    for (Map* map = view.map; map != nullptr; map = map->basis) {
      for (const Trail& trail : map->trails) trails.insert(&trail);
    }
    for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
      if (row->trail != nullptr) {
        EXPECT_EQ(trails.erase(row->trail), 1U) << row->text;
      }
    }
    EXPECT_TRUE(trails.empty());
    std::set<const Range*> ranges;
    for (const Range& range : view.map->ranges) ranges.insert(&range);
    for (const RangePanelRow& row : view.rangeViews) {
      if (row.range != nullptr) {
        EXPECT_EQ(ranges.erase(row.range), 1U) << row.text.value_or("");
      }
    }
    EXPECT_TRUE(ranges.empty());
  }

  Dice dice_;
  EditHistory& history_;
  MapWindow& basis_;
  MapWindow& season_;
  RandomEdits edits_;
  std::vector<Step> steps_;
  std::vector<std::string> states_;  ///< before the first step, and after each
  size_t at_ = 0;                    ///< steps that are done
  Step last_;                        ///< that of the last news; none if it was taken back
  std::set<std::uint64_t> dropped_;
  std::map<std::string, int> kinds_;
  int edited_ = 0;
  int undone_ = 0;
  int redone_ = 0;
};

/// One map and its view, with the rows that follow the edits.
struct View {
  View(Map& map, EditHistory& history) : follower(shown, history) {
    shown.map = &map;
    BuildTrailRows(shown);
    BuildRangeRows(shown);
  }
  MapWindow shown;
  PaneFollower follower;
};

struct UndoRunsTest : MapFixture {
  Map& OpenFile(const char* name, const char* text) {
    return OpenMap(workspace, folder.Write(name, text));
  }
  TemporaryFolder folder;
};

TEST_F(UndoRunsTest, AThousandEditsOfEveryKindLeadThroughTheSameFilesInBothDirections) {
  Map& basis = OpenFile("basis.map", BasisText);
  Map& season = OpenFile("season.map", SeasonText);
  EditHistory history(workspace);
  View basisView(basis, history);
  View seasonView(season, history);
  UndoWalk walk(14, history, basisView.shown, seasonView.shown);
  while (walk.Edits() < 1000 && !HasFailure()) walk.Turn();
  for (const char* kind : RandomEdits::Kinds) EXPECT_GT(walk.CountOf(kind), 0) << kind;
  walk.UndoAll();
  EXPECT_TRUE(walk.IsAtStart());
}

/// Records are freed all the time, and new ones get their places.
TEST_F(UndoRunsTest, ATinyBoundDropsStepsAndLeadsThroughTheSameFiles) {
  constexpr size_t Bound = size_t{64} << 10;
  Map& basis = OpenFile("basis.map", BasisText);
  Map& season = OpenFile("season.map", SeasonText);
  EditHistory history(workspace, Bound);
  View basisView(basis, history);
  View seasonView(season, history);
  UndoWalk walk(64, history, basisView.shown, seasonView.shown);
  while (walk.Edits() < 1000 && !HasFailure()) {
    walk.Turn();
    ASSERT_LE(history.Bytes(), Bound);
  }
  for (const char* kind : RandomEdits::Kinds) EXPECT_GT(walk.CountOf(kind), 0) << kind;
  EXPECT_GT(walk.Dropped(), 100U);
  EXPECT_GT(walk.Undos(), 100);
  EXPECT_GT(walk.Redos(), 100);
  walk.UndoAll();
  walk.RedoAll();
}

class UndoRunsWithReportsTest : public ShellCase {
 protected:
  void OpenAllReports(MapWindowWidget& window) {
    SelectAllRanges(window.Shown());
    ClickTrailRow(window.Shown(), &FirstTrailRow(window.Shown()), false);
    window.ShowRows();
    window.Panes().Trails().Rows().setFocus();
    for (const CommandId report :
         {CommandElevation, CommandTrailSummary, CommandPointIndex, CommandRangeStats,
          CommandRangeEstimates, CommandSurveyQuality}) {
      shell_.Commands().Run(report, window);
    }
    ASSERT_EQ(window.Dependents().size(), 6U);
  }

  static TrailPanelRow& FirstTrailRow(MapWindow& view) {
    for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
      if (row->trail != nullptr) return *row;
    }
    ADD_FAILURE() << "no trail";
    return view.trailViews.front();
  }

  /// Makes the reports again, where they wait for that, and paints them.
  static void ShowReports(const MapWindowWidget& window) {
    QApplication::processEvents();
    for (ProgramWindow* report : window.Dependents()) report->Widget().grab();
  }
};

/// A report may keep nothing that an edit removed: the record is freed soon.
TEST_F(UndoRunsWithReportsTest, AllReportsFollowWhileRecordsAreFreed) {
  MapWindowWidget& basis = OpenActive(folder_.Write("basis.map", BasisText));
  OpenAllReports(basis);
  MapWindowWidget& season = OpenActive(folder_.Write("season.map", SeasonText));
  OpenAllReports(season);
  shell_.History().SetMostBytes(size_t{64} << 10);
  UndoWalk walk(65, shell_.History(), basis.Shown(), season.Shown());
  while (walk.Edits() < 100 && !HasFailure()) {
    walk.Turn();
    ShowReports(basis);
    ShowReports(season);
  }
  EXPECT_GT(walk.Dropped(), 10U);
  EXPECT_GT(walk.Undos(), 10);
  EXPECT_EQ(basis.Dependents().size() + season.Dependents().size(), 12U);
}

}  // namespace
}  // namespace orvane
