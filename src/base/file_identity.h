#pragma once

#include <string>

namespace orvane {

/// Which file a name leads to, according to the file system.

/// The path of a file from the root, which leads to the same file from any working directory. The
/// file need not exist. "." is removed, and so is ".." if its folder exists. Symbolic links keep
/// their names, except where ".." follows one: that folder is resolved.
/// \return `path` itself if it is empty, cannot be a file name, or no working directory is known
std::string WholePath(const std::string& path);

/// \return true if the two paths lead to one file that exists, or are the same text
bool IsSameFile(const std::string& a, const std::string& b);

/// Compares the folders of two files, whatever their spelling. The files need not exist. If a
/// folder does not exist, the whole paths are compared as texts, without regard to case.
bool InSameFolder(const std::string& a, const std::string& b);

}  // namespace orvane
