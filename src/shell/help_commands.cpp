#include "shell/help_commands.h"

#include "shell/about_box.h"
#include "shell/help/help_guide.h"
#include "shell/help/help_topics.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {

void PlugHelpCommands(Shell& shell) {
  auto* guide = new HelpGuide(shell);
  shell.Commands().Plug(CommandHelp,
                        [guide](ProgramWindow&) { guide->ShowPage(HelpContentsPage); });
  shell.Commands().Plug(CommandAbout, [](ProgramWindow& window) {
    const bool withMap = window.Kind() == WindowKind::Map;
    AboutBox box(withMap ? &window.MapSide()->TheMap() : nullptr, &window.Widget());
    box.exec();
  });
}

}  // namespace orvane
