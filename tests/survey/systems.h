#pragma once

#include "support/dice.h"
#include "survey/elimination.h"

#include <cmath>
#include <utility>
#include <vector>

namespace orvane::test {

/// A line of sight between two junctions.
using Edge = std::pair<int, int>;

inline std::vector<Edge> PathEdges(int size) {
  std::vector<Edge> edges;
  for (int i = 1; i < size; ++i) edges.emplace_back(i - 1, i);
  return edges;
}

/// Each node is tied to one of the `reach` nodes before it.
inline std::vector<Edge> TreeEdges(int size, int reach, Dice& dice) {
  std::vector<Edge> edges;
  for (int i = 1; i < size; ++i) edges.emplace_back(i - 1 - dice.Below(std::min(i, reach)), i);
  return edges;
}

inline std::vector<Edge> GridEdges(int width, int height) {
  std::vector<Edge> edges;
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      const int at = row * width + column;
      if (column + 1 < width) edges.emplace_back(at, at + 1);
      if (row + 1 < height) edges.emplace_back(at, at + width);
    }
  }
  return edges;
}

/// Gives the nodes other numbers, so that the elimination meets them in another order.
inline void Shuffle(std::vector<Edge>& edges, int size, Dice& dice) {
  std::vector<int> number(static_cast<size_t>(size));
  for (int i = 0; i < size; ++i) number[static_cast<size_t>(i)] = i;
  for (int i = size - 1; i > 0; --i) {
    std::swap(number[static_cast<size_t>(i)], number[static_cast<size_t>(dice.Below(i + 1))]);
  }
  for (Edge& edge : edges) {
    edge = {number[static_cast<size_t>(edge.first)], number[static_cast<size_t>(edge.second)]};
  }
}

/// The normal system of a survey with these chains, and fixes at the nodes `fixes`. An edge from a
/// node to itself is a loop, which gives a single 1 in its equation.
inline NormalSystem SystemOf(int size, const std::vector<Edge>& edges,
                             const std::vector<int>& fixes, int sides, Dice& dice) {
  NormalSystem system;
  system.size = size;
  system.rightSides.assign(static_cast<size_t>(sides),
                           std::vector<double>(static_cast<size_t>(size)));
  const auto add = [&](int row, int column, double value) {
    system.entries.push_back({row, column, value});
  };
  for (const auto& [from, to] : edges) {
    if (from != to) {
      add(from, from, 1);
      add(from, to, -1);
      add(to, from, -1);
    }
    add(to, to, 1);
    for (auto& side : system.rightSides) {
      const double step = dice.Between(-100, 100);
      if (from != to) side[static_cast<size_t>(from)] -= step;
      side[static_cast<size_t>(to)] += step;
    }
  }
  for (const int fix : fixes) {
    add(fix, fix, 1);
    for (auto& side : system.rightSides)
      side[static_cast<size_t>(fix)] += dice.Between(-1000, 1000);
  }
  return system;
}

}  // namespace orvane::test
