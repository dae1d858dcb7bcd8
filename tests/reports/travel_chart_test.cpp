#include "reports/travel_chart.h"

#include "support/recording_canvas.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

// Letters are 6 pixels wide and lines 12 high. So the plot is 180 pixels high, and for distances it
// begins at x 55, after 7 letters, two margins of 5 and a tick of 3 pixels.

struct TravelChartTest : testing::Test {
  RecordingCanvas canvas{800, 600};
  TravelChartState state;
  Range range;

  TravelChartTest() {
    state.target = &canvas;
    state.lineHeight = RecordingCanvas::LabelHeight;
    state.ascent = RecordingCanvas::LabelAscent;
    state.margin = 5;
    state.width = 500;
    state.names = {"feeding", "resting", "calling"};
  }
  void Give(size_t slot, double distance) {
    range.slots[slot].distance = distance;
    range.hours[slot / 12].distance += distance;
  }
  void GiveMeasure(size_t slot, size_t k, float value) {
    range.slots[slot].measure[k] = value;
    range.hours[slot / 12].measure[k] += value / 12;
  }
  void Draw(int top = 0) {
    canvas.Forget();
    DrawTravelChart(state, range, top);
  }
  Lines Texts() const {
    Lines texts;
    for (const std::string& line : canvas.Having("text")) {
      texts.push_back(line.substr(line.find(' ', 5) + 1));
    }
    return texts;
  }
  /// The labels of the hours, which are the last texts.
  Lines Hours() const {
    Lines hours;
    for (const std::string& text : Texts()) {
      if (text.size() > 3 && text.substr(text.size() - 3) == ":00") hours.push_back(text);
    }
    return hours;
  }
  static std::vector<Pixel> PixelsOf(const std::string& line) {
    std::vector<Pixel> pixels;
    const char* at = line.c_str() + line.find(' ');
    int x = 0;
    int y = 0;
    int used = 0;
    while (std::sscanf(at, "%d,%d%n", &x, &y, &used) == 2) {
      pixels.push_back({x, y});
      at += used;
    }
    return pixels;
  }
};

TEST_F(TravelChartTest, RoundsTheAxisUp) {
  const std::pair<double, double> steps[] = {
      {3161, 4000},   {4000, 5000}, {12345, 13000}, {3160, 3500}, {1001, 1500},   {1000, 1100},
      {317, 400},     {316, 350},   {101, 150},     {100, 110},   {33, 40},       {32, 35},
      {10.5, 15},     {10, 11},     {1.3, 2.3},     {1, 1},       {0.51, 1},      {0.5, 0.5},
      {0.26, 0.5},    {0.25, 0.25}, {0.1, 0.1},     {0.05, 0.05}, {0.025, 0.025}, {0.002, 0.025},
      {0.001, 0.001}, {0, 0.001}};
  for (const auto& [peak, top] : steps) EXPECT_DOUBLE_EQ(ChartAxisTop(peak), top) << peak;
}

TEST_F(TravelChartTest, BeginsWithTheFirstHourInUseButAtSevenAtTheLatest) {
  Draw();
  EXPECT_EQ(Hours().front(), "7:00");
  Give(20 * 12, 50);
  Draw();
  EXPECT_EQ(Hours().front(), "7:00");
  Give(5 * 12, 50);
  Draw();
  EXPECT_EQ(Hours().front(), "5:00");
  Give(0, 50);
  Draw();
  EXPECT_EQ(Hours().front(), "0:00");
}

TEST_F(TravelChartTest, EndsAtMidnight) {
  Give(20 * 12, 50);
  state.width = 2000;
  Draw();
  EXPECT_EQ(Hours().back(), "24:00");
  EXPECT_EQ(Hours().size(), 18U);
}

TEST_F(TravelChartTest, LeavesOutLabelsThatComeTooClose) {
  state.width = 2000;
  Draw();
  EXPECT_EQ(Hours().size(), 18U);
  state.width = 320;  // 15 pixels an hour, for labels of 24 to 30
  Draw();
  const Lines hours = Hours();
  EXPECT_LT(hours.size(), 10U);
  int right = -1000;
  for (const std::string& line : canvas.Having("text")) {
    if (line.substr(line.size() - 3) != ":00") continue;
    const Pixel at = PixelsOf(line).front();
    EXPECT_GE(at.x - right, 3) << line;
    right = at.x + 6 * static_cast<int>(line.size() - line.find(' ', 5) - 1);
  }
}

TEST_F(TravelChartTest, DrawsSlotsInGrayAndHoursAbove) {
  Give(7 * 12, 10);       // 120 m/h in the first slot
  Give(8 * 12 + 11, 20);  // 240 m/h
  Draw(100);
  // The peak is 240 * 17 / 16 = 255, so the axis ends at 300: 0.6 pixels a metre.
  const Lines polylines = canvas.Having("polyline");
  ASSERT_EQ(polylines.size(), 2U);
  const auto slots = PixelsOf(polylines[0]);
  const auto hours = PixelsOf(polylines[1]);
  ASSERT_EQ(slots.size(), 17U * 12);
  ASSERT_EQ(hours.size(), 17U);
  // (500 - 55 - 5) / 204 is 2 pixels a slot.
  EXPECT_EQ(slots[0].x, 56);
  EXPECT_EQ(slots[1].x, 58);
  EXPECT_EQ(slots[0].y, 100 + 180 - 72);
  EXPECT_EQ(slots[1].y, 280);
  EXPECT_EQ(slots[23].y, 280 - 144);
  EXPECT_EQ(hours[0].x, 55 + 12);
  EXPECT_EQ(hours[1].x, 55 + 12 + 24);
  EXPECT_EQ(hours[0].y, 280 - 6);
  EXPECT_EQ(hours[1].y, 280 - 12);
  EXPECT_EQ(canvas.Having("pen"), (Lines{"pen 0 solid 808080", "pen 0 solid 7000000"}));
}

TEST_F(TravelChartTest, KeepsNarrowSlotsUnrounded) {
  Give(7 * 12, 10);
  state.width = 162;  // 102 pixels for 204 slots
  Draw();
  const auto slots = PixelsOf(canvas.Having("polyline").front());
  EXPECT_EQ(slots.front().x, 55);
  EXPECT_EQ(slots.back().x, 55 + 101);
}

TEST_F(TravelChartTest, LabelsDistances) {
  Give(7 * 12, 10);  // a peak of 127.5, an axis of 150
  Draw();
  EXPECT_EQ(Texts()[0], "Hourly Travel");
  const Lines texts = Texts();
  EXPECT_EQ(Lines(texts.begin() + 1, texts.begin() + 6),
            (Lines{" 30m/h", " 60m/h", " 90m/h", "120m/h", "150m/h"}));
  range.slots[7 * 12].distance = 200;  // 2550, 3000
  Draw();
  const Lines large = Texts();
  EXPECT_EQ(Lines(large.begin() + 1, large.begin() + 6),
            (Lines{"600m/h", "1.2km/h", "1.8km/h", "2.4km/h", "3km/h"}));
}

TEST_F(TravelChartTest, LabelsMeasuresInPercent) {
  state.mode = TravelChartMode::Sm2;
  Draw();
  EXPECT_EQ(Texts()[0], "Hourly activity of resting");
  EXPECT_EQ(Texts()[1], "0.02%");
  EXPECT_EQ(Texts()[5], "0.10%");
  GiveMeasure(100, 1, 0.4F);
  Draw();
  const Lines texts = Texts();
  EXPECT_EQ(Lines(texts.begin() + 1, texts.begin() + 6),
            (Lines{"10%", "20%", "30%", "40%", "50%"}));
  GiveMeasure(100, 1, 0.2F);
  Draw();
  EXPECT_EQ(Texts()[1], "5.00%");
  EXPECT_EQ(Texts()[2], "10%");
}

TEST_F(TravelChartTest, ShowsTheMeasureOfItsMode) {
  GiveMeasure(7 * 12, 0, 1);
  GiveMeasure(7 * 12 + 1, 1, 1);
  GiveMeasure(7 * 12 + 2, 2, 1);
  Give(7 * 12 + 3, 100);
  for (const auto& [mode, slot] :
       {std::pair{TravelChartMode::Sm1, 0}, std::pair{TravelChartMode::Sm2, 1},
        std::pair{TravelChartMode::Sm3, 2}, std::pair{TravelChartMode::Distance, 3}}) {
    state.mode = mode;
    Draw();
    const auto slots = PixelsOf(canvas.Having("polyline").front());
    for (size_t i = 0; i < 5; ++i)
      EXPECT_EQ(slots[i].y < 180, static_cast<int>(i) == slot) << NumberOf(mode);
  }
}

TEST_F(TravelChartTest, CutsALongNameOfAMeasure) {
  state.mode = TravelChartMode::Sm1;
  state.names[0] = std::string(40, 'x');
  Draw();
  EXPECT_EQ(Texts()[0], "Hourly activity of " + std::string(30, 'x'));
  state.names[0].reset();
  Draw();
  EXPECT_EQ(Texts()[0], "Hourly activity of ");
}

TEST_F(TravelChartTest, MovesWithTheScroll) {
  Give(7 * 12, 10);
  Draw(100);
  const Lines before = canvas.Lines();
  state.scroll = 100;
  Draw(200);
  EXPECT_EQ(canvas.Lines(), before);
}

TEST_F(TravelChartTest, CopesWithAnyFigures) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (const double value : {nan, infinite, -infinite, -1e300, 1e300}) {
    range = Range{};
    Give(7 * 12, value);
    Give(7 * 12 + 1, 1);
    for (const int width : {0, 20, 500}) {
      state.width = width;
      Draw();
      EXPECT_LE(canvas.Farthest(), 33000);
    }
  }
}

/// One whole chart, so that any change of the drawing is seen.
TEST_F(TravelChartTest, MatchesTheGoldenDrawing) {
  Give(8 * 12 + 3, 12.5);
  Give(8 * 12 + 4, 25);
  Give(10 * 12, 40);
  Give(17 * 12 + 6, 8);
  Draw(30);
  std::ifstream file(REPORTS_GOLDEN_DIR "/chart.txt", std::ios::binary);
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(canvas.Text(), expected);
}

}  // namespace
}  // namespace orvane
