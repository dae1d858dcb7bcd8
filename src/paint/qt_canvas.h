#pragma once

#include "paint/canvas_fonts.h"
#include "view/canvas.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

namespace orvane {

/// The colour that Qt gets for a colour of the map: `MarkerColor` is a strong magenta, which no
/// forest, river or path is likely to be drawn in, `ForegroundColor` and `NoColor` are black, as a
/// map is white paper in light and dark themes alike.
QColor PaintColor(Color color);

/// How a canvas paints.
struct CanvasOptions {
  bool antialias = false;  ///< smooth lines; else each pixel of a line is wholly on or off
  double hairline = 0;     ///< pixels of the thinnest line; 0 for one device pixel at any scale
};

/// The canvas of window, picture and paper: draws on a QPainter. Coordinates are the pixels of the
/// device: on a device of a higher pixel ratio the constructor undoes the painter's scale, so that
/// lines stay sharp, and the fonts must have been made for that many pixels to the inch.
///
/// A pen one pixel wide at (x, y) colours pixel (x, y); wider pens are centred on it.
class QtCanvas final : public Canvas {
 public:
  /// \param painter  active, unscaled; the canvas has it to itself while it lives, and leaves its
  ///                 state as it was
  /// \param fonts    must outlive the canvas
  /// \param area     the pixels that may be drawn; the clip at first
  QtCanvas(QPainter& painter, const CanvasFonts& fonts, const PixelRect& area,
           const CanvasOptions& options = {});
  ~QtCanvas() override;
  QtCanvas(const QtCanvas&) = delete;
  QtCanvas& operator=(const QtCanvas&) = delete;

  void SetPen(const Pen& pen) override;
  void SetBrush(const Brush& brush) override;
  void SetForeColor(Color color) override;
  void SetFont(CanvasFont font) override;

  void DrawLine(Pixel from, Pixel to) override;
  void DrawPolyline(const std::vector<Pixel>& points) override;
  void DrawPolygon(const std::vector<Pixel>& points) override;
  void DrawRect(const PixelRect& rect) override;
  void DrawOval(const PixelRect& rect) override;
  void DrawText(Pixel at, std::string_view text) override;
  void DrawTextWithin(Pixel at, std::string_view text, const PixelColumns& columns) override;

  int TextWidth(std::string_view text) const override;
  PixelRect TextExtent(std::string_view text) const override;
  int Ascent(CanvasFont font) const override;
  int LineHeight(CanvasFont font) const override;

  PixelRect Clip() const override;
  void SetClip(const PixelRect& clip) override;
  void Clear(Color color) override;

 private:
  /// What the painter's pen and brush are set to at the moment. Marks and names alternate, so they
  /// are changed only when something is drawn that needs others.
  enum class Tools { None, Line, Area, Text };
  /// What an oval with a thin outline looks like.
  struct OvalLook {
    int width;   ///< pixels
    int height;  ///< pixels
    std::optional<Color> outline;
    std::optional<Color> fill;
    friend bool operator<(const OvalLook& a, const OvalLook& b) {
      return std::tie(a.width, a.height, a.outline, a.fill) <
             std::tie(b.width, b.height, b.outline, b.fill);
    }
  };

  void UseTools(Tools tools);
  void UseClip();
  bool HasOutline() const { return pen_.pattern != PenPattern::Hollow; }
  QBrush PainterBrush() const;
  QPen MakePainterPen(Tools tools) const;
  const QPen& PainterPen(Tools tools);
  /// Fills a rectangle with the brush, without the painter's pen and brush.
  void FillDirectly(const PixelRect& rect);
  /// Draws an oval whose outline, if it has one, is not smooth and one pixel wide.
  void DrawThinOval(const PixelRect& rect);
  /// Draws it with a painter; sets the pen and the brush of that painter.
  void PaintThinOval(QPainter& painter, const PixelRect& rect);
  /// An oval with the current pen and brush, on a transparent ground.
  const QImage& OvalPicture(const OvalLook& look);
  /// The rectangle whose outline, or without one whose inside, covers `rect` and nothing beyond.
  QRectF OutlineRect(const PixelRect& rect) const;
  /// What is added to both coordinates of an outline so that its edges fall between pixels.
  double OutlineOffset() const;

  QPainter& painter_;
  const CanvasFonts& fonts_;
  CanvasOptions options_;
  double pixelRatio_ = 1;
  bool fillsDirectly_ = false;  ///< a rectangle without an outline needs no pen and no brush
  Pen pen_;
  Brush brush_;
  Color foreColor_ = ForegroundColor;
  CanvasFont font_ = CanvasFont::Small;
  PixelRect clip_;
  std::optional<PixelRect> painterClip_;  ///< what the painter clips to at the moment
  Tools tools_ = Tools::None;
  std::optional<Color> penColor_;  ///< of the painter's pen; none if it does not draw
  // The last pens that were made, since making one takes as long as drawing a small mark.
  std::optional<Pen> madeFrom_;
  Tools madeFor_ = Tools::None;
  QPen madePen_;
  std::optional<Color> textPenColor_;
  QPen textPen_;
  // A map has thousands of marks with few looks. A mark of whole pixels is the same everywhere, and
  // to copy it takes less than half the time.
  std::map<OvalLook, QImage> ovalPictures_;
  QImage plain_;  ///< of one colour, for smooth drawing
  std::optional<Color> plainColor_;
  std::vector<QPointF> room_;
};

}  // namespace orvane
