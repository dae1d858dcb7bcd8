#include "base/parallel.h"
#include "base/progress.h"
#include "survey/elimination.h"
#include "survey/pivot_power.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>

// elimination.cpp explains the method. Here the pivot rows come first, each computed from the rows
// above it; then each row continues through the pivots below it, up the elimination tree. The
// second half takes most of the time. There, rows that share a path are taken a few at a time, so
// that the processor works on them side by side, and the threads share the groups of rows.

namespace orvane {

namespace {

constexpr size_t Lanes = 8;  ///< rows that run up the tree together
constexpr double GrownTooFar = 0x1p300;
constexpr double ScaleBack = 0x1p-300;
constexpr double WorkForThreads = 4e6;  ///< multiplications that are worth a second thread
constexpr unsigned MostThreads = 8;
constexpr unsigned RowsOfStep = 64;  ///< between two checks whether the user has cancelled

size_t Index(int column) { return static_cast<size_t>(column); }

// The hot loops are compiled for several processors; the version that this one can run is chosen
// when the program starts. All versions round alike.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__)
#define ORVANE_FOR_EACH_PROCESSOR __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define ORVANE_FOR_EACH_PROCESSOR
#endif

/// Numbers side by side; the compiler uses what the processor has.
using LaneVector = double __attribute__((vector_size(Lanes * sizeof(double))));

/// The lanes of one column. Only a record of its own keeps its alignment in a vector.
struct alignas(sizeof(LaneVector)) LaneCell {
  LaneVector lanes{};
};

// --- Patterns -------------------------------------------------------------------------------

/// The columns right of the diagonal in which each row has an entry when it is the pivot,
/// ascending. The right-hand sides follow the matrix as further columns.
class Patterns {
 public:
  explicit Patterns(const NormalSystem& system)
      : size_(static_cast<size_t>(system.size)), sides_(system.rightSides.size()) {
    SortEntries(system);
    FindColumns();
    FindRowsAbove();
  }

  size_t Size() const { return size_; }
  size_t Sides() const { return sides_; }
  /// Matrix entries of one row, one for each cell, by ascending column.
  std::span<const MatrixEntry> Entries(size_t row) const {
    return std::span(entries_).subspan(entryStart_[row], entryStart_[row + 1] - entryStart_[row]);
  }
  std::span<const int> Columns(size_t row) const {
    return std::span(columns_).subspan(start_[row], start_[row + 1] - start_[row]);
  }
  /// Where the values of a row begin in a list of all values.
  size_t Start(size_t row) const { return start_[row]; }
  size_t Values() const { return columns_.size(); }
  /// The pivots above in whose columns a row has an entry, ascending.
  std::span<const int> RowsAbove(size_t row) const {
    return std::span(above_).subspan(aboveStart_[row], aboveStart_[row + 1] - aboveStart_[row]);
  }
  /// The next pivot that a row meets: the parent in the elimination tree; -1 at a root.
  int Parent(size_t row) const {
    const int first = start_[row] == start_[row + 1] ? -1 : columns_[start_[row]];
    return first < static_cast<int>(size_) ? first : -1;
  }

 private:
  void SortEntries(const NormalSystem& system) {
    std::vector<size_t> next(size_ + 1);
    for (const MatrixEntry& entry : system.entries) ++next[Index(entry.row) + 1];
    for (size_t row = 0; row < size_; ++row) next[row + 1] += next[row];
    const std::vector<size_t> starts = next;
    std::vector<MatrixEntry> sorted(system.entries.size());
    for (const MatrixEntry& entry : system.entries) sorted[next[Index(entry.row)]++] = entry;
    for (size_t row = 0; row < size_; ++row) {
      entryStart_.push_back(entries_.size());
      AddRowEntries(std::span(sorted).subspan(starts[row], starts[row + 1] - starts[row]));
    }
    entryStart_.push_back(entries_.size());
  }

  void AddRowEntries(std::span<MatrixEntry> row) {
    std::sort(row.begin(), row.end(),
              [](const MatrixEntry& a, const MatrixEntry& b) { return a.column < b.column; });
    for (size_t i = 0; i < row.size(); ++i) {
      if (i > 0 && row[i].column == row[i - 1].column) {
        entries_.back().value += row[i].value;
      } else {
        entries_.push_back(row[i]);
      }
    }
  }

  /// A row has its own entries and those of its children in the tree.
  void FindColumns() {
    std::vector<std::vector<int>> children(size_);
    std::vector<int> lastRow(size_, -1);  // by column: the last row that took it
    for (size_t row = 0; row < size_; ++row) {
      start_.push_back(columns_.size());
      const auto take = [&](int column) {
        if (column <= static_cast<int>(row) || column >= static_cast<int>(size_)) return;
        if (lastRow[Index(column)] == static_cast<int>(row)) return;
        lastRow[Index(column)] = static_cast<int>(row);
        columns_.push_back(column);
      };
      for (const MatrixEntry& entry : Entries(row)) take(entry.column);
      for (const int child : children[row]) {
        const size_t end = start_[Index(child) + 1];
        for (size_t j = start_[Index(child)]; j < end; ++j) take(columns_[j]);
      }
      std::sort(columns_.begin() + static_cast<std::ptrdiff_t>(start_[row]), columns_.end());
      if (columns_.size() > start_[row]) {
        children[Index(columns_[start_[row]])].push_back(static_cast<int>(row));
      }
      for (size_t side = 0; side < sides_; ++side) {
        columns_.push_back(static_cast<int>(size_ + side));
      }
    }
    start_.push_back(columns_.size());
  }

  void FindRowsAbove() {
    aboveStart_.assign(size_ + 1, 0);
    const int size = static_cast<int>(size_);
    for (const int column : columns_) {
      if (column < size) ++aboveStart_[Index(column) + 1];
    }
    for (size_t row = 0; row < size_; ++row) aboveStart_[row + 1] += aboveStart_[row];
    above_.resize(aboveStart_[size_]);
    std::vector<size_t> next(aboveStart_.begin(), aboveStart_.end());
    for (size_t row = 0; row < size_; ++row) {
      for (const int column : Columns(row)) {
        if (column < size) above_[next[Index(column)]++] = static_cast<int>(row);
      }
    }
  }

  size_t size_;
  size_t sides_;
  std::vector<MatrixEntry> entries_;
  std::vector<size_t> entryStart_;
  std::vector<int> columns_;
  std::vector<size_t> start_;
  std::vector<int> above_;
  std::vector<size_t> aboveStart_;
};

// --- Down: pivot rows -----------------------------------------------------------------------

/// All pivot rows: the values right of the diagonal, laid out by the patterns, and the pivot
/// itself, scaled near to 1.
struct PivotRows {
  std::vector<double> values;
  std::vector<double> pivots;
};

/// values = factor * values.
ORVANE_FOR_EACH_PROCESSOR
void ScaleValues(double factor, double* values, size_t count) {
  size_t j = 0;
  for (; j + Lanes <= count; j += Lanes) {
    LaneVector lanes;
    std::memcpy(&lanes, values + j, sizeof(lanes));
    lanes = lanes * factor;
    std::memcpy(values + j, &lanes, sizeof(lanes));
  }
  for (; j < count; ++j) values[j] *= factor;
}

/// values = r * values - f * pivotRow.
ORVANE_FOR_EACH_PROCESSOR
void EliminateRow(double r, double f, const double* pivotRow, double* values, size_t count) {
  for (size_t j = 0; j < count; j += Lanes) {
    LaneVector lanes;
    LaneVector row;
    std::memcpy(&lanes, values + j, sizeof(lanes));
    std::memcpy(&row, pivotRow + j, sizeof(row));
    lanes = lanes * r - row * f;
    std::memcpy(values + j, &lanes, sizeof(lanes));
  }
}

/// Some work rows of one width, each at a multiple of the lanes.
class WorkRows {
 public:
  /// Makes all rows 0.
  void Reset(size_t rows, size_t width) {
    width_ = (width + Lanes - 1) / Lanes * Lanes;
    cells_.assign(rows * width_ + Lanes, 0);
    void* start = cells_.data();
    size_t space = cells_.size() * sizeof(double);
    first_ = static_cast<double*>(std::align(sizeof(LaneVector), width_, start, space));
  }
  size_t Width() const { return width_; }
  double* Row(size_t row) { return first_ + row * width_; }

 private:
  size_t width_ = 0;
  std::vector<double> cells_;
  double* first_ = nullptr;
};

/// Computes the pivot rows from top to bottom, a block of rows at a time. The rows of a block are
/// dense, with all columns that one of them uses: the pivot rows above are spread over these columns
/// once for all rows of the block. Each value still goes through the same steps in the same order.
class PivotRowMaker {
 public:
  PivotRowMaker(const NormalSystem& system, const Patterns& patterns)
      : system_(system), patterns_(patterns), place_(patterns.Size() + patterns.Sides(), -1) {}

  /// \return nothing if a pivot was 0 or the work was cancelled
  std::optional<PivotRows> Compute() {
    ProgressSteps steps(system_.progress, WorkStage::Solving, 2 * patterns_.Size(), RowsOfStep);
    rows_.values.resize(patterns_.Values());
    rows_.pivots.resize(patterns_.Size());
    for (size_t first = 0; first < patterns_.Size(); first += BlockRows) {
      LayOut(first, std::min(first + BlockRows, patterns_.Size()));
      for (size_t k = begin_; k < end_; ++k) Load(k);
      for (size_t a = 0; a < above_; ++a) EliminateAbove(a);
      for (size_t k = begin_; k < end_; ++k) {
        if (!steps.Next(k)) return std::nullopt;
        for (size_t i = begin_; i < k; ++i) Eliminate(k, i, PlaceOf(i), work_.Row(i - begin_));
        if (!Keep(k)) return std::nullopt;
      }
      for (const int column : columns_) place_[Index(column)] = -1;
    }
    return std::move(rows_);
  }

 private:
  static constexpr size_t BlockRows = 16;

  size_t PlaceOf(size_t column) const { return Index(place_[column]); }

  /// Finds the columns of a block: the pivots above it, its own rows, then the columns right of it.
  void LayOut(size_t begin, size_t end) {
    begin_ = begin;
    end_ = end;
    columns_.clear();
    const auto take = [&](int column) {
      if (place_[Index(column)] >= 0) return;
      place_[Index(column)] = 0;
      columns_.push_back(column);
    };
    for (size_t k = begin; k < end; ++k) {
      take(static_cast<int>(k));
      for (const int column : patterns_.RowsAbove(k)) take(column);
      for (const int column : patterns_.Columns(k)) take(column);
    }
    std::sort(columns_.begin(), columns_.end());
    for (size_t place = 0; place < columns_.size(); ++place) {
      place_[Index(columns_[place])] = static_cast<int>(place);
    }
    above_ = PlaceOf(begin);
    work_.Reset(end - begin, columns_.size());
    spread_.Reset(1, columns_.size());
    growth_.fill(1);
  }

  void Load(size_t k) {
    double* work = work_.Row(k - begin_);
    for (const MatrixEntry& entry : patterns_.Entries(k)) {
      work[PlaceOf(Index(entry.column))] = entry.value;
    }
    for (size_t side = 0; side < patterns_.Sides(); ++side) {
      work[PlaceOf(patterns_.Size() + side)] = system_.rightSides[side][k];
    }
  }

  /// Eliminates the pivot at place `a`, which is above the block, from all rows of the block.
  void EliminateAbove(size_t a) {
    const size_t i = Index(columns_[a]);
    const auto uses = [&](size_t k) { return work_.Row(k - begin_)[a] != 0; };
    size_t k = begin_;
    while (k < end_ && !uses(k)) ++k;
    if (k == end_) return;
    double* row = spread_.Row(0);
    const double* values = rows_.values.data() + patterns_.Start(i);
    for (const int column : patterns_.Columns(i)) row[PlaceOf(Index(column))] = *values++;
    for (; k < end_; ++k) Eliminate(k, i, a, row);
    std::fill(row + a, row + spread_.Width(), 0);
  }

  /// \param a         the place of pivot `i`
  /// \param pivotRow  its values by place, 0 where it has none
  void Eliminate(size_t k, size_t i, size_t a, const double* pivotRow) {
    double* work = work_.Row(k - begin_);
    const double f = work[a];
    if (f == 0) return;
    // From the beginning of a group of lanes on: the places before are not used any more.
    const size_t from = (a + 1) / Lanes * Lanes;
    const double r = rows_.pivots[i];
    EliminateRow(r, f, pivotRow + from, work + from, work_.Width() - from);
    double& growth = growth_[k - begin_];
    growth *= r;
    if (growth > GrownTooFar) {
      ScaleValues(ScaleBack, work + from, work_.Width() - from);
      growth *= ScaleBack;
    }
  }

  /// Stores a finished row, and leaves it in the block for the rows after it.
  bool Keep(size_t k) {
    double* work = work_.Row(k - begin_);
    const size_t diagonal = PlaceOf(k);
    const double pivot = work[diagonal];
    if (pivot == 0) return false;
    const double power = pivot == 1 ? 1 : PivotPower(pivot);
    rows_.pivots[k] = pivot / power;
    for (size_t j = diagonal + 1; j < columns_.size(); ++j) work[j] /= power;
    double* values = rows_.values.data() + patterns_.Start(k);
    for (const int column : patterns_.Columns(k)) *values++ = work[PlaceOf(Index(column))];
    return true;
  }

  const NormalSystem& system_;
  const Patterns& patterns_;
  PivotRows rows_;
  std::vector<int> place_;    ///< by column: its place in the rows of the block; -1 if in none
  std::vector<int> columns_;  ///< by place, ascending
  size_t begin_ = 0;          ///< the rows of the block
  size_t end_ = 0;
  size_t above_ = 0;  ///< places of pivots above the block
  WorkRows work_;
  WorkRows spread_;  ///< one pivot row; all 0 between two pivots
  std::array<double, BlockRows> growth_{};
};

// --- Up: solutions --------------------------------------------------------------------------

/// The rows in an order in which those that share most of their way up are next to each other: each
/// after its whole subtree.
std::vector<int> RowsByTree(const Patterns& patterns) {
  const size_t size = patterns.Size();
  std::vector<int> firstChild(size + 1, -1);  // the last one is for the parent of the roots
  std::vector<int> sibling(size, -1);
  for (size_t row = 0; row < size; ++row) {
    const int parent = patterns.Parent(row);
    int& head = firstChild[parent < 0 ? size : Index(parent)];
    sibling[row] = head;
    head = static_cast<int>(row);
  }
  // Parents before children, then reversed.
  std::vector<int> order;
  order.reserve(size);
  std::vector<int> stack;
  for (int root = firstChild[size]; root >= 0; root = sibling[Index(root)]) stack.push_back(root);
  while (!stack.empty()) {
    const int row = stack.back();
    stack.pop_back();
    order.push_back(row);
    for (int child = firstChild[Index(row)]; child >= 0; child = sibling[Index(child)]) {
      stack.push_back(child);
    }
  }
  std::reverse(order.begin(), order.end());
  return order;
}

/// cells = r * cells - f * value, lane by lane, for each column of a pivot row.
ORVANE_FOR_EACH_PROCESSOR
void EliminateLanes(std::span<const int> columns, const double* values, const LaneCell& r,
                    const LaneCell& f, LaneCell* cells) {
  const LaneVector factor = r.lanes;
  const LaneVector below = f.lanes;
  const size_t count = columns.size();
  for (size_t j = 0; j < count; ++j) {
    LaneVector& cell = cells[columns[j]].lanes;
    cell = factor * cell - below * values[j];
  }
}

/// Runs groups of rows up the tree and writes their solutions.
class UpwardRuns {
 public:
  UpwardRuns(const Patterns& patterns, const PivotRows& rows, NormalSystem& system)
      : patterns_(patterns),
        rows_(rows),
        system_(system),
        cells_(patterns.Size() + patterns.Sides()) {}

  /// \param group  at most as many rows as there are lanes
  void Run(std::span<const int> group) {
    pivots_.fill(1);
    std::array<int, Lanes> at{};  // the pivot that each row meets next
    for (size_t lane = 0; lane < group.size(); ++lane) at[lane] = Load(lane, Index(group[lane]));
    const auto next = std::span(at).first(group.size());
    while (true) {
      int lowest = -1;
      for (const int pivot : next) {
        if (pivot >= 0 && (lowest < 0 || pivot < lowest)) lowest = pivot;
      }
      if (lowest < 0) break;
      Step(Index(lowest));
      const int parent = patterns_.Parent(Index(lowest));
      for (int& pivot : next) {
        if (pivot == lowest) pivot = parent;
      }
    }
    for (size_t lane = 0; lane < group.size(); ++lane) Finish(lane, Index(group[lane]));
  }

 private:
  /// Puts a row into its lane, with its values as the pivot. \return its parent
  int Load(size_t lane, size_t k) {
    pivots_[lane] = rows_.pivots[k];
    const double* values = rows_.values.data() + patterns_.Start(k);
    for (const int column : patterns_.Columns(k)) cells_[Index(column)].lanes[lane] = *values++;
    return patterns_.Parent(k);
  }

  void Step(size_t i) {
    const LaneCell f = cells_[i];
    cells_[i] = LaneCell{};
    LaneCell r;  // a lane without an entry in this column stays as it is
    const double pivot = rows_.pivots[i];
    bool grown = false;
    for (size_t lane = 0; lane < Lanes; ++lane) {
      r.lanes[lane] = f.lanes[lane] == 0 ? 1 : pivot;
      pivots_[lane] *= r.lanes[lane];
      grown = grown || std::abs(pivots_[lane]) > GrownTooFar;
    }
    const std::span<const int> columns = patterns_.Columns(i);
    EliminateLanes(columns, rows_.values.data() + patterns_.Start(i), r, f, cells_.data());
    if (grown) ScaleLanesBack(f, columns);
  }

  /// \param met  not 0 in the lanes whose rows have just met a pivot; the rest of such a row is
  ///             within the pattern of the pivot's
  void ScaleLanesBack(const LaneCell& met, std::span<const int> columns) {
    for (size_t lane = 0; lane < Lanes; ++lane) {
      if (met.lanes[lane] == 0 || std::abs(pivots_[lane]) <= GrownTooFar) continue;
      pivots_[lane] *= ScaleBack;
      for (const int column : columns) cells_[Index(column)].lanes[lane] *= ScaleBack;
    }
  }

  void Finish(size_t lane, size_t row) {
    const double pivot = pivots_[lane];
    for (size_t s = 0; s < patterns_.Sides(); ++s) {
      LaneCell& cell = cells_[patterns_.Size() + s];
      const double side = cell.lanes[lane];
      system_.rightSides[s][row] = pivot == 1 ? side : side / pivot;
      cell.lanes[lane] = 0;
    }
  }

  const Patterns& patterns_;
  const PivotRows& rows_;
  NormalSystem& system_;
  std::vector<LaneCell> cells_;  ///< by column; all 0 between two groups
  std::array<double, Lanes> pivots_{};
};

/// Multiplications of all upward runs together, by the sizes of the rows on each path.
double UpwardWork(const Patterns& patterns) {
  std::vector<double> pathWork(patterns.Size());
  double total = 0;
  for (size_t k = patterns.Size(); k-- > 0;) {
    const int parent = patterns.Parent(k);
    if (parent < 0) continue;
    pathWork[k] =
        pathWork[Index(parent)] + static_cast<double>(patterns.Columns(Index(parent)).size());
    total += pathWork[k];
  }
  return total;
}

void RunAll(const Patterns& patterns, const PivotRows& rows, NormalSystem& system) {
  const std::vector<int> order = RowsByTree(patterns);
  std::atomic<size_t> next{0};
  const auto work = [&](unsigned worker) {
    UpwardRuns runs(patterns, rows, system);
    // Only the calling thread reports; the others stop with it.
    Progress* progress = worker == 0 ? system.progress : nullptr;
    ProgressSteps steps(progress, WorkStage::Solving, 2 * order.size(), RowsOfStep / Lanes);
    for (size_t first = next.fetch_add(Lanes); first < order.size();
         first = next.fetch_add(Lanes)) {
      if (!steps.Next(order.size() + first)) next = order.size();
      runs.Run(std::span(order).subspan(first, std::min(Lanes, order.size() - first)));
    }
  };
  RunInParallel(UpwardWork(patterns) > WorkForThreads ? ThreadsUpTo(MostThreads) : 1, work);
}

}  // namespace

bool EliminateNormalSparse(NormalSystem& system) {
  const Patterns patterns(system);
  const std::optional<PivotRows> rows = PivotRowMaker(system, patterns).Compute();
  if (!rows) return false;
  RunAll(patterns, *rows, system);
  return true;
}

}  // namespace orvane
