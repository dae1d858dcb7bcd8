#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace orvane {

/// Numbers that come out alike on every machine for a seed, unlike those of the standard
/// distributions.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// \return from 0 up to but not including 1
  double Part() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  /// \return from `low` up to but not including `high`
  double Between(double low, double high) { return low + (high - low) * Part(); }
  /// \return from 0 to `count` - 1
  int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
  /// \return from `low` to `high` - 1
  int Int(int low, int high) { return low + Below(high - low); }
  /// \return true once in `count` times
  bool OneIn(int count) { return Below(count) == 0; }
  /// \return any one of the elements
  template <typename List>
  auto& Of(List& list) {
    return list[static_cast<size_t>(Below(static_cast<int>(std::size(list))))];
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace orvane
