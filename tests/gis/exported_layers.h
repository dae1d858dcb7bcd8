#pragma once

#include "output/exported_map.h"
#include "output/layer_export.h"
#include "support/gis_reader.h"

namespace orvane {

/// Follows over a grid, with two ranges that overlap, a trail with altitudes, and a filled area.
inline constexpr const char* SiteOfAllLayers =
    "Z\tfruit,leaf,rest\n"
    "G\tCorner\tN1.000\tE30.000\t\t1\nH\tCorner\t100\t3\t2\t0\tA1\t11\nHS\tA2\t#ff0000\n"
    "T\tMain\tPath\t\t\t2,#806040,Solid\tthe way up\n"
    "G\tCamp=Base\tN1\tE30\t10\t1\tthe \"camp\" & <fire>\n"
    "G\tRidge\tN1.001\tE30.001\t30\nG\tM\xC3\xBChle\tN1.002\tE30.001\t20\n"
    "T\tPlot\tSmall & wet\t\t\t,#b8d8d0,Solid,None,1,6\n"
    "G\tP1\tN1\tE30.002\nG\tP2\tN1\tE30.003\nG\tP3\tN1.001\tE30.003\nP\tP1\n"
    "T\t\tBlue\tAna\t2001-3-4\n"
    "G\t0800-0815\tN0.9980\tE30.0010\t\t1\t,3,1\nG\t0830-0840\tN0.9960\tE30.0015\n"
    "G\t0900-1000\tN0.9950\tE30.0040\nG\t1015\tN0.9975\tE30.0045\n"
    "T\t\tRed\tZoe\t2001-3-4\n"
    "G\t1400-1420\tN0.9960\tE30.0030\nG\t1445-1500\tN0.9930\tE30.0035\n"
    "G\t1530-1540\tN0.9945\tE30.0070\nG\t1600-1630\tN0.9970\tE30.0065\n"
    "R\tBlue group\t\tall\nK\tBlue\nR\tRed group\nK\tRed\n";

/// Exports to files and reads them back. Skips its tests in a build without GDAL.
struct LayerFiles : ExportFixture {
  void SetUp() override {
    if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
    ASSERT_NE(LoadFormatModule().module, nullptr) << LoadFormatModule().fault;
  }

  LayerOutcome ExportTo(Map& map, LayerFormat format, const std::string& name,
                        std::vector<std::string> layers = {}, LayerSystem system = {}) {
    return ExportLayers(map, {format, folder.Path(name), std::move(layers), system},
                        LoadFormatModule());
  }
  /// \return what ogrinfo says of one layer, with all features
  std::string Listed(const std::string& name, const std::string& layer = "") const {
    std::string listed =
        ListedByOgrinfo(folder, name, layer.empty() ? "-al" : "-al -where \"1=1\"");
    if (layer.empty()) return listed;
    const size_t begin = listed.find("Layer name: " + layer + "\n");
    EXPECT_NE(begin, std::string::npos) << "no layer " << layer << " in\n" << listed;
    if (begin == std::string::npos) return {};
    return listed.substr(begin, listed.find("\nLayer name: ", begin) - begin);
  }
};

}  // namespace orvane
