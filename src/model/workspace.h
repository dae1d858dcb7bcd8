#pragma once

#include "base/dates.h"
#include "base/messages.h"
#include "base/progress.h"
#include "model/map.h"
#include "model/unused_records.h"

#include <cstdint>
#include <forward_list>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The user's settings that the core reads.
struct Preferences {
  bool europeanDates = false;    ///< day before month
  bool showHiddenNames = false;  ///< draw the names that begin with `_` or `@`
  bool smoothLines = true;       ///< draw lines on the screen and in pictures with smooth edges
};

/// A file being read.
struct OpenedFile {
  std::string path;       ///< from the root
  std::string shownName;  ///< the name that the user gave
};

/// The state of the reader of map files. It continues from file to file: an included file or a
/// basis is read in the middle of the file that names it.
struct ReadingState {
  Trail* currentTrail = nullptr;      ///< null outside a trail
  Range* currentRange = nullptr;      ///< null outside a range
  size_t trailLine = 0;               ///< line of the file that opened the current trail
  bool trailHasTail = false;          ///< a point was added since the trail was opened
  Point* lastPoint = nullptr;         ///< the point of the previous point line
  bool warnedOnce = false;            ///< the messages that appear once per file have been posted
  std::vector<OpenedFile> openFiles;  ///< being read, outermost first
  int depth = 0;                      ///< texts being read, one inside the other
  int filesNamed = 0;                 ///< by includes and bases since the outermost text began
};

/// What all maps of the process share. The program makes one and passes it on; each test makes its
/// own, so that tests do not interfere.
struct Workspace {
  explicit Workspace(Messages& messagesToUse) : messages(messagesToUse) {}

  Messages& messages;            ///< where messages and questions go
  Progress* progress = nullptr;  ///< of long work, which it can cancel; can be null
  Preferences preferences;
  std::forward_list<Map> maps;  ///< every map opened or made, newest first; none is removed
  double lastLatitude = 0;      ///< degrees of the last GPS reading of any file: what a fix that
  double lastLongitude = 0;     ///< leaves out its degrees takes
  ReadingState reading;
  RecordHolders holders;          ///< of records that edits may have removed
  std::uint64_t solverWalks = 0;  ///< walks that the solver has made so far, over all maps
  unsigned rangeRowsMade = 0;     ///< rows of range panes made so far; their shadings take turns
  std::map<double, int> contourCounts;  ///< contour lines made so far of each level, over all maps
  std::map<double, int> continuousContourCounts;  ///< the same of `Map::continuousContours`
  std::function<PackedDate()> today;  ///< the date that is written; the local clock if empty

  /// The date in saves and exports.
  PackedDate Today() const { return today ? today() : LocalDate(); }
};

/// Makes an empty map with that file name at the head of the workspace's list.
Map& MakeMap(Workspace& workspace, std::string_view name);

/// \return the map with that file name, without regard to case, or null
Map* FindMap(Workspace& workspace, std::string_view name);

}  // namespace orvane
