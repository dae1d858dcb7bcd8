#pragma once

#include "formats/format_module.h"

namespace orvane {

/// `FormatModule::knowsSystem`.
bool KnowsSystem(int system);

/// `FormatModule::writeLayers`.
LayersWritten WriteLayers(const LayerFile& file, const std::vector<ExportedLayer>& layers);

}  // namespace orvane
