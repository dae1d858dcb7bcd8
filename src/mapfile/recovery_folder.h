#pragma once

#include "base/files.h"
#include "mapfile/recovery.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The folder of the recovery copies of all programs that run for one user.
///
/// Each running program has a folder of its own in it, and holds a lock there for as long as it
/// lives; the system takes the lock away when the program ends, however it ends. So copies under a
/// lock belong to a program that still runs, and are left alone. Within it each copy has a slot:
/// the record, written once, and the copy, written anew each time.
///
/// Nothing but what lies in this folder is ever written or removed.
class RecoveryFolder {
 public:
  /// \param directory  made when it is first needed
  /// \param system     what files are written with; a test lets its calls fail
  explicit RecoveryFolder(std::string directory, FileSystem system = SystemFiles());
  /// Gives up the locks; the copies that are still there are the next program's.
  ~RecoveryFolder();
  RecoveryFolder(const RecoveryFolder&) = delete;
  RecoveryFolder& operator=(const RecoveryFolder&) = delete;

  /// Takes over what programs that have ended left behind, so that no other program does.
  /// \return the copies, newest first. None that was taken over before comes again.
  std::vector<RecoveryCopy> TakeAbandoned();

  /// \return a place for the copies of one map; empty if none can be made
  std::string NewSlot();

  /// Writes a copy so that at any moment the one before or this one stands in the slot, whole.
  /// \param record  is kept from the first time on
  WriteResult Write(const std::string& slot, const RecoveryRecord& record, std::string_view text);

  /// Removes a copy; the slot is free for another.
  void Remove(const std::string& slot);

 private:
  /// The folder of one program.
  struct Run {
    std::string path;
    int lock = -1;  ///< the open lock file
  };

  bool MakeOwnRun();
  bool TakeRun(const std::string& path);
  static void CollectCopies(const std::string& path, std::vector<RecoveryCopy>& copies);

  std::string directory_;
  FileSystem system_;
  std::vector<Run> runs_;  ///< the own one and those taken over
  std::string ownRun_;     ///< path of the own one; empty until there is one
  int slotsMade_ = 0;
};

}  // namespace orvane
