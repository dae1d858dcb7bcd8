#include "pages/map_pages.h"
#include "pages/paper.h"
#include "pages/print_dialog.h"
#include "paint/drawing_session.h"
#include "paint/print_job.h"
#include "paint/qt_canvas.h"
#include "view/draw_map.h"
#include "view/view_transform.h"
#include "wide_map.h"

#include <QImage>

#include <benchmark/benchmark.h>
#include <utility>

namespace orvane {
namespace {

constexpr int Width = 1600;
constexpr int Height = 1200;

void DrawAgainAndAgain(benchmark::State& state, WideMap& wide, bool smoothLines) {
  QImage image(Width, Height, QImage::Format_RGB32);
  const CanvasFonts fonts(96);
  MapWindow& view = wide.View();
  for ([[maybe_unused]] auto _ : state) {
    QPainter painter(&image);
    QtCanvas canvas(painter, fonts, {0, 0, Width, Height}, {.antialias = smoothLines});
    view.target = &canvas;
    TakeFontMetrics(view);
    canvas.Clear(view.background);
    DrawMap(view, {0, 0, Width, Height});
    view.target = nullptr;
  }
}

void DrawLabeled(benchmark::State& state) {
  WideMap wide(static_cast<int>(state.range(0)),
               StyleOf<LabelMode>(static_cast<int>(state.range(1))));
  wide.Look(Width, Height);
  DrawAgainAndAgain(state, wide, state.range(2) != 0);
}
BENCHMARK(DrawLabeled)
    ->ArgNames({"points", "labelMode", "smooth"})
    ->ArgsProduct({{20000, 200000},
                   {NumberOf(LabelMode::Auto), NumberOf(LabelMode::None), NumberOf(LabelMode::All)},
                   {0, 1}})
    ->Unit(benchmark::kMillisecond);

void DrawZoomedIn(benchmark::State& state) {
  WideMap wide(static_cast<int>(state.range(0)), LabelMode::Auto);
  wide.Look(Width, Height);
  FitToBounds(wide.View(), 0.055, 0.045, 0.055, 0.045);
  DrawAgainAndAgain(state, wide, state.range(1) != 0);
}
BENCHMARK(DrawZoomedIn)
    ->ArgNames({"points", "smooth"})
    ->ArgsProduct({{200000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

void MeasureNames(benchmark::State& state) {
  const CanvasFonts fonts(96);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(fonts.TextWidth(CanvasFont::Label, "P123456"));
  }
}
BENCHMARK(MeasureNames);

void DrawNames(benchmark::State& state) {
  QImage image(Width, Height, QImage::Format_RGB32);
  image.fill(Qt::white);
  const CanvasFonts fonts(96);
  QPainter painter(&image);
  QtCanvas canvas(painter, fonts, {0, 0, Width, Height});
  int i = 0;
  for ([[maybe_unused]] auto _ : state) {
    canvas.DrawText({(i * 37) % Width, (i * 91) % Height}, "P123456");
    ++i;
  }
}
BENCHMARK(DrawNames);

/// One page with a whole map on it, as a PDF file.
void PrintLabeled(benchmark::State& state) {
  constexpr int Resolution = 300;
  WideMap wide(static_cast<int>(state.range(0)), LabelMode::All);
  wide.Look(Width, Height);
  const QPageLayout layout = PdfLayout(*FindPaper("A4"), QPageLayout::Portrait);
  size_t bytes = 0;
  for ([[maybe_unused]] auto _ : state) {
    PrintMapWindow view = MakePrintView(wide.View(), DeviceOf(layout, Resolution));
    PrintSettings settings;
    PrintDialog dialog = OpenPrintDialog(view, settings);
    if (AcceptPrintDialog(dialog, view, settings)) state.SkipWithError("the page was refused");
    MapPages pages(std::move(view));
    if (const auto file = PdfOf(pages, layout, Resolution)) bytes = file->size();
  }
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(PrintLabeled)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  const orvane::DrawingSession session;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
