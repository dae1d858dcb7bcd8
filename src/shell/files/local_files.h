#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

class QMimeData;
class QUrl;

namespace orvane {

/// A file name is bytes to the program and text to Qt. These turn one into the other.

/// \return a path as people see it: each of its names is UTF-8, or else Latin-1. Only where all are
///         UTF-8 does Qt find the file under it.
QString LocalFileName(std::string_view path);
/// \return the bytes of a path that Qt or a user named
std::string PathOfLocalFile(const QString& name);
/// The same for a file that may exist under other bytes: each name is UTF-8, or else Latin-1 where
/// the folder has only that.
/// \param folder  the bytes of the folder in which `name` is; empty if `name` is complete
std::string ExistingPath(const std::string& folder, const QString& name);
/// \return the path of a local file, whatever bytes it holds
std::string PathOfUrl(const QUrl& url);

/// \return true if the dragged data holds a local file
bool HasLocalFiles(const QMimeData& data);

/// \return the paths of the local files in the dropped data
std::vector<std::string> LocalFilesOf(const QMimeData& data);

}  // namespace orvane
