#include "gis/gdal_session.h"

#include <algorithm>
#include <cpl_conv.h>
#include <gdal.h>

namespace orvane {

namespace {

/// Options of GDAL while one of its formats is written or read.
constexpr const char* Options[][2] = {
    // Two exports of a map have the same bytes.
    {"OGR_CURRENT_DATE", "1970-01-01T00:00:00.000Z"},
    // The file is copied afterwards, so only the copy has to reach the disk.
    {"OGR_SQLITE_SYNCHRONOUS", "OFF"},
    // Every row of an .xls file is read, and every cell as a text.
    {"OGR_XLS_HEADERS", "DISABLE"},
    {"OGR_XLS_FIELD_TYPES", "STRING"},
};

}  // namespace

GdalSession::GdalSession() {
  GDALAllRegister();
  CPLPushErrorHandlerEx(Take, this);
  for (const auto& [name, value] : Options) CPLSetThreadLocalConfigOption(name, value);
}

GdalSession::~GdalSession() {
  for (const auto& [name, value] : Options) CPLSetThreadLocalConfigOption(name, nullptr);
  CPLPopErrorHandler();
}

void GdalSession::Take(CPLErr severity, CPLErrorNum, const char* text) {
  auto& failure = static_cast<GdalSession*>(CPLGetErrorHandlerUserData())->failure_;
  if (severity < CE_Failure || !failure.empty()) return;
  failure = text;
  std::replace(failure.begin(), failure.end(), '\n', ' ');
}

}  // namespace orvane
