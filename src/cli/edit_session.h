#pragma once

#include "cli/line_messages.h"
#include "editing/edit_history.h"
#include "editing/range_editor.h"
#include "editing/trail_editor.h"
#include "panes/pane_follower.h"
#include "view/map_window.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A window on a map with its panes and at most one open editor, for a script. It is what a person
/// sees, without the pixels.
struct EditSession {
  /// \param map  has been opened
  EditSession(Map& map, LineMessages& messages);
  EditSession(const EditSession&) = delete;
  EditSession& operator=(const EditSession&) = delete;

  /// \return the editor that is open as a table, or null
  CellModel* Table() const;
  /// \return true if the open editor would lose something
  bool HasChanges() const;
  void CloseEditor();

  Map& map;
  LineMessages& messages;
  MapWindow view;
  EditHistory history;
  PaneFollower follower;
  std::unique_ptr<TrailEditor> trailEditor;
  std::unique_ptr<RangeEditor> rangeEditor;
};

/// The new view of a map that the batch tool works with: 1024 by 768 pixels.
MapWindow NewView(Map& map);

/// The words of a script for the fields and the modes of the trail editor, in the order of its JSON.
inline constexpr std::array<std::pair<const char*, TrailField>, TrailFields> TrailFieldWords = {
    {{"type", TrailField::Type},
     {"date", TrailField::Date},
     {"focal", TrailField::Focal},
     {"name", TrailField::Name},
     {"color", TrailField::LineColor},
     {"size", TrailField::Size},
     {"width", TrailField::Width}}};
inline constexpr std::array<std::pair<const char*, EntryMode>, 3> EntryModeWords = {
    {{"relative", EntryMode::Relative}, {"gps", EntryMode::Gps}, {"mixture", EntryMode::Mixture}}};

/// The rows of both panes as one line of JSON.
std::string PanesJson(const EditSession& session);
/// The open editor as one line of JSON, or "null".
std::string EditorJson(const EditSession& session);

}  // namespace orvane
