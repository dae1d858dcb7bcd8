#include "entry/fix_table.h"

#include "base/text.h"
#include "base/utf8.h"
#include "entry/fix_cells.h"
#include "geo/utm.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace orvane {

namespace {

constexpr std::string_view Separators = "\t;,";

using Cells = std::vector<std::string>;

bool HasAnyValue(const Cells& cells, size_t columns) {
  const auto end = cells.begin() + static_cast<std::ptrdiff_t>(std::min(cells.size(), columns));
  return std::any_of(cells.begin(), end,
                     [](const std::string& cell) { return HasValue(TrimCell(cell)); });
}

/// The name of an animal, fit for a line of a map file, where commas separate fields.
std::string AnimalName(std::string_view text) {
  std::string clean = WithoutControls(text);
  std::replace(clean.begin(), clean.end(), ',', ' ');
  return std::string(TrimCell(clean));
}

/// The name of a file without folders and its last extension.
std::string_view StemOf(std::string_view path) {
  path = path.substr(path.rfind('/') + 1);
  return path.substr(0, path.rfind('.'));
}

/// A heading row and where it was found.
struct Heading {
  char separator = ',';
  std::uint32_t row = 0;
  Cells captions;
  FixColumns columns;
  TableRows rest;  ///< what is below
};

/// \param accepts  is called with the trimmed cells of a row
template <typename Accepts>
std::optional<Heading> FindHeading(std::string_view text, Accepts accepts) {
  for (const char separator : Separators) {
    TableRows rows(text, separator);
    TableRow row;
    std::uint32_t number = 0;
    for (size_t seen = 0; seen < MostRowsAboveData && rows.Next(row);) {
      ++number;
      if (!HasAnyValue(row.cells, row.cells.size())) continue;
      ++seen;
      Cells captions;
      for (const std::string& cell : row.cells) captions.emplace_back(TrimCell(cell));
      if (accepts(captions)) return Heading{separator, number, std::move(captions), {}, rows};
    }
  }
  return std::nullopt;
}

/// Finds the heading row. A row that lacks only named columns is one as well, if no other row is a
/// heading, so that the message can name the column.
std::optional<Heading> FindHeading(std::string_view text, const std::string& name,
                                   const std::vector<NamedFixColumn>& named, Messages& messages) {
  auto heading = FindHeading(text, [&](const Cells& captions) {
    return HasTimeAndPosition(FindFixColumns(captions, named));
  });
  if (!heading) {
    heading = FindHeading(text, [&](const Cells& captions) {
      std::vector<NamedFixColumn> there;
      std::copy_if(named.begin(), named.end(), std::back_inserter(there),
                   [&](const NamedFixColumn& column) { return HasCaption(captions, column); });
      return HasTimeAndPosition(FindFixColumns(captions, there));
    });
  }
  if (!heading) {
    NoteError(messages, "Can't find a heading with time and position in %s", {name});
    return std::nullopt;
  }
  for (const NamedFixColumn& column : named) {
    if (HasCaption(heading->captions, column)) continue;
    NoteError(messages, "Can't find column %s", {column.caption});
    return std::nullopt;
  }
  heading->columns = FindFixColumns(heading->captions, named);
  return heading;
}

/// Goes to the row below a heading that is known.
Heading HeadingOf(std::string_view text, const FixLayout& layout) {
  TableRows rows(text, layout.separator);
  TableRow row;
  for (std::uint32_t i = 0; i < layout.headingRow && rows.Next(row); ++i) continue;
  return {layout.separator, layout.headingRow, layout.captions, layout.columns, rows};
}

/// Reads the rows below a heading.
class FixReader {
 public:
  FixReader(FixTable& table, const Heading& heading, std::string_view name, bool europeanDates)
      : table_(table),
        rows_(heading.rest),
        fallback_(CutText(AnimalName(StemOf(name)), LongestAnimalName)) {
    if (fallback_.empty()) fallback_ = "Animal";
    table_.dayOrder.dayFirst = europeanDates;
    number_ = heading.row;
  }

  /// \return false if it was cancelled
  bool ReadAll(Progress* progress) {
    constexpr unsigned RowsOfStep = 512;
    const size_t lines =
        static_cast<size_t>(std::count(table_.text.begin(), table_.text.end(), '\n'));
    ProgressSteps steps(progress, WorkStage::Reading, lines + 1, RowsOfStep);
    while (rows_.Next(row_)) {
      if (!steps.Next(number_)) return false;
      ++number_;
      if (!HasAnyValue(row_.cells, table_.captions.size())) continue;
      ++table_.rowCount;
      ReadRow();
    }
    if (rows_.EndsInQuote()) table_.openQuoteRow = number_;
    return true;
  }

 private:
  struct Value {
    std::string_view text;  ///< empty for none
    size_t column = 0;
  };

  std::string_view Cell(size_t column) const {
    if (column >= row_.cells.size()) return {};
    const std::string_view cell = TrimCell(row_.cells[column]);
    return HasValue(cell) ? cell : std::string_view();
  }

  /// The first column of a field with a value; else the first one, or column 0.
  Value ValueOf(FixField field) const {
    const std::vector<size_t>& columns = table_.columns.Of(field);
    for (const size_t column : columns) {
      if (const std::string_view text = Cell(column); !text.empty()) return {text, column};
    }
    return {{}, columns.empty() ? 0 : columns.front()};
  }

  void ReadRow() {
    Fix fix;
    fix.row = number_;
    const auto longName = FindLongName();
    if (!longName) fix.animal = FindAnimal();
    if (!ReadTime(fix) || !ReadPosition(fix)) return;
    if (longName) {
      LeaveOut(FixState::BadName, *longName);
      return;
    }
    fix.altitude = ReadAltitude();
    fix.isOutlier = ReadOutlier();
    table_.fixes.push_back(fix);
  }

  void LeaveOut(FixState state, size_t column) {
    table_.badRows.push_back({number_, static_cast<std::uint32_t>(column), state});
  }

  /// \return the column of a name that is too long for a map
  std::optional<size_t> FindLongName() const {
    for (const FixField field : {FixField::Animal, FixField::Species}) {
      const Value value = ValueOf(field);
      if (value.text.size() > LongestAnimalName) return value.column;
    }
    return std::nullopt;
  }

  std::uint32_t FindAnimal() {
    const std::string_view cell = ValueOf(FixField::Animal).text;
    if (table_.animals.empty() || cell != lastAnimalCell_) {
      lastAnimalCell_ = cell;
      std::string name = AnimalName(cell);
      if (name.empty()) name = fallback_;
      const auto [known, isNew] = animalOf_.try_emplace(
          FoldedText(name), static_cast<std::uint32_t>(table_.animals.size()));
      if (isNew) table_.animals.push_back({std::move(name), ""});
      lastAnimal_ = known->second;
    }
    FixAnimal& animal = table_.animals[lastAnimal_];
    if (animal.species.empty()) animal.species = WithoutControls(ValueOf(FixField::Species).text);
    return lastAnimal_;
  }

  bool ReadTime(Fix& fix) {
    const Value time = ValueOf(FixField::Time);
    const Value date = ValueOf(FixField::Date);
    NoteDayOrder(DateOfCells(time.text, date.text));
    const MomentReading read = ReadMoment(time.text, date.text);
    if (read.fault != MomentFault::None) {
      const bool isInDate = read.isInDateCell && table_.columns.Has(FixField::Date);
      LeaveOut(read.fault == MomentFault::Time ? FixState::BadTime : FixState::BadDate,
               isInDate ? date.column : time.column);
      return false;
    }
    const auto utc = UtcOf(read.moment, table_.dayOrder.dayFirst);
    if (!utc) {
      const bool isOwn = !time.text.empty() && DateOfCells(time.text, {}).has_value();
      LeaveOut(FixState::BadDate, isOwn ? time.column : date.column);
      return false;
    }
    fix.utc = *utc;
    return true;
  }

  /// The first date that may be read in two ways makes this search for the row that decides.
  void NoteDayOrder(const std::optional<CellDate>& date) {
    if (!date || !date->isEither) return;
    if (!isOrderKnown_) {
      isOrderKnown_ = true;
      FindDecidingRow(*date);
    }
    constexpr int Months = 12;
    const auto isMonth = [](int number) { return number >= 1 && number <= Months; };
    if (table_.dayOrder.ambiguousRow == 0 && date->first != date->second && isMonth(date->first) &&
        isMonth(date->second)) {
      table_.dayOrder.ambiguousRow = number_;
    }
  }

  /// \param date  of the current row
  void FindDecidingRow(const CellDate& date) {
    // Texts of the current row are in use: its cells must keep their addresses.
    TableRow current;
    std::swap(current, row_);
    TableRows ahead = rows_;
    int place = DayPlaceShownBy(date);
    std::uint32_t number = number_;
    while (place == 0 && ahead.Next(row_)) {
      ++number;
      const auto next = DateOfCells(ValueOf(FixField::Time).text, ValueOf(FixField::Date).text);
      if (next) place = DayPlaceShownBy(*next);
    }
    std::swap(current, row_);
    if (place == 0) return;
    table_.dayOrder.dayFirst = place == 1;
    table_.dayOrder.decidingRow = number;
  }

  bool ReadPosition(Fix& fix) {
    const Value lat = ValueOf(FixField::Lat);
    const Value lon = ValueOf(FixField::Lon);
    if (!lat.text.empty() && !lon.text.empty()) return ReadDegrees(fix, lat, lon);
    const Value easting = ValueOf(FixField::Easting);
    const Value northing = ValueOf(FixField::Northing);
    const Value zone = ValueOf(FixField::Zone);
    if (easting.text.empty() && northing.text.empty() && zone.text.empty()) {
      const Value& missing = lat.text.empty() ? lat : lon;
      LeaveOut(FixState::UnknownPlace,
               table_.columns.Has(FixField::Lat) ? missing.column : easting.column);
      return false;
    }
    return ReadUtm(fix, easting, northing, zone);
  }

  /// Reads a number within bounds. A fault leaves the row out.
  std::optional<double> ReadBounded(const Value& value, double least, double most) {
    const auto number = CellNumber(value.text);
    if (number && *number >= least && *number <= most) return number;
    LeaveOut(FixState::UnknownPlace, value.column);
    return std::nullopt;
  }

  bool ReadDegrees(Fix& fix, const Value& lat, const Value& lon) {
    constexpr double MostLat = 90;
    constexpr double MostLon = 180;
    const auto latitude = ReadBounded(lat, -MostLat, MostLat);
    if (!latitude) return false;
    const auto longitude = ReadBounded(lon, -MostLon, MostLon);
    if (!longitude) return false;
    // Loggers write 0 and 0 for a fix that failed.
    if (*latitude == 0 && *longitude == 0) {
      LeaveOut(FixState::UnknownPlace, lat.column);
      return false;
    }
    fix.lat = *latitude;
    fix.lon = *longitude;
    return true;
  }

  bool ReadUtm(Fix& fix, const Value& east, const Value& north, const Value& zoneCell) {
    const auto easting = ReadBounded(east, LeastUtmEasting, LargestUtmEasting);
    if (!easting) return false;
    const auto northing = ReadBounded(north, 0, LargestUtmNorthing);
    if (!northing) return false;
    const auto zone = ReadCellZone(zoneCell.text);
    const auto isNorthern = zone ? IsUtmNorthern(zone->letter, *northing) : std::nullopt;
    const auto place =
        isNorthern ? UtmToPosition(zone->number, *isNorthern, *easting, *northing) : std::nullopt;
    if (!place) {
      LeaveOut(FixState::UnknownPlace, zoneCell.column);
      return false;
    }
    fix.lat = place->lat;
    fix.lon = place->lon;
    return true;
  }

  /// Loggers write numbers like -9999 and 32767 for an altitude that they don't know.
  float ReadAltitude() const {
    constexpr double Least = -1000;
    constexpr double Most = 20000;
    for (const size_t column : table_.columns.Of(FixField::Altitude)) {
      const std::string_view cell = Cell(column);
      if (cell.empty()) continue;
      const auto number = CellNumber(cell);
      if (number && *number >= Least && *number <= Most) {
        // Adding 0 takes the sign off a zero.
        return static_cast<float>(std::trunc(*number + 0.5) + 0.0);
      }
    }
    return NoAltitude;
  }

  bool ReadOutlier() const {
    const auto any = [&](const std::vector<size_t>& columns, bool (*says)(std::string_view)) {
      return std::any_of(columns.begin(), columns.end(),
                         [&](size_t column) { return says(Cell(column)); });
    };
    return any(table_.columns.Of(FixField::Outlier), IsYes) || any(table_.columns.visible, IsNo);
  }

  FixTable& table_;
  TableRows rows_;
  TableRow row_;
  std::uint32_t number_ = 0;  ///< of the row
  std::string fallback_;      ///< the animal of rows without one
  bool isOrderKnown_ = false;
  std::unordered_map<std::string, std::uint32_t> animalOf_;  ///< by folded name
  std::string lastAnimalCell_;
  std::uint32_t lastAnimal_ = 0;
};

}  // namespace

std::string_view FixStateName(FixState state) {
  static constexpr std::string_view Names[FixStateCount] = {
      "used",    "bad time", "bad date", "unknown place", "bad name",
      "outlier", "repeat",   "too fast", "thinned",       "already there"};
  return Names[static_cast<size_t>(state)];
}

std::string FaultOfRow(const FixTable& table, const BadFixRow& row,
                       const std::vector<std::string>& cells) {
  constexpr size_t MostShown = 40;  // bytes of a cell
  const std::string_view cell =
      row.column < cells.size() ? TrimCell(cells[row.column]) : std::string_view();
  const bool isPlace = row.state == FixState::UnknownPlace;
  const std::string what = isPlace ? "position" : row.state == FixState::BadDate ? "date" : "time";
  const std::string place = " in column " + table.captions[row.column];
  if (!HasValue(cell)) return "no " + what + place;
  if (row.state == FixState::BadName) {
    return '"' + WithoutControls(CutText(cell, MostShown)) + "...\"" + place + " has more than " +
           std::to_string(LongestAnimalName) + " bytes";
  }
  return '"' + std::string(CutText(cell, MostShown)) + '"' + place + " is not a usable " + what;
}

FixLayout GuessFixLayout(std::string_view text) {
  auto heading = FindHeading(
      text, [](const Cells& captions) { return HasTimeAndPosition(FindFixColumns(captions, {})); });
  if (!heading) {
    const char separator = SeparatorOf(text);
    TableRows rows(text, separator);
    TableRow row;
    heading = Heading{separator, 0, {}, {}, rows};
    while (heading->captions.empty() && rows.Next(row)) {
      ++heading->row;
      if (!HasAnyValue(row.cells, row.cells.size())) continue;
      for (const std::string& cell : row.cells) heading->captions.emplace_back(TrimCell(cell));
    }
  }
  FixColumns columns = FindFixColumns(heading->captions, {});
  return {heading->separator, heading->row, std::move(heading->captions), std::move(columns)};
}

FixRows::FixRows(const FixTable& table) : table_(table), rows_(table.text, table.separator) {
  while (number_ < table.headingRow && rows_.Next(row_)) ++number_;
}

bool FixRows::Next() {
  while (rows_.Next(row_)) {
    ++number_;
    if (HasAnyValue(row_.cells, table_.captions.size())) return true;
  }
  return false;
}

std::optional<FixTable> ReadFixTable(std::string text, const std::string& name,
                                     const FixReading& reading, Messages& messages,
                                     Progress* progress) {
  FixTable table;
  table.text = std::move(text);
  auto heading = reading.layout ? HeadingOf(table.text, *reading.layout)
                                : FindHeading(table.text, name, reading.columns, messages);
  if (!heading) return std::nullopt;
  table.separator = heading->separator;
  table.headingRow = heading->row;
  table.captions = std::move(heading->captions);
  table.columns = std::move(heading->columns);
  if (!FixReader(table, *heading, name, reading.europeanDates).ReadAll(progress)) {
    return std::nullopt;
  }
  return table;
}

}  // namespace orvane
