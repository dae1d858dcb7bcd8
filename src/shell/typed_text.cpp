#include "shell/typed_text.h"

#include "paint/display_text.h"

#include <string_view>

namespace orvane {

std::string AsLatin1(const std::string& text) {
  constexpr std::string_view AnyLatin1 = "\xE9";
  return StoredText(DisplayText(text), AnyLatin1);
}

}  // namespace orvane
