#include "base/left_over_files.h"

#include "base/number_text.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// A name is ".orvane-PROCESS-TIME-ATTEMPT.tmp". Two signs show whether its program still runs, and
// both are checked. The process number means nothing if another machine or a container shares the
// folder; the lock is not held in the moment between the last byte and the new name, and some file
// systems have no locks.

namespace orvane {

namespace {

constexpr std::string_view NameStart = ".orvane-";
constexpr std::string_view NameEnd = ".tmp";

/// Removes a number from the front of a text. \return nothing if there is none
std::optional<std::int64_t> TakeNumber(std::string_view& text) {
  const IntegerPrefix number =
      !text.empty() && IsDigit(text.front()) ? ReadInteger(text) : IntegerPrefix{};
  if (number.length == 0) return std::nullopt;
  text.remove_prefix(number.length);
  return number.value;
}

/// \return the process in the name of a temporary file; nothing for any other name
std::optional<pid_t> ProcessOf(std::string_view name) {
  if (!name.starts_with(NameStart) || !name.ends_with(NameEnd)) return std::nullopt;
  name.remove_prefix(NameStart.size());
  const auto process = TakeNumber(name);
  if (!process || *process < 1 || *process > std::numeric_limits<pid_t>::max()) return std::nullopt;
  for (int part = 0; part < 2; ++part) {
    if (!name.starts_with('-')) return std::nullopt;
    name.remove_prefix(1);
    if (!TakeNumber(name)) return std::nullopt;
  }
  if (name != NameEnd) return std::nullopt;
  return static_cast<pid_t>(*process);
}

bool Runs(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

/// Removes the file unless a program has locked it. Never follows a link.
void RemoveUnlocked(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return;
  struct stat status = {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
      ::flock(file, LOCK_EX | LOCK_NB) == 0) {
    ::unlink(path.c_str());
  }
  ::close(file);
}

}  // namespace

std::string TemporaryPath(const std::string& directory, int attempt) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  std::string path = directory;
  path += NameStart;
  for (const std::string& part : {std::to_string(::getpid()), std::to_string(now)}) {
    path += part;
    path += '-';
  }
  path += std::to_string(attempt);
  path += NameEnd;
  return path;
}

void LockTemporaryFile(int file) { ::flock(file, LOCK_EX | LOCK_NB); }

void RemoveLeftOverFiles(const std::string& directory) {
  const auto close = [](DIR* opened) { ::closedir(opened); };
  const std::unique_ptr<DIR, decltype(close)> folder(
      ::opendir(directory.empty() ? "." : directory.c_str()), close);
  if (!folder) return;
  std::vector<std::string> leftOver;
  while (const dirent* entry = ::readdir(folder.get())) {
    const std::optional<pid_t> process = ProcessOf(entry->d_name);
    if (process && !Runs(*process)) leftOver.push_back(directory + entry->d_name);
  }
  for (const std::string& path : leftOver) RemoveUnlocked(path);
}

}  // namespace orvane
