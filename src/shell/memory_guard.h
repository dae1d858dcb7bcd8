#pragma once

#include <functional>
#include <new>

namespace orvane {

struct Keepers;
struct Workspace;

/// What happens when memory runs out: the running command is given up, and the program continues.
class MemoryGuard {
 public:
  /// \param keepers  its recovery copies are written first; must outlive the guard, as must
  ///                 `workspace`
  MemoryGuard(Workspace& workspace, const Keepers& keepers)
      : workspace_(workspace), keepers_(keepers) {}

  /// Does some work. If memory runs out, `Report`s that. Every command runs in this.
  void Run(const std::function<void()>& work);

  /// Writes recovery copies of all unsaved maps and then says that the work was given up, or that a
  /// change is made but not shown (`ListenerWithoutMemory`): for an exception that was caught
  /// elsewhere.
  void Report(const std::bad_alloc& error);

 private:
  Workspace& workspace_;
  const Keepers& keepers_;
};

}  // namespace orvane
