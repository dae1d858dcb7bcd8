#include "editing/edit_history.h"

#include "editing/delete_records.h"
#include "mapfile/writer.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>
#include <new>

namespace orvane {
namespace {

constexpr char BasisText[] =
    "T\tPde\tTrail\n"
    "G\tCamp\tS20 0\tE47 0\n"
    "C\tHill\tCamp\t300\t45\t2\n"
    "C\tFord=Crossing\tHill\t200\t110\t0\n";
constexpr char SeasonText[] =
    "B\tbasis.map\n"
    "T\tKana\tHuman\n"
    "C\tNest\tHill\t100\t10\t0\n"
    "C\tTree\tNest\t50\t200\t0\n"
    "T\t\tPapio\tf\t2020-3-1\n"
    "G\t8:30\tS20 0.2\tE47 0.1\n"
    "G\t9:00\tS20 0.3\tE47 0.3\n"
    "G\t9:30\tS20 0.1\tE47 0.2\n"
    "R\tPapio\n"
    "K\tPapio\n";

struct EditHistoryTest : MapFixture {
  std::string Saved(Map& map) { return MapFileText(map, map.fileName, true); }

  /// An edit that does what `change` does to the map, and solves.
  Edit EditOf(Map& map, std::string name, std::function<void()> change) {
    return {.name = std::move(name),
            .map = &map,
            .change = [change = std::move(change)](EditFollowUp& followUp) {
              change();
              followUp.solve = true;
              return true;
            }};
  }

  Edit NewTrail(Map& map, const std::string& name) {
    return EditOf(map, "New Trail " + name, [&map, name] {
      Trail& trail = map.trails.emplace_front();
      trail.name = name;
      trail.type = "Human";
      Point& point = *ResolvePointName(map, &trail, name + "1");
      point.trail = &trail;
      Measurement& reading = point.measurements.emplace_front();
      reading.flags = MeasureGps;
      reading.position = {.lat = -20.01, .lon = 47.02};
      trail.points.push_back(&point);
    });
  }

  EditHistory history{workspace};
};

TEST_F(EditHistoryTest, SavingIsNoChangeOfTheRecords) {
  Map& map = Open(BasisText, "basis.map");
  MapSnapshot before(workspace);
  Saved(map);
  EXPECT_FALSE(before.TakeDelta().Change().Any());
}

TEST_F(EditHistoryTest, TakesAnEditBackAndAppliesItAgain) {
  Map& map = Open(SeasonText);
  const std::string before = Saved(map);
  ASSERT_TRUE(history.Apply(NewTrail(map, "Kiosk")));
  const std::string after = Saved(map);
  EXPECT_NE(before, after);
  ASSERT_NE(history.UndoName(map), nullptr);
  EXPECT_EQ(*history.UndoName(map), "New Trail Kiosk");
  EXPECT_EQ(history.RedoName(map), nullptr);

  EXPECT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
  EXPECT_EQ(FindTrail(map, "Kiosk"), nullptr);
  EXPECT_EQ(FindPointByName(map, nullptr, "Kiosk1"), nullptr);
  EXPECT_EQ(*history.RedoName(map), "New Trail Kiosk");
  EXPECT_FALSE(history.Undo(map));

  EXPECT_TRUE(history.Redo(map));
  EXPECT_EQ(Saved(map), after);
  EXPECT_NE(FindPointByName(map, nullptr, "Kiosk1"), nullptr);
  EXPECT_FALSE(history.Redo(map));
}

TEST_F(EditHistoryTest, KeepsTheAddressOfARecordThatComesBack) {
  Map& map = Open(SeasonText);
  history.Apply(NewTrail(map, "Kiosk"));
  const Trail* trail = FindTrail(map, "Kiosk");
  const Point* point = FindPointByName(map, nullptr, "Kiosk1");
  history.Undo(map);
  EXPECT_EQ(Length(map.removed.trails), 1);
  EXPECT_EQ(trail->name, "Kiosk");
  history.Redo(map);
  EXPECT_EQ(FindTrail(map, "Kiosk"), trail);
  EXPECT_EQ(FindPointByName(map, nullptr, "Kiosk1"), point);
  EXPECT_EQ(Length(map.removed.trails), 0);
}

TEST_F(EditHistoryTest, MarksTheMapAndClearsTheMarkInTheSavedState) {
  Map& map = Open(SeasonText);
  const auto isDirty = [&] { return (map.flags & MapDirty) != 0; };
  history.Apply(NewTrail(map, "A"));
  EXPECT_TRUE(isDirty());
  history.Undo(map);
  EXPECT_FALSE(isDirty());
  history.Redo(map);
  EXPECT_TRUE(isDirty());
  history.NoteSaved(map);
  EXPECT_FALSE(isDirty());
  history.Undo(map);
  EXPECT_TRUE(isDirty()) << "the file holds the edit now";
  history.Apply(NewTrail(map, "B"));
  history.Undo(map);
  EXPECT_TRUE(isDirty());
}

TEST_F(EditHistoryTest, AMapThatWasDirtyBeforeItsFirstEditStaysSo) {
  Map& map = Open(SeasonText);
  map.flags |= MapDirty;
  history.Apply(NewTrail(map, "A"));
  history.Undo(map);
  EXPECT_NE(map.flags & MapDirty, 0U);
}

TEST_F(EditHistoryTest, AnEditThatGivesUpLeavesNoTrace) {
  Map& map = Open(SeasonText);
  const std::string before = Saved(map);
  Edit edit = NewTrail(map, "A");
  edit.change = [inner = edit.change](EditFollowUp& followUp) {
    inner(followUp);
    return false;
  };
  EXPECT_FALSE(history.Apply(edit));
  EXPECT_EQ(Saved(map), before);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_EQ(history.UndoName(map), nullptr);
}

TEST_F(EditHistoryTest, BringsTheMapBackWhereMemoryRunsOut) {
  Map& map = Open(SeasonText);
  const std::string before = Saved(map);
  Edit edit = NewTrail(map, "A");
  edit.change = [inner = edit.change](EditFollowUp& followUp) -> bool {
    inner(followUp);
    throw std::bad_alloc();
  };
  EXPECT_THROW(history.Apply(edit), std::bad_alloc);
  EXPECT_EQ(Saved(map), before);
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

/// A listener can run out of memory when the edit is already made.
struct ListenerThatFails : EditListener {
  void BeforeEdit() override {}
  void AfterEdit(const EditNews&) override { throw std::bad_alloc(); }
  void StepDropped(std::uint64_t) override {}
};

/// The step was lost, and with it the way to the records that it had removed.
TEST_F(EditHistoryTest, AListenerWithoutMemoryCostsNoStep) {
  Map& map = Open(SeasonText);
  ListenerThatFails failing;
  history.Add(failing);
  std::vector<EditNews::Kind> heard;
  history.Listen([](const EditNews&) { throw std::bad_alloc(); });
  history.Listen([&](const EditNews& news) { heard.push_back(news.kind); });
  int stepsChanged = 0;
  history.ListenToSteps([&] { ++stepsChanged; });
  const std::string before = Saved(map);
  EXPECT_THROW(history.Apply(NewTrail(map, "A")), ListenerWithoutMemory);
  const std::string after = Saved(map);
  EXPECT_NE(before, after);
  ASSERT_NE(history.UndoName(map), nullptr);
  EXPECT_EQ(*history.UndoName(map), "New Trail A");
  EXPECT_TRUE(IsDirty(map));
  EXPECT_THROW(history.Undo(map), ListenerWithoutMemory);
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
  EXPECT_THROW(history.Redo(map), ListenerWithoutMemory);
  EXPECT_EQ(Saved(map), after);
  using Kind = EditNews::Kind;
  EXPECT_EQ(heard, (std::vector{Kind::Applied, Kind::Undone, Kind::Redone}));
  EXPECT_EQ(stepsChanged, 3);
  history.Remove(failing);
}

TEST_F(EditHistoryTest, AListenerWithoutMemoryDoesNotKeepAnEditThatGaveUp) {
  Map& map = Open(SeasonText);
  const std::string before = Saved(map);
  history.Listen([](const EditNews&) { throw std::bad_alloc(); });
  Edit edit = NewTrail(map, "A");
  edit.change = [change = edit.change](EditFollowUp& followUp) { return !change(followUp); };
  EXPECT_THROW(history.Apply(edit), std::bad_alloc);
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(history.HasSteps());
}

TEST_F(EditHistoryTest, AnEditThatOnlyMarksTheMapIsAStep) {
  Map& map = Open(SeasonText);
  Edit edit{.name = "OK", .map = &map, .change = [](EditFollowUp&) { return true; }};
  history.Apply(NewTrail(map, "A"));
  const std::string before = Saved(map);
  history.NoteSaved(map);
  history.Apply(edit);
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(*history.UndoName(map), "OK");
  history.Undo(map);
  EXPECT_EQ(Saved(map), before) << "an earlier edit stays";
  EXPECT_EQ(map.flags & MapDirty, 0U);
  edit.marksDirty = false;
  history.Apply(edit);
  EXPECT_EQ(history.Steps(), 1U) << "one that marks nothing is none";
}

TEST_F(EditHistoryTest, AnEditThatGivesUpLeavesTheMarkAsItWas) {
  Map& map = Open(SeasonText);
  Edit edit{.name = "Import", .map = &map, .change = [&map](EditFollowUp&) {
              map.flags |= MapDirty;
              return false;
            }};
  EXPECT_FALSE(history.Apply(edit));
  EXPECT_EQ(map.flags & MapDirty, 0U);
  edit.change = [&map](EditFollowUp&) -> bool {
    map.flags |= MapDirty;
    throw std::bad_alloc();
  };
  EXPECT_THROW(history.Apply(edit), std::bad_alloc);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  history.Apply(NewTrail(map, "A"));
  edit.change = [&map](EditFollowUp&) {
    map.flags &= ~std::uint32_t{MapDirty};
    return false;
  };
  EXPECT_FALSE(history.Apply(edit));
  EXPECT_NE(map.flags & MapDirty, 0U);
}

TEST_F(EditHistoryTest, AnEditThatFindsNothingToDoMarksNothing) {
  Map& map = Open(SeasonText);
  const Edit edit{.name = "Import", .map = &map, .change = [](EditFollowUp& followUp) {
                    followUp.marksNothing = true;
                    return true;
                  }};
  EXPECT_TRUE(history.Apply(edit));
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_EQ(history.Steps(), 0U);
}

TEST_F(EditHistoryTest, AnEditOfWhatTheFileDoesNotHoldKeepsTheMark) {
  Map& map = Open(SeasonText);
  Edit edit = EditOf(map, "Trail Visibility", [&map] { map.trails.front().color = 0xFF; });
  edit.marksDirty = false;
  history.Apply(edit);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_TRUE(history.Undo(map));
  EXPECT_EQ(map.trails.front().color, NoColor);
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

TEST_F(EditHistoryTest, TakesBackWhatChangedInABasisToo) {
  Map& basis = Open(BasisText, "basis.map");
  Map& season = Open(SeasonText, "season.map");
  ASSERT_EQ(season.basis, &basis);
  const std::string basisBefore = Saved(basis);
  const std::string seasonBefore = Saved(season);
  Point& hill = Named(basis, "Hill");
  history.Apply(
      EditOf(basis, "Edit of Trail Pde", [&] { hill.measurements.front().distance = 900; }));
  EXPECT_NE(Saved(season), seasonBefore) << "what hangs on the hill moves with it";
  EXPECT_NE(basis.flags & MapDirty, 0U);
  EXPECT_EQ(season.flags & MapDirty, 0U) << "only the map that holds the trail is dirty";
  ASSERT_NE(history.UndoName(season), nullptr);
  EXPECT_EQ(*history.UndoName(season), "Edit of Trail Pde");
  EXPECT_TRUE(history.Undo(season));
  EXPECT_EQ(Saved(basis), basisBefore);
  EXPECT_EQ(Saved(season), seasonBefore);
}

TEST_F(EditHistoryTest, LaterStepsInACommonBasisGoFirst) {
  Map& basis = Open(BasisText, "basis.map");
  Map& one = Open(SeasonText, "one.map");
  Map& two = Open(SeasonText, "two.map");
  const std::string before = Saved(one);
  history.Apply(EditOf(one, "First", [&] {
    Named(basis, "Hill").note = "\tsteep";
    Named(one, "Nest").note = "\told";
  }));
  history.Apply(EditOf(two, "Second", [&] { Named(basis, "Hill").note = "\tflat"; }));
  history.Apply(EditOf(two, "Third", [&] { Named(two, "Tree").note = "\tfig"; }));
  EXPECT_EQ(*history.UndoName(two), "Third");
  EXPECT_EQ(*history.UndoName(one), "Second") << "it lies on top of the first in the basis";
  history.Undo(one);
  EXPECT_EQ(*Named(basis, "Hill").note, "\tsteep");
  EXPECT_EQ(*Named(two, "Tree").note, "\tfig") << "a step that is in nobody's way stays";
  EXPECT_EQ(*history.UndoName(one), "First");
  history.Undo(one);
  EXPECT_EQ(Saved(one), before);
  EXPECT_EQ(*history.RedoName(one), "First");
  history.Redo(one);
  history.Redo(one);
  EXPECT_EQ(*Named(basis, "Hill").note, "\tflat");
}

TEST_F(EditHistoryTest, ANewEditForgetsWhatWasTakenBackInTheSameMap) {
  Map& one = Open(SeasonText, "one.map");
  Map& other = Open("T\tPath\tTrail\nG\tA\tS1 0\tE2 0\n", "other.map");
  history.Apply(NewTrail(one, "A"));
  history.Apply(NewTrail(other, "B"));
  history.Undo(one);
  history.Undo(other);
  history.Apply(NewTrail(one, "C"));
  EXPECT_EQ(history.RedoName(one), nullptr);
  EXPECT_EQ(*history.RedoName(other), "New Trail B");
}

/// A step on top of one that can't come back any more led into a map without it.
TEST_F(EditHistoryTest, WhatWasMadeOnTopOfAForgottenStepIsForgottenToo) {
  Map& basis = Open(BasisText, "basis.map");
  Map& season = Open(SeasonText, "season.map");
  history.Apply(EditOf(season, "Both", [&] {
    Named(basis, "Hill").note = "\tsteep";
    Named(season, "Nest").note = "\told";
  }));
  history.Apply(EditOf(basis, "Top", [&] { Named(basis, "Hill").note = "\tflat"; }));
  history.Undo(season);
  history.Undo(season);
  history.Apply(EditOf(season, "New", [&] { Named(season, "Tree").note = "\tfig"; }));
  EXPECT_EQ(history.RedoName(season), nullptr);
  EXPECT_EQ(history.RedoName(basis), nullptr);
}

/// The places of a map depend on those of its basis, even if no edit changed both.
TEST_F(EditHistoryTest, SurveysOfAMapAndItsBasisAreUndoneInReverseOrder) {
  Map& basis = Open(BasisText, "basis.map");
  Map& season = Open(SeasonText, "season.map");
  history.Apply(
      EditOf(basis, "Move", [&] { Named(basis, "Ford").measurements.front().distance = 300; }));
  const std::string between = Saved(season);
  history.Apply(EditOf(season, "Hang", [&] {
    Named(season, "Tree").measurements.front().base = &Named(basis, "Ford");
  }));
  EXPECT_EQ(*history.UndoName(basis), "Hang");
  history.Apply(EditOf(season, "Note", [&] { Named(season, "Nest").note = "\told"; }));
  history.Undo(season);
  history.Undo(basis);
  EXPECT_EQ(Saved(season), between);
  EXPECT_EQ(*history.UndoName(basis), "Move");
}

TEST_F(EditHistoryTest, AMapThatIsOnlyUnlikeItsFileIsMarkedAsSuch) {
  Map& map = Open(SeasonText);
  Edit edit{
      .name = "Submap", .map = &map, .marksDirty = false, .change = [&](EditFollowUp& followUp) {
        map.comments.emplace_back("# more");
        followUp.unlikeFile.push_back(&map);
        return true;
      }};
  const auto marks = [&] { return map.flags & (MapDirty | MapUnlikeFile); };
  history.Apply(edit);
  EXPECT_EQ(marks(), MapUnlikeFile);
  history.Undo(map);
  EXPECT_EQ(marks(), 0U);
  history.Redo(map);
  EXPECT_EQ(marks(), MapUnlikeFile);
  history.NoteSaved(map);
  EXPECT_EQ(marks(), 0U);
  history.Undo(map);
  EXPECT_EQ(marks(), MapUnlikeFile) << "the file has the submap now";
}

TEST_F(EditHistoryTest, DropsTheOldestStepsAboveItsMemory) {
  Map& map = Open(SeasonText);
  EditHistory small(workspace, 40000);
  for (int i = 0; i < 200; ++i) {
    small.Apply(NewTrail(map, "T" + std::to_string(i)));
    EXPECT_LE(small.Bytes(), 40000U);
  }
  EXPECT_LT(small.Steps(), 200U);
  EXPECT_GT(small.Steps(), 5U);
  size_t taken = 0;
  while (small.Undo(map)) ++taken;
  EXPECT_EQ(taken, 200 - static_cast<size_t>(Length(map.trails) - 2));
}

TEST_F(EditHistoryTest, KeepsAHundredSmallSteps) {
  Map& map = Open(SeasonText);
  for (int i = 0; i < 120; ++i) history.Apply(NewTrail(map, "T" + std::to_string(i)));
  EXPECT_EQ(history.Steps(), 120U);
}

/// A hundred steps on 100,000 points fit the memory, even if each moves them all.
TEST_F(EditHistoryTest, AStepThatMovesEveryPointIsSmall) {
  constexpr int Points = 2000;
  std::string text = "T\tRidge\tTrail\nG\tP0\tS20 0\tE47 0\n";
  for (int i = 1; i < Points; ++i) {
    text += "C\tP" + std::to_string(i) + "\tP" + std::to_string(i - 1) + "\t20\t70\t1\n";
  }
  Map& map = Open(text);
  const std::string before = Saved(map);
  history.Apply(
      EditOf(map, "Move", [&] { Named(map, "P0").measurements.front().position.lat = -20.001; }));
  ASSERT_EQ(history.Steps(), 1U);
  EXPECT_LT(history.Bytes() * 100 * (100000 / Points), EditHistory::MostBytes);
  history.Undo(map);
  EXPECT_EQ(Saved(map), before);
}

TEST_F(EditHistoryTest, SaysWhatChanged) {
  Map& map = Open(SeasonText);
  std::vector<std::string> heard;
  MapChange change;
  history.Listen([&](const EditNews& news) {
    heard.push_back(*news.name + std::to_string(static_cast<int>(news.kind)));
    change = news.delta->ChangeOf(map);
  });
  history.Apply(EditOf(map, "Style", [&] { map.trails.front().color = 0xFF; }));
  EXPECT_TRUE(change.style);
  EXPECT_FALSE(change.trails || change.points || change.positions || change.ranges ||
               change.settings);
  history.Apply(EditOf(map, "Keys", [&] { map.ranges.front().keys.front().type = "Cebus"; }));
  EXPECT_TRUE(change.ranges);
  EXPECT_FALSE(change.trails || change.points || change.positions || change.style);
  history.Apply(
      EditOf(map, "Move", [&] { Named(map, "Tree").measurements.front().distance = 70; }));
  EXPECT_TRUE(change.points && change.positions);
  EXPECT_FALSE(change.trails || change.ranges || change.style || change.settings);
  history.Apply(EditOf(map, "Deviation", [&] { map.magneticDeviation = 3; }));
  EXPECT_TRUE(change.settings && change.positions);
  EXPECT_FALSE(change.trails || change.points);
  history.Undo(map);
  history.Redo(map);
  EXPECT_EQ(heard, (std::vector<std::string>{"Style0", "Keys0", "Move0", "Deviation0", "Deviation1",
                                             "Deviation2"}));
}

/// Changes a map in some way that an editor or an import may change it.
class AnyChange {
 public:
  AnyChange(Map& map, Dice& dice) : map_(map), dice_(dice) {}

  void operator()() {
    switch (dice_.Below(9)) {
      case 0:
        return AddTrail();
      case 1:
        return RemoveTrail();
      case 2:
        return MoveReading();
      case 3:
        return AddSynonym();
      case 4:
        return AddRange();
      case 5:
        return AddLoosePoint();
      case 6:
        return AddGrid();
      case 7:
        return ChangeSettings();
      default:
        return ChangeTrail();
    }
  }

 private:
  std::string NewName() { return "N" + std::to_string(dice_.Below(40)); }
  Trail* AnyTrail() {
    const auto count = static_cast<int>(std::distance(map_.trails.begin(), map_.trails.end()));
    if (count == 0) return nullptr;
    return &*std::next(map_.trails.begin(), dice_.Below(count));
  }
  void AddFix(Point& point) {
    Measurement& reading = point.measurements.emplace_front();
    reading.flags = MeasureGps;
    reading.position = {.lat = -20 - dice_.Part() / 100, .lon = 47 + dice_.Part() / 100};
  }
  void Append(Trail& trail) {
    Point& point = *ResolvePointName(map_, &trail, NewName());
    if (point.trail == nullptr) {
      RemoveFromLists(map_, point);
      point.trail = &trail;
    }
    AddFix(point);
    trail.points.push_back(&point);
  }
  void AddTrail() {
    Trail& trail = map_.trails.emplace_front();
    trail.name = "Trail" + std::to_string(dice_.Below(1000));
    trail.type = dice_.OneIn(2) ? "Human" : "River";
    for (int i = dice_.Int(1, 4); i > 0; --i) Append(trail);
  }
  void RemoveTrail() {
    if (map_.trails.empty()) return;
    for (Point* point : map_.trails.front().points) {
      if (point->trail != &map_.trails.front()) continue;
      point->trail = nullptr;
      point->measurements.clear();
      if (point->map == &map_) RemovePointNames(map_, *point);
    }
    map_.removed.trails.splice_after(map_.removed.trails.before_begin(), map_.trails,
                                     map_.trails.before_begin());
  }
  void MoveReading() {
    Trail* trail = AnyTrail();
    if (trail == nullptr || trail->points.empty()) return;
    Point& point = *dice_.Of(trail->points);
    if (!point.measurements.empty()) point.measurements.front().position.lat += 0.001;
  }
  void AddSynonym() { ResolvePointName(map_, nullptr, NewName() + "=S" + NewName()); }
  void AddRange() {
    Range& range = map_.ranges.emplace_front();
    range.name = NewName();
    range.keys.emplace_front().type = dice_.OneIn(2) ? "Papio" : "Human";
  }
  void AddLoosePoint() {
    Point& point = *ResolvePointName(map_, nullptr, NewName());
    if (point.trail != nullptr || (point.flags & PointNamedTwice) != 0) return;
    AddFix(point);
    map_.loosePoints.push_front(&point);
  }
  void AddGrid() {
    Grid& grid = map_.grids.emplace_front();
    grid.corner = ResolvePointName(map_, nullptr, "Nest");
    grid.cellSize = dice_.Int(1, 50);
    grid.rows = grid.columns = 2;
    map_.gridShades.push_front({.value = ShadeFull, .color = 0, .grid = &grid});
  }
  void ChangeSettings() {
    map_.magneticDeviation = dice_.Below(5);
    map_.contourEnabled = 1;
    map_.contourInterval = dice_.Int(1, 9);
    map_.comments.push_back("# " + NewName());
    map_.smName[0] = NewName();
  }
  void ChangeTrail() {
    Trail* trail = AnyTrail();
    if (trail == nullptr) return;
    trail->color = dice_.Below(0xFFFFFF);
    trail->note = "\t" + NewName();
    if (dice_.OneIn(2)) Append(*trail);
  }

  Map& map_;
  Dice& dice_;
};

/// Undo and redo at random must lead through the same saved files as the edits did.
TEST_F(EditHistoryTest, LeadsThroughTheSameFilesInBothDirections) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const std::string suffix = std::to_string(seed);
    Map& basis = Open(BasisText, "basis.map");
    Map& season = Open(SeasonText, "season" + suffix + ".map");
    EditHistory own(workspace);
    const auto both = [&] { return Saved(basis) + "\n--\n" + Saved(season); };
    std::vector<std::string> states{both()};
    size_t now = 0;
    for (int turn = 0; turn < 120; ++turn) {
      const int choice = dice.Below(4);
      if (choice == 0 && now > 0) {
        ASSERT_TRUE(own.Undo(season));
        --now;
      } else if (choice == 1 && now + 1 < states.size()) {
        ASSERT_TRUE(own.Redo(season));
        ++now;
      } else {
        const size_t steps = own.Steps();
        AnyChange change(season, dice);
        own.Apply(EditOf(season, "Any", [&] { change(); }));
        if (own.Steps() == steps) continue;
        states.resize(++now);
        states.push_back(both());
        continue;
      }
      ASSERT_EQ(both(), states[now]) << "turn " << turn;
    }
    while (own.Undo(season)) --now;
    EXPECT_EQ(now, 0U);
    EXPECT_EQ(both(), states[0]);
  }
}

TEST_F(EditHistoryTest, NoStepLeadsBackIntoAMapThatIsReadAgain) {
  Map& map = Open(BasisText, "basis.map");
  Map& other = Open("T\tOther\tTrail\nG\tFar\t1\t2\n", "other.map");
  ASSERT_TRUE(history.Apply(NewTrail(map, "A")));
  ASSERT_TRUE(history.Apply(NewTrail(map, "B")));
  ASSERT_TRUE(history.Apply(NewTrail(other, "C")));
  ASSERT_TRUE(history.Undo(map));
  history.Forget(map);
  EXPECT_EQ(history.UndoName(map), nullptr);
  EXPECT_EQ(history.RedoName(map), nullptr);
  ASSERT_NE(history.UndoName(other), nullptr);
  // What follows begins from the file again.
  map.flags &= ~std::uint32_t{MapDirty};
  ASSERT_TRUE(history.Apply(NewTrail(map, "D")));
  EXPECT_NE(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

/// The older step keeps places that came from the basis before the newer one moved it.
TEST_F(EditHistoryTest, AStepBelowAForgottenOneIsForgottenToo) {
  Map& basis = Open(BasisText, "basis.map");
  Map& season = Open("B\tbasis.map\nT\tKana\tHuman\nC\tNest\tHill\t100\t10\t0\n", "season.map");
  Map& other = Open("T\tOther\tTrail\nG\tFar\t1\t2\n", "other.map");
  DeleteTrails(season, {FindTrail(season, "Kana")}, history);
  ASSERT_TRUE(history.Apply(NewTrail(other, "A")));
  ASSERT_TRUE(history.Apply(
      EditOf(basis, "Move", [&] { Named(basis, "Hill").measurements.front().distance = 4000; })));
  ASSERT_EQ(*history.UndoName(season), "Move");
  history.Forget(basis);
  EXPECT_EQ(history.UndoName(season), nullptr);
  EXPECT_NE(history.UndoName(other), nullptr);
}

}  // namespace
}  // namespace orvane
