// Long random runs of edits of every kind with undos and redos in between. Each state is compared
// with the bytes that a save gave when it was first reached.

#include "commands/map_edits.h"
#include "editing/delete_records.h"
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
#include "support/dice.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
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

class UndoRunsTest : public MapFixture {
 protected:
  /// What saves would write, and which maps are marked.
  std::string State() {
    std::string state;
    for (Map* map : {basis_, season_}) {
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

  View& AnyView() { return dice_.OneIn(3) ? *basisView_ : *seasonView_; }
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

  void EditTrail(MapWindow& view) {
    TrailEditor editor(*view.map, dice_.OneIn(3) ? nullptr : AnyTrailRow(view).trail);
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
    SaveTrailEditor(editor, *history_);
  }

  void EditRange(MapWindow& view) {
    const RangePanelRow& row = AnyRangeRow(view);
    if (row.intersection != nullptr) return;
    RangeEditor editor(*view.map, row.range, row.color);
    if (row.range == nullptr || dice_.OneIn(2)) editor.SetName("R" + Digit());
    if (dice_.OneIn(2) || editor.RowCount() == 0) {
      editor.SetCell(0, ColumnType, dice_.OneIn(2) ? "Papio" : "Cebus");
    }
    SaveRangeEditor(editor, view, *history_);
  }

  void ChangeLooks(MapWindow& view) {
    ClickTrailRow(view, &AnyTrailRow(view), false);
    auto dialog = OpenTrailVisibility(view);
    if (!dialog) return;
    dialog->color = dice_.OneIn(2) ? "red" : "";
    dialog->markStyle = StyleOf<MarkStyle>(dice_.Below(6));
    ApplyTrailVisibility(view, *dialog, *history_);
  }

  void Delete(MapWindow& view) {
    if (dice_.OneIn(2)) {
      ClickRangeRow(view, &AnyRangeRow(view), false);
      return DeleteSelectedRanges(view, *history_);
    }
    ClickTrailRow(view, &AnyTrailRow(view), false);
    DeleteSelectedTrails(view, *history_);
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
    history_->Apply(SheetEdit(spec, logs, write, outcome));
  }

  void ImportGps(Map& map) {
    const std::string name = "W" + Digit();
    const bool isTrack = dice_.OneIn(2);
    const std::string path = folder_.Write(
        "gps.txt", "name,date,a,b,lat,lon,alt\n" + name + ",,,,-21.25" + Digit() + ",47.42,5\n" +
                       (isTrack ? name : "V" + Digit()) + ",,,,-21.26,47.42" + Digit() + ",6\n");
    const GisBoxes boxes;
    std::optional<GisImport> import;
    history_->Apply(GisFileEdit(map, path, boxes, import));
    if (!import || CurrentTrack(*import) == nullptr) return;
    GisField bad = GisField::None;
    history_->Apply(TrackEdit(*import, StartFields(*import, boxes), true, bad));
  }

  void ImportSubmap(Map& map) {
    std::string sentence;
    const std::string path =
        folder_.Write("more.map", "T\tLoop" + Digit() + "\tTrail\nG\tX" + Digit() +
                                      "\tS21 15.1\tE47 25.3\nP\tA\n");
    history_->Apply(SubmapEdit(map, path, sentence));
  }

  void Reload(Map& map) {
    history_->Reread(map, "Reload from Disk", [&](FormerContents& former) {
      return RereadMap(map, &former) == RereadOutcome::Done;
    });
  }

  /// \return what was done
  const char* DoAny() {
    View& view = AnyView();
    MapWindow& shown = view.shown;
    Map& map = *shown.map;
    switch (dice_.Below(24)) {
      case 0:
        return ImportSheet(map), "sheet";
      case 1:
        return ImportGps(map), "GPS file";
      case 2:
        return ImportSubmap(map), "submap";
      case 3:
        return history_->Apply(DeviationEdit(map, dice_.Below(5))), "deviation";
      case 4:
        if (season_->basis == nullptr) history_->Apply(BasisEdit(*season_, *basis_));
        return "basis";
      case 5:
        if (dice_.OneIn(3)) Reload(map);
        return "reload";
      case 6:
      case 7:
        return ChangeLooks(shown), "looks";
      case 8:
      case 9:
        ClickTrailRow(shown, &AnyTrailRow(shown), false);
        return DropSelection(shown, AnyRangeRow(shown), *history_), "drop";
      case 10:
      case 11:
      case 12:
        return EditRange(shown), "range";
      case 13:
      case 14:
      case 15:
      case 16:
      case 17:
        return Delete(shown), "deletion";
      default:
        return EditTrail(shown), "trail";
    }
  }

  void Begin() {
    const auto open = [&](const char* name, const char* text) {
      return &OpenMap(workspace, folder_.Write(name, text));
    };
    basis_ = open("basis.map", BasisText);
    season_ = open("season.map", SeasonText);
    history_.emplace(workspace);
    basisView_.emplace(*basis_, *history_);
    seasonView_.emplace(*season_, *history_);
    // Remembers the map that each step is about, so that this very step can be undone.
    history_->Listen([this](const EditNews& news) { edited_ = news.map; });
  }

  TemporaryFolder folder_;
  Dice dice_{14};
  Map* basis_ = nullptr;
  Map* season_ = nullptr;
  Map* edited_ = nullptr;
  std::optional<EditHistory> history_;
  std::optional<View> basisView_;
  std::optional<View> seasonView_;
};

TEST_F(UndoRunsTest, AThousandEditsOfEveryKindLeadThroughTheSameFilesInBothDirections) {
  Begin();
  std::vector<std::string> states{State()};
  std::vector<Map*> maps;  // of the step that leads to the state after
  std::map<std::string, int> kinds;
  size_t at = 0;
  int edits = 0;
  while (edits < 1000 && !HasFailure()) {
    const int choice = dice_.Below(10);
    if (choice < 3 && at > 0) {
      ASSERT_TRUE(history_->Undo(*maps[--at]));
      ASSERT_EQ(State(), states[at]) << "undone to " << at;
    } else if (choice < 5 && at < maps.size()) {
      ASSERT_TRUE(history_->Redo(*maps[at++]));
      ASSERT_EQ(State(), states[at]) << "redone to " << at;
    } else {
      const size_t steps = history_->Steps();
      const char* kind = DoAny();
      if (history_->Steps() == steps) continue;
      ASSERT_EQ(history_->Steps(), steps + 1) << kind;
      ++edits;
      ++kinds[kind];
      maps.resize(at++);
      maps.push_back(edited_);
      states.resize(at);
      states.push_back(State());
    }
    for (const auto& view : {&basisView_, &seasonView_}) ExpectRowsOfMap((*view)->shown);
  }
  for (const char* kind : {"sheet", "GPS file", "submap", "deviation", "basis", "reload", "looks",
                           "drop", "range", "deletion", "trail"}) {
    EXPECT_GT(kinds[kind], 0) << kind;
  }
  while (at > 0) ASSERT_TRUE(history_->Undo(*maps[--at]));
  EXPECT_EQ(State(), states[0]);
}

}  // namespace
}  // namespace orvane
