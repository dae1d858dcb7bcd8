#include "base/parallel.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace orvane {

unsigned ThreadsUpTo(unsigned most) {
  return std::clamp(std::thread::hardware_concurrency(), 1U, std::max(most, 1U));
}

unsigned RunInParallel(unsigned wanted, const std::function<void(unsigned worker)>& work) {
  return RunInParallel(wanted, work,
                       [](std::function<void()> run) { return std::thread(std::move(run)); });
}

unsigned RunInParallel(unsigned wanted, const std::function<void(unsigned worker)>& work,
                       const ThreadStarter& start) {
  const size_t most = std::max(wanted, 1U);
  std::vector<std::exception_ptr> thrown(most);
  // An exception that leaves a thread would end the program, so each is kept for the caller.
  const auto run = [&](unsigned worker) {
    try {
      work(worker);
    } catch (...) {
      thrown[worker] = std::current_exception();
    }
  };
  std::vector<std::thread> others;
  others.reserve(most - 1);
  try {
    while (others.size() + 1 < most) {
      const auto worker = static_cast<unsigned>(others.size() + 1);
      others.push_back(start([&run, worker] { run(worker); }));
    }
  } catch (const std::exception&) {
    // The system has no room for another thread: those that run do its share.
  }
  run(0);
  for (std::thread& other : others) other.join();
  for (const std::exception_ptr& exception : thrown) {
    if (exception) std::rethrow_exception(exception);
  }
  return static_cast<unsigned>(others.size() + 1);
}

}  // namespace orvane
