#include "pages/paper.h"

#include "base/text.h"

#include <algorithm>

namespace orvane {

const std::vector<Paper>& Papers() {
  static const std::vector<Paper> papers = {
      {"A4", 210, 297},        {"Letter", 215.9, 279.4},
      {"Legal", 215.9, 355.6}, {"A3", 297, 420},
      {"A5", 148, 210},        {"Tabloid", 279.4, 431.8},
      {"A0", 841, 1189},       {"A1", 594, 841},
      {"A2", 420, 594},        {"A6", 105, 148},
      {"B3", 353, 500},        {"B4", 250, 353},
      {"B5", 176, 250},        {"Executive", 184.2, 266.7},
  };
  return papers;
}

std::optional<Paper> FindPaper(std::string_view name) {
  const auto found = std::find_if(Papers().begin(), Papers().end(),
                                  [&](const Paper& paper) { return SameName(paper.name, name); });
  if (found == Papers().end()) return std::nullopt;
  return *found;
}

}  // namespace orvane
