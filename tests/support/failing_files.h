#pragma once

#include "base/files.h"

#include <algorithm>
#include <cerrno>
#include <string>

namespace orvane {

/// A disk on which one call fails: the `n`-th of all calls that are made on it, whatever it is.
/// Writing takes a few bytes a call, so that it has a middle.
class FailingDisk {
 public:
  static constexpr size_t BytesPerWrite = 40;

  /// \param n  from 1; 0 for a disk on which none fails
  explicit FailingDisk(int n) : failing_(n) {}

  /// \return its calls; they must not outlive this
  FileSystem Calls() {
    FileSystem calls;
    calls.create = [this](const std::string& path, unsigned permissions) {
      return Fails() ? -1 : SystemFiles().create(path, permissions);
    };
    calls.setPermissions = [this](int file, unsigned permissions) {
      return Fails() ? -1 : SystemFiles().setPermissions(file, permissions);
    };
    calls.write = [this](int file, const char* bytes, size_t size) {
      return Fails() ? -1L : SystemFiles().write(file, bytes, std::min(size, BytesPerWrite));
    };
    calls.flush = [this](int file) { return Fails() ? -1 : SystemFiles().flush(file); };
    calls.close = [this](int file) {
      // A file is closed whatever the call says.
      const int result = SystemFiles().close(file);
      return Fails() ? -1 : result;
    };
    calls.rename = [this](const std::string& from, const std::string& to) {
      return Fails() ? -1 : SystemFiles().rename(from, to);
    };
    return calls;
  }

  /// \return true if the call that fails was made
  bool Failed() const { return failing_ > 0 && made_ >= failing_; }

 private:
  bool Fails() {
    if (++made_ != failing_) return false;
    errno = ENOSPC;
    return true;
  }

  int failing_;
  int made_ = 0;
};

}  // namespace orvane
