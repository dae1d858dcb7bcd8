#pragma once

#include "entry/sheet_import.h"
#include "model/map.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The dialog "SpreadSheet Data" without its window: what its fields hold, what they mean and what
/// is refused. A window does no more than show it:
///
///   - at the start it shows the texts of the `SheetFields` that the program keeps, with the row of
///     each SM as `IsSmRowShown` and `SmColumnLabel` tell, and gives the focus to `SheetSkip`;
///   - at each change of a text by the user it calls `ChangeSheetField` and shows what that emptied;
///   - on OK it calls `ReadSheetFields`. A refusal is shown with `NoteError`, the focus goes to the
///     control that it names, and the dialog stays. Else it calls `RememberSheetFields`, closes, sets
///     `ImportSpec::file` and calls `RunSpreadsheetImport`.

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

/// The texts of the fields, by `SheetField`. All are empty the first time.
using SheetFields = std::array<std::string, SheetFieldCount>;

/// Why the fields were not taken.
struct SheetRefusal {
  std::string message;           ///< an error
  SheetField focus = SheetSkip;  ///< the control at fault
};

/// What the fields mean.
struct SheetReading {
  ImportSpec spec;                      ///< `file` is not set; good only if there is no refusal
  std::optional<SheetRefusal> refusal;  ///< null if the import can start
};

/// Reads and checks the fields. There has to be a date, a species, a time and a place; a missing
/// focal animal is no reason for a refusal, but is told first where there is another. A field that
/// should name a column and does not is refused, but for those of the measures, and of the date
/// where a date is given for all rows.
SheetReading ReadSheetFields(const SheetFields& fields, Map& map);

/// Takes a change of one field by the user. A column and its "or always:" exclude each other: what
/// is changed empties the other. A change of the activity also empties the species for all rows.
/// The same text again is no change.
void ChangeSheetField(SheetFields& fields, SheetField changed, std::string_view text);

/// Keeps accepted fields for the next time, 9 bytes of each. Those of the measures are kept only
/// if the map names SM1; others stay as they were kept before.
void RememberSheetFields(SheetFields& remembered, const SheetFields& accepted, const Map& map);

/// Whether the row of SM1, SM2 or SM3 (`sm` 0 to 2) is shown: the map must have a name for it. It is
/// read whether or not it is shown, but only if the map names SM1.
bool IsSmRowShown(const Map& map, std::size_t sm);

/// The label of that row's column field: "fruit Col:", or "SM1 Col:" without a name.
std::string SmColumnLabel(const Map& map, std::size_t sm);

}  // namespace orvane
