#include "survey/region_system.h"

#include "geo/earth.h"
#include "model/workspace.h"
#include "survey/elimination.h"
#include "survey/links.h"

#include <algorithm>

// The unknowns are the junctions: metres north and east of the first fix, and the altitude. Each
// equation has one or two coefficients of 1 or -1, so only these are stored, and the normal matrix
// computed from them is exact.

namespace orvane {

namespace {

constexpr double NoSolution = double{NoAltitude};

/// One equation: the junctions at `plus` less the one at `minus` give the right-hand sides.
struct Equation {
  int minus = -1;  ///< column with a -1; -1 for none
  int plus = -1;   ///< column with a 1
  int also = -1;   ///< a further column with a 1; -1 for none
  double north = 0;
  double east = 0;
  double altitude = 0;
};

struct Cell {
  int column;
  double value;
};

/// The cells of an equation, by ascending use; a cell that is written twice keeps the last value.
std::vector<Cell> CellsOf(const Equation& equation) {
  std::vector<Cell> cells;
  if (equation.minus >= 0 && equation.minus != equation.plus) cells.push_back({equation.minus, -1});
  cells.push_back({equation.plus, 1});
  if (equation.also >= 0 && equation.also != equation.plus) cells.push_back({equation.also, 1});
  return cells;
}

enum class Side { North, East, Altitude };

double RightSide(const Equation& equation, Side side) {
  switch (side) {
    case Side::North:
      return equation.north;
    case Side::East:
      return equation.east;
    default:
      return equation.altitude;
  }
}

NormalSystem FormNormal(const std::vector<Equation>& equations, size_t size,
                        const std::vector<Side>& sides) {
  NormalSystem system;
  system.size = static_cast<int>(size);
  system.rightSides.assign(sides.size(), std::vector<double>(size));
  for (const Equation& equation : equations) {
    const std::vector<Cell> cells = CellsOf(equation);
    for (const Cell& row : cells) {
      for (const Cell& column : cells) {
        system.entries.push_back({row.column, column.column, row.value * column.value});
      }
      for (size_t s = 0; s < sides.size(); ++s) {
        system.rightSides[s][static_cast<size_t>(row.column)] +=
            row.value * RightSide(equation, sides[s]);
      }
    }
  }
  return system;
}

std::vector<Equation> ChainEquations(const Region& region) {
  std::vector<Equation> equations;
  for (const Chain& chain : region.chains) {
    Equation equation;
    equation.minus = chain.start->regionIndex;
    equation.plus = chain.end->regionIndex;
    equation.north = chain.north;
    equation.east = chain.east;
    equation.altitude = double{chain.altitude};
    equations.push_back(equation);
  }
  return equations;
}

double AltitudeOf(const Point& junction) { return double{MeanAltitude(junction)}; }

/// The equations of the fixes, and the place of the first fix, from which all are measured.
std::vector<Equation> FixEquations(const Region& region, LatLon& origin) {
  std::vector<Equation> equations;
  for (const Point* junction : region.junctions) {
    if (junction->positionWeight == 0) continue;
    const auto weight = static_cast<double>(junction->positionWeight);
    const LatLon fix{junction->latSum / weight, junction->lonSum / weight, NoAltitude};
    if (equations.empty()) origin = fix;
    Meters offset;
    DisplacementBetween(origin, fix, offset);
    Equation equation;
    equation.plus = junction->regionIndex;
    equation.north = offset.north;
    equation.east = offset.east;
    if (junction->altitudeWeight != 0) equation.altitude = AltitudeOf(*junction);
    equations.push_back(equation);
  }
  return equations;
}

/// The equations of the altitudes take the rows of the fixes, and the 1 of the fix in such a row
/// stays. See docs/compatibility.md.
std::vector<Equation> AltitudeEquations(const Region& region, const std::vector<Equation>& fixes) {
  std::vector<Equation> equations;
  for (const Point* junction : region.junctions) {
    if (junction->altitudeWeight == 0) continue;
    Equation equation;
    equation.plus = junction->regionIndex;
    if (equations.size() < fixes.size()) equation.also = fixes[equations.size()].plus;
    equation.altitude = AltitudeOf(*junction);
    equations.push_back(equation);
  }
  return equations;
}

void Append(std::vector<Equation>& equations, const std::vector<Equation>& more) {
  equations.insert(equations.end(), more.begin(), more.end());
}

}  // namespace

void SolveRegionSystem(const Region& region) {
  const std::vector<Point*>& junctions = region.junctions;
  for (size_t i = 0; i < junctions.size(); ++i) junctions[i]->regionIndex = static_cast<int>(i);
  // Where fixes and altitudes always come together, one elimination serves for both.
  const bool together = std::all_of(junctions.begin(), junctions.end(), [](const Point* junction) {
    return (junction->positionWeight != 0) == (junction->altitudeWeight != 0);
  });
  const bool anyAltitude = std::any_of(junctions.begin(), junctions.end(), [](const Point* point) {
    return point->altitudeWeight != 0;
  });

  LatLon origin;
  const std::vector<Equation> chains = ChainEquations(region);
  const std::vector<Equation> fixes = FixEquations(region, origin);
  std::vector<Equation> equations = chains;
  Append(equations, fixes);
  std::vector<Side> sides{Side::North, Side::East};
  if (together) sides.push_back(Side::Altitude);
  Progress* progress = junctions.front()->map->workspace->progress;
  NormalSystem places = FormNormal(equations, junctions.size(), sides);
  places.progress = progress;
  const double freeValues[] = {0, 0, NoSolution};
  EliminateNormal(places, std::span(freeValues).first(sides.size()));

  std::vector<double> altitudes;
  if (together) {
    altitudes = places.rightSides[2];
  } else if (anyAltitude) {
    equations = chains;
    Append(equations, AltitudeEquations(region, fixes));
    NormalSystem heights = FormNormal(equations, junctions.size(), {Side::Altitude});
    heights.progress = progress;
    EliminateNormal(heights, std::span(freeValues).subspan(2));
    altitudes = heights.rightSides[0];
  }

  for (size_t i = 0; i < junctions.size(); ++i) {
    Point& junction = *junctions[i];
    junction.geo.lat = origin.lat;
    junction.geo.lon = origin.lon;
    AddMeters(junction.geo, places.rightSides[0][i], places.rightSides[1][i]);
    junction.geo.altitude = altitudes.empty() ? NoAltitude : static_cast<float>(altitudes[i]);
    junction.flags |= PointPlaced;
  }
}

}  // namespace orvane
