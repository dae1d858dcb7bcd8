// Reading a map again: by the command, and where a window offers it.

#include "panes/pane_clicks.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"
#include "shell/comment_edit.h"
#include "shell/map/map_panes.h"
#include "shell/map/reload_bar.h"
#include "shell/reload_commands.h"
#include "shell/shell_case.h"
#include "view/view_transform.h"

#include <QLabel>
#include <QPushButton>

#include <chrono>
#include <filesystem>
#include <new>

namespace orvane {
namespace {

class ReloadTest : public ShellCase {
 protected:
  /// The bar of a window shows this; empty if there is none.
  static QString OfferOf(MapWindowWidget& window) {
    const auto* text = window.Offer().findChild<QLabel*>(QStringLiteral("reloadText"));
    return window.Offer().isVisible() ? text->text() : QString();
  }
  bool WaitForOffer(MapWindowWidget& window) {
    return QTest::qWaitFor([&] { return !OfferOf(window).isEmpty(); }, 10000);
  }
  void WriteLater(const std::string& name, const std::string& trail) const {
    folder_.Write(name, "T\t" + trail + "\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.6'\tE10 0.6'\n");
  }
  static std::string FirstTrail(const Map& map) { return map.trails.front().name.value_or(""); }
  static void Click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
};

TEST_F(ReloadTest, TheCommandReadsTheFileAgainAndKeepsTheView) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindow& view = window.Shown();
  TrailPanelRow& group = view.trailViews.front();
  group.open = true;
  group.children.front().selected = true;
  view.scale = 2;
  CenterOn(view, LatLon{.lat = 1.003, .lon = 10.004});
  folder_.Write("site.map",
                "T\tNew\tTrail\nG\tFar\tN3\tE12\nT\tRidge\tTrail\nG\tCamp\tN1\tE10\n"
                "G\tHill\tN1 0.6'\tE10 0.6'\n");
  Press(window, CommandReload);
  EXPECT_EQ(std::distance(window.TheMap().trails.begin(), window.TheMap().trails.end()), 2);
  EXPECT_FLOAT_EQ(view.scale, 2);
  EXPECT_NEAR(view.centralLongitude, 10.004, 1e-9);
  const TrailPanelRow& now = view.trailViews.front();
  EXPECT_TRUE(now.open);
  ASSERT_EQ(now.children.size(), 2U);
  EXPECT_FALSE(now.children.front().selected);
  EXPECT_TRUE(now.children.back().selected);
  EXPECT_EQ(now.children.back().trail->name, "Ridge");
  window.grab();  // drawing uses nothing that was deleted
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(ReloadTest, ChangesAreDroppedAfterAQuestion) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  AddComment(shell_, window.TheMap());
  messages_.answers = {1, 2};
  Press(window, CommandReload);
  EXPECT_EQ(window.TheMap().comments.size(), 1U);
  Press(window, CommandReload);
  EXPECT_TRUE(window.TheMap().comments.empty());
  EXPECT_FALSE(window.isWindowModified());
  EXPECT_FALSE(IsEnabled(window, CommandSave));
}

TEST_F(ReloadTest, WindowsOnAMapThatBecomesTheBasisFollow) {
  MapWindowWidget& other = OpenActive(WriteMap("other.map"));
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  AddComment(shell_, other.TheMap());
  folder_.Write("site.map", "B\tother.map\nT\tLoop\tTrail\nG\tFar\tN1\tE10\n");
  messages_.answers = {2};
  Press(window, CommandReload);
  ASSERT_EQ(window.TheMap().basis, &other.TheMap());
  EXPECT_EQ(other.Shown().trailViews.front().children.front().trail,
            &other.TheMap().trails.front());
  other.grab();
}

// The step holds the large map after Undo, and the small one after Redo.
TEST_F(ReloadTest, TheMemoryOfAReloadIsThatOfWhatItHolds) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::string large = "T\tRidge\tTrail\n";
  for (int i = 0; i < 2000; ++i) large += "G\tP" + std::to_string(i) + "\tN1\tE10\n";
  folder_.Write("site.map", large);
  Press(window, CommandReload);
  const size_t small = shell_.History().Bytes();
  ASSERT_TRUE(shell_.History().Undo(window.TheMap()));
  EXPECT_GT(shell_.History().Bytes(), small + 2000 * sizeof(Point));
  ASSERT_TRUE(shell_.History().Redo(window.TheMap()));
  EXPECT_EQ(shell_.History().Bytes(), small);
}

TEST_F(ReloadTest, AReloadThatFailsKeepsTheSteps) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  AddComment(shell_, window.TheMap());
  std::filesystem::remove(folder_.Path("site.map"));
  messages_.answers = {2};
  Press(window, CommandReload);
  ASSERT_EQ(window.TheMap().comments.size(), 1U);
  EXPECT_TRUE(shell_.History().Undo(window.TheMap()));
  EXPECT_TRUE(window.TheMap().comments.empty());
}

TEST_F(ReloadTest, AnImportedSubmapCountsAsAChange) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {folder_.Write("more.map", "T\tLoop\tTrail\nG\tFar\tN1\tE10\n")};
  shell_.Commands().Run(CommandImportSubmap, window);
  messages_.answers = {1};
  Press(window, CommandReload);
  EXPECT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(std::distance(window.TheMap().trails.begin(), window.TheMap().trails.end()), 2);
}

/// Selects the only trail of `holder`, as `window` shows it, and gives it another colour.
void Recolor(MapWindowWidget& window, const Map& holder, EditHistory& history) {
  ClearTrailSelection(window.Shown());
  FindTrailRow(window.Shown(), holder.trails.front())->selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(window.Shown());
  dialog.color = "red";
  EXPECT_TRUE(ApplyTrailVisibility(window.Shown(), dialog, history));
}

TEST_F(ReloadTest, AStyleOfATrailCountsAsAChangeOfItsMap) {
  WriteMap("base.map");
  MapWindowWidget& season =
      OpenActive(folder_.Write("season.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\n"));
  Map& base = *season.TheMap().basis;
  Recolor(season, base, shell_.History());
  EXPECT_EQ(season.TheMap().flags & (MapDirty | MapUnlikeFile), 0U);
  EXPECT_EQ(base.flags & (MapDirty | MapUnlikeFile), MapUnlikeFile);
  shell_.History().Undo(base);
  EXPECT_EQ(base.flags & (MapDirty | MapUnlikeFile), 0U);

  Recolor(season, season.TheMap(), shell_.History());
  EXPECT_FALSE(season.isWindowModified());
  messages_.answers = {1};
  Press(season, CommandReload);
  EXPECT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(season.TheMap().trails.front().color, 0xff0000);
  // The map above is not like its file, so it is read again as it is.
  WriteLater("base.map", "Valley");
  EXPECT_TRUE(ReloadMap(shell_, base));
  EXPECT_EQ(season.TheMap().trails.front().color, 0xff0000);
}

TEST_F(ReloadTest, WindowsOnMapsAboveAndBelowFollow) {
  WriteMap("base.map");
  MapWindowWidget& season =
      OpenActive(folder_.Write("season.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\n"));
  MapWindowWidget& base = shell_.Windows().Open(*season.TheMap().basis);
  WriteLater("base.map", "Valley");
  EXPECT_TRUE(ReloadMap(shell_, base.TheMap()));
  for (MapWindowWidget* window : {&season, &base}) {
    const Trail& valley = base.TheMap().trails.front();
    EXPECT_EQ(valley.name, "Valley");
    EXPECT_NE(FindTrailRow(window->Shown(), valley), nullptr);
    window->grab();
  }
}

TEST_F(ReloadTest, AFileThatIsGoneLeavesTheWindowAsItWas) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::filesystem::remove(folder_.Path("site.map"));
  Press(window, CommandReload);
  EXPECT_EQ(FirstTrail(window.TheMap()), "Ridge");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Can't open file " + folder_.Path("site.map")}));
  window.grab();
}

TEST_F(ReloadTest, ANewMapHasNothingToReload) {
  MapWindowWidget& window = OpenNew();
  EXPECT_FALSE(IsEnabled(window, CommandReload));
}

TEST_F(ReloadTest, WithoutMemoryTheMapStaysAndTheProgramSaysSo) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  WriteLater("site.map", "Valley");
  around_.clock = []() -> std::chrono::milliseconds { throw std::bad_alloc(); };
  Press(window, CommandReload);
  around_.clock = {};
  EXPECT_EQ(FirstTrail(window.TheMap()), "Ridge");
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_NE(Texts()[0].find("not enough memory"), std::string::npos);
  window.grab();
}

TEST_F(ReloadTest, AWindowOffersToReloadWhatChangedOnTheDisk) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QTest::qWait(500);  // the file is watched
  EXPECT_EQ(OfferOf(window), QString());
  WriteLater("site.map", "Valley");
  ASSERT_TRUE(WaitForOffer(window));
  EXPECT_EQ(OfferOf(window), QStringLiteral("site.map has changed on the disk."));
  EXPECT_EQ(FirstTrail(window.TheMap()), "Ridge");
  Click(window.Offer().ReloadButton());
  EXPECT_EQ(FirstTrail(window.TheMap()), "Valley");
  EXPECT_EQ(OfferOf(window), QString());
}

TEST_F(ReloadTest, AReplacedFileIsSeenAsWell) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QTest::qWait(500);
  for (const std::string trail : {"Valley", "Slope"}) {
    WriteLater("next.map", trail);
    std::filesystem::rename(folder_.Path("next.map"), folder_.Path("site.map"));
    ASSERT_TRUE(WaitForOffer(window)) << trail;
    Click(window.Offer().ReloadButton());
    EXPECT_EQ(FirstTrail(window.TheMap()), trail);
  }
}

TEST_F(ReloadTest, NotNowLeavesItUntilTheNextChange) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QTest::qWait(500);
  WriteLater("site.map", "Valley");
  ASSERT_TRUE(WaitForOffer(window));
  Click(window.Offer().DeclineButton());
  EXPECT_EQ(OfferOf(window), QString());
  WriteLater("site.map", "A longer name");
  ASSERT_TRUE(WaitForOffer(window));
  EXPECT_EQ(FirstTrail(window.TheMap()), "Ridge");
}

TEST_F(ReloadTest, OpenedAgainAfterAChangeTheWindowOffersToReload) {
  const std::string path = WriteMap("site.map");
  MapWindowWidget& first = OpenActive(path);
  AddComment(shell_, first.TheMap());
  messages_.answers = {3};  // don't save
  first.TryClose();
  DeliverDeletes();
  WriteLater("site.map", "Valley");
  MapWindowWidget& second = OpenActive(path);
  EXPECT_EQ(FirstTrail(second.TheMap()), "Ridge");
  ASSERT_TRUE(WaitForOffer(second));
  // The changes of the first window are still there, so there is a question.
  messages_.answers = {1, 2};
  Click(second.Offer().ReloadButton());
  EXPECT_FALSE(OfferOf(second).isEmpty());
  Click(second.Offer().ReloadButton());
  EXPECT_EQ(FirstTrail(second.TheMap()), "Valley");
}

TEST_F(ReloadTest, ANewBasisOnTheDiskIsOfferedByTheWindowsAboveIt) {
  WriteMap("base.map");
  MapWindowWidget& season = OpenActive(folder_.Write("season.map", "B\tbase.map\n"));
  QTest::qWait(500);
  WriteLater("base.map", "Valley");
  ASSERT_TRUE(WaitForOffer(season));
  EXPECT_EQ(OfferOf(season),
            QStringLiteral("base.map, on which this map rests, has changed on the disk."));
  Click(season.Offer().ReloadButton());
  EXPECT_EQ(FirstTrail(*season.TheMap().basis), "Valley");
}

TEST_F(ReloadTest, AnIncludedFileThatChangedIsOffered) {
  // In another folder, which is watched only for this file.
  std::filesystem::create_directory(folder_.Path("parts"));
  const std::string part = WriteMap("parts/part.map");
  MapWindowWidget& window = OpenActive(folder_.Write("site.map", "I" + part + "\n"));
  QTest::qWait(500);
  EXPECT_EQ(OfferOf(window), QString());
  WriteLater("parts/next.map", "Valley");
  std::filesystem::rename(folder_.Path("parts/next.map"), part);
  ASSERT_TRUE(WaitForOffer(window));
  EXPECT_EQ(OfferOf(window),
            QStringLiteral("part.map, which this map includes, has changed on the disk."));
  Click(window.Offer().ReloadButton());
  EXPECT_EQ(FirstTrail(window.TheMap()), "Valley");
  EXPECT_EQ(OfferOf(window), QString());
}

TEST_F(ReloadTest, ItsOwnSaveIsNoNews) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QTest::qWait(500);
  AddComment(shell_, window.TheMap());
  Press(window, CommandSave);
  QTest::qWait(1000);
  EXPECT_EQ(OfferOf(window), QString());
}

}  // namespace
}  // namespace orvane
