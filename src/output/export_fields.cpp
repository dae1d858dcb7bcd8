#include "output/export_fields.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "base/text.h"
#include "model/workspace.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvane {

namespace {

/// The numbers of UTM zones are these plus the zone.
constexpr int SouthernZones = 32700;
constexpr int ZonesOfHalf = 100;

std::vector<std::string> TickedLayers(const ExportFields& fields,
                                      const std::array<bool, LayerCount>& offered) {
  std::vector<std::string> names;
  for (size_t i = 0; i < LayerCount; ++i) {
    if (fields.layers[i] && offered[i]) names.emplace_back(LayerNames[i]);
  }
  return names;
}

/// \return nothing after an error
std::optional<LayerSystem> ReadNumber(const std::string& text, const LoadedModule& loaded,
                                      Messages& messages) {
  std::string typed = text;
  std::erase(typed, ' ');
  constexpr std::string_view Prefix = "EPSG:";  // may be typed too
  if (SameName(typed.substr(0, Prefix.size()), Prefix)) typed.erase(0, Prefix.size());
  const auto system = ParseLayerSystem(std::string(Prefix) + typed);
  if (!system) {
    NoteError(messages, "Bad EPSG number: %s", {text});
    return std::nullopt;
  }
  const FormatModule* const module = loaded.module;
  if (module != nullptr && !module->knowsSystem(system->number)) {
    NoteError(messages, "No coordinate system EPSG:%s", {std::to_string(system->number)});
    return std::nullopt;
  }
  return system;
}

}  // namespace

std::optional<LayerFormat> LayerFormatOf(ExportFormat format) {
  switch (format) {
    case ExportFormat::GeoPackage:
      return LayerFormat::GeoPackage;
    case ExportFormat::Kml:
      return LayerFormat::Kml;
    case ExportFormat::Gpx:
      return LayerFormat::Gpx;
    case ExportFormat::FlatGeobuf:
      return LayerFormat::FlatGeobuf;
    case ExportFormat::Csv:
      return LayerFormat::Csv;
    case ExportFormat::GeoJson:
      break;
  }
  return std::nullopt;
}

std::string_view ExportFormatText(ExportFormat format) {
  switch (format) {
    case ExportFormat::GeoPackage:
      return "GeoPackage, for QGIS and other GIS";
    case ExportFormat::Kml:
      return "KML, for Google Earth and other globes";
    case ExportFormat::Gpx:
      return "GPX, for GPS units";
    case ExportFormat::FlatGeobuf:
      return "FlatGeobuf, a file for each layer";
    case ExportFormat::Csv:
      return "CSV, a table for each layer";
    case ExportFormat::GeoJson:
      break;
  }
  return "GeoJSON, everything in one file";
}

std::string_view ExportEnding(ExportFormat format) {
  const auto layers = LayerFormatOf(format);
  return layers ? LayerEnding(*layers).substr(1) : "geojson";
}

bool TakesLayers(ExportFormat format) { return LayerFormatOf(format).has_value(); }

bool TakesSystem(ExportFormat format) {
  const auto layers = LayerFormatOf(format);
  return layers && !NeedsWgs84(*layers);
}

std::string UtmChoiceText(const Map& map) {
  std::string text = "UTM zone of the middle of the map: ";
  const auto number = UtmSystemOf(map);
  if (!number) return text + "none";
  const bool isSouth = *number > SouthernZones;
  return text + std::to_string(*number % ZonesOfHalf) + (isSouth ? " south" : " north") +
         " (EPSG:" + std::to_string(*number) + ")";
}

std::string MissingModuleText(const LoadedModule& loaded) {
  if (loaded.module != nullptr) return {};
  return "GeoPackage, KML, GPX, FlatGeobuf and CSV need the package orvane-gis: " + loaded.fault;
}

ExportReading ReadExportFields(const ExportFields& fields,
                               const std::array<bool, LayerCount>& offered, const Map& map,
                               const LoadedModule& loaded) {
  const auto format = LayerFormatOf(fields.format);
  if (!format) return {};
  Messages& messages = map.workspace->messages;
  if (!HasModule(*format, loaded, messages)) return {{}, ExportField::Format};
  LayerRequest request;
  request.format = *format;
  request.layers = TickedLayers(fields, offered);
  if (request.layers.empty()) {
    NoteError(messages, "You must tick a layer");
    return {{}, ExportField::Layers};
  }
  if (!TakesSystem(fields.format)) return {std::move(request), ExportField::None};
  if (fields.system == ExportSystem::Number) {
    const auto system = ReadNumber(fields.number, loaded, messages);
    if (!system) return {{}, ExportField::Number};
    request.system = *system;
  }
  request.system.isUtm = fields.system == ExportSystem::Utm;
  if (!FindSystem(map, request.system)) return {{}, ExportField::System};
  return {std::move(request), ExportField::None};
}

bool MayReplaceLayers(const LayerRequest& request, Messages& messages) {
  const std::vector<std::string> paths = LayerPaths(request);
  if (paths.size() == 1) return true;
  std::error_code error;
  const auto isThere = [&](const std::string& path) {
    return std::filesystem::exists(path, error);
  };
  const auto first = std::find_if(paths.begin(), paths.end(), isThere);
  if (first == paths.end()) return true;
  const auto count = std::count_if(first, paths.end(), isThere);
  return AskUser(
             messages, "Replace Files?", "Replace", "Cancel", "",
             "%s of the files to be written exist, the first is %s. Do you want to replace them?",
             {std::to_string(count), BaseName(*first)}) == 1;
}

}  // namespace orvane
