#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace orvane {

/// A folder that goes with all it holds when this does.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = std::filesystem::temp_directory_path() / "orvane-test-XXXXXX";
    if (::mkdtemp(path.data()) != nullptr) path_ = path;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// \return the path of a name in the folder
  std::string Path(std::string_view name = {}) const {
    return name.empty() ? path_ : path_ + "/" + std::string(name);
  }
  /// Writes a file. \return its path
  std::string Write(std::string_view name, std::string_view content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
  }
  /// \return the content of a file; empty if there is none
  std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

}  // namespace orvane
