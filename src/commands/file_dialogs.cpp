#include "commands/file_dialogs.h"

#include "base/file_names.h"

namespace orvane {

void PrepareSpecification(FileSpecification& file, const FileSpecification& maps,
                          std::string_view defaultDirectory, std::string_view type) {
  if (file.directory.empty()) {
    file.directory = maps.directory.empty() ? std::string(defaultDirectory) : maps.directory;
  }
  if (file.type.empty()) file.type = type;
}

std::string PathOf(const FileSpecification& file) { return JoinPath(file.directory, file.name); }

}  // namespace orvane
