#include "pages/print_scale_bar.h"

#include "pages/page_case.h"
#include "support/recording_canvas.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// The bar of a page of 300 pixels to the inch at a scale of 1:`ratio`.
PrintScaleBar BarAt(double ratio) {
  PrintMapWindow view;
  view.device = {
      .height = 3000, .width = 2100, .verticalResolution = 300, .horizontalResolution = 300};
  view.scale = static_cast<float>(300 / 0.0254 / ratio);
  return MakePrintScaleBar(view);
}

TEST(PrintScaleBarTest, HasSegmentsOfARoundNumberOfMeters) {
  EXPECT_DOUBLE_EQ(BarAt(10000).segmentMeters, 100);
  EXPECT_DOUBLE_EQ(BarAt(10000).power, 100);
  EXPECT_DOUBLE_EQ(BarAt(9999).segmentMeters, 90);
  EXPECT_DOUBLE_EQ(BarAt(25000).segmentMeters, 200);
  EXPECT_DOUBLE_EQ(BarAt(99900).segmentMeters, 900);
  EXPECT_DOUBLE_EQ(BarAt(100000).segmentMeters, 1000);
  EXPECT_DOUBLE_EQ(BarAt(100).segmentMeters, 1);
  EXPECT_DOUBLE_EQ(BarAt(50).segmentMeters, 0.5);
  EXPECT_DOUBLE_EQ(BarAt(10).segmentMeters, 0.1);
  EXPECT_DOUBLE_EQ(BarAt(1).segmentMeters, 0.01);
}

TEST(PrintScaleBarTest, IsAboutAnInchLong) {
  // A centimetre is 118 pixels: two of them are within 300.
  EXPECT_EQ(BarAt(10000).segmentPixels, 118);
  EXPECT_EQ(BarAt(10000).segments, 2);
  EXPECT_EQ(BarAt(25000).segmentPixels, 94);
  EXPECT_EQ(BarAt(25000).segments, 3);
  for (double ratio = 1; ratio < 1e8; ratio *= 1.37) {
    const PrintScaleBar bar = BarAt(ratio);
    EXPECT_LT(bar.segments * bar.segmentPixels, 300) << ratio;
    EXPECT_GE((bar.segments + 1) * bar.segmentPixels, 300) << ratio;
    // The stated length is the drawn one, to half a pixel.
    EXPECT_NEAR(bar.segmentPixels, bar.segmentMeters * 300 / 0.0254 / ratio, 0.51) << ratio;
  }
}

TEST(PrintScaleBarTest, WritesLengthsByTheirPowerOfTen) {
  EXPECT_EQ(ScaleBarLabel(BarAt(10000), 2), "200m");
  EXPECT_EQ(ScaleBarLabel(BarAt(99900), 2), "1800m");
  EXPECT_EQ(ScaleBarLabel(BarAt(250000), 1), "2km");
  EXPECT_EQ(ScaleBarLabel(BarAt(50), 1), "50cm");
  EXPECT_EQ(ScaleBarLabel(BarAt(10), 2), "20cm");
  EXPECT_EQ(ScaleBarLabel(BarAt(1), 1), "1cm");
  EXPECT_EQ(ScaleBarLabel(BarAt(0.5), 1), "5mm");
  EXPECT_EQ(ScaleBarLabel(BarAt(0.1), 1), "1mm");
  EXPECT_EQ(ScaleBarLabel(BarAt(0.01), 1), "0.000100mm");
}

TEST(PrintScaleBarTest, AlternatesWhiteAndBlackWithLabelsAboveAndBelow) {
  PageCase c;
  c.ChooseAroundPoint();
  ASSERT_EQ(c.Accept(), "");
  RecordingCanvas canvas(2100, 3000);
  c.view.target = &canvas;
  DrawPrintScaleBar(c.view, {1000, 2000});
  // The bar is a twelfth of an inch high; labels have a gap of a point to it.
  EXPECT_EQ(canvas.Having("rect"),
            (std::vector<std::string>{"rect 1000,1975 1119,2001", "rect 1118,1975 1237,2001"}));
  EXPECT_EQ(canvas.Having("brush"),
            (std::vector<std::string>{"brush solid ffffff", "brush solid 000000"}));
  EXPECT_EQ(canvas.Having("text"),
            (std::vector<std::string>{"text 1106,1968 100m", "text 1224,2013 200m"}));
}

}  // namespace
}  // namespace orvane
