// The preferences in the start and the end of the program.

#include "shell/preferences_file.h"

#include "shell/comment_edit.h"
#include "shell/shell_case.h"
#include "support/working_folder.h"
#include "view/scale_text.h"

#include <QStandardPaths>

#include <filesystem>

namespace orvane {
namespace {

class PreferencesFileTest : public ShellCase {
 protected:
  PreferencesFileTest() { program_.KeepPreferencesIn(own_.Path("own")); }

  std::string Stored() const { return own_.Read("own/Orvane.prf"); }

  TemporaryFolder own_;
};

TEST_F(PreferencesFileTest, TheDirectoryIsMade) {
  EXPECT_EQ(shell_.TheSettings().ownDirectory, own_.Path("own"));
  EXPECT_TRUE(std::filesystem::is_directory(own_.Path("own")));
  EXPECT_FALSE(std::filesystem::exists(own_.Path("own/Orvane.prf")));
}

TEST_F(PreferencesFileTest, WithoutAFileAMapIsAskedFor) {
  program_.Start({});
  ASSERT_EQ(dialogs_->questions.size(), 1U);
  EXPECT_EQ(dialogs_->questions[0].title, "Open Map...");
  EXPECT_TRUE(Texts().empty());
}

TEST_F(PreferencesFileTest, AllWindowsComeBackAndTheOldestAsItWas) {
  const std::string first = WriteMap("first.map");
  const std::string second = WriteMap("second.map");
  own_.Write("own/Orvane.prf", "TrailWidth=150\r\nDefaultMap=" + second + "\r\nScale=9\r\n" +
                                   "DefaultMap=" + first +
                                   "\r\nCenterLon=10.005\r\nCenterLat=1.005\r\nScale=0.25\r\n"
                                   "HideGrid=1\r\nRotate=90\r\n");
  program_.Start({});
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  MapWindowWidget& oldest = *shell_.Windows().All()[1];
  MapWindowWidget& newest = *shell_.Windows().All()[0];
  EXPECT_EQ(oldest.TheMap().fileName, second);
  EXPECT_EQ(newest.TheMap().fileName, first);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&newest));
  const MapWindow& view = newest.Shown();
  EXPECT_EQ(view.scale, 0.25F);
  EXPECT_EQ(view.rotation, 90);
  EXPECT_EQ(view.centralLongitude, 10.005);
  EXPECT_NE(view.flags & MapWindowGridsHidden, 0U);
  EXPECT_TRUE(newest.Menu().At(CommandHideGrids).checked);
  // The other is fitted to its data.
  EXPECT_NE(oldest.Shown().scale, 9);
  EXPECT_EQ(oldest.Shown().rotation, 0);
  EXPECT_EQ(shell_.TheSettings().trailWidth, 150);
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(PreferencesFileTest, AFileOfTheCommandLineKeepsTheLastMapAway) {
  const std::string given = WriteMap("given.map");
  const std::string before = WriteMap("before.map");
  const std::string last = WriteMap("last.map");
  own_.Write("own/Orvane.prf",
             "DefaultMap=" + before + "\nDefaultMap=" + last + "\nScale=0.5\nEuropeanDates=1\n");
  program_.Start({given});
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  EXPECT_EQ(shell_.Windows().All()[0]->TheMap().fileName, before);
  EXPECT_EQ(shell_.Windows().All()[1]->TheMap().fileName, given);
  EXPECT_TRUE(shell_.Windows().All()[1]->Menu().At(CommandEuropeanDates).checked);
  // It takes its view when the user opens it later, every time.
  for (int i = 0; i < 2; ++i) {
    MapWindowWidget& window = OpenActive(last);
    EXPECT_EQ(window.Shown().scale, 0.5F);
    Press(window, CommandZoomIn);
  }
}

TEST_F(PreferencesFileTest, AMapOpenedByAShortNameComesBackAfterARestartElsewhere) {
  WriteMap("trails.map");
  WriteMap("season.map");
  std::filesystem::create_directory(folder_.Path("sub"));
  for (const char* name : {"season.map", "./season.map", "sub/../season.map"}) {
    {
      const WorkingFolder working(folder_.Path());
      program_.Start({name});
      ASSERT_EQ(shell_.Windows().All().size(), 1U);
      MapWindowWidget& window = *shell_.Windows().All()[0];
      ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
      Press(window, CommandZoomIn);
      EXPECT_TRUE(shell_.ExitFlow());
      DeliverDeletes();
    }
    EXPECT_NE(Stored().find("DefaultMap=" + folder_.Path("season.map") + "\r\n"), std::string::npos)
        << Stored();
    ScriptedMessages messages;
    ScriptedSurroundings around;
    BoxMessages boxes(around);
    Workspace workspace(messages);
    Program program(workspace, boxes, around);
    Shell& restarted = program.TheShell();
    program.KeepPreferencesIn(own_.Path("own"));
    program.Start({});
    ASSERT_EQ(restarted.Windows().All().size(), 1U) << name;
    EXPECT_EQ(restarted.Windows().All()[0]->TheMap().fileName, folder_.Path("season.map"));
    EXPECT_TRUE(messages.Entries().empty());
    EXPECT_TRUE(restarted.ExitFlow());
    DeliverDeletes();
    std::filesystem::remove(own_.Path("own/Orvane.prf"));
    shell_.TheSettings().savedView = {};
  }
}

TEST_F(PreferencesFileTest, AShortNameOfAnOlderFileHasItsView) {
  WriteMap("site.map");
  const WorkingFolder working(folder_.Path());
  own_.Write("own/Orvane.prf", "Scale=0.5\nDefaultMap=site.map\n");
  program_.Start({});
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  ASSERT_TRUE(QTest::qWaitForWindowActive(shell_.Windows().All()[0]));
  EXPECT_EQ(shell_.Windows().All()[0]->Shown().scale, 0.5F);
}

TEST_F(PreferencesFileTest, TheViewIsForTheVeryNameOnly) {
  WriteMap("site.map");
  own_.Write("own/Orvane.prf", "Scale=0.5\nDefaultMap=" + folder_.Path("./site.map") + "\n");
  program_.Start({});
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  ASSERT_TRUE(QTest::qWaitForWindowActive(shell_.Windows().All()[0]));
  EXPECT_EQ(shell_.Windows().All()[0]->Shown().scale, 0.5F);
  MapWindowWidget& other = shell_.Windows().Open(MakeMap(workspace_, folder_.Path("SITE.map")));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_NE(other.Shown().scale, 0.5F);
}

TEST_F(PreferencesFileTest, AWindowThatOpensInTheMiddleOfTheReadHasItsPanels) {
  const std::string map = WriteMap("a.map");
  own_.Write("own/Orvane.prf", "TrailWidth=\nDefaultMap=" + map + "\nDefaultMap=" + map + "\n");
  program_.Start({});
  EXPECT_EQ(shell_.Windows().All().size(), 2U);
  EXPECT_EQ(shell_.TheSettings().trailWidth, 0);
}

TEST_F(PreferencesFileTest, AViewOfNonsenseIsAWindowAllTheSame) {
  const std::string map = WriteMap("site.map");
  for (const char* value : {"1e300", "-1e300", "1e-300", "99999999999"}) {
    const std::string number = value;
    own_.Write("own/Orvane.prf", "TrailWidth=" + number + "\nTrailHeight=-5\nDefaultMap=" + map +
                                     "\nCenterLon=" + number + "\nCenterLat=" + number +
                                     "\nScale=" + number + "\nRotate=" + number + "\n");
    shell_.TheSettings().savedView = {};
    program_.Start({});
    MapWindowWidget& window = *shell_.Windows().All().front();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_FALSE(window.grab().isNull());
    Press(window, CommandZoomOut);
    Press(window, CommandShowWholeMap);
    EXPECT_FALSE(window.grab().isNull());
    EXPECT_TRUE(shell_.ExitFlow());
    DeliverDeletes();
    EXPECT_EQ(Stored().find("nan"), std::string::npos) << Stored();
  }
}

TEST_F(PreferencesFileTest, EachUnknownLineIsReported) {
  own_.Write("own/Orvane.prf", "Colour=red\r\nTrailHeight=90\r\nnonsense\r\n");
  program_.Start({WriteMap("a.map")});
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Unknown preference: Colour=red",
                                               "Unknown preference: nonsense"}));
  EXPECT_EQ(shell_.TheSettings().trailHeight, 90);
}

TEST_F(PreferencesFileTest, ExitWritesThemFirstOfAll) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  AddComment(shell_, window.TheMap());
  shell_.TheSettings().trailWidth = 123;
  messages_.answers = {2};
  EXPECT_FALSE(shell_.ExitFlow());
  const std::string text = Stored();
  EXPECT_EQ(text.substr(0, text.find("CenterLon")),
            "EuropeanDates=0\r\nTrailWidth=123\r\nTrailHeight=200\r\nDefaultMap=" +
                folder_.Path("site.map") + "\r\n");
}

TEST_F(PreferencesFileTest, AnUntitledMapIsNotNamed) {
  OpenNew();
  workspace_.preferences = {.europeanDates = true, .showHiddenNames = true};
  EXPECT_TRUE(shell_.ExitFlow());
  EXPECT_EQ(Stored(),
            "ShowHiddenNames=1\r\nEuropeanDates=1\r\nTrailWidth=100\r\nTrailHeight=200\r\n");
}

TEST_F(PreferencesFileTest, WhatOneRunWritesTheNextOneShows) {
  OpenActive(WriteMap("old.map"));
  MapWindow& view = shell_.Windows().All()[0]->Shown();
  OpenActive(WriteMap("new.map"));
  view.rotation = 30;
  ZoomToScale(view, 0.125);
  const double longitude = view.centralLongitude;
  EXPECT_TRUE(shell_.ExitFlow());
  DeliverDeletes();

  Workspace workspace(messages_);
  ScriptedSurroundings around;
  Program program(workspace, boxes_, around);
  Shell& next = program.TheShell();
  program.KeepPreferencesIn(own_.Path("own"));
  program.Start({});
  ASSERT_EQ(next.Windows().All().size(), 2U);
  MapWindowWidget& oldest = *next.Windows().All()[0];
  EXPECT_EQ(oldest.TheMap().fileName, folder_.Path("old.map"));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&oldest));
  EXPECT_EQ(oldest.Shown().scale, 0.125F);
  EXPECT_EQ(oldest.Shown().rotation, 30);
  EXPECT_NEAR(oldest.Shown().centralLongitude, longitude, 1e-4);
  while (!next.Windows().All().empty()) next.Windows().All().front()->TryClose();
  DeliverDeletes();
}

class DefaultPlaceTest : public ShellCase {};

TEST_F(DefaultPlaceTest, OrvaneHomeIsTakenForFilesAndDialogs) {
  const TemporaryFolder home;
  qputenv("ORVANE_HOME", QByteArray::fromStdString(home.Path()));
  Program program(workspace_, boxes_, around_, DefaultPlaces());
  qunsetenv("ORVANE_HOME");
  EXPECT_EQ(program.TheShell().TheSettings().ownDirectory, home.Path());
  EXPECT_EQ(program.TheShell().TheSettings().dialogDirectory, home.Path());
}

TEST_F(DefaultPlaceTest, WithoutItThePlatformDecides) {
  QStandardPaths::setTestModeEnabled(true);
  const WorkingFolder working(folder_.Path());
  Program program(workspace_, boxes_, around_, DefaultPlaces());
  const QString user = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
  QStandardPaths::setTestModeEnabled(false);
  const Settings& settings = program.TheShell().TheSettings();
  EXPECT_EQ(settings.ownDirectory, user.toStdString());
  EXPECT_EQ(settings.dialogDirectory,
            folder_.Path());  // files of the user are not looked for there
}

}  // namespace
}  // namespace orvane
