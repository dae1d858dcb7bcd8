#include "view/covered_canvas.h"

#include "support/dice.h"
#include "support/recording_canvas.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

constexpr Pen NoPen{0, PenPattern::Hollow, 0};

/// A cleared box with a text in it.
void DrawLabel(Canvas& canvas, Pixel at, std::string_view text, Color color) {
  const int width = canvas.TextWidth(text);
  canvas.SetPen(NoPen);
  canvas.SetBrush({true, 0xFFFFFF});
  canvas.DrawRect({at.x - 10, at.y - 20, at.x + width + 10, at.y + 15});
  canvas.SetForeColor(color);
  canvas.DrawText(at, text);
}

TEST(CoveredCanvas, PassesOnInOrderWhatNothingCovers) {
  RecordingCanvas direct(400, 300);
  RecordingCanvas below(400, 300);
  CoveredCanvas covered(below, CanvasFont::Label);
  for (Canvas* canvas : {static_cast<Canvas*>(&direct), static_cast<Canvas*>(&covered)}) {
    DrawLabel(*canvas, {20, 40}, "one", 0x112233);
    canvas->SetPen({2, PenPattern::Dashed, 0x445566});
    canvas->SetBrush({false, 0});
    canvas->DrawOval({15, 35, 25, 45});
    canvas->DrawLine({15, 35}, {25, 45});
    DrawLabel(*canvas, {60, 60}, "two", 0x112233);
  }
  covered.Finish();
  EXPECT_EQ(below.Lines(), direct.Lines());
}

TEST(CoveredCanvas, LeavesOutWhatALaterClearingHides) {
  RecordingCanvas below(400, 300);
  CoveredCanvas covered(below, CanvasFont::Label);
  const std::string name = "hidden";
  DrawLabel(covered, {100, 100}, name, 1);
  covered.SetPen({1, PenPattern::Solid, 2});
  covered.DrawOval({100, 95, 106, 101});
  covered.SetPen(NoPen);
  covered.SetBrush({true, 0xFFFFFF});
  covered.DrawRect({80, 70, 130, 130});   // one half
  covered.DrawRect({130, 70, 180, 130});  // and the other
  covered.Finish();
  EXPECT_EQ(below.Having("text"), Lines{});
  EXPECT_EQ(below.Having("oval"), Lines{});
  EXPECT_EQ(below.Having("rect"), (Lines{"rect 80,70 130,130", "rect 130,70 180,130"}));
}

TEST(CoveredCanvas, KeepsWhatShowsByOnePixel) {
  for (const int left : {0, 1}) {
    RecordingCanvas below(400, 300);
    CoveredCanvas covered(below, CanvasFont::Label);
    covered.SetPen(NoPen);
    covered.SetBrush({true, 1});
    covered.DrawRect({60, 60, 130, 100});
    covered.SetBrush({true, 2});
    covered.DrawRect({60 + left, 60, 130, 100});
    covered.Finish();
    EXPECT_EQ(below.Count("rect"), 1 + left);
  }
}

TEST(CoveredCanvas, OnlyFilledRectanglesWithoutOutlineHide) {
  RecordingCanvas below(400, 300);
  CoveredCanvas covered(below, CanvasFont::Label);
  covered.SetPen({1, PenPattern::Solid, 1});
  covered.DrawOval({100, 100, 110, 110});
  covered.SetBrush({false, 1});
  covered.DrawRect({50, 50, 200, 200});
  covered.SetBrush({true, 1});
  covered.DrawOval({50, 50, 200, 200});
  covered.Finish();
  EXPECT_EQ(below.Count("oval"), 2);
}

TEST(CoveredCanvas, KeepsWhatLiesBesideTheClip) {
  RecordingCanvas below(400, 300);
  CoveredCanvas covered(below, CanvasFont::Label);
  DrawLabel(covered, {500, 100}, "beside", 1);
  covered.Finish();
  EXPECT_EQ(below.Count("text"), 1);
}

/// What a picture would look like: the number of the operation that gave each pixel its colour.
class Raster {
 public:
  explicit Raster(const Lines& lines) : pixels_(Size * Size, -1) {
    for (const std::string& line : lines) {
      PixelRect rect;
      unsigned color = 0;
      if (std::sscanf(line.c_str(), "brush solid %x", &color) == 1)
        brush_ = static_cast<int>(color);
      if (std::sscanf(line.c_str(), "fore %x", &color) == 1) fore_ = static_cast<int>(color);
      if (std::sscanf(line.c_str(), "rect %d,%d %d,%d", &rect.left, &rect.top, &rect.right,
                      &rect.bottom) == 4) {
        Fill(rect, brush_);
      }
      if (std::sscanf(line.c_str(), "text %d,%d", &rect.left, &rect.bottom) == 2) {
        // Letters stain the line from its top to its foot.
        Fill({rect.left, rect.bottom - RecordingCanvas::LabelAscent, rect.left + 18,
              rect.bottom + RecordingCanvas::LabelHeight - RecordingCanvas::LabelAscent},
             fore_);
      }
    }
  }
  bool operator==(const Raster& other) const { return pixels_ == other.pixels_; }

 private:
  static constexpr int Size = 128;
  void Fill(const PixelRect& rect, int color) {
    for (int y = std::max(0, rect.top); y < std::min(Size, rect.bottom); ++y) {
      for (int x = std::max(0, rect.left); x < std::min(Size, rect.right); ++x) {
        pixels_[static_cast<size_t>(y) * Size + static_cast<size_t>(x)] = color;
      }
    }
  }
  std::vector<int> pixels_;
  int brush_ = -1;
  int fore_ = -1;
};

TEST(CoveredCanvas, ADenseMapLooksTheSame) {
  constexpr std::uint64_t Seed = 12;
  SCOPED_TRACE(Seed);
  Dice dice(Seed);
  int left = 0;
  int all = 0;
  for (int round = 0; round < 8; ++round) {
    RecordingCanvas direct(128, 128);
    RecordingCanvas below(128, 128);
    CoveredCanvas covered(below, CanvasFont::Label);
    const std::string name = "abc";
    for (int i = 1; i < 1500; ++i) {
      const Pixel at{dice.Int(-40, 150), dice.Int(-40, 150)};
      DrawLabel(direct, at, name, i);
      DrawLabel(covered, at, name, i);
    }
    covered.Finish();
    EXPECT_TRUE(Raster(direct.Lines()) == Raster(below.Lines())) << round;
    left += below.Count("text");
    all += direct.Count("text");
  }
  EXPECT_LT(left, all / 2);
}

}  // namespace
}  // namespace orvane
