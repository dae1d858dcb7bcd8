#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The kinds of spreadsheets that the module reads.
enum class SpreadsheetKind { Xlsx, Ods, Xls };

/// \return the kind by the ending of a name, in any case; nothing for other files
std::optional<SpreadsheetKind> SpreadsheetKindOf(std::string_view path);

/// A spreadsheet to be read.
struct SpreadsheetFile {
  std::string path;
  std::string_view bytes;  ///< its content
  SpreadsheetKind kind = SpreadsheetKind::Xlsx;
};

/// How times of day of true cells are written.
enum class ClockForm {
  Minutes,  ///< "08:05"
  Seconds   ///< "08:05:30", and "08:05" for whole minutes
};

/// Takes the cells of a row as texts; the row may be empty. \return false if no more rows are wanted
using RowTaker = std::function<bool(const std::vector<std::string>&)>;

/// The most bytes of all parts of a spreadsheet, unpacked, and of the texts of all cells of a sheet:
/// 256 MiB.
constexpr std::uint64_t LargestSpreadsheet = std::uint64_t{1} << 28U;
/// The rows and columns of a sheet, as spreadsheet programs have them.
constexpr std::uint64_t MostSheetRows = 1048576;
constexpr std::uint64_t MostSheetColumns = 16384;
/// The cells of a sheet, each row up to its last cell.
constexpr std::uint64_t MostSheetCells = 10'000'000;
/// The bytes of a cell: programs take 32,767 characters.
constexpr size_t LongestCell = size_t{1} << 17U;
/// The parts of a file, and the sheets.
constexpr std::uint64_t MostParts = 10000;

/// Looks into the directory of a file in the zip format, as `.xlsx` and `.ods` are, without
/// unpacking anything, and at the first bytes of an `.xls` file, which is not packed.
/// \return why the file is refused, as a part of a sentence; empty if it is not
std::string WhyNotUnpacked(const SpreadsheetFile& file);

/// \return that a file is too large, as a part of a sentence
inline std::string TooLarge() {
  return "it is larger than " + std::to_string(LargestSpreadsheet >> 20U) + " MiB unpacked";
}

}  // namespace orvane
