#pragma once

#include "commands/file_dialogs.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

class Shell;

/// The help file is named after the application.
constexpr auto HelpFileName = "Orvane.qch";
/// By this name the help file tells that it is ours.
constexpr auto HelpNamespace = "orvane.guide";

enum class HelpFileState {
  Good,
  Unreadable,  ///< it is not there, or may not be read
  Invalid      ///< it is no help file, or that of another program
};

HelpFileState LookAtHelpFile(const std::string& path);

/// \return where the help file is looked for, in this order: the program's own directory, the
///         directory of the program, and where an installation puts it
/// \param ownDirectory  empty for none
std::vector<std::string> HelpFilePlaces(const std::string& ownDirectory,
                                        const std::string& programDirectory);

/// Finds the help file, asking for it where it is not found, until one is chosen that is good.
/// \param file  what the file dialog remembers
/// \return its path, or nothing if the user gave up
std::optional<std::string> FindHelpFile(Shell& shell, const std::string& programDirectory,
                                        FileSpecification& file);

}  // namespace orvane
