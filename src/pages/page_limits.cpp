#include "pages/page_limits.h"

#include "base/messages.h"

namespace orvane {

std::string TooManyPages(long long pages) {
  return "Too many pages (" + std::to_string(pages) + ")";
}

bool MayPrint(Messages& messages, int pages) {
  if (pages > MostPages) {
    messages.Post(Severity::Error, TooManyPages(pages));
    return false;
  }
  return pages <= MostPagesUnasked ||
         AskUser(messages, "Print", "Print", "Cancel", "", "This makes %s pages. Print them all?",
                 {std::to_string(pages)}) == 1;
}

}  // namespace orvane
