#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "entry/fix_columns.h"
#include "entry/separated_table.h"
#include "geo/positions.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Tables of timestamped positions, as collars, loggers and phones write them.

/// What becomes of a row.
enum class FixState : std::uint8_t {
  Used,
  BadTime,
  BadDate,
  UnknownPlace,  ///< no position, or one that can't be read
  BadName,       ///< an animal or species that no line of a map file can hold
  Outlier,
  Repeat,  ///< in one minute with a fix before it
  TooFast,
  Thinned,  ///< left out by the choice of every n-th, of minutes or of metres
  AlreadyThere
};
constexpr size_t FixStateCount = 10;

/// \return "used", "bad time" ...
std::string_view FixStateName(FixState state);

/// One usable fix.
struct Fix {
  std::int64_t utc = 0;         ///< milliseconds since 1970-01-01
  std::int64_t local = 0;       ///< the same by the local clock; see `PlanFixes`
  double lat = 0;               ///< degrees, within ±90
  double lon = 0;               ///< degrees, within ±180
  float altitude = NoAltitude;  ///< whole metres, or `NoAltitude`
  std::uint32_t animal = 0;     ///< index in `FixTable::animals`
  std::uint32_t row = 0;        ///< of the file, from 1
  bool isOutlier = false;
  FixState state = FixState::Used;
};

/// A row that has no usable fix.
struct BadFixRow {
  std::uint32_t row = 0;     ///< of the file, from 1
  std::uint32_t column = 0;  ///< from 0, where the fault is
  FixState state = FixState::BadTime;
};

/// The bytes of the name of an animal, and of a species: both fit on one line of a map file.
constexpr size_t LongestAnimalName = 150;

struct FixAnimal {
  std::string name;     ///< as in its first row; may be empty
  std::string species;  ///< of its first row that has one; empty for none
};

/// How the table writes dates such as 3/5/2004.
struct DayOrder {
  bool dayFirst = false;
  std::uint32_t decidingRow = 0;   ///< the first row that can be read in one way; 0 for none
  std::uint32_t ambiguousRow = 0;  ///< the first row that can be read in two ways; 0 for none
};

/// The content of a table. Rows are counted in the file from 1, as a spreadsheet program does.
struct FixTable {
  std::string text;  ///< UTF-8
  char separator = ',';
  std::uint32_t headingRow = 0;
  std::vector<std::string> captions;  ///< trimmed
  FixColumns columns;
  DayOrder dayOrder;
  std::vector<FixAnimal> animals;  ///< in the order of their first rows
  std::vector<Fix> fixes;          ///< in the order of their rows
  std::vector<BadFixRow> badRows;  ///< likewise
  size_t rowCount = 0;             ///< rows below the heading with any value
  std::uint32_t openQuoteRow = 0;  ///< that has a quote which is never closed; 0 for none
};

/// Where a table has its captions, and what its columns mean.
struct FixLayout {
  char separator = ',';
  std::uint32_t headingRow = 0;       ///< from 1; 0 for none
  std::vector<std::string> captions;  ///< trimmed
  FixColumns columns;
};

/// \return what the captions show. If no row is a heading, the first row with a value has the captions,
///         with the columns that are known
/// \param text  UTF-8
FixLayout GuessFixLayout(std::string_view text);

struct FixReading {
  std::vector<NamedFixColumn> columns;  ///< instead of those that the captions show
  bool europeanDates = false;           ///< if no row shows which number is the day
  std::optional<FixLayout> layout;      ///< instead of looking for a heading
};

/// Rows above this one are searched for the heading.
constexpr size_t MostRowsAboveData = 100;

/// Reads a table. The separator is the first of tab, semicolon and comma with which one of the first
/// rows is a heading.
/// \param text  UTF-8
/// \param name  of the file, for messages; the animal of rows without one has its name
/// \return nothing, after an error, if no row is a heading or a named column is missing; nothing,
///         without a message, if it was cancelled
std::optional<FixTable> ReadFixTable(std::string text, const std::string& name,
                                     const FixReading& reading, Messages& messages,
                                     Progress* progress = nullptr);

/// \return why a row of a table is left out, such as `"soon" in column timestamp is not a time`; for
///         messages
/// \param cells  of the row
std::string FaultOfRow(const FixTable& table, const BadFixRow& row,
                       const std::vector<std::string>& cells);

/// Walks over the rows of a table below its heading, in their order.
class FixRows {
 public:
  /// \param table  must outlive this and keep its address
  explicit FixRows(const FixTable& table);

  /// Goes to the next row with any value. \return false at the end
  bool Next();
  std::uint32_t Number() const { return number_; }                      ///< in the file, from 1
  const std::vector<std::string>& Cells() const { return row_.cells; }  ///< not trimmed

 private:
  const FixTable& table_;
  TableRows rows_;
  TableRow row_;
  std::uint32_t number_ = 0;
};

}  // namespace orvane
