// What a user waits for in a map window, from the event to the finished picture: a step of a pan,
// a step of the wheel, a move of the pointer. The window has 1200 x 800 pixels.

#include "mapfile/open_map.h"
#include "shell/map/map_panes.h"
#include "shell/map/map_view.h"
#include "view/fit_to_map.h"
#include "wide_map.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

namespace orvane {
namespace {

constexpr QSize WindowSize(1200, 800);
constexpr QPointF Middle(500, 400);

/// A shown window on a map that shows all of it.
class ShownMap {
 public:
  explicit ShownMap(Map& map) : panes_(map, {160, 300}, nullptr) {
    panes_.resize(WindowSize);
    panes_.show();
    QApplication::processEvents();
    FitToMap(View().Shown());
    View().RequestRepaint();
    QApplication::processEvents();
  }

  MapView& View() { return panes_.View(); }

  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, View().mapToGlobal(at), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&View(), &event);
    QApplication::processEvents();
  }
  void Wheel(int units) {
    QWheelEvent event(Middle, View().mapToGlobal(Middle), QPoint(), QPoint(0, units), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&View(), &event);
    QApplication::processEvents();
  }

 private:
  MapPanes panes_;
};

void PanBySteps(benchmark::State& state, Map& map) {
  ShownMap shown(map);
  shown.Mouse(QEvent::MouseButtonPress, Middle, Qt::RightButton, Qt::RightButton);
  int step = 0;
  for ([[maybe_unused]] auto _ : state) {
    const QPointF at = Middle + QPointF(++step % 2 == 0 ? 0 : 17, 0);
    shown.Mouse(QEvent::MouseMove, at, Qt::NoButton, Qt::RightButton);
  }
  shown.Mouse(QEvent::MouseButtonRelease, Middle, Qt::RightButton, Qt::NoButton);
}

void ZoomBySteps(benchmark::State& state, Map& map) {
  ShownMap shown(map);
  int step = 0;
  for ([[maybe_unused]] auto _ : state) shown.Wheel(++step % 2 == 0 ? -60 : 60);
}

void MovePointer(benchmark::State& state, Map& map) {
  ShownMap shown(map);
  int step = 0;
  for ([[maybe_unused]] auto _ : state) {
    shown.Mouse(QEvent::MouseMove, Middle + QPointF(++step % 50, 0), Qt::NoButton, Qt::NoButton);
  }
}

using Steps = void (*)(benchmark::State& state, Map& map);

void OnSite(benchmark::State& state, Steps steps) {
  RecordedMessages messages;
  Workspace workspace(messages);
  steps(state, OpenMap(workspace, EXAMPLE_MAP));
}
BENCHMARK_CAPTURE(OnSite, pan, PanBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OnSite, zoom, ZoomBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OnSite, pointer, MovePointer)->Unit(benchmark::kMillisecond);

void OnPoints(benchmark::State& state, Steps steps) {
  WideMap wide(static_cast<int>(state.range(0)), LabelMode::Auto);
  steps(state, wide.TheMap());
}
BENCHMARK_CAPTURE(OnPoints, pan, PanBySteps)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OnPoints, zoom, ZoomBySteps)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OnPoints, pointer, MovePointer)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
