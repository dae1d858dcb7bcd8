#pragma once

namespace orvane {

class Messages;
class PrintedPages;

/// A job of more pages asks first.
constexpr int MostPagesUnasked = 100;
/// A job of more pages is refused.
constexpr int MostPages = 10000;

/// Refuses a job of too many pages, and asks before a long one.
/// \return true if the job may be printed
bool MayPrint(Messages& messages, int pages);

/// The same for a job that is drawn more than once, on pages that may change in between: a preview.
/// \param agreed  as many pages as need no question any more; receives those of a new answer
bool MayPrintAgain(Messages& messages, int pages, int& agreed);

/// Says in a note that the paper cuts lines, if it does.
/// \param pages  laid out for the paper
void NoteCutLines(Messages& messages, const PrintedPages& pages);

}  // namespace orvane
