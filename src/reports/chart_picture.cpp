#include "reports/chart_picture.h"

#include "base/number_text.h"

namespace orvane {

namespace {

constexpr int SlotsOfHour = SlotsOfDay / HoursOfDay;
constexpr Color Paper = 0xFFFFFF;

/// A time of day as "8:05".
std::string TimeText(int minutes) {
  const std::string rest = std::to_string(minutes % 60);
  return std::to_string(minutes / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

/// One line of the table.
std::string TableLine(const ChartPicture& picture, const TravelTally& tally, int minutes,
                      double distanceFactor, double follows) {
  constexpr double Percent = 100;
  const bool isDistance = picture.mode == TravelChartMode::Distance;
  const double value = isDistance ? distanceFactor * tally.distance
                                  : Percent * double{tally.measure[MeasureOf(picture.mode)]};
  return TimeText(minutes) + '\t' + FormatFixed(value, 2) + '\t' + FormatFixed(follows, 2) + '\n';
}

std::string ValueHeading(const ChartPicture& picture, const char* distance) {
  if (picture.mode == TravelChartMode::Distance) return distance;
  return picture.names[MeasureOf(picture.mode)].value_or("") + " (%)";
}

}  // namespace

std::unique_ptr<const ChartPicture> PictureOfChart(const RangePanelRow& row, TravelChartMode mode,
                                                   const MeasureNames& names) {
  auto picture = std::make_unique<ChartPicture>();
  picture->rangeName = row.text.value_or("");
  picture->travel.slots = row.range->slots;
  picture->travel.hours = row.range->hours;
  picture->mode = mode;
  picture->names = names;
  return picture;
}

int ChartPictureHeight(int lineHeight) {
  // The name, a gap, the chart, and half a line below its labels.
  return lineHeight * 3 / 2 + lineHeight / 4 + TravelChartLines * lineHeight + lineHeight / 2;
}

void DrawChartPicture(const ChartPicture& picture, int width, int margin, Canvas& canvas) {
  canvas.Clear(Paper);
  canvas.SetForeColor(ForegroundColor);
  TravelChartState state;
  state.target = &canvas;
  state.lineHeight = canvas.LineHeight(CanvasFont::Small);
  state.ascent = canvas.Ascent(CanvasFont::Small);
  state.margin = margin;
  state.width = width;
  state.mode = picture.mode;
  state.names = picture.names;
  canvas.SetFont(CanvasFont::Italic);
  const int x = (width - canvas.TextWidth(picture.rangeName)) / 2;
  canvas.DrawText({x, state.lineHeight / 4 + state.ascent}, picture.rangeName);
  canvas.SetFont(CanvasFont::Small);
  DrawTravelChart(state, picture.travel, state.lineHeight * 3 / 2 + state.lineHeight / 4);
}

std::string ChartTable(const ChartPicture& picture) {
  std::string text = "Hour\t" + ValueHeading(picture, "Meters") + "\tFollows\n";
  for (int hour = 0; hour < HoursOfDay; ++hour) {
    const TravelTally& tally = picture.travel.hours[static_cast<size_t>(hour)];
    text += TableLine(picture, tally, hour * 60, 1, static_cast<double>(tally.count) / SlotsOfHour);
  }
  text += "\nTime\t" + ValueHeading(picture, "Meters per hour") + "\tFollows\n";
  for (int slot = 0; slot < SlotsOfDay; ++slot) {
    const TravelTally& tally = picture.travel.slots[static_cast<size_t>(slot)];
    text += TableLine(picture, tally, slot * MinutesOfSlot, SlotsOfHour,
                      static_cast<double>(tally.count));
  }
  return text;
}

}  // namespace orvane
