#include "entry/fix_import.h"

#include "mapfile/writer.h"
#include "ranges/analysis.h"
#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

const std::string Heading = "time,lat,lon,id,alt\n";

struct FixImportTest : MapFixture {
  Map& map = Open("T\tMain\tTrail\nG\tCamp\tN1\tE115\n");
  FixOptions options;
  std::string name = "collar.csv";

  std::optional<FixImport> Start(const std::string& rows) {
    return StartFixImportOfText(map, Heading + rows, name, options);
  }
  Texts Notes(const std::string& rows) {
    const auto import = Start(rows);
    return import ? FixNotes(*import) : Said();
  }
  /// The map as it is saved after the import, without its first lines.
  std::string Saved(const std::string& rows) {
    auto import = Start(rows);
    if (!import) return "nothing";
    EnterFixes(map, *import);
    const std::string text = MapFileText(map, map.fileName, true);
    return text.substr(text.find("T\t\t"));
  }
};

TEST_F(FixImportTest, MakesTrailsWithTimeNamedPointsAndRanges) {
  EXPECT_EQ(Saved("2004-5-3 00:30,1.3,115.5,Kiki,12.5\n2004-5-3 16:00,1.3,115.5,Kiki,\n"
                  "2004-5-3 00:45:30,1.31,115.5,Kiki,-3.7\n"),
            "T\t\tAnimal\tKiki\t2004-5-3\n"
            "G\t08:30\tN1 18.00000'\tE115 30.00000'\t13\n"
            "G\t08:45\tN1 18.60000'\tE115 30.00000'\t-3\n\n"
            "T\t\tAnimal\tKiki\t2004-5-4\n"
            "G\t00:00\tN1 18.00000'\tE115 30.00000'\n\n"
            "R\tKiki\nK\tAnimal\tKiki\t\n");
  EXPECT_NE(map.flags & MapDirty, 0U);
}

TEST_F(FixImportTest, PutsThemAfterWhatTheMapHas) {
  Saved("2004-5-3 00:30,1.3,115.5,B,\n2004-5-3 00:30,1.3,115.5,A,\n");
  Saved("2004-5-4 00:30,1.3,115.5,B,\n2004-5-4 00:30,1.3,115.5,C,\n");
  Texts trails;
  for (const Trail& trail : map.trails) {
    trails.push_back(trail.focalAnimal.value_or("-") + FormatDate(trail.date));
    EXPECT_EQ(trail.groupSize, 1);
    EXPECT_TRUE(trail.color == NoColor || !trail.focalAnimal);
  }
  EXPECT_EQ(trails, (Texts{"-", "B2004-5-3", "A2004-5-3", "B2004-5-4", "C2004-5-4"}));
  Texts ranges;
  for (const Range& range : map.ranges) ranges.push_back(*range.name);
  EXPECT_EQ(ranges, (Texts{"B", "A", "C"}));
}

TEST_F(FixImportTest, GivesPointsTheirPlacesAndTimes) {
  Saved("2004-5-3 00:30,1.3,115.5,Kiki,\n2004-5-3 00:45,1.4,115.6,Kiki,\n");
  const Trail& trail = *std::next(map.trails.begin());
  ASSERT_EQ(trail.points.size(), 2U);
  const Point& first = *trail.points[0];
  EXPECT_EQ(first.trail, &trail);
  EXPECT_TRUE(IsPlaced(first));
  EXPECT_EQ(first.geo.lat, 1.3);
  EXPECT_EQ(first.timeOfDay, 8 * 60 + 30);
  EXPECT_EQ(first.duration, 15);
  EXPECT_EQ(Readings(first)[0]->count, 1);
  EXPECT_EQ(map.ranges.front().points.size(), 2U);
}

TEST_F(FixImportTest, MakesTheSameMapWithoutTheFiguresOfNewRanges) {
  const std::string rows = "2004-5-3 00:30,1.3,115.5,Kiki,\n2004-5-3 00:45,1.4,115.6,Kiki,\n";
  Map& other = Open("T\tMain\tTrail\nG\tCamp\tN1\tE115\n");
  auto import = StartFixImportOfText(other, Heading + rows, name, options);
  ASSERT_TRUE(import);
  EnterFixes(other, *import, NewRanges::NotAnalyzed);
  EXPECT_TRUE(other.ranges.front().points.empty());
  const std::string text = MapFileText(other, other.fileName, true);
  EXPECT_EQ(text.substr(text.find("T\t\t")), Saved(rows));
}

TEST_F(FixImportTest, ASecondImportAddsNothing) {
  const std::string rows = "2004-5-3 00:30,1.3,115.5,Kiki,\n";
  const std::string saved = Saved(rows);
  const auto import = Start(rows);
  ASSERT_TRUE(import);
  EXPECT_FALSE(AddsAnything(*import));
  EXPECT_EQ(FixNotes(*import),
            (Texts{"Read 1 fix from collar.csv: 0 taken and 1 already there; no trails and no "
                   "ranges added; times are UTC+08:00, as is usual at the mean longitude 115.5"}));
  EXPECT_EQ(Saved(rows), saved);
}

TEST_F(FixImportTest, ReportsAFileThatCannotBeOpened) {
  TemporaryFolder folder;
  EXPECT_FALSE(StartFixImport(map, folder.Path("none.csv"), options));
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("none.csv")});
  EXPECT_TRUE(StartFixImport(map, folder.Write("a.csv", Heading + "2004-5-3 0:30,1,2,,\n"), {}));
}

TEST_F(FixImportTest, ReportsATableWithoutUsableFixes) {
  EXPECT_FALSE(Start("soon,1,2,,\n"));
  EXPECT_EQ(Said(), Texts{"No usable fixes in collar.csv"});
}

TEST_F(FixImportTest, ReadsUtf16AndLatin1) {
  std::string wide = "\xFF\xFE";
  for (const char c : Heading + "2004-5-3 0:30,1,2,\xDC,\n") wide += {c, '\0'};
  auto import = StartFixImportOfText(map, wide, name, options);
  ASSERT_TRUE(import);
  EXPECT_EQ(import->table.animals[0].name, "\xC3\x9C");
  import = StartFixImportOfText(map, Heading + "2004-5-3 0:30,1,2,\xDC,\n", name, options);
  EXPECT_EQ(import->table.animals[0].name, "\xC3\x9C");
}

TEST_F(FixImportTest, NotesNameTheFirstRowsAndCountTheRest) {
  std::string rows = "2004-5-3 00:30,1.3,115.5,Kiki,\n2004-5-3 00:30:20,1.3,115.5,Kiki,\n";
  for (int i = 0; i < 7; ++i) rows += "soon,1,2,Bo,\n";
  options.clock.offsetMinutes = -30;
  EXPECT_EQ(Notes(rows),
            (Texts{"Left out row 4: \"soon\" in column time is not a usable time",
                   "Left out row 5: \"soon\" in column time is not a usable time",
                   "Left out row 6: \"soon\" in column time is not a usable time",
                   "Left out row 7: \"soon\" in column time is not a usable time",
                   "Left out row 8: \"soon\" in column time is not a usable time",
                   "2 more rows are left out",
                   "Read 9 fixes from collar.csv: 1 taken, 7 bad time and 1 repeat; 1 trail and 1 "
                   "range added; times are UTC-00:30"}));
}

TEST_F(FixImportTest, AnOpenQuoteIsReportedAndTheMapCanBeReadAgain) {
  std::string rows = "2004-5-3 00:30,1.3,115.5,Kiki,\n2004-5-3 00:40,1.3,115.5,\"Kiki,\n";
  for (int i = 0; i < 40; ++i) rows += "2004-5-4 00:30,1.3,115.5,Kiki,\n";
  options.type = std::string(400, 't');
  options.clock = *ReadFixClock("UTC");
  EXPECT_EQ(Notes(rows),
            (Texts{"A double quote in row 3 is never closed, so the rest of the table is one cell "
                   "of that row",
                   "Left out row 3: \"Kiki, 2004-5-4 00:30,1.3,115.5,Kiki, 200...\" in column id "
                   "has more than 150 bytes",
                   "Read 2 fixes from collar.csv: 1 taken and 1 bad name; 1 trail and 1 range "
                   "added"}));
  Map& again = Open(Saved(rows), "again.map");
  EXPECT_EQ(Said(), Texts{});
  EXPECT_EQ(*again.trails.front().focalAnimal, "Kiki");
  EXPECT_EQ(again.trails.front().date, PackDate(2004, 5, 3));
  EXPECT_EQ(again.ranges.front().points.size(), 1U);
}

TEST_F(FixImportTest, OnlyTheSearchForClustersCanBeCanceled) {
  std::string rows;
  for (int i = 0; i < 60; ++i) {
    for (const char* animal : {"Kiki", "Bo"}) {
      rows += "2004-5-" + std::to_string(3 + i / 24) + ' ' + std::to_string(i % 24) + ":30,1.3" +
              std::to_string(10 + i * i % 37) + ",115.5" + std::to_string(10 + i * i % 41) + ',' +
              animal + ",\n";
    }
  }
  auto import = Start(rows);
  ASSERT_TRUE(import);
  CountedProgress progress(1);
  workspace.progress = &progress;
  EnterFixes(map, *import);
  workspace.progress = nullptr;
  ASSERT_EQ(std::distance(map.ranges.begin(), map.ranges.end()), 2);
  for (const Range& range : map.ranges) {
    EXPECT_GT(range.points.size(), 10U);
    EXPECT_GT(range.mcpArea, 0);
    EXPECT_EQ(range.clusters, nullptr);
  }
  EXPECT_EQ(std::distance(map.intersections.begin(), map.intersections.end()), 1);
  EXPECT_EQ(Said(), Texts{"The search for clusters was canceled; ranges without clusters: 2. They "
                          "are searched for when the map is opened again"});
  EXPECT_NE(map.flags & MapDirty, 0U);
  AnalyzeAllRanges(map);
  EXPECT_NE(map.ranges.front().clusters, nullptr);
}

TEST_F(FixImportTest, NotesListFixesThatAreTooFast) {
  std::string rows = "2004-5-3 00:30,1.3,115.5,Kiki,\n";
  for (int i = 1; i < 8; ++i) rows += "2004-5-3 00:3" + std::to_string(i) + ",2,115.5,Kiki,\n";
  options.filters.maxSpeed = 2.5;
  options.clock = *ReadFixClock("UTC");
  options.makesRanges = false;
  const Texts notes = Notes(rows);
  ASSERT_EQ(notes.size(), 7U);
  EXPECT_EQ(notes[0], "Left out row 3: faster than 2.5 km/h");
  EXPECT_EQ(notes[4], "Left out row 7: faster than 2.5 km/h");
  EXPECT_EQ(notes[5], "2 more rows are left out as too fast");
  EXPECT_EQ(notes[6],
            "Read 8 fixes from collar.csv: 1 taken and 7 too fast; 1 trail and no ranges added");
}

TEST_F(FixImportTest, NotesSayWhichRowShowsTheOrderOfDayAndMonth) {
  const std::string row = " 0:30,1.3,115.5,Kiki,\n";
  EXPECT_EQ(Notes("3/5/2004" + row + "13/5/2004" + row)[0],
            "The date in row 2 can be read in two ways: row 3 shows that the day is first");
  EXPECT_EQ(Notes("3/5/2004" + row)[0],
            "The date in row 2 can be read in two ways: no row shows which, and the month is first "
            "as European dates are off");
  workspace.preferences.europeanDates = true;
  EXPECT_EQ(
      Notes("3/5/2004" + row)[0],
      "The date in row 2 can be read in two ways: no row shows which, and the day is first as "
      "European dates are on");
  EXPECT_EQ(Notes("13/5/2004" + row).size(), 1U);
}

}  // namespace
}  // namespace orvane
