#pragma once

#include "base/files.h"
#include "mapfile/recovery.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// The folder of the recovery copies of all programs that run for one user.
///
/// Each running program has a folder of its own in it, with a lock that the system releases when
/// the program ends, however it ends. So copies under a lock belong to a program that still runs,
/// and are not touched. In that folder each copy has a slot: the record, written once, and the
/// copy, rewritten each time.
///
/// Writes and removes files only in this folder.
class RecoveryFolder {
 public:
  /// \param directory  made when first needed
  /// \param system     the calls that write files; a test makes them fail
  explicit RecoveryFolder(std::string directory, FileSystem system = SystemFiles());
  /// Releases the locks; the copies that are still there go to the next program.
  ~RecoveryFolder();
  RecoveryFolder(const RecoveryFolder&) = delete;
  RecoveryFolder& operator=(const RecoveryFolder&) = delete;

  /// Takes over the copies of programs that have ended, so that no other program does.
  /// \return the copies, newest first, without those of earlier calls
  std::vector<RecoveryCopy> TakeAbandoned();

  /// \return a new slot for one map; empty if none can be made
  std::string NewSlot();

  /// Writes a copy so that at any moment the slot has the complete old or the complete new copy.
  /// \param record  stored only the first time
  WriteResult Write(const std::string& slot, const RecoveryRecord& record, std::string_view text);

  /// Removes a copy and frees its slot.
  void Remove(const std::string& slot);

  /// The draft of an open editor: a file of text beside the copies.
  struct Draft {
    std::string path;
    std::string text;
    std::int64_t written = 0;  ///< seconds since 1970
  };
  /// \return the drafts of the programs that the last `TakeAbandoned` took over
  std::vector<Draft> TakeDrafts() { return std::exchange(drafts_, {}); }
  /// \return the path of a new draft; empty if none can be made
  std::string NewDraft();
  WriteResult WriteDraft(const std::string& path, std::string_view text);
  void RemoveDraft(const std::string& path);
  /// Gives a draft that can't be read a name under which it is kept and not taken over again.
  /// \return the new path; the old one if it can't be renamed
  std::string SetDraftAside(const std::string& path) const;

 private:
  /// The folder of one program.
  struct Run {
    std::string path;
    int lock = -1;  ///< the open lock file
  };

  bool MakeOwnRun();
  bool TakeRun(const std::string& path);
  void CollectCopies(const std::string& path, std::vector<RecoveryCopy>& copies);

  std::string directory_;
  FileSystem system_;
  std::vector<Run> runs_;  ///< this program's own and those taken over
  std::string ownRun_;     ///< path of this program's own; empty until there is one
  int slotsMade_ = 0;
  int draftsMade_ = 0;
  std::vector<Draft> drafts_;  ///< taken over, and not asked for yet
};

}  // namespace orvane
