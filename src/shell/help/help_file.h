#pragma once

#include "commands/file_dialogs.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

class Shell;

/// Name of the help file, which is that of the application.
constexpr auto HelpFileName = "Orvane.qch";
/// The namespace in the help file, by which it is known as ours.
constexpr auto HelpNamespace = "orvane.guide";

enum class HelpFileState {
  Good,
  Unreadable,  ///< missing, or protected from reading
  Invalid      ///< not a help file, or that of another program
};

HelpFileState LookAtHelpFile(const std::string& path);

/// \param ownDirectory      where the program keeps its own files; empty for none
/// \param programDirectory  where the program itself is
/// \return the paths to try, in this order: in the first directory, in the second, and where an
///         installation puts the file
std::vector<std::string> HelpFilePlaces(const std::string& ownDirectory,
                                        const std::string& programDirectory);

/// Finds the help file. If it is in none of its places, asks for it until the user chooses a good one.
/// \param file  what the file dialog remembers
/// \return its path, or nothing if the user cancelled
std::optional<std::string> FindHelpFile(Shell& shell, const std::string& programDirectory,
                                        FileSpecification& file);

}  // namespace orvane
