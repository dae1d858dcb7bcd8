#pragma once

#include "geo/positions.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvane {

class Progress;

/// One coefficient of a square matrix.
struct MatrixEntry {
  int row = 0;
  int column = 0;
  double value = 0;
};

/// A symmetric system of equations with several right-hand sides. Entries may be in any order and
/// repeat a cell; they are added, exactly, since all are small whole numbers.
struct NormalSystem {
  int size = 0;
  std::vector<MatrixEntry> entries;             ///< both triangles
  std::vector<std::vector<double>> rightSides;  ///< `size` values each; become the solutions
  Progress* progress = nullptr;                 ///< may cancel; the solutions are then invalid
};

/// Solves the system in place by Gauss-Jordan elimination, without pivoting for size and without a
/// division in the inner loop: rows are only scaled by powers of two, which loses no bits. The
/// order of the operations on each number is fixed, so a solution is the same to the last bit,
/// however zeros are skipped and however many threads share the work.
/// \param freeValues  one for each right-hand side: the solution where a column is free
void EliminateNormal(NormalSystem& system, std::span<const double> freeValues);

/// The same with plain loops over the whole matrix, in cubic time. `EliminateNormal` uses it for
/// small systems and where a pivot is 0.
void EliminateNormalDense(NormalSystem& system, std::span<const double> freeValues);

/// The same for systems whose pivots are not 0, in a time proportional to the entries that the
/// elimination fills in.
/// \return false if a pivot was 0; the system is then unchanged
bool EliminateNormalSparse(NormalSystem& system);

}  // namespace orvane
