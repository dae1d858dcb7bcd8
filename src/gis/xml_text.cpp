#include "gis/xml_text.h"

namespace orvane {

std::string XmlText(std::string_view text) {
  constexpr std::string_view Controls = "\t\n\r";
  constexpr std::string_view NonCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
  std::string kept;
  kept.reserve(text.size());
  while (!text.empty()) {
    size_t dropped = 0;
    for (const std::string_view bytes : NonCharacters) {
      if (text.starts_with(bytes)) dropped = bytes.size();
    }
    const char c = text.front();
    if (static_cast<unsigned char>(c) < ' ' && Controls.find(c) == Controls.npos) dropped = 1;
    if (dropped == 0) kept += c;
    text.remove_prefix(dropped == 0 ? 1 : dropped);
  }
  return kept;
}

}  // namespace orvane
