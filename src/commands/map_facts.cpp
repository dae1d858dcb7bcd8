#include "commands/map_facts.h"

#include "base/number_text.h"
#include "model/map_chain.h"

namespace orvane {
namespace {

constexpr char DegreeSign = '\xB0';

}  // namespace

std::vector<std::string> CreditLines(const Map& map) {
  std::vector<std::string> lines;
  for (const std::string& credit : map.credits) {
    if (lines.size() == MostCreditLines) break;
    const size_t start = credit.find_first_not_of(" \t", CreditTagLength(credit));
    lines.push_back(start == std::string::npos ? std::string() : credit.substr(start));
  }
  return lines;
}

std::string DeviationText(double deviation) { return FormatFixed(deviation) + DegreeSign; }

std::optional<double> ParseDeviation(std::string_view text) {
  const RealPrefix number = ReadReal(text);
  if (number.length == 0) return std::nullopt;
  text.remove_prefix(number.length);
  if (!text.empty() && text.front() == DegreeSign) text.remove_prefix(1);
  if (!text.empty()) return std::nullopt;
  return number.value;
}

bool SetBasis(Map& map, Map& basis) {
  if (RestsOn(basis, map)) return false;
  map.basis = &basis;
  map.flags |= MapUnlikeFile;
  return true;
}

bool HasFile(const Map& map) { return !IsUntitled(map) || map.fileMark.has_value(); }

}  // namespace orvane
