#pragma once

#include "base/file_mark.h"
#include "model/map.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace orvane {

/// When a map is reloaded from its file, and when the user is offered to reload it.

/// Asks before the changes of a map are dropped, if it has any.
/// \return true to continue
bool AskBeforeReloading(Map& map);

/// Detects that the files of open maps have other contents. A file is read only if its size or time
/// has changed since the last check.
class FileNews {
 public:
  /// \return true if the file of a map can be read, differs from the bytes that the map was read
  ///         from or written to, and the user has not declined to reload these contents
  bool HasNews(const Map& map);

  /// The user does not want the present contents of the file. Later contents are offered again.
  void Decline(const Map& map);

 private:
  struct Look {
    std::string fileName;
    std::optional<FileMark> ofMap;  ///< `Map::fileMark`
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const Look&) const = default;
  };
  struct Finding {
    Look look;
    std::optional<FileMark> onDisk;  ///< none if the file can't be read
    std::optional<FileMark> declined;
  };

  std::map<const Map*, Finding> findings_;
};

/// \return what a window on `shown` says about the new contents of `changed`, which is the map
///         itself or in its basis chain
std::string NewsText(const Map& shown, const Map& changed);

}  // namespace orvane
