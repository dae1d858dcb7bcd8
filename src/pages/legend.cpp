#include "pages/legend.h"

#include "base/number_text.h"
#include "geo/angle_text.h"
#include "pages/print_scale_bar.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace orvane {

namespace {

constexpr Color White = 0xFFFFFF;
constexpr Color Black = 0;

/// What follows the credits and the label.
enum class Line { Label, Scale, Center, Vertical, Deviation, End };

std::string CreditText(std::string_view line) {
  line.remove_prefix(CreditTagLength(line));
  if (line.starts_with(' ')) line.remove_prefix(1);
  return std::string(line);
}

bool HasLabel(const PrintMapWindow& view) { return !view.label.empty() && view.label != " "; }

int CreditCount(const Map& map) {
  return static_cast<int>(std::distance(map.credits.begin(), map.credits.end()));
}

/// Which direction is up in the middle of the page.
std::string VerticalText(const PrintMapWindow& view) {
  const double deviation = view.map->magneticDeviation;
  // The rotation is kept in 32 bits.
  const auto isTurnedTo = [&view](double angle) {
    return view.rotation == static_cast<float>(angle);
  };
  struct Direction {
    double angle;
    std::string_view trueName;
    std::string_view compassName;
  };
  static constexpr Direction Directions[] = {{0, "North", "Compass north"},
                                             {90, "East", "Compass east"},
                                             {180, "South", "Compass south"},
                                             {270, "West", "Compass west"}};
  for (const Direction& direction : Directions) {
    if (isTurnedTo(direction.angle)) {
      return std::string(direction.trueName) + " vertical at center";
    }
    if (isTurnedTo(direction.angle + deviation)) {
      return std::string(direction.compassName) + " vertical at center";
    }
  }
  return {};
}

/// \return the kind of the line, or nothing for a credit
std::optional<Line> KindOf(const PrintMapWindow& view, int index) {
  const int k = index - CreditCount(*view.map) + (HasLabel(view) ? 0 : 1);
  if (index < CreditCount(*view.map)) return std::nullopt;
  return static_cast<Line>(std::min(k, static_cast<int>(Line::End)));
}

/// One line with its size.
struct SetLine {
  std::string text;
  CanvasFont font = CanvasFont::LegendText;
  bool hasScale = false;
  int textWidth = 0;
  int lineHeight = 0;

  int Width(int barWidth) const { return textWidth + (hasScale ? barWidth : 0); }
  int Height() const { return hasScale ? 2 * lineHeight : lineHeight; }
};

std::vector<SetLine> SetLines(const PrintMapWindow& view) {
  Canvas& canvas = *view.target;
  std::vector<SetLine> lines;
  for (int index = 0;; ++index) {
    auto text = LegendLine(view, index);
    if (!text) return lines;
    SetLine line;
    line.text = std::move(*text);
    line.font = index == 0 ? CanvasFont::LegendTitle : CanvasFont::LegendText;
    line.hasScale = KindOf(view, index) == Line::Scale;
    canvas.SetFont(line.font);
    line.textWidth = canvas.TextWidth(line.text);
    line.lineHeight = canvas.LineHeight(line.font);
    lines.push_back(std::move(line));
  }
}

/// The left edge of a label of a scale bar that begins at `left`.
/// \param number  counted from 1; odd ones are above the bar, even ones below
int LeftOfLabel(const PrintMapWindow& view, int left, int number) {
  const PrintScaleBar bar = MakePrintScaleBar(view);
  view.target->SetFont(CanvasFont::ScaleBar);
  const int width = view.target->TextWidth(ScaleBarLabel(bar, number));
  return left + number * bar.segmentPixels - width / 2;
}

/// The lower edge of the scale bar. In a small font, bar and labels are higher than the line. Then they
/// end with the line and begin beside the line above, or begin with the line if only the line below
/// leaves them room. If neither does, the line above is overprinted: below are the coordinates.
/// \param endAbove  of the text of the line above, or the edge of the box; likewise `endBelow`
int FootOfBar(const PrintMapWindow& view, const SetLine& line, Pixel topLeft, int endAbove,
              int endBelow) {
  const int labels = view.target->LineHeight(CanvasFont::ScaleBar) + ScaleBarGap(view);
  const int reach = 2 * labels + ScaleBarHeight(view) - line.Height();
  const int ending = topLeft.y + line.Height() - labels;
  if (reach <= 0) return ending + reach / 2;
  const bool isFreeAbove = endAbove < LeftOfLabel(view, topLeft.x, 1);
  const bool isFreeBelow = endBelow < LeftOfLabel(view, topLeft.x, 2);
  return isFreeBelow && !isFreeAbove ? ending + reach : ending;
}

}  // namespace

std::optional<std::string> LegendLine(const PrintMapWindow& view, int index) {
  const Map& map = *view.map;
  const std::optional<Line> kind = KindOf(view, index);
  if (!kind) return CreditText(*std::next(map.credits.begin(), index));
  switch (*kind) {
    case Line::Label:
      return view.label;
    case Line::Scale:
      return "Scale: 1:" + FormatFixed(ScaleRatio(view), 0);
    case Line::Center:
      return "Centered on: " + FormatLatitudeFine(view.centerLatitude) + ", " +
             FormatLongitudeFine(view.centralLongitude);
    case Line::Vertical:
      return VerticalText(view);
    case Line::Deviation:
      if (map.magneticDeviation == 0) return std::nullopt;
      return "Magnetic deviation: " + FormatLongitudeFine(map.magneticDeviation);
    case Line::End:
      break;
  }
  return std::nullopt;
}

bool HasLegend(const PrintMapWindow& view) {
  return !view.label.empty() || !view.map->credits.empty();
}

PageFonts LegendFonts(int pointSize) {
  constexpr int LargeEnough = 10;
  constexpr int Step = 2;
  // The bar is an inch long whatever the font, and larger labels would be over each other.
  constexpr int LargestOnBar = 8;
  PageFonts fonts{.text = pointSize, .legendTitle = pointSize, .legendText = pointSize - Step};
  if (pointSize < LargeEnough) {
    fonts.legendTitle = pointSize + Step;
    fonts.legendText = pointSize;
  }
  fonts.scaleBar = std::min(fonts.legendText, LargestOnBar);
  return fonts;
}

void DrawLegend(const PrintMapWindow& view) {
  Canvas& canvas = *view.target;
  const std::vector<SetLine> lines = SetLines(view);
  const int inch = view.device.horizontalResolution;
  const int roomOfBar = inch * 3 / 2;
  const int margin = lines.front().lineHeight / 5;
  int width = 0;
  int height = 0;
  for (const SetLine& line : lines) {
    width = std::max(width, line.Width(roomOfBar));
    height += line.Height();
  }
  // A line that is wider than the page is cut at its end.
  width = std::min(width + 2 * margin, view.device.width);
  height += 2 * margin;
  const PixelRect box{view.device.width - width, view.device.height - height, view.device.width,
                      view.device.height};
  canvas.SetPen({0, PenPattern::Solid, Black});
  canvas.SetBrush({true, White});
  canvas.DrawRect({box.left, std::max(0, box.top), box.right, box.bottom});
  // Only the frame is on the edge of the page.
  canvas.SetClip({0, 0, view.device.width, view.device.height});

  const auto leftOf = [&](const SetLine& line) {
    return box.left + std::max(margin, (width - line.Width(roomOfBar)) / 2);
  };
  const auto endOf = [&](size_t index) {
    return index < lines.size() ? leftOf(lines[index]) + lines[index].textWidth : box.right;
  };
  int top = box.top + margin;
  for (size_t index = 0; index < lines.size(); ++index) {
    const SetLine& line = lines[index];
    canvas.SetFont(line.font);
    canvas.SetForeColor(Black);
    const int baseline = top + (line.Height() - line.lineHeight) / 2 + canvas.Ascent(line.font);
    canvas.DrawText({leftOf(line), baseline}, line.text);
    if (line.hasScale) {
      const Pixel topLeft{box.right - inch * 5 / 4, top};
      const int endAbove = index == 0 ? box.right : endOf(index - 1);
      // The labels stay within the box.
      const int highest = box.top + canvas.LineHeight(CanvasFont::ScaleBar) + ScaleBarGap(view) +
                          ScaleBarHeight(view);
      const int foot =
          std::max(highest, FootOfBar(view, line, topLeft, endAbove, endOf(index + 1)));
      DrawPrintScaleBar(view, {topLeft.x, foot});
    }
    top += line.Height();
  }
}

}  // namespace orvane
