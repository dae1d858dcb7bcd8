#pragma once

#include <chrono>
#include <optional>

namespace orvane {

/// When the recovery copy of one map is to be written: 15 seconds after the first change, and then
/// no more than once a minute. Times are by any clock that never goes back; this looks at none
/// itself.
class RecoveryTiming {
 public:
  using Time = std::chrono::milliseconds;

  /// From the first change that no copy holds yet to its copy.
  static constexpr Time Delay = std::chrono::seconds(15);
  /// From one copy to the next, also where one could not be written.
  static constexpr Time Interval = std::chrono::minutes(1);
  /// A copy waits until the user has been still for so long,
  static constexpr Time Stillness = std::chrono::seconds(1);
  /// but no longer than this for somebody who is never still.
  static constexpr Time LongestWait = std::chrono::seconds(15);

  /// The map was changed.
  void NoteChange(Time now);
  /// A copy that holds all changes so far was written.
  void NoteWritten(Time now);
  /// A copy could not be written.
  void NoteFailed(Time now);
  /// The changes were saved, or given up: there is nothing to copy any more.
  void NoteSettled();

  /// \param lastInput  when the user last pressed a key, or moved or pressed the mouse; none if
  ///                   never
  /// \return when the copy is to be written, as far as is known now; none if there is nothing new
  std::optional<Time> Due(std::optional<Time> lastInput) const;

 private:
  std::optional<Time> firstChange_;  ///< of those that no copy holds
  std::optional<Time> lastWriting_;
};

}  // namespace orvane
