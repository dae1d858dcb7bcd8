#include "base/number_text.h"
#include "survey_fixture.h"
#include "systems.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

using Matrix = std::vector<std::vector<double>>;

/// Solves a positive definite system by its triangular root.
std::vector<double> SolveByRoot(Matrix m, std::vector<double> b) {
  const size_t n = b.size();
  for (size_t j = 0; j < n; ++j) {
    for (size_t k = 0; k < j; ++k) {
      for (size_t i = j; i < n; ++i) m[i][j] -= m[i][k] * m[j][k];
    }
    const double root = std::sqrt(m[j][j]);
    for (size_t i = j; i < n; ++i) m[i][j] /= root;
  }
  for (size_t i = 0; i < n; ++i) {
    for (size_t k = 0; k < i; ++k) b[i] -= m[i][k] * b[k];
    b[i] /= m[i][i];
  }
  for (size_t i = n; i-- > 0;) {
    for (size_t k = i + 1; k < n; ++k) b[i] -= m[k][i] * b[k];
    b[i] /= m[i][i];
  }
  return b;
}

/// Equations of the form: the nodes at `plus` less the one at `minus` are `value`.
struct Row {
  std::vector<int> plus;
  int minus = -1;
  double value = 0;
};

std::vector<double> LeastSquares(size_t size, const std::vector<Row>& rows) {
  Matrix normal(size, std::vector<double>(size));
  std::vector<double> side(size);
  for (const Row& row : rows) {
    std::vector<double> cells(size);
    if (row.minus >= 0) cells[static_cast<size_t>(row.minus)] = -1;
    for (const int plus : row.plus) cells[static_cast<size_t>(plus)] = 1;
    for (size_t i = 0; i < size; ++i) {
      if (cells[i] == 0) continue;
      for (size_t j = 0; j < size; ++j) normal[i][j] += cells[i] * cells[j];
      side[i] += cells[i] * row.value;
    }
  }
  return SolveByRoot(normal, side);
}

struct Shot {
  int holder;
  int base;
  double distance;
  double bearing;
  double inclination;
};

/// A made-up network in which every station has an altitude reading, so that each is a junction.
struct Network {
  int size = 0;
  std::vector<Shot> shots;
  std::vector<int> fixes;
  std::vector<LatLon> places;     ///< of the fixes
  std::vector<double> altitudes;  ///< of all stations

  Network(int stations, std::uint32_t seed) : size(stations) {
    Dice dice(seed);
    std::vector<test::Edge> edges = test::TreeEdges(size, 6, dice);
    for (int i = 0; i < size / 2; ++i) edges.emplace_back(dice.Below(size), dice.Below(size));
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    for (const auto& [a, b] : edges) {
      const bool isBackward =
          a > b && std::find(edges.begin(), edges.end(), test::Edge(b, a)) != edges.end();
      if (a == b || isBackward) continue;
      // Halves and quarters, which 32 bits hold exactly.
      shots.push_back(
          {b, a, 5 + dice.Below(160) / 4.0, dice.Below(720) / 2.0, (dice.Below(80) - 40) / 2.0});
    }
    const int fixCount = 1 + dice.Below(4);
    for (int i = 0; i < fixCount; ++i) {
      const int fix = dice.Below(size);
      if (std::find(fixes.begin(), fixes.end(), fix) != fixes.end()) continue;
      fixes.push_back(fix);
      places.push_back({dice.Below(64) / 65536.0, dice.Below(64) / 65536.0, NoAltitude});
    }
    for (int i = 0; i < size; ++i) altitudes.push_back(dice.Below(300));
  }

  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    const auto name = [](int i) { return "S" + std::to_string(i); };
    for (const Shot& shot : shots) {
      lines.push_back("C\t" + name(shot.holder) + "\t" + name(shot.base) + "\t" +
                      FormatFixed(shot.distance) + "\t" + FormatFixed(shot.bearing) + "\t" +
                      FormatFixed(shot.inclination) + "\n");
    }
    for (size_t i = 0; i < fixes.size(); ++i) {
      lines.push_back("G\t" + name(fixes[i]) + "\tN" + FormatFixed(places[i].lat, 16) + "\tE" +
                      FormatFixed(places[i].lon, 16) + "\n");
    }
    for (int i = 0; i < size; ++i) {
      lines.push_back("A\t" + name(i) + "\t" +
                      std::to_string(static_cast<int>(altitudes[static_cast<size_t>(i)])) + "\n");
    }
    return lines;
  }

  /// One trail that lists the stations first, so that their order is fixed.
  std::string Text(const std::vector<std::string>& lines) const {
    std::string text = "T\tW\n";
    for (int i = 0; i < size; ++i) text += "P\tS" + std::to_string(i) + "\n";
    for (const std::string& line : lines) text += line;
    return text;
  }
};

struct Networks : test::SurveyFixture {
  /// The stations in the order in which the solver lists its junctions.
  std::vector<int> JunctionOrder(const std::string& text) {
    Map& map = Read(text);
    LinkStore store;
    BuildLinks(map, store);
    std::vector<int> order;
    for (const Point* point : FindRegion(map, Named(map, "S0")).junctions) {
      order.push_back(std::stoi(point->name.substr(1)));
    }
    FreeLinks(store);
    return order;
  }
};

TEST_F(Networks, AgreeWithAnotherLeastSquaresSolution) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    const Network network(8 + static_cast<int>(seed % 50), seed);
    const std::string text = network.Text(network.Lines());
    const std::vector<int> order = JunctionOrder(text);
    ASSERT_EQ(order.size(), static_cast<size_t>(network.size));
    const Map& map = Open(text);
    ASSERT_EQ(Said(), Texts{});

    // The first fix of the list of junctions is the origin.
    std::vector<size_t> fixOrder;
    for (const int station : order) {
      const auto fix = std::find(network.fixes.begin(), network.fixes.end(), station);
      if (fix != network.fixes.end()) {
        fixOrder.push_back(static_cast<size_t>(fix - network.fixes.begin()));
      }
    }
    const LatLon origin = network.places[fixOrder.front()];
    std::vector<Row> north;
    std::vector<Row> east;
    std::vector<Row> up;
    for (const Shot& shot : network.shots) {
      const double level = shot.distance * std::cos(shot.inclination * RadiansPerDegree);
      const double bearing = shot.bearing * RadiansPerDegree;
      north.push_back({{shot.base}, shot.holder, level * std::cos(bearing)});
      east.push_back({{shot.base}, shot.holder, level * std::sin(bearing)});
      up.push_back({{shot.base},
                    shot.holder,
                    shot.distance * std::sin(shot.inclination * RadiansPerDegree)});
    }
    for (const size_t fix : fixOrder) {
      Meters offset;
      DisplacementBetween(origin, network.places[fix], offset);
      north.push_back({{network.fixes[fix]}, -1, offset.north});
      east.push_back({{network.fixes[fix]}, -1, offset.east});
    }
    // The first rows of the altitudes are those of the fixes, whose ones stay.
    for (size_t i = 0; i < order.size(); ++i) {
      Row row{{order[i]}, -1, network.altitudes[static_cast<size_t>(order[i])]};
      if (i < fixOrder.size()) row.plus.push_back(network.fixes[fixOrder[i]]);
      up.push_back(row);
    }
    const auto size = static_cast<size_t>(network.size);
    const auto expectedNorth = LeastSquares(size, north);
    const auto expectedEast = LeastSquares(size, east);
    const auto expectedUp = LeastSquares(size, up);
    double span = 1;
    for (const double value : expectedNorth) span = std::max(span, std::abs(value));
    for (const double value : expectedEast) span = std::max(span, std::abs(value));
    for (size_t i = 0; i < size; ++i) {
      const LatLon& geo = Named(map, "S" + std::to_string(i)).geo;
      LatLon expected = origin;
      AddMeters(expected, expectedNorth[i], expectedEast[i]);
      EXPECT_NEAR(geo.lat * MetersPerDegree, expected.lat * MetersPerDegree, 1e-9 * span);
      EXPECT_NEAR(geo.lon * MetersPerDegree, expected.lon * MetersPerDegree, 1e-9 * span);
      EXPECT_NEAR(static_cast<double>(geo.altitude), expectedUp[i],
                  1e-4);  // chains and points hold altitudes in 32 bits
    }
    if (HasFailure()) return;
  }
}

TEST_F(Networks, AreUnmovedByTheOrderOfTheirReadings) {
  for (std::uint32_t seed = 101; seed <= 130; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    const Network network(30, seed);
    std::vector<std::string> lines = network.Lines();
    // Altitudes depend on the order by the ones that fixes leave, places do not.
    const Map& map = Open(network.Text(lines));
    Dice dice(seed);
    for (size_t i = lines.size() - 1; i > 0; --i) {
      std::swap(lines[i], lines[static_cast<size_t>(dice.Below(static_cast<int>(i) + 1))]);
    }
    const Map& shuffled = Open(network.Text(lines));
    for (int i = 0; i < network.size; ++i) {
      const std::string name = "S" + std::to_string(i);
      ExpectAt(shuffled, name, At(map, name).north, At(map, name).east, 1e-4);
    }
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace orvane
