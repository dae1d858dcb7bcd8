#include "view/map_notes.h"

#include "base/utf8.h"
#include "model/map.h"

namespace orvane {

namespace {

constexpr size_t LongestNoteLine = 199;

}  // namespace

std::vector<std::string> NoteLines(const Map& map) {
  std::vector<std::string> lines;
  for (const std::string& credit : map.credits) {
    size_t start = CreditTagLength(credit);
    if (start < credit.size() && credit[start] == ' ') ++start;
    lines.emplace_back(CutText(std::string_view(credit).substr(start), LongestNoteLine));
  }
  return lines;
}

}  // namespace orvane
