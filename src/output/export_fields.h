#pragma once

#include "output/layer_export.h"
#include "output/layers.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The dialog "Export" without its window: what it offers, what its fields mean, and what is refused.
/// The window shows `ExportFields`, calls `ReadExportFields` on its button, and stays open if that
/// refuses.

/// What the dialog offers, GeoJSON last.
enum class ExportFormat { GeoPackage, Kml, Gpx, FlatGeobuf, Csv, GeoJson };
constexpr std::array<ExportFormat, 6> ExportFormats = {
    ExportFormat::GeoPackage, ExportFormat::Kml, ExportFormat::Gpx,
    ExportFormat::FlatGeobuf, ExportFormat::Csv, ExportFormat::GeoJson};

constexpr std::size_t LayerCount = std::size(LayerNames);

/// Where the coordinates are.
enum class ExportSystem { Wgs84, Utm, Number };

/// What is in the fields. The program keeps it from one export to the next.
struct ExportFields {
  ExportFormat format = ExportFormat::GeoPackage;
  /// Those that are meant if none is named.
  std::array<bool, LayerCount> layers = {true, true, true, true, true, true, true, true, true};
  ExportSystem system = ExportSystem::Wgs84;
  std::string number;  ///< of the EPSG, as typed
};

/// The format of layers that an `ExportFormat` is.
/// \return nothing for GeoJSON, which needs no module
std::optional<LayerFormat> LayerFormatOf(ExportFormat format);
/// The name of a format with what it is good for: "GeoPackage, for QGIS and other GIS".
std::string_view ExportFormatText(ExportFormat format);
/// The ending of its files, without the dot.
std::string_view ExportEnding(ExportFormat format);
/// \return true if the layers can be chosen; GeoJSON has everything
bool TakesLayers(ExportFormat format);
/// \return true if the coordinate system can be chosen
bool TakesSystem(ExportFormat format);

/// \return "UTM zone of the middle of the map: 50 north (EPSG:32650)", or ending in "none"
std::string UtmChoiceText(const Map& map);

/// \return why only GeoJSON can be written, and what to install; empty if the module is there
std::string MissingModuleText(const LoadedModule& loaded);

/// The field at fault.
enum class ExportField { None, Format, Layers, System, Number };

struct ExportReading {
  LayerRequest request;                     ///< without a file; unused for GeoJSON
  ExportField refused = ExportField::None;  ///< else nothing can be written
};

/// Reads the fields and checks what can be checked before a file is chosen. A refusal is an error.
/// \param offered  the layers that the map offers; others count as not ticked
ExportReading ReadExportFields(const ExportFields& fields,
                               const std::array<bool, LayerCount>& offered, const Map& map,
                               const LoadedModule& loaded);

/// Asks before files are replaced that the dialog for files did not ask about: those of a format of
/// one layer a file, if there are several layers.
/// \return false if the user keeps them
bool MayReplaceLayers(const LayerRequest& request, Messages& messages);

}  // namespace orvane
