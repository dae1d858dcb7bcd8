#pragma once

#include <functional>
#include <thread>

namespace orvane {

/// Starts a thread that runs `work`. Throws `std::system_error` or `std::bad_alloc` if it can't.
using ThreadStarter = std::function<std::thread(std::function<void()> work)>;

/// \return how many threads are worth starting: one for each processor, from 1 to `most`
unsigned ThreadsUpTo(unsigned most);

/// Runs a loop on several threads. Each runs `work` once, which takes its items from a counter that
/// all share; so whatever number of threads starts, every item is done.
/// \param wanted  threads in all, the calling one included; if one can't be started, those that run
///                do the work
/// \param work    called with the number of the worker: 0 on the calling thread, then 1, 2, ...
/// \return the number of workers that ran, from 1, once all have ended. Throws what a worker throws,
///         the lowest worker's first.
unsigned RunInParallel(unsigned wanted, const std::function<void(unsigned worker)>& work);

/// The same with threads of another kind, for tests.
unsigned RunInParallel(unsigned wanted, const std::function<void(unsigned worker)>& work,
                       const ThreadStarter& start);

}  // namespace orvane
