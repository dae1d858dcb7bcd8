#pragma once

#include <functional>

namespace orvane {

class Shell;

/// What happens when memory runs out: the command at hand is given up, and the program goes on.

/// Does some work. If memory runs out, writes recovery copies of all unsaved maps and then says that
/// the work was given up. Every command runs in this.
void RunWithinMemory(Shell& shell, const std::function<void()>& work);

/// The recovery copies and the message of `RunWithinMemory`, for an exception that was caught
/// elsewhere.
void ReportOutOfMemory(Shell& shell);

}  // namespace orvane
