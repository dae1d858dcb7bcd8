#include "commands/recovery_timing.h"

#include <algorithm>

namespace orvane {

void RecoveryTiming::NoteChange(Time now) {
  if (!firstChange_) firstChange_ = now;
}

void RecoveryTiming::NoteWritten(Time now) {
  firstChange_.reset();
  lastWriting_ = now;
}

void RecoveryTiming::NoteFailed(Time now) { lastWriting_ = now; }

void RecoveryTiming::NoteSettled() {
  // The time of the last copy stays, so that saving after each change does not make two copies a
  // minute.
  firstChange_.reset();
}

std::optional<RecoveryTiming::Time> RecoveryTiming::Due(std::optional<Time> lastInput) const {
  if (!firstChange_) return std::nullopt;
  Time due = *firstChange_ + Delay;
  if (lastWriting_) due = std::max(due, *lastWriting_ + Interval);
  if (!lastInput) return due;
  return std::clamp(*lastInput + Stillness, due, due + LongestWait);
}

}  // namespace orvane
