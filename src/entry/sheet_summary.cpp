#include "entry/sheet_summary.h"

#include "entry/separated_table.h"

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

/// "column C", as the column fields name it.
std::string ColumnWords(int column) {
  constexpr int Letters = 26;
  // A field that names no column reads the first one.
  column = std::max(column, 0);
  std::string name;
  if (column >= Letters) name += static_cast<char>('A' + column / Letters - 1);
  name += static_cast<char>('A' + column % Letters);
  return "column " + name;
}

/// What the fields of the dialog made the import look for.
std::string LookedFor(const ImportSpec& spec) {
  std::vector<std::string> parts;
  if (spec.dateColumn == ColumnMalformed && spec.yearColumn >= 0) {
    parts.push_back("a day, month and year in " + ColumnWords(spec.dayColumn) + ", " +
                    ColumnWords(spec.monthColumn) + " and " + ColumnWords(spec.yearColumn));
  } else if (spec.dateColumn != ColumnBlank) {
    parts.push_back("a date in " + ColumnWords(spec.dateColumn));
  }
  if (spec.speciesColumn != ColumnBlank) {
    parts.push_back("a species in " + ColumnWords(spec.speciesColumn));
  }
  parts.push_back("a time in " + ColumnWords(spec.timeColumn));
  parts.push_back("a place in " + ColumnWords(spec.locationColumn));
  return Joined(parts);
}

/// The separator that a sheet without tabs seems to have, or else its own.
char LikelySeparator(const FollowSheet& sheet) {
  if (sheet.separator != '\t' || sheet.text.find('\t') != std::string::npos) return sheet.separator;
  const auto count = [&](char c) { return std::count(sheet.text.begin(), sheet.text.end(), c); };
  const char likely = count(';') >= count(',') ? ';' : ',';
  return count(likely) > 0 ? likely : '\t';
}

std::string NothingFound(const ImportSpec& spec) {
  const FollowSheet& sheet = *spec.sheet;
  std::string text = "No follows in " + spec.fileName + ": looked for " + LookedFor(spec) +
                     ", with " + std::string(SeparatorName(sheet.separator)) + " between columns";
  const char likely = LikelySeparator(sheet);
  if (likely != sheet.separator) {
    text += ", but the file has " + std::string(SeparatorName(likely)) + " and no tabs";
  }
  return text;
}

}  // namespace

std::string SheetSummary(const ImportSpec& spec, const SheetCounts& counts) {
  std::string text;
  if (counts.follows == 0) {
    text = NothingFound(spec);
  } else {
    text = "Imported " + Counted(counts.follows, "follow", "follows") + " with " +
           Counted(counts.stops, "stop", "stops") + " from " + spec.fileName;
  }
  if (counts.abandonedAt > 0) text += "; gave up at line " + std::to_string(counts.abandonedAt);
  if (counts.unknownPlaces > 0) {
    text += "; " + Counted(counts.unknownPlaces, "place is", "places are") + " unknown";
    if (counts.abandonedAt == 0) text += ", listed in unknownlocs.txt";
  }
  if (counts.weatherNotes > 0) {
    text +=
        "; " + Counted(counts.weatherNotes, "note", "notes") + " on the weather in badweather.txt";
  }
  return text + LeftOutText(counts.leftOut);
}

}  // namespace orvane
