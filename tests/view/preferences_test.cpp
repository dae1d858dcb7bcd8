#include "view/preferences.h"

#include "geo/earth.h"
#include "model/workspace.h"
#include "support/temporary_folder.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <list>
#include <random>

namespace orvane {
namespace {

class PreferencesTest : public testing::Test {
 protected:
  /// Reads a file of this content.
  void Read(std::string_view content) {
    ReadPreferences(workspace_, folder_.Write("Orvane.prf", content), preferences_,
                    [this](const std::string& file) { opened_.push_back(file); });
  }

  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages_.Entries()) texts.push_back(entry.text);
    return texts;
  }

  /// A view of a map, at a place.
  MapWindow& Open(const std::string& fileName, double lat = 0, double lon = 0) {
    MapWindow& view = views_.emplace_back();
    view.map = &MakeMap(workspace_, fileName);
    SetClientSize(view, 400, 300);
    CenterOn(view, {.lat = lat, .lon = lon});
    return view;
  }

  std::string Text(const std::vector<const MapWindow*>& windows = {}) const {
    return PreferencesText(workspace_, preferences_, windows);
  }

  TemporaryFolder folder_;
  RecordedMessages messages_;
  Workspace workspace_{messages_};
  WindowPreferences preferences_;
  std::vector<std::string> opened_;
  std::list<MapWindow> views_;
};

TEST_F(PreferencesTest, AMissingFileLeavesAllAsItIsWithoutAMessage) {
  ReadPreferences(workspace_, folder_.Path("Orvane.prf"), preferences_,
                  [](const std::string&) { FAIL(); });
  EXPECT_EQ(preferences_.trailWidth, 100);
  EXPECT_EQ(preferences_.trailHeight, 200);
  EXPECT_EQ(preferences_.savedView.fileName, "");
  EXPECT_EQ(preferences_.savedView.scale, 0);
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(PreferencesTest, EachKeyIsTaken) {
  Read(
      "ShowHiddenNames=1\r\nEuropeanDates=1\r\nTrailWidth=180\r\nTrailHeight=320\r\n"
      "DefaultMap=/maps/My site.map\r\nCenterLon=10.5\r\nCenterLat=-1.25\r\nScale=0.5\r\n"
      "HideGrid=1\r\nRotate=30\r\n");
  EXPECT_TRUE(workspace_.preferences.showHiddenNames);
  EXPECT_TRUE(workspace_.preferences.europeanDates);
  EXPECT_EQ(preferences_.trailWidth, 180);
  EXPECT_EQ(preferences_.trailHeight, 320);
  const SavedView& view = preferences_.savedView;
  EXPECT_EQ(view.fileName, "/maps/My site.map");
  EXPECT_EQ(view.longitude, 10.5);
  EXPECT_EQ(view.latitude, -1.25);
  EXPECT_EQ(view.scale, 0.5);
  EXPECT_TRUE(view.hideGrids);
  EXPECT_EQ(view.rotation, 30);
  EXPECT_TRUE(opened_.empty());
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(PreferencesTest, AnyNumberButZeroIsYes) {
  workspace_.preferences.europeanDates = true;
  Read("ShowHiddenNames=-7\nEuropeanDates=0\nHideGrid=\n");
  EXPECT_TRUE(workspace_.preferences.showHiddenNames);
  EXPECT_FALSE(workspace_.preferences.europeanDates);
  EXPECT_FALSE(preferences_.savedView.hideGrids);
}

TEST_F(PreferencesTest, AnEmptyWidthIsZero) {
  Read("TrailWidth=\nTrailHeight= \n");
  EXPECT_EQ(preferences_.trailWidth, 0);
  EXPECT_EQ(preferences_.trailHeight, 0);
}

TEST_F(PreferencesTest, ANumberEndsWhereItEnds) {
  Read("TrailWidth=12.9px\nTrailHeight=wide\nScale=1e-3m\nRotate=nan\nCenterLat=1,5\n");
  EXPECT_EQ(preferences_.trailWidth, 12);
  EXPECT_EQ(preferences_.trailHeight, 0);
  EXPECT_EQ(preferences_.savedView.scale, 0.001);
  EXPECT_EQ(preferences_.savedView.rotation, 0);
  EXPECT_EQ(preferences_.savedView.latitude, 1);
}

TEST_F(PreferencesTest, EachUnknownLineHasAMessageAndReadingContinues) {
  Read("Colour=red\ntrailwidth=5\n TrailWidth=6\nTrailWidth 7\nTrailHeight=50\n");
  EXPECT_EQ(Messages(),
            (std::vector<std::string>{
                "Unknown preference: Colour=red", "Unknown preference: trailwidth=5",
                "Unknown preference:  TrailWidth=6", "Unknown preference: TrailWidth 7"}));
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::InternalError);
  EXPECT_EQ(preferences_.trailWidth, 100);
  EXPECT_EQ(preferences_.trailHeight, 50);
}

TEST_F(PreferencesTest, EmptyLinesAreSkippedWhateverEndsALine) {
  Read("TrailWidth=1\r\r\n\nTrailHeight=2\rEuropeanDates=1");
  EXPECT_EQ(preferences_.trailWidth, 1);
  EXPECT_EQ(preferences_.trailHeight, 2);
  EXPECT_TRUE(workspace_.preferences.europeanDates);
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(PreferencesTest, ALineHas999BytesAtMostAndTheRestIsALineOfItsOwn) {
  const std::string path(999 - std::string_view("DefaultMap=").size(), 'p');
  Read("DefaultMap=" + path + "\nTrailWidth=7\n");
  EXPECT_EQ(preferences_.savedView.fileName, path);
  EXPECT_TRUE(messages_.Entries().empty());
  Read("DefaultMap=" + path + "rest\nTrailHeight=8\n");
  EXPECT_EQ(preferences_.savedView.fileName, path);
  EXPECT_EQ(Messages(), std::vector<std::string>{"Unknown preference: rest"});
  EXPECT_EQ(preferences_.trailHeight, 8);
}

TEST_F(PreferencesTest, AllMapsButTheLastOpenAtOnce) {
  Read(
      "DefaultMap=one.map\nScale=1\nDefaultMap=two.map\nScale=2\nRotate=5\nDefaultMap=three.map\n"
      "CenterLat=3\n");
  EXPECT_EQ(opened_, (std::vector<std::string>{"one.map", "two.map"}));
  EXPECT_EQ(preferences_.savedView.fileName, "three.map");
  EXPECT_EQ(preferences_.savedView.scale, 2);  // the last value that is anywhere
  EXPECT_EQ(preferences_.savedView.rotation, 5);
  EXPECT_EQ(preferences_.savedView.latitude, 3);
}

TEST_F(PreferencesTest, AMapOpensWithWhatWasReadBeforeIt) {
  int width = 0;
  bool dates = false;
  ReadPreferences(
      workspace_,
      folder_.Write("Orvane.prf",
                    "EuropeanDates=1\nTrailWidth=70\nDefaultMap=a\nDefaultMap=b\nTrailWidth=90\n"),
      preferences_, [&](const std::string&) {
        width = preferences_.trailWidth;
        dates = workspace_.preferences.europeanDates;
      });
  EXPECT_EQ(width, 70);
  EXPECT_TRUE(dates);
  EXPECT_EQ(preferences_.trailWidth, 90);
}

TEST_F(PreferencesTest, AnEmptyMapIsNone) {
  Read("DefaultMap=one.map\nDefaultMap=\n");
  EXPECT_EQ(opened_, std::vector<std::string>{"one.map"});
  EXPECT_EQ(preferences_.savedView.fileName, "");
}

TEST_F(PreferencesTest, WithoutAWindowFourLinesAreWrittenAtMost) {
  EXPECT_EQ(Text(), "EuropeanDates=0\r\nTrailWidth=100\r\nTrailHeight=200\r\n");
  workspace_.preferences = {.europeanDates = true, .showHiddenNames = true};
  preferences_.trailWidth = 0;
  EXPECT_EQ(Text(), "ShowHiddenNames=1\r\nEuropeanDates=1\r\nTrailWidth=0\r\nTrailHeight=200\r\n");
}

TEST_F(PreferencesTest, AMapWithoutANameOfItsOwnIsNeverNamed) {
  MapWindow& view = Open("Untitled");
  view.map->flags |= MapUntitled;
  EXPECT_EQ(Text({&view}), "EuropeanDates=0\r\nTrailWidth=100\r\nTrailHeight=200\r\n");
  // Not even once it was saved.
  view.map->fileName = "/maps/new.map";
  EXPECT_EQ(Text({&view}).find("DefaultMap"), std::string::npos);
}

TEST_F(PreferencesTest, EachWindowWritesSixLinesInTheOrderGiven) {
  MapWindow& newest = Open("/maps/b.map", 1.5, 20.25);
  newest.scale = 0.125F;
  newest.rotation = 45;
  CenterOn(newest, {.lat = 1.5, .lon = 20.25});
  MapWindow& oldest = Open("/maps/a.map", -2, -30.123456789);
  oldest.flags |= MapWindowGridsHidden;
  const std::string text = Text({&newest, &oldest});
  EXPECT_EQ(text.substr(text.find("DefaultMap")),
            "DefaultMap=/maps/b.map\r\nCenterLon=20.25\r\nCenterLat=1.5\r\nScale=0.125\r\n"
            "HideGrid=0\r\nRotate=45\r\n"
            "DefaultMap=/maps/a.map\r\nCenterLon=-30.1235\r\nCenterLat=-2\r\nScale=1\r\n"
            "HideGrid=1\r\nRotate=0\r\n");
}

TEST_F(PreferencesTest, ANameThatCouldNotBeReadBackIsLeftOut) {
  for (const std::string& name : {std::string("a\nb.map"), std::string("a\rb.map"),
                                  std::string("a\xFF.map"), std::string(989, 'a')}) {
    EXPECT_EQ(Text({&Open(name)}).find("DefaultMap"), std::string::npos) << name;
  }
  EXPECT_NE(Text({&Open(std::string(988, 'a'))}).find("DefaultMap"), std::string::npos);
}

TEST_F(PreferencesTest, TheOldestWindowComesBackAsItWas) {
  constexpr unsigned Seed = 20091;
  SCOPED_TRACE(Seed);
  std::mt19937 random(Seed);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * static_cast<double>(random() % 100000) / 100000;
  };
  for (int run = 0; run < 200; ++run) {
    MapWindow& view = Open("/maps/oldest.map");
    view.scale = BoundedScale(std::pow(10.0, between(-4, 2)));
    view.rotation = static_cast<float>(between(-180, 360));
    CenterOn(view, {.lat = between(-80, 80), .lon = between(-180, 180)});
    if (run % 2 == 0) view.flags |= MapWindowGridsHidden;
    const MapWindow& other = Open("/maps/newest.map", 5, 5);
    preferences_ = {.trailWidth = run, .trailHeight = 2 * run, .savedView = {}};
    opened_.clear();
    WritePreferences(workspace_, folder_.Path("Orvane.prf"), preferences_, {&other, &view});
    const int width = preferences_.trailWidth;
    preferences_ = {};
    Read(folder_.Read("Orvane.prf"));
    EXPECT_EQ(preferences_.trailWidth, width);
    EXPECT_EQ(preferences_.trailHeight, 2 * width);
    EXPECT_EQ(opened_, std::vector<std::string>{"/maps/newest.map"});

    MapWindow again;
    again.map = view.map;
    SetClientSize(again, 400, 300);
    InitView(again, &preferences_.savedView);
    EXPECT_NEAR(again.scale, view.scale, 1e-5F * view.scale);
    EXPECT_NEAR(again.rotation, view.rotation, 1e-3F);
    EXPECT_NEAR(again.centralLongitude, view.centralLongitude, 1e-3);
    EXPECT_NEAR(MetersToDegrees(again.top + again.bottom), MetersToDegrees(view.top + view.bottom),
                1e-3);
    EXPECT_EQ(again.flags & MapWindowGridsHidden, view.flags & MapWindowGridsHidden);
  }
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(PreferencesTest, AFileThatCannotBeWrittenIsPassedOverInSilence) {
  WritePreferences(workspace_, "", preferences_, {});
  WritePreferences(workspace_, folder_.Path("no/such/Orvane.prf"), preferences_, {});
  WritePreferences(workspace_, folder_.Path(), preferences_, {});
  EXPECT_TRUE(messages_.Entries().empty());
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(PreferencesTest, WhateverFailsLeavesTheOldFile) {
  const FileSystem system = SystemFiles();
  std::vector<FileSystem> broken(5, system);
  broken[0].create = [](const std::string&, unsigned) { return -1; };
  broken[1].write = [](int, const char*, size_t) { return -1L; };
  broken[2].flush = [](int) { return -1; };
  broken[3].close = [&system](int file) {
    system.close(file);
    return -1;
  };
  broken[4].rename = [](const std::string&, const std::string&) { return -1; };
  for (const FileSystem& each : broken) {
    folder_.Write("Orvane.prf", "TrailWidth=5\r\n");
    WritePreferences(workspace_, folder_.Path("Orvane.prf"), preferences_, {}, each);
    EXPECT_EQ(folder_.Read("Orvane.prf"), "TrailWidth=5\r\n");
    const std::filesystem::directory_iterator files(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
  }
}

TEST_F(PreferencesTest, TheMessageOfAnUnknownLineComesFromThatLine) {
  class LastOrigin : public RecordedMessages {
   public:
    void Post(Severity /*severity*/, const std::string& /*text*/) override {
      if (Origin() != nullptr) last = *Origin();
    }
    MessageOrigin last;
  };
  LastOrigin messages;
  Workspace workspace(messages);
  const std::string path = folder_.Write("Orvane.prf", "TrailWidth=1\r\n\r\nwhat\r\n");
  ReadPreferences(workspace, path, preferences_, [](const std::string&) {});
  EXPECT_EQ(messages.last.file, path);
  EXPECT_EQ(messages.last.line, 3U);
}

TEST(DefaultDirectory, IsWhatTheUserSetOrWhereThereIsAFileOrThePlatforms) {
  const TemporaryFolder folder;
  EXPECT_EQ(DefaultDirectory("/home/me/orvane", folder.Path(), "/config"), "/home/me/orvane");
  EXPECT_EQ(DefaultDirectory("", folder.Path(), "/config"), "/config");
  std::filesystem::create_directory(folder.Path("Orvane.prf"));
  EXPECT_EQ(DefaultDirectory("", folder.Path(), "/config"),
            "/config");  // a directory is not a file
  std::filesystem::remove(folder.Path("Orvane.prf"));
  folder.Write("Orvane.prf", "");
  EXPECT_EQ(DefaultDirectory("", folder.Path(), "/config"), folder.Path());
  EXPECT_EQ(DefaultDirectory("/set", folder.Path(), "/config"), "/set");
}

TEST_F(PreferencesTest, SmoothLinesAreWrittenOnlyOnceTheyAreTurnedOff) {
  workspace_.preferences.smoothLines = false;
  const std::string text = Text();
  EXPECT_EQ(text, "EuropeanDates=0\r\nSmoothLines=0\r\nTrailWidth=100\r\nTrailHeight=200\r\n");
  workspace_.preferences.smoothLines = true;
  Read(text);
  EXPECT_FALSE(workspace_.preferences.smoothLines);
}

}  // namespace
}  // namespace orvane
