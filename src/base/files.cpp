#include "base/files.h"

#include "base/replaced_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

/// A file open for reading; closed when this is destroyed.
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

/// The system's calls end a name at a zero byte, and would then open another file.
bool IsPossibleName(const std::string& path) {
  return !path.empty() && path.find('\0') == std::string::npos;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
  struct stat status = {};
  // Also checked before it is opened, since opening has an effect on some devices.
  if (!IsPossibleName(path) || ::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  const OpenedFile opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (opened.Number() < 0 || ::fstat(opened.Number(), &status) != 0 || !S_ISREG(status.st_mode) ||
      static_cast<uint64_t>(status.st_size) > LargestFile) {
    return std::nullopt;
  }
  // One byte more than the file has, so that its end is found without growing the buffer. A file
  // whose size the system does not know has the size 0, and the buffer grows.
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
    // Some file systems do not have this call; then there is nothing to wait for.
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
  ReplacedFile file(system);
  const WriteResult opened = file.Open(path);
  if (opened != WriteResult::Done) return opened;
  if (!file.Write(content) || !file.Flush() || !file.TakeName()) return WriteResult::Failed;
  FlushDirectoryOf(file.Path());
  return WriteResult::Done;
}

}  // namespace orvane
