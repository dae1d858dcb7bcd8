#include "shell/help_commands.h"

#include "shell/about_box.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {

void PlugHelpCommands(Shell& shell) {
  shell.Plug(CommandAbout, [](ProgramWindow& window) {
    const bool withMap = window.Kind() == WindowKind::Map;
    AboutBox box(withMap ? &window.MapSide()->TheMap() : nullptr, &window.Widget());
    box.exec();
  });
}

}  // namespace orvane
