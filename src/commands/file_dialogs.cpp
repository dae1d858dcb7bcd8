#include "commands/file_dialogs.h"

#include "base/file_names.h"
#include "commands/map_facts.h"

namespace orvane {

std::string FolderOf(const Map& map) {
  return HasFile(map) ? std::string(DirectoryName(map.fileName)) : std::string();
}

void PrepareSpecification(FileSpecification& file, const FileSpecification& maps,
                          const DialogStart& start, std::string_view type) {
  for (const std::string* folder : {&start.mapFolder, &maps.directory, &start.defaultDirectory}) {
    if (file.directory.empty()) file.directory = *folder;
  }
  if (file.type.empty()) file.type = type;
}

std::string PathOf(const FileSpecification& file) { return JoinPath(file.directory, file.name); }

}  // namespace orvane
