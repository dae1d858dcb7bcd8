#include "commands/reload_map.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/map_facts.h"
#include "model/workspace.h"

#include <system_error>

namespace orvane {

bool AskBeforeReloading(Map& map) {
  if ((map.flags & (MapDirty | MapUnlikeFile)) == 0) return true;
  constexpr int Reload = 2;
  // The Return key presses the first button, which destroys nothing.
  return AskUser(map.workspace->messages, "Reload from Disk", "Cancel", "Reload", "",
                 "%s has changes that are not saved. Reloading it drops them.",
                 {BaseName(map.fileName)}) == Reload;
}

bool FileNews::HasNews(Finding& finding, const std::string& path,
                       const std::optional<FileMark>& ofMap) {
  std::error_code error;
  Look look{.ofMap = ofMap, .size = 0, .time = {}};
  look.size = std::filesystem::file_size(path, error);
  if (!error) look.time = std::filesystem::last_write_time(path, error);
  if (error) return false;  // the file is gone
  if (finding.look != look) {
    finding.onDisk = MarkOfFile(path);
    finding.look = look;
  }
  return finding.onDisk && finding.onDisk != ofMap && finding.onDisk != finding.declined;
}

std::string FileNews::ChangedFileOf(const Map& map) {
  std::string first;
  if (!HasFile(map)) return first;
  std::map<std::string, Finding>& findings = findings_[&map];
  const auto look = [&](const std::string& path, const std::optional<FileMark>& mark) {
    if (HasNews(findings[path], path, mark) && first.empty()) first = path;
  };
  look(map.fileName, map.fileMark);
  for (const auto& [path, mark] : map.includedFiles) look(path, mark);
  return first;
}

void FileNews::Decline(const Map& map) {
  for (auto& [path, finding] : findings_[&map]) finding.declined = finding.onDisk;
}

std::string NewsText(const Map& shown, const Map& changed, const std::string& file) {
  const std::string name(BaseName(changed.fileName));
  std::string subject = name;
  if (file != changed.fileName) {
    const std::string by = &shown == &changed ? "this map" : name;
    subject = std::string(BaseName(file)) + ", which " + by + " includes,";
  } else if (&shown != &changed) {
    subject += ", on which this map rests,";
  }
  return subject + " has changed on the disk.";
}

}  // namespace orvane
