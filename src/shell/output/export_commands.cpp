#include "shell/output/export_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/save_map.h"
#include "output/export_fields.h"
#include "output/geojson.h"
#include "paint/display_text.h"
#include "panes/pane_clicks.h"
#include "shell/files/dialog_start.h"
#include "shell/map_window_widget.h"
#include "shell/output/export_dialog.h"
#include "shell/panes/contour_work.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

namespace orvane {
namespace {

/// \return the file, or nothing if the user cancelled
std::optional<std::string> AskExportFile(Shell& shell, MapWindowWidget& window,
                                         ExportFormat format) {
  FileSpecification& file = shell.Maps().Files().exports;
  const std::string ending(ExportEnding(format));
  PrepareSpecification(file, shell.Maps().Files().maps, StartOfDialogs(shell, window), ending);
  file.type = ending;
  const std::string_view name = BaseName(window.TheMap().fileName);
  file.name = std::string(name.substr(0, name.rfind('.'))) + "." + ending;
  if (!WasChosen(shell.Dialogs().AskSave("Export...", file), shell.TheWorkspace().messages))
    return std::nullopt;
  return PathOf(file);
}

/// Makes the contours that a layer of them needs. \return false if the user cancelled
bool MakeLayerContours(Shell& shell, Map& map, const LayerRequest& request) {
  if (std::find(request.layers.begin(), request.layers.end(), "contours") == request.layers.end()) {
    return true;
  }
  bool done = false;
  RunContourWork(
      shell, [&](const ContourProgress& progress) { done = MakeMissingContours(map, progress); });
  return done;
}

void ExportMap(Shell& shell, MapWindowWidget& window, ExportFields& fields) {
  Map& map = window.TheMap();
  Messages& messages = shell.TheWorkspace().messages;
  const LoadedModule& module = LoadFormatModule();
  ExportDialog dialog(map, fields, module, &window);
  if (dialog.exec() != QDialog::Accepted) return;
  LayerRequest request = dialog.Request();
  const auto path = AskExportFile(shell, window, fields.format);
  if (!path) return;
  request.path = *path;
  const bool isGeoJson = !LayerFormatOf(fields.format);
  if (!isGeoJson && !MayReplaceLayers(request, messages)) return;
  if (!isGeoJson && !MakeLayerContours(shell, map, request)) return;
  const QString name = DisplayText(BaseName(map.fileName));
  const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Exporting %1").arg(name),
                      shell.Clock());
  if (isGeoJson) {
    if (ExportGeoJson(map, *path)) PostNote(messages, "Exported everything to %s", {*path});
    return;
  }
  const LayerOutcome outcome = ExportLayers(map, request, module);
  if (!outcome.summary.empty()) messages.Post(Severity::Note, outcome.summary);
}

}  // namespace

void PlugExport(Shell& shell) {
  const auto fields = std::make_shared<ExportFields>();
  shell.Commands().PlugOnMap(CommandExport, [&shell, fields](MapWindowWidget& window) {
    ExportMap(shell, window, *fields);
  });
}

}  // namespace orvane
