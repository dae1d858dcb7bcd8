#include "mapfile/reader.h"

#include "base/number_text.h"
#include "mapfile/writer.h"
#include "support/decimal_comma.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using ReaderTest = MapFixture;

std::string Repeated(char c, size_t count) { return std::string(count, c); }

// --- Lines and tags -----------------------------------------------------------------------------

TEST_F(ReaderTest, EmptyFileGivesAnEmptyMapWithoutAWord) {
  const Map& map = Open("");
  EXPECT_TRUE(map.trails.empty());
  EXPECT_TRUE(map.loosePoints.empty());
  EXPECT_TRUE(map.pointStore.empty());
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, EmptyAndBlankLinesDoNothing) {
  const Map& map = Open("\n\n  \t \v\f\r\n\r\r\n");
  EXPECT_TRUE(map.pointStore.empty());
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, LinesEndAtLineFeedsAndCarriageReturnsAndTheByteFF) {
  const Map& map = Read("P\ta\rP\tb\r\nP\tc\nP\td\xFFP\te\r\rP\tf");
  for (const char* name : {"a", "b", "c", "d", "e", "f"}) Named(map, name);
  EXPECT_EQ(map.pointStore.size(), 6U);
}

TEST_F(ReaderTest, ByteFFAtTheStartOfALineEndsTheFile) {
  const Map& map = Read("P\ta\n\xFFP\tb\nP\tc\n");
  EXPECT_EQ(map.pointStore.size(), 1U);
  const Map& none = Read("\xFFP\tb\n");
  EXPECT_EQ(none.pointStore.size(), 0U);
}

TEST_F(ReaderTest, LineOf399BytesIsReadWhole) {
  const std::string comment = "#" + Repeated('x', 398);
  for (const char* end : {"\n", "\r\n", "\r", ""}) {
    const Map& map = Read(comment + end + (*end == '\0' ? "" : "P\ta\n"));
    EXPECT_EQ(map.comments, Texts{comment});
    EXPECT_EQ(map.pointStore.size(), *end == '\0' ? 0U : 1U);
  }
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, Byte400BeginsTheNextLine) {
  const Map& map = Read("#" + Repeated('x', 398) + "yz\nP\ta\n");
  EXPECT_EQ(map.comments, Texts{"#" + Repeated('x', 398)});
  EXPECT_EQ(Said(), Texts{"Unparseable input: yz"});
  Named(map, "a");
}

TEST_F(ReaderTest, RestOfALongLineMayBeALineOfItsOwn) {
  const Map& map = Read("#" + Repeated('x', 398) + "P\ta\n");
  Named(map, "a");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, LeadingWhiteSpaceIsSkipped) {
  const Map& map = Read(" \t P\ta\n\v\f\tP\tb\n  # note\n");
  Named(map, "a");
  Named(map, "b");
  EXPECT_EQ(map.comments, Texts{"# note"});
}

TEST_F(ReaderTest, TagsAreReadWithoutRegardToCase) {
  const Map& map = Read(
      "m\t2\nz\tx\t1,5\no\ta\nt\tTrail\ttype\nl\ta\t1\t2\ng\tb\t1\t2\nc\tc\tb\t1\na\tc\t5\n"
      "n\td\ta\np\te\nh\ta\t10\t5\t5\t0\tA\t0\nhs\tB1\tred\nHs\tB1\tred\nhS\tB1\tred\nr\tR\n"
      "k\tq\nd\t1\n");
  EXPECT_EQ(Said(), Texts{});
  EXPECT_EQ(map.pointStore.size(), 5U);
  EXPECT_EQ(Length(map.gridShades), 3);
  EXPECT_EQ(Length(map.ranges), 1);
  EXPECT_EQ(Length(map.trails), 1);
  EXPECT_EQ(map.magneticDeviation, 2);
  EXPECT_NE(map.origin, nullptr);
}

TEST_F(ReaderTest, RestOfAPointTagIsSkippedToTheTab) {
  const Map& map = Read("GPS\ta\t1\t2\nPoint of sorts\tb\nlat lon\tc\t1\t2\n");
  EXPECT_EQ(map.pointStore.size(), 3U);
  EXPECT_EQ(Readings(Named(map, "a")).size(), 1U);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, UnknownTagsAreReportedOncePerFile) {
  Read("E\tx\nF\nJ\n");
  EXPECT_EQ(Said(), Texts{"Unparseable input: E\tx"});
  messages.Clear();
  Read("  \xAAx\nQ\n");
  EXPECT_EQ(Said(), Texts{"Unparseable input: \xAAx"});
}

TEST_F(ReaderTest, EachUnknownTagIsReported) {
  std::string known =
      "#\xA9"
      "ABCDGHIKLMNOPRTZ";
  for (int byte = 1; byte < 255; ++byte) {
    const char tag = static_cast<char>(byte);
    if (IsSpace(tag) || known.find(tag) != std::string::npos) continue;
    if (tag >= 'a' && tag <= 'z' && known.find(static_cast<char>(tag - 32)) != std::string::npos) {
      continue;
    }
    messages.Clear();
    Read(std::string(1, tag) + "\tx\n");
    EXPECT_EQ(Said(), Texts{"Unparseable input: " + std::string(1, tag) + "\tx"}) << byte;
  }
}

TEST_F(ReaderTest, CreditsBeginWithTheSignInLatin1OrInUtf8AndKeepTheirBytes) {
  Map& map = Read(" \xC2\xA9 A. Walker\n\xA9 B. Walker\n\xC2\xA9\n");
  const Texts credits = {"\xC2\xA9 A. Walker", "\xA9 B. Walker", "\xC2\xA9"};
  EXPECT_EQ(map.credits, credits);
  EXPECT_EQ(Said(), Texts{});
  const std::string saved = MapFileText(map, "test.map", true);
  EXPECT_NE(saved.find("\n\xC2\xA9 A. Walker\n\xA9 B. Walker\n\xC2\xA9\n"), std::string::npos)
      << saved;
  Read("\xC2\xAA\n");
  EXPECT_EQ(Said(), Texts{"Unparseable input: \xC2\xAA"});
}

TEST_F(ReaderTest, TheByteOrderMarkOfUtf8IsSkipped) {
  Map& map = Read("\xEF\xBB\xBFG\tCamp\tN1\tE10\nO\tCamp\n");
  EXPECT_EQ(map.origin, &Named(map, "Camp"));
  EXPECT_EQ(Said(), Texts{});
  EXPECT_EQ(MapFileText(map, "test.map", true).find('\xEF'), std::string::npos);
  // Only there is it one.
  Read("P\tCamp\n\xEF\xBB\xBF#\n");
  EXPECT_EQ(Said(), Texts{"Unparseable input: \xEF\xBB\xBF#"});
}

TEST_F(ReaderTest, CommentsAndCreditsAreKeptWholeInFileOrder) {
  const Map& map = Read("# first\n\xA9 A. Walker\n#\n\xA9\n#\tlast \n");
  EXPECT_EQ(map.comments, (Texts{"# first", "#", "#\tlast "}));
  EXPECT_EQ(map.credits, (Texts{"\xA9 A. Walker", "\xA9"}));
}

TEST_F(ReaderTest, TextOf8BitsPassesUntouched) {
  const Map& map = Read(
      "P\t\xE9"
      "cole \xC3\xA9\t\t\x80\xFE\n");
  const Point& point = Named(map,
                             "\xE9"
                             "cole \xC3\xA9");
  EXPECT_EQ(point.note, "\t\x80\xFE");
}

// --- Settings of the map ------------------------------------------------------------------------

TEST_F(ReaderTest, DeviationIsANumberAfterWhiteSpace) {
  for (const char* line : {"M\t-3.25", "M -3.25", "M-3.25", "M \t -3.25xyz"}) {
    const Map& map = Read(line);
    EXPECT_EQ(map.magneticDeviation, -3.25) << line;
    EXPECT_NE(map.flags & MapHasDeviation, 0U);
  }
  const Map& none = Read("M");
  EXPECT_EQ(none.magneticDeviation, 0);
  EXPECT_NE(none.flags & MapHasDeviation, 0U);
  EXPECT_EQ(Read("").flags & MapHasDeviation, 0U);
}

TEST_F(ReaderTest, DeviationClosesTrailAndRange) {
  const Map& map = Read("T\tx\nP\ta\nM\t1\nP\tb\nR\tr\nM\t1\nK\tk\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"a"});
  EXPECT_EQ(Said(), Texts{"Search key specified outside of range: K\tk"});
}

TEST_F(ReaderTest, DateOfTheLastSaveIsNotTaken) {
  const Map& map = Read("D\t1999-4-3\nD\nD1999-4-3\n");
  EXPECT_EQ(map.date, 0);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, OriginNamesAPoint) {
  const Map& map = Read("O\tCamp\tmore\n");
  ASSERT_NE(map.origin, nullptr);
  EXPECT_EQ(map.origin, &Named(map, "Camp"));
  EXPECT_EQ(map.origin->trail, nullptr);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, OriginIsResolvedWithNoTrailAndLeavesTheTrailOpen) {
  const Map& map = Read("T\tx\nP\ta\nO\tCamp\nP\tb\n");
  EXPECT_EQ(NamesOf(map.trails.front()), (Texts{"a", "b"}));
}

TEST_F(ReaderTest, OnlyAnODoesNothing) {
  EXPECT_EQ(Read("O\n").origin, nullptr);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(ReaderTest, FaultsOfAnOriginAreReported) {
  const Map& map = Read("O Camp\nO\tHut\n");
  EXPECT_EQ(map.origin->name, "Camp");
  EXPECT_EQ(FindPointByName(map, nullptr, "Hut"), nullptr);
  EXPECT_EQ(Said(), (Texts{"Bad origin spec: O Camp",
                           "Map has two (or more) origins, second one ignored"}));
  messages.Clear();
  EXPECT_EQ(Read("O\t=\tx\n").origin, nullptr);
  EXPECT_EQ(Said(), Texts{"Bad pointname in origin ="});
}

struct SettingsCase {
  const char* line;
  std::optional<std::string> names[3];
  int enabled;
  int interval;
};

TEST_F(ReaderTest, SettingsNameTheMeasuresAndTheContours) {
  const SettingsCase cases[] = {
      {"Z\tfeed,rest,call\t1,25", {"feed", "rest", "call"}, 1, 25},
      {"Zfeed,rest,call\t1,25", {"feed", "rest", "call"}, 1, 25},
      {"Z\tone", {"one", {}, {}}, 0, 0},
      {"Z\t,two", {{}, "two", {}}, 0, 0},
      {"Z\t,,three\t3", {{}, {}, "three"}, 3, 0},
      {"Z\tone\t0,-5", {"one", {}, {}}, 0, -5},
      {"Z\t\t7,8", {{}, {}, {}}, 7, 8},
      {"Z\ta,b,c,d\t1,2,3", {"a", "b", "c"}, 1, 2},
      {"Z\ta b, c\tx,9", {"a b", " c", {}}, 0, 0},
      {"Z", {{}, {}, {}}, 0, 0},
      {"Z\t", {{}, {}, {}}, 0, 0},
  };
  for (const SettingsCase& c : cases) {
    const Map& map = Read(c.line);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(map.smName[i], c.names[i]) << c.line << " " << i;
    EXPECT_EQ(map.contourEnabled, c.enabled) << c.line;
    EXPECT_EQ(map.contourInterval, c.interval) << c.line;
  }
  EXPECT_EQ(Said(), Texts{});
}

// --- Files --------------------------------------------------------------------------------------

struct ReadFileTest : MapFixture {
  TemporaryFolder folder;
};

TEST_F(ReadFileTest, ReadsAFileIntoAMap) {
  const std::string path = folder.Write("a.map", "P\ta\n");
  Map& map = MakeMap(workspace, path);
  EXPECT_TRUE(ReadMapFile(map, path));
  Named(map, "a");
  EXPECT_EQ(Said(), Texts{});
  EXPECT_TRUE(workspace.reading.openFiles.empty());
}

TEST_F(ReadFileTest, WhatCannotBeReadLeavesTheMapAsItWas) {
  Map& map = Read("T\tx\nP\ta\nT\ty\n");
  const Texts before = TrailNamesOf(map);
  const std::string locked = folder.Write("locked.map", "P\tb\n");
  ::chmod(locked.c_str(), 0);
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  Texts names = {folder.Path("missing.map"), folder.Path(), "", folder.Path("pipe"),
                 std::string("nul\0name", 8)};
  if (::geteuid() != 0) names.push_back(locked);  // root may read all
  for (const std::string& name : names) {
    messages.Clear();
    EXPECT_FALSE(ReadMapFile(map, name));
    EXPECT_EQ(Said(), Texts{"Can't open file " + name});
    EXPECT_EQ(TrailNamesOf(map), before);
  }
}

TEST_F(ReadFileTest, FileInUtf16GivesAMessage) {
  for (const char* mark : {"\xFF\xFE", "\xFE\xFF"}) {
    messages.Clear();
    const std::string path = folder.Write("u.map", mark + std::string("P\0\t\0a\0\n\0", 8));
    Map& map = MakeMap(workspace, path);
    EXPECT_FALSE(ReadMapFile(map, path));
    ASSERT_EQ(Said().size(), 1U);
    EXPECT_NE(Said()[0].find("UTF-16"), std::string::npos);
    EXPECT_TRUE(map.pointStore.empty());
  }
}

TEST_F(ReadFileTest, BytesThatAreNotTextGiveAMessageAndTheRestIsKept) {
  const std::string path = folder.Write("n.map", std::string("P\ta\0b\nP\tc\n#\0\n", 13));
  Map& map = MakeMap(workspace, path);
  EXPECT_TRUE(ReadMapFile(map, path));
  ASSERT_EQ(Said().size(), 1U);
  EXPECT_EQ(Said()[0], "File " + path + " holds bytes that are not text; it may be damaged");
  Named(map, std::string_view("a\0b", 3));
  Named(map, "c");
  EXPECT_EQ(map.comments, Texts{std::string("#\0", 2)});
}

// --- Locale -------------------------------------------------------------------------------------

TEST_F(ReaderTest, NumbersDoNotFollowTheLocale) {
  const DecimalComma comma;
  const Map& map = Read(
      "M\t-3.25\nL\ta\t1.5\t2.5\t1000\nG\tb\tN1 30.5'\tE2.75\t12.5\nC\tc\ta\t10.5\t90.25\t-4.5\n"
      "P\tc\t1.5k\nT\tt\tx\t\t\t2.5\nH\ta\t100\t5\t5\t12.5\nHS\tA1\tred,45.5\n");
  EXPECT_EQ(map.magneticDeviation, -3.25);
  EXPECT_EQ(Named(map, "a").geo.lat, 1.5);
  EXPECT_EQ(Named(map, "a").geo.lon, 2.5);
  EXPECT_DOUBLE_EQ(Readings(Named(map, "b"))[0]->position.lat, 1 + 30.5 / 60);
  EXPECT_EQ(Readings(Named(map, "b"))[0]->position.lon, 2.75);
  EXPECT_EQ(Readings(Named(map, "b"))[0]->altitude, 13);
  EXPECT_EQ(Readings(Named(map, "c"))[0]->distance, 10.5);
  EXPECT_EQ(Readings(Named(map, "c"))[0]->bearing, 90.25);
  EXPECT_EQ(Readings(Named(map, "c"))[0]->inclination, -4.5);
  EXPECT_EQ(Named(map, "c").labelLimit, 1500);
  EXPECT_EQ(map.trails.front().width, 2.5);
  EXPECT_EQ(map.grids.front().angle, 12.5);
  EXPECT_EQ(map.gridShades.front().value, 45.5);
  EXPECT_EQ(Said(), Texts{});
}

}  // namespace
}  // namespace orvane
