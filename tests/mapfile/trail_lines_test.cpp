#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct TrailLinesTest : MapFixture {
  /// Reads a file and gives its first trail.
  const Trail& ReadTrail(const std::string& text) {
    messages.Clear();
    const Map& map = Read(text);
    static const Trail none;
    EXPECT_FALSE(map.trails.empty()) << text;
    return map.trails.empty() ? none : map.trails.front();
  }
  /// Reads a trail with a style list.
  const Trail& ReadStyle(const std::string& style) { return ReadTrail("T\tt\tx\t\t\t" + style); }
};

// --- T ------------------------------------------------------------------------------------------

TEST_F(TrailLinesTest, EachFieldIsRead) {
  const Trail& trail = ReadTrail(
      "T\tMain\tRiver\tBo,2\t2001-5-6\t2.5,#8040ff,Dashed,FirstLast,1,3,Cross,n\tthe note\tmore\n");
  EXPECT_EQ(trail.name, "Main");
  EXPECT_EQ(trail.type, "River");
  EXPECT_EQ(trail.focalAnimal, "Bo");
  EXPECT_EQ(trail.groupSize, 2);
  EXPECT_EQ(trail.date, PackDate(2001, 5, 6));
  EXPECT_EQ(trail.width, 2.5);
  EXPECT_EQ(trail.color, 0x8040ff);
  EXPECT_EQ(trail.lineStyle, LineStyle::Dashed);
  EXPECT_EQ(trail.labelMode, LabelMode::FirstLast);
  EXPECT_TRUE(trail.filled);
  EXPECT_EQ(trail.fillPattern, 3);
  EXPECT_EQ(trail.markStyle, MarkStyle::Cross);
  EXPECT_NE(trail.flags & TrailHidden, 0U);
  EXPECT_EQ(trail.note, "the note\tmore");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(TrailLinesTest, FieldsLeftOutHaveTheirDefaults) {
  for (const char* line : {"T\tMain", "T\tMain\t", "T\tMain\t\t\t\t\t"}) {
    const Trail& trail = ReadTrail(line);
    EXPECT_EQ(trail.name, "Main");
    EXPECT_EQ(trail.type, "");
    EXPECT_EQ(trail.focalAnimal, std::nullopt);
    EXPECT_EQ(trail.groupSize, 1);
    EXPECT_EQ(trail.date, 0);
    EXPECT_EQ(trail.width, 0);
    EXPECT_EQ(trail.color, -1);
    EXPECT_EQ(trail.lineStyle, LineStyle::Unset);
    EXPECT_EQ(trail.labelMode, LabelMode::Unset);
    EXPECT_FALSE(trail.filled);
    EXPECT_EQ(trail.fillPattern, 0);
    EXPECT_EQ(trail.markStyle, MarkStyle::None);
    EXPECT_EQ(trail.flags, 0U);
    EXPECT_EQ(trail.note, std::nullopt);
  }
}

TEST_F(TrailLinesTest, ATimeThatAnOriginLineGivesAPointOfTheTrailNamesThatPoint) {
  const Map& map = Read("G\tCamp\tN1\tE1\nT\t\tChimp\nP\tCamp\nP\t0800\nO\tCamp=0900\nP\t0900\n");
  EXPECT_EQ(NamesOf(map.trails.front()), (Texts{"Camp", "0800", "Camp"}));
}

TEST_F(TrailLinesTest, TrailWithoutANameIsNewEachTime) {
  const Map& map = Read("T\t\tx\nT\t\tx\n");
  EXPECT_EQ(TrailNamesOf(map), (Texts{"<none>", "<none>"}));
}

TEST_F(TrailLinesTest, OnlyATClosesTheTrail) {
  const Map& map = Read("T\tt\nP\ta\nT\nP\tb\nL\t\t1\t2\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"a"});
  EXPECT_EQ(Named(map, "b").trail, nullptr);
  EXPECT_EQ(Length(map.trails), 1);
}

TEST_F(TrailLinesTest, AnotherByteAfterTheTagIsReportedAndSkipped) {
  const Trail& trail = ReadTrail("Txabc\ttype\n");
  EXPECT_EQ(trail.name, "abc");
  EXPECT_EQ(trail.type, "type");
  EXPECT_EQ(Said(), Texts{"Bad trail spec: Txabc\ttype"});
}

TEST_F(TrailLinesTest, FileOrderOfTrailsIsKept) {
  EXPECT_EQ(TrailNamesOf(Read("T\ta\nT\tb\nT\tc\n")), (Texts{"a", "b", "c"}));
}

// The plane and the area of the earlier points were shown.
TEST_F(TrailLinesTest, ATrailThatIsGivenAgainIsMeasuredAgain) {
  Map& map = Read("T\ta\nP\t1\n");
  map.trails.front().flags |= TrailMeasured;
  ReadMapText(map, "T\ta\n");
  EXPECT_NE(map.trails.front().flags & TrailMeasured, 0U);
  ReadMapText(map, "T\ta\nP\t2\n");
  EXPECT_EQ(map.trails.front().flags & TrailMeasured, 0U);
}

TEST_F(TrailLinesTest, LastBlockOfANameReplacesTheOthers) {
  const Map& map =
      Read("T\tMain\tTrail\t\t1999-1-2\nP\ta\nP\tb\nT\tSide\nT\tMAIN\tRiver\nP\tc\nP\td\n");
  EXPECT_EQ(TrailNamesOf(map), (Texts{"MAIN", "Side"}));
  const Trail& trail = map.trails.front();
  EXPECT_EQ(NamesOf(trail), (Texts{"c", "d"}));
  EXPECT_EQ(trail.type, "River");
  EXPECT_EQ(trail.date, 0);
  EXPECT_EQ(Named(map, "a").trail, &trail) << "a point keeps its first trail";
}

TEST_F(TrailLinesTest, ReopenedTrailWithoutPointsKeepsItsOldOnes) {
  EXPECT_EQ(NamesOf(ReadTrail("T\tMain\nP\ta\nT\tMain\nT\nP\tb\n")), Texts{"a"});
}

TEST_F(TrailLinesTest, ReopenedTrailKeepsTheStylePartsThatAreLeftOut) {
  const Trail& trail =
      ReadTrail("T\tM\tx\t,4\t\t2,red,Solid,All,1,5,Rect,n\tnote\nT\tM\ty\t\t\t,,,None\n");
  EXPECT_EQ(trail.width, 2);
  EXPECT_EQ(trail.color, 0xff0000);
  EXPECT_EQ(trail.lineStyle, LineStyle::Solid);
  EXPECT_EQ(trail.labelMode, LabelMode::None);
  EXPECT_TRUE(trail.filled);
  EXPECT_EQ(trail.fillPattern, 5);
  EXPECT_EQ(trail.markStyle, MarkStyle::Rect);
  EXPECT_NE(trail.flags & TrailHidden, 0U);
  EXPECT_EQ(trail.groupSize, 4);
  EXPECT_EQ(trail.note, "note");
}

TEST_F(TrailLinesTest, TrailOfTheBasisIsReopenedThere) {
  Map& basis = Open("T\tMain\nP\ta\n", "basis.map");
  Map& map = MakeMap(workspace, "above.map");
  map.basis = &basis;
  ReadMapText(map, "T\tmain\tnew\nP\tb\nT\tOwn\n");
  EXPECT_EQ(TrailNamesOf(map), Texts{"Own"});
  EXPECT_EQ(basis.trails.front().type, "new");
  EXPECT_EQ(NamesOf(basis.trails.front()), Texts{"b"});
}

TEST_F(TrailLinesTest, FocalAnimalAndGroupSizeShareAField) {
  struct Case {
    const char* field;
    std::optional<std::string> focal;
    int size;
  };
  for (const Case& c : {Case{"Bo", "Bo", 1}, Case{"Bo,3", "Bo", 3}, Case{",3", std::nullopt, 3},
                        Case{"Bo,0", "Bo", 1}, Case{"Bo,-5", "Bo", 1}, Case{"Bo,x", "Bo", 1},
                        Case{"B o, 7x", "B o", 7}, Case{"Bo,3,4", "Bo", 3}}) {
    const Trail& trail = ReadTrail(std::string("T\tt\tx\t") + c.field + "\t99-4-3");
    EXPECT_EQ(trail.focalAnimal, c.focal) << c.field;
    EXPECT_EQ(trail.groupSize, c.size) << c.field;
    EXPECT_EQ(trail.date, PackDate(1999, 4, 3)) << c.field;
  }
}

TEST_F(TrailLinesTest, DateIsInAnyForm) {
  const PackedDate second = PackDate(1999, 3, 2);
  EXPECT_EQ(ReadTrail("T\tt\tx\t\t1999-3-2").date, second);
  EXPECT_EQ(ReadTrail("T\tt\tx\t\t99/3/2\t5").date, second);
  EXPECT_EQ(ReadTrail("T\tt\tx\t\t3.2.99\t5").date, second);
  EXPECT_EQ(ReadTrail("T\tt\tx\t\tnever\t5").date, 0);
  EXPECT_EQ(ReadTrail("T\tt\tx\t\tnever\t5").width, 5);
  workspace.preferences.europeanDates = true;
  EXPECT_EQ(ReadTrail("T\tt\tx\t\t2.3.99\t5").date, second);
}

TEST_F(TrailLinesTest, WordsOfTheStyleAreReadWithoutRegardToCase) {
  const char* lines[] = {"Solid", "Dotted", "Dashed"};
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(NumberOf(ReadStyle(std::string(",,") + lines[i]).lineStyle), i + 1);
  const char* labels[] = {"NONE", "firstlast", "aLL", "auto"};
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(NumberOf(ReadStyle(std::string(",,,") + labels[i]).labelMode), i + 1);
  const char* marks[] = {"None", "Circle", "Cross",    "Tick",
                         "Rect", "Plus",   "halftick", "BACKHALFTICK"};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(NumberOf(ReadStyle(std::string(",,,,,,") + marks[i]).markStyle), i) << marks[i];
  }
}

TEST_F(TrailLinesTest, WordsEndAtWhiteSpace) {
  const Trail& trail = ReadStyle("1 ,red ,Solid x,All ,1 ,3 ,Tick y,v z");
  EXPECT_EQ(trail.color, 0xff0000);
  EXPECT_EQ(trail.lineStyle, LineStyle::Solid);
  EXPECT_EQ(trail.labelMode, LabelMode::All);
  EXPECT_EQ(trail.fillPattern, 3);
  EXPECT_EQ(trail.markStyle, MarkStyle::Tick);
  EXPECT_EQ(trail.flags & TrailHidden, 0U);
}

// The word after a blank counted as left out, and a trail marked as hidden was shown.
TEST_F(TrailLinesTest, BlanksAfterACommaAreSkipped) {
  const Trail& trail = ReadStyle("1, red, Dotted, All, 1,\v3, Circle, v");
  EXPECT_EQ(trail.color, 0xff0000);
  EXPECT_EQ(trail.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(trail.labelMode, LabelMode::All);
  EXPECT_EQ(trail.fillPattern, 3);
  EXPECT_EQ(trail.markStyle, MarkStyle::Circle);
  EXPECT_EQ(trail.flags & TrailHidden, 0U);
  EXPECT_EQ(ReadStyle(",,,,, Cross").markStyle, MarkStyle::Cross);
  for (const char* style : {"1, n", "1,,,,,,, n", "1,,,,,,, maybe"}) {
    EXPECT_NE(ReadStyle(style).flags & TrailHidden, 0U) << style;
  }
  EXPECT_EQ(ReadStyle("1,,,,,,, ").flags & TrailHidden, 0U);
}

TEST_F(TrailLinesTest, UnknownWordsFallEachInItsWay) {
  const Trail& trail = ReadStyle("x,nocolor,wavy,some,x,x,star,maybe");
  EXPECT_EQ(trail.width, 0);
  EXPECT_EQ(trail.color, -1);
  EXPECT_EQ(trail.lineStyle, LineStyle::Unset);
  EXPECT_EQ(trail.labelMode, LabelMode::Unset);
  EXPECT_FALSE(trail.filled);
  EXPECT_EQ(trail.fillPattern, 0);
  EXPECT_EQ(trail.markStyle, MarkStyle::Unknown);
  EXPECT_NE(trail.flags & TrailHidden, 0U);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(TrailLinesTest, FillIsAnyNumberButZeroAndThePatternHasThreeBits) {
  EXPECT_TRUE(ReadStyle(",,,,-7").filled);
  EXPECT_FALSE(ReadStyle(",,,,0").filled);
  EXPECT_EQ(ReadStyle(",,,,0,9").fillPattern, 1);
  EXPECT_EQ(ReadStyle(",,,,0,7").fillPattern, 7);
  EXPECT_EQ(ReadStyle(",,,,0,-1").fillPattern, 7);
}

TEST_F(TrailLinesTest, VisibilityIsVOrElseHidden) {
  for (const char* word : {"v", "V"}) {
    EXPECT_EQ(ReadStyle(std::string(",,,,,,,") + word).flags & TrailHidden, 0U);
  }
  for (const char* word : {"n", "N", "visible", "x"}) {
    EXPECT_NE(ReadStyle(std::string(",,,,,,,") + word).flags & TrailHidden, 0U) << word;
  }
  EXPECT_EQ(ReadStyle(",,,,,,,").flags & TrailHidden, 0U);
}

TEST_F(TrailLinesTest, MarkWhereThePatternBelongsIsTheMarkAndTheVisibilityFollows) {
  const Trail& trail = ReadStyle("2,red,Solid,Auto,,circle,n x");
  EXPECT_EQ(trail.markStyle, MarkStyle::Circle);
  EXPECT_EQ(trail.fillPattern, 0);
  EXPECT_FALSE(trail.filled);
  EXPECT_NE(trail.flags & TrailHidden, 0U);
  const Trail& shown = ReadStyle(",,,,1,Cross x,v,Tick");
  EXPECT_EQ(shown.markStyle, MarkStyle::Cross);
  EXPECT_TRUE(shown.filled);
  EXPECT_EQ(shown.flags & TrailHidden, 0U);
  // A pattern that is not a number counts as 0.
  EXPECT_EQ(ReadStyle(",,,,1,Circles,Tick").markStyle, MarkStyle::Tick);
}

TEST_F(TrailLinesTest, LastPartNHidesTheTrailWhereverItIs) {
  for (const char* style : {",n", "2,n", "2,N ", ",red,n", ",,,n", ",,,,1,3,n", ",,,,,,,v,n"}) {
    const Trail& trail = ReadStyle(style);
    EXPECT_NE(trail.flags & TrailHidden, 0U) << style;
    EXPECT_EQ(trail.markStyle, MarkStyle::None) << style;
  }
  EXPECT_EQ(ReadStyle(",red,n").color, 0xff0000);
  for (const char* style : {"n", "", ",navy", ",,None", ",n,", ",n,red"}) {
    EXPECT_EQ(ReadStyle(style).flags & TrailHidden, 0U) << style;
  }
}

TEST_F(TrailLinesTest, StyleInThePlaceOfTheDateIsRead) {
  EXPECT_NE(ReadTrail("T\tn\tx\t\t,n\n").flags & TrailHidden, 0U);
  const Trail& filled = ReadTrail("T\tn\tx\t\t,,,,1,3\n");
  EXPECT_TRUE(filled.filled);
  EXPECT_EQ(filled.fillPattern, 3);
  EXPECT_EQ(filled.date, 0);
}

// --- R and K --------------------------------------------------------------------------------------

struct RangeLinesTest : MapFixture {
  /// Reads one key in a range.
  const SearchKey& ReadKey(const std::string& line) {
    messages.Clear();
    const Map& map = Read("R\tr\n" + line);
    static const SearchKey none;
    EXPECT_FALSE(map.ranges.front().keys.empty()) << line;
    return map.ranges.front().keys.empty() ? none : map.ranges.front().keys.front();
  }
};

TEST_F(RangeLinesTest, RangeHasANameAndANote) {
  const Map& map = Read("R\tDry season\tignored\tno rain\tat all\n");
  EXPECT_EQ(map.ranges.front().name, "Dry season");
  EXPECT_EQ(map.ranges.front().note, "no rain\tat all");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(RangeLinesTest, RangeMayLackBoth) {
  for (const char* line : {"R\t", "R\t\t", "R\t\t\t"}) {
    const Map& map = Read(line);
    ASSERT_EQ(Length(map.ranges), 1);
    EXPECT_EQ(map.ranges.front().name, std::nullopt);
    EXPECT_EQ(map.ranges.front().note, std::nullopt);
  }
}

TEST_F(RangeLinesTest, RangesAndKeysAreNewestFirst) {
  const Map& map = Read("R\ta\nK\t1\nK\t2\nR\tb\nK\t3\n");
  EXPECT_EQ(map.ranges.front().name, "b");
  const Range& first = *std::next(map.ranges.begin());
  EXPECT_EQ(first.keys.front().type, "2");
  EXPECT_EQ(std::next(first.keys.begin())->type, "1");
}

TEST_F(RangeLinesTest, OnlyAnRClosesTheRange) {
  const Map& map = Read("R\ta\nR\nK\tx\ty\n");
  EXPECT_EQ(Length(map.ranges), 1);
  EXPECT_EQ(Said(), Texts{"Search key specified outside of range: K\tx\ty"});
}

TEST_F(RangeLinesTest, TrailClosesTheRangeAndRangeTheTrail) {
  const Map& map = Read("T\tt\nP\ta\nR\tr\nP\tb\nT\tu\nK\tk\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"a"});
  EXPECT_EQ(Said(), Texts{"Search key specified outside of range: K\tk"});
}

TEST_F(RangeLinesTest, AnotherByteAfterTheTagIsReported) {
  const Map& map = Read("R ab\n k ef\n");
  EXPECT_EQ(map.ranges.front().name, "ab");
  EXPECT_EQ(map.ranges.front().keys.front().type, "ef");
  EXPECT_EQ(Said(), (Texts{"Bad range spec: R ab", "Bad search key: k ef"}));
}

TEST_F(RangeLinesTest, EachFieldOfAKeyIsRead) {
  const SearchKey& key = ReadKey("K\tGroup I\tBo\t6:10-11:35\t1999-4-1 2000-6-30\n");
  EXPECT_EQ(key.type, "Group I");
  EXPECT_EQ(key.focalAnimal, "Bo");
  EXPECT_EQ(key.timeFrom, 370);
  EXPECT_EQ(key.timeTo, 695);
  EXPECT_EQ(key.dateFrom, PackDate(1999, 4, 1));
  EXPECT_EQ(key.dateTo, PackDate(2000, 6, 30));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(RangeLinesTest, KeyMayLeaveOutAll) {
  for (const char* line : {"K", "K\t", "K\t\t\t\t"}) {
    const SearchKey& key = ReadKey(line);
    EXPECT_EQ(key.type, "!!Unknown!!") << line;
    EXPECT_EQ(key.focalAnimal, std::nullopt);
    EXPECT_EQ(key.timeFrom, 0);
    EXPECT_EQ(key.timeTo, 0);
    EXPECT_EQ(key.dateFrom, 0);
    EXPECT_EQ(key.dateTo, 0);
  }
}

TEST_F(RangeLinesTest, TimesAreTwoNumbersEach) {
  const std::tuple<const char*, int, int> cases[] = {
      {"6:10-11:35", 370, 695}, {"6:10 11:35", 370, 695},
      {"6:10", 370, 0},         {"6", 360, 0},
      {"6-11", 360, 660},       {"6 - 11", 360, 660},
      {"6 10-11 35", 370, 695}, {"6:-10", 350, 0},
      {"0:30-24:00", 30, 1440}, {"", 0, 0}};
  for (const auto& [text, from, to] : cases) {
    const SearchKey& key = ReadKey(std::string("K\tx\t\t") + text + "\t99-4-1");
    EXPECT_EQ(key.timeFrom, from) << text;
    EXPECT_EQ(key.timeTo, to) << text;
    EXPECT_EQ(key.dateFrom, PackDate(1999, 4, 1)) << text;
  }
}

TEST_F(RangeLinesTest, SecondDateFollowsABlankOrAColon) {
  for (const char* between : {" ", ":"}) {
    const SearchKey& key = ReadKey(std::string("K\tx\t\t\t99-4-1") + between + "99-4-2");
    EXPECT_EQ(key.dateFrom, PackDate(1999, 4, 1));
    EXPECT_EQ(key.dateTo, PackDate(1999, 4, 2));
  }
  const SearchKey& one = ReadKey("K\tx\t\t\t99-4-1");
  EXPECT_EQ(one.dateFrom, PackDate(1999, 4, 1));
  EXPECT_EQ(one.dateTo, 0);
}

}  // namespace
}  // namespace orvane
