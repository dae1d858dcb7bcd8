// Memory runs out in an edit, an undo or a redo: the maps are as before, and no step is lost. And
// steps take no more memory than they may.

#include "base/progress.h"
#include "editing/delete_records.h"
#include "editing/edit_history.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "mapfile/open_map.h"
#include "mapfile/reread_maps.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <malloc.h>
#include <new>

namespace {

constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();
/// Requests of so many bytes fail, as often as `failures` says.
std::size_t failFrom = Unlimited;
int failures = 0;
/// Bytes that are in use now.
std::size_t inUse = 0;

void* Noted(void* piece) {
  inUse += ::malloc_usable_size(piece);
  return piece;
}

void Free(void* piece) noexcept {
  inUse -= ::malloc_usable_size(piece);
  std::free(piece);
}

}  // namespace

void* operator new(std::size_t bytes) {
  if (bytes >= failFrom && failures > 0) {
    --failures;
    throw std::bad_alloc();
  }
  void* piece = std::malloc(bytes > 0 ? bytes : 1);
  if (piece == nullptr) throw std::bad_alloc();
  return Noted(piece);
}

// The blocks of maps come from this one.
void* operator new(std::size_t bytes, std::align_val_t alignment) {
  const auto grain = static_cast<std::size_t>(alignment);
  void* piece = std::aligned_alloc(grain, (bytes + grain - 1) / grain * grain);
  if (piece == nullptr) throw std::bad_alloc();
  return Noted(piece);
}

// Sorting asks by this one for room that it can do without.
void* operator new(std::size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
  return Noted(std::malloc(bytes > 0 ? bytes : 1));
}

void operator delete(void* piece) noexcept { Free(piece); }
void operator delete(void* piece, std::size_t /*bytes*/) noexcept { Free(piece); }
void operator delete(void* piece, std::align_val_t /*alignment*/) noexcept { Free(piece); }
void operator delete(void* piece, std::size_t /*bytes*/, std::align_val_t /*alignment*/) noexcept {
  Free(piece);
}

namespace orvane {
namespace {

constexpr int Points = 3000;

std::string LargeText() {
  std::string text = "T\tLong\tTrail\n";
  for (int i = 0; i < Points; ++i) {
    text += "G\tP" + std::to_string(i) + "\tS20 0\tE47 " + std::to_string(i % 60) + "\n";
  }
  return text;
}

struct UndoMemoryTest : MapFixture {
  ~UndoMemoryTest() override { failFrom = Unlimited; }
  std::string Saved() { return MapFileText(map, map.fileName, true); }
  static void FailFrom(std::size_t bytes, int times) {
    failFrom = bytes;
    failures = times;
  }

  Map& map = Open(LargeText(), "large.map");
  EditHistory history{workspace};
};

/// Runs out of memory in the analysis of ranges, which then wants to say so.
struct FailingProgress : Progress {
  void Reach(WorkStage, size_t, size_t) override { throw std::bad_alloc(); }
};
struct FailingMessages : RecordedMessages {
  void Post(Severity, const std::string&) override { throw std::bad_alloc(); }
};

TEST_F(UndoMemoryTest, AnUndoWithoutMemoryForItChangesNothing) {
  const std::string before = Saved();
  DeleteTrails(map, {&map.trails.front()}, history);
  const std::string after = Saved();
  ASSERT_NE(before, after);
  FailFrom(std::size_t{32} << 10, 1000);
  EXPECT_THROW(history.Undo(map), std::bad_alloc);
  FailFrom(Unlimited, 0);
  EXPECT_EQ(Saved(), after);
  ASSERT_NE(history.UndoName(map), nullptr);
  EXPECT_EQ(history.RedoName(map), nullptr);
  EXPECT_TRUE(IsDirty(map));
  EXPECT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(), before);
}

TEST(UndoWithoutMemory, ThatCantAnalyzeIsTakenBack) {
  FailingMessages messages;
  Workspace workspace(messages);
  EditHistory history(workspace);
  Map& map = MapFromText(workspace,
                         "T\t\tPapio\tf\t2020-3-1\nG\t8:30\tS20 0.2\tE47 0.1\n"
                         "G\t9:00\tS20 0.3\tE47 0.3\nG\t9:30\tS20 0.1\tE47 0.2\n"
                         "G\t9:40\tS20 0.1\tE47 0.3\nR\tPapio\nK\tPapio\n");
  const auto saved = [&] { return MapFileText(map, map.fileName, true); };
  const std::string before = saved();
  history.Apply({.name = "Deletion", .map = &map, .change = [&](EditFollowUp& followUp) {
                   map.removed.trails.splice_after(map.removed.trails.before_begin(), map.trails,
                                                   map.trails.before_begin());
                   followUp.solve = true;
                   return true;
                 }});
  const std::string after = saved();
  ASSERT_NE(before, after);
  std::vector<EditNews::Kind> news;
  history.Listen([&](const EditNews& each) { news.push_back(each.kind); });
  FailingProgress failing;
  workspace.progress = &failing;
  EXPECT_THROW(history.Undo(map), std::bad_alloc);
  workspace.progress = nullptr;
  EXPECT_EQ(news, std::vector<EditNews::Kind>{EditNews::Kind::TakenBack});
  EXPECT_EQ(saved(), after);
  EXPECT_TRUE(IsDirty(map));
  ASSERT_NE(history.UndoName(map), nullptr);
  EXPECT_EQ(history.RedoName(map), nullptr);
  EXPECT_TRUE(history.Undo(map));
  EXPECT_EQ(saved(), before);
}

TEST_F(UndoMemoryTest, AnEditThatCantBeRecordedIsTakenBack) {
  const std::string before = Saved();
  EXPECT_THROW(history.Apply({.name = "Notes",
                              .map = &map,
                              .change =
                                  [&](EditFollowUp&) {
                                    for (Point& point : map.pointStore) point.note = "\told";
                                    FailFrom(std::size_t{32} << 10, 1);
                                    return true;
                                  }}),
               std::bad_alloc);
  EXPECT_EQ(failures, 0);
  FailFrom(Unlimited, 0);
  EXPECT_EQ(Saved(), before);
  EXPECT_FALSE(IsDirty(map));
  EXPECT_EQ(history.UndoName(map), nullptr);
}

/// Half of the points were freed, and the trail that they were on.
TEST_F(UndoMemoryTest, RecordsThatCantAllBeFreedAllStay) {
  workspace.reading = {};
  {
    EditHistory gone(workspace);
    DeleteTrails(map, {&map.trails.front()}, gone);
  }
  UnusedRecords records(workspace);
  FailFrom(std::size_t{16} << 10, 1);
  EXPECT_THROW(records.Free(), std::bad_alloc);
  FailFrom(Unlimited, 0);
  EXPECT_EQ(Length(map.removed.trails), 1);
  EXPECT_EQ(map.pointStore.size(), std::size_t{Points});
  records.Free();
  EXPECT_EQ(Length(map.removed.trails), 0);
  EXPECT_EQ(map.pointStore.PlaceCount(), 0U);
}

/// What was read could get lost with its step.
TEST_F(UndoMemoryTest, AReloadIsAStepWithoutMemoryForItsListeners) {
  const TemporaryFolder folder;
  Map& site = OpenMap(workspace, folder.Write("site.map", "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\n"));
  const auto saved = [&] { return MapFileText(site, site.fileName, true); };
  const std::string before = saved();
  folder.Write("site.map", "T\tPath\tTrail\nG\tB\tS20 0\tE47 0\n");
  history.Listen([](const EditNews&) { throw std::bad_alloc(); });
  EXPECT_THROW(history.Reread(site, "Reload from Disk",
                              [&](FormerContents& former) {
                                return RereadMap(site, &former) == RereadOutcome::Done;
                              }),
               ListenerWithoutMemory);
  EXPECT_NE(saved(), before);
  ASSERT_NE(history.UndoName(site), nullptr);
  EXPECT_THROW(history.Undo(site), ListenerWithoutMemory);
  EXPECT_EQ(saved(), before);
}

// --- How much memory steps take -------------------------------------------------------------------

/// Stops of a follow, one each minute.
std::string FollowText(int stops) {
  std::string text = "T\t\tPapio\tf\t2020-3-1\n";
  for (int i = 0; i < stops; ++i) {
    const int minute = i % 60;
    text += "G\t" + std::to_string(6 + i / 60) + (minute < 10 ? ":0" : ":") +
            std::to_string(minute) + "\tS20 0." + std::to_string(i % 10) + "\tE47 0.1\n";
  }
  return text;
}

struct StepMemoryTest : MapFixture {
  std::size_t Since(std::size_t before) const { return inUse > before ? inUse - before : 0; }

  /// Adds a trail of `count` points with names, readings and notes.
  static Edit Import(Map& map, int count) {
    return {.name = "Import", .map = &map, .change = [&map, count](EditFollowUp& followUp) {
              Trail& trail = map.trails.emplace_front();
              trail.name = "Imported";
              for (int i = 0; i < count; ++i) {
                Point& point = *ResolvePointName(map, &trail,
                                                 "Waypoint of the new device " + std::to_string(i));
                Measurement& reading = point.measurements.emplace_front();
                reading.flags = MeasureGps;
                reading.position = {.lat = -20, .lon = 47};
                point.note = "A note that is long enough to have memory of its own";
                point.trail = &trail;
                trail.points.push_back(&point);
              }
              followUp.solve = true;
              return true;
            }};
  }
};

TEST_F(StepMemoryTest, ImportsThatAreUndoneHoldNoMoreThanOne) {
  constexpr int Rows = 1000;
  Map& map = Open("T\tPath\tTrail\nG\tCamp\tS20 0\tE47 0\n");
  EditHistory history(workspace);
  const auto turn = [&] {
    ASSERT_TRUE(history.Apply(Import(map, Rows)));
    ASSERT_TRUE(history.Undo(map));
  };
  const std::size_t before = inUse;
  turn();
  turn();
  const std::size_t ofTwo = Since(before);
  EXPECT_GT(ofTwo, Rows * sizeof(Point));
  for (int i = 0; i < 20; ++i) turn();
  EXPECT_LT(Since(before), ofTwo + ofTwo / 4);
}

TEST_F(StepMemoryTest, WhatStepsSayTheyTakeIsWhatTheyTake) {
  constexpr int Rows = 3000;
  Map& map = Open("T\tPath\tTrail\nG\tCamp\tS20 0\tE47 0\n");
  EditHistory history(workspace);
  const std::size_t before = inUse;
  ASSERT_TRUE(history.Apply(Import(map, Rows)));
  ASSERT_TRUE(history.Undo(map));
  // The map takes memory in blocks, and the last one is not full.
  EXPECT_GT(history.Bytes(), Since(before) * 6 / 10);
  EXPECT_LT(history.Bytes(), Since(before) * 12 / 10);
}

/// Records that the former contents hold counted with the step that had removed them, too.
TEST_F(StepMemoryTest, AReloadCountsWhatWasRemovedBeforeOnce) {
  const TemporaryFolder folder;
  Map& site = OpenMap(workspace, folder.Write("site.map", FollowText(600)));
  EditHistory history(workspace);
  DeleteTrails(site, {&site.trails.front()}, history);
  const std::size_t deleted = history.Bytes();
  EXPECT_GT(deleted, 600 * sizeof(Point));
  ASSERT_TRUE(history.Reread(site, "Reload from Disk", [&](FormerContents& former) {
    return RereadMap(site, &former) == RereadOutcome::Done;
  }));
  EXPECT_GE(history.Bytes(), deleted);
  EXPECT_LT(history.Bytes(), deleted + deleted / 4);
  ASSERT_TRUE(history.Undo(site));
  EXPECT_GT(history.Bytes(), deleted + 600 * sizeof(Point)) << "it holds what was read";
  ASSERT_TRUE(history.Undo(site));
  ASSERT_TRUE(history.Redo(site));
  ASSERT_TRUE(history.Redo(site));
  EXPECT_LT(history.Bytes(), deleted + deleted / 4);
}

/// Each OK makes all stops again, so the step before it keeps them all.
TEST_F(StepMemoryTest, AHundredOksOfAFollowOf600StopsHaveRoom) {
  constexpr std::size_t Oks = 10;
  constexpr std::size_t Wanted = 100;
  constexpr std::size_t Share = 4;  // leaves room for those of other maps
  Map& season = Open(FollowText(600));
  EditHistory history(workspace);
  const auto saved = [&] { return MapFileText(season, season.fileName, true); };
  const std::string before = saved();
  for (std::size_t turn = 0; turn < Oks; ++turn) {
    TrailEditor editor(season, &season.trails.front());
    editor.SetField(TrailField::LineColor, turn % 2 == 0 ? "red" : "blue");
    ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  }
  EXPECT_EQ(history.Steps(), Oks);
  EXPECT_GT(history.Bytes(), Oks * 600 * sizeof(Point));
  EXPECT_LT(history.Bytes() / Oks * Wanted, EditHistory::MostBytes / Share);
  while (history.Undo(season)) {
  }
  EXPECT_EQ(saved(), before);
}

TEST_F(StepMemoryTest, ManyOksOfALongFollowStayWithinTheBound) {
  constexpr std::size_t Bound = std::size_t{2} << 20;
  constexpr std::size_t LeastSteps = 100;
  constexpr int Stops = 20;
  Map& season = Open(FollowText(Stops));
  EditHistory history(workspace, Bound);
  constexpr int TurnsToTheBound = 180;
  std::size_t before = 0;
  for (int turn = 0; turn < 300; ++turn) {
    if (turn == TurnsToTheBound) before = inUse;
    TrailEditor editor(season, &season.trails.front());
    editor.SetField(TrailField::LineColor, turn % 2 == 0 ? "red" : "blue");
    ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
    ASSERT_LE(history.Bytes(), Bound);
  }
  EXPECT_LT(Since(before), Bound / 4);
  EXPECT_LT(season.pointStore.PlaceCount() * sizeof(Point), Bound);
  EXPECT_GE(history.Steps(), LeastSteps);
}

}  // namespace
}  // namespace orvane
