#include "pages/print_scale_bar.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double CentimetersPerInch = 2.54;
constexpr Color White = 0xFFFFFF;
constexpr Color Black = 0;

/// The scale is kept in 32 bits, so 100 m to the centimetre come out a little less. A value within
/// a millionth below a whole number is that number.
double FloorOfScale(double value) {
  const double whole = std::round(value);
  return whole > value && whole - value <= whole * 1e-6 ? whole : std::floor(value);
}

/// \return the largest power of ten that is not above `meters`
double PowerOfTen(double meters) {
  double power = 1;
  if (FloorOfScale(meters) >= 1) {
    while (FloorOfScale(meters / (power * 10)) >= 1) power *= 10;
    return power;
  }
  for (int exponent = 1; exponent < 300; ++exponent) {
    power = 1 / std::pow(10.0, exponent);
    if (FloorOfScale(meters / power) >= 1) break;
  }
  return power;
}

}  // namespace

PrintScaleBar MakePrintScaleBar(const PrintMapWindow& view) {
  const auto scale = static_cast<double>(view.scale);
  const double metersPerCentimeter =
      view.device.horizontalResolution / (scale * CentimetersPerInch);
  PrintScaleBar bar;
  bar.power = PowerOfTen(metersPerCentimeter);
  bar.segmentMeters = FloorOfScale(metersPerCentimeter / bar.power) * bar.power;
  bar.segmentPixels = std::max(1, static_cast<int>(bar.segmentMeters * scale + 0.5));
  bar.segments = (view.device.horizontalResolution - 1) / bar.segmentPixels;
  return bar;
}

std::string ScaleBarLabel(const PrintScaleBar& bar, int count) {
  const double meters = count * bar.segmentMeters;
  // A power of ten below 1 has no exact value in 64 bits.
  constexpr double Slack = 1 - 1e-9;
  if (bar.power >= 1000) return FormatFixed(meters / 1000, 0) + "km";
  if (bar.power >= 1) return FormatFixed(meters, 0) + "m";
  if (bar.power >= 0.01 * Slack) return FormatFixed(meters * 100, 0) + "cm";
  if (bar.power >= 0.001 * Slack) return FormatFixed(meters * 1000, 0) + "mm";
  return FormatFixed(meters) + "mm";
}

int ScaleBarHeight(const PrintMapWindow& view) { return view.device.verticalResolution / 12; }

int ScaleBarGap(const PrintMapWindow& view) { return view.device.verticalResolution / 72; }

void DrawPrintScaleBar(const PrintMapWindow& view, Pixel at) {
  Canvas& canvas = *view.target;
  const PrintScaleBar bar = MakePrintScaleBar(view);
  const int top = at.y - ScaleBarHeight(view);
  const int gap = ScaleBarGap(view);
  const int ascent = canvas.Ascent(CanvasFont::ScaleBar);
  const int descent = canvas.LineHeight(CanvasFont::ScaleBar) - ascent;
  canvas.SetPen({0, PenPattern::Solid, Black});
  for (int i = 0; i < bar.segments; ++i) {
    canvas.SetBrush({true, i % 2 == 0 ? White : Black});
    // Neighbours share an edge.
    canvas.DrawRect(
        {at.x + i * bar.segmentPixels, top, at.x + (i + 1) * bar.segmentPixels + 1, at.y + 1});
  }
  canvas.SetFont(CanvasFont::ScaleBar);
  canvas.SetForeColor(Black);
  for (int count = 1; count <= bar.segments; ++count) {
    const std::string label = ScaleBarLabel(bar, count);
    const int x = at.x + count * bar.segmentPixels - canvas.TextWidth(label) / 2;
    const int y = count % 2 == 1 ? top - gap - descent : at.y + gap + ascent;
    canvas.DrawText({x, y}, label);
  }
}

}  // namespace orvane
