#include "base/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr unsigned PermissionBits = 07777;
constexpr unsigned ReadAndWriteForAll = 0666;
constexpr unsigned ReadAndWriteForOwner = 0600;

/// A chain of links longer than this goes round in a circle; the system's own limit.
constexpr int MostLinks = 40;

/// How many names for the temporary file are tried.
constexpr int MostAttempts = 100;

/// A file that is open for reading, closed when it goes.
class OpenedFile {
 public:
  explicit OpenedFile(int file) : file_(file) {}
  ~OpenedFile() {
    if (file_ >= 0) ::close(file_);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;
  int Number() const { return file_; }

 private:
  int file_;
};

/// The system's calls end a name at a zero byte, and would then take another file.
bool IsPossibleName(const std::string& path) {
  return !path.empty() && path.find('\0') == std::string::npos;
}

/// What is to be replaced.
struct Target {
  std::string path;  ///< no symbolic link any more
  bool exists = false;
  struct stat status = {};  ///< of an existing file
};

/// \return the directory of a path with its separator, as the system sees it
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

/// Follows links to the file itself, which need not exist.
/// \return nothing if no file can be replaced there
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

/// A name that no other save is likely to use at the same moment.
std::string TemporaryName(const std::string& directory, int attempt) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  return directory + ".orvane-" + std::to_string(::getpid()) + "-" + std::to_string(now) + "-" +
         std::to_string(attempt) + ".tmp";
}

/// The file beside the target that takes its name in the end. Unless it has done so, it goes when
/// this goes.
class TemporaryFile {
 public:
  explicit TemporaryFile(const FileSystem& system) : system_(system) {}
  ~TemporaryFile() {
    if (file_ >= 0) system_.close(file_);
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool Create(const std::string& directory, unsigned permissions) {
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
      const std::string path = TemporaryName(directory, attempt);
      file_ = system_.create(path, permissions);
      if (file_ >= 0) {
        path_ = path;
        return true;
      }
      if (errno != EEXIST && errno != EINTR) return false;
    }
    return false;
  }

  /// Takes over owner, group and permissions of the file that is replaced.
  bool TakeStatus(const struct stat& status) {
    unsigned permissions = status.st_mode & PermissionBits;
    // Only the administrator may give a file away. Rights that were meant for another owner or
    // group are then not handed on by the bits that stand for "run as them".
    if (::fchown(file_, status.st_uid, status.st_gid) != 0) permissions &= 0777;
    return system_.setPermissions(file_, permissions) == 0;
  }

  bool Write(std::string_view content) {
    while (!content.empty()) {
      const long written = system_.write(file_, content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      content.remove_prefix(static_cast<size_t>(written));
    }
    return true;
  }

  bool FlushAndClose() {
    const bool flushed = system_.flush(file_) == 0;
    const bool closed = system_.close(file_) == 0;
    file_ = -1;
    return flushed && closed;
  }

  bool Rename(const std::string& target) {
    if (system_.rename(path_, target) != 0) return false;
    path_.clear();
    return true;
  }

 private:
  const FileSystem& system_;
  std::string path_;
  int file_ = -1;
};

/// Makes the new name last through a loss of power. The new content stands already, so a system
/// that cannot do this is no reason to call the save a failure.
void FlushDirectory(const std::string& directory) {
  const OpenedFile opened(
      ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.Number() >= 0) ::fsync(opened.Number());
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
  struct stat status = {};
  // Asked before it is opened too, since opening alone does something to some devices.
  if (!IsPossibleName(path) || ::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  const OpenedFile opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (opened.Number() < 0 || ::fstat(opened.Number(), &status) != 0 || !S_ISREG(status.st_mode) ||
      static_cast<uint64_t>(status.st_size) > LargestFile) {
    return std::nullopt;
  }
  // One byte more than the file has, so that its end is seen without growing. A file whose size
  // the system does not tell has the size 0 and grows here.
  std::string content(static_cast<size_t>(status.st_size) + 1, '\0');
  size_t length = 0;
  while (true) {
    if (length == content.size()) content.resize(std::max<size_t>(content.size() * 2, 65536));
    const ssize_t got = ::read(opened.Number(), content.data() + length, content.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    length += static_cast<size_t>(got);
    if (length > LargestFile) return std::nullopt;
  }
  content.resize(length);
  return content;
}

FileSystem SystemFiles() {
  FileSystem system;
  system.create = [](const std::string& path, unsigned permissions) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
  };
  system.setPermissions = [](int file, unsigned permissions) {
    return ::fchmod(file, permissions);
  };
  system.write = [](int file, const char* bytes, size_t size) {
    return static_cast<long>(::write(file, bytes, size));
  };
  system.flush = [](int file) {
    // Some file systems know no such call; then there is nothing to wait for.
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOSYS ? 0 : -1;
  };
  system.close = [](int file) { return ::close(file); };
  system.rename = [](const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str());
  };
  return system;
}

WriteResult WriteFileAtomically(const std::string& path, std::string_view content) {
  return WriteFileAtomically(path, content, SystemFiles());
}

WriteResult WriteFileAtomically(const std::string& path, std::string_view content,
                                const FileSystem& system) {
  const std::optional<Target> target = FindTarget(path);
  if (!target) return WriteResult::CannotOpen;
  // Taking its name needs no right to write the old file, but who took that right away meant it.
  if (target->exists && ::faccessat(AT_FDCWD, target->path.c_str(), W_OK, AT_EACCESS) != 0) {
    return WriteResult::CannotOpen;
  }
  const std::string directory = DirectoryPart(target->path);
  TemporaryFile temporary(system);
  // Where the old file is closed to others, the new content is never open to them either.
  if (!temporary.Create(directory, target->exists ? ReadAndWriteForOwner : ReadAndWriteForAll)) {
    return WriteResult::CannotOpen;
  }
  if (target->exists && !temporary.TakeStatus(target->status)) return WriteResult::Failed;
  if (!temporary.Write(content) || !temporary.FlushAndClose() || !temporary.Rename(target->path)) {
    return WriteResult::Failed;
  }
  FlushDirectory(directory);
  return WriteResult::Done;
}

}  // namespace orvane
