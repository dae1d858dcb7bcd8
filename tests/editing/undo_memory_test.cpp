// Memory runs out in an edit, an undo or a redo: the maps are as before, and no step is lost.

#include "base/progress.h"
#include "editing/delete_records.h"
#include "editing/edit_history.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <new>

namespace {

constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();
/// Requests of so many bytes fail, as often as `failures` says.
std::size_t failFrom = Unlimited;
int failures = 0;

}  // namespace

void* operator new(std::size_t bytes) {
  if (bytes >= failFrom && failures > 0) {
    --failures;
    throw std::bad_alloc();
  }
  void* piece = std::malloc(bytes > 0 ? bytes : 1);
  if (piece == nullptr) throw std::bad_alloc();
  return piece;
}

// Sorting asks by this one for room that it can do without.
void* operator new(std::size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
  return std::malloc(bytes > 0 ? bytes : 1);
}

void operator delete(void* piece) noexcept { std::free(piece); }
void operator delete(void* piece, std::size_t /*bytes*/) noexcept { std::free(piece); }

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

}  // namespace
}  // namespace orvane
