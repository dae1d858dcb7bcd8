#include "shell/reports/trail_summary_window.h"

#include "model/map.h"
#include "reports/shown_trail_summary.h"
#include "shell/map_window_widget.h"
#include "shell/reports/report_area.h"
#include "view/map_window.h"

#include <utility>

namespace orvane {
namespace {

constexpr QSize FirstSize(800, 420);

}  // namespace

TrailSummaryWindow::TrailSummaryWindow(Shell& shell, MapWindowWidget& mapWindow)
    : TrailSummaryWindow(shell, mapWindow, std::make_unique<ShownTrailSummary>()) {}

TrailSummaryWindow::TrailSummaryWindow(Shell& shell, MapWindowWidget& mapWindow,
                                       std::unique_ptr<ShownTrailSummary> report)
    : LinesWindow(shell, mapWindow, WindowKind::TrailSummary, QStringLiteral("trailSummary"),
                  QStringLiteral("Trail Summary"), std::move(report), {}),
      shown_(static_cast<ShownTrailSummary&>(Report())) {
  resize(FirstSize);
  FollowMap();
  ShowMenu();
}

void TrailSummaryWindow::FollowMap() {
  const MapWindow& view = TheMapWindow().Shown();
  shown_.View().background = view.background;
  const bool differs = shown_.Show(SelectedTrails(view.trailViews), view.map->magneticDeviation);
  if (differs) Area().ClearSelection();
  ShowTitle(TrailSummaryTitle(view.trailViews));
  Area().ShowLines();
}

std::unique_ptr<PrintedPages> TrailSummaryWindow::MakePages(const ReportPageFrame& frame) {
  const MapWindow& view = TheMapWindow().Shown();
  return std::make_unique<TrailSummaryPages>(frame, SelectedTrails(view.trailViews),
                                             view.map->magneticDeviation);
}

std::optional<ReportFile> TrailSummaryWindow::FileToSave() {
  return ReportFile{
      .title = "Save trail summary as...", .name = "untitled.txt", .text = shown_.FileText()};
}

}  // namespace orvane
