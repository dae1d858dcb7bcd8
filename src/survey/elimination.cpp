#include "survey/elimination.h"

#include "base/progress.h"
#include "survey/pivot_power.h"

#include <algorithm>
#include <cmath>

// The elimination goes down the diagonal. At each pivot its row is scaled by a power of two; then
// every other row k with an entry in the pivot's column becomes r * row k - f * pivot row, where r
// is the scaled pivot and f that entry. So row k goes through one sequence of such steps, one for
// each pivot in whose column it has an entry, in ascending order:
//
//   * before its own pivot, with the rows above it, as they were when they were pivots;
//   * then it is scaled and is the pivot row itself;
//   * after that, with the rows below it, as they were when they were pivots.
//
// The sparse form computes these sequences row by row from the stored pivot rows instead of pivot
// by pivot over the whole matrix. Each number goes through the same operations in the same order;
// only structural zeros are skipped. Since the pattern of the matrix is symmetric, the entries of
// row k right of its diagonal are on the path from k to the root of the elimination tree and, after
// pivot i, within the pattern of pivot row i.
//
// Each step multiplies a row by an r of up to 2, so thousands of steps would overflow. A row that
// has grown far is scaled back by a power of two, with its right-hand sides; only their quotient
// matters in the end, and it does not change.

namespace orvane {

namespace {

constexpr double GrownTooFar = 0x1p300;
constexpr double ScaleBack = 0x1p-300;
constexpr int SmallSystem = 8;

// --- Dense ----------------------------------------------------------------------------------

class DenseElimination {
 public:
  explicit DenseElimination(NormalSystem& system)
      : system_(system), size_(static_cast<size_t>(system.size)), cells_(size_ * size_) {
    for (const MatrixEntry& entry : system.entries) {
      At(static_cast<size_t>(entry.row), static_cast<size_t>(entry.column)) += entry.value;
    }
  }

  void Run(std::span<const double> freeValues) {
    for (size_t i = 0; i < size_; ++i) {
      if (!FindPivot(i)) {
        for (size_t side = 0; side < freeValues.size(); ++side) Side(side, i) = freeValues[side];
        continue;
      }
      ScalePivotRow(i);
      for (size_t k = 0; k < size_; ++k) {
        if (k != i && At(k, i) != 0) Eliminate(i, k);
      }
    }
    for (size_t i = 0; i < size_; ++i) {
      const double pivot = At(i, i);
      if (pivot == 1 || pivot == 0) continue;
      for (auto& side : system_.rightSides) side[i] /= pivot;
    }
  }

 private:
  double& At(size_t row, size_t column) { return cells_[row * size_ + column]; }
  double& Side(size_t side, size_t row) { return system_.rightSides[side][row]; }

  /// Swaps a row from below up if the pivot is 0. \return false if the column is free
  bool FindPivot(size_t i) {
    if (At(i, i) != 0) return true;
    for (size_t k = i + 1; k < size_; ++k) {
      if (At(k, i) == 0) continue;
      for (size_t j = i; j < size_; ++j) std::swap(At(i, j), At(k, j));
      for (auto& side : system_.rightSides) std::swap(side[i], side[k]);
      return true;
    }
    return false;
  }

  void ScalePivotRow(size_t i) {
    if (At(i, i) == 1) return;
    const double power = PivotPower(At(i, i));
    if (power == 1) return;
    for (size_t j = i; j < size_; ++j) At(i, j) /= power;
    for (auto& side : system_.rightSides) side[i] /= power;
  }

  void Eliminate(size_t i, size_t k) {
    const double r = At(i, i);
    const double f = At(k, i);
    if (k < i) At(k, k) *= r;
    for (size_t j = i; j < size_; ++j) At(k, j) = r * At(k, j) - f * At(i, j);
    for (auto& side : system_.rightSides) side[k] = r * side[k] - f * side[i];
    if (std::abs(At(k, k)) > GrownTooFar) {
      for (size_t j = 0; j < size_; ++j) At(k, j) *= ScaleBack;
      for (auto& side : system_.rightSides) side[k] *= ScaleBack;
    }
  }

  NormalSystem& system_;
  size_t size_;
  std::vector<double> cells_;
};

}  // namespace

double PivotPower(double pivot) {
  if (!std::isfinite(pivot)) return 1;
  double power = 1;
  if (pivot > 0) {
    while (power < pivot) power *= 2;
    while (power > pivot) power /= 2;
  } else {
    power = -1;
    while (power < pivot) power /= 2;
    while (power > pivot) power *= 2;
  }
  return power;
}

void EliminateNormalDense(NormalSystem& system, std::span<const double> freeValues) {
  DenseElimination(system).Run(freeValues);
}

void EliminateNormal(NormalSystem& system, std::span<const double> freeValues) {
  if (system.size > SmallSystem && EliminateNormalSparse(system)) return;
  if (IsCanceled(system.progress)) return;
  EliminateNormalDense(system, freeValues);
}

}  // namespace orvane
