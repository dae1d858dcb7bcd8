#pragma once

#include "base/files.h"

#include <string>
#include <string_view>

namespace orvane {

/// A file that is about to replace another, for files that are written piece by piece or that
/// belong together: each is written and flushed to the disk under a temporary name beside its own,
/// and when all of them are complete they take their names. `WriteFileAtomically` does this for one
/// file whose content is in memory.
///
/// Call the steps in this order, each at most once except `Write`. If this is destroyed before
/// `TakeName` has succeeded, the temporary file is deleted and the old file is unchanged.
class ReplacedFile {
 public:
  /// \param system  must outlive this
  explicit ReplacedFile(const FileSystem& system) : system_(system) {}
  ~ReplacedFile();
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;

  /// Makes the temporary file. For links, permissions and files that cannot be replaced see
  /// `WriteFileAtomically`.
  /// \return `Done`, or why nothing can be written
  WriteResult Open(const std::string& path);
  /// \return false if the disk is full, or on any other error
  bool Write(std::string_view content);
  /// Flushes what was written to the disk and closes the file.
  bool Flush();
  /// Replaces the old file. For a name that survives a loss of power call `FlushDirectoryOf`
  /// afterwards, once for all files of a directory.
  bool TakeName();

  /// The path of the file that is replaced, with links followed; empty before `Open`.
  const std::string& Path() const { return path_; }

 private:
  bool Create(unsigned permissions);

  const FileSystem& system_;
  std::string path_;
  std::string temporaryPath_;  ///< empty before there is one, and after it has taken its name
  int file_ = -1;
};

/// Makes the new names in the directory of a file survive a loss of power. The new content is
/// already there, so a save does not fail if the system cannot do this.
void FlushDirectoryOf(const std::string& path);

}  // namespace orvane
