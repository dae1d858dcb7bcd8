// Under which names a file is one map, and which of its names messages show.

#include "mapfile/open_map.h"

#include "mapfile/writer.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"
#include "support/working_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;

struct MapNames : MapFixture {
  MapNames() {
    fs::create_directory(folder.Path("sub"));
    fs::create_directory(folder.Path("other"));
    fs::create_directory_symlink(folder.Path(), folder.Path("other/link"));
    folder.Write("trails.map", "L\tCamp\t1\t10\n");
    folder.Write("season.map", "B\ttrails.map\nL\tHill\t1\t11\n");
  }

  TemporaryFolder folder;
};

TEST_F(MapNames, EverySpellingIsTheSameMapWithItsWholePath) {
  const WorkingFolder working(folder.Path());
  Map& map = OpenMap(workspace, "season.map");
  EXPECT_EQ(map.fileName, folder.Path("season.map"));
  EXPECT_EQ(map.shownName, "season.map");
  ASSERT_NE(map.basis, nullptr);
  EXPECT_EQ(map.basis->fileName, folder.Path("trails.map"));
  EXPECT_EQ(map.basis->shownName, "trails.map");
  for (const std::string& name :
       {std::string("./season.map"), std::string("sub/../season.map"), folder.Path("season.map"),
        folder.Path("other/link/season.map"), std::string("other/link/SEASON.map")}) {
    EXPECT_EQ(&OpenMap(workspace, name), &map) << name;
  }
  EXPECT_EQ(Length(workspace.maps), 2);
  EXPECT_EQ(map.shownName, "season.map");
}

TEST_F(MapNames, ABasisInALinkedFolderIsTheMapThatIsOpen) {
  const Map& basis = OpenMap(workspace, folder.Path("trails.map"));
  EXPECT_EQ(OpenMap(workspace, folder.Path("other/link/season.map")).basis, &basis);
}

TEST_F(MapNames, FilesOfOneNameInTwoFoldersAreTwoMaps) {
  folder.Write("sub/season.map", "L\tRock\t1\t10\n");
  EXPECT_NE(&OpenMap(workspace, folder.Path("season.map")),
            &OpenMap(workspace, folder.Path("sub/season.map")));
}

TEST_F(MapNames, AFileWithTheNameOfAnUntitledMapIsRead) {
  const WorkingFolder working(folder.Path());
  Map& untitled = MakeMap(workspace, "Untitled");
  untitled.flags |= MapUntitled;
  folder.Write("Untitled", "L\tRock\t1\t10\n");
  const Map& map = OpenMap(workspace, "Untitled");
  EXPECT_NE(&map, &untitled);
  Named(map, "Rock");
}

TEST_F(MapNames, MessagesShowTheNameAsTyped) {
  const WorkingFolder working(folder.Path());
  folder.Write("two.map", "B\tnone.map\nB\ttrails.map\n");
  OpenMap(workspace, "sub/../two.map");
  OpenMap(workspace, "sub/missing.map");
  EXPECT_EQ(Said(), (Texts{"Can't open file sub/../none.map",
                           "This map (sub/../two.map) has two bases sub/../none.map and trails.map",
                           "Can't open file sub/missing.map"}));
}

TEST_F(MapNames, ACircleIsCutHoweverItsNamesAreSpelled) {
  const WorkingFolder working(folder.Path());
  folder.Write("round.map", "I sub/../round.map\nB\tother/link/round.map\nL\tRock\t1\t10\n");
  const Map& map = OpenMap(workspace, "round.map");
  Named(map, "Rock");
  EXPECT_EQ(map.basis, nullptr);
  EXPECT_EQ(Said(),
            (Texts{"Can't open file sub/../round.map", "Can't open file other/link/round.map"}));
}

TEST_F(MapNames, TheMarkOfTheFileIsKeptForANameThatIsNotWhole) {
  const WorkingFolder working(folder.Path());
  EXPECT_EQ(OpenMap(workspace, "./season.map").fileMark, MarkOf(folder.Read("season.map")));
}

TEST_F(MapNames, ASaveElsewhereNamesTheBasisByItsWholePath) {
  const WorkingFolder working(folder.Path());
  Map& map = OpenMap(workspace, "season.map");
  const auto basisLine = [&](const std::string& path) {
    const std::string text = MapFileText(map, path, true);
    return text.substr(0, text.find('\n'));
  };
  EXPECT_EQ(basisLine("copy.map"), "B\ttrails.map");
  EXPECT_EQ(basisLine("./sub/../copy.map"), "B\ttrails.map");
  EXPECT_EQ(basisLine(folder.Path("other/link/copy.map")), "B\ttrails.map");
  EXPECT_EQ(basisLine("other/copy.map"), "B\t" + folder.Path("trails.map"));
}

}  // namespace
}  // namespace orvane
