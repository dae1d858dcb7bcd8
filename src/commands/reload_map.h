#pragma once

#include "base/file_mark.h"
#include "model/map.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace orvane {

/// When a map is read again from its file, and when the user is offered that.

/// Asks before the changes of a map are dropped, if it has any.
/// \return true to go on
bool AskBeforeReloading(Map& map);

/// Finds out whether the files of open maps hold something else by now. A file is read only if its
/// size or its time is not what it was at the last look.
class FileNews {
 public:
  /// \return true if the file of a map can be read, holds other bytes than the map was read from
  ///         or written to, and the user has not declined to reload just these
  bool HasNews(const Map& map);

  /// The user does not want what the file holds now. What it holds later is offered again.
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

/// \return what a window on `shown` says about the news of `changed`, the map itself or one that it
///         rests on
std::string NewsText(const Map& shown, const Map& changed);

}  // namespace orvane
