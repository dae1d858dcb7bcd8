#pragma once

#include "formats/layers.h"
#include "formats/spreadsheets.h"

#include <string>
#include <vector>

namespace orvane {

/// What the module of file formats offers. It is a shared library of its own, so that the libraries
/// that it needs are loaded only when one of its formats is used.

/// The formats that layers are written in.
enum class LayerFormat { GeoPackage, Kml, Gpx, FlatGeobuf, Csv };

/// The number of the geographic system of all places, WGS 84.
constexpr int Wgs84System = 4326;

/// A file of layers to be written.
struct LayerFile {
  LayerFormat format = LayerFormat::GeoPackage;
  std::string path;          ///< does not exist yet; its folder does
  int system = Wgs84System;  ///< the coordinate system, by its EPSG number
  std::string title;         ///< of the whole file, where the format has one
};

/// How writing ended.
struct LayersWritten {
  std::string fault;    ///< why the file could not be written; empty if it was
  size_t unplaced = 0;  ///< features without geometry: the system has no coordinates for a place
};

/// The sheets of a spreadsheet, in their order.
struct SheetList {
  std::vector<std::string> names;
  std::string fault;  ///< why it can't be read; empty if it can
};

/// The functions of the module. They throw nothing and report faults only in what they return.
struct FormatModule {
  /// The version of the program that it was built with. The records that both share are as there.
  const char* version;
  /// \return true if places can be given in the system of this EPSG number
  bool (*knowsSystem)(int system);
  /// Writes layers as one file. A format that has one layer a file needs just one.
  LayersWritten (*writeLayers)(const LayerFile& file, const std::vector<ExportedLayer>& layers);
  /// \param file  one that `WhyNotUnpacked` does not refuse
  SheetList (*listSheets)(const SpreadsheetFile& file);
  /// Reads the rows of a sheet down to the last one with a text. Dates of true cells come as
  /// "2003-03-04". \return why it failed, as a part of a sentence; empty if it did not
  std::string (*readSheet)(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                           const RowTaker& take);
};

/// The name of the function of the module that returns its `FormatModule`, with C linkage.
constexpr const char* FormatModuleEntry = "OrvaneFormatModule";

/// What `LoadFormatModule` found.
struct LoadedModule {
  const FormatModule* module = nullptr;  ///< null if it can't be used
  std::string fault;                     ///< why it can't be used, as a part of a sentence
};

/// Loads the module, at the first call. It stays loaded. It is looked for in lib/orvane beside the
/// folder of the program, in an installed tree as in a build.
/// \return the same at each call
const LoadedModule& LoadFormatModule();

/// Loads the module from a file, which stays loaded.
LoadedModule LoadFormatModuleFrom(const std::string& path);

}  // namespace orvane
