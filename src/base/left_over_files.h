#pragma once

#include <string>

namespace orvane {

/// The temporary files of saves. A program that ends in the middle of a save leaves one behind.

/// \param directory  with its separator; empty for the working directory
/// \param attempt    tells apart the names that one save tries
/// \return the path of a temporary file, with the number of this process in it. No other save is
///         likely to use it at the same moment.
std::string TemporaryPath(const std::string& directory, int attempt);

/// Marks an open temporary file as in use for as long as it is open.
void LockTemporaryFile(int file);

/// Removes the temporary files of programs that no longer run. A file stays if its process exists,
/// if somebody has it locked, or if it can't be opened.
/// \param directory  with its separator; empty for the working directory
void RemoveLeftOverFiles(const std::string& directory);

}  // namespace orvane
