#include "pages/page_limits.h"

#include "base/messages.h"
#include "pages/printed_pages.h"

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

bool MayPrintAgain(Messages& messages, int pages, int& agreed) {
  if (pages <= agreed) return true;
  if (!MayPrint(messages, pages)) return false;
  agreed = pages;
  return true;
}

void NoteCutLines(Messages& messages, const PrintedPages& pages) {
  if (!pages.IsTooWide()) return;
  PostNote(messages, "The paper is too narrow: columns at the right are cut");
}

}  // namespace orvane
