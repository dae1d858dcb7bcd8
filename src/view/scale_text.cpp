#include "view/scale_text.h"

#include "base/number_text.h"
#include "base/text.h"
#include "view/view_transform.h"

#include <cmath>

namespace orvane {

namespace {

void SkipBlanks(std::string_view& text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
}

/// Takes `letter`, small or large, off the front.
bool TakeLetter(std::string_view& text, char letter) {
  if (text.empty() || FoldByte(text.front()) != letter) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::string ScalePrompt(float scale) {
  const double pixels = static_cast<double>(scale);
  if (scale >= 0.005F) return "1px = " + FormatGeneral(1 / pixels) + "m";
  return "1px = " + FormatGeneral(0.001 / pixels) + "km";
}

std::optional<double> ParseScale(std::string_view answer) {
  std::string_view rest = StartsWith("1px", answer).value_or(answer);
  SkipBlanks(rest);
  rest = StartsWith("=", rest).value_or(rest);
  SkipBlanks(rest);
  const RealPrefix number = ReadReal(rest);
  if (number.length == 0) return std::nullopt;
  rest.remove_prefix(number.length);
  double meters = number.value;
  if (TakeLetter(rest, 'k')) {
    meters *= 1000;
  } else if (TakeLetter(rest, 'c')) {
    meters /= 100;
  }
  TakeLetter(rest, 'm');
  const double scale = 1 / meters;
  if (!rest.empty() || !(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  return scale;
}

void ZoomToScale(MapWindow& view, double scale) {
  view.scale = BoundedScale(scale * view.pixelRatio);
  ResizeView(view);
}

}  // namespace orvane
