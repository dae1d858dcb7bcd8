// What a user does in the panes beside a map, from the key or the button to the finished picture.
// Most trails are in one group; each range has a follow of its own.

#include "open_program.h"
#include "panes/trail_tree.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

namespace orvane {
namespace {

std::string MapText(int trails, int ranges) {
  std::string text;
  for (int i = 0; i < trails - ranges; ++i) {
    const std::string number = std::to_string(i);
    const std::string minutes = std::to_string(i % 50);
    text += "T\tPath " + number + "\tTrail\nG\tA" + number + "\tN1 " + minutes + "\tE10 1\nG\tB" +
            number + "\tN1 " + minutes + ".01\tE10 1\n";
  }
  for (int i = 0; i < ranges; ++i) {
    const std::string number = std::to_string(i);
    const std::string north = "\tN" + std::to_string(2 + i / 50) + " " + std::to_string(i % 50);
    text += "T\t\tGroup " + number + "\t\t2020-3-1\nG\t8:00" + north + "\tE10 1\nG\t9:00" + north +
            ".1\tE10 1\nG\t10:00" + north + "\tE10 1.1\nR\tRange " + number + "\nK\tGroup " +
            number + "\n";
  }
  return text;
}

/// A program whose window shows so many trails, a fifth of them with a range.
class OpenPanes {
 public:
  explicit OpenPanes(int trails) : map_(MapText(trails, trails / 5)), program_(map_.File()) {
    Group().visible = false;
    program_.Window().Panes().SetSizes({200, 400});
    OpenProgram::Handle();
  }

  PaneView& Trails() { return program_.Window().Panes().Trails().Rows(); }
  PaneView& Ranges() { return program_.Window().Panes().Ranges().Rows(); }

  /// The group of most trails.
  TrailPanelRow& Group() {
    for (TrailPanelRow& row : program_.Window().Shown().trailViews) {
      if (row.text == "Trail") return row;
    }
    return program_.Window().Shown().trailViews.front();
  }
  void Open(bool open) {
    Group().open = open;
    Trails().ShowChangedRows();
    Trails().scrollToBottom();
    OpenProgram::Handle();
  }

  static void Click(PaneView& pane, int x, int y) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, QPointF(x, y), pane.viewport()->mapToGlobal(QPointF(x, y)),
                        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(pane.viewport(), &event);
    }
    OpenProgram::Handle();
  }
  static void Press(PaneView& pane, int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&pane, &event);
    OpenProgram::Handle();
  }

 private:
  WrittenMap map_;
  OpenProgram program_;
};

void PaintTrails(benchmark::State& state, OpenPanes& panes) {
  panes.Open(true);
  for ([[maybe_unused]] auto _ : state) panes.Trails().viewport()->repaint();
}

/// An arrow key: clears the selection and selects the next row.
void StepDown(benchmark::State& state, OpenPanes& panes) {
  panes.Open(true);
  OpenPanes::Press(panes.Trails(), Qt::Key_Home);
  int step = 0;
  for ([[maybe_unused]] auto _ : state) {
    OpenPanes::Press(panes.Trails(), ++step % 100 < 50 ? Qt::Key_Down : Qt::Key_Up);
  }
}

/// A click on the group selects it with all trails; another one on a trail ends that.
void SelectGroup(benchmark::State& state, OpenPanes& panes) {
  panes.Open(true);
  const QModelIndex group = panes.Trails().model()->match(
      panes.Trails().model()->index(0, 0), Qt::DisplayRole, QStringLiteral("Trail"), 1)[0];
  panes.Trails().scrollTo(group, QAbstractItemView::PositionAtTop);
  OpenProgram::Handle();
  const int y = panes.Trails().visualRect(group).center().y();
  int step = 0;
  for ([[maybe_unused]] auto _ : state) {
    OpenPanes::Click(panes.Trails(), 100, ++step % 2 == 0 ? y : y + panes.Trails().RowHeight());
  }
}

void OpenGroup(benchmark::State& state, OpenPanes& panes) {
  const QModelIndex group = panes.Trails().model()->match(
      panes.Trails().model()->index(0, 0), Qt::DisplayRole, QStringLiteral("Trail"), 1)[0];
  panes.Trails().scrollTo(group, QAbstractItemView::PositionAtTop);
  OpenProgram::Handle();
  for ([[maybe_unused]] auto _ : state) {
    const int y = panes.Trails().visualRect(group).center().y();
    OpenPanes::Click(panes.Trails(), 10, y);
  }
}

void StepThroughRanges(benchmark::State& state, OpenPanes& panes) {
  OpenPanes::Press(panes.Ranges(), Qt::Key_Home);
  int step = 0;
  for ([[maybe_unused]] auto _ : state) {
    OpenPanes::Press(panes.Ranges(), ++step % 100 < 50 ? Qt::Key_Down : Qt::Key_Up);
  }
}

/// Makes all rows of both panes, as for a new window or after an import.
void BuildRows(benchmark::State& state, OpenPanes& panes) {
  for ([[maybe_unused]] auto _ : state) {
    panes.Trails().ShowRows();
    panes.Ranges().ShowRows();
    OpenProgram::Handle();
  }
}

using Steps = void (*)(benchmark::State& state, OpenPanes& panes);

void InPanes(benchmark::State& state, Steps steps) {
  OpenPanes panes(static_cast<int>(state.range(0)));
  steps(state, panes);
}
BENCHMARK_CAPTURE(InPanes, paint, PaintTrails)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InPanes, arrow, StepDown)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InPanes, group, SelectGroup)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InPanes, open, OpenGroup)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InPanes, ranges, StepThroughRanges)
    ->Arg(10)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InPanes, rows, BuildRows)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
