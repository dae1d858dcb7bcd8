#include "shell/files/local_files.h"

#include <QFile>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace orvane {

QString LocalFileName(std::string_view path) {
  return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string PathOfLocalFile(const QString& name) { return QFile::encodeName(name).toStdString(); }

bool HasLocalFiles(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

std::vector<std::string> LocalFilesOf(const QMimeData& data) {
  std::vector<std::string> files;
  const QList<QUrl> urls = data.urls();
  for (const QUrl& url : urls) {
    if (url.isLocalFile()) files.push_back(PathOfLocalFile(url.toLocalFile()));
  }
  return files;
}

}  // namespace orvane
