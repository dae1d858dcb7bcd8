#include "reports/survey_quality.h"

#include "support/map_from_text.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

namespace orvane {
namespace {

/// A loop with a distance that was doubled, a dead end, and a trail of its own.
constexpr std::string_view Loop =
    "T\tMain\nG\tA\tN0\tE0\nC\tB\tA\t50\t180\nC\tC\tB\t40\t270\nC\tD\tC\t100\t0\n"
    "C\tA\tD\t40\t90\n"
    "T\tSide\nP\tB\nC\tE\tB\t20\t45\n";

struct SurveyQualityTest : MapFixture {
  static SurveyQuality Of(const Map& map) {
    SurveyQuality quality;
    EXPECT_TRUE(UpdateSurveyQuality(quality, map));
    return quality;
  }
  SurveyQuality Of(std::string_view text) { return Of(Open(text)); }

  static const QualityRow* RowOf(const SurveyQuality& quality, QualityKind kind,
                                 std::string_view point) {
    for (const QualityRow& row : quality.rows) {
      if (row.kind == kind && row.point->name == point) return &row;
    }
    ADD_FAILURE() << point;
    return nullptr;
  }
};

/// Two fixes, so that the loop is closed by the solver.
std::string WithSecondFix() { return std::string(Loop) + "G\tC\tN0.00044996\tE0.00035997\n"; }

TEST_F(SurveyQualityTest, TheWorstIsFirst) {
  const SurveyQuality quality = Of(WithSecondFix());
  ASSERT_GE(quality.rows.size(), 8U);
  for (size_t i = 1; i < quality.rows.size(); ++i) {
    EXPECT_GE(quality.rows[i - 1].meters, quality.rows[i].meters);
  }
  const auto chains = FilteredRows(quality, {.kind = QualityKind::Chain, .trail = std::nullopt});
  ASSERT_EQ(chains.size(), 3U) << "A to B, B to C, C over D to A";
  EXPECT_NE(quality.rows[chains[0]].other, nullptr);
}

TEST_F(SurveyQualityTest, NamesTheBlunderInASentence) {
  const SurveyQuality quality = Of(WithSecondFix());
  ASSERT_EQ(quality.blunders.size(), 1U);
  const std::string sentence = BlunderSentence(quality.blunders[0]);
  EXPECT_EQ(sentence.rfind("Likely blunder: the distance of the leg from D to C, 100, was doubled; "
                           "it would be 50. The error would be ",
                           0),
            0U)
      << sentence;
  const TableReport table = QualityTable(quality, FilteredRows(quality, {}));
  ASSERT_FALSE(table.notes.empty());
  EXPECT_EQ(table.notes[0], sentence);
}

TEST_F(SurveyQualityTest, ADeadEndIsUnchecked) {
  const SurveyQuality quality = Of(WithSecondFix());
  EXPECT_FALSE(RowOf(quality, QualityKind::Leg, "E")->checked);
  EXPECT_TRUE(RowOf(quality, QualityKind::Leg, "D")->checked);
  EXPECT_EQ(quality.unchecked, 1U);
  const TableReport table = QualityTable(quality, FilteredRows(quality, {}));
  EXPECT_EQ(table.notes.back(), "1 leg is unchecked: nothing else says where a dead end leads.");
  size_t unchecked = 0;
  for (const auto& row : table.rows) {
    ASSERT_EQ(row.size(), table.columns.size());
    if (row.back() == "unchecked") {
      ++unchecked;
      EXPECT_EQ(row[1], "E");
    }
  }
  EXPECT_EQ(unchecked, 1U);
}

TEST_F(SurveyQualityTest, AnErrorThatRoundsToZeroHasNoSign) {
  // The way back turns by a tiny angle to one side or the other.
  const SurveyQuality quality =
      Of(Open("T\tMain\tTrail\nG\tA\tN1.3\tE115.6\nC\tB\tA\t33\t17\t0\nC\tC\tB\t47\t133\t0\n"
              "C\tD\tC\t29\t211\t0\nC\tE\tD\t61\t305\t0\n"));
  const TableReport table = QualityTable(quality, FilteredRows(quality, {}));
  ASSERT_GE(table.rows.size(), 4U);
  bool isTiny = false;
  for (const QualityRow& row : quality.rows) {
    isTiny = isTiny || std::signbit(row.north.value_or(0)) || std::signbit(row.east.value_or(0));
  }
  EXPECT_TRUE(isTiny) << "nothing to round";
  for (const auto& row : table.rows) {
    for (const std::string& cell : row) EXPECT_FALSE(cell.starts_with("-0")) << cell;
  }
}

TEST_F(SurveyQualityTest, TheOnlyFixIsUnchecked) {
  EXPECT_FALSE(RowOf(Of(Loop), QualityKind::Fix, "A")->checked);
  EXPECT_TRUE(RowOf(Of(WithSecondFix()), QualityKind::Fix, "A")->checked);
}

TEST_F(SurveyQualityTest, FiltersByKindAndTrail) {
  const SurveyQuality quality = Of(WithSecondFix());
  EXPECT_EQ(QualityTrails(quality), (std::vector<std::string>{"Main", "Side"}));
  EXPECT_EQ(FilteredRows(quality, {}).size(), quality.rows.size());
  EXPECT_EQ(FilteredRows(quality, {.kind = QualityKind::Leg, .trail = std::nullopt}).size(), 5U);
  EXPECT_EQ(FilteredRows(quality, {.kind = QualityKind::Fix, .trail = std::nullopt}).size(), 2U);
  EXPECT_EQ(FilteredRows(quality, {.kind = QualityKind::Altitude, .trail = std::nullopt}).size(),
            0U);
  const auto side = FilteredRows(quality, {.kind = std::nullopt, .trail = "Side"});
  ASSERT_EQ(side.size(), 1U);
  EXPECT_EQ(quality.rows[side[0]].point->name, "E");
}

TEST_F(SurveyQualityTest, AFilterThatLetsNothingThroughIsSaid) {
  const SurveyQuality quality = Of(WithSecondFix());
  const auto rows = FilteredRows(quality, {.kind = QualityKind::Altitude, .trail = std::nullopt});
  EXPECT_EQ(QualityTable(quality, rows).notes.back(),
            "Nothing in the survey is of this kind and trail.");
  const TableReport all = QualityTable(quality, FilteredRows(quality, {}));
  EXPECT_EQ(std::count(all.notes.begin(), all.notes.end(),
                       "Nothing in the survey is of this kind and trail."),
            0);
}

TEST_F(SurveyQualityTest, MixedAltitudesAreSaidAndSortedByTheGround) {
  const SurveyQuality quality =
      Of("T\nG\tA\tN0\tE0\t10\nG\tB\tN0.001\tE0\nC\tB\tA\t111\t180\t5\nC\tC\tB\t90\t270\nC\tA\tC\t"
         "140\t40\n");
  EXPECT_TRUE(quality.mixedAltitudes);
  for (size_t i = 1; i < quality.rows.size(); ++i) {
    EXPECT_GE(quality.rows[i - 1].ground, quality.rows[i].ground);
  }
  const TableReport table = QualityTable(quality, FilteredRows(quality, {}));
  EXPECT_EQ(table.notes[0].rfind("Some fixes of a connected part", 0), 0U);
}

TEST_F(SurveyQualityTest, IsWorkedOutAgainOnlyAfterAChange) {
  Map& map = Open(WithSecondFix());
  SurveyQuality quality = Of(map);
  EXPECT_FALSE(UpdateSurveyQuality(quality, map));
  Named(map, "E").measurements.front().distance = 30;
  EXPECT_TRUE(UpdateSurveyQuality(quality, map));
}

TEST_F(SurveyQualityTest, ColorsFollowTheErrorInPerCent) {
  const SurveyQuality quality = Of(WithSecondFix());
  QualityRow row = *RowOf(quality, QualityKind::Leg, "D");
  row.percent = 0.4;
  const Color good = ErrorColorOf(quality, row);
  row.percent = 0.5;
  const Color fair = ErrorColorOf(quality, row);
  row.percent = 80;
  const Color bad = ErrorColorOf(quality, row);
  row.checked = false;
  const Color unknown = ErrorColorOf(quality, row);
  EXPECT_EQ((std::set<Color>{good, fair, bad, unknown}).size(), 4U);
  QualityRow fix = *RowOf(quality, QualityKind::Fix, "A");
  fix.meters = 0.4;
  EXPECT_EQ(ErrorColorOf(quality, fix), good) << "a fix goes by metres";
}

TEST_F(SurveyQualityTest, TheOverlayShowsTheCurrentRowOrAllLegs) {
  const SurveyQuality quality = Of(WithSecondFix());
  EXPECT_TRUE(QualityOverlay(quality, false, std::nullopt).legs.empty());
  EXPECT_TRUE(QualityOverlay(quality, false, std::nullopt).legend.empty());
  const size_t worst =
      FilteredRows(quality, {.kind = QualityKind::Leg, .trail = std::nullopt}).front();
  const ErrorOverlay one = QualityOverlay(quality, false, worst);
  ASSERT_EQ(one.legs.size(), 1U);
  EXPECT_TRUE(one.legs[0].strong);
  EXPECT_EQ(one.legs[0].color, ErrorColorOf(quality, quality.rows[worst]));
  EXPECT_EQ(one.legs[0].from, quality.rows[worst].point->geo);
  const ErrorOverlay all = QualityOverlay(quality, true, std::nullopt);
  EXPECT_EQ(all.legs.size(), 5U);
  EXPECT_EQ(all.legend.size(), 6U);
  EXPECT_EQ(all.legend[0].text, "under 0.5");
  EXPECT_EQ(all.legend[1].text, "0.5 to 1");
  EXPECT_EQ(all.legend[4].text, "over 5");
  EXPECT_EQ(QualityOverlay(quality, true, worst).legs.size(), 6U);
}

TEST_F(SurveyQualityTest, TheOverlayOfAChainIsItsLegs) {
  const SurveyQuality quality = Of(WithSecondFix());
  const auto chains = FilteredRows(quality, {.kind = QualityKind::Chain, .trail = std::nullopt});
  std::multiset<size_t> counts;
  for (const size_t i : chains) {
    const QualityRow& row = quality.rows[i];
    const ErrorOverlay overlay = QualityOverlay(quality, false, i);
    counts.insert(overlay.legs.size());
    for (const ErrorLeg& leg : overlay.legs) {
      EXPECT_TRUE(leg.strong);
      EXPECT_EQ(leg.color, ErrorColorOf(quality, row));
    }
    EXPECT_TRUE(std::any_of(overlay.legs.begin(), overlay.legs.end(), [&](const ErrorLeg& leg) {
      return leg.from == row.other->geo || leg.to == row.other->geo;
    }));
  }
  EXPECT_EQ(counts, (std::multiset<size_t>{1, 1, 2})) << "A to B, B to C, C over D to A";
  // A loop begins and ends at one point, so that a line between the two would show nothing.
  const SurveyQuality loop = Of(Open(
      "T\tMain\nG\tA\tN0\tE0\nC\tB\tA\t50\t180\nC\tC\tB\t40\t270\nC\tA\tC\t60\t50\n", "loop.map"));
  const auto whole = FilteredRows(loop, {.kind = QualityKind::Chain, .trail = std::nullopt});
  ASSERT_EQ(whole.size(), 1U);
  EXPECT_EQ(loop.rows[whole[0]].point, loop.rows[whole[0]].other);
  EXPECT_EQ(QualityOverlay(loop, false, whole[0]).legs.size(), 3U);
}

TEST_F(SurveyQualityTest, AFixIsALineToWhereItPutsItsPoint) {
  const SurveyQuality quality = Of(WithSecondFix());
  const auto fixes = FilteredRows(quality, {.kind = QualityKind::Fix, .trail = std::nullopt});
  const QualityRow& row = quality.rows[fixes[0]];
  const ErrorOverlay overlay = QualityOverlay(quality, false, fixes[0]);
  ASSERT_EQ(overlay.legs.size(), 1U);
  EXPECT_EQ(overlay.legs[0].to, *row.fix);
  EXPECT_EQ(overlay.title, "Error of the fix in metres");
  EXPECT_EQ(*MiddleOfRow(row), row.point->geo);
}

TEST_F(SurveyQualityTest, AMapWithoutReadingsIsEmpty) {
  Map& map = Open("T\tEmpty\n");
  SurveyQuality quality;
  EXPECT_FALSE(UpdateSurveyQuality(quality, map));
  EXPECT_EQ(
      QualityTable(quality, {}).notes,
      (std::vector<std::string>{"No reading of this map can be compared with its position."}));
}

TEST_F(SurveyQualityTest, EachBlunderHasItsWords) {
  Map& map = Open("G\tA\tN1\tE2\nC\tB\tA\t50\t180\n");
  const Point& a = Named(map, "A");
  const Point& b = Named(map, "B");
  const auto sentence = [&](BlunderKind kind, BlunderField field) {
    LikelyBlunder blunder;
    const bool isFix = field == BlunderField::Latitude || field == BlunderField::Longitude;
    const Point& point = isFix ? a : b;
    blunder.best = {.point = &point,
                    .reading = &point.measurements.front(),
                    .kind = kind,
                    .field = field,
                    .written = 10,
                    .likely = 20,
                    .before = 30,
                    .after = 0.5};
    const std::string text = BlunderSentence(blunder);
    const std::string begin = "Likely blunder: the ";
    const size_t end = text.find(". The error would be ");
    EXPECT_TRUE(text.starts_with(begin)) << text;
    return text.substr(begin.size(), end - begin.size());
  };
  using Kind = BlunderKind;
  using Field = BlunderField;
  EXPECT_EQ(sentence(Kind::BackwardBearing, Field::Bearing),
            "bearing of the leg from B to A, 10, was read backwards; it would be 20");
  EXPECT_EQ(sentence(Kind::SwappedDigits, Field::Distance),
            "distance of the leg from B to A, 10, was written with two digits swapped; it would be "
            "20");
  EXPECT_EQ(sentence(Kind::MisreadTens, Field::Latitude),
            "latitude of the fix of A, 10.00000, was misread in the tens; it would be 20.00000");
  EXPECT_EQ(sentence(Kind::WrongSign, Field::Longitude),
            "longitude of the fix of A, 10.00000, was written with the wrong sign; it would be "
            "20.00000");
  EXPECT_EQ(sentence(Kind::WrongSign, Field::Inclination),
            "inclination of the leg from B to A, 10, was written with the wrong sign; it would be "
            "20");
  EXPECT_EQ(sentence(Kind::DoubledDistance, Field::Distance),
            "distance of the leg from B to A, 10, was doubled; it would be 20");
  EXPECT_EQ(sentence(Kind::HalvedDistance, Field::Distance),
            "distance of the leg from B to A, 10, was halved; it would be 20");
  EXPECT_EQ(sentence(Kind::Feet, Field::Distance),
            "distance of the leg from B to A, 10, was measured in feet; it would be 20");
}

TEST_F(SurveyQualityTest, OtherExplanationsFollowTheBest) {
  Map& map = Open("G\tA\tN1\tE2\nC\tB\tA\t50\t180\n");
  const Point& b = Named(map, "B");
  LikelyBlunder blunder;
  blunder.best = {.point = &b, .reading = &b.measurements.front(), .written = 10, .likely = 190};
  const std::string only = BlunderSentence(blunder);
  EXPECT_EQ(only.find("It could also be"), std::string::npos);
  Blunder other = blunder.best;
  other.likely = 100;
  blunder.others = {other, other};
  const std::string each =
      "the bearing of the leg from B to A, 10, was read backwards; it would be ";
  EXPECT_EQ(BlunderSentence(blunder),
            only + " It could also be that " + each + "100, or that " + each + "100.");
  blunder.moreOthers = 4;
  EXPECT_TRUE(BlunderSentence(blunder).ends_with("100 (and 4 more)."));
}

TEST_F(SurveyQualityTest, RowsHaveAWordForEachKindAndTheNameOfTheirTrail) {
  Map& map = Open("T\tMain\nG\tA\tN1\tE2\nT\t\tOru\tUlo\nG\t8:00\tN1\tE2\nT\nG\tLoose\tN1\tE3\n");
  SurveyQuality quality;
  const auto add = [&](QualityKind kind, const Trail* trail) {
    QualityRow row;
    row.kind = kind;
    row.point = &Named(map, "A");
    row.trail = trail;
    quality.rows.push_back(row);
  };
  add(QualityKind::Leg, FindTrail(map, "Main"));
  for (const Trail& trail : map.trails) {
    if (!trail.name) add(QualityKind::Fix, &trail);
  }
  add(QualityKind::Altitude, nullptr);
  add(QualityKind::Chain, nullptr);
  const TableReport table = QualityTable(quality, FilteredRows(quality, {}));
  std::vector<std::string> words;
  for (const auto& row : table.rows) words.push_back(row[0] + " of " + row[3]);
  EXPECT_EQ(words, (std::vector<std::string>{"leg of Main", "fix of Oru", "altitude of (no trail)",
                                             "chain of (no trail)"}));
  EXPECT_EQ(QualityTrails(quality), (std::vector<std::string>{"(no trail)", "Main", "Oru"}));
}

TEST_F(SurveyQualityTest, NotesCountTheLegsAndNameLargeParts) {
  SurveyQuality quality;
  quality.unchecked = 2;
  quality.hasLargeRegion = true;
  const TableReport table = QualityTable(quality, {});
  EXPECT_EQ(table.notes, (std::vector<std::string>{
                             "A part of this survey is too large to look for blunders in it.",
                             "2 legs are unchecked: nothing else says where a dead end leads."}));
}

TEST_F(SurveyQualityTest, AnAltitudeIsSortedLastAndShowsNoLine) {
  const SurveyQuality quality = Of("T\nG\tA\tN1\tE2\t10\nG\tA\tN1\tE2\t30\nA\tA\t50\n");
  const auto altitudes =
      FilteredRows(quality, {.kind = QualityKind::Altitude, .trail = std::nullopt});
  ASSERT_FALSE(altitudes.empty());
  const QualityRow& row = quality.rows[altitudes[0]];
  EXPECT_EQ(row.other, nullptr);
  EXPECT_TRUE(QualityOverlay(quality, false, altitudes[0]).legs.empty());
  EXPECT_TRUE(QualityOverlay(quality, false, altitudes[0]).legend.empty());
  EXPECT_EQ(QualityOverlay(quality, true, altitudes[0]).title, "Error in % of the leg");
  EXPECT_EQ(*MiddleOfRow(row), row.point->geo);
}

TEST_F(SurveyQualityTest, TheMiddleOfALegIsBetweenItsPoints) {
  const SurveyQuality quality = Of(WithSecondFix());
  const QualityRow& row = *RowOf(quality, QualityKind::Leg, "E");
  const LatLon middle = MiddleOfRow(row).value_or(LatLon{});
  EXPECT_NEAR(middle.lat, (row.point->geo.lat + row.other->geo.lat) / 2, 1e-9);
  EXPECT_NEAR(middle.lon, (row.point->geo.lon + row.other->geo.lon) / 2, 1e-9);
}

TEST_F(SurveyQualityTest, WithMixedAltitudesColorsFollowTheErrorOnTheGround) {
  SurveyQuality quality;
  QualityRow row;
  row.percent = 10;
  row.meters = 20;
  row.ground = 0.8;  // 0.4 % of the leg
  const Color worst = ErrorColorOf(quality, row);
  quality.mixedAltitudes = true;
  const Color good = ErrorColorOf(quality, row);
  EXPECT_NE(good, worst);
  row.meters = 0;
  EXPECT_EQ(ErrorColorOf(quality, row), worst) << "no share without an error";
  row.percent.reset();
  row.ground = 0.4;
  EXPECT_EQ(ErrorColorOf(quality, row), good) << "metres of the ground";
  row.ground = std::nan("");
  EXPECT_EQ(ErrorColorOf(quality, row), good) << "an error that is not known is none";
}

TEST_F(SurveyQualityTest, RowsDifferByEachOfTheirFields) {
  const Point point;
  const Measurement reading;
  const Trail trail;
  const QualityRow plain;
  EXPECT_TRUE(plain == QualityRow());
  const std::function<void(QualityRow&)> changes[] = {
      [](QualityRow& row) { row.kind = QualityKind::Chain; },
      [&](QualityRow& row) { row.point = &point; },
      [&](QualityRow& row) { row.reading = &reading; },
      [&](QualityRow& row) { row.other = &point; },
      [&](QualityRow& row) { row.trail = &trail; },
      [](QualityRow& row) { row.north = 1; },
      [](QualityRow& row) { row.east = 1; },
      [](QualityRow& row) { row.up = 1; },
      [](QualityRow& row) { row.meters = 1; },
      [](QualityRow& row) { row.ground = 1; },
      [](QualityRow& row) { row.percent = 1; },
      [](QualityRow& row) { row.degrees = 1; },
      [](QualityRow& row) {
        row.fix = LatLon{1, 2};
      },
      [](QualityRow& row) { row.checked = false; }};
  for (const auto& change : changes) {
    QualityRow row;
    change(row);
    EXPECT_FALSE(row == plain);
  }
}

TEST_F(SurveyQualityTest, APercentThatIsNotANumberIsTheWorst) {
  QualityRow row;
  row.percent = std::nan("");
  const Color unknown = ErrorColorOf({}, row);
  row.percent = 99;
  EXPECT_EQ(ErrorColorOf({}, row), unknown);
}

}  // namespace
}  // namespace orvane
