#pragma once

namespace orvane {

/// Replaces this program by `orvane-render` in the same folder, with the same arguments.
/// \return only on failure, after a message: an `ExitStatus`
int HandOver(char** arguments);

}  // namespace orvane
