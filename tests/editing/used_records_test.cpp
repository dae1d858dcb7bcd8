// Records to which nothing leads any more are freed and their places used again; all others stay.

#include "base/dates.h"
#include "editing/delete_records.h"
#include "editing/edit_history.h"
#include "editing/range_editor.h"
#include "editing/save_range.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "mapfile/writer.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace orvane {
namespace {

constexpr int Follows = 100;

void AddFix(Point& point, double lat) {
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureGps;
  reading.position = {.lat = lat, .lon = 47};
}

/// An import of follows of one stop each, with a range.
Edit Import(Map& map) {
  return {.name = "Import", .map = &map, .change = [&map](EditFollowUp& followUp) {
            for (int i = 0; i < Follows; ++i) {
              Trail& trail = map.trails.emplace_front();
              trail.type = "Papio";
              trail.date = PackDate(2020, 1, 1 + i % 28);
              Point& stop = *ResolvePointName(map, &trail, "8:30");
              AddFix(stop, -20 + i * 0.001);
              stop.trail = &trail;
              trail.points.push_back(&stop);
            }
            map.ranges.emplace_front().name = "Papio";
            followUp.solve = true;
            return true;
          }};
}

std::string SavedText(Map& map) { return MapFileText(map, map.fileName, true); }

struct UsedRecordsTest : MapFixture {
  Map& map = Open("T\tPath\tTrail\nG\tCamp\tS20 0\tE47 0\nG\tHill\tS20 0.1\tE47 0.1\n");
  EditHistory history{workspace};
};

TEST_F(UsedRecordsTest, AnImportThatIsUndoneAgainAndAgainTakesNoMoreMemory) {
  const std::string before = SavedText(map);
  size_t mostBytes = 0;
  for (int turn = 0; turn < 100; ++turn) {
    ASSERT_TRUE(history.Apply(Import(map)));
    ASSERT_TRUE(history.Undo(map));
    EXPECT_GT(history.Bytes(), Follows * (sizeof(Point) + sizeof(Trail)) + sizeof(Range))
        << "what only a step keeps counts";
    mostBytes = std::max(mostBytes, history.Bytes());
  }
  EXPECT_LE(map.pointStore.PlaceCount(), 2U + 2 * Follows);
  EXPECT_LE(mostBytes, size_t{3} * Follows * (sizeof(Point) + sizeof(Trail)) + 2 * sizeof(Range));
  EXPECT_LE(Length(map.removed.trails), 2 * Follows);
  EXPECT_LE(Length(map.removed.ranges), 2);
  EXPECT_EQ(SavedText(map), before);
  ASSERT_TRUE(history.Redo(map));
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(SavedText(map), before);
}

TEST_F(UsedRecordsTest, WhatEditsMakeThatGiveUpIsFreed) {
  for (int turn = 0; turn < 20; ++turn) {
    Edit edit = Import(map);
    edit.change = [change = edit.change](EditFollowUp& followUp) {
      change(followUp);
      return false;
    };
    ASSERT_FALSE(history.Apply(edit));
  }
  EXPECT_LE(map.pointStore.PlaceCount(), 2U + 2 * Follows);
  EXPECT_LE(Length(map.removed.trails), 2 * Follows);
  EXPECT_LE(Length(map.removed.ranges), 2);
}

TEST_F(UsedRecordsTest, AfterManyUndosTheStepsThatWouldBeRedoneLastGo) {
  EditHistory small(workspace, size_t{1} << 18);
  const std::string before = SavedText(map);
  constexpr int Imports = 12;
  for (int i = 0; i < Imports; ++i) ASSERT_TRUE(small.Apply(Import(map)));
  std::vector<std::string> states{SavedText(map)};
  for (int i = 0; i < Imports; ++i) {
    ASSERT_TRUE(small.Undo(map)) << i;
    states.push_back(SavedText(map));
    EXPECT_LE(small.Bytes(), size_t{1} << 18);
  }
  EXPECT_EQ(states.back(), before);
  int redone = 0;
  while (small.Redo(map)) ++redone;
  EXPECT_GT(redone, 0);
  EXPECT_LT(redone, Imports);
  EXPECT_EQ(SavedText(map), states[static_cast<size_t>(Imports - redone)]);
}

TEST_F(UsedRecordsTest, StepsOfManyBytesDropTheOldestWithTheirRecords) {
  EditHistory small(workspace, size_t{1} << 18);
  for (int turn = 0; turn < 50; ++turn) {
    ASSERT_TRUE(small.Apply(Import(map)));
    std::vector<Trail*> follows;
    for (Trail& trail : map.trails) {
      if (trail.type == "Papio") follows.push_back(&trail);
    }
    DeleteTrails(map, follows, small);
    DeleteRanges(map, {&map.ranges.front()}, small);
    EXPECT_LE(small.Bytes(), size_t{1} << 18);
  }
  EXPECT_LE(Length(map.removed.trails), 10 * Follows);
  EXPECT_LE(map.pointStore.PlaceCount(), 10U * Follows);
  const std::string now = SavedText(map);
  int undone = 0;
  while (small.Undo(map)) ++undone;
  EXPECT_GT(undone, 0);
  while (undone-- > 0) ASSERT_TRUE(small.Redo(map));
  EXPECT_EQ(SavedText(map), now);
}

TEST_F(UsedRecordsTest, AnOpenEditorKeepsItsDeletedTrail) {
  EditHistory none(workspace, 1);  // no step stays
  Trail& trail = map.trails.front();
  const std::string before = SavedText(map);
  TrailEditor editor(map, &trail);
  DeleteTrails(map, {&trail}, none);
  ASSERT_FALSE(none.HasSteps());
  ASSERT_EQ(Length(map.removed.trails), 1);
  EXPECT_EQ(map.removed.trails.front().name, "Path");
  EXPECT_EQ(editor.Title(), "Trail: Path");
  EXPECT_EQ(SaveTrailEditor(editor, none), SaveOutcome::Closes);  // the answer is Yes
  EXPECT_EQ(SavedText(map), before);
}

/// What an editor held was not counted, and after it closed neither.
TEST_F(UsedRecordsTest, WhatAnEditorHoldsCountsUntilItIsFreed) {
  EditHistory none(workspace, 1);
  Open("T\tOther\tTrail\n", "other.map");
  auto editor = std::make_unique<TrailEditor>(map, &map.trails.front());
  DeleteTrails(map, {&map.trails.front()}, none);
  const size_t held = sizeof(Trail) + 2 * sizeof(Point);
  EXPECT_GE(none.Bytes(), held);
  editor.reset();
  EXPECT_GE(none.Bytes(), held) << "the records are still there";
  ASSERT_TRUE(none.Apply(Import(map)));
  DeleteTrails(map, {&map.trails.front()}, none);
  EXPECT_EQ(none.Bytes(), 0U);
  EXPECT_EQ(Length(map.removed.trails), 0);
}

TEST_F(UsedRecordsTest, AnOpenEditorKeepsItsDeletedRange) {
  EditHistory none(workspace, 1);
  Range& range = map.ranges.emplace_front();
  range.name = "Papio";
  range.keys.emplace_front().type = "Papio";
  RangeEditor editor(map, &range, NoColor);
  DeleteRanges(map, {&range}, none);
  ASSERT_FALSE(none.HasSteps());
  EXPECT_EQ(Length(map.removed.ranges), 1);
  EXPECT_EQ(editor.Title(), "Papio");
}

TEST_F(UsedRecordsTest, WithoutAnEditorADeletedTrailIsFreed) {
  EditHistory none(workspace, 1);
  Open("T\tOther\tTrail\n", "other.map");  // reading would go on with the trail that was read last
  { const TrailEditor closed(map, &map.trails.front()); }
  DeleteTrails(map, {&map.trails.front()}, none);
  EXPECT_EQ(Length(map.removed.trails), 0);
  EXPECT_TRUE(map.pointStore.empty());
  EXPECT_EQ(map.pointStore.PlaceCount(), 0U);
}

TEST_F(UsedRecordsTest, WhatAMapAboveUsesStays) {
  EditHistory none(workspace, 1);
  Map& above = Open("T\tUpper\tTrail\nC\tNest\tHill\t100\t10\t0\n", "above.map");
  // The base of the reading becomes the point of the map below.
  none.Apply({.name = "Basis", .map = &above, .change = [&](EditFollowUp& followUp) {
                above.basis = &map;
                Named(above, "Nest").measurements.front().base = &Named(map, "Hill");
                followUp.solve = true;
                return true;
              }});
  const Point* hill = &Named(map, "Hill");
  DeleteTrails(map, {&map.trails.front()}, none);
  ASSERT_FALSE(none.HasSteps());
  EXPECT_EQ(Named(above, "Nest").measurements.front().base, hill);
  EXPECT_EQ(&Named(map, "Hill"), hill);
  EXPECT_EQ(FindPointByName(map, nullptr, "Camp"), nullptr);
}

TEST_F(UsedRecordsTest, WhatOnlyAChainOfReadingsReachesStays) {
  EditHistory none(workspace, 1);
  Point& first = MakePoint(map, "");
  Point& second = MakePoint(map, "");
  second.measurements.emplace_front().base = &first;
  Named(map, "Hill").measurements.emplace_front().base = &second;
  const size_t points = map.pointStore.size();
  ASSERT_TRUE(none.Apply(Import(map)));
  ASSERT_FALSE(none.HasSteps());
  EXPECT_EQ(map.pointStore.size(), points + Follows);
}

// --- Random runs ----------------------------------------------------------------------------------

constexpr char BasisText[] =
    "M\t2\nT\tPath\tTrail\nG\tA\tS21 15.1\tE47 25.1\t120\nC\tB\tA\t40\t80\t2\nC\tC\tB\t50\t90\t-3\n"
    "T\tBrook\tRiver\nC\tE\tC\t30\t10\t0\nC\tF=Ford\tE\t35\t20\t1\nP\tA\n";
constexpr char SeasonText[] =
    "B\tbasis.map\nZ\tFeed,Rest\t1,100\nT\tKana\tHuman\nG\tCamp\tS21 15.2\tE47 25.2\n"
    "C\tNest\tB\t80\t10\t0\nT\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS21 15.15\tE47 25.15\n"
    "G\t8:30\tS21 15.25\tE47 25.2\nG\t9:10\tS21 15.05\tE47 25.35\nH\tCamp\t50\t8\t8\t15\tA1\t1\n"
    "R\tBlue\nK\tPapio\n";

/// Makes the same edits for the same seed. Editors stay open for a while.
class Site {
 public:
  Site(std::uint64_t seed, size_t mostBytes) : dice_(seed), history_(workspace_, mostBytes) {
    basis_ = &MapFromText(workspace_, BasisText, "basis.map");
    season_ = &MapFromText(workspace_, SeasonText, "season.map");
  }

  /// From now on every record stays.
  void KeepAll() {
    kept_ = workspace_.holders.Add([this](UnusedRecords& records) {
      for (const Map& map : workspace_.maps) {
        for (const Point& point : map.pointStore) records.Keep(&point);
        for (const Trail& trail : map.removed.trails) records.Keep(&trail);
        for (const Range& range : map.removed.ranges) records.Keep(&range);
        for (const Grid& grid : map.removed.grids) records.Keep(&grid);
      }
    });
  }

  std::string State() { return SavedText(*basis_) + "\n--\n" + SavedText(*season_); }
  EditHistory& History() { return history_; }
  Map& Season() { return *season_; }
  size_t PlaceCount() const {
    return basis_->pointStore.PlaceCount() + season_->pointStore.PlaceCount();
  }

  void DoAny() {
    Map& map = dice_.OneIn(3) ? *basis_ : *season_;
    switch (dice_.Below(12)) {
      case 0:
      case 1:
        return ReadMore(map);
      case 2:
      case 3:
      case 4:
        return Delete(map);
      case 5:
        return EditRange(map);
      case 6:
        if (!map.ranges.empty()) DeleteRanges(map, {&map.ranges.front()}, history_);
        return;
      case 7:
        return OpenEditor(map);
      case 8:
        return SaveOpenEditor();
      case 9:
        return MoveGrid(map);
      default: {
        TrailEditor editor(map, dice_.OneIn(3) ? nullptr : AnyTrail(map));
        Type(editor);
        SaveTrailEditor(editor, history_);
      }
    }
  }

 private:
  std::string Digit() { return std::to_string(dice_.Below(10)); }

  Trail* AnyTrail(Map& map) {
    std::vector<Trail*> trails;
    for (Trail& trail : map.trails) trails.push_back(&trail);
    return trails.empty() ? nullptr : dice_.Of(trails);
  }

  void Type(TrailEditor& editor) {
    if (editor.Edited() == nullptr) {
      editor.SetField(TrailField::Type, dice_.OneIn(2) ? "Papio" : "Trail");
      editor.SetField(TrailField::Name, "N" + Digit() + Digit());
    }
    const auto row = static_cast<size_t>(dice_.Below(2)) % (editor.RowCount() + 1);
    editor.SetMode(EntryMode::Mixture);
    const std::string times = "1" + Digit() + ":0" + Digit();
    editor.SetCell(row, ColumnName, dice_.OneIn(3) ? "A" : dice_.OneIn(2) ? times : "Q" + Digit());
    editor.SetCell(row, ColumnLat, "S21 15." + Digit());
    editor.SetCell(row, ColumnLon, "E47 25.1");
    editor.SetCell(row, editor.Columns().size() - 1,
                   "seen from afar, in the tall trees behind Camp " + Digit());
    if (dice_.OneIn(3)) editor.DeleteRow(1);
  }

  void Delete(Map& map) {
    std::vector<Trail*> trails;
    for (Trail& trail : map.trails) {
      if (dice_.OneIn(3)) trails.push_back(&trail);
    }
    DeleteTrails(map, trails, history_);
  }

  void EditRange(Map& map) {
    RangeEditor editor(map, map.ranges.empty() || dice_.OneIn(2) ? nullptr : &map.ranges.front(),
                       NoColor);
    editor.SetName("R" + Digit());
    editor.SetCell(0, ColumnType, dice_.OneIn(2) ? "Papio" : "Cebus");
    SaveRangeEditor(editor, history_, [](Range&, Color) {});
  }

  void ReadMore(Map& map) {
    std::string text = "T\tLoop" + Digit() + "\tTrail\nG\tX" + Digit() + "=Long Synonym Of X" +
                       Digit() + "\tS21 15.1\tE47 25.3\nC\tY" + Digit() + "\tA\t30\t20\t0\n";
    text += "T\t\tCebus\tBo\t2020-4-" + std::to_string(1 + dice_.Below(28)) + "\n";
    for (int stop = dice_.Below(20); stop >= 0; --stop) {
      text += "G\t" + std::to_string(7 + stop) + ":00\tS21 15." + Digit() + "\tE47 25." + Digit() +
              "\n";
    }
    history_.Apply({.name = "Submap", .map = &map, .change = [&](EditFollowUp& followUp) {
                      ReadMapText(map, text);
                      FinishMap(map);
                      followUp.solved = true;
                      return true;
                    }});
  }

  void MoveGrid(Map& map) {
    history_.Apply({.name = "Grid", .map = &map, .change = [&](EditFollowUp&) {
                      if (!map.grids.empty()) {
                        map.removed.grids.splice_after(map.removed.grids.before_begin(), map.grids,
                                                       map.grids.before_begin());
                      }
                      if (Trail* trail = AnyTrail(map);
                          trail != nullptr && !trail->points.empty()) {
                        Point* corner = trail->points.front();
                        if (!corner->name.empty()) map.grids.push_front({.corner = corner});
                      }
                      return true;
                    }});
  }

  void OpenEditor(Map& map) {
    open_.push_back(std::make_unique<TrailEditor>(map, AnyTrail(map)));
    Type(*open_.back());
  }

  void SaveOpenEditor() {
    if (open_.empty()) return;
    const auto which = open_.begin() + dice_.Below(static_cast<int>(open_.size()));
    SaveTrailEditor(**which, history_);
    open_.erase(which);
  }

  RecordedMessages messages_;
  Workspace workspace_{messages_};
  Dice dice_;
  Map* basis_ = nullptr;
  Map* season_ = nullptr;
  EditHistory history_;
  std::vector<std::unique_ptr<TrailEditor>> open_;
  std::shared_ptr<const RecordHolders::Keep> kept_;
};

class UsedRecordsRunsTest : public testing::TestWithParam<std::uint64_t> {};

/// In one of two sites with the same edits each record stays. The other one frees what it can, and
/// saves the same all the same.
TEST_P(UsedRecordsRunsTest, MapsAreTheSameAsWithAllRecordsKept) {
  constexpr size_t Small = size_t{64} << 10;
  Site kept(GetParam(), EditHistory::MostBytes);
  kept.KeepAll();
  Site freed(GetParam(), Small);
  Dice dice(GetParam() + 1);
  int undone = 0;
  int redone = 0;
  for (int turn = 0; turn < 120; ++turn) {
    const int choice = dice.Below(10);
    if (choice < 3 && freed.History().Undo(freed.Season())) {
      ASSERT_TRUE(kept.History().Undo(kept.Season()));
      ++undone;
    } else if (choice == 3 && freed.History().Redo(freed.Season())) {
      ASSERT_TRUE(kept.History().Redo(kept.Season()));
      ++redone;
    } else if (choice == 4 && dice.OneIn(8)) {
      freed.History().Forget(freed.Season());
      kept.History().Forget(kept.Season());
    } else {
      freed.DoAny();
      kept.DoAny();
    }
    ASSERT_EQ(freed.State(), kept.State()) << turn;
    ASSERT_LE(freed.History().Bytes(), Small);
  }
  EXPECT_GT(undone, 0);
  EXPECT_GT(redone, 0);
  EXPECT_LT(freed.PlaceCount() * 5 / 4, kept.PlaceCount());
}

INSTANTIATE_TEST_SUITE_P(Seeds, UsedRecordsRunsTest, testing::Range<std::uint64_t>(1, 5));

}  // namespace
}  // namespace orvane
