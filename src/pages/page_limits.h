#pragma once

#include <string>

namespace orvane {

class Messages;

/// A job of more pages asks first.
constexpr int MostPagesUnasked = 100;
/// A job of more pages is refused.
constexpr int MostPages = 10000;

/// \return the message that refuses a job of more than `MostPages`
std::string TooManyPages(long long pages);

/// Refuses a job of too many pages, and asks before a long one.
/// \return true if the job may be printed
bool MayPrint(Messages& messages, int pages);

}  // namespace orvane
