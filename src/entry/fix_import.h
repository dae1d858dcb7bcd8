#pragma once

#include "entry/fix_plan.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The import of a table of timestamped fixes: a trail for each animal and local date, with points
/// named by the clock. `StartFixImport` only reads the map, so that a window can show what will
/// happen; `EnterFixes` changes it.
struct FixImport {
  std::string fileName;
  FixTable table;
  FixPlan plan;
  FixOptions options;
};

/// Reads a table and plans its import.
/// \return nothing, after an error, if the file cannot be opened, has no heading, lacks a named
///         column or has no usable fix; nothing, without a message, if it was cancelled
std::optional<FixImport> StartFixImport(const Map& map, const std::string& path,
                                        const FixOptions& options);

/// As above, but a table without a usable fix is valid: a preview shows what is wrong with its rows.
/// Its plan is empty.
std::optional<FixImport> ReadFixImport(const Map& map, const std::string& path,
                                       const FixOptions& options);

/// Reads the text of a table from a file, from a sheet of it if it is a spreadsheet: once for several
/// imports with other options.
/// \return nothing, after an error, if the file can't be read; nothing if no sheet was chosen
std::optional<std::string> ReadFixText(Messages& messages, const std::string& path,
                                       const SheetChooser& choose);

/// As `ReadFixImport`, from the text of a table, in UTF-8.
/// \param name  of the file
std::optional<FixImport> ReadFixImportOfText(const Map& map, std::string text,
                                             const std::string& name, const FixOptions& options);

/// Posts an error if a table has no usable fix.
/// \return true if it has one
bool HasUsableFixes(const FixImport& import, Messages& messages);

/// As `StartFixImport`, from the bytes of a file.
/// \param name  of the file, for messages
std::optional<FixImport> StartFixImportOfText(const Map& map, std::string bytes,
                                              const std::string& name, const FixOptions& options);

/// \return sentences on what the import does, for the user: dates that can be read in two ways, the
///         first of the rows that are left out, and at the end the counts
std::vector<std::string> FixNotes(const FixImport& import);

/// \return that dates such as 3/5/2004 can be read in two ways, and which row decides; empty if there are
///         none
std::string DayOrderText(const DayOrder& order);

/// \return how many rows have which state: "140 taken, 1 unknown place and 2 outlier"
/// \param used  the word for rows that are used
std::string StateCountsText(const FixPlan& plan, const std::string& used);

/// \return true if there is a trail or a range to add
bool AddsAnything(const FixImport& import);

/// Whether new ranges get their figures. The clusters of a range of 100,000 places take minutes, and a
/// saved file has none.
enum class NewRanges { Analyzed, NotAnalyzed };

/// Adds the trails and ranges of the plan at the end of those of the map, finishes the map, and
/// frees the text of the table. Only the search for clusters can be cancelled
/// (`AnalyzeAllRangesOfOpenMap`).
void EnterFixes(Map& map, FixImport& import, NewRanges ranges = NewRanges::Analyzed);

}  // namespace orvane
