#pragma once

#include "view/map_window.h"
#include "view/pixel_mask.h"
#include "view/point_marks.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orvane {

/// The name of a point as its label shows it: without leading blanks.
std::string_view LabelText(const Point& point);

/// Where a label is written.
struct LabelSpot {
  Pixel baseline;  ///< where the text starts
  int width = 0;   ///< pixels of the text
};

/// The box of a label in pixels: one line of the small font high and as wide as its text.
PixelRect LabelBox(const MapWindow& view, const LabelSpot& spot);

/// The labels and marks of one pass. It collects them in drawing order, and `Draw` draws those of
/// which something shows in the end. A label clears its box before its text is written, so on a map
/// of 200,000 names most are hidden by others, and drawing them would take most of the time. The
/// picture is the same as with all of them.
class LabelLayer {
 public:
  /// \param view  must live until `Draw`; its fonts and background must not change. The font of
  ///              labels must be the current one of its target.
  explicit LabelLayer(const MapWindow& view);

  /// Adds a label, a mark or both. What is outside the clip of the target is left out.
  /// \param point     must live until `Draw`, as its name must
  /// \param pixel     where the point is
  /// \param previous  the pixel of the point before, if there is one
  /// \param label     none if the point has no label here
  /// \param look      gives the colour of both, and the mark if the point has none of its own
  void Add(const Point& point, Pixel pixel, const std::optional<Pixel>& previous,
           const std::optional<LabelSpot>& label, const MarkLook& look);

  /// Adds the boxes of the labels to a mask.
  void AddBoxes(PixelMask& mask) const;

  /// Draws everything on the target of the view, and forgets it.
  void Draw();

 private:
  /// Bits of `Item::parts`.
  enum Part : std::uint8_t { Cleared = 1, Text = 2, Mark = 4, HasPrevious = 8 };
  /// A point with its label and its mark. There may be 200,000, so it is kept small; pixels fit
  /// into 16 bits.
  struct Item {
    const Point* point;
    std::uint32_t look;  ///< index in `looks_`
    std::int16_t x, y;
    std::int16_t previousX, previousY;
    std::int16_t textX, textY, textWidth;
    std::int16_t textFrom, textTo;  ///< the columns in which the text shows; from `DropCovered`
    std::uint8_t parts;             ///< what is to be drawn
  };

  LabelSpot SpotOf(const Item& item) const;
  PixelRect ClearedBox(const Item& item) const;
  PixelRect MarkBox(const Item& item) const;
  PixelRect TextBox(const Item& item) const;
  void DropCovered();
  void DropCoveredLabel(Item& item, PixelMask& cleared);
  void DrawItem(const Item& item);

  const MapWindow& view_;
  const PixelRect clip_;
  std::vector<MarkLook> looks_;
  std::vector<Item> items_;
  bool hasLabels_ = false;
};

}  // namespace orvane
