#include "shell/files/shown_folders.h"

#include "base/file_names.h"
#include "shell/files/local_files.h"

#include <QDir>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

/// Whether a path is a folder or in it.
bool IsIn(const QString& path, const QString& folder) {
  return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

/// \return what a path has after the folder that it is in
QString After(const QString& path, const QString& folder) { return path.mid(folder.size() + 1); }

std::string Below(const std::string& folder, const QString& rest) {
  return rest.isEmpty() ? folder : ExistingPath(folder, rest);
}

}  // namespace

ShownFolders::~ShownFolders() {
  // Only the links and their empty folders: nothing is removed through a link.
  for (const Link& link : links_) {
    std::error_code error;
    std::filesystem::remove(PathOfLocalFile(link.name), error);
    std::filesystem::remove(PathOfLocalFile(link.place), error);
  }
}

QString ShownFolders::NameOf(const std::string& folder) {
  QString name = LocalFileName(folder);
  if (PathOfLocalFile(name) == folder) return name;
  for (const Link& link : links_) {
    if (link.folder == folder) return link.name;
  }
  std::error_code error;
  if (!folder.starts_with('/') || !std::filesystem::is_directory(folder, error)) return name;
  QTemporaryDir place(QDir::tempPath() + QStringLiteral("/orvane-XXXXXX"));
  if (!place.isValid()) return name;
  Link link{.place = place.path(),
            .name = place.filePath(LocalFileName(BaseName(folder))),
            .folder = folder};
  std::filesystem::create_directory_symlink(folder, PathOfLocalFile(link.name), error);
  if (error) return name;
  place.setAutoRemove(false);
  links_.push_back(std::move(link));
  return links_.back().name;
}

std::string ShownFolders::PathOf(const QString& name) const {
  for (const Link& link : links_) {
    if (IsIn(name, link.name)) return Below(link.folder, After(name, link.name));
    if (IsIn(name, link.place)) {
      return Below(std::string(DirectoryName(link.folder)), After(name, link.place));
    }
  }
  return ExistingPath({}, name);
}

}  // namespace orvane
