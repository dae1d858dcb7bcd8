#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The maps that were opened or saved last, newest first, kept in a small file of their own beside
/// the preferences: one path a line.

/// As many are remembered.
constexpr size_t MostRecentFiles = 10;

/// Moves a text to the front of a list, or puts it there, and cuts the list after `most` texts. An
/// empty text changes nothing.
void PutInFront(std::vector<std::string>& list, std::string text, size_t most);

/// Puts a path at the head of the list; what stood there twice stands there once.
void AddRecentFile(std::vector<std::string>& files, std::string path);

/// \return the list that a text holds; empty lines are skipped
std::vector<std::string> ParseRecentFiles(std::string_view text);

/// \return the text of a list. A path with a line feed in it can't be told and is left out.
std::string RecentFilesText(const std::vector<std::string>& files);

}  // namespace orvane
