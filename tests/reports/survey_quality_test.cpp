#include "reports/survey_quality.h"

#include "support/map_from_text.h"

#include <cmath>
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
  const ErrorOverlay one = QualityOverlay(quality, false, 0);
  ASSERT_EQ(one.legs.size(), 1U);
  EXPECT_TRUE(one.legs[0].strong);
  EXPECT_EQ(one.legs[0].color, ErrorColorOf(quality, quality.rows[0]));
  EXPECT_EQ(one.legs[0].from, quality.rows[0].point->geo);
  const ErrorOverlay all = QualityOverlay(quality, true, std::nullopt);
  EXPECT_EQ(all.legs.size(), 5U);
  EXPECT_EQ(all.legend.size(), 6U);
  EXPECT_EQ(all.legend[0].text, "under 0.5");
  EXPECT_EQ(all.legend[1].text, "0.5 to 1");
  EXPECT_EQ(all.legend[4].text, "over 5");
  EXPECT_EQ(QualityOverlay(quality, true, 0).legs.size(), 6U);
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
  EXPECT_TRUE(QualityTable(quality, {}).notes.empty());
}

}  // namespace
}  // namespace orvane
