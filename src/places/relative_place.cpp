#include "places/relative_place.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/earth.h"
#include "model/point_names.h"

#include <array>
#include <cmath>
#include <optional>

namespace orvane {

namespace {

enum class Direction { Right, Left, North, South, West, East };

struct DirectionWord {
  std::string_view word;
  Direction direction;
};

// Whole words before single letters, so that "s" does not take the front of "south".
constexpr std::array<DirectionWord, 12> DirectionWords = {{{"right", Direction::Right},
                                                           {"left", Direction::Left},
                                                           {"north", Direction::North},
                                                           {"south", Direction::South},
                                                           {"west", Direction::West},
                                                           {"east", Direction::East},
                                                           {"r", Direction::Right},
                                                           {"l", Direction::Left},
                                                           {"n", Direction::North},
                                                           {"s", Direction::South},
                                                           {"w", Direction::West},
                                                           {"e", Direction::East}}};
constexpr std::array<std::string_view, 4> UnitWords = {"meters", "meter", "M", "m"};

void SkipBlanks(std::string_view& text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
}

/// Skips `word` if it comes next, exactly so written. \return true if it did
bool SkipWord(std::string_view& text, std::string_view word) {
  const auto rest = StartsWith(word, text);
  if (rest) text = *rest;
  return rest.has_value();
}

bool SkipUnit(std::string_view& text) {
  for (const std::string_view unit : UnitWords) {
    if (SkipWord(text, unit)) return true;
  }
  return false;
}

std::optional<Direction> TakeDirection(std::string_view& text) {
  for (const DirectionWord& entry : DirectionWords) {
    if (SkipWord(text, entry.word)) return entry.direction;
  }
  return std::nullopt;
}

/// \param travel  radians clockwise from north
/// \return radians clockwise from north
double AngleOf(Direction direction, double travel) {
  switch (direction) {
    case Direction::Right:
      return travel - Pi / 2;  // as seen when looking back; see docs/compatibility.md
    case Direction::Left:
      return travel + Pi / 2;
    case Direction::South:
      return Pi;
    case Direction::West:
      return 3 * Pi / 2;
    case Direction::East:
      return Pi / 2;
    default:
      return 0;
  }
}

}  // namespace

std::optional<LatLon> ResolveRelativePlace(Lookup& lookup, std::string_view text) {
  const RealPrefix number = ReadReal(text);
  if (number.length == 0) return std::nullopt;
  text.remove_prefix(number.length);
  if (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  if (!SkipUnit(text)) return std::nullopt;
  SkipBlanks(text);
  const auto direction = TakeDirection(text);
  if (!direction) return std::nullopt;
  SkipBlanks(text);
  if (!SkipWord(text, "of")) return std::nullopt;
  SkipBlanks(text);

  double travel = 0;
  auto place = lookup.MarkPlace(text, &travel);
  if (!place) {
    if (*direction == Direction::Right || *direction == Direction::Left) return std::nullopt;
    const Point* point = FindPointByName(lookup.InMap(), nullptr, text);
    if (point == nullptr || !lookup.IsPlaced(*point)) return std::nullopt;
    place = point->geo;
  }
  const double angle = AngleOf(*direction, travel);
  AddMeters(*place, number.value * std::cos(angle), number.value * std::sin(angle));
  return place;
}

}  // namespace orvane
