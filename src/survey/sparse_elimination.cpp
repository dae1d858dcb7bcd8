#include "survey/elimination.h"
#include "survey/pivot_power.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <thread>

// The method is told in elimination.cpp. Here the pivot rows come first, each computed from the
// rows above it; then each row runs on through the pivots below it, up the elimination tree. The
// second half is where the time goes. Rows that share a path are taken a few at a time there, so
// that the processor works on them side by side, and the threads share the groups of rows.

namespace orvane {

namespace {

constexpr size_t MostSides = 3;
constexpr size_t Lanes = 4;  ///< rows that run up the tree together
constexpr double GrownTooFar = 0x1p300;
constexpr double ScaleBack = 0x1p-300;
constexpr double WorkForThreads = 4e6;  ///< multiplications that are worth a second thread
constexpr unsigned MostThreads = 8;

using Sides = std::array<double, MostSides>;

/// A row as it stood when it was the pivot: what lies right of the diagonal, by ascending column.
struct PivotRow {
  std::vector<int> columns;
  std::vector<double> values;
  double pivot = 0;  ///< scaled near to 1
  Sides sides{};
};

/// The matrix by rows, one entry a cell, by ascending column.
std::vector<std::vector<MatrixEntry>> RowsOf(const NormalSystem& system) {
  std::vector<std::vector<MatrixEntry>> rows(static_cast<size_t>(system.size));
  for (const MatrixEntry& entry : system.entries) {
    rows[static_cast<size_t>(entry.row)].push_back(entry);
  }
  for (auto& row : rows) {
    std::sort(row.begin(), row.end(),
              [](const MatrixEntry& a, const MatrixEntry& b) { return a.column < b.column; });
    size_t used = 0;
    for (const MatrixEntry& entry : row) {
      if (used > 0 && row[used - 1].column == entry.column) {
        row[used - 1].value += entry.value;
      } else {
        row[used++] = entry;
      }
    }
    row.resize(used);
  }
  return rows;
}

/// One row on its way to become a pivot row: its values, and the list of the columns in use.
class WorkRow {
 public:
  explicit WorkRow(size_t size) : values_(size), place_(size, Unused) {}

  double& operator[](int column) { return values_[Index(column)]; }

  void Add(int column, double value) {
    if (place_[Index(column)] == Unused) {
      place_[Index(column)] = static_cast<int>(columns_.size());
      columns_.push_back(column);
      values_[Index(column)] = 0;
    }
    values_[Index(column)] += value;
  }
  void Remove(int column) {
    const int place = place_[Index(column)];
    const int last = columns_.back();
    columns_[Index(place)] = last;
    place_[Index(last)] = place;
    place_[Index(column)] = Unused;
    columns_.pop_back();
  }
  void Scale(double factor) {
    for (const int column : columns_) values_[Index(column)] *= factor;
  }
  void Clear() {
    for (const int column : columns_) place_[Index(column)] = Unused;
    columns_.clear();
  }
  const std::vector<int>& Columns() const { return columns_; }
  bool Uses(int column) const { return place_[Index(column)] != Unused; }

 private:
  static constexpr int Unused = -1;
  static size_t Index(int column) { return static_cast<size_t>(column); }

  std::vector<double> values_;
  std::vector<int> place_;
  std::vector<int> columns_;
};

/// Computes the pivot rows from top to bottom.
class PivotRows {
 public:
  explicit PivotRows(const NormalSystem& system)
      : system_(system), size_(static_cast<size_t>(system.size)), rows_(size_), rowsAbove_(size_) {}

  /// \return false if a pivot was 0
  bool Compute() {
    const auto matrix = RowsOf(system_);
    WorkRow work(size_);
    for (size_t k = 0; k < size_; ++k) {
      for (const MatrixEntry& entry : matrix[k]) work.Add(entry.column, entry.value);
      Sides sides{};
      for (size_t s = 0; s < system_.rightSides.size(); ++s) sides[s] = system_.rightSides[s][k];
      for (const int above : rowsAbove_[k]) Eliminate(work, sides, above);
      if (!Keep(static_cast<int>(k), work, sides)) return false;
      work.Clear();
    }
    return true;
  }

  const std::vector<PivotRow>& Rows() const { return rows_; }

 private:
  void Eliminate(WorkRow& work, Sides& sides, int above) {
    const PivotRow& pivotRow = rows_[static_cast<size_t>(above)];
    if (!work.Uses(above)) return;
    const double f = work[above];
    work.Remove(above);
    if (f == 0) {
      // The pattern grows as if something had stood here, which later rows count on.
      for (const int column : pivotRow.columns) work.Add(column, 0);
      return;
    }
    const double r = pivotRow.pivot;
    work.Scale(r);
    for (size_t j = 0; j < pivotRow.columns.size(); ++j) {
      work.Add(pivotRow.columns[j], -(f * pivotRow.values[j]));
    }
    for (size_t s = 0; s < MostSides; ++s) sides[s] = r * sides[s] - f * pivotRow.sides[s];
    growth_ *= r;
    if (growth_ > GrownTooFar) {
      work.Scale(ScaleBack);
      for (double& side : sides) side *= ScaleBack;
      growth_ *= ScaleBack;
    }
  }

  bool Keep(int k, WorkRow& work, Sides sides) {
    growth_ = 1;
    const double pivot = work.Uses(k) ? work[k] : 0;
    if (pivot == 0) return false;
    const double power = pivot == 1 ? 1 : PivotPower(pivot);
    PivotRow& row = rows_[static_cast<size_t>(k)];
    row.pivot = pivot / power;
    for (size_t s = 0; s < MostSides; ++s) row.sides[s] = sides[s] / power;
    for (const int column : work.Columns()) {
      if (column > k) row.columns.push_back(column);
    }
    std::sort(row.columns.begin(), row.columns.end());
    row.values.reserve(row.columns.size());
    for (const int column : row.columns) {
      row.values.push_back(work[column] / power);
      rowsAbove_[static_cast<size_t>(column)].push_back(k);
    }
    return true;
  }

  const NormalSystem& system_;
  size_t size_;
  std::vector<PivotRow> rows_;
  std::vector<std::vector<int>> rowsAbove_;  ///< by row: the pivots that it has something in
  double growth_ = 1;
};

/// A few rows that follow each other up the elimination tree.
struct RowGroup {
  std::array<int, Lanes> rows{};
  size_t count = 0;
};

/// The next pivot that a row meets: the parent in the elimination tree; -1 at a root.
int ParentOf(const PivotRow& row) { return row.columns.empty() ? -1 : row.columns.front(); }

std::vector<RowGroup> GroupRows(const std::vector<PivotRow>& rows) {
  std::vector<RowGroup> groups;
  std::vector<bool> taken(rows.size());
  for (size_t k = 0; k < rows.size(); ++k) {
    if (taken[k]) continue;
    RowGroup& group = groups.emplace_back();
    for (int row = static_cast<int>(k); row >= 0 && group.count < Lanes;
         row = ParentOf(rows[static_cast<size_t>(row)])) {
      if (taken[static_cast<size_t>(row)]) break;
      taken[static_cast<size_t>(row)] = true;
      group.rows[group.count++] = row;
    }
  }
  return groups;
}

/// Lanes side by side; the compiler makes of it what the processor has.
using LaneVector = double __attribute__((vector_size(Lanes * sizeof(double))));

/// The lanes of one column. A record of its own, since only so does a vector keep it aligned.
struct alignas(sizeof(LaneVector)) LaneCell {
  LaneVector lanes{};
};

/// cells = r * cells - f * value, lane by lane, for each column of a pivot row. Compiled twice, and
/// the form that the processor can run is chosen as the program starts; both round alike.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__)
__attribute__((target_clones("avx2", "default")))
#endif
void EliminateLanes(const PivotRow& pivotRow, const LaneVector* r, const LaneVector* f,
                    LaneCell* cells) {
  const LaneVector factor = *r;
  const LaneVector below = *f;
  const size_t count = pivotRow.columns.size();
  const int* columns = pivotRow.columns.data();
  const double* values = pivotRow.values.data();
  for (size_t j = 0; j < count; ++j) {
    LaneVector& cell = cells[columns[j]].lanes;
    cell = factor * cell - below * values[j];
  }
}

/// Runs groups of rows up the tree and writes their solutions.
class UpwardRuns {
 public:
  UpwardRuns(const std::vector<PivotRow>& rows, NormalSystem& system)
      : rows_(rows), system_(system), cells_(rows.size()) {}

  void Run(const RowGroup& group) {
    Start(group);
    size_t joined = 1;  // lanes that have passed their own pivot
    for (int i = Parent(group.rows[0]); i >= 0; i = Parent(i)) {
      const bool isMember = joined < group.count && group.rows[joined] == i;
      Step(i, joined);
      if (isMember) Load(joined++, i);
    }
    for (size_t lane = 0; lane < group.count; ++lane) Finish(lane, group.rows[lane]);
  }

 private:
  int Parent(int row) const { return ParentOf(rows_[static_cast<size_t>(row)]); }
  double Cell(int column, size_t lane) const {
    return cells_[static_cast<size_t>(column)].lanes[lane];
  }
  void SetCell(int column, size_t lane, double value) {
    cells_[static_cast<size_t>(column)].lanes[lane] = value;
  }

  void Start(const RowGroup& group) {
    pivots_.fill(1);
    sides_ = {};
    Load(0, group.rows[0]);
  }

  /// Puts a row into its lane, as it stood when it was the pivot.
  void Load(size_t lane, int k) {
    const PivotRow& row = rows_[static_cast<size_t>(k)];
    pivots_[lane] = row.pivot;
    for (size_t s = 0; s < MostSides; ++s) sides_[s][lane] = row.sides[s];
    for (size_t j = 0; j < row.columns.size(); ++j) SetCell(row.columns[j], lane, row.values[j]);
  }

  void Step(int i, size_t lanes) {
    const PivotRow& pivotRow = rows_[static_cast<size_t>(i)];
    const LaneVector f = cells_[static_cast<size_t>(i)].lanes;
    cells_[static_cast<size_t>(i)] = LaneCell{};
    LaneVector r = LaneVector{} + 1;  // a lane with nothing in this column is left as it is
    bool any = false;
    for (size_t lane = 0; lane < lanes; ++lane) {
      if (f[lane] == 0) continue;
      r[lane] = pivotRow.pivot;
      any = true;
    }
    if (!any) return;
    EliminateLanes(pivotRow, &r, &f, cells_.data());
    bool grown = false;
    for (size_t lane = 0; lane < lanes; ++lane) {
      pivots_[lane] *= r[lane];
      grown = grown || std::abs(pivots_[lane]) > GrownTooFar;
    }
    for (size_t s = 0; s < MostSides; ++s) {
      for (size_t lane = 0; lane < lanes; ++lane) {
        sides_[s][lane] = r[lane] * sides_[s][lane] - f[lane] * pivotRow.sides[s];
      }
    }
    if (grown) ScaleLanesBack(pivotRow, lanes);
  }

  void ScaleLanesBack(const PivotRow& pivotRow, size_t lanes) {
    for (size_t lane = 0; lane < lanes; ++lane) {
      if (std::abs(pivots_[lane]) <= GrownTooFar) continue;
      pivots_[lane] *= ScaleBack;
      for (auto& side : sides_) side[lane] *= ScaleBack;
      // All that is left of the row lies within the pattern of the pivot row just taken.
      for (const int column : pivotRow.columns) {
        SetCell(column, lane, Cell(column, lane) * ScaleBack);
      }
    }
  }

  void Finish(size_t lane, int row) {
    for (size_t s = 0; s < system_.rightSides.size(); ++s) {
      const double side = sides_[s][lane];
      system_.rightSides[s][static_cast<size_t>(row)] =
          pivots_[lane] == 1 ? side : side / pivots_[lane];
    }
  }

  const std::vector<PivotRow>& rows_;
  NormalSystem& system_;
  std::vector<LaneCell> cells_;  ///< by column; all 0 between two groups
  std::array<double, Lanes> pivots_{};
  std::array<std::array<double, Lanes>, MostSides> sides_{};
};

/// Multiplications of all upward runs together, by the sizes of the rows on each path.
double UpwardWork(const std::vector<PivotRow>& rows) {
  std::vector<double> pathWork(rows.size());
  double total = 0;
  for (size_t k = rows.size(); k-- > 0;) {
    const int parent = ParentOf(rows[k]);
    if (parent < 0) continue;
    const auto p = static_cast<size_t>(parent);
    pathWork[k] = pathWork[p] + static_cast<double>(rows[p].columns.size()) + 1;
    total += pathWork[k];
  }
  return total;
}

void RunAll(const std::vector<PivotRow>& rows, NormalSystem& system) {
  const std::vector<RowGroup> groups = GroupRows(rows);
  std::atomic<size_t> next{0};
  const auto work = [&] {
    UpwardRuns runs(rows, system);
    for (size_t g = next++; g < groups.size(); g = next++) runs.Run(groups[g]);
  };
  std::vector<std::thread> helpers;
  if (UpwardWork(rows) > WorkForThreads) {
    const unsigned threads = std::min(std::thread::hardware_concurrency(), MostThreads);
    for (unsigned t = 1; t < threads; ++t) helpers.emplace_back(work);
  }
  work();
  for (std::thread& helper : helpers) helper.join();
}

}  // namespace

bool EliminateNormalSparse(NormalSystem& system) {
  PivotRows pivots(system);
  if (!pivots.Compute()) return false;
  RunAll(pivots.Rows(), system);
  return true;
}

}  // namespace orvane
