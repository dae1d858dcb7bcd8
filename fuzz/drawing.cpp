// Reads any text as a map and draws it on a canvas that checks what it is given. Nothing may crash,
// hang or be undefined, and no coordinate may be beyond 16 bits.
//
// What is before a line with only a form feed are operations on the view, one a byte, as `Operate`
// lists them. After a drawing the rest of them acts on the view that was drawn.

#include "fuzzed_map.h"
#include "view/draw_map.h"
#include "view/fit_to_map.h"
#include "view/info_panel.h"
#include "view/map_notes.h"
#include "view/orientation.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using orvane::Pixel;
using orvane::PixelRect;

/// Draws nothing. Letters are 6 pixels wide.
class CheckingCanvas final : public orvane::Canvas {
 public:
  void SetPen(const orvane::Pen& pen) override { fuzz::Require(pen.width >= 0); }
  void SetBrush(const orvane::Brush&) override {}
  void SetForeColor(orvane::Color) override {}
  void SetFont(orvane::CanvasFont) override {}
  void DrawLine(Pixel from, Pixel to) override {
    Check(from);
    Check(to);
  }
  void DrawPolyline(const std::vector<Pixel>& points) override {
    for (const Pixel pixel : points) Check(pixel);
  }
  void DrawPolygon(const std::vector<Pixel>& points) override { DrawPolyline(points); }
  void DrawRect(const PixelRect& rect) override {
    Check({rect.left, rect.top});
    Check({rect.right, rect.bottom});
  }
  void DrawOval(const PixelRect& rect) override { DrawRect(rect); }
  void DrawText(Pixel at, std::string_view) override { Check(at); }
  int TextWidth(std::string_view text) const override { return static_cast<int>(text.size()) * 6; }
  PixelRect TextExtent(std::string_view text) const override { return {0, -9, TextWidth(text), 3}; }
  int Ascent(orvane::CanvasFont) const override { return 9; }
  int LineHeight(orvane::CanvasFont) const override { return 12; }
  PixelRect Clip() const override { return clip_; }
  void SetClip(const PixelRect& clip) override { clip_ = clip; }
  void Clear(orvane::Color) override {}

 private:
  static void Check(Pixel pixel) {
    constexpr int Farthest = 32768;
    fuzz::Require(pixel.x >= -Farthest && pixel.x <= Farthest);
    fuzz::Require(pixel.y >= -Farthest && pixel.y <= Farthest);
  }

  PixelRect clip_{0, 0, 400, 300};
};

void Draw(orvane::MapWindow& view) {
  CheckingCanvas canvas;
  view.target = &canvas;
  orvane::TakeFontMetrics(view);
  orvane::DrawMap(view, {0, 0, view.clientWidth, view.clientHeight});
  const auto rows = orvane::InfoRows(view, orvane::AltitudeEstimates(*view.map));
  orvane::DrawInfoPanel(canvas, rows, orvane::MeasureInfoPanel(canvas, rows), view.background);
  view.target = nullptr;
}

/// Gives every row a style by a digit, so that all kinds of lines, marks and fillings are drawn.
void Restyle(orvane::MapWindow& view, int digit) {
  for (orvane::TrailPanelRow* row : orvane::TrailRowsInOrder(view.trailViews)) {
    row->visible = true;
    row->filled = digit % 2 == 1;
    row->fillPattern = digit % 8;
    row->lineStyle = orvane::StyleOf<orvane::LineStyle>(digit - 1);
    row->labelMode = orvane::StyleOf<orvane::LabelMode>(digit % 5);
    row->markStyle = orvane::StyleOf<orvane::MarkStyle>(digit);
  }
  for (orvane::RangePanelRow& row : view.rangeViews) {
    row.visible = true;
    row.shading = digit % 8;
    row.drawMode = orvane::StyleOf<orvane::RangeDrawMode>(digit % 6);
    row.clusterMask = 0x12481U << digit;
    for (bool& shown : row.showSm) shown = digit % 3 == 0;
  }
}

void Operate(orvane::MapWindow& view, char operation) {
  const Pixel corner{view.clientWidth / 4, view.clientHeight / 3};
  switch (operation) {
    case 'n':
      orvane::StepView(view, orvane::ViewStep::North, {});
      break;
    case 's':
      orvane::StepView(view, orvane::ViewStep::South, {.shift = true});
      break;
    case 'e':
      orvane::StepView(view, orvane::ViewStep::East, {.control = true});
      break;
    case 'w':
      orvane::StepView(view, orvane::ViewStep::West, {});
      break;
    case '+':
      orvane::ZoomOnPixel(view, corner, 2);
      break;
    case '-':
      orvane::ZoomAboutPixel(view, corner, 0.5);
      break;
    case '*':
      orvane::ZoomOnPixel(view, corner, 1000);
      break;
    case '/':
      orvane::ZoomAboutPixel(view, corner, 0.001);
      break;
    case 'r':
      orvane::SetOrientation(view, static_cast<double>(view.rotation) + 37);
      break;
    case 'z':
      orvane::ZoomToPixels(view, corner, view.pointer);
      break;
    case 'm':
      view.pointer = {view.pointer.y + 70, view.pointer.x + 30};
      break;
    case 'd':
      view.flags ^= orvane::MapWindowDrag;
      break;
    case 'b':
      view.selection[1] = orvane::ScreenToMap(view, view.pointer);
      break;
    case 'f':
      orvane::FitToMap(view);
      break;
    case 'g':
      view.flags ^= orvane::MapWindowGridsHidden;
      break;
    case 'p':
      view.flags ^= orvane::MapWindowPrint;
      break;
    case 'x':
      view.flags ^= orvane::MapWindowFindMarker;
      break;
    case 'c':
      view.centralLongitude = orvane::WrapLongitude(view.centralLongitude + 90);
      break;
    case 'h':
      orvane::SetPixelRatio(view, view.pixelRatio == 2 ? 1 : 2);
      break;
    case 't':
      orvane::SizeView(view, view.clientHeight + 7, view.clientWidth / 2);
      break;
    case 'D':
      Draw(view);
      break;
    default:
      if (operation >= '0' && operation <= '9') Restyle(view, operation - '0');
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t MostOperations = 64;
  const fuzz::Parts parts = fuzz::PartsOf(data, size);
  fuzz::FuzzedMaps maps;
  orvane::Map& map = maps.Open(parts.body);
  orvane::NoteLines(map);
  orvane::MapWindow view = fuzz::ViewOf(map);
  for (const char operation : parts.head.substr(0, MostOperations)) Operate(view, operation);
  Draw(view);
  return 0;
}
