#include "view/draw_errors.h"

#include "view/view_case.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(DrawErrors, DrawsEachLegInItsColor) {
  ViewCase c;
  c.view.errors.legs = {{MetersToLatLon(0, 0), MetersToLatLon(0, 50), 0xFF0000, false},
                        {MetersToLatLon(0, 50), MetersToLatLon(30, 50), 0x00FF00, true}};
  DrawErrorLegs(c.view);
  const auto lines = c.canvas.Having("polyline");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_LT(c.canvas.IndexOf("pen 3 solid FF0000"), c.canvas.IndexOf(lines[0]));
  EXPECT_LT(c.canvas.IndexOf("pen 6 solid 00FF00"), c.canvas.IndexOf(lines[1]));
  EXPECT_EQ(c.canvas.Count("oval"), 2) << "the ends of the strong leg";
}

TEST(DrawErrors, LeavesOutWhatHasNoPlace) {
  ViewCase c;
  c.view.errors.legs = {{{0, 0}, {std::nan(""), 0}, 0xFF0000, true}};
  DrawErrorLegs(c.view);
  EXPECT_EQ(c.canvas.Count("polyline"), 0);
  EXPECT_EQ(c.canvas.Count("oval"), 0);
}

TEST(DrawErrors, TheLegendIsInTheLowerLeftCorner) {
  ViewCase c;
  DrawErrorLegend(c.view);
  EXPECT_TRUE(c.canvas.Lines().empty()) << "no legend, no box";
  c.view.errors.title = "Error";
  c.view.errors.legend = {{0x0000FF, "under 1"}, {0xFF0000, "over 1"}};
  DrawErrorLegend(c.view);
  const auto texts = c.canvas.Having("text");
  ASSERT_EQ(texts.size(), 3U);
  EXPECT_EQ(texts[0].substr(texts[0].rfind(' ') + 1), "Error");
  EXPECT_EQ(texts[2].substr(texts[2].size() - 6), "over 1");
  EXPECT_EQ(c.canvas.Count("rect"), 3) << "the box and two swatches";
  EXPECT_EQ(c.canvas.Having("rect")[0].rfind("rect 6,", 0), 0U) << c.canvas.Text();
}

}  // namespace
}  // namespace orvane
