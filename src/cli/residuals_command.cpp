#include "cli/residuals_command.h"

#include "cli/exit_status.h"
#include "cli/json_values.h"
#include "cli/point_numbers.h"
#include "cli/text_output.h"
#include "survey/residuals.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

const char* KindWord(ResidualKind kind) {
  switch (kind) {
    case ResidualKind::Compass:
      return "compass";
    case ResidualKind::Gps:
      return "gps";
    default:
      return "altitude";
  }
}

/// A chain with the size of its error.
struct ChainResidual {
  const ClosedChain* chain;
  double meters;
};

Json NumberOrNull(const PointNumbers& numbers, const Point* point) {
  return ValueOrNull(numbers.Find(point));
}

Json ReadingJson(const PointNumbers& numbers, const ReadingResidual& residual) {
  return {{"point", NumberOrNull(numbers, residual.point)},
          {"kind", KindWord(residual.kind)},
          {"base", NumberOrNull(numbers, residual.base)},
          {"north", ValueOrNull(residual.north)},
          {"east", ValueOrNull(residual.east)},
          {"up", ValueOrNull(residual.up)},
          {"metres", residual.meters},
          {"percent", ValueOrNull(residual.percent)},
          {"degrees", ValueOrNull(residual.degrees)},
          {"count", residual.reading->count}};
}

Json ChainJson(const PointNumbers& numbers, const ChainResidual& residual) {
  constexpr double PerCent = 100.0;
  const ClosedChain& chain = *residual.chain;
  return {{"from", NumberOrNull(numbers, chain.from)},
          {"to", NumberOrNull(numbers, chain.to)},
          {"legs", chain.legs},
          {"length", chain.length},
          {"north", chain.north},
          {"east", chain.east},
          {"up", ValueOrNull(chain.up)},
          {"metres", residual.meters},
          {"percent", residual.meters / chain.length * PerCent}};
}

/// Keeps the largest errors in falling order; of equal ones the first. What is not a number is last.
template <typename Residual>
void KeepWorst(std::vector<Residual>& list, std::uint64_t count) {
  const auto size = [](const Residual& each) { return std::isnan(each.meters) ? -1 : each.meters; };
  std::stable_sort(list.begin(), list.end(),
                   [&](const Residual& a, const Residual& b) { return size(a) > size(b); });
  if (count < list.size())
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(count), list.end());
}

template <typename List, typename ToJson>
void PrintList(const List& list, ToJson toJson) {
  const char* separator = "[";
  for (const auto& element : list) {
    Print(separator + toJson(element).dump());
    separator = ", ";
  }
  Print(list.empty() ? "[]" : "]");
}

}  // namespace

int ResidualsCommand(const Map& map, const ResidualsRequest& request) {
  const PointNumbers numbers(map);
  std::vector<ReadingResidual> readings = ReadingResiduals(map, numbers.Points());
  std::vector<ChainResidual> chains;
  for (const ClosedChain& chain : map.closedChains) {
    chains.push_back({&chain, SizeOfError(chain.north, chain.east, chain.up)});
  }
  if (request.worst) {
    KeepWorst(readings, *request.worst);
    KeepWorst(chains, *request.worst);
  }
  Print("{\"readings\": ");
  PrintList(readings, [&](const auto& each) { return ReadingJson(numbers, each); });
  Print(", \"chains\": ");
  PrintList(chains, [&](const auto& each) { return ChainJson(numbers, each); });
  Print("}\n");
  return ExitDone;
}

}  // namespace orvane
