#include "output/geojson.h"

#include "output/exported_map.h"
#include "support/counted_progress.h"

#include <cerrno>
#include <cmath>
#include <nlohmann/json.hpp>

namespace orvane {
namespace {

using Json = nlohmann::json;

struct GeoJson : ExportFixture {
  Json Written(Map& map, bool expected = true) {
    std::string text;
    EXPECT_EQ(WriteGeoJson(map,
                           [&](std::string_view piece) {
                             text += piece;
                             return true;
                           }),
              expected);
    EXPECT_TRUE(text.ends_with("]}\n"));
    Json json = Json::parse(text, nullptr, false);
    EXPECT_FALSE(json.is_discarded());
    EXPECT_EQ(json["type"], "FeatureCollection");
    return json;
  }
  static std::vector<Json> OfKind(const Json& json, const std::string& kind) {
    std::vector<Json> found;
    for (const Json& feature : json["features"]) {
      EXPECT_EQ(feature["type"], "Feature");
      if (feature["properties"]["kind"] == kind) found.push_back(feature);
    }
    return found;
  }
};

TEST_F(GeoJson, LeavesOutWhatIsNowhere) {
  Map& map = Open(SiteOfRanges);
  const Json whole = Written(map);
  const Grid placed = map.grids.front();
  const size_t cells = OfKind(whole, "cell").size();

  std::vector<Point*>& stops = map.trails.front().points;
  stops.push_back(stops[0]);  // a stop is written once
  stops[1]->flags &= ~std::uint32_t{PointPlaced};
  stops[2]->geo.lat = 95;
  map.trails.emplace_front().type = "Empty";
  map.grids.emplace_front(placed);
  map.grids.emplace_front(placed).corner = nullptr;
  Point unplaced;
  map.grids.emplace_front(placed).corner = &unplaced;

  const Json json = Written(map);
  EXPECT_EQ(OfKind(json, "stop").size(), OfKind(whole, "stop").size() - 2);
  EXPECT_EQ(OfKind(json, "trail").size(), OfKind(whole, "trail").size());
  EXPECT_EQ(OfKind(json, "cell").size(), 2 * cells);
  size_t shaded = 0;
  for (const Json& cell : OfKind(json, "cell")) {
    if (cell["properties"].contains("shade")) ++shaded;
  }
  EXPECT_EQ(shaded, 1U);  // of the first grid only
}

TEST_F(GeoJson, AFilledTrailThatIsOpenHasAnArea) {
  Map& map = Open("T\tPlot\tArea\t\t\t,,1\nG\tA\tN0\tE0\nG\tB\tN0.01\tE0\nG\tC\tN0\tE0.01\n");
  map.trails.front().filled = true;
  const auto areas = OfKind(Written(map), "area");
  ASSERT_EQ(areas.size(), 1U);
  EXPECT_GT(areas[0]["properties"]["area"], 600000);
}

TEST_F(GeoJson, HoldsPointsAndTrails) {
  const Json json = Written(Open(SiteOfAllGroups));
  const auto points = OfKind(json, "point");
  EXPECT_EQ(points.size(), 5U);  // not _bend
  const auto camp = std::find_if(points.begin(), points.end(), [](const Json& point) {
    return point["properties"]["name"] == "Camp";
  });
  ASSERT_NE(camp, points.end());
  EXPECT_EQ((*camp)["properties"]["synonyms"], Json({"Base"}));
  EXPECT_EQ((*camp)["properties"]["note"], "the camp");
  EXPECT_EQ((*camp)["properties"]["altitude"], 10.0);
  EXPECT_EQ((*camp)["geometry"], (Json{{"type", "Point"}, {"coordinates", {115.0, 1.0}}}));
  const auto trails = OfKind(json, "trail");
  ASSERT_EQ(trails.size(), 1U);
  EXPECT_EQ(trails[0]["properties"]["color"], "#806040");
  EXPECT_EQ(trails[0]["properties"]["width"], 2.0);
  EXPECT_EQ(trails[0]["properties"]["date"], nullptr);
  EXPECT_EQ(trails[0]["geometry"]["type"], "LineString");
  EXPECT_EQ(trails[0]["geometry"]["coordinates"].size(), 3U);
  const auto areas = OfKind(json, "area");
  ASSERT_EQ(areas.size(), 1U);
  EXPECT_EQ(areas[0]["geometry"]["coordinates"],
            (Json{{{115.002, 1.0}, {115.003, 1.0}, {115.003, 1.001}, {115.002, 1.0}}}));
  EXPECT_NEAR(areas[0]["properties"]["area"].get<double>(), 111.12 * 111.12 / 2, 5);
}

TEST_F(GeoJson, LeavesTheTabOfANoteOut) {
  Map& map = Open("T\nG\tCamp\tN1\tE30\t\t1\t\tthe camp\nG\tCamp\tN1\tE30\t\t1\t\tby the ford\n");
  ASSERT_EQ(Named(map, "Camp").note, "\tthe camp \tby the ford");
  EXPECT_EQ(OfKind(Written(map), "point")[0]["properties"]["note"], "the camp by the ford");
}

TEST_F(GeoJson, LeavesTheTabsOfASavedNoteOut) {
  Map& map = Open("T\nG\tCamp\tN1\tE30\t\t1\t\t\t\tthe camp\nG\tHill\tN1\tE30\t\t1\t\t\t\n");
  EXPECT_EQ(OfKind(Written(map), "point")[0]["properties"]["note"], "the camp");
}

TEST_F(GeoJson, PutsCountsUnderTheirNames) {
  Map& map = Open(std::string("Z\tfruit,Type,M\xFChle\n") + SiteOfRanges);
  const Json json = Written(map);
  const Json stop = OfKind(json, "stop")[0]["properties"];
  EXPECT_EQ(stop["fruit"], 3);
  EXPECT_EQ(stop["sm2"], 1);  // the name is that of another property
  EXPECT_EQ(stop["type"], "Blue");
  EXPECT_EQ(stop["M\xC3\xBChle"], 0);
  EXPECT_FALSE(stop.contains("sm1"));
  const Json range = OfKind(json, "range")[1]["properties"];
  EXPECT_EQ(range["fruit"], 3);
  EXPECT_EQ(range["sm2"], 1);
  map.smName = {"Sm2", "x", "X"};
  const Json again = OfKind(Written(map), "stop")[0]["properties"];
  EXPECT_EQ(again["sm1"], 3);
  EXPECT_EQ(again["x"], 1);
  EXPECT_EQ(again["sm3"], 0);
}

TEST_F(GeoJson, HasTheAnalysesOfTheMap) {
  Map& map = Open(SiteOfRanges);
  const Json json = Written(map);
  EXPECT_EQ(OfKind(json, "stop").size(), 8U);
  const Json stop = OfKind(json, "stop")[0]["properties"];
  EXPECT_EQ(stop["date"], "2001-03-04");
  EXPECT_EQ(stop["timeOfDay"], 480);
  EXPECT_EQ(stop["duration"], 15);
  EXPECT_EQ(stop["focalAnimal"], "Ana");
  EXPECT_EQ(OfKind(json, "stop")[3]["properties"]["timeOfDay"], 615);
  const auto ranges = OfKind(json, "range");
  ASSERT_EQ(ranges.size(), 2U);
  for (const Json& range : ranges) {
    EXPECT_EQ(range["geometry"]["type"], "Polygon");
    EXPECT_GT(range["properties"]["area"].get<double>(), 10000);
    EXPECT_EQ(range["properties"]["follows"], 1);
  }
  size_t hulls = 0;
  for (const Range& range : map.ranges) {
    ASSERT_NE(range.clusters, nullptr);
    for (const Cluster& cluster : range.clusters->clusters) {
      for (const auto& hull : cluster.hull) hulls += hull.empty() ? 0U : 1U;
    }
  }
  const auto clusters = OfKind(json, "cluster");
  EXPECT_EQ(clusters.size(), hulls);
  EXPECT_GT(hulls, 0U);
  EXPECT_EQ(clusters[0]["properties"]["level"].get<int>() % 5, 0);
  const auto overlaps = OfKind(json, "intersection");
  ASSERT_EQ(overlaps.size(), 1U);
  EXPECT_EQ(overlaps[0]["geometry"]["type"], "Polygon");
  EXPECT_EQ(overlaps[0]["properties"]["area"], map.intersections.front().area);
  const auto cells = OfKind(json, "cell");
  ASSERT_EQ(cells.size(), 6U);
  EXPECT_EQ(cells[1]["properties"]["name"], "A2");
  EXPECT_EQ(cells[1]["properties"]["color"], "#ff0000");
  EXPECT_FALSE(cells[0]["properties"].contains("color"));
  EXPECT_EQ(cells[5]["properties"]["row"], 2);
}

TEST_F(GeoJson, LeavesTheMapAsItWas) {
  Map& map = Open(SiteOfAllGroups);
  std::vector<Meters> before;
  for (const Point& point : map.pointStore) before.push_back(point.projected);
  Written(map);
  for (size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(map.pointStore[i].projected.north, before[i].north);
    EXPECT_EQ(map.pointStore[i].projected.east, before[i].east);
  }
}

TEST_F(GeoJson, ReadsTextThatIsNotUtf8AsLatin1) {
  Map& map = Empty();
  Add(map, "M\xFChle", 1, 2).note = "caf\xC3\xA9 \"x\"\n";
  const Json json = Written(map);
  EXPECT_EQ(json["features"][0]["properties"]["name"], "M\xC3\xBChle");
  EXPECT_EQ(json["features"][0]["properties"]["note"], "caf\xC3\xA9 \"x\"\n");
}

TEST_F(GeoJson, LeavesOutWhatHasNoPlace) {
  Map& map = Empty();
  Point& nowhere = Add(map, "A", std::nan(""), 2);
  Add(map, "B", 1, 2).flags = 0;
  AddTrail(map, "t", {&nowhere, &nowhere});
  const Json json = Written(map);
  EXPECT_EQ(OfKind(json, "point").size(), 0U);
  ASSERT_EQ(OfKind(json, "trail").size(), 1U);
  EXPECT_EQ(OfKind(json, "trail")[0]["geometry"], nullptr);
  EXPECT_EQ(OfKind(json, "trail")[0]["properties"]["pathLength"], nullptr);
}

TEST_F(GeoJson, NamesAPointByItsFirstVisibleName) {
  Map& map = Empty();
  Point& point = Add(map, "_bend", 1, 2);
  AddSynonym(map, point, "@x");
  AddSynonym(map, point, "Curve");
  const Json json = Written(map);
  EXPECT_EQ(json["features"][0]["properties"]["name"], "Curve");
  EXPECT_EQ(json["features"][0]["properties"]["synonyms"], Json::array());
}

TEST_F(GeoJson, OfTooManyCellsLeavesThemOut) {
  Map& map = Empty();
  AddGrid(map, Add(map, "A", 1, 2), 2147483647, 2147483647);
  const Json json = Written(map, false);
  EXPECT_EQ(json["features"].size(), 1U);
  EXPECT_EQ(Said(), Texts{"The grids have more than 4000000 cells: they are left out"});
}

TEST_F(GeoJson, OfAnEmptyMapIsAnEmptyCollection) {
  EXPECT_EQ(Written(Empty())["features"], Json::array());
}

TEST_F(GeoJson, ReplacesAFileWhenItIsWhole) {
  Map& map = Open(SiteOfAllGroups);
  folder.Write("a.geojson", "old");
  FileSystem system = SystemFiles();
  system.write = [](int, const char*, size_t) -> long {
    errno = ENOSPC;
    return -1;
  };
  EXPECT_FALSE(ExportGeoJson(map, folder.Path("a.geojson"), system));
  EXPECT_EQ(folder.Read("a.geojson"), "old");
  EXPECT_FALSE(ExportGeoJson(map, folder.Path("nowhere/a.geojson")));
  EXPECT_EQ(Said(), (Texts{"Error while writing " + folder.Path("a.geojson") +
                               "; the old file, if any, is unchanged",
                           "Can't open " + folder.Path("nowhere/a.geojson") + " for writing"}));
  EXPECT_TRUE(ExportGeoJson(map, folder.Path("a.geojson")));
  EXPECT_FALSE(Json::parse(folder.Read("a.geojson"), nullptr, false).is_discarded());
  EXPECT_EQ(FilesThere(), Texts{"a.geojson"});
}

TEST_F(GeoJson, EndsAtACancelWithinFeaturesOfEachKind) {
  Range left;
  const auto givesUp = [&](Map& map) {
    CountedProgress progress(1);
    workspace.progress = &progress;
    std::string text;
    const bool done = WriteGeoJson(map, [&](std::string_view piece) {
      text += piece;
      return true;
    });
    workspace.progress = nullptr;
    EXPECT_EQ(text, "");  // what was collected is dropped
    return !done && progress.stages == std::vector{WorkStage::Writing};
  };
  EXPECT_TRUE(givesUp(Open("G\tA\tN1\tE2\n", "point.map")));
  EXPECT_TRUE(givesUp(Open("T\t\tBlue\tAna\nG\t0800\tN1\tE30\n", "stop.map")));
  EXPECT_TRUE(givesUp(Open("T\tt\tPath\nG\t\tN1\tE2\nG\t_a\tN1\tE2\n", "trail.map")));
  EXPECT_TRUE(givesUp(Open("R\tNorth\n", "range.map")));
  Map& overlap = MakeMap(workspace, "overlap.map");
  overlap.intersections.emplace_front();
  overlap.intersections.front().a.range = &left;
  overlap.intersections.front().b.range = &left;
  EXPECT_TRUE(givesUp(overlap));
  Map& grid = MakeMap(workspace, "grid.map");
  Point corner;
  corner.flags |= PointPlaced;
  AddGrid(grid, corner, 1, 1);
  EXPECT_TRUE(givesUp(grid));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GeoJson, ThatIsCanceledLeavesTheOldFile) {
  Map& map = Open(SiteOfAllGroups);
  folder.Write("a.geojson", "old");
  CountedProgress progress(1);
  workspace.progress = &progress;
  EXPECT_FALSE(ExportGeoJson(map, folder.Path("a.geojson")));
  workspace.progress = nullptr;
  EXPECT_EQ(folder.Read("a.geojson"), "old");
  EXPECT_EQ(FilesThere(), Texts{"a.geojson"});
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GeoJson, WhoseLastStepsFailLeavesTheOldFile) {
  Map& map = Open(SiteOfAllGroups);
  folder.Write("a.geojson", "old");
  FileSystem noFlush = SystemFiles();
  noFlush.flush = [](int) {
    errno = EIO;
    return -1;
  };
  FileSystem noRename = SystemFiles();
  noRename.rename = [](const std::string&, const std::string&) {
    errno = EIO;
    return -1;
  };
  for (const FileSystem& system : {noFlush, noRename}) {
    messages.Clear();
    EXPECT_FALSE(ExportGeoJson(map, folder.Path("a.geojson"), system));
    EXPECT_EQ(Said(), Texts{"Error while writing " + folder.Path("a.geojson") +
                            "; the old file, if any, is unchanged"});
    EXPECT_EQ(folder.Read("a.geojson"), "old");
    EXPECT_EQ(FilesThere(), Texts{"a.geojson"});
  }
}

TEST_F(GeoJson, AcrossThe180thMeridianHasSeveralParts) {
  Map& map = Open(
      "T\tt\tPath\nG\tA\tN0\tE179\nG\tB\tN0\tW179\n"
      "T\tu\tArea\nP\tA\nP\tB\nG\tC\tN1\tW179\n");
  ASSERT_EQ(TrailNamesOf(map), (Texts{"t", "u"}));
  map.trails.front().filled = false;
  (++map.trails.begin())->filled = true;
  const Json json = Written(map);
  const Json line = OfKind(json, "trail").at(0)["geometry"];
  EXPECT_EQ(line["type"], "MultiLineString");
  EXPECT_EQ(line["coordinates"],
            (Json{{{179.0, 0.0}, {180.0, 0.0}}, {{-180.0, 0.0}, {-179.0, 0.0}}}));
  const Json area = OfKind(json, "area").at(0)["geometry"];
  EXPECT_EQ(area["type"], "MultiPolygon");
  EXPECT_EQ(area["coordinates"].size(), 2U);
}

}  // namespace
}  // namespace orvane
