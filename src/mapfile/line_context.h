#pragma once

#include "model/map.h"
#include "model/workspace.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orvane {

/// Finds trails by name while one file is read, where walking the list for each `T` line would
/// take a time that grows with the square of the number of trails.
class TrailNames {
 public:
  explicit TrailNames(Map& map) : map_(map) {}

  /// \return what `FindTrail` would find
  Trail* Find(std::string_view name);
  /// To be told of each new or renamed trail.
  void Add(Trail& trail);
  /// To be told when trails may have come otherwise: by a basis or an included file.
  void Forget() { filled_ = false; }

 private:
  void Fill();

  Map& map_;
  bool filled_ = false;
  std::unordered_map<std::string, Trail*> byName_;  ///< by folded name
};

/// What the parsers of single lines share while one file is read into one map.
struct LineContext {
  Map& map;
  Workspace& workspace;
  ReadingState& state;  ///< the workspace's
  Messages& messages;   ///< the workspace's
  TrailNames trailNames;

  explicit LineContext(Map& mapToRead)
      : map(mapToRead),
        workspace(*mapToRead.workspace),
        state(workspace.reading),
        messages(workspace.messages),
        trailNames(mapToRead) {}

  /// Gives one of the messages that are told once a file.
  void NoteOnce(std::string_view format, std::string_view argument);
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
