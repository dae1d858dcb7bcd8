// What a map that is read a second time, from its saved text, gives the points of its basis twice.

#include "mapfile/basis_points.h"

#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct BasisPointsTest : MapFixture {
  /// Reads a basis and, above it, a text of which the repeats are taken back.
  /// \return the basis
  Map& AfterRepeats(std::string_view basisText, std::string_view text) {
    Map& basis = Read(basisText, "basis.map");
    BasisPoints points(&basis);
    Above(basis, text);
    points.TakeBackRepeats();
    return basis;
  }
  void Above(Map& basis, std::string_view text) {
    Map& map = MakeMap(workspace, "above.map");
    map.basis = &basis;
    ReadMapText(map, text);
  }
};

TEST_F(BasisPointsTest, ARepeatedReadingIsTakenBackAndANewOneStays) {
  struct Case {
    const char* before;
    const char* added;
    size_t readings;
  };
  const Case cases[] = {{"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\t45\t5\t60\t2\n", 1},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t101\t45\t5\t60\t2\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\t46\t5\t60\t2\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\tA45\t5\t60\t2\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\t45\t6\t60\t2\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\t45\t5\t61\t2\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tq\t100\t45\t5\t60\t3\n", 2},
                        {"C\tp\tq\t100\t45\t5\t60\t2\n", "C\tp\tr\t100\t45\t5\t60\t2\n", 2},
                        // A save rounds.
                        {"C\tp\tq\t123456.7\t45.00001\n", "C\tp\tq\t123457\t45\n", 1},
                        {"G\tp\tN1.0000001\tE10\n", "G\tp\tN1\tE10\n", 1},
                        {"G\tp\tN1\tE10\n", "G\tp\tN1.00001\tE10\n", 2},
                        {"G\tp\tN1\tE10\n", "G\tp\tN1\tE10.00001\n", 2},
                        {"N\tp\tFrom q to r by 1/3\n", "N\tp\tFrom q to r by 1/3\n", 1},
                        {"N\tp\tFrom q to r by 1/3\n", "N\tp\tFrom q to r by 1/4\n", 2},
                        // Each reading is taken back once.
                        {"A\tp\t5\nA\tp\t5\n", "A\tp\t5\nA\tp\t5\n", 2},
                        {"A\tp\t5\n", "A\tp\t5\nA\tp\t5\n", 2},
                        {"A\tp\t5\nA\tp\t6\n", "A\tp\t7\nA\tp\t5\nA\tp\t8\nA\tp\t6\n", 4}};
  for (const Case& c : cases) {
    const Map& basis = AfterRepeats(std::string("P\tq\nP\tr\n") + c.before, c.added);
    EXPECT_EQ(Readings(Named(basis, "p")).size(), c.readings) << c.before << c.added;
    workspace.maps.clear();
  }
}

TEST_F(BasisPointsTest, ANoteIsKeptOnce) {
  // A save writes a note with its tab after another tab.
  const Map& basis = AfterRepeats("P\ta\t\tnest\nP\tb\t\tnest\nP\tc\nP\td\t\tnest\n",
                                  "P\ta\t\t\tnest\nP\tb\t\t\tnest \tburnt\nP\tc\t\tnew\n");
  EXPECT_EQ(Named(basis, "a").note, "\tnest");
  EXPECT_EQ(Named(basis, "b").note, "\tnest \tburnt");
  EXPECT_EQ(Named(basis, "c").note, "\tnew");
  EXPECT_EQ(Named(basis, "d").note, "\tnest");
}

TEST_F(BasisPointsTest, TheStyleOfTheBasisHoldsWhereItHasOne) {
  const Map& basis =
      AfterRepeats("P\ta\t2k,1,,3,C4\nP\tb\n", "P\ta\t1k,5,7,6,s9\nP\tb\t1k,5,,,s9\n");
  const Point& a = Named(basis, "a");
  EXPECT_EQ(a.labelLimit, 2000);
  EXPECT_EQ(a.sm[0], 1);
  EXPECT_EQ(a.sm[1], 7);
  EXPECT_EQ(a.sm[2], 3);
  EXPECT_EQ(a.markShape, PointMarkCircle);
  EXPECT_EQ(a.markSize, 4);
  EXPECT_NE(a.flags & PointMarkFilled, 0U);
  const Point& b = Named(basis, "b");
  EXPECT_EQ(b.labelLimit, 1000);
  EXPECT_EQ(b.sm[0], 5);
  EXPECT_EQ(b.markShape, PointMarkSquare);
  EXPECT_EQ(b.markSize, 9);
  EXPECT_EQ(b.flags & PointMarkFilled, 0U);
}

// The mark of a point was kept, but not that it is filled.
TEST_F(BasisPointsTest, AFilledMarkFromAboveStaysFilled) {
  const Map& basis = AfterRepeats("P\ta\n", "P\ta\t,,,,S9\n");
  EXPECT_EQ(Named(basis, "a").markShape, PointMarkSquare);
  EXPECT_NE(Named(basis, "a").flags & PointMarkFilled, 0U);
}

TEST_F(BasisPointsTest, ThePlaceOfTheBasisHolds) {
  const Map& basis = AfterRepeats("L\ta\t1\t2\t30\n", "L\ta\t3\t4\t50\n");
  EXPECT_EQ(Named(basis, "a").geo.lat, 1);
  EXPECT_EQ(Named(basis, "a").geo.lon, 2);
  EXPECT_EQ(Named(basis, "a").geo.altitude, 30);
}

TEST_F(BasisPointsTest, AllThatAMapGaveCanBeTakenBackInEveryMapOfTheChain) {
  Map& lowest = Read("P\ta\t2k,1,,3,C4\tnest\nA\ta\t5\n", "lowest.map");
  Map& basis = MakeMap(workspace, "basis.map");
  basis.basis = &lowest;
  ReadMapText(basis, "P\tb\n");
  BasisPoints points(&basis);
  Above(basis, "P\ta\t1k,5,7,6,s9\tburnt\nA\ta\t6\nL\ta\t1\t2\nN\tb\tq\t1k,5,7,6,S9\tnew\n");
  points.TakeBackAll();
  const Point& a = Named(lowest, "a");
  EXPECT_EQ(Readings(a).size(), 1U);
  EXPECT_EQ(a.note, "\tnest");
  EXPECT_EQ(a.labelLimit, 2000);
  EXPECT_EQ(a.sm[0], 1);
  EXPECT_EQ(a.sm[1], 0);
  EXPECT_EQ(a.markShape, PointMarkCircle);
  EXPECT_FALSE(IsPlaced(a));
  const Point& b = Named(basis, "b");
  EXPECT_TRUE(b.measurements.empty());
  EXPECT_EQ(b.note, std::nullopt);
  EXPECT_EQ(b.labelLimit, 0);
  EXPECT_EQ(b.sm[2], 0);
  EXPECT_EQ(b.markShape, PointMarkNone);
  EXPECT_EQ(b.flags & PointMarkFilled, 0U);
}

TEST_F(BasisPointsTest, WithoutABasisNothingIsTakenBack) {
  BasisPoints points(nullptr);
  const Map& map = Read("A\ta\t5\n");
  points.TakeBackRepeats();
  points.TakeBackAll();
  EXPECT_EQ(Readings(Named(map, "a")).size(), 1U);
}

TEST_F(BasisPointsTest, OneTabIsTakenFromTheNotes) {
  Map& map = Read("P\ta\t\t\tnest\nP\tb\t\tnest\nP\tc\nP\td\n");
  Named(map, "d").note = "nest";
  TakeTabsFromNotes(map);
  EXPECT_EQ(Named(map, "a").note, "\tnest");
  EXPECT_EQ(Named(map, "b").note, "nest");
  EXPECT_EQ(Named(map, "c").note, std::nullopt);
  EXPECT_EQ(Named(map, "d").note, "nest");
}

}  // namespace
}  // namespace orvane
