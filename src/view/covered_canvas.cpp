#include "view/covered_canvas.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

namespace {

constexpr int WordBits = 64;

// What was set, in the order in which it is passed on.
constexpr std::uint8_t PenBit = 1;
constexpr std::uint8_t BrushBit = 2;
constexpr std::uint8_t ForeBit = 4;

PixelRect Grown(const PixelRect& rect, int by) {
  return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

PixelRect Common(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Which pixels of a rectangle are covered, a bit each.
class CoverMask {
 public:
  explicit CoverMask(const PixelRect& area)
      : area_(area),
        wordsOfRow_((std::max(0, area.right - area.left) + WordBits - 1) / WordBits),
        words_(static_cast<size_t>(wordsOfRow_) *
               static_cast<size_t>(std::max(0, area.bottom - area.top))) {}

  /// True if `rect` meets the area, and each pixel of it there is covered.
  bool Covers(const PixelRect& rect) const {
    const PixelRect common = Common(rect, area_);
    if (common.left >= common.right || common.top >= common.bottom) return false;
    return VisitWords(
        rect, [this](size_t at, std::uint64_t bits) { return (words_[at] & bits) == bits; });
  }

  void Add(const PixelRect& rect) {
    VisitWords(rect, [this](size_t at, std::uint64_t bits) {
      words_[at] |= bits;
      return true;
    });
  }

 private:
  /// Calls `visit` with the index of each word that the rectangle touches, and the bits that it
  /// touches, until `visit` returns false. \return false then
  template <typename Visit>
  bool VisitWords(const PixelRect& whole, Visit visit) const {
    const PixelRect rect = Common(whole, area_);
    if (rect.left >= rect.right || rect.top >= rect.bottom) return true;
    const int left = rect.left - area_.left;
    const int last = rect.right - area_.left - 1;
    const std::uint64_t firstBits = ~std::uint64_t{0} << (left % WordBits);
    const std::uint64_t lastBits = ~std::uint64_t{0} >> (WordBits - 1 - last % WordBits);
    for (int y = rect.top - area_.top; y < rect.bottom - area_.top; ++y) {
      const size_t row = static_cast<size_t>(y) * static_cast<size_t>(wordsOfRow_);
      for (int word = left / WordBits; word <= last / WordBits; ++word) {
        std::uint64_t bits = ~std::uint64_t{0};
        if (word == left / WordBits) bits &= firstBits;
        if (word == last / WordBits) bits &= lastBits;
        if (!visit(row + static_cast<size_t>(word), bits)) return false;
      }
    }
    return true;
  }

  PixelRect area_;
  int wordsOfRow_;
  std::vector<std::uint64_t> words_;
};

}  // namespace

CoveredCanvas::CoveredCanvas(Canvas& below, CanvasFont font)
    : below_(below), ascent_(below.Ascent(font)), lineHeight_(below.LineHeight(font)) {}

void CoveredCanvas::ChangeTools(std::uint8_t bit, const Tools& tools) {
  if ((newTools_ & bit) != 0) Draw(Kind::Nothing, {});
  newTools_ |= bit;
  if (toolsUsed_) {
    tools_.push_back(tools);
    toolsUsed_ = false;
  } else {
    tools_.back() = tools;
  }
}

void CoveredCanvas::SetPen(const Pen& pen) {
  Tools tools = tools_.back();
  tools.pen = pen;
  ChangeTools(PenBit, tools);
}

void CoveredCanvas::SetBrush(const Brush& brush) {
  Tools tools = tools_.back();
  tools.brush = brush;
  ChangeTools(BrushBit, tools);
}

void CoveredCanvas::SetForeColor(Color color) {
  Tools tools = tools_.back();
  tools.foreColor = color;
  ChangeTools(ForeBit, tools);
}

void CoveredCanvas::Draw(Kind kind, const PixelRect& box, std::string_view text) {
  const Tools& tools = tools_.back();
  const bool covers =
      kind == Kind::Rect && tools.pen.pattern == PenPattern::Hollow && tools.brush.solid;
  operations_.push_back(
      {kind, newTools_, covers, true, static_cast<std::uint32_t>(tools_.size() - 1), box, text});
  newTools_ = 0;
  toolsUsed_ = true;
}

void CoveredCanvas::DrawLine(Pixel from, Pixel to) {
  Draw(Kind::Line, {from.x, from.y, to.x, to.y});
}

void CoveredCanvas::DrawRect(const PixelRect& rect) { Draw(Kind::Rect, rect); }

void CoveredCanvas::DrawOval(const PixelRect& rect) { Draw(Kind::Oval, rect); }

void CoveredCanvas::DrawText(Pixel at, std::string_view text) {
  Draw(Kind::Text, {at.x, at.y, TextWidth(text), 0}, text);
}

int CoveredCanvas::TextWidth(std::string_view text) const {
  if (text.data() != measured_.data() || text.size() != measured_.size()) {
    measured_ = text;
    measuredWidth_ = below_.TextWidth(text);
  }
  return measuredWidth_;
}

/// A rectangle that holds every pixel that an operation may change.
PixelRect CoveredCanvas::ExtentOf(const Operation& operation) const {
  const PixelRect& box = operation.box;
  const Pen& pen = tools_[operation.tools].pen;
  switch (operation.kind) {
    case Kind::Nothing:
      return {};
    case Kind::Line:
      return Grown({std::min(box.left, box.right), std::min(box.top, box.bottom),
                    std::max(box.left, box.right) + 1, std::max(box.top, box.bottom) + 1},
                   pen.width + 2);
    case Kind::Rect:
      return pen.pattern == PenPattern::Hollow ? box : Grown(box, pen.width + 2);
    case Kind::Oval:
      return Grown(box, pen.width + 2);
    case Kind::Text:
      break;
  }
  // Letters of plain text stay within the line but for the overhang of their sides; accents may be
  // stacked to any height.
  const bool plain = IsAscii(operation.text);
  const int above = plain ? 1 : lineHeight_;
  const int beside = plain ? lineHeight_ / 4 + 1 : lineHeight_;
  const int top = box.top - ascent_;
  return {box.left - beside, top - above, box.left + box.right + beside, top + lineHeight_ + above};
}

/// From the last operation back: what the coverings so far leave nothing of does not show.
void CoveredCanvas::FindCovered() {
  CoverMask mask(below_.Clip());
  for (size_t i = operations_.size(); i-- > 0;) {
    Operation& operation = operations_[i];
    operation.shows = !mask.Covers(ExtentOf(operation));
    if (operation.shows && operation.covers) mask.Add(operation.box);
  }
}

void CoveredCanvas::Replay(const Operation& operation) {
  const PixelRect& box = operation.box;
  switch (operation.kind) {
    case Kind::Nothing:
      return;
    case Kind::Line:
      return below_.DrawLine({box.left, box.top}, {box.right, box.bottom});
    case Kind::Rect:
      return below_.DrawRect(box);
    case Kind::Oval:
      return below_.DrawOval(box);
    case Kind::Text:
      return below_.DrawText({box.left, box.top}, operation.text);
  }
}

void CoveredCanvas::Finish() {
  FindCovered();
  unsigned newTools = 0;
  for (const Operation& operation : operations_) {
    newTools |= operation.newTools;
    if (!operation.shows) continue;
    const Tools& tools = tools_[operation.tools];
    if ((newTools & PenBit) != 0) below_.SetPen(tools.pen);
    if ((newTools & BrushBit) != 0) below_.SetBrush(tools.brush);
    if ((newTools & ForeBit) != 0) below_.SetForeColor(tools.foreColor);
    newTools = 0;
    Replay(operation);
  }
  operations_.clear();
}

}  // namespace orvane
