#pragma once

namespace orvane {

/// How the batch tool ends.
enum ExitStatus {
  ExitDone = 0,
  ExitFailed = 1,  ///< the command could not do its work
  ExitUsage = 2,   ///< wrong usage
  ExitFatal = 3    ///< after a fatal message
};

}  // namespace orvane
