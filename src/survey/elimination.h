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

/// A symmetric system of equations with several right-hand sides. Entries may come in any order
/// and several times for one cell; they add up, exactly since all are small whole numbers.
struct NormalSystem {
  int size = 0;
  std::vector<MatrixEntry> entries;             ///< both triangles
  std::vector<std::vector<double>> rightSides;  ///< `size` values each; become the solutions
  Progress* progress = nullptr;                 ///< may call it off; the solutions are then none
};

/// Solves the system in place by Gauss-Jordan elimination without pivoting for size and without a
/// division in its inner loop: rows are only scaled by powers of two, which loses no bits. The
/// order of the operations on each number is fixed, so that a solution is the same to the last
/// bit, however the zeros of the matrix are passed over and however many threads share the work.
/// \param freeValues  one for each right side: the solution where a column is free
void EliminateNormal(NormalSystem& system, std::span<const double> freeValues);

/// The same by plain loops over the whole matrix. It takes a time that grows with the cube of the
/// size; `EliminateNormal` turns to it for small systems and where a pivot is 0.
void EliminateNormalDense(NormalSystem& system, std::span<const double> freeValues);

/// The same for systems whose pivots are not 0, in a time that goes by the entries that the
/// elimination fills in.
/// \return false if a pivot was 0; the system is then as it was
bool EliminateNormalSparse(NormalSystem& system);

}  // namespace orvane
