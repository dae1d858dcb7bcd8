#include "shell/command_dispatcher.h"

#include "shell/memory_guard.h"
#include "shell/program_window.h"
#include "shell/surroundings.h"

#include <utility>

namespace orvane {

void CommandDispatcher::Plug(CommandId id, Handler handler) { handlers_[id] = std::move(handler); }

void CommandDispatcher::PlugOnMap(CommandId id, const MapHandler& handler) {
  Plug(id, [this, handler](ProgramWindow& window) {
    window.Kind() == WindowKind::Map ? handler(*window.MapSide()) : surroundings_.Beep();
  });
}

void CommandDispatcher::PlugOnMapSide(CommandId id, const MapHandler& handler) {
  Plug(id, [this, handler](ProgramWindow& window) {
    window.MapSide() != nullptr ? handler(*window.MapSide()) : surroundings_.Beep();
  });
}

bool CommandDispatcher::IsPlugged(CommandId id) const {
  return handlers_.find(id) != handlers_.end();
}

void CommandDispatcher::Run(int id, ProgramWindow& window) {
  const CommandInfo* command = FindCommand(IsOldHelpCommand(id) ? CommandHelp : id);
  if (command == nullptr) return;
  guard_.Run([&] {
    if (window.Answer(command->id)) return;
    const auto handler = handlers_.find(command->id);
    if (handler == handlers_.end()) return surroundings_.Beep();
    handler->second(window);
  });
}

}  // namespace orvane
