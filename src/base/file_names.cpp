#include "base/file_names.h"

#include "base/text.h"

namespace orvane {

namespace {

constexpr char Separator = '/';

/// The text after a `?` can have separators of its own and is part of the file's name.
size_t LastSeparator(std::string_view path) { return path.rfind(Separator, path.rfind('?')); }

}  // namespace

std::string_view BaseName(std::string_view path) {
  const size_t separator = LastSeparator(path);
  return separator == path.npos ? path : path.substr(separator + 1);
}

std::string_view DirectoryName(std::string_view path) {
  const size_t separator = LastSeparator(path);
  if (separator == path.npos) return {};
  return path.substr(0, separator == 0 ? 1 : separator);
}

bool SameDirectory(std::string_view a, std::string_view b) {
  return SameName(DirectoryName(a), DirectoryName(b));
}

std::string ReplaceBaseName(std::string_view path, std::string_view name) {
  const size_t separator = LastSeparator(path);
  std::string replaced(path.substr(0, separator == path.npos ? 0 : separator + 1));
  replaced += name;
  return replaced;
}

std::string JoinPath(std::string_view directory, std::string_view name) {
  if (directory.empty() || directory == ".") return std::string(name);
  std::string joined(directory);
  if (joined.back() != Separator) joined += Separator;
  joined += name;
  return joined;
}

}  // namespace orvane
