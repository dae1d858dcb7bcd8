#include "cli/print_command.h"

#include "base/dates.h"
#include "base/file_names.h"
#include "base/write_failure.h"
#include "cli/edit_session.h"
#include "cli/exit_status.h"
#include "cli/profile_command.h"
#include "cli/reports_command.h"
#include "cli/text_output.h"
#include "model/styles.h"
#include "pages/map_pages.h"
#include "pages/page_limits.h"
#include "pages/print_dialog.h"
#include "pages/report_pages.h"
#include "paint/print_job.h"

#include <memory>

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
  const WriteResult result = WriteFileAtomically(output, bytes);
  if (result == WriteResult::Done) return ExitDone;
  messages.Post(Severity::Error, WriteFailure(result, output));
  return ExitFailed;
}

/// Makes the PDF file of all pages, after the question about a long job.
int PrintToPdf(PrintedPages& pages, const QPageLayout& layout, LineMessages& messages,
               const PrintRequest& request) {
  if (!MayPrint(messages, CountPages(pages, request.resolution))) return ExitFailed;
  NoteCutLines(messages, pages);
  const auto bytes = PdfOf(pages, layout, request.resolution);
  if (!bytes) {
    NoteError(messages, "Can't draw the pages");
    return ExitFailed;
  }
  return Write(request.output, *bytes, messages);
}

/// The pages of the map, or nothing after the message of a refusal.
std::unique_ptr<PrintedPages> PagesOfMap(const MapWindow& window, const PageDevice& device,
                                         LineMessages& messages, const PrintRequest& request) {
  PrintMapWindow view = MakePrintView(window, device);
  PrintSettings settings;
  PrintDialog dialog = OpenPrintDialog(view, settings);
  SetFields(request, dialog);
  if (const auto refusal = AcceptPrintDialog(dialog, view, settings)) {
    messages.Post(Severity::Error, refusal->message);
    return nullptr;
  }
  return std::make_unique<MapPages>(std::move(view));
}

/// The pages of a report, or nothing after a message.
std::unique_ptr<PrintedPages> PagesOfReport(MapWindow& window, const ReportPageFrame& frame,
                                            LineMessages& messages, const PrintRequest& request) {
  Map& map = *window.map;
  const CoordinateDisplay display = request.format.value_or(CoordinateDisplay::Minutes);
  switch (request.kind) {
    case PrintedKind::Map:
      break;
    case PrintedKind::Trails:
      if (auto trails = NamedTrails(window, messages, request.trails)) {
        return std::make_unique<TrailSummaryPages>(frame, std::move(*trails),
                                                   map.magneticDeviation);
      }
      break;
    case PrintedKind::Index:
      return std::make_unique<PointIndexPages>(frame, BuildPointIndex(map, window.centralLongitude),
                                               display);
    case PrintedKind::Ranges:
      if (auto rows = NamedRanges(window, messages, request.ranges)) {
        return std::make_unique<RangeStatsPages>(
            frame, std::move(*rows), map.smName,
            StyleOf<TravelChartMode>(request.measure.value_or(0)));
      }
      break;
    case PrintedKind::Profile: {
      const std::string trail = request.trails.empty() ? "" : request.trails.front();
      if (auto view = OpenProfile(map, messages, trail, request.transect)) {
        return std::make_unique<ProfilePages>(frame, std::move(*view), display);
      }
      break;
    }
  }
  return nullptr;
}

}  // namespace

int PrintCommand(Map& map, LineMessages& messages, const PrintRequest& request) {
  MapWindow window = NewView(map);
  const QPageLayout layout =
      PdfLayout(request.paper, request.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  const PageDevice device = DeviceOf(layout, request.resolution);
  const ReportPageFrame frame{device, std::string(BaseName(map.fileName)), FormatDate(LocalDate())};
  const auto pages = request.kind == PrintedKind::Map
                         ? PagesOfMap(window, device, messages, request)
                         : PagesOfReport(window, frame, messages, request);
  return pages ? PrintToPdf(*pages, layout, messages, request) : ExitFailed;
}

}  // namespace orvane
