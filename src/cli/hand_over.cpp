#include "cli/hand_over.h"

#include "cli/exit_status.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace orvane {

int HandOver(char** arguments) {
  std::error_code error;
  const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
  // If the system does not say where this program is, the other one is on the search path.
  const std::string program = (own.parent_path() / "orvane-render").string();
  execvp(program.c_str(), arguments);
  std::fprintf(stderr, "orvane-cli: cannot run %s: %s\n", program.c_str(), std::strerror(errno));
  return ExitFailed;
}

}  // namespace orvane
