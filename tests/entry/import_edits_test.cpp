#include "entry/import_edits.h"

#include "mapfile/writer.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

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

TEST_F(ImportEdits, AnAbandonedSheetKeepsWhatWasRead) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.1\tE10\n");
  const std::string before = Saved(map);
  const FollowSheet sheet{.text =
                              "8:00\tCamp\t2020-3-1\n8:30\tHill\t2020-3-1\n9:00\tCamp\tnever\n"};
  ImportSpec spec;
  spec.map = &map;
  spec.sheet = &sheet;
  spec.fileName = "rains.txt";
  spec.timeColumn = 0;
  spec.locationColumn = 1;
  spec.dateColumn = 2;
  spec.speciesAlways = "Papio";
  SheetLogs logs;
  SheetOutcome outcome;
  ASSERT_TRUE(history.Apply(SheetEdit(
      spec, logs, [](const std::string&, std::string_view) { return WriteResult::Done; },
      outcome)));
  EXPECT_FALSE(outcome.completed);
  EXPECT_EQ(map.trails.front().type, "Papio");
  EXPECT_EQ(*history.UndoName(map), "Import of rains.txt");
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(Saved(map), before);
  EXPECT_FALSE(IsDirty(map));
}

}  // namespace
}  // namespace orvane
