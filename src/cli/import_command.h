#pragma once

#include "cli/line_messages.h"
#include "entry/sheet_fields.h"
#include "entry/sheet_file.h"
#include "model/map.h"

#include <array>
#include <optional>
#include <string>

namespace orvane {

/// The arguments of `import`.
struct ImportRequest {
  std::string sheet;         ///< the file of the follow sheet
  std::string output;        ///< the map to write
  SheetChooser chooseSheet;  ///< of a spreadsheet; none for the first
  SheetFields fields;        ///< what the fields of the dialog would hold
};

/// The option that chooses one of the sheets of a spreadsheet.
constexpr const char* SheetNameOption = "--sheet";

/// An option of the batch tool for a field of the dialog.
struct SheetOption {
  SheetField field;
  const char* option;  ///< with its dashes
  const char* type;    ///< what it takes, for the help
  const char* help;
};

/// The options for all fields, in the order of the help.
const std::array<SheetOption, SheetFieldCount>& SheetOptions();

/// Reads the fields for a map. \return nothing, after the message of the dialog, if they are refused
std::optional<ImportSpec> ReadSheetSpec(Map& map, Messages& messages, const SheetFields& fields);

/// Takes a follow sheet into the map, with its messages.
/// \return nothing if the fields or the sheet were refused
std::optional<SheetOutcome> ImportSheet(Map& map, Messages& messages, const std::string& sheet,
                                        const SheetFields& fields, const SheetChooser& choose = {});

/// Takes a follow sheet into the map and saves it in full to the file `output`, or to standard
/// output if it is "-". Fields that the dialog would refuse and a sheet that can't be opened write
/// nothing; an abandoned import saves what was built, and fails.
/// \return an `ExitStatus`
int ImportCommand(Map& map, LineMessages& messages, const ImportRequest& request);

}  // namespace orvane
