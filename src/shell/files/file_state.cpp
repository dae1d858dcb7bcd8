#include "shell/files/file_state.h"

#include <filesystem>
#include <system_error>

namespace orvane {

FileState StateOfFile(const std::string& path) {
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  if (error) return {};
  const auto modified = std::filesystem::last_write_time(path, error);
  if (error) return {};
  return {.size = static_cast<std::int64_t>(size),
          .modified = static_cast<std::int64_t>(modified.time_since_epoch().count())};
}

}  // namespace orvane
