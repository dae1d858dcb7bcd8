#pragma once

#include <memory>
#include <ogrsf_frmts.h>

namespace orvane {

/// Owners of what GDAL gives away.

struct CloseDataset {
  void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, CloseDataset>;

struct DestroyFeature {
  void operator()(OGRFeature* feature) const { OGRFeature::DestroyFeature(feature); }
};
using Feature = std::unique_ptr<OGRFeature, DestroyFeature>;

}  // namespace orvane
