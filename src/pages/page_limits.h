#pragma once

namespace orvane {

class Messages;

/// A job of more pages asks first.
constexpr int MostPagesUnasked = 100;
/// A job of more pages is refused.
constexpr int MostPages = 10000;

/// Refuses a job of too many pages, and asks before a long one.
/// \return true if the job may be printed
bool MayPrint(Messages& messages, int pages);

}  // namespace orvane
