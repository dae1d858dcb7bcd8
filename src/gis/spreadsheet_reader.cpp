#include "gis/spreadsheet_reader.h"

#include "gis/cell_text.h"
#include "gis/dataset.h"
#include "gis/gdal_session.h"
#include "gis/ods_reader.h"
#include "gis/sheet_rows.h"
#include "gis/xlsx_reader.h"

namespace orvane {

namespace {

Dataset OpenXls(const std::string& path) {
  const char* const drivers[] = {"XLS", nullptr};
  return Dataset(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, drivers,
                                   nullptr, nullptr));
}

std::string FaultOf(const GdalSession& session) {
  return session.Failure().empty() ? "it can't be read" : session.Failure();
}

SheetList ListXlsSheets(const SpreadsheetFile& file) {
  const GdalSession session;
  const Dataset dataset = OpenXls(file.path);
  if (dataset == nullptr) return {{}, FaultOf(session)};
  SheetList list;
  for (int i = 0; i < dataset->GetLayerCount(); ++i) {
    list.names.emplace_back(dataset->GetLayer(i)->GetName());
  }
  return list;
}

std::string ReadXlsSheet(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                         const RowTaker& take) {
  const GdalSession session;
  const Dataset dataset = OpenXls(file.path);
  OGRLayer* const layer = dataset == nullptr ? nullptr : dataset->GetLayerByName(sheet.c_str());
  if (layer == nullptr) return FaultOf(session);
  SheetRows rows(take);
  std::uint64_t number = 0;
  layer->ResetReading();
  while (const Feature feature{layer->GetNextFeature()}) {
    rows.StartRow(++number);
    for (int i = 0; i < feature->GetFieldCount(); ++i) {
      if (!feature->IsFieldSetAndNotNull(i)) continue;
      rows.SetCell(static_cast<std::uint64_t>(i), XlsCellText(feature->GetFieldAsString(i), clock));
    }
    rows.EndRow();
    if (rows.IsDone() || !rows.Fault().empty()) return rows.Fault();
  }
  return session.Failure();
}

}  // namespace

SheetList ListSheets(const SpreadsheetFile& file) {
  switch (file.kind) {
    case SpreadsheetKind::Xlsx:
      return ListXlsxSheets(file);
    case SpreadsheetKind::Ods:
      return ListOdsSheets(file);
    case SpreadsheetKind::Xls:
      return ListXlsSheets(file);
  }
  return {};
}

std::string ReadSheetRows(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                          const RowTaker& take) {
  switch (file.kind) {
    case SpreadsheetKind::Xlsx:
      return ReadXlsxSheet(file, sheet, clock, take);
    case SpreadsheetKind::Ods:
      return ReadOdsSheet(file, sheet, clock, take);
    case SpreadsheetKind::Xls:
      return ReadXlsSheet(file, sheet, clock, take);
  }
  return {};
}

}  // namespace orvane
