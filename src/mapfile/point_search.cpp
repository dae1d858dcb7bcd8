#include "mapfile/point_search.h"

#include "base/line_reader.h"
#include "base/text.h"
#include "base/utf8.h"
#include "mapfile/field_cursor.h"
#include "model/map.h"

#include <limits>

namespace orvane {
namespace {

constexpr std::string_view PointTags = "acglnp";

/// A word has letters, digits and bytes beyond ASCII.
bool IsOfWord(char c) {
  const char folded = FoldByte(c);
  return (folded >= 'a' && folded <= 'z') || IsDigit(c) || static_cast<unsigned char>(c) >= 0x80;
}

/// \return true if one part of a spec such as "Fig=Camp" is the name
bool SpecHasName(std::string_view spec, std::string_view name) {
  while (true) {
    const size_t end = spec.find('=');
    if (SameName(spec.substr(0, end), name)) return true;
    if (end == std::string_view::npos) return false;
    spec.remove_prefix(end + 1);
  }
}

bool GivesReading(std::string_view line, std::string_view name) {
  if (PointTags.find(FoldByte(line.front())) == std::string_view::npos) return false;
  FieldCursor cursor(line);
  cursor.SkipField();
  return cursor.SkipByte('\t') && SpecHasName(cursor.Field(), name);
}

/// \return true if the name is in the line as a word of its own: "Pde2" is not in "Pde20"
bool Mentions(std::string_view line, std::string_view name) {
  for (size_t at = 0; at < line.size();) {
    const size_t found = FindTextFolded(line.substr(at), name);
    if (found == std::string_view::npos) return false;
    const size_t begin = at + found;
    const size_t end = begin + name.size();
    const bool startsWord = begin == 0 || !IsOfWord(line[begin - 1]);
    const bool endsWord = end == line.size() || !IsOfWord(line[end]);
    if (startsWord && endsWord) return true;
    at = begin + 1;
  }
  return false;
}

}  // namespace

size_t FirstLineOfPoint(std::string_view content, std::string_view name) {
  if (name.empty()) return 0;
  if (content.starts_with(Utf8Mark)) content.remove_prefix(Utf8Mark.size());
  LineReader lines(content, std::numeric_limits<size_t>::max());
  size_t mention = 0;
  size_t number = 0;
  while (auto line = lines.Next()) {
    ++number;
    const size_t start = line->find_first_not_of(" \t");
    if (start == std::string_view::npos) continue;
    line->remove_prefix(start);
    if (line->front() == '#' || CreditTagLength(*line) > 0) continue;
    if (GivesReading(*line, name)) return number;
    if (mention == 0 && line->find('\t') != std::string_view::npos &&
        Mentions(line->substr(line->find('\t')), name)) {
      mention = number;
    }
  }
  return mention;
}

}  // namespace orvane
