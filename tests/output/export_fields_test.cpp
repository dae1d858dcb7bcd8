#include "output/export_fields.h"

#include "output/exported_map.h"

namespace orvane {
namespace {

constexpr std::array<bool, LayerCount> AllOffered = {true, true, true, true, true,
                                                     true, true, true, true, true};

/// A module that knows two systems and writes nothing.
LoadedModule SmallModule() {
  static const FormatModule module = {
      "", [](int system) { return system == 4326 || system == 21096; },
      [](const LayerFile&, const std::vector<ExportedLayer>&) { return LayersWritten{}; }, nullptr,
      nullptr};
  return {&module, {}};
}

struct ExportFieldsTest : ExportFixture {
  ExportReading Read(const std::array<bool, LayerCount>& offered = AllOffered) {
    return ReadExportFields(fields, offered, map, SmallModule());
  }
  Texts Posted() {
    Texts texts = Said();
    messages.Clear();
    return texts;
  }

  Map& map = Open("G\tCamp\tN1\tE30\t10\n");
  ExportFields fields;
};

TEST_F(ExportFieldsTest, AtFirstAskForAllLayersButEstimatesInAGeoPackage) {
  const ExportReading reading = Read();
  EXPECT_EQ(reading.refused, ExportField::None);
  EXPECT_EQ(reading.request.format, LayerFormat::GeoPackage);
  EXPECT_EQ(reading.request.layers, Texts(std::begin(LayerNames), std::end(LayerNames) - 1));
  EXPECT_FALSE(reading.request.system.isUtm);
  EXPECT_EQ(reading.request.system.number, Wgs84System);
}

TEST_F(ExportFieldsTest, TickedLayersAreThoseThatTheMapOffers) {
  fields.layers.fill(false);
  fields.layers[1] = true;  // trails
  fields.layers[8] = true;  // contours
  EXPECT_EQ(Read().request.layers, (Texts{"trails", "contours"}));
  fields.layers[9] = true;
  EXPECT_EQ(Read().request.layers, (Texts{"trails", "contours", "estimates"}));
  fields.layers[9] = false;
  std::array<bool, LayerCount> offered = AllOffered;
  offered[8] = false;
  EXPECT_EQ(Read(offered).request.layers, Texts{"trails"});
  EXPECT_EQ(Posted(), Texts{});
  fields.layers[1] = false;
  EXPECT_EQ(Read(offered).refused, ExportField::Layers);
  EXPECT_EQ(Posted(), Texts{"You must tick a layer"});
}

TEST_F(ExportFieldsTest, TheNumberIsReadWithItsPrefixAndWithout) {
  fields.system = ExportSystem::Number;
  for (const char* text : {"21096", " 21096 ", "EPSG:21096", "epsg: 21096"}) {
    fields.number = text;
    const ExportReading reading = Read();
    EXPECT_EQ(reading.refused, ExportField::None) << text;
    EXPECT_EQ(reading.request.system.number, 21096) << text;
    EXPECT_FALSE(reading.request.system.isUtm);
  }
  for (const char* text : {"", "UTM", "0", "-1", "21096a", "EPSG:EPSG:21096", "99999999999"}) {
    fields.number = text;
    EXPECT_EQ(Read().refused, ExportField::Number) << text;
    EXPECT_EQ(Posted(), Texts{"Bad EPSG number: " + std::string(text)});
  }
  fields.number = "999999";
  EXPECT_EQ(Read().refused, ExportField::Number);
  EXPECT_EQ(Posted(), Texts{"No coordinate system EPSG:999999"});
}

TEST_F(ExportFieldsTest, AMapWithoutAPlaceIsInNoUtmZone) {
  fields.system = ExportSystem::Utm;
  EXPECT_TRUE(Read().request.system.isUtm);
  EXPECT_EQ(UtmChoiceText(map), "UTM zone of the middle of the map: 36 north (EPSG:32636)");
  const Map& south = Open("G\tCamp\tS1\tE30\n");
  EXPECT_EQ(UtmChoiceText(south), "UTM zone of the middle of the map: 36 south (EPSG:32736)");
  const Map& empty = Open("");
  EXPECT_EQ(UtmChoiceText(empty), "UTM zone of the middle of the map: none");
  EXPECT_EQ(ReadExportFields(fields, AllOffered, empty, SmallModule()).refused,
            ExportField::System);
  EXPECT_EQ(Posted(), Texts{"The middle of " + empty.shownName + " is in no UTM zone"});
}

TEST_F(ExportFieldsTest, FormatsOfGlobesAndGpsUnitsKeepToWgs84) {
  // The other system stays in the fields for the next export.
  fields.system = ExportSystem::Number;
  fields.number = "no number";
  for (const ExportFormat format : {ExportFormat::Kml, ExportFormat::Gpx}) {
    fields.format = format;
    EXPECT_FALSE(TakesSystem(format));
    EXPECT_EQ(Read().refused, ExportField::None);
    EXPECT_EQ(Read().request.system.number, Wgs84System);
  }
  EXPECT_EQ(Posted(), Texts{});
}

TEST_F(ExportFieldsTest, OnlyGeoJsonIsWrittenWithoutTheModule) {
  const LoadedModule missing{nullptr, "it is not installed"};
  for (const ExportFormat format : ExportFormats) {
    fields.format = format;
    const bool isGeoJson = format == ExportFormat::GeoJson;
    const ExportReading reading = ReadExportFields(fields, AllOffered, map, missing);
    EXPECT_EQ(reading.refused, isGeoJson ? ExportField::None : ExportField::Format);
    EXPECT_EQ(TakesLayers(format), !isGeoJson);
    EXPECT_EQ(Posted().size(), isGeoJson ? 0U : 1U);
  }
  fields.format = ExportFormat::Csv;
  ReadExportFields(fields, AllOffered, map, missing);
  EXPECT_EQ(Posted(), Texts{"Writing CSV needs the package orvane-gis: it is not installed"});
  EXPECT_EQ(MissingModuleText(missing),
            "GeoPackage, KML, GPX, FlatGeobuf and CSV need the package orvane-gis: it is not "
            "installed");
  EXPECT_EQ(MissingModuleText(SmallModule()), "");
}

TEST_F(ExportFieldsTest, EachFormatHasATextAndAnEnding) {
  Texts endings;
  for (const ExportFormat format : ExportFormats) endings.emplace_back(ExportEnding(format));
  EXPECT_EQ(endings, (Texts{"gpkg", "kml", "gpx", "fgb", "csv", "geojson"}));
  for (const ExportFormat format : ExportFormats) {
    const auto layers = LayerFormatOf(format);
    const std::string name(layers ? FormatName(*layers) : "GeoJSON");
    EXPECT_TRUE(ExportFormatText(format).starts_with(name + ", "));
  }
}

TEST_F(ExportFieldsTest, FilesOfSeveralLayersAreReplacedOnlyAfterAQuestion) {
  RecordedMessages no(2);
  LayerRequest request{LayerFormat::Csv, folder.Path("site.csv"), {"points", "trails"}, {}};
  EXPECT_EQ(LayerPaths(request),
            (Texts{folder.Path("site-points.csv"), folder.Path("site-trails.csv")}));
  // The dialog for files has asked about this one, which is not written.
  folder.Write("site.csv", "old");
  EXPECT_TRUE(MayReplaceLayers(request, no));
  EXPECT_TRUE(no.Questions().empty());
  folder.Write("site-trails.csv", "old");
  EXPECT_FALSE(MayReplaceLayers(request, no));
  ASSERT_EQ(no.Questions().size(), 1U);
  EXPECT_EQ(no.Questions()[0].text,
            "1 of the files to be written exist, the first is site-trails.csv. Do you want to "
            "replace them?");
  RecordedMessages yes(1);
  EXPECT_TRUE(MayReplaceLayers(request, yes));
  request.layers = {"trails"};
  EXPECT_EQ(LayerPaths(request), Texts{folder.Path("site.csv")});
  EXPECT_TRUE(MayReplaceLayers(request, no));
  request.layers.clear();
  EXPECT_EQ(LayerPaths(request).size(), LayerCount - 1);
  request.layers = {"estimates", "points"};
  EXPECT_EQ(LayerPaths(request),
            (Texts{folder.Path("site-points.csv"), folder.Path("site-estimates.csv")}));
  request.format = LayerFormat::Kml;
  EXPECT_EQ(LayerPaths(request), Texts{folder.Path("site.csv")});
}

}  // namespace
}  // namespace orvane
