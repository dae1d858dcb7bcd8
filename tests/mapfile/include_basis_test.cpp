#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct IncludeTest : MapFixture {
  TemporaryFolder folder;

  /// Writes `name` and reads it as a map, unfinished.
  Map& ReadFile(const std::string& name, const std::string& text) {
    const std::string path = folder.Write(name, text);
    Map& map = MakeMap(workspace, path);
    EXPECT_TRUE(ReadMapFile(map, path));
    return map;
  }
  /// The line that includes a file of the folder.
  std::string Include(const std::string& name) const { return "I " + folder.Path(name) + "\n"; }
};

TEST_F(IncludeTest, IncludedTextBecomesPartOfTheMap) {
  folder.Write("inc", "T\tInner\nP\tb\n# comment\nM\t4\n");
  Map& map = ReadFile("a.map", "P\ta\n" + Include("inc") + "P\tc\n");
  for (const char* name : {"a", "b", "c"}) EXPECT_EQ(Named(map, name).map, &map);
  EXPECT_EQ(map.comments, Texts{"# comment"});
  EXPECT_EQ(map.magneticDeviation, 4);
  EXPECT_EQ(Length(workspace.maps), 1);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(IncludeTest, NameIsTheRestAfterWhiteSpace) {
  folder.Write("two words", "P\ta\n");
  Named(ReadFile("1", "I \t " + folder.Path("two words")), "a");
  Named(ReadFile("2", "I" + folder.Path("two words")), "a");
  EXPECT_EQ(Said(), Texts{});
  ReadFile("3", "I\n");
  EXPECT_EQ(Said(), Texts{"Can't open file "});
}

TEST_F(IncludeTest, NameIsRelativeToTheWorkingDirectory) {
  folder.Write("inc", "P\ta\n");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  Map& map = Read("I inc\n", "/elsewhere/test.map");
  std::filesystem::current_path(before);
  Named(map, "a");
  ReadFile("b.map", "I inc\n");
  EXPECT_EQ(Said(), Texts{"Can't open file inc"});
}

TEST_F(IncludeTest, TrailAndRangeAreClosedOnReturn) {
  folder.Write("inc", "T\tInner\nP\tb\n");
  folder.Write("range", "R\tr\n");
  const Map& map =
      ReadFile("a.map", "T\tOuter\nP\ta\n" + Include("inc") + "P\tc\n" + Include("range") +
                            "K\tk\n" + "T\tThird\nP\td\n" + Include("missing") + "P\te\n");
  for (const Trail& trail : map.trails) EXPECT_EQ(trail.points.size(), 1U);
  EXPECT_EQ(Said(), (Texts{"Search key specified outside of range: K\tk",
                           "Can't open file " + folder.Path("missing")}));
}

TEST_F(IncludeTest, EachIncludeReversesTheTrailsSoFar) {
  folder.Write("inc", "T\t3\nT\t4\n");
  folder.Write("empty", "");
  // New trails are in front; an include reverses the list at its end, and so does the file.
  EXPECT_EQ(TrailNamesOf(ReadFile("a", "T\t1\nT\t2\n" + Include("inc") + "T\t5\nT\t6\n")),
            (Texts{"4", "3", "2", "1", "5", "6"}));
  EXPECT_EQ(TrailNamesOf(ReadFile("b", "T\t1\nT\t2\n" + Include("empty") + "T\t3\n")),
            (Texts{"2", "1", "3"}));
  EXPECT_EQ(TrailNamesOf(ReadFile("c", "T\t1\nT\t2\n" + Include("empty") + Include("empty"))),
            (Texts{"1", "2"}));
}

TEST_F(IncludeTest, FileThatCannotBeReadReversesNothing) {
  EXPECT_EQ(TrailNamesOf(ReadFile("a", "T\t1\nT\t2\n" + Include("missing"))), (Texts{"1", "2"}));
}

TEST_F(IncludeTest, TrailsOfAnIncludeAreReopened) {
  folder.Write("inc", "T\tMain\nP\ta\nT\tSide\n");
  const Map& map =
      ReadFile("a.map", "T\tSide\nP\tx\n" + Include("inc") + "T\tmain\nP\tb\nT\tSIDE\nP\ty\n");
  EXPECT_EQ(Length(map.trails), 2);
  for (const Trail& trail : map.trails) EXPECT_EQ(trail.points.size(), 1U);
  Named(map, "a");
}

TEST_F(IncludeTest, IncludeWarnsForItself) {
  folder.Write("inc", "E\nF\n");
  ReadFile("a.map", "J\n" + Include("inc") + "Q\n" + Include("inc"));
  EXPECT_EQ(Said(),
            (Texts{"Unparseable input: J", "Unparseable input: E", "Unparseable input: E"}));
  messages.Clear();
  ReadFile("b.map", Include("inc") + "Q\nS\n");
  EXPECT_EQ(Said(), (Texts{"Unparseable input: E", "Unparseable input: Q"}));
}

TEST_F(IncludeTest, FileThatIncludesItselfIsLeftOut) {
  const Map& map = ReadFile("a.map", "P\ta\n" + Include("a.map") + "P\tb\n");
  Named(map, "a");
  Named(map, "b");
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("a.map")});
}

TEST_F(IncludeTest, CircleOfIncludesIsCut) {
  folder.Write("b", "P\tb\n" + Include("c"));
  folder.Write("c", "P\tc\n" + Include("a.map"));
  const Map& map = ReadFile("a.map", Include("b") + Include("b") + "P\ta\n");
  EXPECT_EQ(map.pointStore.size(), 3U);
  EXPECT_EQ(Said(), (Texts{"Can't open file " + folder.Path("a.map"),
                           "Can't open file " + folder.Path("a.map")}));
}

TEST_F(IncludeTest, IncludesNest64Deep) {
  for (int i = 1; i <= 70; ++i) {
    folder.Write(std::to_string(i),
                 "P\tp" + std::to_string(i) + "\n" + Include(std::to_string(i + 1)));
  }
  const Map& map = ReadFile("a.map", Include("1"));
  EXPECT_EQ(map.pointStore.size(), 63U);  // the file itself is the first of the 64
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("64")});
}

TEST_F(IncludeTest, FilesThatIncludeEachOtherManyTimesOverEndSoon) {
  // Each level takes the next one twice: 2^40 files if none counted them.
  for (int i = 0; i < 40; ++i) {
    const std::string next = Include(std::to_string(i + 1));
    folder.Write(std::to_string(i), next + next);
  }
  folder.Write("40", "P\tdeep\n");
  const Map& map = ReadFile("a.map", Include("0"));
  Named(map, "deep");
  EXPECT_FALSE(Said().empty());
  EXPECT_EQ(Said()[0].substr(0, 16), "Can't open file ");
  EXPECT_EQ(Length(workspace.maps), 1);
  // The count starts again with the next file.
  messages.Clear();
  Named(ReadFile("b.map", Include("40")), "deep");
  EXPECT_EQ(Said(), Texts{});
}

// --- The basis ------------------------------------------------------------------------------------

using BasisTest = IncludeTest;

TEST_F(BasisTest, BasisIsAMapOfItsOwnReadAndSolvedBeforeTheRest) {
  folder.Write("base.map", "T\tMain\nG\ta\tN1\tE2\nC\tb\ta\t100\t0\n");
  Map& map = ReadFile("a.map", "B\tbase.map\nT\tOwn\nP\tb\nP\tc\n");
  ASSERT_NE(map.basis, nullptr);
  EXPECT_EQ(map.basis->fileName, folder.Path("base.map"));
  EXPECT_EQ(Named(map, "b").map, map.basis);
  EXPECT_NE(Named(map, "b").flags & PointPlaced, 0U);
  EXPECT_EQ(Named(map, "c").map, &map);
  EXPECT_EQ(TrailNamesOf(map), Texts{"Own"});
  EXPECT_EQ(TrailNamesOf(*map.basis), Texts{"Main"});
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(BasisTest, TabAfterTheTagIsOptional) {
  folder.Write("base.map", "L\ta\t1\t2\n");
  EXPECT_NE(ReadFile("a.map", "Bbase.map\n").basis, nullptr);
  EXPECT_NE(ReadFile("b.map", "B\t" + folder.Path("base.map")).basis, nullptr);
  EXPECT_EQ(Length(workspace.maps), 3) << "two maps share the basis";
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(BasisTest, OpenedMapIsSharedWithoutRegardToCase) {
  folder.Write("base.map", "P\ta\n");
  Map& base = OpenMap(workspace, folder.Path("BASE.map"));
  messages.Clear();
  EXPECT_EQ(ReadFile("a.map", "B\tbase.map\n").basis, &base);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(BasisTest, MissingBasisGivesAMessageAndAnEmptyMap) {
  Map& map = ReadFile("a.map", "B\tnone.map\nP\ta\n");
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("none.map")});
  ASSERT_NE(map.basis, nullptr);
  EXPECT_EQ(map.basis->fileName, folder.Path("none.map"));
  EXPECT_TRUE(map.basis->pointStore.empty());
  EXPECT_EQ(Named(map, "a").map, &map);
}

TEST_F(BasisTest, SecondBasisGivesAMessageAndReplacesTheFirst) {
  folder.Write("1.map", "L\ta\t1\t2\n");
  folder.Write("2.map", "L\tb\t1\t2\n");
  const Map& map = ReadFile("a.map", "B\t1.map\nB\t2.map\n");
  EXPECT_EQ(map.basis->fileName, folder.Path("2.map"));
  ASSERT_EQ(Said().size(), 1U);
  EXPECT_EQ(Said()[0], ("This map (" + folder.Path("a.map") + ") has two bases " +
                        folder.Path("1.map") + " and 2.map")
                           .substr(0, Messages::LongestMessage));
}

TEST_F(BasisTest, BasisClosesTrailAndRange) {
  folder.Write("base.map", "T\tLow\nP\tx\n");
  const Map& map = ReadFile("a.map", "T\tt\nP\ta\nB\tbase.map\nP\tb\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"a"});
  EXPECT_EQ(NamesOf(map.basis->trails.front()), Texts{"x"});
}

TEST_F(BasisTest, DeviationIsInheritedAtTheEndOfTheReadUnlessGiven) {
  folder.Write("base.map", "M\t3.5\n");
  folder.Write("plain.map", "P\tx\n");
  const Map& taker = ReadFile("a.map", "B\tbase.map\n");
  EXPECT_EQ(taker.magneticDeviation, 3.5);
  EXPECT_NE(taker.flags & MapHasDeviation, 0U);
  EXPECT_EQ(ReadFile("b.map", "B\tbase.map\nM\t0\n").magneticDeviation, 0);
  const Map& none = ReadFile("c.map", "B\tplain.map\n");
  EXPECT_EQ(none.flags & MapHasDeviation, 0U);
  folder.Write("middle.map", "B\tbase.map\n");
  EXPECT_EQ(ReadFile("d.map", "B\tmiddle.map\n").magneticDeviation, 3.5);
}

TEST_F(BasisTest, DeviationOfAnIncludeStaysWhereTheIncludeBringsTheBasis) {
  folder.Write("base.map", "M\t3.5\n");
  folder.Write("inc", "B\tbase.map\n");
  const Map& map = ReadFile("a.map", Include("inc"));
  EXPECT_EQ(map.basis->fileName, folder.Path("base.map"));
  EXPECT_EQ(map.magneticDeviation, 3.5);
}

TEST_F(BasisTest, MapThatIsItsOwnBasisIsLeftOut) {
  const Map& map = ReadFile("a.map", "B\ta.map\nP\ta\n");
  EXPECT_EQ(map.basis, nullptr);
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("a.map")});
  Named(map, "a");
}

TEST_F(BasisTest, CircleOfBasesIsCut) {
  folder.Write("a.map", "B\tb.map\nP\ta\n");
  folder.Write("b.map", "B\tc.map\nP\tb\n");
  folder.Write("c.map", "B\ta.map\nP\tc\n");
  Map& map = OpenMap(workspace, folder.Path("a.map"));
  EXPECT_EQ(Said()[0], "Can't open file " + folder.Path("a.map"));
  for (const char* name : {"a", "b", "c"}) Named(map, name);
  EXPECT_EQ(map.basis->basis->basis, nullptr);
}

TEST_F(BasisTest, CircleThroughOtherSpellingsOfANameIsCut) {
  folder.Write("a.map", "B\t" + folder.Path() + "/./b.map\nP\ta\n");
  folder.Write("b.map", "B\t" + folder.Path() + "/./a.map\nP\tb\n");
  Map& map = OpenMap(workspace, folder.Path("a.map"));
  Named(map, "a");
  Named(map, "b");
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    ASSERT_LT(Length(workspace.maps), 5);
  }
}

TEST_F(BasisTest, NameOfMoreThan1000BytesIsLeftOut) {
  const std::string longDirectory(990, 'd');
  Map& map = MakeMap(workspace, longDirectory + "/a.map");
  ReadMapText(map, "B\tlong-name.map\n");
  EXPECT_EQ(map.basis, nullptr);
  ASSERT_EQ(Said().size(), 1U);
  EXPECT_EQ(Said()[0].substr(0, 16), "Can't open file ");
}

TEST_F(BasisTest, ManyBasesInOneFileEndSoon) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "B\tnone" + std::to_string(i) + "\n";
  const Map& map = Read(text + "P\ta\n");
  Named(map, "a");
  EXPECT_LE(Length(workspace.maps), 10001);
}

// --- Opening and finishing ----------------------------------------------------------------------

using OpenMapTest = IncludeTest;

TEST_F(OpenMapTest, FileIsReadOnceAndKeptUnderItsName) {
  const std::string path = folder.Write("a.map", "L\tp\t1\t2\n");
  bool readable = false;
  Map& map = OpenMap(workspace, path, &readable);
  EXPECT_TRUE(readable);
  EXPECT_EQ(&OpenMap(workspace, path), &map);
  EXPECT_EQ(Length(map.loosePoints), 1);
  EXPECT_EQ(Length(workspace.maps), 1);
}

TEST_F(OpenMapTest, FileThatCannotBeReadYieldsAnEmptyMapOfItsName) {
  bool readable = true;
  const Map& map = OpenMap(workspace, folder.Path("none.map"), &readable);
  EXPECT_FALSE(readable);
  EXPECT_EQ(map.fileName, folder.Path("none.map"));
  EXPECT_TRUE(map.pointStore.empty());
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("none.map")});
}

using FinishMapTest = MapFixture;

TEST_F(FinishMapTest, PointIsInTheLoosePointsOnceForEachOfItsNames) {
  Map& map = Open("L\ta=b=c\t1\t2\nT\tt\nL\td=e\t1\t2\n");
  EXPECT_EQ(Length(map.loosePoints), 3);
  for (const Point* point : map.loosePoints) EXPECT_EQ(point->name, "a");
  FinishMap(map);
  EXPECT_EQ(Length(map.loosePoints), 6) << "a second time adds them again";
}

TEST_F(FinishMapTest, LoosePointsComeFromTheBucketsLastFirst) {
  // Buckets 1, 2 and 3; in bucket 1 the newest is first, and the list reverses everything.
  const Map& map = Open("L\ta\t1\t2\nL\tc\t1\t2\nL\tb\t1\t2\nL\t!\t1\t2\n");
  Texts names;
  for (const Point* point : map.loosePoints) names.push_back(point->name);
  EXPECT_EQ(names, (Texts{"c", "b", "a", "!"}));
}

TEST_F(FinishMapTest, NamelessPointsAreNotLoose) {
  const Map& map = Open("L\t\t1\t2\nP\t\n");
  EXPECT_TRUE(map.loosePoints.empty());
}

TEST_F(FinishMapTest, TimesOfAFollowAreFilled) {
  const Map& map = Open("T\tt\nL\t0800\t1\t2\nL\t0830-0840\t1\t2\n");
  EXPECT_EQ(map.trails.front().points[0]->timeOfDay, 480);
  EXPECT_EQ(map.trails.front().points[0]->duration, 30);
  EXPECT_EQ(map.trails.front().points[1]->duration, 10);
}

TEST_F(FinishMapTest, MapOfSolvedPlacesIsNotSolvedAgain) {
  // The shot would move b if the map were solved.
  const Map& map = Open("G\ta\tN1\tE2\nC\tb\ta\t1000\t0\nL\tb\t5\t6\t7\n");
  EXPECT_EQ(Named(map, "b").geo.lat, 5);
}

TEST_F(FinishMapTest, OneUnplacedPointMakesTheWholeMapBeSolved) {
  const Map& map =
      Open("G\ta\tN1\tE2\nC\tb\ta\t1000\t180\nL\tb\t5\t6\t7\nL\tc\t8\t9\nC\tc\ta\t1\t0\n");
  EXPECT_NEAR(Named(map, "b").geo.lat, 1 + 1000 / 111120.0, 1e-4);
}

TEST_F(FinishMapTest, FixesAreAveragedWithEqualWeightWhenNothingElseIsThere) {
  const Map& map = Open("G\ta\tN1\tE2\t100\t9\nG\ta\tN3\tE6\nA\ta\t200\n");
  EXPECT_EQ(Named(map, "a").geo.lat, 2);
  EXPECT_EQ(Named(map, "a").geo.lon, 4);
  EXPECT_EQ(Named(map, "a").geo.altitude, 150);
}

TEST_F(FinishMapTest, FixOnAPointOfTheBasisDrawsNothingElsewhere) {
  Map& basis = Open("G\ta\tN1\tE2\n", "basis.map");
  Map& map = MakeMap(workspace, "above.map");
  map.basis = &basis;
  ReadMapText(map, "G\ta\tN5\tE6\nC\tb\ta\t10\t0\n");
  FinishMap(map);
  EXPECT_EQ(Named(map, "a").geo.lat, 1);
  EXPECT_EQ(Readings(Named(map, "a")).size(), 2U);
  EXPECT_NEAR(Named(map, "b").geo.lat, 1, 0.01);
}

TEST_F(IncludeTest, TheMapRemembersTheMarksOfWhatItsFileIncludes) {
  folder.Write("inner", "P\tb\n");
  folder.Write("outer", Include("inner") + "P\ta\n");
  folder.Write("base.map", Include("inner"));
  folder.Write("submap", Include("inner"));
  Map& map = ReadFile("a.map", "B\tbase.map\n" + Include("outer") + Include("missing"));
  const std::map<std::string, std::optional<FileMark>> expected = {
      {folder.Path("inner"), MarkOf("P\tb\n")},
      {folder.Path("outer"), MarkOf(Include("inner") + "P\ta\n")},
      {folder.Path("missing"), std::nullopt}};
  EXPECT_EQ(map.includedFiles, expected);
  EXPECT_EQ(map.basis->includedFiles.size(), 1U);
  // The file of the map does not name what an imported file includes.
  Map& other = ReadFile("b.map", "P\ta\n");
  EXPECT_TRUE(ReadMapFile(other, folder.Path("submap")));
  EXPECT_TRUE(other.includedFiles.empty());
  EXPECT_EQ(other.fileMark, MarkOf("P\ta\n"));
}

}  // namespace
}  // namespace orvane
