// A module of formats that was built with another version of the program.

#include "formats/format_module.h"

extern "C" const orvane::FormatModule* OrvaneFormatModule() {
  static const orvane::FormatModule module = {"0.0.1-other", nullptr, nullptr, nullptr, nullptr};
  return &module;
}
