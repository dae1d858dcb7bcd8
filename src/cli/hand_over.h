#pragma once

namespace orvane {

/// Goes on as the program `orvane-render`, which stands beside this one, with the same arguments.
/// \return only on failure, after a message: an `ExitStatus`
int HandOver(char** arguments);

}  // namespace orvane
