#pragma once

#include <string>

namespace orvane {

/// The temporary files of saves. A program that ends during a save leaves one in the folder.

/// \param directory  with its separator; empty for the working directory
/// \param attempt    distinguishes the names that one save tries
/// \return the path of a temporary file, with the number of this process in it. No other save is
///         likely to use it at the same moment.
std::string TemporaryPath(const std::string& directory, int attempt);

/// Marks a temporary file as in use while it is open.
void LockTemporaryFile(int file);

/// Removes the temporary files of programs that no longer run. A file stays if its process exists,
/// if a program has locked it, or if it can't be opened.
/// \param directory  with its separator; empty for the working directory
void RemoveLeftOverFiles(const std::string& directory);

}  // namespace orvane
