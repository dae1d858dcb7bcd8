#include "gis/layer_writer.h"
#include "gis/spreadsheet_reader.h"

// What the program finds when it has loaded the module.

extern "C" __attribute__((visibility("default"))) const orvane::FormatModule* OrvaneFormatModule() {
  static const orvane::FormatModule module = {ORVANE_VERSION, orvane::KnowsSystem,
                                              orvane::WriteLayers, orvane::ListSheets,
                                              orvane::ReadSheetRows};
  return &module;
}
