#include "pages/legend.h"

#include "geo/angle_text.h"
#include "pages/page_case.h"
#include "support/recording_canvas.h"

#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

std::vector<std::string> LinesOf(const PrintMapWindow& view) {
  std::vector<std::string> lines;
  for (int i = 0;; ++i) {
    const auto line = LegendLine(view, i);
    if (!line) return lines;
    lines.push_back(*line);
  }
}

struct LegendTest : testing::Test {
  PageCase c;

  LegendTest() {
    c.ChooseAroundPoint();
    EXPECT_EQ(c.Accept(), "");
  }
  Map& TheMap() { return c.map.TheMap(); }
  void Turn(double degrees) { c.view.rotation = static_cast<float>(degrees); }
  std::string VerticalLine() const { return LinesOf(c.view)[2]; }
};

TEST_F(LegendTest, HasCreditsLabelScaleAndCenter) {
  c.view.label = "Rains";
  TheMap().credits = {"\xA9 Forest project",
                      "\xA9"
                      "2026"};
  EXPECT_EQ(LinesOf(c.view),
            (std::vector<std::string>{
                "Forest project", "2026", "Rains", "Scale: 1:10000",
                "Centered on: " + FormatLatitudeFine(1) + ", " + FormatLongitudeFine(10),
                "North vertical at center"}));
}

TEST_F(LegendTest, LeavesOutALabelThatIsEmptyOrABlank) {
  c.view.label = " ";
  EXPECT_EQ(LinesOf(c.view).front(), "Scale: 1:10000");
  EXPECT_TRUE(HasLegend(c.view));
  c.view.label = "";
  EXPECT_EQ(LinesOf(c.view).front(), "Scale: 1:10000");
  EXPECT_FALSE(HasLegend(c.view));
  TheMap().credits = {"\xA9 x"};
  EXPECT_TRUE(HasLegend(c.view));
}

TEST_F(LegendTest, NamesTheDirectionThatIsUp) {
  TheMap().magneticDeviation = -3.2;
  Turn(0);
  EXPECT_EQ(VerticalLine(), "North vertical at center");
  Turn(-3.2);
  EXPECT_EQ(VerticalLine(), "Compass north vertical at center");
  Turn(90);
  EXPECT_EQ(VerticalLine(), "East vertical at center");
  Turn(90 - 3.2);
  EXPECT_EQ(VerticalLine(), "Compass east vertical at center");
  Turn(180);
  EXPECT_EQ(VerticalLine(), "South vertical at center");
  Turn(180 - 3.2);
  EXPECT_EQ(VerticalLine(), "Compass south vertical at center");
  Turn(270);
  EXPECT_EQ(VerticalLine(), "West vertical at center");
  Turn(270 - 3.2);
  EXPECT_EQ(VerticalLine(), "Compass west vertical at center");
  Turn(45);
  EXPECT_EQ(VerticalLine(), "");
  EXPECT_EQ(LinesOf(c.view).back(), "Magnetic deviation: " + FormatLongitudeFine(-3.2));
  TheMap().magneticDeviation = 0;
  Turn(0);
  EXPECT_EQ(VerticalLine(), "North vertical at center");
  EXPECT_EQ(LinesOf(c.view).size(), 3U);
}

TEST_F(LegendTest, HasALargerFirstLine) {
  EXPECT_EQ(LegendFonts(9).legendTitle, 11);
  EXPECT_EQ(LegendFonts(9).legendText, 9);
  EXPECT_EQ(LegendFonts(10).legendTitle, 10);
  EXPECT_EQ(LegendFonts(10).legendText, 8);
  EXPECT_EQ(LegendFonts(10).text, 10);
}

/// Labels of the bar as large as the legend were over each other and beyond the box.
TEST_F(LegendTest, HasSmallLabelsOnItsBar) {
  EXPECT_EQ(LegendFonts(5).scaleBar, 5);
  EXPECT_EQ(LegendFonts(10).scaleBar, 8);
  EXPECT_EQ(LegendFonts(40).scaleBar, 8);
}

/// A canvas whose legend has large letters.
class LargeLegend : public RecordingCanvas {
 public:
  using RecordingCanvas::RecordingCanvas;
  int LineHeight(CanvasFont font) const override {
    return font == CanvasFont::LegendText ? 60 : RecordingCanvas::LineHeight(font);
  }
};

TEST_F(LegendTest, HasItsBarInTheMiddleOfALineThatIsHighEnough) {
  c.view.label = "R";
  LargeLegend canvas(2100, 3000);
  c.view.target = &canvas;
  DrawLegend(c.view);
  // Four lines of 60 and one of 12 with margins of 2 begin at 2744; the second is 120 high, that is
  // from 2758 to 2878. Two labels of 12, gaps of 4 and the bar of 25 are 57.
  EXPECT_EQ(canvas.Having("rect")[0].substr(0, 14), "rect 1562,2744");
  EXPECT_EQ(canvas.Having("rect")[1], "rect 1725,2806 1844,2832");
  const std::vector<std::string> texts = canvas.Having("text");
  EXPECT_EQ(texts[2], "text 1831,2799 100m");
  EXPECT_EQ(texts[3], "text 1949,2844 200m");
  EXPECT_GE(canvas.IndexOf("font scale bar"), 0);
}

TEST_F(LegendTest, IsABoxInTheBottomRightCorner) {
  c.view.label = "Rains";
  RecordingCanvas canvas(2100, 3000);
  c.view.target = &canvas;
  DrawLegend(c.view);
  // Letters are 6 wide and lines 12 high, with margins of 2. The scale line has 14 letters and 450
  // pixels for the bar, and is two lines high.
  const std::string longest = "Centered on: " + FormatLatitudeFine(1) + ", ";
  ASSERT_LT((longest.size() + FormatLongitudeFine(10).size()) * 6, 14U * 6 + 450);
  EXPECT_EQ(canvas.Having("rect").front(), "rect 1562,2936 2100,3000");
  const std::vector<std::string> texts = canvas.Having("text");
  EXPECT_EQ(texts[0], "text 1816,2947 Rains");
  EXPECT_EQ(texts[1], "text 1564,2965 Scale: 1:10000");
  EXPECT_EQ(canvas.Having("font").front(), "font legend title");
  EXPECT_EQ(canvas.Count("rect"), 3);  // the box and two segments
  // The bar begins 375 pixels from the edge of the box.
  EXPECT_EQ(canvas.Having("rect")[1].substr(0, 9), "rect 1725");
}

/// The bar was drawn over a long line above it, though it had room below.
TEST_F(LegendTest, HasItsBarBesideTheShorterLine) {
  TheMap().credits = {"\xA9" + std::string(100, 'm'), "\xA9 x"};
  c.view.pointSize = 5;
  const auto barBelow = [this](const std::string& label, double longitude) {
    c.view.label = label;
    c.view.centralLongitude = longitude;
    RecordingCanvas canvas(2100, 3000);
    c.view.target = &canvas;
    DrawLegend(c.view);
    return canvas.Having("rect")[1];
  };
  // The two lines of the scale are from 2950 to 2974. The bar is 25 high, and labels take 12 and a
  // gap of 4: 33 more than the lines.
  EXPECT_EQ(barBelow("R", 10), "rect 1725,2933 1844,2959");
  EXPECT_EQ(barBelow(std::string(250, 'R'), 10), "rect 1725,2966 1844,2992");
  // Without a line above, the label is within the box, which begins at 2948.
  TheMap().credits.clear();
  EXPECT_EQ(barBelow(" ", 10), "rect 1725,2964 1844,2990");
}

TEST_F(LegendTest, CutsALongLineAtItsEnd) {
  c.view.label = std::string(380, 'm');
  RecordingCanvas canvas(2100, 3000);
  c.view.target = &canvas;
  DrawLegend(c.view);
  EXPECT_EQ(canvas.Having("rect").front(), "rect 0,2936 2100,3000");
  EXPECT_TRUE(canvas.Having("text")[0].starts_with("text 2,2947 m")) << canvas.Having("text")[0];
  EXPECT_LT(canvas.IndexOf("rect 0,2936 2100,3000"), canvas.IndexOf("clip 0,0 2100,3000"));
  EXPECT_LT(canvas.IndexOf("clip 0,0 2100,3000"), canvas.IndexOf("text 2,2947 m"));
  // The lines that fit are in the middle.
  EXPECT_EQ(canvas.Having("text")[1], "text 783,2965 Scale: 1:10000");
}

}  // namespace
}  // namespace orvane
