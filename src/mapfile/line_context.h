#pragma once

#include "mapfile/trail_index.h"
#include "model/map.h"
#include "model/workspace.h"

#include <string_view>

namespace orvane {

/// State that the parsers of single lines share while a file and its includes are read into one
/// map.
struct LineContext {
  Map& map;
  Workspace& workspace;
  ReadingState& state;  ///< the workspace's
  Messages& messages;   ///< the workspace's
  TrailNames trailNames;
  TrailTimes trailTimes;  ///< of the current trail

  explicit LineContext(Map& mapToRead)
      : map(mapToRead),
        workspace(*mapToRead.workspace),
        state(workspace.reading),
        messages(workspace.messages),
        trailNames(mapToRead) {}

  /// Posts one of the messages that appear once per file.
  void NoteOnce(std::string_view format, std::string_view argument);

  /// `ResolvePointName` within the current trail.
  Point* ResolveOnTrail(std::string_view spec);
};

/// The parsers of single lines. `line` is the line from its tag on.

/// `A`, `C`, `G`, `L`, `N`, `P`: lines on a point.
void ReadPointLine(LineContext& context, std::string_view line);
/// `T`: opens or closes a trail.
void ReadTrailLine(LineContext& context, std::string_view line);
/// `R`: opens or closes a range.
void ReadRangeLine(LineContext& context, std::string_view line);
/// `K`: a search key of the current range.
void ReadKeyLine(LineContext& context, std::string_view line);
/// `H`: a grid.
void ReadGridLine(LineContext& context, std::string_view line);
/// `HS`: a shaded cell.
void ReadShadeLine(LineContext& context, std::string_view line);

}  // namespace orvane
