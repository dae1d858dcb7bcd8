#include "mapfile/writer.h"

#include "base/dates.h"
#include "support/decimal_comma.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <tuple>

namespace orvane {
namespace {

struct WriterTest : MapFixture {
  WriterTest() {
    workspace.today = [] { return PackDate(2004, 5, 19); };
  }
  /// The file of a map, without the lines that each file has.
  std::string Written(Map& map, bool full = false) {
    std::string text = MapFileText(map, "test.map", full);
    const std::string date = "D\t2004-5-19\n\n";
    const size_t at = text.find(date);
    EXPECT_NE(at, std::string::npos) << text;
    return at == std::string::npos ? text : text.erase(at, date.size());
  }
  /// Reads, finishes and writes.
  std::string Rewritten(std::string_view text, bool full = false) {
    return Written(Open(text), full);
  }
  /// The lines written for a text with only one point "p".
  std::string PointWritten(const std::string& text, bool full = false) {
    const std::string written = Rewritten(text, full);
    EXPECT_EQ(written.substr(0, 2), "T\n") << written;
    return written.substr(2);
  }
};

// --- The sections -----------------------------------------------------------------------------

TEST_F(WriterTest, EmptyMapGivesOnlyTheDate) {
  Map& map = Open("");
  EXPECT_EQ(MapFileText(map, "a.map", true), "D\t2004-5-19\n\n");
  EXPECT_EQ(MapFileText(map, "a.map", false), "D\t2004-5-19\n\n");
}

TEST_F(WriterTest, DateIsThatOfTheLocalClock) {
  Map& map = Open("");
  workspace.today = nullptr;
  int year = 0;
  int month = 0;
  int day = 0;
  const std::string text = MapFileText(map, "a.map", true);
  ASSERT_EQ(std::sscanf(text.c_str(), "D\t%d-%d-%d\n\n", &year, &month, &day), 3) << text;
  EXPECT_GE(year, 2024);
  EXPECT_TRUE(month >= 1 && month <= 12);
  EXPECT_TRUE(day >= 1 && day <= 31);
}

TEST_F(WriterTest, SectionsHaveAFixedOrder) {
  Map& basis = MakeMap(workspace, "basis.map");
  Map& map = MakeMap(workspace, "test.map");
  map.basis = &basis;
  ReadMapText(map,
              "R\trange\t\tnote\nK\ttype\nH\tcorner\t1\t2\t3\t4\tA\t0\nP\tloose\nT\tb\nP\t1\n"
              "T\ta\nP\t2\n# one\n\xA9 two\n# three\nO\torigin\nZ\tx\t1,2\nM\t5\n");
  FinishMap(map);
  EXPECT_EQ(MapFileText(map, "test.map", false),
            "B\tbasis.map\nM\t5\nZ\tx\t1,2\n\nO\torigin\nD\t2004-5-19\n\n\xA9 two\n\n# one\n"
            "# three\n\nT\tb\t\t\nP\t1\n\nT\ta\t\t\nP\t2\n\nT\nP\tloose\nP\torigin\nP\tcorner\n"
            "H\tcorner\t1\t2\t3\t4\tA0\t00\nR\trange\t\tnote\nK\ttype\t\t\n");
}

TEST_F(WriterTest, BasisIsNamedWithoutItsDirectoryWhereThatIsTheSame) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"dir/base.map", "dir/a.map", "base.map"},
      {"DIR/base.map", "dir/a.map", "base.map"},
      {"base.map", "a.map", "base.map"},
      {"dir/base.map", "a.map", "dir/base.map"},
      {"base.map", "dir/a.map", "base.map"},
      {"dir/sub/base.map", "dir/a.map", "dir/sub/base.map"},
      {"/x/base.map", "/y/a.map", "/x/base.map"}};
  for (const auto& [base, path, written] : cases) {
    Map& map = MakeMap(workspace, path);
    map.basis = &MakeMap(workspace, base);
    EXPECT_EQ(MapFileText(map, path, false), std::string("B\t") + written + "\nD\t2004-5-19\n\n");
  }
}

TEST_F(WriterTest, DeviationIsWrittenUnlessItIsZero) {
  EXPECT_EQ(Rewritten("M\t0\n"), "");
  EXPECT_EQ(Rewritten("M\t-3.123456789\n"), "M\t-3.12346\n");
}

TEST_F(WriterTest, SettingsOfTheMap) {
  const std::pair<const char*, const char*> cases[] = {{"Z\ta", "Z\ta\n\n"},
                                                       {"Z\t,b", "Z\t,b\n\n"},
                                                       {"Z\t,,c", "Z\t,,c\n\n"},
                                                       {"Z\ta,b", "Z\ta,b\n\n"},
                                                       {"Z\ta,,c", "Z\ta,,c\n\n"},
                                                       {"Z\t,b,c", "Z\t,b,c\n\n"},
                                                       {"Z\ta,b,c", "Z\ta,b,c\n\n"},
                                                       {"Z\ta\t3,4", "Z\ta\t3,4\n\n"},
                                                       {"Z\t\t3,-4", "Z\t\t3,-4\n\n"},
                                                       {"Z\t\t3,0", ""},
                                                       {"Z\t\t0,4", ""},
                                                       {"Z\ta\t3", "Z\ta\n\n"}};
  for (const auto& [line, written] : cases) EXPECT_EQ(Rewritten(line), written) << line;
}

TEST_F(WriterTest, LoosePointsComeInTheOrderOfTheirBuckets) {
  EXPECT_EQ(Rewritten("P\tc\nP\tb\nP\t!\nP\ta\nP\t_x\nP\t@y\n"),
            "T\nP\ta\nP\t!\nP\tb\nP\tc\nP\t_x\nP\t@y\n");
}

TEST_F(WriterTest, NamelessAndTimeNamedPointsOffTrailsAreNotWritten) {
  EXPECT_EQ(Rewritten("L\t\t1\t2\nL\t0900\t1\t2\n", true), "");
}

TEST_F(WriterTest, PointsOfAReplacedTrailAreKept) {
  Map& map = Open("T\tt\nA\ta\t5\nT\tt\nA\tb\t6\n");
  const std::string first = Written(map);
  EXPECT_EQ(first, "T\tt\t\t\nA\tb\t6\n\nT\nA\ta\t5\n");
  EXPECT_EQ(Written(map), first) << "a second save of one map writes the same";
}

TEST_F(WriterTest, GridsAreWrittenWithTheirLetters) {
  EXPECT_EQ(Rewritten("H\tc\t100\t-2\t3\t12.5\t07\ti8\nH\tc\t1\t2\t3\t0\tI1\ta2\n"
                      "H\tc\t1\t2\t3\t0\tA-3\tn4\n"),
            "T\nP\tc\nH\tc\t1\t2\t3\t0\tA-3\tn4\nH\tc\t1\t2\t3\t0\tI1\ta2\n"
            "H\tc\t100\t-2\t3\t12.5\t07\ti8\n");
}

TEST_F(WriterTest, RangesAndKeys) {
  EXPECT_EQ(Rewritten("R\ta\nK\tx\tBo\t6:05-11:35\t1999-4-1 1999-6-30\nK\t\t\t5:00-5:00\n"
                      "K\ty\t\t0:00-9:09\nK\tz\t\t\t99-4-1\nR\t\t\tnote\n"),
            "R\t\t\tnote\nR\ta\nK\tz\t\t\t1999-4-1 \nK\ty\t\t0:00-9:09\nK\t!!Unknown!!\t\t\n"
            "K\tx\tBo\t6:05-11:35\t1999-4-1 1999-6-30\n");
}

TEST_F(WriterTest, ShadesIncludesAndContoursAreNotWritten) {
  Map& map = Open("L\tc\t1\t2\nH\tc\t10\t5\t5\nHS\tA1\tred\n");
  map.contourTrails.emplace_front().name = "100";
  EXPECT_EQ(Written(map), "T\nP\tc\nH\tc\t10\t5\t5\t0\tA0\t00\n");
}

// --- Points -------------------------------------------------------------------------------------

TEST_F(WriterTest, ReadingsAreWrittenNewestFirst) {
  EXPECT_EQ(PointWritten("A\tp\t5\nG\tp\tN1 30'\tW2 15.5'\nN\tp\tCamp\n"),
            "N\tp\tCamp\nG\tp\tN1 30.00000'\tW2 15.50000'\nA\tp\t5\n");
}

TEST_F(WriterTest, CompassReading) {
  const std::string base = "T\nP\tb\nC\tp\tb";
  EXPECT_EQ(Rewritten("C\tp\tb\t25.5\t92.25\t-4.5\t1702\t3\n"),
            base + "\t25.5\t92.25\t-4.5\t1702\t3\n");
  EXPECT_EQ(Rewritten("C\tp\tb\t1\tA2\t3\n"), base + "\t1\tA2\t3\n");
  EXPECT_EQ(Rewritten("C\tp\tb\n"), base + "\t0\t0\t0\n");
  EXPECT_EQ(Rewritten("C\tp\tb\t1\t2\t3\t\t4\n"), base + "\t1\t2\t3\t\t4\n");
  EXPECT_EQ(Rewritten("C\tp\tb\t1234567\t0.0000123\n"), base + "\t1.23457e+06\t1.23e-05\t0\n");
}

TEST_F(WriterTest, FixKeepsFiveDecimalsOfAMinute) {
  EXPECT_EQ(PointWritten("G\tp\tS0.25\tW0.5\n"), "G\tp\tS0 15.00000'\tW0 30.00000'\n");
  EXPECT_EQ(PointWritten("G\tp\tN0\tE179.9999999\n"), "G\tp\tN0 0.00000'\tE179 59.99999'\n");
}

TEST_F(WriterTest, TailIsWrittenOnlyAsFarAsItHoldsSomething) {
  const std::pair<const char*, const char*> cases[] = {
      {"A\tp", "A\tp\n"},
      {"A\tp\t5", "A\tp\t5\n"},
      {"A\tp\t5\t2", "A\tp\t5\t2\n"},
      {"A\tp\t\t2", "A\tp\t\t2\n"},
      {"A\tp\t\t\t30", "A\tp\t\t\t30.000000\n"},
      {"A\tp\t5\t\t30", "A\tp\t5\t\t30.000000\n"},
      {"A\tp\t\t2\t30", "A\tp\t\t2\t30.000000\n"},
      {"A\tp\t\t\t,7", "A\tp\t\t\t,7\n"},
      {"A\tp\t\t\t\tnote", "A\tp\t\t\t\t\tnote\n"},
      // A mark without other parts does not count for the fields before it, and so moves into one
      // of them.
      {"A\tp\t\t\t,,,,c3", "A\tp\t,,,,c3\n"},
      {"N\tp\tq\t30\tnote", "N\tp\tq\t30.000000\t\tnote\n"},
      {"N\tp\tq\t\tnote", "N\tp\tq\t\t\tnote\n"}};
  for (const auto& [line, written] : cases) EXPECT_EQ(PointWritten(line), written) << line;
}

TEST_F(WriterTest, StyleIsOnlyOnTheFirstLine) {
  EXPECT_EQ(PointWritten("A\tp\t5\t\t30,1\tnote\nA\tp=q\t6\n"),
            "A\tp=q\t6\t\t30.000000,1\t\tnote\nA\tp\t5\n");
}

TEST_F(WriterTest, SynonymsAreOnTheFirstLineNewestFirst) {
  EXPECT_EQ(PointWritten("A\tp=q=r\t5\n"), "A\tp=r=q\t5\n");
  EXPECT_EQ(PointWritten("L\tp=q\t1\t2\n", true), "L\tp=q\t1.0000000000\t2.0000000000\t\n");
  EXPECT_EQ(PointWritten("P\tp=q\n"), "P\tp\n") << "lost without a reading or place";
}

/// The style by its rules, one after the other.
std::string StyleTwin(double limit, const int (&sm)[3], int shape, bool filled, int size,
                      const char* note) {
  const bool anySm = sm[0] != 0 || sm[1] != 0 || sm[2] != 0;
  const bool mark = shape != 0;
  std::string text;
  char buffer[64];
  const auto put = [&](const char* format, auto value) {
    std::snprintf(buffer, sizeof buffer, format, value);
    text += buffer;
  };
  if (limit > 0 || anySm || mark) {
    text += "\t";
    if (limit > 0) put("%f", limit);
    if (anySm || mark) text += ",";
    if (sm[0] != 0) put("%d", sm[0]);
    if (sm[1] != 0 || sm[2] != 0 || mark) text += ",";
    if (sm[1] != 0) put("%d", sm[1]);
    if (sm[2] != 0 || mark) text += ",";
    if (sm[2] != 0) put("%d", sm[2]);
    if (mark) {
      text += ",";
      text += shape == 1 ? (filled ? "C" : "c") : (filled ? "S" : "s");
      put("%d", size);
    }
  } else if (note != nullptr) {
    text += "\t";
  }
  if (note != nullptr) text += std::string("\t") + note;
  return text;
}

TEST_F(WriterTest, EveryStyleOfAPoint) {
  Map& map = MakeMap(workspace, "test.map");
  Point& point = *ResolvePointName(map, nullptr, "p");
  int count = 0;
  for (int bits = 0; bits < 256; ++bits) {
    const bool on[] = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
    point.labelLimit = on[0] ? 12.5 : 0;
    for (int i = 0; i < 3; ++i) point.sm[i] = on[i + 1] ? 7 - i * 4 : 0;
    const int shape = (bits >> 4) % 4;
    if (shape == 3) continue;
    const bool filled = (bits & 64) != 0;
    point.markShape = static_cast<std::uint8_t>(shape);
    point.flags = filled ? PointMarkFilled : 0U;
    point.markSize = 11;
    const char* note = (bits & 128) != 0 ? "\ta note" : nullptr;
    point.note = note == nullptr ? std::nullopt : std::optional<std::string>(note);
    EXPECT_EQ(Written(map),
              "T\nP\tp" + StyleTwin(point.labelLimit, point.sm, shape, filled, 11, note) + "\n");
    ++count;
  }
  EXPECT_EQ(count, 192);
}

TEST_F(WriterTest, PointMetAgainKeepsItsPlaceOnTheTrail) {
  EXPECT_EQ(Rewritten("T\tt\nA\ta\t5\t\t30\nP\tb\nP\ta\nT\tu\nP\ta\n"),
            "T\tt\t\t\nA\ta\t5\t\t30.000000\nP\tb\nP\ta\n\nT\tu\t\t\nP\ta\n\n");
}

TEST_F(WriterTest, SolvedPlacesAreWrittenOnlyInFullForm) {
  const std::string text = "L\tp\t1.25\t-2.5\t1000\n";
  EXPECT_EQ(PointWritten(text), "P\tp\n");
  EXPECT_EQ(PointWritten(text, true), "L\tp\t1.2500000000\t-2.5000000000\t1000\n");
  EXPECT_EQ(PointWritten("L\tp\t1.25\t-2.5\n", true), "L\tp\t1.2500000000\t-2.5000000000\t\n");
}

TEST_F(WriterTest, SingleFixNeedsNoSolvedPlace) {
  EXPECT_EQ(PointWritten("G\tp\tN1\tE2\n", true), "G\tp\tN1 0.00000'\tE2 0.00000'\n");
  EXPECT_EQ(PointWritten("G\tp\tN1\tE2\nG\tp\tN1\tE4\n", true),
            "G\tp\tN1 0.00000'\tE4 0.00000'\nG\tp\tN1 0.00000'\tE2 0.00000'\n"
            "L\tp\t1.0000000000\t3.0000000000\t\n");
  EXPECT_EQ(PointWritten("G\tp\tN1\tE2\nA\tp\t7\n", true),
            "A\tp\t7\nG\tp\tN1 0.00000'\tE2 0.00000'\nL\tp\t1.0000000000\t2.0000000000\t7\n");
  EXPECT_EQ(PointWritten("A\tp\t7\nL\tp\t1\t2\n", true),
            "A\tp\t7\nL\tp\t1.0000000000\t2.0000000000\t\n");
}

TEST_F(WriterTest, SolvedPlaceHasTheNoteOnlyAsTheFirstLine) {
  EXPECT_EQ(PointWritten("P\tp\t30\tnote\nL\tp\t1\t2\t3\n", true),
            "L\tp\t1.0000000000\t2.0000000000\t3\t\tnote\n");
  EXPECT_EQ(PointWritten("A\tp\t5\t\t\tnote\nL\tp\t1\t2\t3\n", true),
            "A\tp\t5\t\t\t\tnote\nL\tp\t1.0000000000\t2.0000000000\t3\n");
}

TEST_F(WriterTest, DerivedReadingsAreNotWritten) {
  Map& map = Open("A\tp\t5\n");
  Point& point = Named(map, "p");
  Measurement& derived = point.measurements.emplace_front();
  derived.flags = MeasureAltitude | MeasureDerived;
  derived.altitude = 9;
  EXPECT_EQ(Written(map), "T\nA\tp\t5\n");
  point.measurements.remove_if([](const auto& r) { return (r.flags & MeasureDerived) == 0; });
  EXPECT_EQ(Written(map), "T\nP\tp\n");
}

TEST_F(WriterTest, PointsOfTheBasisAreWrittenWhereThisMapUsesThem) {
  Map& basis = Open("A\tx\t5\nA\ty\t6\nA\tz\t7\n", "basis.map");
  Map& map = MakeMap(workspace, "test.map");
  map.basis = &basis;
  ReadMapText(map, "T\tt\nP\tx\nT\nP\ty=other\n");
  FinishMap(map);
  EXPECT_EQ(Written(map), "B\tbasis.map\nT\tt\t\t\nA\tx\t5\n\nT\nA\ty=other\t6\n");
  // What was marked as written comes out again in the next save.
  EXPECT_EQ(Written(map), "B\tbasis.map\nT\tt\t\t\nA\tx\t5\n\nT\nA\ty=other\t6\n");
}

TEST_F(WriterTest, NumbersDoNotFollowTheLocale) {
  const std::string text =
      "M\t1.5\nT\tt\tx\t\t\t2.5\nC\tp\tb\t1234.5\t2.5\t3.5\t\t\t0.5\nL\tp\t1.5\t2.5\n";
  const std::string expected = Rewritten(text, true);
  EXPECT_NE(expected.find("1234.5"), std::string::npos);
  const DecimalComma comma;
  EXPECT_EQ(Rewritten(text, true), expected);
}

// --- Trails -------------------------------------------------------------------------------------

TEST_F(WriterTest, TrailWithoutANameAndTrailWithoutAnything) {
  EXPECT_EQ(Rewritten("T\t\tx\n"), "T\t\tx\t\n\n");
  EXPECT_EQ(Rewritten("T\tn\n"), "T\tn\t\t\n\n");
}

TEST_F(WriterTest, NoteWithoutAStyleHasFourTabsBeforeIt) {
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t\tnote\n"), "T\tn\tx\t\t\t\tnote\n\n");
}

TEST_F(WriterTest, EachFieldOfATrailHasItsPlace) {
  const std::string line =
      "T\tn\tx\tBo,2\t2001-5-6\t2.5,#8040f1,Dashed,FirstLast,1,3,Cross,n\tnote\n";
  EXPECT_EQ(Rewritten(line), line + "\n");
}

TEST_F(WriterTest, HiddenTrailWithoutAMarkWritesItsLetterWhereAnotherFieldIsReadFrom) {
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t,,,,,,,n\n"), "T\tn\tx\t\t,n\n\n");
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t2,,,,,,,n\n"), "T\tn\tx\t\t\t2,n\n\n");
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t2,,,,,,Rect,n\n"), "T\tn\tx\t\t\t2,,,,,Rect,n\n\n");
}

TEST_F(WriterTest, MarkWithoutAFillIsWrittenInThePlaceOfThePattern) {
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t,,,,,,Rect\n"), "T\tn\tx\t\t\t,,,,,Rect\n\n");
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t,,,,,Rect\n"), "T\tn\tx\t\t\t,,,,,Rect\n\n");
}

TEST_F(WriterTest, NegativeAltitudeMovesTowardZeroWithEachSave) {
  EXPECT_EQ(PointWritten("A\tp\t-15\n"), "A\tp\t-14\n");
  EXPECT_EQ(PointWritten("A\tp\t-14\n"), "A\tp\t-13\n");
}

TEST_F(WriterTest, UnknownMarkHasAnEmptyWord) {
  EXPECT_EQ(Rewritten("T\tn\tx\t\t\t,,,,,,star\n"), "T\tn\tx\t\t\t,,,,,\n\n");
}

/// The line of a trail by its rules, one after the other.
std::string TrailTwin(const Trail& t) {
  static const char* const LineWords[] = {"", "Solid", "Dotted", "Dashed"};
  static const char* const LabelWords[] = {"", "None", "FirstLast", "All", "Auto"};
  static const char* const MarkWords[] = {"None", "Circle", "Cross",    "Tick",
                                          "Rect", "Plus",   "HalfTick", "BackHalfTick"};
  const bool hidden = (t.flags & TrailHidden) != 0;
  std::string s = t.name ? "T\t" + *t.name + "\t" + t.type : "T\t\t" + t.type;
  char buffer[64];
  const auto put = [&](const char* format, auto... values) {
    std::snprintf(buffer, sizeof buffer, format, values...);
    s += buffer;
  };
  s += t.focalAnimal ? "\t" + *t.focalAnimal : "\t";
  if (t.groupSize != 1) put(",%d", t.groupSize);
  if (t.date != 0) {
    s += "\t" + FormatDate(t.date);
  } else if (t.width != 0 || t.color != -1 || NumberOf(t.labelMode) != 0 ||
             NumberOf(t.markStyle) != 0 || NumberOf(t.lineStyle) != 0 || t.note) {
    s += "\t";
  }
  if (t.width != 0) {
    put("\t%g", t.width);
  } else if (t.color != -1 || NumberOf(t.labelMode) != 0 || NumberOf(t.lineStyle) != 0 ||
             t.filled || NumberOf(t.markStyle) != 0 || hidden || t.note) {
    s += "\t";
  }
  if (t.color != -1) {
    put(",#%02x%02x%02x", t.color >> 16, (t.color >> 8) & 255, t.color & 255);
  } else if (NumberOf(t.labelMode) != 0 || NumberOf(t.lineStyle) != 0 || t.filled ||
             NumberOf(t.markStyle) != 0) {
    s += ",";
  }
  if (NumberOf(t.lineStyle) != 0) {
    s += std::string(",") + LineWords[NumberOf(t.lineStyle)];
  } else if (NumberOf(t.labelMode) != 0 || t.filled || NumberOf(t.markStyle) != 0) {
    s += ",";
  }
  if (NumberOf(t.labelMode) != 0) {
    s += std::string(",") + LabelWords[NumberOf(t.labelMode)];
  } else if (t.filled || NumberOf(t.markStyle) != 0) {
    s += ",";
  }
  if (t.filled) {
    put(",%d,%d", 1, t.fillPattern);
  } else if (NumberOf(t.markStyle) != 0) {
    s += ",";
  }
  if (NumberOf(t.markStyle) != 0) s += std::string(",") + MarkWords[NumberOf(t.markStyle)];
  if (hidden) s += ",n";
  if (t.note) s += "\t" + *t.note;
  return s + "\n\n";
}

constexpr int TrailCombinations = 4096;

/// Gives a trail the fields whose bits are set in `bits`, and none of the others.
void SetTrailFields(Trail& trail, int bits) {
  const auto on = [&](int bit) { return (bits >> bit & 1) != 0; };
  trail.type = "x";
  trail.name = on(0) ? std::optional<std::string>("n" + std::to_string(bits)) : std::nullopt;
  trail.focalAnimal = on(1) ? std::optional<std::string>("Bo") : std::nullopt;
  trail.groupSize = on(2) ? 3 : 1;
  trail.date = on(3) ? PackDate(1999, 4, 3) : 0;
  trail.width = on(4) ? 2.5 : 0;
  trail.color = on(5) ? 0x04a00f : NoColor;
  trail.lineStyle = StyleOf<LineStyle>(on(6) ? 1 + bits % 3 : 0);
  trail.labelMode = StyleOf<LabelMode>(on(7) ? 1 + bits % 4 : 0);
  trail.filled = on(8);
  trail.fillPattern = on(8) ? bits / 3 % 8 : 0;
  trail.markStyle = StyleOf<MarkStyle>(on(9) ? 1 + bits % 7 : 0);
  trail.flags = on(10) ? std::uint32_t{TrailHidden} : 0U;
  trail.note = on(11) ? std::optional<std::string>("note") : std::nullopt;
}

TEST_F(WriterTest, EveryTrailLine) {
  Map& map = MakeMap(workspace, "test.map");
  Trail& trail = map.trails.emplace_front();
  for (int bits = 0; bits < TrailCombinations; ++bits) {
    SetTrailFields(trail, bits);
    ASSERT_EQ(Written(map), TrailTwin(trail)) << bits;
  }
}

TEST_F(WriterTest, EveryTrailLineComesBack) {
  Map& map = MakeMap(workspace, "test.map");
  for (int bits = TrailCombinations; bits-- > 0;) SetTrailFields(map.trails.emplace_front(), bits);
  const Map& again = Read(MapFileText(map, "test.map", true));
  ASSERT_EQ(Length(again.trails), TrailCombinations);
  auto back = again.trails.begin();
  for (const Trail& trail : map.trails) {
    SCOPED_TRACE(TrailTwin(trail));
    const auto fieldsOf = [](const Trail& t) {
      return std::tuple(t.name, t.type, t.focalAnimal, t.groupSize, t.date, t.width, t.color,
                        NumberOf(t.lineStyle), NumberOf(t.labelMode), t.filled, t.fillPattern,
                        NumberOf(t.markStyle), t.flags & TrailHidden, t.note);
    };
    ASSERT_EQ(fieldsOf(*back), fieldsOf(trail));
    ++back;
  }
}

// --- The file -----------------------------------------------------------------------------------

struct WriteFileTest : WriterTest {
  TemporaryFolder folder;
};

TEST_F(WriteFileTest, FileIsWrittenAndTheMapLeftAsItWas) {
  Map& map = Open("G\ta\tN1\tE2\n", "old.map");
  map.flags |= MapDirty;
  WriteMapFile(map, folder.Path("new.map"), true);
  EXPECT_EQ(folder.Read("new.map"), "D\t2004-5-19\n\nT\nG\ta\tN1 0.00000'\tE2 0.00000'\n");
  EXPECT_EQ(map.fileName, "old.map");
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(WriteFileTest, OldFileIsReplaced) {
  const std::string path = folder.Write("a.map", std::string(10000, 'x'));
  WriteMapFile(Open(""), path, false);
  EXPECT_EQ(folder.Read("a.map"), "D\t2004-5-19\n\n");
}

TEST_F(WriteFileTest, FileThatCannotBeOpenedGivesAMessage) {
  Map& map = Open("P\ta\n");
  for (const std::string& path : {folder.Path("none/a.map"), folder.Path()}) {
    messages.Clear();
    WriteMapFile(map, path, true);
    EXPECT_EQ(Said(), Texts{"Can't open " + path + " for writing"});
  }
}

TEST_F(WriteFileTest, DeviceIsNotWritten) {
  WriteMapFile(Open(""), "/dev/null", true);
  EXPECT_EQ(Said(), Texts{"Can't open /dev/null for writing"});
}

}  // namespace
}  // namespace orvane
