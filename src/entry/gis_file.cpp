#include "entry/gis_file.h"

#include "base/number_text.h"
#include "base/utf8.h"
#include "entry/gis_values.h"
#include "entry/xml_walk.h"

#include <string>
#include <utility>

namespace orvane {

namespace {

/// True for a text with the byte order mark of UTF-16.
bool IsUtf16(std::string_view text) {
  return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

std::string_view WithoutUtf8Mark(std::string_view text) {
  if (text.starts_with(Utf8Mark)) text.remove_prefix(Utf8Mark.size());
  return text;
}

GisFile ReadXml(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress, GisCellTaker* taker) {
  const auto read = RootOfXml(text) == "kml" ? ReadKml : ReadGpx;
  return read(text, name, messages, progress, taker);
}

}  // namespace

bool IsXmlText(std::string_view text) {
  if (IsUtf16(text)) {
    // XML itself declares its encoding.
    constexpr size_t FirstCharacter = 2;
    return text.substr(FirstCharacter, FirstCharacter).find('<') != std::string_view::npos;
  }
  text = WithoutUtf8Mark(text);
  return TrimSpace(text.substr(0, text.find('<') + 1)) == "<";
}

bool IsKmlText(std::string_view text) {
  if (!IsXmlText(text)) return false;
  return RootOfXml(WithoutUtf8Mark(text)) == "kml";
}

GisFile ReadGisText(std::string_view text, std::string_view name, Messages& messages,
                    Progress* progress, GisCellTaker* taker) {
  const bool isXml = IsXmlText(text);
  if (IsUtf16(text)) {
    if (isXml) return ReadXml(text, name, messages, progress, taker);
    const OriginScope origin(messages, std::string(name));
    NoteError(messages, "File %s is in UTF-16, which can't be read; save it as plain text", {name});
    return {};
  }
  text = WithoutUtf8Mark(text);
  if (!isXml) return ReadGisLines(text, name, messages, progress, taker);
  while (IsSpace(text.back())) text.remove_suffix(1);
  return ReadXml(text, name, messages, progress, taker);
}

std::vector<GisCells> ReadGisCells(std::string_view text, size_t most) {
  RecordedMessages unheard;  // the import has posted them
  GisCellTaker taker{.most = most};
  ReadGisText(text, "", unheard, nullptr, &taker);
  return std::move(taker.cells);
}

}  // namespace orvane
