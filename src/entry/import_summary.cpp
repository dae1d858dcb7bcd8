#include "entry/import_summary.h"

namespace orvane {

std::string Counted(size_t count, std::string_view one, std::string_view many) {
  if (count == 1) return "1 " + std::string(one);
  return (count == 0 ? "no" : std::to_string(count)) + " " + std::string(many);
}

std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += i + 1 == parts.size() ? " and " : ", ";
    text += parts[i];
  }
  return text;
}

std::string LeftOutText(const LeftOutLines& lines) {
  if (lines.count == 0) return {};
  const std::string line = std::to_string(lines.firstLine);
  if (lines.count == 1) return "; line " + line + " is left out";
  return "; " + std::to_string(lines.count) + " lines are left out, the first is line " + line;
}

}  // namespace orvane
