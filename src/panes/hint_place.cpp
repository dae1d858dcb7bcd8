#include "panes/hint_place.h"

namespace orvane {
namespace {

/// Pixels between the anchor and the left edge of the box.
constexpr int Aside = 10;

}  // namespace

PixelRect PlaceHint(Pixel anchor, int width, int height, Pixel parent, int lineHeight,
                    HintPlacement placement) {
  int left = anchor.x + Aside;
  const int under = anchor.y + lineHeight;
  const int over = anchor.y - lineHeight - height;
  int top = placement == HintPlacement::Over ? over : under;
  if (placement == HintPlacement::Centered) {
    left = (parent.x - width) / 2;
    top = (parent.y - height) / 2;
  }
  if (top < 0) top = under;
  if (top + height > parent.y) top = over;
  if (top < 0) top = 0;
  if (left + width > parent.x) left = parent.x - 1 - width;
  return {.left = left, .top = top, .right = left + width, .bottom = top + height};
}

}  // namespace orvane
