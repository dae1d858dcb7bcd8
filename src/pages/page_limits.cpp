#include "pages/page_limits.h"

#include "base/messages.h"

#include <string>

namespace orvane {

bool MayPrint(Messages& messages, int pages) {
  if (pages > MostPages) {
    NoteError(messages, "Too many pages (%s)", {std::to_string(pages)});
    return false;
  }
  return pages <= MostPagesUnasked ||
         AskUser(messages, "Print", "Print", "Cancel", "", "This makes %s pages. Print them all?",
                 {std::to_string(pages)}) == 1;
}

}  // namespace orvane
