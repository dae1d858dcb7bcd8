#include "entry/import_edits.h"

#include "mapfile/writer.h"
#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

struct ImportEdits : MapFixture {
  std::string Saved(Map& map) { return MapFileText(map, map.fileName, true); }
  static bool IsDirty(const Map& map) { return (map.flags & MapDirty) != 0; }

  TemporaryFolder folder;
  EditHistory history{workspace};
};

TEST_F(ImportEdits, WaypointsAreTakenBackWithTheMarkOfTheMap) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n");
  const std::string before = Saved(map);
  const std::string path = folder.Write(
      "gps.txt", "name,date,a,b,lat,lon,alt\nNest,,,,1.01,10.01,5\nTree,,,,1.02,10.01,6\n");
  const GisBoxes boxes;
  std::optional<GisImport> import;
  ASSERT_TRUE(history.Apply(GisFileEdit(map, path, boxes, import)));
  EXPECT_EQ(import->waypoints, 2U);
  EXPECT_TRUE(IsDirty(map));
  const std::string after = Saved(map);
  EXPECT_NE(after, before);
  EXPECT_EQ(*history.UndoName(map), "Import of gps.txt");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
  ASSERT_TRUE(history.Redo(map));
  EXPECT_EQ(Saved(map), after);
  EXPECT_TRUE(IsDirty(map));
}

TEST_F(ImportEdits, FixesAreOneStep) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n");
  const std::string before = Saved(map);
  const std::string path = folder.Write("collar.csv",
                                        "time,lat,lon,id\n2004-5-3 0:30,1,10,Kiki\n"
                                        "2004-5-3 0:45,1.001,10,Kiki\n2004-5-4 0:30,1,10,Bo\n");
  auto import = StartFixImport(map, path, {});
  ASSERT_TRUE(import);
  ASSERT_TRUE(history.Apply(FixesEdit(map, *import)));
  const std::string after = Saved(map);
  EXPECT_NE(after.find("R\tBo"), std::string::npos);
  EXPECT_EQ(*history.UndoName(map), "Import of collar.csv");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
  ASSERT_TRUE(history.Redo(map));
  EXPECT_EQ(Saved(map), after);
  auto again = StartFixImport(map, path, {});
  ASSERT_TRUE(again);
  EXPECT_FALSE(history.Apply(FixesEdit(map, *again)));
  EXPECT_EQ(Saved(map), after);
}

TEST_F(ImportEdits, WaypointsThatAreAllRefusedChangeNothing) {
  Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.1\tE10\n", "basis.map");
  Map& map = Open("B\tbasis.map\nT\tLoop\tTrail\nG\tFar\tN1\tE10\n", "season.map");
  const std::string path = folder.Write(
      "gps.txt", "name,date,a,b,lat,lon,alt\nCamp,,,,1.01,10.01,5\nHill,,,,1.02,10.01,6\n");
  const GisBoxes boxes;
  std::optional<GisImport> import;
  EXPECT_FALSE(history.Apply(GisFileEdit(map, path, boxes, import)));
  ASSERT_TRUE(import);
  EXPECT_EQ(import->refusedWaypoints, 2U);
  EXPECT_FALSE(IsDirty(map));
}

TEST_F(ImportEdits, AFileOfTracksChangesNothingUntilOneIsTaken) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n");
  const std::string before = Saved(map);
  const std::string path = folder.Write(
      "gps.txt", "name,date,a,b,lat,lon,alt\nwalk,,,,1.01,10.01,5\nwalk,,,,1.02,10.01,6\n");
  const GisBoxes boxes;
  std::optional<GisImport> import;
  EXPECT_FALSE(history.Apply(GisFileEdit(map, path, boxes, import)));
  ASSERT_TRUE(import);
  EXPECT_FALSE(IsDirty(map));
  EXPECT_EQ(history.UndoName(map), nullptr);

  GisTrailFields fields = StartFields(*import, boxes);
  fields.size = "many";
  GisField bad = GisField::None;
  EXPECT_FALSE(history.Apply(TrackEdit(*import, fields, false, bad)));
  EXPECT_EQ(bad, GisField::Size);
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));

  fields.size = "2";
  ASSERT_TRUE(history.Apply(TrackEdit(*import, fields, false, bad)));
  EXPECT_EQ(map.trails.front().name, "walk");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
}

TEST_F(ImportEdits, ASubmapDoesNotMarkTheMap) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n");
  const std::string before = Saved(map);
  std::string sentence;
  ASSERT_TRUE(history.Apply(
      SubmapEdit(map, folder.Write("more.map", "T\tLoop\tTrail\nG\tFar\tN1\tE10\n"), sentence)));
  EXPECT_FALSE(sentence.empty());
  EXPECT_FALSE(IsDirty(map));
  EXPECT_NE(map.flags & MapUnlikeFile, 0U);
  EXPECT_EQ(*history.UndoName(map), "Import of more.map");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
}

/// The settings for a sheet of times, places and dates.
ImportSpec SpecOf(Map& map, const FollowSheet& sheet) {
  ImportSpec spec;
  spec.map = &map;
  spec.sheet = &sheet;
  spec.fileName = "rains.txt";
  spec.timeColumn = 0;
  spec.locationColumn = 1;
  spec.dateColumn = 2;
  spec.speciesAlways = "Papio";
  return spec;
}

struct SheetEdits : ImportEdits {
  SideFileWriter Writer() {
    return [this](const std::string& name, std::string_view) {
      written.push_back(name);
      return WriteResult::Done;
    };
  }

  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.1\tE10\n");
  std::vector<std::string> written;  ///< names of the side files
  SheetLogs logs;
  SheetOutcome outcome;
};

TEST_F(SheetEdits, AnAbandonedSheetKeepsWhatWasRead) {
  const std::string before = Saved(map);
  const FollowSheet sheet{.text =
                              "8:00\tCamp\t2020-3-1\n8:30\tHill\t2020-3-1\n9:00\tCamp\tnever\n"};
  const ImportSpec spec = SpecOf(map, sheet);
  ASSERT_TRUE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  EXPECT_FALSE(outcome.completed);
  EXPECT_TRUE(outcome.changed);
  EXPECT_EQ(map.trails.front().type, "Papio");
  EXPECT_EQ(*history.UndoName(map), "Import of rains.txt");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
}

TEST_F(SheetEdits, ACanceledSheetLeavesNothing) {
  const std::string before = Saved(map);
  FollowSheet sheet;
  for (int i = 0; i < 100; ++i) sheet.text += "8:00\tCamp\t2020-3-1\n8:30\tCreek\t2020-3-1\n";
  const ImportSpec spec = SpecOf(map, sheet);
  logs.unknownLocations = {"Brook"};
  CountedProgress progress(3);
  workspace.progress = &progress;
  EXPECT_FALSE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  workspace.progress = nullptr;
  EXPECT_TRUE(outcome.canceled);
  EXPECT_EQ(progress.stages, std::vector<WorkStage>(3, WorkStage::Reading));
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
  EXPECT_EQ(history.UndoName(map), nullptr);
  EXPECT_EQ(logs.unknownLocations.size(), 1U);
  EXPECT_TRUE(written.empty());
}

TEST_F(SheetEdits, TheRowsReportTheirProgressAndTheRestMustBeFinished) {
  FollowSheet sheet;
  for (int i = 0; i < 100; ++i) sheet.text += "8:00\tCamp\t2020-3-1\n8:30\tHill\t2020-3-1\n";
  const ImportSpec spec = SpecOf(map, sheet);
  CountedProgress all;
  workspace.progress = &all;
  ASSERT_TRUE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  EXPECT_TRUE(all.inBounds);
  const auto rows =
      static_cast<size_t>(std::count(all.stages.begin(), all.stages.end(), WorkStage::Reading));
  EXPECT_EQ(rows, 13U);
  ASSERT_GT(all.stages.size(), rows);
  ASSERT_TRUE(history.Undo(map));
  CountedProgress late(rows + 1);
  workspace.progress = &late;
  EXPECT_TRUE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  workspace.progress = nullptr;
  EXPECT_TRUE(outcome.completed);
  EXPECT_EQ(outcome.summary, "Imported 1 follow with 200 stops from rains.txt");
}

TEST_F(SheetEdits, ASheetWithoutFollowsIsNoStep) {
  const std::string before = Saved(map);
  const FollowSheet sheet{.text = "TIME\tPLACE\t\n"};
  const ImportSpec spec = SpecOf(map, sheet);
  bool wereRowsMade = false;
  history.Listen([&](const EditNews& news) { wereRowsMade = news.followUp->freshRows; });
  ASSERT_TRUE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  EXPECT_TRUE(outcome.completed);
  EXPECT_FALSE(outcome.changed);
  EXPECT_TRUE(wereRowsMade);
  EXPECT_EQ(written, std::vector<std::string>{"unknownlocs.txt"});
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
  EXPECT_EQ(history.UndoName(map), nullptr);
}

TEST_F(SheetEdits, AFollowWithoutStopsMarksTheMap) {
  const FollowSheet sheet{.text = "8:00\tCreek\t2020-3-1\n"};
  const ImportSpec spec = SpecOf(map, sheet);
  ASSERT_TRUE(history.Apply(SheetEdit(spec, logs, Writer(), outcome)));
  EXPECT_TRUE(outcome.changed);
  EXPECT_TRUE(IsDirty(map));
  EXPECT_EQ(*history.UndoName(map), "Import of rains.txt");
}

}  // namespace
}  // namespace orvane
