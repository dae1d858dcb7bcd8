#include "base/latin1.h"

#include "base/text.h"
#include "base/utf8.h"

namespace orvane {

std::string AsLatin1(std::string_view text) {
  if (!IsValidUtf8(text)) return std::string(text);
  std::string latin1;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto code = static_cast<unsigned char>(text[i]);
    if (code < 0x80) {
      latin1 += text[i];
      continue;
    }
    // C2 and C3 begin the letters from U+0080 to U+00FF.
    if (code > 0xC3) return std::string(text);
    const auto next = static_cast<unsigned char>(text[++i]);
    latin1 += static_cast<char>(((code & 0x03U) << 6U) | (next & 0x3FU));
  }
  return latin1;
}

bool IsTypedName(std::string_view stored, std::string_view typed) {
  return SameName(stored, typed) || SameName(stored, AsLatin1(typed));
}

}  // namespace orvane
