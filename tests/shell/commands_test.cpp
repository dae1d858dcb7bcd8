// Each command of the menu bar, by its key where it has one, else by its entry in the menu.

#include "mapfile/open_map.h"
#include "panes/trail_tree.h"
#include "shell/about_box.h"
#include "shell/comment_edit.h"
#include "shell/map/map_panes.h"
#include "shell/map/orientation_dialog.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/shell_case.h"
#include "support/field_model.h"
#include "support/temporary_folder.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <map>

namespace orvane {
namespace {

class CommandsTest : public ShellCase {
 protected:
  static void Pick(MapWindowWidget& window, CommandId id) { ActionOf(window, id).trigger(); }

  /// Runs `look` on the next dialog, and then closes it.
  template <typename Dialog>
  void WhenShown(std::function<void(Dialog&)> look) {
    QTimer::singleShot(0, [look = std::move(look)] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      look(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
  }
};

TEST_F(CommandsTest, EachMenuShowsItsCommandsWithTheirKeys) {
  MapWindowWidget& window = OpenNew();
  for (const CommandInfo& command : AllCommands()) {
    if (IsSubmenu(command.id)) continue;
    const QAction& action = ActionOf(window, command.id);
    EXPECT_EQ(action.shortcut().toString(QKeySequence::PortableText).toStdString(), command.key);
    EXPECT_EQ(action.isCheckable(), command.checkable) << command.text;
  }
}

TEST_F(CommandsTest, ACommandWithoutAHandlerIsDisabledAndBeepsIfReached) {
  MapWindowWidget& window = OpenNew();
  CommandDispatcher commands(around_, shell_.Guard());
  EXPECT_FALSE(commands.IsPlugged(CommandPrint));
  commands.Run(CommandPrint, window);
  EXPECT_EQ(beeps_, 1);
  window.Commands().Show(window.Menu(), [](CommandId id) { return id != CommandPrint; });
  EXPECT_FALSE(IsEnabled(window, CommandPrint));
  int printed = 0;
  shell_.Commands().Plug(CommandPrint, [&](ProgramWindow&) { ++printed; });
  window.RefreshMenu();
  EXPECT_TRUE(IsEnabled(window, CommandPrint));
  Press(window, CommandPrint);
  EXPECT_EQ(printed, 1);
  EXPECT_EQ(beeps_, 1);
}

TEST_F(CommandsTest, EachCommandIsReachedByItsEntryAndByItsKey) {
  MapWindowWidget& window = OpenNew();
  std::map<CommandId, int> runs;
  for (const CommandInfo& command : AllCommands()) {
    shell_.Commands().Plug(command.id, [&runs, id = command.id](ProgramWindow&) { ++runs[id]; });
  }
  for (const CommandInfo& command : AllCommands()) {
    if (IsSubmenu(command.id)) continue;
    window.Menu().At(command.id).enabled = true;
    window.ShowMenu();
    Pick(window, command.id);
    EXPECT_EQ(runs[command.id], 1) << command.text;
    // The key for help asks the window that has the focus for its page; see the tests of help.
    if (command.key.empty() || command.id == CommandHelp) continue;
    Press(window, command.id);
    EXPECT_EQ(runs[command.id], 2) << command.text;
    // A disabled one is not reached at all.
    window.Menu().At(command.id).enabled = false;
    window.ShowMenu();
    Press(window, command.id);
    Pick(window, command.id);
    EXPECT_EQ(runs[command.id], 2) << command.text;
  }
  EXPECT_EQ(beeps_, 0);
}

TEST_F(CommandsTest, AnUnknownNumberDoesNothing) {
  MapWindowWidget& window = OpenNew();
  shell_.Commands().Run(4711, window);
  EXPECT_EQ(beeps_, 0);
  EXPECT_TRUE(Texts().empty());
}

TEST_F(CommandsTest, NewMapOpensAnUntitledMap) {
  MapWindowWidget& window = OpenNew();
  Press(window, CommandNewMap);
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  MapWindowWidget& newest = *shell_.Windows().All().front();
  EXPECT_NE(&newest, &window);
  EXPECT_NE(&newest.TheMap(), &window.TheMap());
  EXPECT_TRUE(IsUntitled(newest.TheMap()));
}

TEST_F(CommandsTest, OpenMapAsksAndOpens) {
  MapWindowWidget& window = OpenNew();
  dialogs_->paths = {"", WriteMap("site.map")};
  Press(window, CommandOpenMap);
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
  Press(window, CommandOpenMap);
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  EXPECT_EQ(shell_.Windows().All()[0]->TheMap().fileName, folder_.Path("site.map"));
  EXPECT_EQ(dialogs_->questions[0].title, "Open Map...");
  EXPECT_EQ(dialogs_->questions[0].file.type, "map");
  EXPECT_EQ(dialogs_->questions[0].file.directory, folder_.Path());
  EXPECT_FALSE(dialogs_->questions[0].save);
}

TEST_F(CommandsTest, ADialogThatBreaksDownIsFatal) {
  MapWindowWidget& window = OpenNew();
  dialogs_->fails = true;
  Press(window, CommandOpenMap);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Error getting file name."}));
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Fatal);
}

TEST_F(CommandsTest, OpenBasisShowsTheBasisAndElseBeeps) {
  WriteMap("trails.map");
  MapWindowWidget& window = OpenActive(folder_.Write("season.map", "B\ttrails.map\n"));
  ASSERT_NE(window.TheMap().basis, nullptr);
  EXPECT_FALSE(IsEnabled(window, CommandSetBasis));
  Press(window, CommandOpenBasis);
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  EXPECT_EQ(&shell_.Windows().All()[0]->TheMap(), window.TheMap().basis);
  shell_.Commands().Run(CommandOpenBasis, *shell_.Windows().All()[0]);
  EXPECT_EQ(beeps_, 1);
  shell_.Commands().Run(CommandSetBasis, window);
  EXPECT_EQ(beeps_, 2);
}

TEST_F(CommandsTest, SetBasisFitsTheViewAndLeavesTheMapUnchanged) {
  MapWindowWidget& window = OpenNew();
  dialogs_->paths = {WriteMap("trails.map")};
  EXPECT_TRUE(IsEnabled(window, CommandSetBasis));
  Press(window, CommandSetBasis);
  ASSERT_NE(window.TheMap().basis, nullptr);
  EXPECT_EQ(window.TheMap().basis->fileName, folder_.Path("trails.map"));
  EXPECT_EQ(window.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(IsEnabled(window, CommandOpenBasis));
  EXPECT_FALSE(IsEnabled(window, CommandSetBasis));
  EXPECT_NEAR(window.Shown().centralLongitude, 10.005, 0.02);
  EXPECT_EQ(dialogs_->questions[0].title, "Open Map...");
}

TEST_F(CommandsTest, AMapNeverRestsOnItself) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {folder_.Path("site.map")};
  Press(window, CommandSetBasis);
  EXPECT_EQ(window.TheMap().basis, nullptr);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Can't open file " + folder_.Path("site.map")}));
}

TEST_F(CommandsTest, SaveIsOfferedOnceAMapHasChangedAndWritesIt) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindowWidget& second = OpenActive(folder_.Path("site.map"));
  EXPECT_FALSE(IsEnabled(window, CommandSave));
  AddComment(shell_, window.TheMap());
  EXPECT_TRUE(IsEnabled(window, CommandSave));
  EXPECT_TRUE(IsEnabled(second, CommandSave));
  EXPECT_TRUE(window.isWindowModified());
  window.TheMap().comments.emplace_back("# kept");
  Press(window, CommandSave);
  EXPECT_NE(folder_.Read("site.map").find("# kept"), std::string::npos);
  EXPECT_FALSE(IsEnabled(window, CommandSave));
  EXPECT_FALSE(IsEnabled(second, CommandSave));
  EXPECT_FALSE(window.isWindowModified());
}

TEST_F(CommandsTest, SaveAsTakesTheNewNameIntoTheTitleOfEachWindow) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindowWidget& second = OpenActive(folder_.Path("site.map"));
  dialogs_->paths = {folder_.Path("copy.map"), folder_.Path("simple.map")};
  Press(window, CommandSaveAs);
  EXPECT_EQ(window.windowTitle().toStdString(), "copy.map:1[*]");
  EXPECT_EQ(second.windowTitle().toStdString(), "copy.map:2[*]");
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("copy.map")));
  Pick(window, CommandSaveSimplyAs);
  EXPECT_EQ(window.windowTitle().toStdString(), "simple.map:1[*]");
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("simple.map")));
  EXPECT_EQ(dialogs_->questions[1].title, "Save copy.map as...");
}

TEST_F(CommandsTest, SaveAsArcViewWritesIntoTheChosenFolder) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::filesystem::create_directory(folder_.Path("out"));
  dialogs_->paths = {folder_.Path("out/points.shp")};
  Pick(window, CommandSaveAsArcView);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("out/points.shp")));
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("out/points.dbf")));
  EXPECT_EQ(dialogs_->questions[0].title, "Where should arcview files be placed?");
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Note);
  EXPECT_TRUE(messages_.Entries()[0].text.starts_with("Exported points")) << Texts()[0];
}

TEST_F(CommandsTest, ASubmapInAnEmptyMapPutsItInView) {
  MapWindowWidget& window = OpenActive(folder_.Write("empty.map", ""));
  dialogs_->paths = {
      folder_.Write("more.map", "T\tLoop\tTrail\nG\tFar\t1.02\t10.02\nG\tFarther\t1.03\t10.02\n")};
  Pick(window, CommandImportSubmap);
  MapWindow fitted = window.Shown();
  FitToMap(fitted);
  EXPECT_EQ(window.Shown().scale, fitted.scale);
}

TEST_F(CommandsTest, ImportSubmapAddsToTheMapAndLeavesItUnchanged) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {folder_.Write("more.map", "T\tLoop\tTrail\nG\tFar\t1.02\t10.02\nP\tCamp\n")};
  Pick(window, CommandImportSubmap);
  Map& map = window.TheMap();
  EXPECT_EQ(std::distance(map.trails.begin(), map.trails.end()), 2);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_FALSE(IsEnabled(window, CommandSave));
  for (Trail& trail : map.trails) EXPECT_NE(FindTrailRow(window.Shown(), trail), nullptr);
  EXPECT_EQ(dialogs_->questions[0].title, "Import Sub Map...");
}

TEST_F(CommandsTest, ASubmapThatBringsABasisTurnsTheMenu) {
  WriteMap("trails.map");
  MapWindowWidget& window = OpenActive(folder_.Write("site.map", "G\tTree\tN1\tE10\n"));
  EXPECT_TRUE(IsEnabled(window, CommandSetBasis));
  dialogs_->paths = {folder_.Write("more.map", "B\ttrails.map\nT\tLoop\tTrail\nP\tCamp\n")};
  Pick(window, CommandImportSubmap);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Imported 1 trail from " + folder_.Path("more.map")});
  Map* basis = window.TheMap().basis;
  ASSERT_NE(basis, nullptr);
  ASSERT_FALSE(basis->trails.empty());
  EXPECT_TRUE(IsEnabled(window, CommandOpenBasis));
  EXPECT_FALSE(IsEnabled(window, CommandSetBasis));
  EXPECT_NE(FindTrailRow(window.Shown(), basis->trails.front()), nullptr);
}

TEST_F(CommandsTest, WindowsOfMapsThatRestOnAMapShowItsNewBasis) {
  WriteMap("trails.map");
  folder_.Write("middle.map", "");
  MapWindowWidget& upper = OpenActive(folder_.Write("upper.map", "B\tmiddle.map\n"));
  MapWindowWidget& middle = shell_.Windows().Open(*upper.TheMap().basis);
  dialogs_->paths = {folder_.Path("trails.map")};
  Pick(middle, CommandSetBasis);
  Map* basis = middle.TheMap().basis;
  ASSERT_NE(basis, nullptr);
  for (MapWindowWidget* window : {&upper, &middle}) {
    EXPECT_NE(FindTrailRow(window->Shown(), basis->trails.front()), nullptr);
  }
  // Only the windows of the map itself are fitted to it.
  EXPECT_NEAR(middle.Shown().centralLongitude, 10.005, 0.02);
  EXPECT_NE(upper.Shown().scale, middle.Shown().scale);
}

TEST_F(CommandsTest, ADividerSetsOnlyItsOwnPreference) {
  MapWindowWidget& first = OpenNew();
  MapWindowWidget& second = OpenNew();
  Q_EMIT first.Panes().dividerMoved(PaneDivider::BetweenLists, 320);
  Q_EMIT second.Panes().dividerMoved(PaneDivider::BesideMap, 180);
  EXPECT_EQ(shell_.TheSettings().trailWidth, 180);
  EXPECT_EQ(shell_.TheSettings().trailHeight, 320);
  EXPECT_EQ(OpenNew().Panes().Sizes().panelWidth, 180);
}

TEST_F(CommandsTest, CutCopyAndPasteAreDisabledOverAMapAndDoNothing) {
  MapWindowWidget& window = OpenNew();
  for (const CommandId id : {CommandCut, CommandCopy, CommandPaste}) {
    EXPECT_FALSE(IsEnabled(window, id));
    shell_.Commands().Run(id, window);
  }
  EXPECT_EQ(beeps_, 0);
  EXPECT_TRUE(Texts().empty());
}

TEST_F(CommandsTest, CheckTrailsDependsOnTheFocus) {
  MapWindowWidget& window = OpenActive(folder_.Write(
      "site.map", "T\tA\tTrail\nG\tA10\t1.0\t10.0\nG\tA30\t1.0\t10.001\nG\tA20\t1.0\t10.002\n"));
  messages_.Clear();
  Press(window, CommandCheckTrails);
  const size_t all = Texts().size();
  EXPECT_GE(all, 1U);
  window.Panes().Ranges().Rows().setFocus();
  ASSERT_EQ(window.Focus(), FocusPlace::RangeList);
  EXPECT_FALSE(IsEnabled(window, CommandCheckTrails));
  shell_.Commands().Run(CommandCheckTrails, window);
  EXPECT_EQ(beeps_, 1);
  window.Panes().Trails().Rows().setFocus();
  messages_.Clear();
  shell_.Commands().Run(CommandCheckTrails, window);
  EXPECT_TRUE(Texts().empty());  // none is selected
  FindTrailRow(window.Shown(), window.TheMap().trails.front())->selected = true;
  window.RefreshMenu();
  Press(window, CommandCheckTrails);
  EXPECT_GE(Texts().size(), 1U);
}

TEST_F(CommandsTest, TheMenuFollowsTheFocus) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  window.Panes().Trails().Rows().setFocus();
  EXPECT_EQ(ActionOf(window, CommandDelete).text().toStdString(), "Delete Trail");
  EXPECT_FALSE(IsEnabled(window, CommandDelete));
  window.Panes().Ranges().Rows().setFocus();
  EXPECT_EQ(ActionOf(window, CommandDelete).text().toStdString(), "Delete Range");
  window.View().setFocus();
  EXPECT_EQ(ActionOf(window, CommandDelete).text().toStdString(), "Delete Trail/Range");
}

TEST_F(CommandsTest, TheDeviationIsStoredAndMarksTheMap) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  messages_.texts = {"-2.5\xB0", "two", std::nullopt};
  Press(window, CommandDeviation);
  EXPECT_EQ(messages_.shown[0], "0.000000\xB0");
  EXPECT_EQ(messages_.Questions()[0].title, "Magnetic Deviation");
  EXPECT_EQ(messages_.Questions()[0].text, "What is the local magnetic deviation?");
  EXPECT_EQ(window.TheMap().magneticDeviation, -2.5);
  EXPECT_EQ(window.TheMap().flags & MapHasDeviation, 0U);
  EXPECT_TRUE(IsEnabled(window, CommandSave));
  Press(window, CommandDeviation);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Bad number"}));
  Press(window, CommandDeviation);
  EXPECT_EQ(window.TheMap().magneticDeviation, -2.5);
  EXPECT_EQ(Texts().size(), 1U);
}

TEST_F(CommandsTest, TheDeviationOfAnInstalledFieldModelIsOffered) {
  const TemporaryFolder models;
  FieldModelWriter::Write(models, "tiny", 1900, 2100, 30000, 3000);
  qputenv("GEOGRAPHICLIB_MAGNETIC_PATH", models.Path().c_str());
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  messages_.texts = {std::nullopt};
  Press(window, CommandDeviation);
  qputenv("GEOGRAPHICLIB_MAGNETIC_PATH", "/nowhere");
  EXPECT_EQ(messages_.shown[0], "0.000000\xB0") << "the field holds what the map has";
  const std::string& text = messages_.Questions()[0].text;
  EXPECT_EQ(text.rfind("What is the local magnetic deviation?\nThe field model tiny gives ", 0), 0U)
      << text;
  EXPECT_EQ(window.TheMap().magneticDeviation, 0);
}

TEST_F(CommandsTest, ZoomInAndOutDoubleAndHalveAboutTheMiddle) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindow& view = window.Shown();
  const float scale = view.scale;
  const LatLon middle = ScreenToMap(view, {view.centerColumn, view.centerRow});
  Press(window, CommandZoomIn);
  EXPECT_FLOAT_EQ(view.scale, 2 * scale);
  Press(window, CommandZoomOut);
  Press(window, CommandZoomOut);
  EXPECT_FLOAT_EQ(view.scale, scale / 2);
  const LatLon after = ScreenToMap(view, {view.centerColumn, view.centerRow});
  const double pixel = 1 / (static_cast<double>(view.scale) * 111120);  // degrees
  EXPECT_NEAR(after.lat, middle.lat, 2 * pixel);
  EXPECT_NEAR(after.lon, middle.lon, 2 * pixel);
}

TEST_F(CommandsTest, ChangeZoomAsksAgainUntilTheAnswerIsAScale) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindow& view = window.Shown();
  view.scale = 0.5F;
  messages_.texts = {"fast", "1px = 4m", std::nullopt};
  Press(window, CommandChangeZoom);
  EXPECT_EQ(beeps_, 1);
  EXPECT_FLOAT_EQ(view.scale, 0.25F);
  EXPECT_EQ(messages_.shown[0], "1px = 2m");
  EXPECT_EQ(messages_.Questions()[0].title, "Set Scale");
  EXPECT_EQ(messages_.Questions()[0].text,
            "Set the scale (zoom) factor\nExpressed as meters per pixel");
  Press(window, CommandChangeZoom);
  EXPECT_FLOAT_EQ(view.scale, 0.25F);
}

TEST_F(CommandsTest, FindMovesToThePlaceOrReportsThatThereIsNone) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  messages_.texts = {"Hill", "Nowhere", std::nullopt};
  Press(window, CommandFind);
  MapWindow& view = window.Shown();
  EXPECT_NEAR(ScreenToMap(view, {view.centerColumn, view.centerRow}).lat, 1.01, 1e-4);
  EXPECT_NE(view.flags & MapWindowFindMarker, 0U);
  EXPECT_EQ(messages_.Questions()[0].title, "Find");
  EXPECT_EQ(messages_.Questions()[0].text, "Find what?");
  Press(window, CommandFind);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Can't find Nowhere"}));
  Press(window, CommandFind);
  EXPECT_EQ(Texts().size(), 1U);
}

TEST_F(CommandsTest, HideInfoAndHideGridsTurnTheirFlagsAndMarks) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QApplication::processEvents();
  MapWindow& view = window.Shown();
  ASSERT_NE(view.flags & MapWindowInfoShown, 0U);
  EXPECT_FALSE(ActionOf(window, CommandHideInfo).isChecked());
  Press(window, CommandHideInfo);
  EXPECT_EQ(view.flags & MapWindowInfoShown, 0U);
  EXPECT_TRUE(ActionOf(window, CommandHideInfo).isChecked());
  Press(window, CommandHideInfo);
  EXPECT_NE(view.flags & MapWindowInfoShown, 0U);
  Pick(window, CommandHideGrids);
  EXPECT_NE(view.flags & MapWindowGridsHidden, 0U);
  EXPECT_TRUE(ActionOf(window, CommandHideGrids).isChecked());
  Pick(window, CommandHideGrids);
  EXPECT_EQ(view.flags & MapWindowGridsHidden, 0U);
}

TEST_F(CommandsTest, TheFormOfPositionsIsOneOfFour) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  const CommandId forms[] = {CommandDegrees, CommandMinutes, CommandSeconds, CommandUtm};
  for (int i = 0; i < 4; ++i) {
    Pick(window, forms[i]);
    Pick(window, forms[i]);  // picked again it stays
    EXPECT_EQ(static_cast<int>(window.Shown().coordinateDisplay), i);
    for (int j = 0; j < 4; ++j) EXPECT_EQ(ActionOf(window, forms[j]).isChecked(), i == j);
  }
}

TEST_F(CommandsTest, EuropeanDatesAreMarkedInAllWindows) {
  MapWindowWidget& window = OpenNew();
  MapWindowWidget& second = OpenNew();
  Pick(window, CommandEuropeanDates);
  EXPECT_TRUE(workspace_.preferences.europeanDates);
  EXPECT_TRUE(ActionOf(second, CommandEuropeanDates).isChecked());
  Pick(second, CommandEuropeanDates);
  EXPECT_FALSE(workspace_.preferences.europeanDates);
  EXPECT_FALSE(ActionOf(window, CommandEuropeanDates).isChecked());
}

TEST_F(CommandsTest, SetOrientationTurnsTheView) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  WhenShown<OrientationDialog>([](OrientationDialog& dialog) {
    dialog.Field().setText(QStringLiteral("45"));
    dialog.accept();
  });
  Pick(window, CommandOrientation);
  EXPECT_FLOAT_EQ(window.Shown().rotation, 45);
}

TEST_F(CommandsTest, AboutShowsTheCreditsOfTheMap) {
  MapWindowWidget& window =
      OpenActive(folder_.Write("site.map", "\xA9 2003 A. Field\n\xA9 B. Forest\n"));
  QStringList credits;
  WhenShown<AboutBox>([&](AboutBox& box) {
    const auto labels = box.findChildren<QLabel*>(QStringLiteral("credit"));
    for (const QLabel* label : labels) credits.append(label->text());
  });
  Pick(window, CommandAbout);
  EXPECT_EQ(credits, (QStringList{QStringLiteral("2003 A. Field"), QStringLiteral("B. Forest")}));
}

TEST_F(CommandsTest, AboutIsAsWideAsItsCreditsButNotAsTheScreen) {
  MapWindowWidget& plain = OpenActive(WriteMap("plain.map"));
  MapWindowWidget& wide =
      OpenActive(folder_.Write("wide.map", "\xA9 " + std::string(60, 'm') + "\n"));
  std::string words;
  for (int i = 0; i < 150; ++i) words += "many ";
  MapWindowWidget& widest = OpenActive(folder_.Write("widest.map", "\xA9 " + words + "\n"));
  std::vector<QSize> sizes;
  for (MapWindowWidget* window : {&plain, &wide, &widest}) {
    WhenShown<AboutBox>([&](AboutBox& box) { sizes.push_back(box.size()); });
    Pick(*window, CommandAbout);
  }
  ASSERT_EQ(sizes.size(), 3U);
  EXPECT_LT(sizes[0].width(), sizes[1].width());
  EXPECT_LT(sizes[2].width(), widest.screen()->availableSize().width());
  EXPECT_GT(sizes[2].height(), sizes[1].height());  // its line is broken
}

TEST_F(CommandsTest, ShowWholeMapBringsEveryPointIntoView) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindow& view = window.Shown();
  view.scale = 100;
  CenterOn(view, LatLon{.lat = 5, .lon = 50});
  Press(window, CommandShowWholeMap);
  EXPECT_FALSE(ViewOutOfWindow(view, MapToScreen(view, {.lat = 1, .lon = 10})));
  EXPECT_FALSE(ViewOutOfWindow(view, MapToScreen(view, {.lat = 1.01, .lon = 10.01})));
}

TEST_F(CommandsTest, FullScreenSwitchesOnAndOff) {
  MapWindowWidget& window = OpenNew();
  Press(window, CommandFullScreen);
  EXPECT_TRUE(window.isFullScreen());
  EXPECT_TRUE(ActionOf(window, CommandFullScreen).isChecked());
  Press(window, CommandFullScreen);
  EXPECT_FALSE(window.isFullScreen());
  EXPECT_FALSE(ActionOf(window, CommandFullScreen).isChecked());
}

TEST_F(CommandsTest, FullScreenIsMarkedHoweverItWasTurnedOn) {
  MapWindowWidget& window = OpenNew();
  window.setWindowState(Qt::WindowFullScreen);
  EXPECT_TRUE(ActionOf(window, CommandFullScreen).isChecked());
  window.setWindowState(Qt::WindowNoState);
  EXPECT_FALSE(ActionOf(window, CommandFullScreen).isChecked());
}

TEST_F(CommandsTest, TheMapIsCopiedAsAnImageOfItsView) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  Press(window, CommandCopyImage);
  const QImage image = QApplication::clipboard()->image();
  const MapWindow& view = window.Shown();
  EXPECT_EQ(image.size(), QSize(view.clientWidth, view.clientHeight));
  int drawn = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) drawn += (image.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF;
  }
  EXPECT_GT(drawn, 20);
}

TEST_F(CommandsTest, ThePictureIsSavedInTheFormatOfItsName) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {folder_.Path("a.svg"), folder_.Path("b.png"), folder_.Path("c.xyz"), ""};
  for (int i = 0; i < 4; ++i) Press(window, CommandSavePicture);
  EXPECT_EQ(folder_.Read("a.svg").substr(0, 5), "<?xml");
  EXPECT_EQ(folder_.Read("b.png").substr(1, 3), "PNG");
  EXPECT_EQ(Texts().size(), 1U);  // what c.xyz is, nobody knows
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("c.xyz")));
  EXPECT_EQ(dialogs_->questions[0].file.name, "site.png");
  EXPECT_EQ(dialogs_->questions[1].file.name, "site.svg");
}

TEST_F(CommandsTest, RecentMapsAreListedAndOpen) {
  shell_.TheSettings().ownDirectory = folder_.Path();
  OpenActive(WriteMap("one.map"));
  MapWindowWidget& window = OpenActive(WriteMap("two.map"));
  QMenu& menu = window.Commands().MenuOf(CommandRecentMaps);
  Q_EMIT menu.aboutToShow();
  ASSERT_EQ(menu.actions().size(), 2);
  EXPECT_TRUE(menu.actions()[0]->text().endsWith(QStringLiteral("two.map")));
  menu.actions()[1]->trigger();
  ASSERT_EQ(shell_.Windows().All().size(), 3U);
  EXPECT_EQ(shell_.Windows().All()[0]->TheMap().fileName, folder_.Path("one.map"));
  EXPECT_EQ(folder_.Read("Orvane.recent"),
            folder_.Path("one.map") + "\n" + folder_.Path("two.map") + "\n");
}

TEST_F(CommandsTest, AMapThatWasSavedIsARecentOne) {
  MapWindowWidget& window = OpenActive(WriteMap("one.map"));
  dialogs_->paths = {folder_.Path("copy.map")};
  Press(window, CommandSaveAs);
  EXPECT_EQ(shell_.Maps().Recent(),
            (std::vector<std::string>{folder_.Path("copy.map"), folder_.Path("one.map")}));
}

TEST_F(CommandsTest, FindKnowsANameOfAnOldMapThatIsTypedInUtf8) {
  MapWindowWidget& window =
      OpenActive(folder_.Write("old.map", "G\tR\xEDo\tN1\tE10\nG\tFar\tN3\tE12\n"));
  messages_.texts = {"R\xC3\xADo", "\xC3\xADo"};
  Press(window, CommandFind);
  EXPECT_TRUE(Texts().empty());
  EXPECT_NEAR(window.Shown().centralLongitude, 10, 1e-6);
  Press(window, CommandFind);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Can't find \xC3\xADo"}));
}

TEST_F(CommandsTest, TheWindowListBringsAWindowToTheFront) {
  MapWindowWidget& first = OpenActive(WriteMap("one.map"));
  MapWindowWidget& second = OpenActive(WriteMap("two.map"));
  QMenu& menu = second.Commands().MenuOf(CommandWindowList);
  for (int i = 0; i < 2; ++i) Q_EMIT menu.aboutToShow();  // opened twice it is no longer
  QList<QAction*> entries;
  const auto actions = menu.actions();
  for (QAction* action : actions) {
    if (action->objectName() == QStringLiteral("listEntry")) entries.append(action);
  }
  ASSERT_EQ(entries.size(), 2);
  EXPECT_TRUE(entries[0]->text().endsWith(QStringLiteral("one.map")));
  EXPECT_TRUE(entries[1]->isChecked());
  entries[0]->trigger();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&first));
}

TEST_F(CommandsTest, WindowsOnOneMapAreNumbered) {
  MapWindowWidget& first = OpenActive(WriteMap("site.map"));
  MapWindowWidget& other = OpenActive(WriteMap("other.map"));
  EXPECT_EQ(first.windowTitle().toStdString(), "site.map[*]");
  MapWindowWidget& second = OpenActive(folder_.Path("site.map"));
  MapWindowWidget& third = OpenActive(folder_.Path("site.map"));
  EXPECT_EQ(first.windowTitle().toStdString(), "site.map:1[*]");
  EXPECT_EQ(second.windowTitle().toStdString(), "site.map:2[*]");
  EXPECT_EQ(third.windowTitle().toStdString(), "site.map:3[*]");
  EXPECT_EQ(other.windowTitle().toStdString(), "other.map[*]");
  second.TryClose();
  DeliverDeletes();
  EXPECT_EQ(third.windowTitle().toStdString(), "site.map:3[*]");  // a number stays
  MapWindowWidget& fourth = OpenActive(folder_.Path("site.map"));
  EXPECT_EQ(fourth.windowTitle().toStdString(), "site.map:2[*]");
  QMenu& menu = first.Commands().MenuOf(CommandWindowList);
  Q_EMIT menu.aboutToShow();
  QStringList names;
  const auto actions = menu.actions();
  for (const QAction* action : actions) {
    if (action->objectName() == QStringLiteral("listEntry")) names << action->text().mid(4);
  }
  EXPECT_EQ(names, (QStringList{"site.map:1", "other.map", "site.map:3", "site.map:2"}));
  third.TryClose();
  fourth.TryClose();
  DeliverDeletes();
  EXPECT_EQ(first.windowTitle().toStdString(), "site.map[*]");
}

TEST_F(CommandsTest, ARecentMapThatIsGoneIsOfferedForRemoval) {
  shell_.TheSettings().ownDirectory = folder_.Path();
  OpenActive(WriteMap("one.map")).TryClose();
  MapWindowWidget& window = OpenActive(WriteMap("two.map"));
  std::filesystem::rename(folder_.Path("one.map"), folder_.Path("gone.map"));
  workspace_.maps.remove_if(
      [&](const Map& map) { return map.fileName == folder_.Path("one.map"); });
  QMenu& menu = window.Commands().MenuOf(CommandRecentMaps);
  messages_.answers = {2, 1};
  for (const size_t left : {2U, 1U}) {
    Q_EMIT menu.aboutToShow();
    menu.actions()[1]->trigger();
    EXPECT_EQ(shell_.Windows().All().size(), 1U);
    EXPECT_EQ(shell_.Maps().Recent().size(), left);
  }
  EXPECT_EQ(messages_.Questions()[0].text,
            folder_.Path("one.map") + " is not there any more. Remove it from the list?");
  EXPECT_EQ(messages_.Questions()[0].buttons, (std::vector<std::string>{"Remove", "Keep", ""}));
  EXPECT_EQ(folder_.Read("Orvane.recent"), folder_.Path("two.map") + "\n");
}

TEST_F(CommandsTest, FileDialogsBeginInTheFolderOfTheMap) {
  std::filesystem::create_directory(folder_.Path("season"));
  WriteMap("season/site.map");
  MapWindowWidget& window = OpenActive(folder_.Path("season/site.map"));
  for (const CommandId id : {CommandOpenMap, CommandImportGis, CommandSavePicture,
                             CommandSaveAsArcView, CommandSaveAs}) {
    shell_.Commands().Run(id, window);
    EXPECT_EQ(dialogs_->questions.back().file.directory, folder_.Path("season")) << id;
  }
  MapWindowWidget& scratch = OpenNew();
  shell_.Maps().Files() = {};
  shell_.Commands().Run(CommandOpenMap, scratch);
  EXPECT_EQ(dialogs_->questions.back().file.directory, folder_.Path());
}

TEST_F(CommandsTest, LinesAreSmoothUntilTheUserTurnsThatOff) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  MapWindowWidget& second = OpenActive(WriteMap("other.map"));
  window.Shown().rotation = 20;  // so that its line is not at 45 degrees
  Press(window, CommandShowWholeMap);
  const auto grays = [&] {
    QApplication::processEvents();
    const QImage image = window.View().grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        const bool isMixed = color.red() > 0x40 && color.red() < 0xF0;
        count += isMixed && color.red() == color.green() ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_TRUE(ActionOf(window, CommandSmoothLines).isChecked());
  const int smooth = grays();
  Pick(window, CommandSmoothLines);
  EXPECT_FALSE(ActionOf(window, CommandSmoothLines).isChecked());
  EXPECT_FALSE(ActionOf(second, CommandSmoothLines).isChecked());
  EXPECT_LT(grays(), smooth / 2);
  Pick(second, CommandSmoothLines);
  EXPECT_TRUE(ActionOf(window, CommandSmoothLines).isChecked());
  EXPECT_EQ(grays(), smooth);
}

}  // namespace
}  // namespace orvane
