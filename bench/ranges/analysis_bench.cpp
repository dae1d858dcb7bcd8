// A large site: 2,000 follows of 100 stops each by 50 groups, a range for each, all of which
// overlap, so that there are 1,225 pairs; on a grid of 50 m.

#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/workspace.h"
#include "ranges/analysis.h"
#include "ranges/clusters.h"
#include "ranges/intersections.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <random>
#include <string>

namespace orvane {
namespace {

constexpr int Groups = 50;
constexpr int Follows = 2000;
constexpr int Stops = 100;

const std::string& SiteText() {
  static const std::string text = [] {
    std::mt19937 random(5);
    const auto step = [&](double most) {
      return most * (static_cast<double>(random()) / 2147483648.0 - 1);
    };
    std::string site = "G\tCorner\tN0.98\tE29.98\t\t1\nH\tCorner\t50\t100\t100\t0\tA1\t11\n";
    char line[160];
    for (int follow = 0; follow < Follows; ++follow) {
      const int group = follow % Groups;
      std::snprintf(line, sizeof line, "\nT\t\tGroup%d\tAna\t%d-%d-%d\n", group,
                    1990 + follow / 336, 1 + follow / 28 % 12, 1 + follow % 28);
      site += line;
      double lat = 1 + 0.0003 * (group / 10) + step(0.004);
      double lon = 30 + 0.0003 * (group % 10) + step(0.004);
      for (int stop = 0; stop < Stops; ++stop) {
        lat += step(0.0003);
        lon += step(0.0003);
        const int minute = 360 + 7 * stop;
        std::snprintf(line, sizeof line, "G\t%02d%02d\tN%.8f\tE%.8f\t\t1\t,%d,,\n", minute / 60,
                      minute % 60, lat, lon, static_cast<int>(random() % 5));
        site += line;
      }
    }
    site += '\n';
    for (int group = 0; group < Groups; ++group) {
      std::snprintf(line, sizeof line, "R\tRange%d\nK\tGroup%d\n", group, group);
      site += line;
    }
    return site;
  }();
  return text;
}

/// The site, read and solved, its ranges not yet analysed but once.
struct Site {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "site.map");
  Site() {
    ReadMapText(map, SiteText());
    FinishMap(map);
  }
};

void OpenSite(benchmark::State& state) {
  SiteText();
  for (auto unused : state) {
    (void)unused;
    const Site site;
    state.counters["ranges"] =
        static_cast<double>(std::distance(site.map.ranges.begin(), site.map.ranges.end()));
    state.counters["overlaps"] = static_cast<double>(
        std::distance(site.map.intersections.begin(), site.map.intersections.end()));
    state.counters["messages"] = static_cast<double>(site.messages.Entries().size());
  }
}
BENCHMARK(OpenSite)->Unit(benchmark::kMillisecond);

void AnalyzeRanges(benchmark::State& state) {
  Site site;
  for (auto unused : state) {
    (void)unused;
    for (Range& range : site.map.ranges) AnalyzeRange(range, site.map);
  }
}
BENCHMARK(AnalyzeRanges)->Unit(benchmark::kMillisecond);

void ClusterRanges(benchmark::State& state) {
  Site site;
  for (auto unused : state) {
    (void)unused;
    for (const Range& range : site.map.ranges) {
      benchmark::DoNotOptimize(ClusterPoints(range.points, site.messages));
    }
  }
}
BENCHMARK(ClusterRanges)->Unit(benchmark::kMillisecond);

void IntersectAllPairs(benchmark::State& state) {
  Site site;
  for (auto unused : state) {
    (void)unused;
    std::forward_list<RangeIntersection> list;
    for (auto a = site.map.ranges.begin(); a != site.map.ranges.end(); ++a) {
      for (auto b = std::next(a); b != site.map.ranges.end(); ++b) {
        IntersectRanges(*a, *b, list, site.messages);
      }
    }
    benchmark::DoNotOptimize(list);
  }
}
BENCHMARK(IntersectAllPairs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane
