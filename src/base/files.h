#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Reading and writing whole files.

/// The largest file that is read, in bytes: 2 GiB. A file of notes has a few megabytes at most.
constexpr size_t LargestFile = size_t{1} << 31;

/// Reads a whole file. Only regular files are read, so that a pipe or a device given as a map
/// neither hangs nor never ends.
/// \return the content, byte for byte; nothing for a missing or unreadable file, a directory, any
///         other kind of file, a file above `LargestFile`, or an error while reading
std::optional<std::string> ReadWholeFile(const std::string& path);

/// How `WriteFileAtomically` ended.
enum class WriteResult {
  Done,
  CannotOpen,  ///< no file can be written there; nothing has changed
  Failed       ///< it could be opened, but not written completely; the old file is unchanged
};

/// The calls of the operating system that replace a file, so that a test can make each of them
/// fail. Each reports failure as the call of that name does, in its value and `errno`.
struct FileSystem {
  /// Makes a new file and opens it for writing. \return its number or -1
  std::function<int(const std::string& path, unsigned permissions)> create;
  /// Gives an open file the permissions of an old one. \return 0 or -1. A file system that keeps no
  /// permissions is not a failure of the save.
  std::function<int(int file, unsigned permissions)> setPermissions;
  /// Writes up to `size` bytes. \return the number written, or -1
  std::function<long(int file, const char* bytes, size_t size)> write;
  /// Flushes what was written to the disk. \return 0 or -1
  std::function<int(int file)> flush;
  /// Closes the file. \return 0 or -1; the file is closed either way
  std::function<int(int file)> close;
  /// Replaces one file by another. \return 0 or -1
  std::function<int(const std::string& from, const std::string& to)> rename;
};

/// \return the calls of the operating system itself
FileSystem SystemFiles();

/// Writes a file so that at any moment its name leads to the complete old or the complete new
/// content: the content goes into a temporary file beside it, is flushed to the disk, and then
/// takes the name.
///
/// A symbolic link is followed, and the file that it names is replaced. The permissions of an old
/// file are kept (and its owner and group, if the system allows it); a new file can be read and
/// written by all, less the user's mask. Other hard links to the old file keep the old content.
/// \return `CannotOpen` if the file is a directory, is neither a regular file nor missing, is
///         protected from writing, or if no file can be made beside it; `Failed` if a later step
///         fails. The temporary file is removed in every case.
WriteResult WriteFileAtomically(const std::string& path, std::string_view content);

/// As above, with other calls instead of those of the system.
WriteResult WriteFileAtomically(const std::string& path, std::string_view content,
                                const FileSystem& system);

}  // namespace orvane
