#pragma once

#include <QPoint>

namespace orvane {

class CommandMenu;
class MapPanes;

/// Opens the menu that the menu key brings up in a pane: the editor of the current row, the commands
/// of the menu bar on rows of that pane, and in the trail pane "Add to Range" with the ranges and
/// "New", which does what dropping the selected trails there does.
/// \param commands  the menu bar of their window
/// \param global    where the menu opens, a pixel of the screen
void OpenTrailMenu(MapPanes& panes, const CommandMenu& commands, QPoint global);
void OpenRangeMenu(MapPanes& panes, const CommandMenu& commands, QPoint global);

}  // namespace orvane
