#include "reports/travel_chart.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace orvane {

namespace {

constexpr int PlotLines = 15;
constexpr int SlotsOfHour = SlotsOfDay / HoursOfDay;
constexpr int AxisMarks = 5;
constexpr Color SlotColor = 0x808080;
constexpr size_t LongestMeasureName = 30;

/// Cuts a coordinate to a whole pixel that any canvas takes.
int CutPixel(double value) {
  constexpr double Farthest = 32000;
  if (std::isnan(value)) return 0;
  return static_cast<int>(std::clamp(value, -Farthest, Farthest));
}

/// One chart: what it shows and where its axes are.
class TravelChart {
 public:
  TravelChart(const TravelChartState& state, const Range& range, int top)
      : state_(state), range_(range), canvas_(*state.target) {
    TakeHours();
    axisTop_ = ChartAxisTop(Peak());
    x0_ = canvas_.TextWidth(IsDistance() ? "1.6km/h" : "1000%") + 2 * state.margin + TickLength();
    y0_ = top + PlotLines * state.lineHeight - state.scroll;
    slotWidth_ = static_cast<double>(state.width - x0_ - state.margin) /
                 static_cast<double>((HoursOfDay - start_) * SlotsOfHour);
    if (slotWidth_ >= 1) slotWidth_ = std::floor(slotWidth_);
    unitHeight_ = static_cast<double>(PlotLines * state.lineHeight) / axisTop_;
  }

  void Draw() const {
    DrawSlots();
    canvas_.SetPen({0, PenPattern::Solid, state_.foreground});
    canvas_.SetForeColor(state_.foreground);
    DrawHours();
    DrawTitle();
    DrawAxes();
    DrawValueMarks();
    DrawHourMarks();
  }

 private:
  bool IsDistance() const { return state_.mode == TravelChartMode::Distance; }
  size_t Measure() const { return MeasureOf(state_.mode); }
  /// Metres per hour, or the part of 1.
  double SlotValue(size_t slot) const {
    const TravelTally& tally = range_.slots[slot];
    return IsDistance() ? SlotsOfHour * tally.distance : double{tally.measure[Measure()]};
  }
  double HourValue(int hour) const {
    const TravelTally& tally = range_.hours[static_cast<size_t>(hour)];
    return IsDistance() ? tally.distance : double{tally.measure[Measure()]};
  }
  int TickLength() const { return state_.lineHeight / 4; }

  /// All charts end at midnight, so that they can be laid beside each other. Pinned by
  /// TravelChart.EndsAtMidnight.
  void TakeHours() {
    constexpr int LatestStart = 7;
    while (start_ < LatestStart && HourValue(start_) == 0) ++start_;
  }

  double Peak() const {
    double peak = 0;
    for (const TravelTally& tally : range_.slots) {
      peak = std::max(peak, IsDistance() ? tally.distance : double{tally.measure[Measure()]});
    }
    if (!std::isfinite(peak)) return 0;
    // A sixteenth of room above the greatest distance.
    return IsDistance() ? peak * SlotsOfHour * 17 / 16 : peak;
  }

  int ColumnOf(int hour) const {
    return x0_ + CutPixel((hour - start_) * SlotsOfHour * slotWidth_);
  }
  int RowOf(double value) const { return y0_ - CutPixel(unitHeight_ * value); }

  void DrawSlots() const {
    std::vector<Pixel> line;
    for (int slot = SlotsOfHour * start_; slot < SlotsOfHour * HoursOfDay; ++slot) {
      const int x = x0_ + CutPixel(slotWidth_ / 2 + (slot - SlotsOfHour * start_) * slotWidth_);
      line.push_back({x, RowOf(SlotValue(static_cast<size_t>(slot)))});
    }
    // On the colour of a highlight grey can't be read.
    const bool isPlain = state_.foreground == ForegroundColor;
    canvas_.SetPen({0, isPlain ? PenPattern::Solid : PenPattern::Dotted,
                    isPlain ? SlotColor : state_.foreground});
    canvas_.DrawPolyline(line);
  }

  void DrawHours() const {
    std::vector<Pixel> line;
    for (int hour = start_; hour < HoursOfDay; ++hour) {
      const int x = x0_ + CutPixel(6 * slotWidth_ + (hour - start_) * SlotsOfHour * slotWidth_);
      line.push_back({x, RowOf(HourValue(hour))});
    }
    canvas_.DrawPolyline(line);
  }

  void DrawTitle() const {
    std::string title = "Hourly Travel";
    if (!IsDistance()) {
      const std::string name = state_.names[Measure()].value_or("");
      title = "Hourly activity of " + name.substr(0, LongestMeasureName);
    }
    canvas_.DrawText({(state_.width - canvas_.TextWidth(title)) / 2, PlotTop() + state_.ascent},
                     title);
  }

  int PlotTop() const { return y0_ - PlotLines * state_.lineHeight; }

  void DrawAxes() const {
    canvas_.DrawLine({x0_ - 1, PlotTop()}, {x0_ - 1, y0_ + 1});
    canvas_.DrawLine({x0_ - 1, y0_ + 1}, {ColumnOf(HoursOfDay), y0_ + 1});
  }

  /// The label of the mark at `i` fifths of the axis.
  std::string MarkText(int i) const {
    if (!IsDistance()) {
      const double percent = i * axisTop_ * 100 / AxisMarks;
      return percent >= 10 ? FormatFixed(std::trunc(percent), 0) + "%"
                           : FormatFixed(percent, 2) + "%";
    }
    const double meters = std::trunc(i * axisTop_ / AxisMarks);
    if (meters < 1000) {
      const std::string digits = FormatFixed(meters, 0);
      return std::string(digits.size() < 3 ? 3 - digits.size() : 0, ' ') + digits + "m/h";
    }
    return FormatFixed(meters / 1000, std::fmod(meters, 1000) == 0 ? 0 : 1) + "km/h";
  }

  void DrawValueMarks() const {
    for (int i = 1; i <= AxisMarks; ++i) {
      const int y = RowOf(i * axisTop_ / AxisMarks);
      canvas_.DrawLine({x0_ - 1, y}, {x0_ - 1 - TickLength(), y});
      const std::string text = MarkText(i);
      const int x = x0_ - 1 - TickLength() - state_.margin - canvas_.TextWidth(text);
      canvas_.DrawText({x, y + state_.ascent / 2}, text);
    }
  }

  void DrawHourMarks() const {
    std::optional<int> lastRight;
    for (int hour = start_; hour <= HoursOfDay; ++hour) {
      const int x = ColumnOf(hour);
      canvas_.DrawLine({x, y0_ + 1}, {x, y0_ + 1 + TickLength()});
      const std::string text = std::to_string(hour) + ":00";
      const int width = canvas_.TextWidth(text);
      const int left = x - width / 2;
      if (lastRight && left - *lastRight < TickLength()) continue;
      canvas_.DrawText({left, y0_ + 1 + TickLength() + state_.ascent}, text);
      lastRight = left + width;
    }
  }

  const TravelChartState& state_;
  const Range& range_;
  Canvas& canvas_;
  int start_ = 0;          // first hour shown
  double axisTop_ = 0;     // value at the upper end
  int x0_ = 0;             // left edge of the plot
  int y0_ = 0;             // lower edge of the plot
  double slotWidth_ = 0;   // pixels
  double unitHeight_ = 0;  // pixels
};

}  // namespace

double ChartAxisTop(double peak) {
  static constexpr std::pair<double, double> Steps[] = {{3160, 1000}, {1000, 500}, {316, 100},
                                                        {100, 50},    {32, 10},    {10, 5}};
  for (const auto& [above, step] : Steps) {
    if (peak > above) return std::trunc(peak / step + 1) * step;
  }
  if (peak > 1) return peak + 1;
  static constexpr std::pair<double, double> Tops[] = {{0.5, 1.0},  {0.25, 0.5},   {0.1, 0.25},
                                                       {0.05, 0.1}, {0.025, 0.05}, {0.001, 0.025}};
  for (const auto& [above, axisTop] : Tops) {
    if (peak > above) return axisTop;
  }
  return 0.001;
}

size_t MeasureOf(TravelChartMode mode) {
  return static_cast<size_t>(NumberOf(mode) - NumberOf(TravelChartMode::Sm1));
}

void DrawTravelChart(const TravelChartState& state, const Range& range, int top) {
  TravelChart(state, range, top).Draw();
}

}  // namespace orvane
