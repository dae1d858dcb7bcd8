#include "gis/exported_layers.h"

#include <cstdlib>

namespace orvane {
namespace {

/// The module with layers that no map has.
struct LayerWriter : LayerFiles {
  /// A layer of the shapes, without fields.
  static ExportedLayer LayerOfShapes(GeoKind kind, bool several, std::vector<GeoShape> shapes) {
    ExportedLayer layer;
    layer.name = "made";
    layer.kind = kind;
    layer.several = several;
    layer.count = shapes.size();
    layer.visit = [shapes](const FeatureTaker& take) {
      for (const GeoShape& shape : shapes) {
        LayerFeature feature;
        feature.shape = shape;
        if (!take(feature)) return;
      }
    };
    return layer;
  }
  LayersWritten WriteTo(const std::string& name, const ExportedLayer& layer,
                        LayerFormat format = LayerFormat::GeoPackage) {
    return LoadFormatModule().module->writeLayers({format, folder.Path(name), Wgs84System, "made"},
                                                  {layer});
  }
};

TEST_F(LayerWriter, MakesCollectionsOfAllIfOneHasSeveralParts) {
  const GeoShape line = {GeoKind::Line, {{{0, 0}, {1, 1}}}, {}};
  const GeoShape cut = {GeoKind::Line, {{{179, 0}, {180, 1}}, {{-180, 1}, {-179, 2}}}, {}};
  EXPECT_EQ(WriteTo("made.gpkg", LayerOfShapes(GeoKind::Line, true, {line, cut, {}})).fault, "");
  const std::string listed = Listed("made.gpkg");
  ExpectIn(listed, "Geometry: Multi Line String\nFeature Count: 3\n");
  ExpectIn(listed, "MULTILINESTRING ((0 0,1 1))");
  ExpectIn(listed, "MULTILINESTRING ((179 0,180 1),(-180 1,-179 2))");
}

TEST_F(LayerWriter, TakesShapesThatDiffer) {
  const GeoShape point = {GeoKind::Point, {{{0, 0}}}, {}};
  const GeoShape area = {GeoKind::Area, {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}}, {}};
  for (const LayerFormat format : {LayerFormat::GeoPackage, LayerFormat::FlatGeobuf}) {
    const std::string name = format == LayerFormat::GeoPackage ? "made.gpkg" : "made.fgb";
    EXPECT_EQ(WriteTo(name, LayerOfShapes(GeoKind::None, false, {point, area}), format).fault, "");
    const std::string listed = Listed(name);
    ExpectIn(listed, "POINT (0 0)");
    ExpectIn(listed, "POLYGON ((0 0,1 0,1 1,0 0))");
  }
}

/// Two squares, the first with two holes.
GeoShape SquaresWithHoles() {
  return {GeoKind::Area,
          {{{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}}, {{20, 0}, {21, 0}, {21, 1}, {20, 0}}},
          {{{{1, 1}, {1, 2}, {2, 2}, {1, 1}}, {{5, 5}, {5, 6}, {6, 6}, {5, 5}}}}};
}

TEST_F(LayerWriter, KeepsHoles) {
  const ExportedLayer layer = LayerOfShapes(GeoKind::Area, true, {SquaresWithHoles()});
  for (const LayerFormat format : {LayerFormat::GeoPackage, LayerFormat::FlatGeobuf}) {
    const std::string name = format == LayerFormat::GeoPackage ? "made.gpkg" : "made.fgb";
    ASSERT_EQ(WriteTo(name, layer, format).fault, "");
    ExpectIn(Listed(name),
             "  MULTIPOLYGON (((0 0,9 0,9 9,0 9,0 0),(1 1,1 2,2 2,1 1),(5 5,5 6,6 6,5 5)),"
             "((20 0,21 0,21 1,20 0)))\n");
  }
  ASSERT_EQ(WriteTo("made.kml", layer, LayerFormat::Kml).fault, "");
  const std::string text = folder.Read("made.kml");
  ExpectIn(text,
           "<innerBoundaryIs><LinearRing><coordinates>5,5 5,6 6,6 5,5</coordinates></LinearRing>"
           "</innerBoundaryIs>");
}

TEST_F(LayerWriter, MovesHolesIntoTheSystemOfTheFile) {
  const ExportedLayer layer = LayerOfShapes(GeoKind::Area, true, {SquaresWithHoles()});
  const LayersWritten written = LoadFormatModule().module->writeLayers(
      {LayerFormat::GeoPackage, folder.Path("made.gpkg"), 3857, "made"}, {layer});
  EXPECT_EQ(written.fault, "");
  ExpectIn(Listed("made.gpkg"), "(111319.490793");
  ExpectIn(Listed("made.gpkg"), "),(556597.45396");
}

TEST_F(LayerWriter, MakesASegmentOfATrackOfEachHole) {
  const ExportedLayer layer = LayerOfShapes(GeoKind::Area, true, {SquaresWithHoles()});
  ASSERT_EQ(WriteTo("made.gpx", layer, LayerFormat::Gpx).fault, "");
  const std::string text = folder.Read("made.gpx");
  size_t segments = 0;
  for (size_t at = text.find("<trkseg>"); at != text.npos; at = text.find("<trkseg>", at + 1)) {
    ++segments;
  }
  EXPECT_EQ(segments, 4U);
  ExpectIn(text, "<trkpt lat=\"6.0\" lon=\"5.0\">");
}

TEST_F(LayerWriter, GivesTheReasonOfAFailure) {
  const ExportedLayer layer = LayerOfShapes(GeoKind::Line, false, {});
  for (const LayerFormat format : {LayerFormat::GeoPackage, LayerFormat::Kml, LayerFormat::Gpx,
                                   LayerFormat::FlatGeobuf, LayerFormat::Csv}) {
    const LayersWritten written = WriteTo("nowhere/made", layer, format);
    EXPECT_NE(written.fault, "") << FormatName(format);
    EXPECT_EQ(written.fault.find('\n'), std::string::npos) << written.fault;
  }
}

TEST_F(LayerWriter, SaysWhichSystemIsUnknown) {
  const FormatModule& module = *LoadFormatModule().module;
  for (const int number : {999999, 5773}) {  // none, and one of heights only
    const LayersWritten written =
        module.writeLayers({LayerFormat::GeoPackage, folder.Path("made.gpkg"), number, "made"}, {});
    EXPECT_NE(written.fault, "") << number;
    EXPECT_FALSE(module.knowsSystem(number));
  }
  EXPECT_TRUE(module.knowsSystem(32636));
  EXPECT_TRUE(module.knowsSystem(4326));
}

TEST_F(LayerWriter, SaysThatADriverIsMissing) {
  const ExportedLayer layer = LayerOfShapes(GeoKind::Line, false, {});
  ::setenv("GDAL_SKIP", "KML", 1);
  const LayersWritten written = WriteTo("made.kml", layer, LayerFormat::Kml);
  ::unsetenv("GDAL_SKIP");
  EXPECT_EQ(written.fault, "GDAL has no driver KML here");
  EXPECT_EQ(WriteTo("made.kml", layer, LayerFormat::Kml).fault, "");
}

TEST_F(LayerWriter, CountsFeaturesWithoutAPlaceInTheSystem) {
  const GeoShape here = {GeoKind::Line, {{{33, 0}, {33, 1}}}};
  const GeoShape pole = {GeoKind::Line, {{{33, 0}, {123, 0}}}};
  const auto written = [&](const std::vector<GeoShape>& shapes) {
    return LoadFormatModule().module->writeLayers(
        {LayerFormat::FlatGeobuf, folder.Path("made.fgb"), 32636, "made"},
        {LayerOfShapes(GeoKind::Line, false, shapes)});
  };
  EXPECT_EQ(written({here, here}).unplaced, 0U);
  EXPECT_EQ(written({here, pole}).unplaced, 1U);
}

TEST_F(LayerWriter, GivesUpOnWhatTheFormatDoesNotTake) {
  const GeoShape line = {GeoKind::Line, {{{0, 0}, {1, 1}}}};
  ExportedLayer layer = LayerOfShapes(GeoKind::Line, false, {line});
  const FormatModule& module = *LoadFormatModule().module;
  // Two layers of one name.
  const LayersWritten twice = module.writeLayers(
      {LayerFormat::GeoPackage, folder.Path("twice.gpkg"), Wgs84System, "made"}, {layer, layer});
  EXPECT_NE(twice.fault.find("made"), std::string::npos) << twice.fault;
  // Two fields of one name.
  layer.fields = {{"a", FieldType::Text}, {"a", FieldType::Text}};
  layer.visit = [](const FeatureTaker&) {};
  EXPECT_NE(WriteTo("fields.gpkg", layer).fault, "");
}

TEST_F(LayerWriter, LeavesOutOfGpxWhatHasNoNameOrPlace) {
  LayerFeature stop;  // a point without a name of its own
  stop.shape = {GeoKind::Point, {{{30, 1}}}};
  LayerFeature nowhere;
  nowhere.isMark = true;
  LayerFeature mark = stop;
  mark.isMark = true;
  mark.title = "Camp";
  mark.shape.parts[0][0] = {180, 1, 7};
  ExportedLayer layer = LayerOfShapes(GeoKind::Point, false, {});
  layer.visit = [&](const FeatureTaker& take) {
    for (const LayerFeature& each : {stop, nowhere, mark}) take(each);
  };
  EXPECT_EQ(WriteTo("made.gpx", layer, LayerFormat::Gpx).fault, "");
  const std::string text = folder.Read("made.gpx");
  EXPECT_EQ(text.find("<wpt "), text.rfind("<wpt ")) << text;
  ExpectIn(text, "lon=\"-180.");
  ExpectIn(text, "<ele>7.0</ele>");
  ExpectIn(text, "<name>Camp</name>");
}

TEST_F(LayerWriter, GivesAreasInSeveralPartsAndAltitudesOfAll) {
  const GeoPath ring = {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}, {0, 0, 5}};
  const GeoShape area = {GeoKind::Area, {ring, ring}};
  ExportedLayer layer = LayerOfShapes(GeoKind::Area, true, {area});
  layer.hasAltitudes = true;
  EXPECT_EQ(WriteTo("made.gpkg", layer).fault, "");
  ExpectIn(Listed("made.gpkg"), "MULTIPOLYGON Z (((0 0 5,");
  EXPECT_EQ(WriteTo("made.kml", layer, LayerFormat::Kml).fault, "");
  ExpectIn(folder.Read("made.kml"), "0,0,5");
}

TEST_F(LayerWriter, TakesPartsOfShapesThatDiffer) {
  const GeoShape cut = {GeoKind::Line, {{{179, 0}, {180, 1}}, {{-180, 1}, {-179, 2}}}};
  const GeoShape point = {GeoKind::Point, {{{0, 0}}}};
  EXPECT_EQ(WriteTo("made.gpkg", LayerOfShapes(GeoKind::None, true, {cut, point})).fault, "");
  const std::string listed = Listed("made.gpkg");
  ExpectIn(listed, "MULTILINESTRING ((179 0,180 1),(-180 1,-179 2))");
  ExpectIn(listed, "POINT (0 0)");
}

TEST_F(LayerWriter, WritesTheSignsOfXmlInKmlAsText) {
  LayerFeature area;
  area.shape = {GeoKind::Area, {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}}};
  area.filled = true;  // but in no colour
  area.group = "a <b> & c";
  area.title = "one\ttwo";
  ExportedLayer layer = LayerOfShapes(GeoKind::Area, false, {});
  layer.visit = [&](const FeatureTaker& take) { take(area); };
  EXPECT_EQ(WriteTo("made.kml", layer, LayerFormat::Kml).fault, "");
  const std::string text = folder.Read("made.kml");
  ExpectIn(text, "<Folder><name>a &lt;b&gt; &amp; c</name>");
  ExpectIn(text, "<name>one\ttwo</name>");
  ExpectIn(text, "<PolyStyle><fill>0</fill></PolyStyle>");
}

}  // namespace
}  // namespace orvane
