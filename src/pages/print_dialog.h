#pragma once

#include "pages/print_map_window.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvane {

/// What is printed, as the first choice of the Print dialog.
enum class PrintMode {
  FillPage,     ///< the window, or its selection, as large as one page holds it
  Area,         ///< between two latitudes and two longitudes
  AroundPoint,  ///< about a point, turned as the user wants
};

/// Bits of `PrintDialog::editedFields`.
enum PrintEdited : std::uint32_t {
  PrintAreaEdited = 1,   ///< a field of the area was changed
  PrintPointEdited = 2,  ///< a field of the point was changed
};

/// What the program remembers from one print job to the next.
struct PrintSettings {
  int pointSize = 5;           ///< of the text on a map, in points
  Color gridColor = 0xA0A0A0;  ///< of the grid lines
  bool lastSelection = false;  ///< "Print Last Selection" was ticked
};

/// The colours that the dialog offers for grids.
inline constexpr const char* OfferedGridColors[] = {"#000000", "#a0a0a0", "#c0c0c0"};

/// The Print dialog as a record: its choices and the texts of its fields, in the encoding of map
/// files. A degree sign may also be the UTF-8 one.
struct PrintDialog {
  PrintMode mode = PrintMode::FillPage;
  bool lastSelection = false;         ///< the tick "Print Last Selection"
  bool lastSelectionEnabled = false;  ///< the view has a selection
  std::string south;                  ///< the area: "From:" latitude
  std::string north;                  ///< "To:" latitude
  std::string west;                   ///< "From:" longitude
  std::string east;                   ///< "To:" longitude
  std::string areaScale;              ///< "1:5000"
  std::string centerLatitude;         ///< the point: "Centered on:"
  std::string centerLongitude;
  std::string vertical;            ///< "Show at least": a distance such as "500m"
  std::string horizontal;          ///< likewise
  std::string pointScale;          ///< "1:5000"
  std::string rotation;            ///< degrees
  std::string label;               ///< a line in the legend
  std::string pointSize;           ///< points
  std::string gridColor;           ///< "#a0a0a0"
  std::uint32_t editedFields = 0;  ///< `PrintEdited` bits
};

/// Fills all fields from the selection of the view, or else from what its window shows. Run it when
/// the dialog opens and when the tick "Print Last Selection" changes.
/// \param print   of `MakePrintView`; receives the scale at which the area just fits one page
/// \param dialog  `lastSelection` says which of the two is wanted
void FillPrintDialog(PrintMapWindow& print, const PrintSettings& settings, PrintDialog& dialog);

/// The dialog as it comes up.
PrintDialog OpenPrintDialog(PrintMapWindow& print, const PrintSettings& settings);

/// The title of the first choice.
const char* FillPageTitle(const PrintDialog& dialog);

/// Why the dialog stays open.
struct PrintRefusal {
  std::string message;
  std::string PrintDialog::*field = nullptr;  ///< the wrong one; null if it is none in particular
};

/// Checks the fields that the choice needs and sets the view by them; fonts and colours as well.
/// What is accepted becomes the new settings.
/// \return nothing, or what is wrong first
std::optional<PrintRefusal> AcceptPrintDialog(const PrintDialog& dialog, PrintMapWindow& print,
                                              PrintSettings& settings);

}  // namespace orvane
