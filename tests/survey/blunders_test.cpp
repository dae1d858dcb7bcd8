#include "survey/blunders.h"

#include "base/number_text.h"
#include "survey_fixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

/// A shot of a planned survey.
struct PlannedShot {
  std::string point;
  std::string base;
  double distance;
  double bearing;
  double inclination;
};

/// A net of trails: four by four crossings about 80 m apart, a point between each two of them, read
/// to half a degree and a decimetre. Two crossings have a fix.
struct PlannedSurvey {
  std::vector<PlannedShot> shots;
  std::string fixes;

  explicit PlannedSurvey(unsigned seed) {
    std::mt19937 random(seed);
    const auto jitter = [&](double size) {
      return size * (static_cast<double>(random()) / 2147483648.0 - 1);
    };
    constexpr int Side = 4;
    std::vector<Meters> places;
    for (int i = 0; i < Side * Side; ++i) {
      places.push_back({80.0 * (i / Side) + jitter(8), 80.0 * (i % Side) + jitter(8),
                        static_cast<float>(50 + jitter(9))});
    }
    const auto name = [](int i) { return "J" + std::to_string(i); };
    const auto join = [&](int a, int b) {
      const Meters& from = places[static_cast<size_t>(a)];
      const Meters& to = places[static_cast<size_t>(b)];
      const Meters middle{(from.north + to.north) / 2 + jitter(6),
                          (from.east + to.east) / 2 + jitter(6),
                          (from.altitude + to.altitude) / 2 + static_cast<float>(jitter(3))};
      const std::string between = "M" + std::to_string(a) + "x" + std::to_string(b);
      AddShot(between, middle, name(a), from);
      AddShot(name(b), to, between, middle);
    };
    for (int i = 0; i < Side * Side; ++i) {
      if (i % Side + 1 < Side) join(i, i + 1);
      if (i / Side + 1 < Side) join(i, i + Side);
    }
    for (const int i : {0, Side * Side - 1}) {
      const Meters& at = places[static_cast<size_t>(i)];
      fixes += "G\t" + name(i) + "\tN" + FormatFixed(at.north / MetersPerDegree, 8) + "\xB0\tE" +
               FormatFixed(at.east / MetersPerDegree, 8) + "\xB0\t" +
               std::to_string(static_cast<int>(at.altitude)) + '\n';
    }
  }

  std::string Text() const {
    std::string text = "T\n" + fixes;
    for (const PlannedShot& shot : shots) {
      text += "C\t" + shot.point + '\t' + shot.base + '\t' + FormatGeneral(shot.distance) + '\t' +
              FormatGeneral(shot.bearing) + '\t' + FormatGeneral(shot.inclination) + '\n';
    }
    return text;
  }

 private:
  void AddShot(const std::string& point, const Meters& at, const std::string& base,
               const Meters& baseAt) {
    const double north = baseAt.north - at.north;
    const double east = baseAt.east - at.east;
    const double up = static_cast<double>(baseAt.altitude - at.altitude);
    const double ground = std::hypot(north, east);
    const auto half = [](double degrees) { return std::round(degrees * 2) / 2; };
    double bearing = half(std::atan2(east, north) / RadiansPerDegree);
    if (bearing < 0) bearing += 360;
    shots.push_back({point, base, std::round(std::hypot(ground, up) * 10) / 10, bearing,
                     half(std::atan2(up, ground) / RadiansPerDegree)});
  }
};

struct Blunders : test::SurveyFixture {
  std::vector<LikelyBlunder> Find(const PlannedSurvey& survey) { return Find(survey.Text()); }
  std::vector<LikelyBlunder> Find(std::string_view text) {
    SurveyNetwork network = BuildSurveyNetwork(Open(text));
    return FindBlunders(network);
  }

  /// Plants a blunder in every tenth shot in turn, and expects that it is named.
  template <typename Plant>
  void ExpectNamed(BlunderKind kind, BlunderField field, Plant plant) {
    int planted = 0;
    int best = 0;
    for (unsigned seed = 1; seed <= 3; ++seed) {
      const PlannedSurvey sound(seed);
      for (size_t i = seed; i < sound.shots.size(); i += 5) {
        PlannedSurvey survey = sound;
        PlannedShot& shot = survey.shots[i];
        const PlannedShot was = shot;
        if (!plant(shot)) continue;
        ++planted;
        const auto found = Find(survey);
        SCOPED_TRACE("seed " + std::to_string(seed) + " shot " + was.point + " " + was.base + " " +
                     FormatGeneral(was.distance) + " " + FormatGeneral(was.bearing) + " " +
                     FormatGeneral(was.inclination));
        ASSERT_EQ(found.size(), 1U);
        const auto names = [&](const Blunder& blunder) {
          return blunder.point->name == was.point && blunder.reading->base->name == was.base;
        };
        if (names(found[0].best) && found[0].best.kind == kind && found[0].best.field == field) {
          ++best;
        }
        bool isNamed = names(found[0].best);
        for (const Blunder& other : found[0].others) isNamed = isNamed || names(other);
        EXPECT_TRUE(isNamed) << found[0].best.point->name << " " << found[0].best.written << " to "
                             << found[0].best.likely;
        EXPECT_LT(found[0].best.after, EnoughOfError * found[0].best.before);
      }
    }
    EXPECT_GE(planted, 8);
    EXPECT_GE(best * 10, planted * 7) << "the change itself is mostly the best one";
  }
};

TEST_F(Blunders, AreNotFoundInASoundSurvey) {
  for (unsigned seed = 1; seed <= 5; ++seed) EXPECT_TRUE(Find(PlannedSurvey(seed)).empty()) << seed;
}

TEST_F(Blunders, ABearingReadBackwardsIsNamed) {
  ExpectNamed(BlunderKind::BackwardBearing, BlunderField::Bearing, [](PlannedShot& shot) {
    shot.bearing += shot.bearing < 180 ? 180 : -180;
    return true;
  });
}

TEST_F(Blunders, SwappedDigitsOfABearingAreNamed) {
  ExpectNamed(BlunderKind::SwappedDigits, BlunderField::Bearing, [](PlannedShot& shot) {
    const int whole = static_cast<int>(shot.bearing);
    const int swapped = whole / 100 * 100 + whole % 10 * 10 + whole / 10 % 10;
    if (std::abs(swapped - whole) < 18 || swapped >= 360) return false;
    shot.bearing += swapped - whole;
    return true;
  });
}

TEST_F(Blunders, SwappedDigitsOfADistanceAreNamed) {
  ExpectNamed(BlunderKind::SwappedDigits, BlunderField::Distance, [](PlannedShot& shot) {
    const int whole = static_cast<int>(shot.distance);
    const int swapped = whole % 10 * 10 + whole / 10;
    if (std::abs(swapped - whole) < 9) return false;
    shot.distance += swapped - whole;
    return true;
  });
}

TEST_F(Blunders, MisreadTensOfDegreesAreNamed) {
  ExpectNamed(BlunderKind::MisreadTens, BlunderField::Bearing, [](PlannedShot& shot) {
    const int tens = static_cast<int>(shot.bearing) / 10 % 10;
    if (tens == 9) return false;
    shot.bearing += 10;
    return shot.bearing < 360;
  });
}

TEST_F(Blunders, AWrongSignOfAnInclinationIsNamed) {
  ExpectNamed(BlunderKind::WrongSign, BlunderField::Inclination, [](PlannedShot& shot) {
    if (std::abs(shot.inclination) < 4) return false;
    shot.inclination = -shot.inclination;
    return true;
  });
}

TEST_F(Blunders, ADoubledDistanceIsNamed) {
  ExpectNamed(BlunderKind::DoubledDistance, BlunderField::Distance, [](PlannedShot& shot) {
    shot.distance *= 2;
    return true;
  });
}

TEST_F(Blunders, AHalvedDistanceIsNamed) {
  ExpectNamed(BlunderKind::HalvedDistance, BlunderField::Distance, [](PlannedShot& shot) {
    shot.distance /= 2;
    return true;
  });
}

TEST_F(Blunders, FeetAreNamed) {
  ExpectNamed(BlunderKind::Feet, BlunderField::Distance, [](PlannedShot& shot) {
    shot.distance = std::round(shot.distance / 0.3048 * 10) / 10;
    return true;
  });
}

TEST_F(Blunders, SwappedDigitsOfAFixAreNamed) {
  // Four fixes at the ends of a cross, one of them with 26 for 62 thousandths of a minute.
  const auto found = Find(
      "T\nG\tA\tN0 0.000'\tE0 0.000'\nG\tB\tN0 0.100'\tE0 0.000'\nG\tC\tN0 0.026'\tE0 0.100'\n"
      "C\tB\tA\t185.2\t180\nC\tC\tA\t218.2\t238.1\nC\tC\tB\t197.9\t290.6\n");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].best.point->name, "C");
  EXPECT_EQ(found[0].best.kind, BlunderKind::SwappedDigits);
  EXPECT_EQ(found[0].best.field, BlunderField::Latitude);
  EXPECT_NEAR(found[0].best.likely * 60, 0.062, 1e-9);
}

TEST_F(Blunders, MisreadTensAndTheHemisphereOfAFixAreNamed) {
  const char* legs = "C\tB\tA\t1852\t180\nC\tC\tA\t1852\t0\n";
  const auto tens = Find(std::string("T\nG\tA\tN0 5.000'\tE0 0.000'\nG\tB\tN0 16.000'\tE0 0.000'\n"
                                     "G\tC\tN0 4.000'\tE0 0.000'\n") +
                         legs);
  ASSERT_EQ(tens.size(), 1U);
  EXPECT_EQ(tens[0].best.point->name, "B");
  EXPECT_EQ(tens[0].best.kind, BlunderKind::MisreadTens);
  EXPECT_NEAR(tens[0].best.likely * 60, 6, 1e-9);
  const auto sign = Find(std::string("T\nG\tA\tN0 5.000'\tE0 0.000'\nG\tB\tS0 6.000'\tE0 0.000'\n"
                                     "G\tC\tN0 4.000'\tE0 0.000'\n") +
                         legs);
  ASSERT_EQ(sign.size(), 1U);
  EXPECT_EQ(sign[0].best.kind, BlunderKind::WrongSign);
}

TEST_F(Blunders, TwoPlantedBlundersAreBothNamed) {
  PlannedSurvey survey(7);
  PlannedShot& first = survey.shots[0];
  PlannedShot& last = survey.shots[survey.shots.size() - 1];
  first.distance *= 2;
  last.bearing += last.bearing < 180 ? 180 : -180;
  const auto found = Find(survey);
  ASSERT_EQ(found.size(), 2U);
  std::vector<std::string> points = {found[0].best.point->name, found[1].best.point->name};
  std::sort(points.begin(), points.end());
  std::vector<std::string> planted = {first.point, last.point};
  std::sort(planted.begin(), planted.end());
  EXPECT_EQ(points, planted);
}

TEST_F(Blunders, SmallErrorsAreNotTried) {
  // The bearings of a loop of 6 m are read backwards to an error of less than a metre, and a loop of
  // 1000 m misses by less than 2 %.
  EXPECT_TRUE(Find("T\nG\tA\tN0\tE0\nC\tB\tA\t2\t180\nC\tA\tB\t2.9\t0\n").empty());
  EXPECT_TRUE(
      Find("T\nG\tA\tN0\tE0\nC\tB\tA\t500\t180\nC\tC\tB\t1\t270\nC\tA\tC\t518\t0\n").empty());
}

TEST_F(Blunders, DeadEndsAreNotTried) {
  EXPECT_TRUE(Find("T\nG\tA\tN0\tE0\nC\tB\tA\t500\t180\nC\tC\tB\t700\t270\n").empty());
}

TEST(WithDigitsSwapped, SwapsNeighborsAcrossThePointToo) {
  EXPECT_EQ(WithDigitsSwapped("123"), (std::vector<double>{213, 132}));
  EXPECT_EQ(WithDigitsSwapped("12.5"), (std::vector<double>{21.5, 15.2}));
  EXPECT_EQ(WithDigitsSwapped("054"), (std::vector<double>{504, 45}));
  EXPECT_EQ(WithDigitsSwapped("77"), std::vector<double>());
  EXPECT_EQ(WithDigitsSwapped(""), std::vector<double>());
}

}  // namespace
}  // namespace orvane
