#pragma once

#include "entry/sheet_import.h"
#include "model/map.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The dialog "SpreadSheet Data" without its window: the texts of its fields, their meaning, and
/// what is refused. The window only shows it:
///
///   - At the start it shows the `SheetFields` that the program keeps, with the rows of the measures
///     by `IsSmRowShown` and `SmColumnLabel`, and gives the focus to `SheetSkip`.
///   - When the user changes a text it calls `ChangeSheetField` and shows what that emptied.
///   - On OK it calls `ReadSheetFields`. It shows a refusal, gives the focus to the field at fault
///     and stays open. Otherwise it calls `RememberSheetFields` and closes.

/// The fields of the dialog, from top to bottom.
enum SheetField : std::size_t {
  SheetSkip,
  SheetTime,
  SheetLocation,
  SheetSpecies,
  SheetSpeciesAlways,
  SheetDate,
  SheetDateAlways,
  SheetFocal,
  SheetFocalAlways,
  SheetActivity,
  SheetSm1,
  SheetSm1Code,
  SheetSm2,
  SheetSm2Code,
  SheetSm3,
  SheetSm3Code,
  SheetFieldCount
};

/// The fields of SM1, SM2 and SM3.
constexpr std::array<SheetField, 3> SmColumnFields = {SheetSm1, SheetSm2, SheetSm3};
constexpr std::array<SheetField, 3> SmCodeFields = {SheetSm1Code, SheetSm2Code, SheetSm3Code};

/// The texts of the fields, by `SheetField`. All are empty the first time.
using SheetFields = std::array<std::string, SheetFieldCount>;

/// Why the fields were not taken.
struct SheetRefusal {
  std::string message;           ///< an error
  SheetField focus = SheetSkip;  ///< the field at fault
};

/// The meaning of the fields.
struct SheetReading {
  ImportSpec spec;                      ///< without a sheet; usable only without a refusal
  std::optional<SheetRefusal> refusal;  ///< null if the import can start
};

/// Reads and checks the fields. A date, a species, a time and a place are needed. A missing focal
/// animal does not cause a refusal, but is reported first if there is another cause. A field that
/// must name a column and does not is refused, except those of the measures, and that of the date
/// if all rows have a fixed date.
SheetReading ReadSheetFields(const SheetFields& fields, Map& map);

/// Changes the text of one field. A column and its "or always:" field exclude each other: a change
/// in one empties the other. A change of the activity also empties the species for all rows. The
/// same text again does nothing.
void ChangeSheetField(SheetFields& fields, SheetField changed, std::string_view text);

/// Keeps accepted fields for the next time, the characters in the first 9 bytes of each. Those of the measures are kept only if
/// the map names SM1; otherwise the earlier ones stay.
void RememberSheetFields(SheetFields& remembered, const SheetFields& accepted, const Map& map);

/// \return true if the row of SM1, SM2 or SM3 (`sm` 0 to 2) is shown: the map has a name for it. A
///         hidden row is read too, but none if the map does not name SM1.
bool IsSmRowShown(const Map& map, std::size_t sm);

/// The label of that row's column field: "fruit Col:", or "SM1 Col:" without a name.
std::string SmColumnLabel(const Map& map, std::size_t sm);

}  // namespace orvane
