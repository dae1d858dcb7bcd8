#include "commands/recovery_timing.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds Start = seconds(1000);

TEST(RecoveryTiming, NothingIsDueWithoutAChange) {
  RecoveryTiming timing;
  EXPECT_FALSE(timing.Due(std::nullopt));
  EXPECT_FALSE(timing.Due(Start));
  timing.NoteWritten(Start);
  EXPECT_FALSE(timing.Due(Start));
}

TEST(RecoveryTiming, ACopyIsDueFifteenSecondsAfterTheFirstChange) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteChange(Start + seconds(14));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(15));
  EXPECT_EQ(timing.Due(Start + seconds(5)), Start + seconds(15));
}

TEST(RecoveryTiming, CopiesAreAMinuteApart) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteWritten(Start + seconds(15));
  EXPECT_FALSE(timing.Due(std::nullopt));
  timing.NoteChange(Start + seconds(20));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(75));
}

TEST(RecoveryTiming, LongAfterTheLastCopyTheFifteenSecondsCountAgain) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteWritten(Start + seconds(15));
  timing.NoteChange(Start + seconds(500));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(515));
}

TEST(RecoveryTiming, ACopyWaitsForStillness) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  EXPECT_EQ(timing.Due(Start + milliseconds(14'500)), Start + milliseconds(15'500));
  EXPECT_EQ(timing.Due(Start + seconds(16)), Start + seconds(17));
}

TEST(RecoveryTiming, ACopyIsDueEvenIfTheUserNeverPauses) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  for (int second = 16; second < 100; ++second) {
    const auto due = timing.Due(Start + seconds(second));
    ASSERT_TRUE(due);
    EXPECT_LE(*due, Start + seconds(30));
  }
}

TEST(RecoveryTiming, AfterAFailureItIsTriedAgainAMinuteLater) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteFailed(Start + seconds(15));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(75));
}

TEST(RecoveryTiming, WhatIsSavedNeedsNoCopy) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteSettled();
  EXPECT_FALSE(timing.Due(std::nullopt));
  timing.NoteChange(Start + seconds(5));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(20));
}

TEST(RecoveryTiming, SavingBetweenDoesNotMakeCopiesMoreFrequent) {
  RecoveryTiming timing;
  timing.NoteChange(Start);
  timing.NoteWritten(Start + seconds(15));
  timing.NoteSettled();
  timing.NoteChange(Start + seconds(16));
  EXPECT_EQ(timing.Due(std::nullopt), Start + seconds(75));
}

/// An hour of work with an edit every `step` seconds and the hands never still.
TEST(RecoveryTiming, AnHourOfWorkMakesAtMostOneCopyAMinuteAndLosesAtMostNinetySeconds) {
  for (const int step : {1, 7, 31, 61, 100}) {
    RecoveryTiming timing;
    int copies = 0;
    milliseconds lastCopy = Start;
    std::optional<milliseconds> oldestChange;
    for (int second = 0; second < 3600; ++second) {
      const milliseconds now = Start + seconds(second);
      if (second % step == 0) {
        timing.NoteChange(now);
        if (!oldestChange) oldestChange = now;
      }
      const auto due = timing.Due(now);
      if (due && *due <= now) {
        if (copies > 0) {
          EXPECT_GE(now - lastCopy, seconds(60)) << step;
        }
        timing.NoteWritten(now);
        lastCopy = now;
        oldestChange.reset();
        ++copies;
      }
      if (oldestChange) {
        EXPECT_LE(now - *oldestChange, seconds(90)) << step;
      }
    }
    EXPECT_GE(copies, 3600 / std::max(step, 90) - 2) << step;
    EXPECT_LE(copies, 60) << step;
  }
}

}  // namespace
}  // namespace orvane
