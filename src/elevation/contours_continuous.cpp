#include "elevation/contours_continuous.h"

#include "model/workspace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

// A corner is above a level if it has it or more. A level crosses an edge if one end is above it
// and the other is not, so a cell has 0, 2 or 4 crossings of a level on its sides, and they pair
// up:
//
//     +----N----+     two: a segment joins them
//     |         |     four: two corners across from each other are above. If the mean of the
//     corners W         E     is above too, they are connected in the middle and the segments cut
//     off the |         |     two low corners; otherwise they cut off the two high ones.
//     +----S----+
//
// Each crossing gets one segment from the cell at either side of its edge. So a line that is
// followed from crossing to crossing ends at an edge with one cell only, on the border, or comes
// back to where it began.

namespace orvane {

namespace {

using Crossing = std::uint32_t;
constexpr Crossing NoCrossing = std::numeric_limits<Crossing>::max();

/// The levels that cross an edge or a cell, as multiples of the interval from `first` to `last`.
struct LevelSpan {
  double first = 0;
  double last = -1;
  bool IsEmpty() const { return !(first <= last); }
  double Count() const { return IsEmpty() ? 0 : last - first + 1; }
};

class ContinuousTracer {
 public:
  explicit ContinuousTracer(const ContourWork& work)
      : work_(work), rows_(work.lats.size()), columns_(work.lons.size()) {}

  /// \return false if there are too many
  bool FindCrossings() {
    rowEdges_.resize(rows_ * columns_);
    columnEdges_.resize(rows_ * columns_);
    for (size_t r = 0; r < rows_; ++r) {
      for (size_t c = 0; c < columns_; ++c) {
        if (c + 1 < columns_ && !AddEdge(rowEdges_[Node(r, c)], {r, c}, {r, c + 1})) return false;
        if (r + 1 < rows_ && !AddEdge(columnEdges_[Node(r, c)], {r, c}, {r + 1, c})) return false;
      }
    }
    links_.assign(places_.size(), {NoCrossing, NoCrossing});
    return true;
  }

  /// \return false if the run was cancelled
  bool ConnectCrossings() {
    constexpr const char* Stage = "Connecting contours...";
    constexpr size_t Parts = 100;
    if (!work_.Reach(Stage, 0)) return false;
    const size_t cellRows = rows_ - 1;
    for (size_t r = 0; r < cellRows; ++r) {
      for (size_t c = 0; c + 1 < columns_; ++c) JoinCell(r, c);
      if (!work_.Reach(Stage, static_cast<int>((r + 1) * Parts / cellRows))) return false;
    }
    isTraced_.assign(places_.size(), false);
    // Lines with ends first, from one of them; what is left are rings.
    for (Crossing crossing = 0; crossing < places_.size(); ++crossing) {
      if (links_[crossing][1] == NoCrossing && !isTraced_[crossing]) Trace(crossing);
    }
    for (Crossing crossing = 0; crossing < places_.size(); ++crossing) {
      if (!isTraced_[crossing]) Trace(crossing);
    }
    return true;
  }

  std::vector<ContourLine> TakeLines() { return std::move(lines_); }

 private:
  struct Corner {
    size_t r = 0;
    size_t c = 0;
  };
  /// The crossings of an edge, by rising level.
  struct Edge {
    Crossing begin = 0;
    std::uint32_t count = 0;
    double firstLevel = 0;  ///< in intervals
  };

  size_t Node(size_t r, size_t c) const { return r * columns_ + c; }
  double Value(Corner corner) const { return work_.values[Node(corner.r, corner.c)]; }

  /// The levels above `low`, up to `high` and with it.
  LevelSpan LevelsBetween(double low, double high) const {
    if (!std::isfinite(low) || !std::isfinite(high)) return {};
    LevelSpan span{std::floor(low / work_.interval) + 1, std::floor(high / work_.interval)};
    // A quotient is rounded; the levels themselves are whole numbers and exact.
    if (span.first * work_.interval <= low) ++span.first;
    if ((span.first - 1) * work_.interval > low) --span.first;
    if (span.last * work_.interval > high) --span.last;
    if ((span.last + 1) * work_.interval <= high) ++span.last;
    return span;
  }

  bool AddEdge(Edge& edge, Corner from, Corner to) {
    const double a = Value(from);
    const double b = Value(to);
    const LevelSpan levels = LevelsBetween(std::min(a, b), std::max(a, b));
    if (levels.IsEmpty()) return true;
    if (!(levels.Count() <= MostLevelsOfEdge) ||
        static_cast<double>(places_.size()) + levels.Count() > MostCrossings) {
      return false;
    }
    edge.begin = static_cast<Crossing>(places_.size());
    edge.count = static_cast<std::uint32_t>(levels.Count());
    edge.firstLevel = levels.first;
    const auto between = [](double low, double high, double t) {
      return std::clamp(low + (high - low) * t, low, high);
    };
    for (std::uint32_t k = 0; k < edge.count; ++k) {
      const double level = (levels.first + k) * work_.interval;
      const double t = (level - a) / (b - a);
      places_.push_back({between(work_.lats[from.r], work_.lats[to.r], t),
                         between(work_.lons[from.c], work_.lons[to.c], t),
                         static_cast<float>(level)});
    }
    return true;
  }

  /// \param k  a level, in intervals. \return `NoCrossing` if it does not cross the edge
  static Crossing CrossingOf(const Edge& edge, double k) {
    const double place = k - edge.firstLevel;
    if (!(place >= 0 && place < edge.count)) return NoCrossing;
    return edge.begin + static_cast<Crossing>(place);
  }

  void Link(Crossing a, Crossing b) {
    for (const auto& [from, to] : {std::pair{a, b}, std::pair{b, a}}) {
      auto& links = links_[from];
      links[links[0] == NoCrossing ? 0 : 1] = to;
    }
  }

  void JoinCell(size_t r, size_t c) {
    const double southWest = Value({r, c});
    const double southEast = Value({r, c + 1});
    const double northWest = Value({r + 1, c});
    const double northEast = Value({r + 1, c + 1});
    const auto [low, high] = std::minmax({southWest, southEast, northWest, northEast});
    const LevelSpan levels = LevelsBetween(low, high);
    // A corner without a number: its edges have no crossings, and the cell is a hole.
    if (!std::isfinite(southWest + southEast + northWest + northEast)) return;
    const double mean = southWest / 4 + southEast / 4 + northWest / 4 + northEast / 4;
    const auto count = static_cast<std::int64_t>(levels.Count());
    for (std::int64_t i = 0; i < count; ++i) {
      const double k = levels.first + static_cast<double>(i);
      const Crossing south = CrossingOf(rowEdges_[Node(r, c)], k);
      const Crossing north = CrossingOf(rowEdges_[Node(r + 1, c)], k);
      const Crossing west = CrossingOf(columnEdges_[Node(r, c)], k);
      const Crossing east = CrossingOf(columnEdges_[Node(r, c + 1)], k);
      std::array<Crossing, 4> ends{};
      size_t sides = 0;
      for (const Crossing end : {south, west, north, east}) {
        if (end != NoCrossing) ends[sides++] = end;
      }
      if (sides == 2) Link(ends[0], ends[1]);
      if (sides != 4) continue;
      const double level = k * work_.interval;
      const bool cutsSouthWest = (southWest >= level) != (mean >= level);
      Link(south, cutsSouthWest ? west : east);
      Link(north, cutsSouthWest ? east : west);
    }
  }

  void Trace(Crossing start) {
    std::vector<LatLon> vertices;
    Crossing before = NoCrossing;
    Crossing at = start;
    while (at != NoCrossing && !isTraced_[at]) {
      isTraced_[at] = true;
      const LatLon& place = places_[at];
      // At a corner that has just the level the crossings of its edges fall together.
      if (vertices.empty() || !IsSamePlace(vertices.back(), place)) vertices.push_back(place);
      const Crossing next = links_[at][0] != before ? links_[at][0] : links_[at][1];
      before = at;
      at = next;
    }
    const bool closed = at == start;
    if (closed && vertices.size() > 1 && IsSamePlace(vertices.front(), vertices.back())) {
      vertices.pop_back();
    }
    if (!closed && vertices.size() == 1) vertices.push_back(vertices.front());
    lines_.push_back({places_[start].altitude, std::move(vertices), closed});
  }

  static bool IsSamePlace(const LatLon& a, const LatLon& b) {
    return a.lat == b.lat && a.lon == b.lon;
  }

  const ContourWork& work_;
  size_t rows_;
  size_t columns_;
  std::vector<Edge> rowEdges_;                  ///< by node: from it to its eastern neighbour
  std::vector<Edge> columnEdges_;               ///< by node: from it to its northern neighbour
  std::vector<LatLon> places_;                  ///< by crossing, with the level as altitude
  std::vector<std::array<Crossing, 2>> links_;  ///< by crossing: its neighbours on its line
  std::vector<bool> isTraced_;
  std::vector<ContourLine> lines_;
};

ContourOutcome Generate(Map& map, int interval, ContourWork& work) {
  const ContourOutcome prepared = PrepareContours(map, interval, work);
  if (prepared != ContourMade) return prepared;
  std::vector<ContourLine> lines;
  const ContourOutcome traced = TraceContinuousContours(work, lines);
  if (traced == ContourRefused) return RefuseCrossings(map);
  if (traced != ContourMade) return traced;
  MakeContourTrails(lines, map.workspace->continuousContourCounts, map.continuousContours,
                    map.contourPoints);
  return ContourMade;
}

}  // namespace

ContourOutcome TraceContinuousContours(const ContourWork& work, std::vector<ContourLine>& lines) {
  ContinuousTracer tracer(work);
  if (!tracer.FindCrossings()) return ContourRefused;
  if (!tracer.ConnectCrossings()) return ContourCanceled;
  lines = tracer.TakeLines();
  return ContourMade;
}

ContourOutcome GenerateContinuousContours(Map& map, int interval, const ContourProgress& progress) {
  return RunContours(progress, [&](ContourWork& work) { return Generate(map, interval, work); });
}

}  // namespace orvane
