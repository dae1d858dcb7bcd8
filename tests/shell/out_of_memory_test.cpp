// A command that runs out of memory is given up, and nothing is lost.

#include "mapfile/writer.h"
#include "shell/comment_edit.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/memory_guard.h"
#include "shell/shell_case.h"

#include <QPushButton>

#include <chrono>
#include <new>

namespace orvane {
namespace {

class OutOfMemory : public ShellCase {
 protected:
  OutOfMemory() {
    shell_.Keep(
        std::make_unique<ScriptedCopies>([this] { copiesBefore_ = Texts().empty() ? 1 : -1; }));
  }

  /// Memory runs out at the given look of the work at the clock.
  void FailAt(int look) {
    around_.clock = [left = look]() mutable {
      if (--left <= 0) throw std::bad_alloc();
      return std::chrono::milliseconds(0);
    };
  }
  static std::string Saved(Map& map) { return MapFileText(map, map.fileName, true); }
  bool IsReported() const {
    return !Texts().empty() && Texts()[0].find("not enough memory") != std::string::npos;
  }
  void ExpectReport() {
    ASSERT_EQ(Texts().size(), 1U);
    EXPECT_EQ(Texts()[0],
              "There is not enough memory for this. It is given up, and your maps are as they "
              "were.");
    EXPECT_EQ(copiesBefore_, 1);
  }

  int copiesBefore_ = 0;  ///< 1 if copies were written before the message
};

TEST_F(OutOfMemory, ACommandIsGivenUpWithAMessageAfterTheCopies) {
  MapWindowWidget& window = OpenNew();
  shell_.Commands().Plug(CommandCheckTrails, [](ProgramWindow&) { throw std::bad_alloc(); });
  shell_.Commands().Run(CommandCheckTrails, window);
  ExpectReport();
}

/// The message said that the map was as before.
TEST_F(OutOfMemory, AChangeThatAWindowCantShowIsSaidToBeMade) {
  MapWindowWidget& window = OpenNew();
  shell_.History().Listen([](const EditNews&) { throw std::bad_alloc(); });
  shell_.Commands().Plug(CommandCheckTrails,
                         [&](ProgramWindow&) { AddComment(shell_, window.TheMap()); });
  shell_.Commands().Run(CommandCheckTrails, window);
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_EQ(Texts()[0],
            "The change is made, but there is not enough memory to show it in all windows.");
  EXPECT_EQ(window.TheMap().comments.size(), 1U);
  EXPECT_TRUE(window.isWindowModified());
  EXPECT_NE(shell_.History().UndoName(window.TheMap()), nullptr);
}

TEST_F(OutOfMemory, AMapThatDoesNotFitDoesNotOpen) {
  MapWindowWidget& window = OpenNew();
  dialogs_->paths = {WriteMap("site.map")};
  FailAt(2);
  shell_.Commands().Run(CommandOpenMap, window);
  ExpectReport();
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(FindMap(workspace_, folder_.Path("site.map")), nullptr);
  EXPECT_EQ(workspace_.progress, nullptr);
  around_.clock = {};
  messages_.Clear();
  EXPECT_NE(shell_.OpenFile(folder_.Path("site.map")), nullptr);
  EXPECT_TRUE(Texts().empty());
}

TEST_F(OutOfMemory, ASubmapLeavesNothingInTheMap) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  Map& map = window.TheMap();
  map.comments.emplace_back("# mine");
  const std::string before = Saved(map);
  std::string more = "T\tLoop\tTrail\nG\tFar\t1.02\t10.02\nP\tCamp\t5k\n";
  for (int i = 0; i < 2000; ++i) more += "# many lines\n";
  folder_.Write("more.map", more);
  int failures = 0;
  for (int look = 2; look < 8; ++look) {
    dialogs_->paths = {folder_.Path("more.map")};
    messages_.Clear();
    FailAt(look);
    shell_.Commands().Run(CommandImportSubmap, window);
    around_.clock = {};
    if (!IsReported()) break;
    ++failures;
    ExpectReport();
    EXPECT_EQ(Saved(map), before) << look;
    EXPECT_EQ(map.flags & MapUnlikeFile, 0U);
    window.grab();
  }
  EXPECT_GT(failures, 2);
  EXPECT_NE(Saved(map), before);
}

TEST_F(OutOfMemory, TracksAreAllTakenOrNone) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  Map& map = window.TheMap();
  const std::string before = Saved(map);
  std::string text = "name,date,a,b,lat,lon,alt\n";
  for (const std::string track : {"A", "B", "C"}) {
    text += track + ",2003-4-23 8:00,,,1.0,10.0,5\n" + track + ",2003-4-23 8:05,,,1.1,10.1,5\n";
  }
  dialogs_->paths = {folder_.Write("tracks.txt", text)};
  shell_.Commands().Run(CommandImportGis, window);
  auto* tracks = window.findChild<GisTrailWindow*>();
  ASSERT_NE(tracks, nullptr);
  QPushButton* take = nullptr;
  const auto buttons = tracks->findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->accessibleName() == QStringLiteral("OK to All")) take = button;
  }
  ASSERT_NE(take, nullptr);
  int failures = 0;
  for (int look = 1;; ++look, ++failures) {
    messages_.Clear();
    FailAt(look);
    take->click();
    if (!IsReported()) break;
    ExpectReport();
    EXPECT_EQ(Saved(map), before) << look;
    EXPECT_TRUE(tracks->isVisible());
  }
  EXPECT_GT(failures, 2);
  EXPECT_EQ(std::distance(map.trails.begin(), map.trails.end()), 4);
}

}  // namespace
}  // namespace orvane
