#pragma once

#include "base/files.h"

#include <string>
#include <string_view>

namespace orvane {

/// One file on its way to replace another, for files that are written piece by piece or that belong
/// together: each is written and brought to the disk under a temporary name beside its own, and
/// when all of them are there they take their names. `WriteFileAtomically` is this for one file
/// whose content stands in memory.
///
/// The steps are called in the order in which they stand here, each at most once but `Write`. When
/// this goes before `TakeName` has succeeded, the temporary file goes with it and the old file
/// stands untouched.
class ReplacedFile {
 public:
  /// \param system  has to outlive this
  explicit ReplacedFile(const FileSystem& system) : system_(system) {}
  ~ReplacedFile();
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;

  /// Makes the temporary file. Links, permissions and what cannot be replaced: as told at
  /// `WriteFileAtomically`.
  /// \return `Done`, or why nothing can be written
  WriteResult Open(const std::string& path);
  /// \return false if the disk is full, or any other error
  bool Write(std::string_view content);
  /// Brings what was written to the disk and closes the file.
  bool Flush();
  /// Puts the file in the place of the old one. Whoever wants the name to last through a loss of
  /// power calls `FlushDirectoryOf` then, once for all files of a directory.
  bool TakeName();

  /// The file that is replaced, with links followed; empty before `Open`.
  const std::string& Path() const { return path_; }

 private:
  bool Create(unsigned permissions);

  const FileSystem& system_;
  std::string path_;
  std::string temporaryPath_;  ///< empty before there is one, and once it has taken its name
  int file_ = -1;
};

/// Makes the new names in the directory of a file last through a loss of power. The new content
/// stands already, so a system that cannot do this is no reason to call a save a failure.
void FlushDirectoryOf(const std::string& path);

}  // namespace orvane
