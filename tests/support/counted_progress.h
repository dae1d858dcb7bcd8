#pragma once

#include "base/progress.h"

#include <cstddef>
#include <limits>
#include <vector>

namespace orvane {

/// Counts the reports of long work, and cancels it at a given one.
class CountedProgress final : public Progress {
 public:
  static constexpr size_t Never = std::numeric_limits<size_t>::max();

  /// \param cancelAt  from 1
  explicit CountedProgress(size_t cancelAt = Never) : cancelAt_(cancelAt) {}

  void Reach(WorkStage stage, size_t done, size_t of) override {
    stages.push_back(stage);
    inBounds = inBounds && (of == 0 || done <= of);
    if (stages.size() >= cancelAt_) Cancel();
  }

  std::vector<WorkStage> stages;  ///< one for each time
  bool inBounds = true;           ///< `done` was never beyond `of`

 private:
  size_t cancelAt_;
};

}  // namespace orvane
