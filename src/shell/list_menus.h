#pragma once

namespace orvane {

class CommandMenu;
class Shell;

/// Lets the menus of recent maps and of open windows fill themselves whenever they are opened.
void PlugListMenus(Shell& shell, CommandMenu& commands);

}  // namespace orvane
