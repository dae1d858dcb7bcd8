#include "commands/reload_map.h"

#include "base/file_names.h"
#include "base/files.h"
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

bool FileNews::HasNews(const Map& map) {
  if (!HasFile(map)) return false;
  std::error_code error;
  Look look{.fileName = map.fileName, .ofMap = map.fileMark, .size = 0, .time = {}};
  look.size = std::filesystem::file_size(map.fileName, error);
  if (!error) look.time = std::filesystem::last_write_time(map.fileName, error);
  if (error) return false;  // the file is gone
  Finding& finding = findings_[&map];
  if (finding.look != look) {
    const auto content = ReadWholeFile(map.fileName);
    finding.onDisk = content ? std::optional(MarkOf(*content)) : std::nullopt;
    finding.look = look;
  }
  return finding.onDisk && finding.onDisk != map.fileMark && finding.onDisk != finding.declined;
}

void FileNews::Decline(const Map& map) {
  Finding& finding = findings_[&map];
  finding.declined = finding.onDisk;
}

std::string NewsText(const Map& shown, const Map& changed) {
  const std::string name(BaseName(changed.fileName));
  if (&shown == &changed) return name + " has changed on the disk.";
  return name + ", on which this map rests, has changed on the disk.";
}

}  // namespace orvane
