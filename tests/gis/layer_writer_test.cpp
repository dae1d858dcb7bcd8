#include "gis/exported_layers.h"

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
  const GeoShape line = {GeoKind::Line, {{{0, 0}, {1, 1}}}};
  const GeoShape cut = {GeoKind::Line, {{{179, 0}, {180, 1}}, {{-180, 1}, {-179, 2}}}};
  EXPECT_EQ(WriteTo("made.gpkg", LayerOfShapes(GeoKind::Line, true, {line, cut, {}})).fault, "");
  const std::string listed = Listed("made.gpkg");
  ExpectIn(listed, "Geometry: Multi Line String\nFeature Count: 3\n");
  ExpectIn(listed, "MULTILINESTRING ((0 0,1 1))");
  ExpectIn(listed, "MULTILINESTRING ((179 0,180 1),(-180 1,-179 2))");
}

TEST_F(LayerWriter, TakesShapesThatDiffer) {
  const GeoShape point = {GeoKind::Point, {{{0, 0}}}};
  const GeoShape area = {GeoKind::Area, {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}}};
  for (const LayerFormat format : {LayerFormat::GeoPackage, LayerFormat::FlatGeobuf}) {
    const std::string name = format == LayerFormat::GeoPackage ? "made.gpkg" : "made.fgb";
    EXPECT_EQ(WriteTo(name, LayerOfShapes(GeoKind::None, false, {point, area}), format).fault, "");
    const std::string listed = Listed(name);
    ExpectIn(listed, "POINT (0 0)");
    ExpectIn(listed, "POLYGON ((0 0,1 0,1 1,0 0))");
  }
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

}  // namespace
}  // namespace orvane
