#include "shell/reports/range_stats_window.h"

#include "model/map.h"
#include "reports/chart_picture.h"
#include "reports/range_stats.h"
#include "reports/shown_range_stats.h"
#include "shell/map_window_widget.h"
#include "shell/reports/report_area.h"
#include "view/map_window.h"

#include <QKeyEvent>

#include <utility>

namespace orvane {
namespace {

constexpr QSize FirstSize(760, 640);
constexpr double FontSize = 9;  // points

FontSizes Monospaced() { return {.small = FontSize, .monospaced = true}; }

}  // namespace

RangeStatsWindow::RangeStatsWindow(Shell& shell, MapWindowWidget& mapWindow,
                                   RangeStatsCounts& counts)
    : RangeStatsWindow(shell, mapWindow, std::make_unique<ShownRangeStats>(counts)) {}

RangeStatsWindow::RangeStatsWindow(Shell& shell, MapWindowWidget& mapWindow,
                                   std::unique_ptr<ShownRangeStats> report)
    : LinesWindow(shell, mapWindow, WindowKind::RangeStats, QStringLiteral("rangeStats"),
                  QStringLiteral("Range Stats"), std::move(report), Monospaced()),
      shown_(static_cast<ShownRangeStats&>(Report())) {
  ShowTitle("Range Stats");
  Area().emptyText =
      QStringLiteral("Select ranges in the list of ranges, and their figures show here");
  Area().takeKey = [this](const QKeyEvent& event) { return TakeKey(event); };
  resize(FirstSize);
  FollowMap();
  ShowMenu();
}

void RangeStatsWindow::FollowMap() {
  const MapWindow& view = TheMapWindow().Shown();
  shown_.View().background = view.background;
  const bool differs = shown_.Show(SelectedRanges(view.rangeViews), view.map->smName);
  if (differs) Area().ClearSelection();
  Area().ShowLines();
}

ReportMenuFacts RangeStatsWindow::MenuFacts() const {
  return {.picture = "Chart", .hasPicture = shown_.ChartRow(-1) != nullptr};
}

std::unique_ptr<PrintedPages> RangeStatsWindow::MakePages(const ReportPageFrame& frame) {
  return std::make_unique<RangeStatsPages>(frame, shown_.Rows(), shown_.Names(), shown_.Measure());
}

std::optional<ReportFile> RangeStatsWindow::FileToSave() {
  return ReportFile{.title = "Save Range statistics as...",
                    .name = RangeStatsFileName(shown_.Rows()),
                    .text = shown_.FileText()};
}

bool RangeStatsWindow::TakeKey(const QKeyEvent& event) {
  // Some keyboards have their digits on the shifted keys.
  const Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (held != Qt::NoModifier || event.key() < Qt::Key_0 || event.key() > Qt::Key_3) return false;
  const auto measure = static_cast<TravelChartMode>(event.key() - Qt::Key_0);
  if (shown_.ChooseMeasure(measure)) Area().ShowScroll();
  return true;
}

bool RangeStatsWindow::CopyLines() {
  const ReportSelection& selection = Area().Selection();
  // A chart by itself has no lines, so it is copied as the picture that it is.
  const bool onlyChart = selection.lines.size() == 1 && shown_.IsChart(*selection.lines.begin());
  if (!onlyChart) return LinesWindow::CopyLines();
  if (const auto picture = PictureToSave()) CopyPicture(*picture);
  return true;
}

std::optional<ReportPicture> RangeStatsWindow::PictureToSave() {
  const RangePanelRow* row = shown_.ChartRow(Area().Selection().current);
  if (row == nullptr) return std::nullopt;
  const std::shared_ptr<const ChartPicture> chart =
      PictureOfChart(*row, shown_.Measure(), shown_.Names());
  const ReportView& view = shown_.View();
  ReportPicture picture;
  picture.name = RangeFileName(*row);
  picture.numbers = ChartTable(*chart);
  picture.drawing = {
      .width = view.viewWidth,
      .height = ChartPictureHeight(view.lineHeight),
      .draw = [chart, width = view.viewWidth, margin = RangeStatsMargin * view.unit](
                  Canvas& canvas) { DrawChartPicture(*chart, width, margin, canvas); },
      .fonts = Monospaced()};
  return picture;
}

}  // namespace orvane
