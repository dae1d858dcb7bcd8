#pragma once

#include <cstdint>
#include <string>

namespace orvane {

/// What the file system says of a file, to see later whether it changed. Cheap: nothing is read.
struct FileState {
  std::int64_t size = -1;     ///< bytes; -1 for a file that is not there
  std::int64_t modified = 0;  ///< as the system counts time, in its own unit

  bool operator==(const FileState&) const = default;
};

FileState StateOfFile(const std::string& path);

}  // namespace orvane
