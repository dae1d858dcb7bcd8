#include "commands/recent_files.h"

#include <algorithm>
#include <utility>

namespace orvane {

void PutInFront(std::vector<std::string>& list, std::string text, size_t most) {
  if (text.empty()) return;
  list.erase(std::remove(list.begin(), list.end(), text), list.end());
  list.insert(list.begin(), std::move(text));
  if (list.size() > most) list.resize(most);
}

void AddRecentFile(std::vector<std::string>& files, std::string path) {
  PutInFront(files, std::move(path), MostRecentFiles);
}

std::vector<std::string> ParseRecentFiles(std::string_view text) {
  std::vector<std::string> files;
  while (!text.empty() && files.size() < MostRecentFiles) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    if (!line.empty()) files.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return files;
}

std::string RecentFilesText(const std::vector<std::string>& files) {
  std::string text;
  for (const std::string& file : files) {
    if (file.find('\n') == std::string::npos) text += file + '\n';
  }
  return text;
}

}  // namespace orvane
