#pragma once

#include "model/map.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What small commands show and take of a map.

/// As many credit lines stand in the About box.
constexpr size_t MostCreditLines = 5;

/// The credit lines of a map as the About box shows them: without the tag and the blanks or tabs
/// behind it, `MostCreditLines` at most.
std::vector<std::string> CreditLines(const Map& map);

/// The magnetic deviation as it stands in its prompt: degrees and the degree sign, byte 0xB0.
std::string DeviationText(double deviation);

/// \return the number of such a text, with or without the sign; nothing if anything else is in it
std::optional<double> ParseDeviation(std::string_view text);

/// Lets `map` rest on `basis`. The map does not count as changed (`MapUnlikeFile`).
/// \return false, and nothing is changed, if `basis` is the map or rests on it
bool SetBasis(Map& map, Map& basis);

/// \return false for a map that was made by New and never saved
bool HasFile(const Map& map);

}  // namespace orvane
