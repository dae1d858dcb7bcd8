#include "entry/sheet_fields.h"

#include "base/dates.h"
#include "base/field_text.h"
#include "base/number_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "model/workspace.h"

namespace orvane {

namespace {

constexpr const char* NoDate =
    "You must specify either a column number in which to find a date (in the spreadsheet data), "
    "or an explicit date, or a series of colums in which to find day/month/year (A/B/C)";
constexpr const char* NoFocal =
    "You must specify either a column number in which to find a focal animal (in the spreadsheet "
    "data), or an explicit name";
constexpr const char* NoSpecies =
    "You must specify either a column number in which to find a species/group (in the spreadsheet "
    "data), or an explicit species";
constexpr const char* NoTime = "You must specify a column in which to find the time";
constexpr const char* NoLocation =
    "You must specify a column in which to find the location (trail mark)";
constexpr const char* BadSkip = "Badly specified (or too large) skip count";
constexpr const char* BadColumn = "Badly specified column number";

/// The part of a field that is read as a column.
std::string_view ColumnField(const SheetFields& fields, SheetField field) {
  constexpr size_t LongestColumn = 39;
  return std::string_view(fields[field]).substr(0, LongestColumn);
}

int ReadColumn(const SheetFields& fields, SheetField field) {
  return ParseColumnRef(ColumnField(fields, field));
}

std::optional<std::string> TextOrNull(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return text;
}

/// Reads "A/B/C" as the columns of day, month and year, or of month, day and year. With fewer than
/// two separators there is no series.
void ReadDateSeries(std::string_view text, bool europeanDates, ImportSpec& spec) {
  constexpr std::string_view Separators = "./-";
  const size_t first = FindAnyOf(text, Separators);
  if (first == std::string_view::npos) return;
  const std::string_view rest = text.substr(first + 1);
  const size_t second = FindAnyOf(rest, Separators);
  if (second == std::string_view::npos) return;
  spec.dayColumn = ParseColumnRef(text.substr(0, first));
  spec.monthColumn = ParseColumnRef(rest.substr(0, second));
  if (!europeanDates) std::swap(spec.dayColumn, spec.monthColumn);
  spec.yearColumn = ParseColumnRef(rest.substr(second + 1));
}

bool IsSeriesMissing(const ImportSpec& spec) {
  return spec.yearColumn < 0 || spec.monthColumn < 0 || spec.dayColumn < 0;
}

bool IsDateMissing(const ImportSpec& spec) {
  if (spec.dateAlways) return false;
  return spec.dateColumn == ColumnBlank ||
         (spec.dateColumn == ColumnMalformed && IsSeriesMissing(spec));
}

/// True if neither a column nor a text for all rows is given, and for a malformed column even with
/// such a text.
bool IsColumnOrTextMissing(int column, const std::optional<std::string>& always) {
  return column == ColumnMalformed || (column == ColumnBlank && !always);
}

/// A missing focal animal does not stop the import.
bool CanStart(const ImportSpec& spec) {
  return spec.timeColumn >= 0 && spec.locationColumn >= 0 && spec.focalColumn != ColumnMalformed &&
         spec.skipCount != ColumnMalformed && spec.activityColumn != ColumnMalformed &&
         !IsDateMissing(spec) && !IsColumnOrTextMissing(spec.speciesColumn, spec.speciesAlways);
}

/// The first fault, for fields with which the import cannot start.
SheetRefusal FirstFault(const ImportSpec& spec) {
  if (IsDateMissing(spec)) return {NoDate, SheetDate};
  if (IsColumnOrTextMissing(spec.focalColumn, spec.focalAlways)) return {NoFocal, SheetFocal};
  if (IsColumnOrTextMissing(spec.speciesColumn, spec.speciesAlways)) {
    return {NoSpecies, SheetSpecies};
  }
  if (spec.timeColumn < 0) return {NoTime, SheetTime};
  if (spec.locationColumn < 0) return {NoLocation, SheetLocation};
  if (spec.skipCount == ColumnMalformed) return {BadSkip, SheetSkip};
  return {BadColumn, SheetActivity};
}

void ReadMeasures(const SheetFields& fields, const Map& map, ImportSpec& spec) {
  if (!map.smName[0]) return;
  for (size_t sm = 0; sm < SmColumnFields.size(); ++sm) {
    spec.smColumn[sm] = ReadColumn(fields, SmColumnFields[sm]);
    spec.smCode[sm] = TextOrNull(fields[SmCodeFields[sm]]);
  }
}

}  // namespace

SheetReading ReadSheetFields(const SheetFields& fields, Map& map) {
  const bool europeanDates = map.workspace->preferences.europeanDates;
  SheetReading reading;
  ImportSpec& spec = reading.spec;
  spec.map = &map;
  spec.skipCount = ReadColumn(fields, SheetSkip);
  spec.activityColumn = ReadColumn(fields, SheetActivity);
  spec.timeColumn = ReadColumn(fields, SheetTime);
  spec.locationColumn = ReadColumn(fields, SheetLocation);
  spec.focalColumn = ReadColumn(fields, SheetFocal);
  spec.speciesColumn = ReadColumn(fields, SheetSpecies);
  spec.dateColumn = ReadColumn(fields, SheetDate);
  if (spec.dateColumn == ColumnMalformed) {
    ReadDateSeries(ColumnField(fields, SheetDate), europeanDates, spec);
  }
  spec.speciesAlways = TextOrNull(FieldText(fields[SheetSpeciesAlways]));
  spec.dateAlways = TextOrNull(fields[SheetDateAlways]);
  spec.focalAlways = TextOrNull(FieldText(fields[SheetFocalAlways]));
  if (spec.dateAlways &&
      ParseDate(*spec.dateAlways, europeanDates).length < spec.dateAlways->size()) {
    reading.refusal = {"Bad date", SheetDateAlways};
    return reading;
  }
  ReadMeasures(fields, map, spec);
  if (!CanStart(spec)) reading.refusal = FirstFault(spec);
  return reading;
}

void ChangeSheetField(SheetFields& fields, SheetField changed, std::string_view text) {
  static constexpr std::array<std::array<SheetField, 2>, 7> Empties = {
      {{SheetSpecies, SheetSpeciesAlways},
       {SheetSpeciesAlways, SheetSpecies},
       {SheetDate, SheetDateAlways},
       {SheetDateAlways, SheetDate},
       {SheetFocal, SheetFocalAlways},
       {SheetFocalAlways, SheetFocal},
       // Not a pair, and on purpose. Pinned by
       // ChangeSheetField.OfTheActivityEmptiesTheSpeciesOfAllRows.
       {SheetActivity, SheetSpeciesAlways}}};
  if (fields[changed] == text) return;
  fields[changed] = text;
  for (const auto& [field, other] : Empties) {
    if (field == changed) fields[other].clear();
  }
}

void RememberSheetFields(SheetFields& remembered, const SheetFields& accepted, const Map& map) {
  constexpr size_t LongestRemembered = 9;
  const size_t count = map.smName[0] ? SheetFieldCount : SheetSm1;
  for (size_t field = 0; field < count; ++field) {
    remembered[field] = CutText(accepted[field], LongestRemembered);
  }
}

bool IsSmRowShown(const Map& map, std::size_t sm) { return map.smName[sm].has_value(); }

std::string SmColumnLabel(const Map& map, std::size_t sm) {
  return FormatText("%s Col:", {map.smName[sm].value_or("SM" + std::to_string(sm + 1))});
}

}  // namespace orvane
