#pragma once

namespace orvane {

class CommandMenu;
class Shell;

/// Fills the menus of recent maps and of open windows each time they open.
void PlugListMenus(Shell& shell, CommandMenu& commands);

}  // namespace orvane
