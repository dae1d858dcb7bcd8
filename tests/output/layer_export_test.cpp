#include "output/layer_export.h"

#include "output/exported_map.h"
#include "support/counted_progress.h"

#include <cerrno>
#include <cstdlib>

namespace orvane {
namespace {

/// A module that writes the names of the layers and of their features, but no file of KML.
LoadedModule ModuleOfNames() {
  static const FormatModule module = {
      "", [](int) { return true; },
      [](const LayerFile& file, const std::vector<ExportedLayer>& layers) {
        if (file.format == LayerFormat::Kml) return LayersWritten{};
        std::ofstream out(file.path);
        if (!out) return LayersWritten{"no file", 0};
        for (const ExportedLayer& layer : layers) {
          out << layer.name << ':';
          layer.visit([&](const LayerFeature& feature) {
            out << ' ' << feature.title;
            return true;
          });
          out << '\n';
        }
        return LayersWritten{};
      },
      nullptr, nullptr};
  return {&module, {}};
}

struct LayerExports : ExportFixture {
  Map& map = Open(SiteOfAllGroups);
  FileSystem system = SystemFiles();

  LayerRequest Request(LayerFormat format, const std::string& name, Texts layers) const {
    return {format, folder.Path(name), std::move(layers), {}};
  }
  LayerOutcome Export(const LayerRequest& request) {
    return ExportLayers(map, request, ModuleOfNames(), system);
  }
  std::string Failed(const std::string& name) const {
    return "Error while writing " + folder.Path(name) + "; the old file, if any, is unchanged";
  }
};

TEST_F(LayerExports, OfOneLayerAFileGiveSeveralFiles) {
  const LayerOutcome outcome =
      Export(Request(LayerFormat::Csv, "site.csv", {"trails", "areas", "grids"}));
  EXPECT_TRUE(outcome.complete);
  EXPECT_EQ(outcome.summary, "Exported trails, areas and grids to 3 files, " +
                                 folder.Path("site-trails.csv") +
                                 " to site-grids.csv: 8 features in EPSG:4326");
  EXPECT_EQ(FilesThere(), (Texts{"site-areas.csv", "site-grids.csv", "site-trails.csv"}));
  EXPECT_EQ(folder.Read("site-trails.csv"), "trails: Main\n");
  EXPECT_EQ(folder.Read("site-areas.csv"), "areas: Plot\n");
}

TEST_F(LayerExports, OfOneLayerHaveTheNameAskedFor) {
  const LayerOutcome outcome = Export(Request(LayerFormat::FlatGeobuf, "site.fgb", {"trails"}));
  EXPECT_EQ(outcome.summary,
            "Exported trails to " + folder.Path("site.fgb") + ": 1 feature in EPSG:4326");
  EXPECT_EQ(FilesThere(), Texts{"site.fgb"});
}

TEST_F(LayerExports, InTheUtmZoneNameIt) {
  LayerRequest request = Request(LayerFormat::GeoPackage, "a.gpkg", {"trails"});
  request.system.isUtm = true;
  EXPECT_TRUE(Export(request).summary.ends_with(": 1 feature in EPSG:32650"));
}

TEST_F(LayerExports, ThatDoNotOpenAreReported) {
  std::filesystem::create_directory(folder.Path("a-areas.csv"));
  const LayerOutcome outcome = Export(Request(LayerFormat::Csv, "a.csv", {"trails", "areas"}));
  EXPECT_FALSE(outcome.complete);
  EXPECT_EQ(outcome.summary, "");
  EXPECT_EQ(Said(), Texts{"Can't open " + folder.Path("a-areas.csv") + " for writing"});
  EXPECT_EQ(FilesThere(), Texts{"a-areas.csv"});
}

TEST_F(LayerExports, ThatFailOnTheDiskLeaveTheOldFile) {
  FileSystem noWrite = SystemFiles();
  noWrite.write = [](int, const char*, size_t) -> long {
    errno = ENOSPC;
    return -1;
  };
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
  folder.Write("a.gpkg", "old");
  for (const FileSystem& failing : {noWrite, noFlush, noRename}) {
    messages.Clear();
    system = failing;
    const LayerOutcome outcome = Export(Request(LayerFormat::GeoPackage, "a.gpkg", {"trails"}));
    EXPECT_FALSE(outcome.complete);
    EXPECT_EQ(outcome.summary, "");
    EXPECT_EQ(Said(), Texts{Failed("a.gpkg")});
    EXPECT_EQ(folder.Read("a.gpkg"), "old");
    EXPECT_EQ(FilesThere(), Texts{"a.gpkg"});
  }
}

TEST_F(LayerExports, WithoutAFileFromTheModuleFail) {
  EXPECT_FALSE(Export(Request(LayerFormat::Kml, "a.kml", {"trails"})).complete);
  EXPECT_EQ(Said(), Texts{Failed("a.kml")});
  EXPECT_EQ(FilesThere(), Texts{});
}

// The module wrote its file into the root folder.
TEST_F(LayerExports, WithoutAFolderForTemporaryFilesFail) {
  const char* const before = std::getenv("TMPDIR");
  const std::string kept = before == nullptr ? "" : before;
  ::setenv("TMPDIR", folder.Path("nowhere").c_str(), 1);
  EXPECT_FALSE(Export(Request(LayerFormat::GeoPackage, "a.gpkg", {"trails"})).complete);
  if (before == nullptr) {
    ::unsetenv("TMPDIR");
  } else {
    ::setenv("TMPDIR", kept.c_str(), 1);
  }
  EXPECT_EQ(Said(),
            Texts{"Error while writing " + folder.Path("a.gpkg") +
                  ": there is no folder for temporary files; the old file, if any, is unchanged"});
  EXPECT_EQ(FilesThere(), Texts{});
}

TEST_F(LayerExports, ThatAreCanceledWriteNothing) {
  const LayerRequest request = Request(LayerFormat::Csv, "a.csv", {"trails", "areas", "grids"});
  CountedProgress whole;
  workspace.progress = &whole;
  EXPECT_TRUE(Export(request).complete);
  for (const std::string& name : FilesThere()) folder.Write(name, "old");
  const Texts before = FilesThere();
  ASSERT_GE(whole.stages.size(), 6U);  // each layer is looked at, and then written
  for (size_t at = 1; at <= whole.stages.size(); ++at) {
    CountedProgress progress(at);
    workspace.progress = &progress;
    const LayerOutcome outcome = Export(request);
    EXPECT_FALSE(outcome.complete) << at;
    EXPECT_EQ(outcome.summary, "") << at;
    EXPECT_EQ(FilesThere(), before) << at;
    EXPECT_EQ(folder.Read("a-trails.csv"), "old") << at;
  }
  workspace.progress = nullptr;
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(LayerExports, OfTooManyCellsAreNotComplete) {
  AddGrid(map, Named(map, "Camp"), 3000, 3000);
  const LayerRequest request = Request(LayerFormat::GeoPackage, "a.gpkg", {"trails", "grids"});
  const LayerOutcome outcome = Export(request);
  EXPECT_FALSE(outcome.complete);
  EXPECT_EQ(outcome.summary,
            "Exported trails to " + folder.Path("a.gpkg") + ": 1 feature in EPSG:4326");
  EXPECT_EQ(folder.Read("a.gpkg"), "trails: Main\ngrids:\n");
  std::string printed;
  EXPECT_FALSE(PrintLayers(map, request, ModuleOfNames(), [&](std::string_view text) {
                 printed += text;
                 return true;
               }).complete);
  EXPECT_EQ(printed, "trails: Main\ngrids:\n");
}

TEST_F(LayerExports, ThatArePrintedNeedTheModuleAndASystem) {
  LayerRequest request = Request(LayerFormat::Gpx, "a.gpx", {"trails"});
  const TextSink none = [](std::string_view) { return true; };
  EXPECT_FALSE(PrintLayers(map, request, {nullptr, "it is not installed"}, none).complete);
  request.system.isUtm = true;
  EXPECT_FALSE(PrintLayers(Empty(), request, ModuleOfNames(), none).complete);
  EXPECT_EQ(Said(), (Texts{"Writing GPX needs the package orvane-gis: it is not installed",
                           "The middle of made.map is in no UTM zone"}));
}

}  // namespace
}  // namespace orvane
