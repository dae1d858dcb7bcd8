#include "mapfile/recovery_folder.h"

#include "base/file_names.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orvane {
namespace {

constexpr std::string_view LockName = "lock";
constexpr std::string_view RunPrefix = "run-";
constexpr std::string_view SlotPrefix = "copy-";
constexpr std::string_view CopyEnding = ".map";
constexpr std::string_view RecordEnding = ".record";
constexpr std::string_view DraftPrefix = "editor-";
constexpr std::string_view DraftEnding = ".draft";
constexpr std::string_view DamagedEnding = ".damaged";
constexpr std::string_view TemporaryEnding = ".tmp";

/// Only the user can read the copies: a map can be private, wherever its own file is.
constexpr mode_t OwnerOnly = 0700;
constexpr mode_t LockPermissions = 0600;

/// The number of names that are tried for the program's own folder.
constexpr int MostAttempts = 1000;

std::string RecordPath(const std::string& slot) { return slot + std::string(RecordEnding); }

/// \return the names in a directory, sorted; none if it can't be read
std::vector<std::string> NamesIn(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator each(directory, error), end; !error && each != end;
       each.increment(error)) {
    names.push_back(each->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// The lock of a program's folder.
/// \return the open lock file; -1 if another program has the lock, or the folder has just been
///         deleted
int LockFolder(const std::string& path) {
  const std::string lockPath = JoinPath(path, LockName);
  const int file = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, LockPermissions);
  if (file < 0) return -1;
  // If the file system has no locks, a copy that is offered twice is better than one that is never
  // offered.
  const bool held = ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  struct stat opened = {};
  struct stat named = {};
  // Its former owner can have removed it between the opening and the lock.
  const bool isThere = ::fstat(file, &opened) == 0 && ::stat(lockPath.c_str(), &named) == 0 &&
                       opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
  if (!held && isThere) return file;
  ::close(file);
  return -1;
}

std::int64_t WrittenAt(const std::string& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) == 0 ? std::int64_t{status.st_mtime} : 0;
}

}  // namespace

RecoveryFolder::RecoveryFolder(std::string directory, FileSystem system)
    : directory_(std::move(directory)), system_(std::move(system)) {}

RecoveryFolder::~RecoveryFolder() {
  for (const Run& run : runs_) {
    const std::vector<std::string> names = NamesIn(run.path);
    const bool empty = names.empty() || (names.size() == 1 && names.front() == LockName);
    if (empty) {
      // Under the lock, so that no program takes the folder over while it is being deleted.
      ::unlink(JoinPath(run.path, LockName).c_str());
      ::rmdir(run.path.c_str());
    }
    ::close(run.lock);
  }
}

std::vector<RecoveryCopy> RecoveryFolder::TakeAbandoned() {
  std::vector<RecoveryCopy> copies;
  for (const std::string& name : NamesIn(directory_)) {
    const std::string path = JoinPath(directory_, name);
    if (!name.starts_with(RunPrefix) || !TakeRun(path)) continue;
    CollectCopies(path, copies);
  }
  std::stable_sort(copies.begin(), copies.end(), [](const RecoveryCopy& a, const RecoveryCopy& b) {
    return a.written > b.written;
  });
  return copies;
}

bool RecoveryFolder::TakeRun(const std::string& path) {
  const bool known =
      std::any_of(runs_.begin(), runs_.end(), [&](const Run& run) { return run.path == path; });
  if (known) return false;
  const int lock = LockFolder(path);
  if (lock < 0) return false;
  runs_.push_back({.path = path, .lock = lock});
  return true;
}

void RecoveryFolder::CollectCopies(const std::string& path, std::vector<RecoveryCopy>& copies) {
  const std::vector<std::string> names = NamesIn(path);
  for (const std::string& name : names) {
    const std::string whole = JoinPath(path, name);
    // Incomplete: the program was killed while it wrote the file.
    if (name.ends_with(TemporaryEnding)) ::unlink(whole.c_str());
    if (name.ends_with(CopyEnding)) {
      const std::string slot = whole.substr(0, whole.size() - CopyEnding.size());
      const auto text = ReadWholeFile(RecordPath(slot));
      const auto record = text ? ParseRecoveryRecord(*text) : std::nullopt;
      // A copy without a record is still somebody's work.
      copies.push_back({.record = record.value_or(RecoveryRecord{
                            .fileName = "Untitled", .untitled = true, .original = {}}),
                        .slot = slot,
                        .written = WrittenAt(whole)});
    }
    if (name.ends_with(DraftEnding)) {
      if (auto text = ReadWholeFile(whole)) {
        drafts_.push_back({.path = whole, .text = std::move(*text), .written = WrittenAt(whole)});
      }
    }
    if (name.ends_with(RecordEnding)) {
      const std::string slot = whole.substr(0, whole.size() - RecordEnding.size());
      if (::access(RecoveryCopyPath(slot).c_str(), F_OK) != 0) ::unlink(whole.c_str());
    }
  }
}

bool RecoveryFolder::MakeOwnRun() {
  std::error_code error;
  std::filesystem::create_directories(directory_, error);
  const std::string stem = JoinPath(directory_, RunPrefix) + std::to_string(::getpid()) + "-";
  for (int attempt = 1; attempt <= MostAttempts; ++attempt) {
    const std::string path = stem + std::to_string(attempt);
    if (::mkdir(path.c_str(), OwnerOnly) != 0) {
      if (errno == EEXIST) continue;
      return false;
    }
    // Another program that is starting can delete the empty folder.
    const int lock = LockFolder(path);
    if (lock < 0) continue;
    runs_.push_back({.path = path, .lock = lock});
    ownRun_ = path;
    return true;
  }
  return false;
}

std::string RecoveryFolder::NewSlot() {
  if (ownRun_.empty() && !MakeOwnRun()) return {};
  return JoinPath(ownRun_, std::string(SlotPrefix) + std::to_string(++slotsMade_));
}

WriteResult RecoveryFolder::Write(const std::string& slot, const RecoveryRecord& record,
                                  std::string_view text) {
  const std::string recordPath = RecordPath(slot);
  if (::access(recordPath.c_str(), F_OK) != 0) {
    const WriteResult result = WriteFileAtomically(recordPath, RecoveryRecordText(record), system_);
    if (result != WriteResult::Done) return result;
  }
  return WriteFileAtomically(RecoveryCopyPath(slot), text, system_);
}

void RecoveryFolder::Remove(const std::string& slot) {
  // The copy first: a record without a copy is useless.
  ::unlink(RecoveryCopyPath(slot).c_str());
  ::unlink(RecordPath(slot).c_str());
}

std::string RecoveryFolder::NewDraft() {
  if (ownRun_.empty() && !MakeOwnRun()) return {};
  return JoinPath(
      ownRun_, std::string(DraftPrefix) + std::to_string(++draftsMade_) + std::string(DraftEnding));
}

WriteResult RecoveryFolder::WriteDraft(const std::string& path, std::string_view text) {
  return WriteFileAtomically(path, text, system_);
}

void RecoveryFolder::RemoveDraft(const std::string& path) { ::unlink(path.c_str()); }

std::string RecoveryFolder::SetDraftAside(const std::string& path) const {
  std::string aside = path + std::string(DamagedEnding);
  return system_.rename(path, aside) == 0 ? aside : path;
}

}  // namespace orvane
