#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The maps that were opened or saved last, newest first. They are stored in a small file beside
/// the preferences: one path a line.

/// The number of paths that are remembered.
constexpr size_t MostRecentFiles = 10;

/// Moves a text to the front of a list, adding it if needed, and cuts the list to `most` texts. An
/// empty text changes nothing.
void PutInFront(std::vector<std::string>& list, std::string text, size_t most);

/// Moves a path to the front of the list.
void AddRecentFile(std::vector<std::string>& files, std::string path);

/// \return the list in a text; empty lines are skipped
std::vector<std::string> ParseRecentFiles(std::string_view text);

/// \return the text of a list, without paths that contain a line feed
std::string RecentFilesText(const std::vector<std::string>& files);

}  // namespace orvane
