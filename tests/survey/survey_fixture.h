#pragma once

#include "geo/earth.h"
#include "support/map_from_text.h"
#include "survey/links.h"
#include "survey/positions.h"
#include "survey/regions.h"
#include "survey/solver.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane::test {

/// Surveys around latitude 0, longitude 0, where a metre is the same length in both directions.
struct SurveyFixture : MapFixture {
  /// Solves a map again, as after a change.
  static void Solve(Map& map) {
    ClearOwnPositions(map);
    SolveMap(map);
  }

  static bool Placed(const Map& map, std::string_view name) {
    return (Named(map, name).flags & PointPlaced) != 0;
  }

  /// Metres north and east of latitude 0, longitude 0.
  static Meters At(const Map& map, std::string_view name) {
    const LatLon& geo = Named(map, name).geo;
    Meters at = LatLonToMeters(geo.lat, geo.lon);
    at.altitude = geo.altitude;
    return at;
  }

  static void ExpectAt(const Map& map, std::string_view name, double north, double east,
                       double tolerance = 1e-4) {
    EXPECT_TRUE(Placed(map, name)) << name;
    EXPECT_NEAR(At(map, name).north, north, tolerance) << name;
    EXPECT_NEAR(At(map, name).east, east, tolerance) << name;
  }
  static void ExpectAltitude(const Map& map, std::string_view name, double altitude) {
    EXPECT_NEAR(static_cast<double>(Named(map, name).geo.altitude), altitude, 1e-3) << name;
  }

  /// The link or ray from one point to another, or null.
  static const Link* LinkTo(const Link* head, const Point& other) {
    while (head != nullptr && head->other != &other) head = head->next;
    return head;
  }
};

}  // namespace orvane::test
