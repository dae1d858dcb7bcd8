#include "base/parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace orvane {
namespace {

/// Starts so many threads, then fails as a system without room does.
struct LimitedStarter {
  unsigned left;
  int asked = 0;

  std::thread operator()(std::function<void()> work) {
    ++asked;
    if (left == 0) throw std::system_error(EAGAIN, std::generic_category());
    --left;
    return std::thread(std::move(work));
  }
};

TEST(RunInParallel, DoesEveryItemOnceWithAnyNumberOfThreadsThatStart) {
  constexpr size_t Items = 1000;
  constexpr unsigned Wanted = 5;
  for (unsigned started = 0; started < Wanted; ++started) {
    std::vector<std::atomic<int>> done(Items);
    std::atomic<size_t> next{0};
    LimitedStarter starter{started};
    const unsigned workers = RunInParallel(
        Wanted,
        [&](unsigned) {
          for (size_t i = next++; i < Items; i = next++) ++done[i];
        },
        std::ref(starter));
    EXPECT_EQ(workers, started + 1);
    EXPECT_EQ(starter.left, 0U);
    for (const auto& times : done) EXPECT_EQ(times, 1);
  }
}

TEST(RunInParallel, AsksForNoMoreThreadsAfterOneThatFailed) {
  LimitedStarter starter{1};
  RunInParallel(
      8, [](unsigned) {}, std::ref(starter));
  EXPECT_EQ(starter.asked, 2);
}

TEST(RunInParallel, ContinuesWithoutMemoryForAThread) {
  int runs = 0;
  const unsigned workers = RunInParallel(
      3, [&](unsigned) { ++runs; },
      [](const std::function<void()>&) -> std::thread { throw std::bad_alloc(); });
  EXPECT_EQ(workers, 1U);
  EXPECT_EQ(runs, 1);
}

TEST(RunInParallel, NumbersItsWorkersFromTheCallingThread) {
  std::mutex mutex;
  std::set<unsigned> met;
  std::thread::id first;
  const unsigned workers = RunInParallel(4, [&](unsigned worker) {
    const std::scoped_lock lock(mutex);
    met.insert(worker);
    if (worker == 0) first = std::this_thread::get_id();
  });
  EXPECT_EQ(workers, 4U);
  EXPECT_EQ(met, (std::set<unsigned>{0, 1, 2, 3}));
  EXPECT_EQ(first, std::this_thread::get_id());
}

TEST(RunInParallel, RunsOnceIfNoThreadIsWanted) {
  for (const unsigned wanted : {0U, 1U}) {
    LimitedStarter starter{5};
    int runs = 0;
    EXPECT_EQ(RunInParallel(
                  wanted, [&](unsigned) { ++runs; }, std::ref(starter)),
              1U);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(starter.asked, 0);
  }
}

TEST(RunInParallel, PassesOnWhatAWorkerThrowsOnceAllHaveEnded) {
  for (unsigned thrower = 0; thrower < 3; ++thrower) {
    std::atomic<int> ended{0};
    std::string caught;
    try {
      RunInParallel(3, [&](unsigned worker) {
        if (worker == thrower) throw std::runtime_error("worker " + std::to_string(worker));
        ++ended;
      });
    } catch (const std::runtime_error& error) {
      caught = error.what();
    }
    EXPECT_EQ(caught, "worker " + std::to_string(thrower));
    EXPECT_EQ(ended, 2);
  }
}

TEST(ThreadsUpTo, StaysBetweenOneAndTheMost) {
  EXPECT_EQ(ThreadsUpTo(0), 1U);
  EXPECT_EQ(ThreadsUpTo(1), 1U);
  EXPECT_GE(ThreadsUpTo(64), 1U);
  EXPECT_LE(ThreadsUpTo(64), 64U);
}

}  // namespace
}  // namespace orvane
