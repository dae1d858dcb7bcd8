// Reads any bytes as a preferences file, places a window by the saved view, writes the preferences
// with the windows that were opened, and reads what was written. Nothing may crash, hang or be
// undefined; the view that comes back can be drawn, and the settings come back as written.

#include "view/preferences.h"

#include "fuzzed_map.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <list>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

/// A file that is never on a disk, for a reader that takes a path.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view content) : file_(std::tmpfile()) {
    fuzz::Require(file_ != nullptr);
    fuzz::Require(std::fwrite(content.data(), 1, content.size(), file_) == content.size());
    fuzz::Require(std::fflush(file_) == 0);
  }
  ~MemoryFile() { std::fclose(file_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string Path() const { return "/proc/self/fd/" + std::to_string(fileno(file_)); }

 private:
  std::FILE* file_;
};

/// A start of the program with one preferences file.
struct Start {
  fuzz::FuzzedMaps maps;
  orvane::WindowPreferences preferences;
  std::list<orvane::MapWindow> windows;

  explicit Start(std::string_view content) {
    const MemoryFile file(content);
    orvane::ReadPreferences(maps.workspace, file.Path(), preferences,
                            [this](const std::string& name) { Show(name, nullptr); });
    if (!preferences.savedView.fileName.empty()) {
      Show(preferences.savedView.fileName, &preferences.savedView);
    }
  }

  void Show(const std::string& fileName, const orvane::SavedView* saved) {
    orvane::MapWindow& view = windows.emplace_front();
    view.map = &orvane::MakeMap(maps.workspace, fileName);
    orvane::SizeView(view, 400, 300, saved);
    fuzz::Require(view.scale > 0 && std::isfinite(view.scale));
    fuzz::Require(std::isfinite(view.top) && std::isfinite(view.left));
    fuzz::Require(std::isfinite(view.rotation) && std::isfinite(view.centralLongitude));
  }

  std::string Text(bool withWindows) const {
    std::vector<const orvane::MapWindow*> shown;
    for (const orvane::MapWindow& view : windows) {
      if (withWindows) shown.push_back(&view);
    }
    return orvane::PreferencesText(maps.workspace, preferences, shown);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Start first(std::string_view(reinterpret_cast<const char*>(data), size));
  const Start second(first.Text(true));
  fuzz::Require(second.Text(false) == first.Text(false));
  return 0;
}
