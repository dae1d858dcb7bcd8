#include "elevation/contours_crossings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {

namespace {

constexpr double SearchSteps = 3;   // how far a search looks
constexpr int SearchCells = 5;      // as many cells, with one more for a crossing's place in its
                                    // cell and one for rounding
constexpr double FineStep = 1e-14;  // of a coordinate: some 45 times its last bit

struct LevelOrder {
  bool operator()(const CrossingLists::Crossing& crossing, float level) const {
    return crossing.level < level;
  }
  bool operator()(float level, const CrossingLists::Crossing& crossing) const {
    return level < crossing.level;
  }
};

}  // namespace

CrossingLists::CrossingLists(int lists, int cells, double origin, double step)
    : cells_(cells),
      origin_(origin),
      step_(step),
      isFine_(step <= FineStep * (std::fabs(origin) + cells * step)),
      edges_(static_cast<size_t>(lists) * static_cast<size_t>(cells)),
      headCells_(static_cast<size_t>(lists), -1) {}

bool CrossingLists::Add(int list, int cell, double start, double fromAltitude, double toAltitude,
                        double interval) {
  double low = fromAltitude;
  double high = toAltitude;
  if (low > high) std::swap(low, high);
  const double first = std::ceil(low / interval) * interval;
  const double last = std::floor(high / interval) * interval;
  if (!(first <= last)) return true;
  if (!((last - first) / interval < MostLevelsOfEdge)) return false;
  Edge& edge = EdgeAt(list, cell);
  edge.begin = static_cast<Index>(crossings_.size());
  const auto steps = static_cast<int>(std::round((last - first) / interval));
  for (int k = 0; k <= steps; ++k) {
    const double level = first + k * interval;
    const double part = low == high ? 0 : (level - low) * step_ / (high - low);
    // Adding 0 takes the sign off a level of 0 that was reached from below.
    crossings_.push_back({start + part, static_cast<float>(level + 0), false});
  }
  edge.end = static_cast<Index>(crossings_.size());
  int& headCell = headCells_[static_cast<size_t>(list)];
  headCell = std::max(headCell, cell);
  return crossings_.size() <= MostCrossings;
}

bool CrossingLists::Trim(Edge& edge) const {
  while (edge.begin < edge.end && crossings_[edge.begin].taken) ++edge.begin;
  while (edge.begin < edge.end && crossings_[edge.end - 1].taken) --edge.end;
  return edge.begin < edge.end;
}

int CrossingLists::HeadCell(int list) {
  int& cell = headCells_[static_cast<size_t>(list)];
  while (cell >= 0 && !Trim(EdgeAt(list, cell))) --cell;
  return cell;
}

std::optional<CrossingLists::Index> CrossingLists::TakeHead(int list) {
  const int cell = HeadCell(list);
  if (cell < 0) return std::nullopt;
  const Index head = EdgeAt(list, cell).begin;
  Take(head);
  return head;
}

std::span<const CrossingLists::Crossing> CrossingLists::OfLevel(const Edge& edge,
                                                                float level) const {
  const auto [begin, end] = std::equal_range(crossings_.begin() + edge.begin,
                                             crossings_.begin() + edge.end, level, LevelOrder{});
  return {begin, end};
}

// Cells are in the list from the last to the first, and coordinates do not fall within a cell. So
//
//     list:   cells beyond the search | near cells | cells before the search
//             any crossing stops       both          neither stop nor qualify
//
// and the walk comes down to the near cells, once it is known that nothing is left beyond them.
// Within a cell nothing before the first crossing that stops is beyond the stop, so whether a
// crossing is passed shows in its own coordinate.
std::optional<CrossingLists::Index> CrossingLists::FindNextCrossing(int list, double reference,
                                                                    float level) {
  const double stop = reference + SearchSteps * step_;
  const int head = HeadCell(list);
  int last = 0;
  if (!isFine_) {
    const int here = static_cast<int>((reference - origin_) / step_);
    if (head > here + SearchCells) return std::nullopt;
    last = std::max(here - SearchCells, 0);
  }
  const Crossing* nearest = nullptr;
  double nearestDistance = SearchSteps * step_;
  for (int cell = head; cell >= last; --cell) {
    Edge& edge = EdgeAt(list, cell);
    if (!Trim(edge)) continue;
    for (const Crossing& crossing : OfLevel(edge, level)) {
      const double distance = std::fabs(crossing.coordinate - reference);
      if (crossing.taken || crossing.coordinate >= stop || distance >= nearestDistance) continue;
      nearest = &crossing;
      nearestDistance = distance;
    }
    if (crossings_[edge.end - 1].coordinate >= stop) break;
  }
  if (nearest == nullptr) return std::nullopt;
  return static_cast<Index>(nearest - crossings_.data());
}

}  // namespace orvane
