#include "mapfile/writer.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

// Inputs on which a reader could hang, fill the memory or recurse without end. Those that are large
// are so large that a time growing with their square would be noticed at once.

using BadInputTest = MapFixture;

TEST_F(BadInputTest, LinesOfTenMegabytesAreCutAndRead) {
  for (const char tag : std::string("#\xA9"
                                    "ABCDGHIKLMNOPRTZq=\t")) {
    Map& map = Open(std::string(1, tag) + "\t" + std::string(10000000, 'x') + "\nP\tlast\n");
    Named(map, "last");
  }
}

TEST_F(BadInputTest, LinesOfTabsAndCommasAreRead) {
  for (const char* line : {"\t", ",", "=", "\t,", "\t=", " \xFF", "a\t1\t"}) {
    std::string text = "T\tt\nC\tp\tq\t";
    while (text.size() < 2000000) text += line;
    Map& map = Open(text + "\nP\tlast\n");
    MapFileText(map, "a.map", true);
  }
}

TEST_F(BadInputTest, FileOf20MegabytesIsRead) {
  std::string text;
  for (int i = 0; text.size() < 20000000; ++i) {
    const std::string n = std::to_string(i);
    text += "L\tpoint " + n + "\t" + n + ".5\t-" + n + ".25\t" + n + "\n";
  }
  const Map& map = Open(text);
  EXPECT_GT(map.pointStore.size(), 400000U);
  Named(map, "POINT 400000");
}

TEST_F(BadInputTest, MillionIncludesEnd) {
  const TemporaryFolder folder;
  folder.Write("inc", "T\tx\n");
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "I " + folder.Path("inc") + "\n";
  for (int i = 0; i < 1000000; ++i) text += "I x\n";
  const Map& map = Read(text + "P\tlast\n");
  Named(map, "last");
  EXPECT_EQ(Length(map.trails), 1);
  EXPECT_EQ(messages.Entries().size(), 1010000U);
}

TEST_F(BadInputTest, ManyTrailsBetweenIncludesAreRead) {
  const TemporaryFolder folder;
  folder.Write("inc", "T\tcommon\n");
  std::string text;
  for (int i = 0; i < 2000; ++i) {
    for (int j = 0; j < 50; ++j) text += "T\tt" + std::to_string(i * 50 + j) + "\n";
    text += "I " + folder.Path("inc") + "\n";
  }
  const Map& map = Read(text);
  EXPECT_EQ(Length(map.trails), 100001);
}

TEST_F(BadInputTest, ManyTimeNamesOnOneTrailAreRead) {
  std::string text = "T\tfollow\n";
  constexpr int count = 200000;
  for (int i = 0; i < count; ++i) text += "P\t" + std::to_string(i) + ":1\n";
  for (int i = 0; i < count; ++i) {
    text += "P\tx=" + std::to_string(i) + ":2\nP\t" + std::to_string(i) + ":1\n";
  }
  const Map& map = Read(text);
  EXPECT_EQ(map.pointStore.size(), static_cast<size_t>(count + 1));
}

TEST_F(BadInputTest, ManySynonymsOfOnePointAreRead) {
  std::string text;
  constexpr int count = 200000;
  for (int i = 0; i < count; ++i) text += "P\ta=s" + std::to_string(i) + "\n";
  for (int i = 0; i < count; ++i) text += "P\ts" + std::to_string(i) + "=a\n";
  const Map& map = Read(text);
  EXPECT_EQ(map.pointStore.size(), 1U);
  EXPECT_EQ(Length(map.pointStore.front().synonyms), count);
}

TEST_F(BadInputTest, ManyNotesOfOnePointAreRead) {
  std::string text;
  for (int i = 0; i < 400000; ++i) text += "P\ta\t\tand more words\n";
  const Map& map = Read(text);
  EXPECT_EQ(Named(map, "a").note->size(), 400000U * 16 - 1);
}

TEST_F(BadInputTest, ManyPointsOfOneTrailAndReadingsOfOnePointAreRead) {
  std::string text = "T\tt\n";
  for (int i = 0; i < 200000; ++i) text += "G\ta\t1\t2\nL\tb\t1\t2\n";
  Map& map = Open(text);
  EXPECT_EQ(map.trails.front().points.size(), 400000U);
  MapFileText(map, "a.map", true);
}

TEST_F(BadInputTest, AnyBytesAreReadSavedAndReadAgain) {
  constexpr unsigned seed = 19990403;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  // Bytes with a meaning are more frequent than others.
  const std::string bytes =
      "\n\n\n\t\t\t\t\t\t,,==AaBbCcDdGgHhSsKkLlMmNnOoPpRrTtZz#0123456789.-+:' \r";
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
      const auto pick = static_cast<unsigned>(random());
      text += pick % 50 == 0 ? static_cast<char>(pick >> 8) : bytes[(pick >> 8) % bytes.size()];
    }
    Map& map = Open(text, "first.map");
    for (const bool full : {true, false}) {
      Map& again = Open(MapFileText(map, "first.map", full), "second.map");
      MapFileText(again, "second.map", full);
    }
    messages.Clear();
  }
}

}  // namespace
}  // namespace orvane
