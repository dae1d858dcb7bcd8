#include "survey/elimination.h"

#include "systems.h"

#include <algorithm>
#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

using test::Edge;
using Sides = std::vector<std::vector<double>>;

constexpr std::array<double, 3> FreeValues{0, 0, -9999};

std::span<const double> FreeFor(const NormalSystem& system) {
  return std::span(FreeValues).first(system.rightSides.size());
}

/// A second writing of the elimination: every row, every column, no zero skipped, and nothing
/// that keeps large numbers small.
/// \param largest  if not null, receives the largest number on the diagonal at the end
Sides PlainElimination(const NormalSystem& system, double* largest = nullptr) {
  const int n = system.size;
  const auto index = [](int i) { return static_cast<size_t>(i); };
  std::vector<std::vector<double>> m(index(n), std::vector<double>(index(n)));
  for (const MatrixEntry& e : system.entries) m[index(e.row)][index(e.column)] += e.value;
  Sides b = system.rightSides;
  for (size_t i = 0; i < index(n); ++i) {
    if (m[i][i] == 0) {
      size_t k = i + 1;
      while (k < index(n) && m[k][i] == 0) ++k;
      if (k == index(n)) {
        for (size_t s = 0; s < b.size(); ++s) b[s][i] = FreeValues[s];
        continue;
      }
      for (size_t j = i; j < index(n); ++j) std::swap(m[i][j], m[k][j]);
      for (auto& side : b) std::swap(side[i], side[k]);
    }
    const double p = m[i][i];
    double t = 1;
    if (p > 0 && p != 1) {
      while (!(t >= p)) t = t * 2;
      while (!(t <= p)) t = t / 2;
    } else if (p < 0) {
      t = -1;
      while (!(t >= p)) t = t / 2;  // reaches 0 only while t is below p
      while (!(t <= p)) t = t * 2;
    }
    for (size_t j = i; j < index(n); ++j) m[i][j] = m[i][j] / t;
    for (auto& side : b) side[i] = side[i] / t;
    const double r = m[i][i];
    for (size_t k = 0; k < index(n); ++k) {
      const double f = m[k][i];
      if (k == i || f == 0) continue;
      if (k < i) m[k][k] = m[k][k] * r;
      for (size_t j = i; j < index(n); ++j) m[k][j] = r * m[k][j] - f * m[i][j];
      for (auto& side : b) side[k] = r * side[k] - f * side[i];
    }
  }
  for (size_t i = 0; i < index(n); ++i) {
    const double last = m[i][i];
    if (largest != nullptr) *largest = std::max(*largest, std::abs(last));
    if (last == 1 || last == 0) continue;
    for (auto& side : b) side[i] = side[i] / last;
  }
  return b;
}

/// Where two solutions first differ in a bit; the empty text if nowhere. Zeros are equal whatever
/// their sign.
std::string FirstDifference(const Sides& a, const Sides& b) {
  if (a.size() != b.size()) return "number of sides";
  for (size_t s = 0; s < a.size(); ++s) {
    if (a[s].size() != b[s].size()) return "length of side " + std::to_string(s);
    for (size_t i = 0; i < a[s].size(); ++i) {
      if (a[s][i] == 0 && b[s][i] == 0) continue;
      if (std::bit_cast<std::uint64_t>(a[s][i]) == std::bit_cast<std::uint64_t>(b[s][i])) continue;
      return "side " + std::to_string(s) + " of " + std::to_string(i) + ": " +
             std::to_string(a[s][i]) + " and " + std::to_string(b[s][i]);
    }
  }
  return {};
}

/// All ways to solve one system give the same bits.
/// \return true if the sparse way could take it
bool ExpectSameBits(const NormalSystem& system, bool alsoPlain = true) {
  NormalSystem dense = system;
  EliminateNormalDense(dense, FreeFor(system));
  NormalSystem sparse = system;
  const bool taken = EliminateNormalSparse(sparse);
  if (taken) {
    EXPECT_EQ(FirstDifference(sparse.rightSides, dense.rightSides), "");
  } else {
    EXPECT_EQ(FirstDifference(sparse.rightSides, system.rightSides), "") << "changed by a failure";
  }
  NormalSystem chosen = system;
  EliminateNormal(chosen, FreeFor(system));
  EXPECT_EQ(FirstDifference(chosen.rightSides, dense.rightSides), "");
  if (alsoPlain) {
    EXPECT_EQ(FirstDifference(dense.rightSides, PlainElimination(system)), "");
  }
  return taken;
}

std::vector<int> SomeFixes(int size, Dice& dice) {
  std::vector<int> fixes{dice.Below(size)};
  while (dice.OneIn(2)) fixes.push_back(dice.Below(size));
  return fixes;
}

void AddRandomEdges(std::vector<Edge>& edges, int size, int count, Dice& dice) {
  for (int i = 0; i < count; ++i) edges.emplace_back(dice.Below(size), dice.Below(size));
}

TEST(Elimination, DividesByThePivotAtLast) {
  NormalSystem system{1, {{0, 0, 3}}, {{6}}};
  EliminateNormalDense(system, FreeFor(system));
  EXPECT_EQ(system.rightSides[0][0], 2);
}

TEST(Elimination, SolvesTwoFixesWithAChainBetween) {
  // Fixes at 0 and 10, a chain that measured 13: each fix gives a third of the 3 metres.
  const NormalSystem system{2, {{0, 0, 2}, {0, 1, -1}, {1, 0, -1}, {1, 1, 2}}, {{-13, 23}}};
  NormalSystem solved = system;
  EliminateNormal(solved, FreeFor(system));
  EXPECT_DOUBLE_EQ(solved.rightSides[0][0], -1);
  EXPECT_DOUBLE_EQ(solved.rightSides[0][1], 11);
}

TEST(Elimination, EntriesOfOneCellAddUp) {
  NormalSystem system{1, {{0, 0, 1}, {0, 0, 3}}, {{12}}};
  EliminateNormal(system, FreeFor(system));
  EXPECT_EQ(system.rightSides[0][0], 3);
}

TEST(Elimination, GivesTheSameBitsHoweverItIsDone) {
  int sparse = 0;
  for (std::uint32_t seed = 1; seed <= 2500; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Dice dice(seed);
    const int size = 1 + dice.Below(40);
    std::vector<Edge> edges;
    switch (dice.Below(4)) {
      case 0:
        edges = test::PathEdges(size);
        break;
      case 1:
        edges = test::TreeEdges(size, 1 + dice.Below(size), dice);
        break;
      case 2:
        edges = test::GridEdges(5, size / 5);
        break;
      default:
        AddRandomEdges(edges, size, size, dice);  // parts without a fix are free
    }
    AddRandomEdges(edges, size, dice.Below(1 + size / 4), dice);
    if (dice.OneIn(2)) test::Shuffle(edges, size, dice);
    const NormalSystem system =
        test::SystemOf(size, edges, SomeFixes(size, dice), 1 + dice.Below(3), dice);
    if (ExpectSameBits(system)) ++sparse;
    if (HasFailure()) return;
  }
  EXPECT_GT(sparse, 1500);
}

TEST(Elimination, SwapsTheSameRowsAndLeavesTheSameColumnsFree) {
  for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Dice dice(seed);
    NormalSystem system;
    system.size = 9 + dice.Below(12);
    const auto size = static_cast<size_t>(system.size);
    for (int row = 0; row < system.size; ++row) {
      for (int column = 0; column <= row; ++column) {
        if (!dice.OneIn(4)) continue;
        const double value = dice.Below(5) - 2;
        system.entries.push_back({row, column, value});
        if (row != column) system.entries.push_back({column, row, value});
      }
    }
    system.rightSides.assign(3, std::vector<double>(size));
    for (auto& side : system.rightSides) {
      for (double& value : side) value = dice.Between(-10, 10);
    }
    ExpectSameBits(system);
    if (HasFailure()) return;
  }
}

TEST(Elimination, GivesAFreeColumnItsValues) {
  NormalSystem system{3, {{0, 0, 1}, {2, 2, 2}}, {{5, 6, 8}, {5, 6, 8}, {5, 6, 8}}};
  EXPECT_FALSE(EliminateNormalSparse(system));
  EliminateNormal(system, FreeFor(system));
  EXPECT_EQ(system.rightSides, (Sides{{5, 0, 4}, {5, 0, 4}, {5, -9999, 4}}));
}

TEST(Elimination, ScalingBackChangesNoBit) {
  // Numbers far above the limit of scaling, still within the range of doubles.
  for (const int size : {650, 900}) {
    Dice dice(static_cast<std::uint32_t>(size));
    const NormalSystem system = test::SystemOf(size, test::GridEdges(10, size / 10), {0}, 2, dice);
    ExpectSameBits(system);
    double largest = 0;
    PlainElimination(system, &largest);
    EXPECT_GT(largest, 0x1p300);
    EXPECT_TRUE(std::isfinite(largest));
  }
}

TEST(Elimination, LargeSystemsGiveTheSameBitsOnAllThreads) {
  Dice dice(7);
  constexpr int size = 1200;
  std::vector<Edge> edges = test::TreeEdges(size, 60, dice);
  for (int i = 0; i < 500; ++i) {
    const int from = dice.Below(size - 80);
    edges.emplace_back(from, from + 1 + dice.Below(79));
  }
  const NormalSystem system = test::SystemOf(size, edges, {3, 500, 1100}, 3, dice);
  NormalSystem dense = system;
  EliminateNormalDense(dense, FreeFor(system));
  for (int run = 0; run < 3; ++run) {
    NormalSystem sparse = system;
    ASSERT_TRUE(EliminateNormalSparse(sparse));
    EXPECT_EQ(FirstDifference(sparse.rightSides, dense.rightSides), "");
  }
}

/// The direct solution of a system whose nodes form a path.
std::vector<double> SolvePath(const NormalSystem& system, size_t side) {
  const auto size = static_cast<size_t>(system.size);
  std::vector<long double> diagonal(size);
  std::vector<long double> beside(size);  // with the next node
  for (const MatrixEntry& e : system.entries) {
    if (e.row == e.column) diagonal[static_cast<size_t>(e.row)] += e.value;
    if (e.row + 1 == e.column) beside[static_cast<size_t>(e.row)] += e.value;
  }
  std::vector<long double> value(system.rightSides[side].begin(), system.rightSides[side].end());
  for (size_t i = 1; i < size; ++i) {
    const long double share = beside[i - 1] / diagonal[i - 1];
    diagonal[i] -= share * beside[i - 1];
    value[i] -= share * value[i - 1];
  }
  std::vector<double> solution(size);
  long double next = 0;
  for (size_t i = size; i-- > 0;) {
    next = (value[i] - (i + 1 < size ? beside[i] * next : 0)) / diagonal[i];
    solution[i] = static_cast<double>(next);
  }
  return solution;
}

TEST(Elimination, AChainOfThousandsOfJunctionsStaysFinite) {
  constexpr int size = 5000;
  for (const std::vector<int>& fixes : {std::vector{0}, std::vector{2500}, std::vector{10, 4999}}) {
    Dice dice(static_cast<std::uint32_t>(fixes.front()));
    NormalSystem system = test::SystemOf(size, test::PathEdges(size), fixes, 2, dice);
    const Sides expected{SolvePath(system, 0), SolvePath(system, 1)};
    EliminateNormal(system, FreeFor(system));
    for (size_t s = 0; s < 2; ++s) {
      double largest = 0;
      double worst = 0;
      for (size_t i = 0; i < size; ++i) {
        ASSERT_TRUE(std::isfinite(system.rightSides[s][i])) << i;
        largest = std::max(largest, std::abs(expected[s][i]));
        worst = std::max(worst, std::abs(system.rightSides[s][i] - expected[s][i]));
      }
      EXPECT_LT(worst / largest, 1e-9);
    }
  }
}

TEST(Elimination, ADenseChainOfThousandsOfJunctionsStaysFinite) {
  constexpr int size = 1300;  // 2 to the power of 1300 would be no finite number
  Dice dice(5);
  NormalSystem system = test::SystemOf(size, test::PathEdges(size), {0}, 1, dice);
  ExpectSameBits(system, false);
  EliminateNormalDense(system, FreeFor(system));
  for (const double value : system.rightSides[0]) ASSERT_TRUE(std::isfinite(value));
}

}  // namespace
}  // namespace orvane
