#pragma once

#include <chrono>
#include <optional>

namespace orvane {

/// When the recovery copy of one map is due: 15 seconds after the first change, and then at most
/// once a minute. Times may come from any clock that never goes back; this class reads none.
class RecoveryTiming {
 public:
  using Time = std::chrono::milliseconds;

  /// From the first change that no copy holds yet to the copy.
  static constexpr Time Delay = std::chrono::seconds(15);
  /// From one copy to the next, also after a failure.
  static constexpr Time Interval = std::chrono::minutes(1);
  /// A copy waits until the user has paused for this long,
  static constexpr Time Stillness = std::chrono::seconds(1);
  /// but no longer than this if the user never pauses.
  static constexpr Time LongestWait = std::chrono::seconds(15);

  /// The map was changed.
  void NoteChange(Time now);
  /// A copy that holds all changes so far was written.
  void NoteWritten(Time now);
  /// A copy could not be written.
  void NoteFailed(Time now);
  /// The changes were saved or discarded: there is nothing to copy.
  void NoteSettled();

  /// \param lastInput  when the user last pressed a key, or moved or pressed the mouse; none if
  ///                   never
  /// \return when the copy is due, as far as is known now; none if nothing is new
  std::optional<Time> Due(std::optional<Time> lastInput) const;

 private:
  std::optional<Time> firstChange_;  ///< of those that no copy holds
  std::optional<Time> lastWriting_;
};

}  // namespace orvane
