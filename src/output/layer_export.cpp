#include "output/layer_export.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "base/replaced_file.h"
#include "base/text.h"
#include "base/utf8.h"
#include "geo/utm.h"
#include "model/listed_points.h"
#include "model/workspace.h"
#include "output/geojson_shapes.h"
#include "output/layers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace orvane {

namespace {

/// Bytes copied at once.
constexpr size_t PieceBytes = size_t{1} << 20U;

/// A folder that is deleted with its files.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::error_code error;
    std::string name = (std::filesystem::temp_directory_path(error) / "orvane-XXXXXX").string();
    if (!error && mkdtemp(name.data()) != nullptr) path_ = name;
  }
  ~ScratchFolder() {
    std::error_code error;
    if (!path_.empty()) std::filesystem::remove_all(path_, error);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Empty if it could not be made.
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

/// A file of the export.
struct TargetFile {
  std::string path;
  std::vector<ExportedLayer> layers;
  std::unique_ptr<ReplacedFile> file;
};

bool IsOneFile(const LayerRequest& request) {
  return !HoldsOneLayer(request.format) || request.layers.size() == 1;
}

/// One run of the export.
class LayerExport {
 public:
  LayerExport(Map& map, const LayerRequest& request, const FormatModule& module)
      : map_(map), request_(request), module_(module) {}

  /// Replaces the files.
  LayerOutcome Replace(const FileSystem& system) {
    if (!Prepare() || !Open(system)) return {};
    for (TargetFile& target : targets_) {
      const auto put = [&](std::string_view bytes) { return target.file->Write(bytes); };
      if (!Write(target, put)) return {};
      if (!target.file->Flush()) return FailToWrite(target);
    }
    if (IsCanceled()) return {};
    for (TargetFile& target : targets_) {
      if (!target.file->TakeName()) return FailToWrite(target);
    }
    FlushDirectoryOf(targets_.front().file->Path());
    return Finish();
  }

  /// Writes the only file to the sink.
  LayerOutcome Print(const TextSink& sink) {
    if (!Prepare() || !Write(targets_.front(), sink)) return {};
    return {Finish().complete, {}};
  }

 private:
  /// Describes the layers and divides them among the files. \return false after an error
  bool Prepare() {
    const auto number = FindSystem(map_, request_.system);
    if (!number) return false;
    number_ = *number;
    std::vector<ExportedLayer> layers = LayersOf(map_, request_.layers);
    if (IsCanceled()) return false;
    names_ = NamesOf(layers);
    for (const ExportedLayer& layer : layers) {
      features_ += layer.count;
      layersFit_ = layersFit_ && layer.isComplete;
    }
    Divide(std::move(layers));
    return true;
  }

  bool IsCanceled() const { return orvane::IsCanceled(map_.workspace->progress); }

  template <typename... Texts>
  bool Fail(std::string_view format, const Texts&... texts) {
    NoteError(map_.workspace->messages, format, {texts...});
    return false;
  }

  /// \return the layers that have features, for a sentence; "no features" if none has
  static std::string NamesOf(const std::vector<ExportedLayer>& layers) {
    std::vector<std::string_view> filled;
    for (const ExportedLayer& layer : layers) {
      if (layer.count > 0) filled.push_back(layer.name);
    }
    if (filled.empty()) return "no features";
    std::string names;
    for (const std::string_view& name : filled) {
      if (!names.empty()) names += &name == &filled.back() ? " and " : ", ";
      names += name;
    }
    return names;
  }

  void Divide(std::vector<ExportedLayer> layers) {
    if (IsOneFile(request_)) {
      targets_.push_back({request_.path, std::move(layers), nullptr});
      return;
    }
    for (ExportedLayer& layer : layers) {
      TargetFile& target = targets_.emplace_back();
      target.path = LayerPath(request_.path, layer.name);
      target.layers.push_back(std::move(layer));
    }
  }

  bool Open(const FileSystem& system) {
    for (TargetFile& target : targets_) {
      target.file = std::make_unique<ReplacedFile>(system);
      if (target.file->Open(target.path) != WriteResult::Done) {
        return Fail("Can't open %s for writing", target.path);
      }
    }
    return true;
  }

  /// Has the module write a file, and passes its bytes on.
  bool Write(const TargetFile& target, const TextSink& sink) {
    const ScratchFolder scratch;
    if (scratch.Path().empty()) return FailFor(target, "there is no folder for temporary files");
    const LayerFile file = {request_.format,
                            scratch.Path() + "/layers" + std::string(LayerEnding(request_.format)),
                            number_, ToUtf8(BaseName(map_.fileName))};
    const LayersWritten written = module_.writeLayers(file, target.layers);
    if (IsCanceled()) return false;
    if (!written.fault.empty()) return FailFor(target, written.fault);
    if (written.unplaced > 0) {
      return Fail("No place in EPSG:%s for %s of the features; the old file, if any, is unchanged",
                  std::to_string(number_), std::to_string(written.unplaced));
    }
    return Pass(file.path, sink) || FailToWrite(target).complete;
  }

  bool FailFor(const TargetFile& target, const std::string& reason) {
    return Fail("Error while writing %s: %s; the old file, if any, is unchanged", target.path,
                reason);
  }

  LayerOutcome FailToWrite(const TargetFile& target) {
    Fail("Error while writing %s; the old file, if any, is unchanged", target.path);
    return {};
  }

  static bool Pass(const std::string& path, const TextSink& sink) {
    std::ifstream in(path, std::ios::binary);
    std::string piece(PieceBytes, '\0');
    while (in.good()) {
      in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
      const auto length = static_cast<size_t>(in.gcount());
      if (length > 0 && !sink({piece.data(), length})) return false;
    }
    return in.eof();
  }

  LayerOutcome Finish() {
    const TargetFile& last = targets_.back();
    const std::string path = targets_.size() == 1 ? last.path
                                                  : std::to_string(targets_.size()) + " files, " +
                                                        targets_.front().path + " to " +
                                                        std::string(BaseName(last.path));
    const std::string count = features_ == 0   ? ""
                              : features_ == 1 ? ": 1 feature"
                                               : ": " + std::to_string(features_) + " features";
    return {layersFit_,
            "Exported " + names_ + " to " + path + count + " in EPSG:" + std::to_string(number_)};
  }

  Map& map_;
  const LayerRequest& request_;
  const FormatModule& module_;
  int number_ = Wgs84System;
  bool layersFit_ = true;
  std::string names_;  ///< of the layers, for a sentence
  size_t features_ = 0;
  std::deque<TargetFile> targets_;
};

}  // namespace

std::optional<LayerSystem> ParseLayerSystem(std::string_view text) {
  if (SameName(text, "wgs84")) return LayerSystem{};
  if (SameName(text, "utm")) return LayerSystem{true, 0};
  constexpr std::string_view Prefix = "EPSG:";
  if (!SameName(text.substr(0, Prefix.size()), Prefix)) return std::nullopt;
  const std::string_view digits = text.substr(Prefix.size());
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || number <= 0) {
    return std::nullopt;
  }
  return LayerSystem{false, number};
}

bool NeedsWgs84(LayerFormat format) {
  return format == LayerFormat::Kml || format == LayerFormat::Gpx;
}

bool HoldsOneLayer(LayerFormat format) {
  return format == LayerFormat::FlatGeobuf || format == LayerFormat::Csv;
}

std::string_view FormatName(LayerFormat format) {
  switch (format) {
    case LayerFormat::GeoPackage:
      return "GeoPackage";
    case LayerFormat::Kml:
      return "KML";
    case LayerFormat::Gpx:
      return "GPX";
    case LayerFormat::FlatGeobuf:
      return "FlatGeobuf";
    case LayerFormat::Csv:
      return "CSV";
  }
  return "";
}

std::string_view LayerEnding(LayerFormat format) {
  switch (format) {
    case LayerFormat::GeoPackage:
      return ".gpkg";
    case LayerFormat::Kml:
      return ".kml";
    case LayerFormat::Gpx:
      return ".gpx";
    case LayerFormat::FlatGeobuf:
      return ".fgb";
    case LayerFormat::Csv:
      return ".csv";
  }
  return "";
}

std::string LayerPath(const std::string& path, std::string_view layer) {
  const size_t folder = path.size() - BaseName(path).size();
  const size_t dot = path.rfind('.');
  const size_t at = dot == path.npos || dot <= folder ? path.size() : dot;
  return path.substr(0, at) + "-" + std::string(layer) + path.substr(at);
}

std::vector<std::string> LayerPaths(const LayerRequest& request) {
  if (IsOneFile(request)) return {request.path};
  std::vector<std::string> paths;
  for (const std::string_view name : LayersMeant(request.layers)) {
    paths.push_back(LayerPath(request.path, name));
  }
  return paths;
}

std::optional<int> UtmSystemOf(const Map& map) {
  constexpr int NorthernZones = 32600;
  constexpr int SouthernZones = 32700;
  constexpr double HalfTurn = 180;
  double south = 90;
  double north = -90;
  // Longitudes count from that of the first place, so that a map can lie across the 180th meridian.
  std::optional<double> first;
  double west = HalfTurn;
  double east = -HalfTurn;
  for (const Point* point : ListedPoints(map)) {
    if (!IsPlaced(*point) || !IsOnEarth(point->geo)) continue;
    if (!first) first = point->geo.lon;
    const double lon = std::remainder(point->geo.lon - *first, 2 * HalfTurn);
    south = std::min(south, point->geo.lat);
    north = std::max(north, point->geo.lat);
    west = std::min(west, lon);
    east = std::max(east, lon);
  }
  if (!first) return std::nullopt;
  const double middle = (south + north) / 2;
  const std::optional<UtmPlace> place = PositionToUtm({middle, *first + (west + east) / 2});
  if (!place) return std::nullopt;
  return (middle < 0 ? SouthernZones : NorthernZones) + place->zone;
}

std::optional<int> FindSystem(const Map& map, const LayerSystem& system) {
  if (!system.isUtm) return system.number;
  const std::optional<int> zone = UtmSystemOf(map);
  if (!zone) {
    NoteError(map.workspace->messages, "The middle of %s is in no UTM zone", {map.shownName});
  }
  return zone;
}

bool HasModule(LayerFormat format, const LoadedModule& loaded, Messages& messages) {
  if (loaded.module != nullptr) return true;
  NoteError(messages, "Writing %s needs the package orvane-gis: %s",
            {FormatName(format), loaded.fault});
  return false;
}

LayerOutcome ExportLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded) {
  return ExportLayers(map, request, loaded, SystemFiles());
}

LayerOutcome ExportLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded,
                          const FileSystem& system) {
  if (!HasModule(request.format, loaded, map.workspace->messages)) return {};
  return LayerExport(map, request, *loaded.module).Replace(system);
}

LayerOutcome PrintLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded,
                         const TextSink& sink) {
  if (!HasModule(request.format, loaded, map.workspace->messages)) return {};
  return LayerExport(map, request, *loaded.module).Print(sink);
}

}  // namespace orvane
