#pragma once

#include "commands/command_table.h"
#include "commands/focus_place.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

enum class CellTableState;
class EditHistory;
struct Map;
struct MapWindow;
struct Preferences;

/// What the menu bar of a window offers now: an entry for each command. The commands and their keys
/// are the same for all windows, see command_table.h.

struct CommandState {
  bool enabled = true;
  bool checked = false;
  std::string text;  ///< with `&` before the letter that picks it
};

struct MenuState {
  std::vector<CommandState> states;  ///< in the order of `AllCommands`

  CommandState& At(CommandId id);
  const CommandState& At(CommandId id) const;
};

/// The menu of the window that is shown while no map is open.
MenuState StartMenu(const Preferences& preferences);

/// The menu of a new map window; the focus is on neither list.
MenuState NewMapMenu(const MapWindow& view);

/// Updates a map window's menu from its map: when the window is made, when it gains the focus, and
/// when its map gets a basis. Save is not changed; see `SaveIsOffered`.
void RefreshMapMenu(MenuState& menu, const MapWindow& view);

/// What changes with the focus within a map window.
/// \param selected  a row of the list that has the focus is selected
void FollowFocus(MenuState& menu, FocusPlace place, bool selected);

/// Offers Undo and Redo as far as the map of the window has steps, with the name of each.
void FollowSteps(MenuState& menu, const EditHistory& history, const Map& map);

/// True if Save has anything to save for a window of `map`: the map, one made before it, or one in
/// its basis chain has changed.
bool SaveIsOffered(const Map& map);

/// The two editors.
enum class EditorKind { Trail, Range };

/// What an editor's menu follows.
struct EditorMenuFacts {
  EditorKind kind = EditorKind::Trail;
  CellTableState table{};    ///< an open cell takes the clipboard, a selected row can be deleted
  bool canCopyRow = false;   ///< the selected row is not the blank one
  bool isReadOnly = false;   ///< no row comes or goes
  bool takesClicks = false;  ///< clicks on the map can add rows
};

/// What the menu of a report follows.
struct ReportMenuFacts {
  bool isSaved = true;   ///< "Save As..." saves its text
  bool hasLines = true;  ///< its lines can be selected and copied
  /// What it can copy and save as a picture, such as "Chart"; empty if it never has one.
  std::string_view picture{};
  bool hasPicture = false;  ///< there is one now
};

/// The menu of a window with a report on what a map window shows.
MenuState ReportMenu(const Map& map, const ReportMenuFacts& facts);

/// The menu of a window with a profile.
MenuState ElevationMenu(const Map& map, bool infoShown);

/// The menu of an editor: what works without a map in the window, and the commands on its table.
MenuState EditorMenu(const Map& map, const EditorMenuFacts& facts);

}  // namespace orvane
