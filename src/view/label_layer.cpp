#include "view/label_layer.h"

#include "view/label_boxes.h"

#include <cstddef>

namespace orvane {

namespace {

PixelRect Shifted(const PixelRect& rect, int x, int y) {
  return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}

PixelRect Grown(const PixelRect& rect, int by) {
  return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

std::int16_t Short(int pixel) { return static_cast<std::int16_t>(pixel); }

bool SameLook(const MarkLook& a, const MarkLook& b) {
  return a.shape == b.shape && a.thickness == b.thickness && a.color == b.color &&
         a.letterWidth == b.letterWidth;
}

}  // namespace

std::string_view LabelText(const Point& point) {
  std::string_view text = point.name;
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return text;
}

PixelRect LabelBox(const MapWindow& view, const LabelSpot& spot) {
  const int top = spot.baseline.y - view.ascent;
  return {spot.baseline.x, top, spot.baseline.x + spot.width, top + view.lineHeight};
}

LabelLayer::LabelLayer(const MapWindow& view) : view_(view), clip_(view.target->Clip()) {}

void LabelLayer::Add(const Point& point, Pixel pixel, const std::optional<Pixel>& previous,
                     const std::optional<LabelSpot>& label, const MarkLook& look) {
  Item item{&point, 0, Short(pixel.x), Short(pixel.y), 0, 0, 0, 0, 0, 0, 0, 0};
  if (label) {
    // Letters may reach a little out of the box.
    const PixelRect reach = Grown(LabelBox(view_, *label), view_.lineHeight);
    if (BoxesOverlap(reach, clip_)) item.parts = Cleared | Text;
    item.textX = Short(label->baseline.x);
    item.textY = Short(label->baseline.y);
    item.textWidth = Short(label->width);
  }
  if (HasMark(look, point)) {
    const int reach = MarkReach(look, point);
    if (BoxesOverlap(Grown({pixel.x, pixel.y, pixel.x + 1, pixel.y + 1}, reach), clip_)) {
      item.parts |= Mark;
    }
    if (previous) {
      item.parts |= HasPrevious;
      item.previousX = Short(previous->x);
      item.previousY = Short(previous->y);
    }
  }
  if ((item.parts & (Cleared | Text | Mark)) == 0) return;
  hasLabels_ = hasLabels_ || (item.parts & Text) != 0;
  if (looks_.empty() || !SameLook(looks_.back(), look)) looks_.push_back(look);
  item.look = static_cast<std::uint32_t>(looks_.size() - 1);
  items_.push_back(item);
}

LabelSpot LabelLayer::SpotOf(const Item& item) const {
  return {{item.textX, item.textY}, item.textWidth};
}

/// What a label clears: its box less the space above the letters and below the baseline.
PixelRect LabelLayer::ClearedBox(const Item& item) const {
  PixelRect box = LabelBox(view_, SpotOf(item));
  box.bottom = box.top + view_.ascent;
  box.top += (view_.lineHeight - view_.ascent) / 2;
  return box;
}

PixelRect LabelLayer::MarkBox(const Item& item) const {
  const PixelRect pixel{item.x, item.y, item.x + 1, item.y + 1};
  return Grown(pixel, MarkReach(looks_[item.look], *item.point));
}

PixelRect LabelLayer::TextBox(const Item& item) const {
  return Shifted(view_.target->TextExtent(LabelText(*item.point)), item.textX, item.textY);
}

/// From the last item back: drops the parts of which later clearings leave nothing.
void LabelLayer::DropCovered() {
  PixelMask cleared(clip_);
  for (size_t i = items_.size(); i-- > 0;) {
    Item& item = items_[i];
    if ((item.parts & Text) != 0) {
      DropCoveredLabel(item, cleared);
    } else if (cleared.HasAll(MarkBox(item))) {
      item.parts = 0;
    }
  }
}

/// Drops the parts of an item with a label that are in `cleared`, and adds what it clears itself.
void LabelLayer::DropCoveredLabel(Item& item, PixelMask& cleared) {
  const bool hasMark = (item.parts & Mark) != 0;
  const PixelRect text = TextBox(item);
  const PixelRect box = ClearedBox(item);
  const PixelRect mark = hasMark ? MarkBox(item) : box;
  // On a dense map most items are hidden as a whole.
  if (cleared.HasAll(RectAround(RectAround(text, box), mark))) {
    item.parts = 0;
    return;
  }
  unsigned parts = item.parts;
  if (hasMark && cleared.HasAll(mark)) parts &= ~unsigned{Mark};
  const PixelColumns columns = cleared.MissingColumns(text);
  item.textFrom = Short(columns.left);
  item.textTo = Short(columns.right);
  if (columns.left == columns.right) parts &= ~unsigned{Text};
  if (cleared.HasAll(box)) {
    parts &= ~unsigned{Cleared};
  } else {
    cleared.Add(box);
  }
  item.parts = static_cast<std::uint8_t>(parts);
}

void LabelLayer::DrawItem(const Item& item) {
  Canvas& canvas = *view_.target;
  const MarkLook& look = looks_[item.look];
  if ((item.parts & Cleared) != 0) {
    canvas.SetPen({0, PenPattern::Hollow, view_.background});
    canvas.SetBrush({true, view_.background});
    canvas.DrawRect(ClearedBox(item));
  }
  if ((item.parts & Text) != 0) {
    canvas.SetForeColor(look.color);
    canvas.DrawTextWithin({item.textX, item.textY}, LabelText(*item.point),
                          {item.textFrom, item.textTo});
  }
  if ((item.parts & Mark) != 0) {
    const Pixel previous{item.previousX, item.previousY};
    DrawPointMark(canvas, look, *item.point, {item.x, item.y},
                  (item.parts & HasPrevious) != 0 ? &previous : nullptr);
  }
}

void LabelLayer::AddBoxes(PixelMask& mask) const {
  for (const Item& item : items_) {
    if ((item.parts & Text) != 0) mask.Add(LabelBox(view_, SpotOf(item)));
  }
}

void LabelLayer::Draw() {
  if (hasLabels_) DropCovered();
  for (const Item& item : items_) DrawItem(item);
  items_.clear();
}

}  // namespace orvane
