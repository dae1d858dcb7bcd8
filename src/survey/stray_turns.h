#pragma once

#include "model/records.h"

#include <queue>

#include <cstddef>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace orvane {

/// The order in which strays, numbered from 0, are tried: in passes, each stray once a pass, until
/// a pass places none. A stray that waits for points is skipped in the passes in which it would
/// fail again; all others are tried when they would be without this.
class StrayTurns {
 public:
  explicit StrayTurns(size_t strays);

  /// \return the next stray to try; nothing at the end
  std::optional<size_t> Next();

  /// The stray of this turn failed and may succeed in any pass.
  void TryEachPass();
  /// The stray of this turn failed and will fail until one of these points has a place; without
  /// points it is never tried again.
  void WaitFor(std::span<const Point* const> points);
  /// This pass gained something, so there will be another.
  void NoteGain() { gained_ = true; }
  /// A point was placed in this turn: the strays that wait for it are tried again.
  void Wake(const Point& placed);

 private:
  /// What a stray does until its next turn. A stray that was placed, or waits for nothing, is done.
  enum class State : unsigned char { Done, Waiting, Woken, EachPass };
  using Turns = std::priority_queue<size_t, std::vector<size_t>, std::greater<>>;

  bool BeginPass();

  size_t current_ = 0;
  bool gained_ = false;
  std::vector<size_t> eachPass_;  ///< in ascending order, from `at_` on for this pass
  size_t at_ = 0;
  std::vector<size_t> eachNext_;  ///< the same for the next pass
  Turns woken_;                   ///< for this pass
  std::vector<size_t> wokenNext_;
  std::vector<State> states_;  ///< by stray
  std::unordered_map<const Point*, std::vector<size_t>> waiting_;
};

}  // namespace orvane
