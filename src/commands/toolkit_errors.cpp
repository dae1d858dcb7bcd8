#include "commands/toolkit_errors.h"

#include "base/messages.h"

namespace orvane {

bool ToolkitErrors::Report(std::uint32_t code, int severity, const std::string& text) {
  if (code == Harmless) return true;
  NoteInternalError(messages_, "%s", {text});
  return ++count_ <= MostErrors && severity < Grave;
}

}  // namespace orvane
