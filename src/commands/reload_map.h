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
  /// Looks at the file of a map and at those that it includes.
  /// \return the whole path of the first one that can be read, differs from the bytes that the map
  ///         was read from or written to, and that the user has not declined to reload with these
  ///         contents; empty if there is none
  std::string ChangedFileOf(const Map& map);

  /// The user does not want the contents that `ChangedFileOf` saw last. Later contents are offered
  /// again.
  void Decline(const Map& map);

 private:
  struct Look {
    std::optional<FileMark> ofMap;  ///< as the map was read or written
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const Look&) const = default;
  };
  struct Finding {
    Look look;
    std::optional<FileMark> onDisk;  ///< none if the file can't be read
    std::optional<FileMark> declined;
  };

  static bool HasNews(Finding& finding, const std::string& path,
                      const std::optional<FileMark>& ofMap);

  std::map<const Map*, std::map<std::string, Finding>> findings_;  ///< by map, then by whole path
};

/// \return what a window on `shown` says about the new contents of `file`, which belongs to
///         `changed`: the map itself or a map in its basis chain
std::string NewsText(const Map& shown, const Map& changed, const std::string& file);

}  // namespace orvane
