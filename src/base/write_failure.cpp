#include "base/write_failure.h"

namespace orvane {

std::string WriteFailure(WriteResult result, std::string_view path) {
  const char* what = result == WriteResult::CannotOpen ? "Can't open file " : "Can't write file ";
  return what + std::string(path);
}

}  // namespace orvane
