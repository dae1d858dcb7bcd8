#pragma once

#include <string>

namespace orvane {

/// What a file name leads to, as the file system sees it.

/// The path of a file from the root, so that it leads to the same file from any working directory.
/// The file need not exist. "." is left out, and so is ".." where its folder exists. Symbolic links
/// stay as they are spelled, except where ".." follows one: that folder is resolved.
/// \return `path` itself if it is empty, cannot be a file name, or no working directory is known
std::string WholePath(const std::string& path);

/// \return true if the two paths lead to one file that exists, or are the same text
bool IsSameFile(const std::string& a, const std::string& b);

/// Compares the folders of two files, however they are spelled. The files need not exist. Where a
/// folder does not exist, the whole paths are compared as texts, without regard to case.
bool InSameFolder(const std::string& a, const std::string& b);

}  // namespace orvane
