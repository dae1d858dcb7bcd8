#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

class QMimeData;

namespace orvane {

/// A file name is bytes to the program and text to Qt. These turn one into the other.
QString LocalFileName(std::string_view path);
std::string PathOfLocalFile(const QString& name);

/// \return true if what is dragged holds a file of this machine
bool HasLocalFiles(const QMimeData& data);

/// \return the paths of the files of this machine in what was dropped
std::vector<std::string> LocalFilesOf(const QMimeData& data);

}  // namespace orvane
