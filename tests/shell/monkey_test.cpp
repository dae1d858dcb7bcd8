// Ten thousand events at random, in ten runs that are independent. MONKEY_TRACE=1 in the
// environment writes each event out as it happens; MONKEY_SEEDS=100 takes the seeds from 101 on.

#include "shell/monkey.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class MonkeyTest : public testing::TestWithParam<int> {};

TEST_P(MonkeyTest, WhateverIsDoneTheProgramHolds) {
  constexpr int Events = 1000;
  constexpr int EventsBetweenChecks = 5;
  Monkey monkey(
      static_cast<std::uint64_t>(GetParam() + qEnvironmentVariableIntValue("MONKEY_SEEDS")));
  for (int i = 0; i < Events && !HasFailure(); ++i) {
    monkey.Act();
    if (i % EventsBetweenChecks == 0) monkey.Check();
  }
  monkey.Check();
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyTest, testing::Range(1, 11));

}  // namespace
}  // namespace orvane
