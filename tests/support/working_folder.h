#pragma once

#include <filesystem>
#include <string>

namespace orvane {

/// Makes a folder the working directory for as long as it lives.
class WorkingFolder {
 public:
  explicit WorkingFolder(const std::string& path) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
  }
  ~WorkingFolder() { std::filesystem::current_path(before_); }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;

 private:
  std::filesystem::path before_;
};

}  // namespace orvane
