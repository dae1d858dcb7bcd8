#include "shell/files/local_files.h"

#include "base/file_names.h"
#include "base/latin1.h"
#include "paint/display_text.h"

#include <QByteArray>
#include <QFile>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvane {
namespace {

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

/// \return the name, in the bytes that the folder at the end of `before` has for it
std::string ExistingName(const std::string& before, std::string_view name) {
  std::string latin1 = AsLatin1(name);
  const bool isOther = latin1 != name && !Exists(before + std::string(name));
  return isOther && Exists(before + latin1) ? latin1 : std::string(name);
}

}  // namespace

QString LocalFileName(std::string_view path) {
  // Folders and the file may come from different times, and so be in different encodings.
  QString name;
  for (;;) {
    const size_t slash = path.find('/');
    name += DisplayText(path.substr(0, slash));
    if (slash == std::string_view::npos) return name;
    name += QLatin1Char('/');
    path.remove_prefix(slash + 1);
  }
}

std::string PathOfLocalFile(const QString& name) { return QFile::encodeName(name).toStdString(); }

std::string ExistingPath(const std::string& folder, const QString& name) {
  const std::string bytes = PathOfLocalFile(name);
  std::string path = folder.empty() ? folder : JoinPath(folder, "");
  std::string_view rest = bytes;
  for (;;) {
    const size_t slash = rest.find('/');
    path += ExistingName(path, rest.substr(0, slash));
    if (slash == std::string_view::npos) return path;
    path += '/';
    rest.remove_prefix(slash + 1);
  }
}

std::string PathOfUrl(const QUrl& url) {
  // Escaped bytes need not be UTF-8, as the text of the address would be.
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

bool HasLocalFiles(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

std::vector<std::string> LocalFilesOf(const QMimeData& data) {
  std::vector<std::string> files;
  const QList<QUrl> urls = data.urls();
  for (const QUrl& url : urls) {
    if (url.isLocalFile()) files.push_back(PathOfUrl(url));
  }
  return files;
}

}  // namespace orvane
