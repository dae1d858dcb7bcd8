#pragma once

#include "commands/command_table.h"

#include <functional>
#include <map>

namespace orvane {

class MapWindowWidget;
class MemoryGuard;
class ProgramWindow;
class Surroundings;

/// Passes each command that is picked in a window to its handler. A handler is plugged in under the
/// number of its command; a command without one is disabled in every menu.
class CommandDispatcher {
 public:
  using Handler = std::function<void(ProgramWindow& window)>;
  using MapHandler = std::function<void(MapWindowWidget& window)>;

  /// \param guard  every handler runs in it; must outlive this, as must `surroundings`
  CommandDispatcher(Surroundings& surroundings, MemoryGuard& guard)
      : surroundings_(surroundings), guard_(guard) {}

  /// Sets the handler of a command.
  void Plug(CommandId id, Handler handler);
  /// The same for a command that only makes sense in a map window; elsewhere it beeps.
  void PlugOnMap(CommandId id, const MapHandler& handler);
  /// The same for a map window and the windows that belong to one.
  void PlugOnMapSide(CommandId id, const MapHandler& handler);
  bool IsPlugged(CommandId id) const;

  /// Runs a command that was picked in a window: the window may answer it itself. An unknown id does
  /// nothing.
  void Run(int id, ProgramWindow& window);

 private:
  Surroundings& surroundings_;
  MemoryGuard& guard_;
  std::map<CommandId, Handler> handlers_;
};

}  // namespace orvane
