#include "reports/chart_picture.h"

#include "support/recording_canvas.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct ChartPictureTest : testing::Test {
  ChartPictureTest() {
    row.text = "Oru";
    row.range = &range;
    range.slots[97].distance = 60;
    range.slots[97].count = 2;
    range.slots[97].measure[1] = 0.25F;
    range.hours[8].distance = 240;
    range.hours[8].count = 18;
    range.hours[8].measure[1] = 0.125F;
  }
  Range range;
  RangePanelRow row;
  MeasureNames names;
};

TEST_F(ChartPictureTest, HasTheNameAboveTheChart) {
  const auto picture = PictureOfChart(row, TravelChartMode::Distance, names);
  range.hours[8].distance = 0;  // the picture is a copy
  RecordingCanvas canvas(300, ChartPictureHeight(RecordingCanvas::SmallHeight));
  DrawChartPicture(*picture, 300, 3, canvas);
  EXPECT_EQ(canvas.Lines().front(), "clear ffffff");
  const auto texts = canvas.Having("text");
  EXPECT_EQ(texts[0], "text 141,10 Oru");
  EXPECT_EQ(texts[1], "text 111,25 Hourly Travel");
  EXPECT_LT(canvas.IndexOf("font italic"), canvas.IndexOf("text 141"));
  EXPECT_EQ(picture->travel.hours[8].distance, 240);
}

TEST_F(ChartPictureTest, IsHighEnoughForTheLabelsOfTheHours) {
  const auto picture = PictureOfChart(row, TravelChartMode::Distance, names);
  const int height = ChartPictureHeight(RecordingCanvas::SmallHeight);
  RecordingCanvas canvas(400, height);
  DrawChartPicture(*picture, 400, 3, canvas);
  const std::string last = canvas.Having("text").back();
  EXPECT_NE(last.find(":00"), std::string::npos);
  const int baseline = std::stoi(last.substr(last.find(',') + 1));
  EXPECT_LE(baseline + RecordingCanvas::SmallHeight - RecordingCanvas::SmallAscent, height);
}

TEST_F(ChartPictureTest, ItsTableHasHoursAndSlots) {
  const std::string table = ChartTable(*PictureOfChart(row, TravelChartMode::Distance, names));
  EXPECT_EQ(table.substr(0, table.find("1:00")), "Hour\tMeters\tFollows\n0:00\t0.00\t0.00\n");
  EXPECT_NE(table.find("\n8:00\t240.00\t1.50\n"), std::string::npos);
  EXPECT_NE(table.find("\n\nTime\tMeters per hour\tFollows\n0:00\t"), std::string::npos);
  // 60 m in five minutes are 720 m an hour.
  EXPECT_NE(table.find("\n8:05\t720.00\t2.00\n"), std::string::npos);
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 24 + 1 + 1 + 288);
}

TEST_F(ChartPictureTest, MeasuresAreInPercent) {
  names[1] = "rest";
  const std::string table = ChartTable(*PictureOfChart(row, TravelChartMode::Sm2, names));
  EXPECT_EQ(table.substr(0, table.find('\n')), "Hour\trest (%)\tFollows");
  EXPECT_NE(table.find("\n8:00\t12.50\t1.50\n"), std::string::npos);
  EXPECT_NE(table.find("\n8:05\t25.00\t2.00\n"), std::string::npos);
}

}  // namespace
}  // namespace orvane
