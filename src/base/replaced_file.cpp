#include "base/replaced_file.h"

#include "base/left_over_files.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr unsigned PermissionBits = 07777;
constexpr unsigned ReadAndWriteForAll = 0666;
constexpr unsigned ReadAndWriteForOwner = 0600;

/// The longest chain of links, as in the system itself: a longer one is a circle.
constexpr int MostLinks = 40;

/// The number of names that are tried for the temporary file.
constexpr int MostAttempts = 100;

/// The system's calls end a name at a zero byte, and would then open another file.
bool IsPossibleName(const std::string& path) {
  return !path.empty() && path.find('\0') == std::string::npos;
}

/// The file to be replaced.
struct Target {
  std::string path;  ///< with symbolic links followed
  bool exists = false;
  struct stat status = {};  ///< of an existing file
};

/// \return the directory of a path with its separator
std::string DirectoryPart(const std::string& path) {
  const size_t separator = path.rfind('/');
  return separator == path.npos ? std::string() : path.substr(0, separator + 1);
}

std::optional<std::string> ReadLink(const std::string& path) {
  std::array<char, 4096> buffer{};
  const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
  if (length <= 0 || static_cast<size_t>(length) == buffer.size()) return std::nullopt;
  return std::string(buffer.data(), static_cast<size_t>(length));
}

/// Follows links to the file, which need not exist.
/// \return nothing if there can be no file
std::optional<Target> FindTarget(const std::string& path) {
  if (!IsPossibleName(path)) return std::nullopt;
  Target target;
  target.path = path;
  for (int links = 0; links <= MostLinks; ++links) {
    if (::lstat(target.path.c_str(), &target.status) != 0) {
      if (errno != ENOENT) return std::nullopt;
      return target;
    }
    if (S_ISREG(target.status.st_mode)) {
      target.exists = true;
      return target;
    }
    if (!S_ISLNK(target.status.st_mode)) return std::nullopt;
    const std::optional<std::string> next = ReadLink(target.path);
    if (!next) return std::nullopt;
    target.path = next->starts_with('/') ? *next : DirectoryPart(target.path) + *next;
  }
  return std::nullopt;
}

/// True for the errors of a file system that keeps no permissions. The file was just made and
/// belongs to this user, so they can mean nothing else.
bool KeepsNoPermissions(int error) {
  return error == ENOSYS || error == EOPNOTSUPP || error == EPERM || error == EINVAL;
}

/// Copies owner, group and permissions from the file that is replaced.
bool TakeStatus(const FileSystem& system, int file, const struct stat& status) {
  unsigned permissions = status.st_mode & PermissionBits;
  // Only the administrator can give a file away. The bits for "run as owner" and "run as group" are
  // then dropped: they would hand this user's rights to others.
  if (::fchown(file, status.st_uid, status.st_gid) != 0) permissions &= 0777;
  return system.setPermissions(file, permissions) == 0 || KeepsNoPermissions(errno);
}

}  // namespace

ReplacedFile::~ReplacedFile() {
  if (file_ >= 0) system_.close(file_);
  if (!temporaryPath_.empty()) ::unlink(temporaryPath_.c_str());
}

WriteResult ReplacedFile::Open(const std::string& path) {
  const std::optional<Target> target = FindTarget(path);
  if (!target) return WriteResult::CannotOpen;
  // Renaming works without the right to write the old file, but someone who removed that right did
  // so on purpose.
  if (target->exists && ::faccessat(AT_FDCWD, target->path.c_str(), W_OK, AT_EACCESS) != 0) {
    return WriteResult::CannotOpen;
  }
  path_ = target->path;
  RemoveLeftOverFiles(DirectoryPart(path_));
  // If others can't read the old file, they can never read the new content either.
  if (!Create(target->exists ? ReadAndWriteForOwner : ReadAndWriteForAll)) {
    return WriteResult::CannotOpen;
  }
  if (target->exists && !TakeStatus(system_, file_, target->status)) return WriteResult::Failed;
  return WriteResult::Done;
}

bool ReplacedFile::Create(unsigned permissions) {
  for (int attempt = 0; attempt < MostAttempts; ++attempt) {
    const std::string path = TemporaryPath(DirectoryPart(path_), attempt);
    file_ = system_.create(path, permissions);
    if (file_ >= 0) {
      LockTemporaryFile(file_);
      temporaryPath_ = path;
      return true;
    }
    if (errno != EEXIST && errno != EINTR) return false;
  }
  return false;
}

bool ReplacedFile::Write(std::string_view content) {
  while (!content.empty()) {
    const long written = system_.write(file_, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

bool ReplacedFile::Flush() {
  const bool flushed = system_.flush(file_) == 0;
  const bool closed = system_.close(file_) == 0;
  file_ = -1;
  return flushed && closed;
}

bool ReplacedFile::TakeName() {
  if (system_.rename(temporaryPath_, path_) != 0) return false;
  temporaryPath_.clear();
  return true;
}

void FlushDirectoryOf(const std::string& path) {
  const std::string directory = DirectoryPart(path);
  const int opened =
      ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  ::fsync(opened);
  ::close(opened);
}

}  // namespace orvane
