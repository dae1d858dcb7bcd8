#include "panes/estimate_lines.h"

#include "editing/trail_editor.h"
#include "pane_fixture.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_follower.h"
#include "panes/visibility.h"

namespace orvane {
namespace {

constexpr std::uint32_t AllEstimates = 15;

/// A view that is followed with memory, on two ranges of six and of three fixes.
struct EstimateLinesTest : PaneFixture {
  EditHistory remembered{workspace};
  PaneFollower follower{view, remembered};

  EstimateLinesTest() {
    Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  }
  void Tick(std::uint32_t mask, Progress* progress = nullptr) {
    RangeRow("Blue").selected = true;
    RangeVisibility dialog = *OpenRangeVisibility(view);
    dialog.estimateMask = mask;
    ASSERT_TRUE(ApplyRangeVisibility(view, dialog, progress));
  }
};

/// Cancels at once.
struct Canceler : Progress {
  void Reach(WorkStage, size_t, size_t) override { Cancel(); }
};

TEST_F(EstimateLinesTest, EachCaptionSaysWhatThePerCentCounts) {
  EXPECT_EQ(OutlineCaption(OfferedOutlines[0]), "MCP, 95 % of the fixes");
  EXPECT_EQ(OutlineCaption(OfferedOutlines[1]), "MCP, 50 % of the fixes");
  EXPECT_EQ(OutlineCaption(OfferedOutlines[2]), "Kernel, 95 % of the density");
  EXPECT_EQ(OutlineCaption(OfferedOutlines[3]), "Kernel, 50 % of the density");
}

TEST_F(EstimateLinesTest, OnlyWhatIsTickedIsMade) {
  EXPECT_EQ(RangeRow("Blue").estimates, nullptr);
  Tick(1U << 2);
  ASSERT_NE(RangeRow("Blue").estimates, nullptr);
  EXPECT_EQ(RangeRow("Red").estimates, nullptr);
  const EstimateLines& lines = *RangeRow("Blue").estimates;
  ASSERT_FALSE(lines.rings.empty());
  const auto outlines =
      OutlineEstimates(FixPlacesOf(*RangeRow("Blue").range), {OfferedOutlines[2]});
  ASSERT_EQ(lines.rings.size(), outlines[0].rings.size());
  for (size_t i = 0; i < lines.rings.size(); ++i) {
    EXPECT_EQ(lines.rings[i].pattern, PenPattern::Dotted);
    EXPECT_EQ(lines.rings[i].corners.size(), outlines[0].rings[i].size());
    for (const LatLon& corner : lines.rings[i].corners) {
      EXPECT_TRUE(lines.bounds.minLat <= corner.lat && corner.lat <= lines.bounds.maxLat);
      EXPECT_TRUE(lines.bounds.minLon <= corner.lon && corner.lon <= lines.bounds.maxLon);
    }
  }
  EXPECT_LT(lines.bounds.minLat, RangeRow("Blue").range->minLat) << "beyond the hull";
  Tick(1);
  for (const EstimateRing& ring : RangeRow("Blue").estimates->rings) {
    EXPECT_EQ(ring.pattern, PenPattern::Dashed);
  }
  Tick(0);
  EXPECT_EQ(RangeRow("Blue").estimates, nullptr);
}

TEST_F(EstimateLinesTest, OverlapsTakeNoTicks) {
  for (RangePanelRow& row : view.rangeViews) row.selected = row.intersection != nullptr;
  EXPECT_FALSE(ControlsOfRange(view).estimates);
  RangeVisibility dialog = *OpenRangeVisibility(view);
  dialog.estimateMask = AllEstimates;
  ASSERT_TRUE(ApplyRangeVisibility(view, dialog));
  for (const RangePanelRow& row : view.rangeViews) EXPECT_EQ(row.estimateMask, 0U);
}

TEST_F(EstimateLinesTest, AreMadeAgainWhenTheirFixesChange) {
  Tick(AllEstimates);
  const auto before = RangeRow("Blue").estimates;
  TrailEditor editor(*view.map, FindTrail(*view.map, "Path"));
  editor.SetCell(0, 1, "S20 0.01");
  ASSERT_EQ(SaveTrailEditor(editor, remembered), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Blue").estimates, before) << "no fix of the range";
  TrailEditor follow(*view.map, FindTrailByDate(*view.map, "Papio", PackDate(2020, 3, 2), ""));
  follow.SetCell(0, 1, "S20 0.5");
  ASSERT_EQ(SaveTrailEditor(follow, remembered), SaveOutcome::Closes);
  const auto after = RangeRow("Blue").estimates;
  ASSERT_NE(after, nullptr);
  EXPECT_NE(after, before);
  EXPECT_LT(after->bounds.minLat, before->bounds.minLat);
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(RangeRow("Blue").estimates->bounds.minLat, before->bounds.minLat);
}

TEST_F(EstimateLinesTest, ComeBackWithADeletedRange) {
  Tick(AllEstimates);
  const size_t rings = RangeRow("Blue").estimates->rings.size();
  DeleteSelectedRanges(view, remembered);
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(RangeRow("Blue").estimateMask, AllEstimates);
  ASSERT_NE(RangeRow("Blue").estimates, nullptr);
  EXPECT_EQ(RangeRow("Blue").estimates->rings.size(), rings);
}

TEST_F(EstimateLinesTest, ComeBackAfterMapsAreReadAgain) {
  Tick(AllEstimates);
  const RowMemory memory = RememberRows(view);
  RebuildRows(view, memory);
  EXPECT_EQ(RangeRow("Blue").estimateMask, AllEstimates);
  EXPECT_EQ(RangeRow("Red").estimateMask, 0U);
}

TEST_F(EstimateLinesTest, CanceledWorkTakesTheTicksOff) {
  Canceler progress;
  Tick(AllEstimates, &progress);
  EXPECT_EQ(RangeRow("Blue").estimateMask, 0U);
  EXPECT_EQ(RangeRow("Blue").estimates, nullptr);
}

}  // namespace
}  // namespace orvane
