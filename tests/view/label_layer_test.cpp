#include "view/label_layer.h"

#include "view/view_case.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

constexpr MarkLook NoMark{MarkStyle::None, 1, 0x112233, RecordingCanvas::LetterWidth};
constexpr MarkLook Circle{MarkStyle::Circle, 1, 0x112233, RecordingCanvas::LetterWidth};

LabelSpot SpotAt(Pixel baseline, const Point& point) {
  return {baseline, static_cast<int>(point.name.size()) * RecordingCanvas::LetterWidth};
}

/// A label, and a circle 4 pixels in radius in the middle of it.
void AddCircled(LabelLayer& layer, const Point& point, Pixel at) {
  layer.Add(point, {at.x + 8, at.y - 3}, {}, SpotAt(at, point), Circle);
}

// The fonts of the recording canvas: ascent 8 and height 10 of the small one, so a label clears 7
// rows of pixels above its baseline; a line of text is 9 above and 3 below.

TEST(LabelLayer, ClearsABoxWritesOnItAndDrawsTheMark) {
  ViewCase c;
  c.view.background = 0xFFFFEE;
  LabelLayer layer(c.view);
  const Point& point = c.Add("  abc ", 0, 0);  // leading blanks are left out, others are not
  layer.Add(point, {100, 100}, {}, LabelSpot{{104, 104}, 24}, Circle);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
  layer.Draw();
  EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 0 hollow ffffee", "brush solid ffffee",
                                     "rect 104,97 128,104", "fore 112233", "text 104,104 abc ",
                                     "pen 1 solid 112233", "brush hollow", "oval 96,96 105,105"}));
}

TEST(LabelLayer, DrawsInOrderAndForgets) {
  ViewCase c;
  LabelLayer layer(c.view);
  layer.Add(c.Add("one", 0, 0), {20, 40}, {}, LabelSpot{{24, 44}, 18}, NoMark);
  layer.Add(c.Add("", 0, 0), {60, 40}, Pixel{50, 40}, {},
            {MarkStyle::Tick, 1, 0x445566, RecordingCanvas::LetterWidth});
  layer.Add(c.Add("two", 0, 0), {90, 40}, {}, LabelSpot{{94, 44}, 18}, NoMark);
  layer.Draw();
  EXPECT_EQ(c.canvas.Having("text"), (Lines{"text 24,44 one", "text 94,44 two"}));
  EXPECT_EQ(c.canvas.Having("line"), Lines{"line 60,35 60,45"});
  EXPECT_LT(c.canvas.IndexOf("line"), c.canvas.IndexOf("text 94"));
  c.canvas.Forget();
  layer.Draw();
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(LabelLayer, LeavesOutWhatLaterLabelsHide) {
  ViewCase c;
  LabelLayer layer(c.view);
  const Point& hidden = c.Add("hid", 0, 0);
  const Point& cover = c.Add("covering", 0, 0);
  AddCircled(layer, hidden, {100, 100});
  // Each of these clears 7 rows, and the text to be hidden reaches from 91 to 103.
  for (const int baseline : {97, 104}) {
    layer.Add(cover, {0, 0}, {}, SpotAt({90, baseline}, cover), NoMark);
  }
  layer.Draw();
  EXPECT_EQ(c.canvas.Having("text").size(), 2U);
  EXPECT_EQ(c.canvas.Count("oval"), 0);
  EXPECT_EQ(c.canvas.Count("rect"), 2);
}

TEST(LabelLayer, KeepsWhatShowsByOnePixel) {
  const auto partsLeft = [](int width, const std::vector<int>& baselines) {
    ViewCase c;
    LabelLayer layer(c.view);
    AddCircled(layer, c.Add("hid", 0, 0), {100, 100});
    const Point& cover = c.Add("x", 0, 0);
    for (const int baseline : baselines) {
      layer.Add(cover, {0, 0}, {}, LabelSpot{{100, baseline}, width}, NoMark);
    }
    layer.Draw();
    const int covers = static_cast<int>(baselines.size());
    return std::vector<int>{c.canvas.Count("rect") - covers, c.canvas.Count("text") - covers,
                            c.canvas.Count("oval")};
  };
  EXPECT_EQ(partsLeft(18, {97, 104}), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(partsLeft(17, {97, 104}), (std::vector<int>{1, 1, 0}));
  EXPECT_EQ(partsLeft(18, {97, 103}), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(partsLeft(18, {96, 103}), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(partsLeft(18, {97, 102}), (std::vector<int>{0, 1, 0}));
  EXPECT_EQ(partsLeft(18, {104}), (std::vector<int>{1, 1, 1}));
  EXPECT_EQ(partsLeft(12, {97, 104}), (std::vector<int>{1, 1, 1}));
}

TEST(LabelLayer, AMarkHidesNothing) {
  ViewCase c;
  LabelLayer layer(c.view);
  Point& big = c.Add("", 0, 0);
  big.markShape = PointMarkSquare;
  big.flags |= PointMarkFilled;
  big.markSize = 30;
  AddCircled(layer, c.Add("abc", 0, 0), {100, 100});
  layer.Add(big, {100, 100}, {}, {}, Circle);
  layer.Draw();
  EXPECT_EQ(c.canvas.Count("text"), 1);
  EXPECT_EQ(c.canvas.Count("oval"), 1);
}

TEST(LabelLayer, LeavesOutWhatIsOutsideTheClip) {
  ViewCase c;  // 400 x 300
  const auto drawn = [&](Pixel at) {
    c.canvas.Forget();
    LabelLayer layer(c.view);
    AddCircled(layer, c.Add("abc", 0, 0), at);
    layer.Draw();
    return std::to_string(c.canvas.Count("text")) + std::to_string(c.canvas.Count("oval"));
  };
  EXPECT_EQ(drawn({100, 100}), "11");
  EXPECT_EQ(drawn({395, 100}), "11");  // the circle begins at 399
  EXPECT_EQ(drawn({396, 100}), "10");
  EXPECT_EQ(drawn({399, 100}), "10");
  EXPECT_EQ(drawn({400, 100}), "00");
  EXPECT_EQ(drawn({100, -20}), "00");
}

TEST(LabelLayer, NamesTheBoxesOfItsLabels) {
  ViewCase c;
  LabelLayer layer(c.view);
  AddCircled(layer, c.Add("abc", 0, 0), {100, 100});
  PixelMask mask({0, 0, 400, 300});
  layer.AddBoxes(mask);
  EXPECT_TRUE(mask.HasAll({100, 92, 118, 102}));
  EXPECT_FALSE(mask.HasAny({0, 0, 100, 300}));
  EXPECT_FALSE(mask.HasAny({118, 0, 400, 300}));
  EXPECT_FALSE(mask.HasAny({0, 0, 400, 92}));
  EXPECT_FALSE(mask.HasAny({0, 102, 400, 300}));
}

/// What a picture would look like: the colour that each pixel was given last.
class Raster {
 public:
  explicit Raster(const Lines& lines) : pixels_(Size * Size, -1) {
    for (const std::string& line : lines) {
      PixelRect rect;
      unsigned color = 0;
      if (std::sscanf(line.c_str(), "brush solid %x", &color) == 1)
        brush_ = static_cast<int>(color);
      if (std::sscanf(line.c_str(), "fore %x", &color) == 1) fore_ = static_cast<int>(color);
      if (std::sscanf(line.c_str(), "pen 1 solid %x", &color) == 1) pen_ = static_cast<int>(color);
      if (std::sscanf(line.c_str(), "rect %d,%d %d,%d", &rect.left, &rect.top, &rect.right,
                      &rect.bottom) == 4) {
        Fill(rect, brush_);
      }
      if (std::sscanf(line.c_str(), "oval %d,%d %d,%d", &rect.left, &rect.top, &rect.right,
                      &rect.bottom) == 4) {
        Fill(rect, pen_);
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
  int pen_ = -1;
};

TEST(LabelLayer, ADenseMapLooksAsIfEachLabelWereDrawn) {
  constexpr std::uint64_t Seed = 12;
  SCOPED_TRACE(Seed);
  Dice dice(Seed);
  int left = 0;
  int all = 0;
  for (int round = 0; round < 8; ++round) {
    ViewCase one;
    ViewCase together;
    for (ViewCase* c : {&one, &together}) c->canvas.SetClip({0, 0, 128, 128});
    const Point& point = one.Add("abc", 0, 0);
    LabelLayer layer(together.view);
    for (int i = 1; i < 3000; ++i) {
      const Pixel at{dice.Int(-40, 150), dice.Int(-40, 150)};
      const Pixel mark{at.x + dice.Int(-20, 20), at.y + dice.Int(-20, 20)};
      MarkLook look = Circle;
      look.color = i;
      LabelLayer single(one.view);
      single.Add(point, mark, {}, SpotAt(at, point), look);
      single.Draw();
      layer.Add(point, mark, {}, SpotAt(at, point), look);
    }
    layer.Draw();
    EXPECT_TRUE(Raster(one.canvas.Lines()) == Raster(together.canvas.Lines())) << round;
    left += together.canvas.Count("text");
    all += one.canvas.Count("text");
  }
  EXPECT_LT(left, all / 2);
}

}  // namespace
}  // namespace orvane
