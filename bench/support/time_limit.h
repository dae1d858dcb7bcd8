#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <limits>
#include <string>

namespace orvane {

/// What a piece of work may take. It is measured in processor time of all threads: no less than the
/// work takes on an idle machine, and nearly the same on a busy one. The fastest run counts.
class TimeLimit {
 public:
  explicit TimeLimit(double seconds) : limit_(seconds) {}

  template <typename Work>
  void Measure(const Work& work) {
    const std::clock_t start = std::clock();
    work();
    const auto taken = static_cast<double>(std::clock() - start);
    fastest_ = std::min(fastest_, taken / CLOCKS_PER_SEC);
  }

  /// Call after the last run: work that took longer is an error, which fails `bench_smoke`.
  void Check(benchmark::State& state) const {
    state.counters["fastest_s"] = fastest_;
    state.counters["limit_s"] = limit_;
    if (fastest_ <= limit_) return;
    const std::string error = "the fastest run took " + std::to_string(fastest_) +
                              " s, the limit is " + std::to_string(limit_) + " s";
    state.SkipWithError(error.c_str());
  }

 private:
  double limit_;                                              ///< seconds
  double fastest_ = std::numeric_limits<double>::infinity();  ///< likewise
};

}  // namespace orvane
