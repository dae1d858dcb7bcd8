#pragma once

#include "model/map.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What small commands show of a map and change in it.

/// The About box shows at most this many credit lines.
constexpr size_t MostCreditLines = 5;

/// The credit lines of a map as the About box shows them: at most `MostCreditLines`, without the
/// tag and the blanks or tabs after it.
std::vector<std::string> CreditLines(const Map& map);

/// The magnetic deviation as its prompt shows it: degrees and the degree sign, byte 0xB0.
std::string DeviationText(double deviation);

/// \return the number in such a text, with or without the sign; nothing if it contains anything
///         else
std::optional<double> ParseDeviation(std::string_view text);

/// Makes `basis` the basis of `map`. The map does not count as changed (`MapUnlikeFile`).
/// \return false, with nothing changed, if `basis` is the map or has it in its own basis chain
bool SetBasis(Map& map, Map& basis);

/// \return false for a map that was made by New and never saved
bool HasFile(const Map& map);

}  // namespace orvane
