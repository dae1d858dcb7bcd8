// Reports of 10,000 rows: a step of the scroll bar, from the key to the finished picture, plain and
// with all lines selected. The windows have 1200 x 800 pixels.

#include "base/messages.h"
#include "geo/earth.h"
#include "model/workspace.h"
#include "reports/shown_point_index.h"
#include "reports/shown_range_stats.h"
#include "reports/shown_trail_summary.h"
#include "shell/reports/report_area.h"

#include <QApplication>
#include <QKeyEvent>

#include <benchmark/benchmark.h>
#include <deque>
#include <string>

namespace orvane {
namespace {

constexpr int Rows = 10000;
constexpr QSize WindowSize(1200, 800);

/// Trails of 100 m, each with a name.
class ManyTrails {
 public:
  ManyTrails() {
    std::vector<Trail*> shown;
    for (int i = 0; i < Rows; ++i) {
      Trail& trail = trails_.emplace_back();
      trail.name = "Trail " + std::to_string(i);
      for (const double north : {0.0, 100.0}) {
        Point& point = MakePoint(map_, "");
        point.geo = MetersToLatLon(north, i);
        point.geo.altitude = 500;
        point.flags |= PointPlaced;
        trail.points.push_back(&point);
      }
      shown.push_back(&trail);
    }
    report_.Show(std::move(shown), 3);
  }
  ShownReport& Report() { return report_; }

 private:
  RecordedMessages messages_;
  Workspace workspace_{messages_};
  Map& map_ = MakeMap(workspace_, "many.map");
  std::deque<Trail> trails_;
  ShownTrailSummary report_;
};

/// Names with altitudes.
class ManyNames {
 public:
  ManyNames() {
    PointIndex index;
    for (int i = 0; i < Rows; ++i) {
      PointIndexEntry& entry = index.entries.emplace_back();
      entry.name = "Fig" + std::to_string(i);
      entry.position = {.lat = i * 1e-4, .lon = 115, .altitude = 300};
    }
    report_.Show(std::move(index));
  }
  ShownReport& Report() { return report_; }

 private:
  ShownPointIndex report_;
};

/// Ranges with a chart and lines of travel, about 10,000 lines together.
class ManyRanges {
 public:
  ManyRanges() {
    constexpr int LinesOfRange = 15;
    std::vector<const RangePanelRow*> shown;
    for (int i = 0; i < Rows / LinesOfRange; ++i) {
      Range& range = ranges_.emplace_back();
      range.meanDailyPath = 1000;
      for (TravelTally& slot : range.slots) slot.distance = i % 100;
      for (TravelTally& hour : range.hours) hour.distance = 12 * (i % 100);
      RangePanelRow& row = rows_.emplace_back();
      row.text = "Range " + std::to_string(i);
      row.range = &range;
      shown.push_back(&row);
    }
    report_.Show(std::move(shown), {});
  }
  ShownReport& Report() { return report_; }

 private:
  std::deque<Range> ranges_;
  std::deque<RangePanelRow> rows_;
  RangeStatsCounts counts_;
  ShownRangeStats report_{counts_};
};

template <typename Many>
void ScrollBySteps(benchmark::State& state, bool selected) {
  Many many;
  ReportArea area(many.Report(), {}, nullptr);
  area.resize(WindowSize);
  area.show();
  QApplication::processEvents();
  if (selected) area.SelectAll();
  QApplication::processEvents();
  for ([[maybe_unused]] auto _ : state) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(&area, &key);
    QApplication::processEvents();
  }
}
constexpr auto ScrollTrails = ScrollBySteps<ManyTrails>;
constexpr auto ScrollNames = ScrollBySteps<ManyNames>;
constexpr auto ScrollRanges = ScrollBySteps<ManyRanges>;
BENCHMARK_CAPTURE(ScrollTrails, plain, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollTrails, selected, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollNames, plain, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollNames, selected, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollRanges, plain, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollRanges, selected, true)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
