#include "formats/format_module.h"

#include <dlfcn.h>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace orvane {

LoadedModule LoadFormatModuleFrom(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return {nullptr, "it is not installed"};
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return {nullptr, dlerror()};
  using Entry = const FormatModule* (*)();
  const auto entry = reinterpret_cast<Entry>(dlsym(library, FormatModuleEntry));
  if (entry == nullptr) return {nullptr, path + " is not a module of this program"};
  const FormatModule* const module = entry();
  if (std::string_view(module->version) != ORVANE_VERSION) {
    return {nullptr,
            "version " + std::string(module->version) + " is installed, not " + ORVANE_VERSION};
  }
  return {module, {}};
}

const LoadedModule& LoadFormatModule() {
  static const LoadedModule loaded = [] {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto folder = program.parent_path().parent_path() / "lib" / "orvane";
    return LoadFormatModuleFrom((folder / ORVANE_FORMAT_MODULE).string());
  }();
  return loaded;
}

}  // namespace orvane
