#include "cli/print_command.h"

#include "base/files.h"
#include "cli/edit_session.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "pages/map_pages.h"
#include "pages/print_dialog.h"
#include "paint/print_job.h"

namespace orvane {

namespace {

void SetIfGiven(const std::optional<std::string>& given, std::string& field) {
  if (given) field = *given;
}

void SetFields(const PrintRequest& request, PrintDialog& dialog) {
  if (!request.area.empty()) {
    dialog.mode = PrintMode::Area;
    dialog.north = request.area[0];
    dialog.south = request.area[1];
    dialog.east = request.area[2];
    dialog.west = request.area[3];
    SetIfGiven(request.scale, dialog.areaScale);
  } else if (!request.around.empty()) {
    dialog.mode = PrintMode::AroundPoint;
    dialog.centerLatitude = request.around[0];
    dialog.centerLongitude = request.around[1];
    SetIfGiven(request.vertical, dialog.vertical);
    SetIfGiven(request.horizontal, dialog.horizontal);
    SetIfGiven(request.scale, dialog.pointScale);
    SetIfGiven(request.rotation, dialog.rotation);
  }
  SetIfGiven(request.label, dialog.label);
  SetIfGiven(request.pointSize, dialog.pointSize);
  SetIfGiven(request.gridColor, dialog.gridColor);
}

/// Writes the file, or to standard output if it is "-". \return an `ExitStatus`
int Write(const std::string& output, const std::string& bytes, LineMessages& messages) {
  if (output == "-") {
    Print(bytes);
    return ExitDone;
  }
  switch (WriteFileAtomically(output, bytes)) {
    case WriteResult::Done:
      return ExitDone;
    case WriteResult::CannotOpen:
      NoteError(messages, "Can't open file %s", {output});
      break;
    case WriteResult::Failed:
      NoteError(messages, "Can't write file %s", {output});
      break;
  }
  return ExitFailed;
}

/// Makes the PDF file of all pages, after the question about a long job.
int PrintToPdf(PrintedPages& pages, const QPageLayout& layout, LineMessages& messages,
               const PrintRequest& request) {
  if (pages.Count() > MostPagesUnasked &&
      AskUser(messages, "Print", "Print", "Cancel", "", "This makes %s pages. Print them all?",
              {std::to_string(pages.Count())}) != 1) {
    return ExitFailed;
  }
  const auto bytes = PdfOf(pages, layout, request.resolution, nullptr);
  if (!bytes) {
    NoteError(messages, "Can't draw the pages");
    return ExitFailed;
  }
  return Write(request.output, *bytes, messages);
}

}  // namespace

int PrintCommand(Map& map, LineMessages& messages, const PrintRequest& request) {
  const MapWindow window = NewView(map);
  const QPageLayout layout =
      PdfLayout(request.paper, request.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  PrintMapWindow view = MakePrintView(window, DeviceOf(layout, request.resolution));
  PrintSettings settings;
  PrintDialog dialog = OpenPrintDialog(view, settings);
  SetFields(request, dialog);
  if (const auto refusal = AcceptPrintDialog(dialog, view, settings)) {
    messages.Post(Severity::Error, *refusal);
    return ExitFailed;
  }
  MapPages pages(std::move(view));
  return PrintToPdf(pages, layout, messages, request);
}

}  // namespace orvane
