#include "ranges/format_area.h"

#include "base/number_text.h"

#include <cmath>

namespace orvane {
namespace {

constexpr double SquareMetersPerHectare = 10000;
constexpr double SquareMetersPerSquareKilometer = 1000000;

/// "-0" is not an area.
std::string Cut(double value) { return FormatFixed(std::trunc(value) + 0.0, 0); }

std::string Figure(double area) {
  if (area >= 10 * SquareMetersPerSquareKilometer) {
    return Cut(area / SquareMetersPerSquareKilometer) + "km^2";
  }
  if (area >= SquareMetersPerSquareKilometer) {
    return FormatFixed(area / SquareMetersPerSquareKilometer, 1) + "km^2";
  }
  if (area >= 10 * SquareMetersPerHectare) return Cut(area / SquareMetersPerHectare) + "ha";
  if (area >= SquareMetersPerHectare) return FormatFixed(area / SquareMetersPerHectare, 1) + "ha";
  return Cut(area) + "m^2";
}

}  // namespace

std::string FormatArea(std::string_view prefix, double squareMeters) {
  return std::string(prefix) + Figure(std::isnan(squareMeters) ? 0 : squareMeters);
}

}  // namespace orvane
