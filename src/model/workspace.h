#pragma once

#include "base/dates.h"
#include "base/messages.h"
#include "model/map.h"

#include <forward_list>
#include <functional>
#include <string_view>

namespace orvane {

/// The user's settings that the core reads.
struct Preferences {
  bool europeanDates = false;    ///< day before month
  bool showHiddenNames = false;  ///< draw the names that begin with `_` or `@`
};

/// What is process-wide by its nature. Made once by the program and handed down; a test makes its
/// own, so that no two meet.
struct Workspace {
  explicit Workspace(Messages& messagesToUse) : messages(messagesToUse) {}

  Messages& messages;  ///< where messages and questions go
  Preferences preferences;
  std::forward_list<Map> maps;  ///< every map ever made, newest first; none is ever freed
  double lastLatitude = 0;      ///< degrees of the last GPS reading of any file: what a fix that
  double lastLongitude = 0;     ///< leaves out its degrees takes
  std::function<PackedDate()> today;  ///< the date that a save writes; the local clock if empty
};

/// Makes an empty map and puts it at the head of the workspace's list.
Map& MakeMap(Workspace& workspace, std::string_view name);

/// \return the map of that file name, without regard to case, or null
Map* FindMap(Workspace& workspace, std::string_view name);

}  // namespace orvane
