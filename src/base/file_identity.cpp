#include "base/file_identity.h"

#include "base/file_names.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvane {

namespace {

std::filesystem::path FolderOf(const std::string& path) {
  const std::string_view folder = DirectoryName(path);
  return folder.empty() ? std::filesystem::path(".") : std::filesystem::path(folder);
}

/// True for a path from the root without empty, "." or ".." parts, as nearly all are.
bool IsWhole(const std::string& path) {
  return path.front() == '/' && path.find("//") == std::string::npos &&
         path.find("/.") == std::string::npos;
}

}  // namespace

std::string WholePath(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos || IsWhole(path)) return path;
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  if (error) return path;
  const std::filesystem::path normal = whole.lexically_normal();
  if (std::find(whole.begin(), whole.end(), "..") == whole.end()) return normal.string();
  const std::filesystem::path folder = whole.parent_path();
  if (std::filesystem::equivalent(folder, normal.parent_path(), error)) return normal.string();
  const std::filesystem::path real = std::filesystem::canonical(folder, error);
  return (error ? whole : real / whole.filename()).string();
}

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a, b, error);
}

bool InSameFolder(const std::string& a, const std::string& b) {
  const std::filesystem::path folderA = FolderOf(a);
  const std::filesystem::path folderB = FolderOf(b);
  std::error_code error;
  if (std::filesystem::exists(folderA, error) && std::filesystem::exists(folderB, error)) {
    return std::filesystem::equivalent(folderA, folderB, error);
  }
  return SameDirectory(WholePath(a), WholePath(b));
}

}  // namespace orvane
