#include "paint/qt_canvas.h"

#include "view/pixel_mask.h"

#include <QPaintDevice>
#include <QPaintEngine>

#include <algorithm>
#include <climits>
#include <utility>

namespace orvane {
namespace {

constexpr QRgb MarkerRgb = 0xFFE0007A;

/// Dash lengths in units of the pen's width: dots with gaps as wide as two of them, and dashes that
/// can still be distinguished from dots at one pixel.
const QList<qreal> DottedPattern = {1, 2};
const QList<qreal> DashedPattern = {6, 3};

/// Corners of areas are pointed where the point is no longer than this many widths of the line,
/// that is from 60 degrees on. A sharper corner is cut off: its point would reach far out of the
/// area.
constexpr qreal MiterLimit = 2;

/// A wide line is stroked in runs of this many points: the outline of a whole day's follow at once
/// takes longer and longer to fill, while round ends hide where the runs meet.
constexpr size_t PointsOfWideRun = 256;

/// Ovals up to this many pixels wide and high are copied from a picture.
constexpr int LargestCopiedOval = 64;

/// The size of a picture of one colour that label-sized rectangles are copied from.
constexpr int PlainWidth = 128;
constexpr int PlainHeight = 32;

/// Pictures of ovals kept before they are dropped, so that they stay few.
constexpr size_t MostOvalPictures = 200;

QRectF FilledRect(const PixelRect& rect) {
  return QRectF(rect.left, rect.top, std::max(0, rect.right - rect.left),
                std::max(0, rect.bottom - rect.top));
}

bool SameRect(const PixelRect& a, const PixelRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

bool SamePen(const Pen& a, const Pen& b) {
  return a.width == b.width && a.pattern == b.pattern && a.color == b.color;
}

}  // namespace

QColor PaintColor(Color color) {
  if (color == MarkerColor) return QColor::fromRgb(MarkerRgb);
  if (color == ForegroundColor || color < 0) return QColor(Qt::black);
  return QColor::fromRgb((color >> 16) & 0xFF, (color >> 8) & 0xFF, color & 0xFF);
}

QtCanvas::QtCanvas(QPainter& painter, const CanvasFonts& fonts, const PixelRect& area,
                   const CanvasOptions& options)
    : painter_(painter), fonts_(fonts), options_(options), clip_(area) {
  painter_.save();
  pixelRatio_ = painter_.device() != nullptr ? painter_.device()->devicePixelRatio() : 1;
  if (pixelRatio_ != 1) painter_.scale(1 / pixelRatio_, 1 / pixelRatio_);
  // On pixels a rectangle needs neither the pen nor the brush of the painter.
  const QPaintEngine* engine = painter_.paintEngine();
  fillsDirectly_ = engine != nullptr && engine->type() == QPaintEngine::Raster;
  painter_.setRenderHint(QPainter::Antialiasing, options_.antialias);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
}

QtCanvas::~QtCanvas() { painter_.restore(); }

void QtCanvas::SetPen(const Pen& pen) {
  pen_ = pen;
  if (tools_ != Tools::Text) tools_ = Tools::None;
}

void QtCanvas::SetBrush(const Brush& brush) {
  brush_ = brush;
  if (tools_ == Tools::Area) tools_ = Tools::None;
}

void QtCanvas::SetForeColor(Color color) {
  foreColor_ = color;
  if (tools_ == Tools::Text) tools_ = Tools::None;
}

void QtCanvas::SetFont(CanvasFont font) { font_ = font; }

const QPen& QtCanvas::PainterPen(Tools tools) {
  if (!madeFrom_ || madeFor_ != tools || !SamePen(*madeFrom_, pen_)) {
    madePen_ = MakePainterPen(tools);
    madeFrom_ = pen_;
    madeFor_ = tools;
  }
  return madePen_;
}

QBrush QtCanvas::PainterBrush() const {
  return brush_.solid ? QBrush(PaintColor(brush_.color)) : QBrush(Qt::NoBrush);
}

QPen QtCanvas::MakePainterPen(Tools tools) const {
  const bool thin = pen_.width <= 1;
  const double thinnest = options_.hairline > 0 ? options_.hairline : 1;
  const double width = thin ? thinnest : pen_.width;
  QPen pen(PaintColor(pen_.color));
  pen.setWidthF(thin && options_.hairline <= 0 ? 0 : width);  // 0 is one device pixel
  pen.setJoinStyle(tools == Tools::Area ? Qt::SvgMiterJoin : Qt::RoundJoin);
  pen.setMiterLimit(MiterLimit);
  pen.setCapStyle(thin || pen_.pattern != PenPattern::Solid ? Qt::FlatCap : Qt::RoundCap);
  // Dots of few pixels would shrink to grey on a fine screen or on paper, so the pattern of a narrow
  // line grows with the fonts. The painter counts it in widths of the line.
  const double unit = std::max(1.0, fonts_.PixelsPerInch() / 96.0 / width);
  const auto scaled = [unit](QList<qreal> pattern) {
    for (qreal& length : pattern) length *= unit;
    return pattern;
  };
  if (pen_.pattern == PenPattern::Dotted) pen.setDashPattern(scaled(DottedPattern));
  if (pen_.pattern == PenPattern::Dashed) pen.setDashPattern(scaled(DashedPattern));
  return pen;
}

void QtCanvas::UseTools(Tools tools) {
  if (tools_ == tools) return;
  // Glyphs take only the colour of a pen, so names and marks of one colour share that of the marks.
  if (tools == Tools::Text && fillsDirectly_ && penColor_ == foreColor_) return;
  tools_ = tools;
  if (tools == Tools::Text) {
    penColor_ = foreColor_;
    if (textPenColor_ != foreColor_) textPen_ = QPen(PaintColor(foreColor_));
    textPenColor_ = foreColor_;
    painter_.setPen(textPen_);
    return;
  }
  penColor_ = HasOutline() ? std::optional(pen_.color) : std::nullopt;
  painter_.setPen(HasOutline() ? PainterPen(tools) : QPen(Qt::NoPen));
  if (tools == Tools::Area) {
    painter_.setBrush(PainterBrush());
  }
}

void QtCanvas::UseClip() {
  if (painterClip_ && SameRect(*painterClip_, clip_)) return;
  painterClip_ = clip_;
  painter_.setClipRect(FilledRect(clip_));
}

double QtCanvas::OutlineOffset() const {
  if (!HasOutline()) return 0;
  const bool oddWidth = pen_.width <= 1 || pen_.width % 2 == 1;
  return oddWidth ? 0.5 : 0;
}

QRectF QtCanvas::OutlineRect(const PixelRect& rect) const {
  if (!HasOutline()) return FilledRect(rect);
  const double offset = OutlineOffset();
  return QRectF(rect.left + offset, rect.top + offset, std::max(0, rect.right - rect.left - 1),
                std::max(0, rect.bottom - rect.top - 1));
}

void QtCanvas::DrawLine(Pixel from, Pixel to) {
  if (!HasOutline()) return;
  UseClip();
  UseTools(Tools::Line);
  const double offset = OutlineOffset();
  painter_.drawLine(QPointF(from.x + offset, from.y + offset),
                    QPointF(to.x + offset, to.y + offset));
}

void QtCanvas::DrawPolyline(const std::vector<Pixel>& points) {
  if (points.size() < 2 || !HasOutline()) return;
  UseClip();
  UseTools(Tools::Line);
  const bool inRuns = pen_.width > 1 && pen_.pattern == PenPattern::Solid;
  const double offset = OutlineOffset();
  const size_t runLength = inRuns ? PointsOfWideRun : points.size();
  for (size_t begin = 0; begin + 1 < points.size(); begin += runLength - 1) {
    const size_t end = std::min(points.size(), begin + runLength);
    room_.clear();
    for (size_t i = begin; i < end; ++i) {
      room_.emplace_back(points[i].x + offset, points[i].y + offset);
    }
    painter_.drawPolyline(room_.data(), static_cast<int>(room_.size()));
  }
}

void QtCanvas::DrawPolygon(const std::vector<Pixel>& points) {
  if (points.size() < 2) return;
  UseClip();
  UseTools(Tools::Area);
  const double offset = OutlineOffset();
  room_.clear();
  for (const Pixel& point : points) room_.emplace_back(point.x + offset, point.y + offset);
  painter_.drawPolygon(room_.data(), static_cast<int>(room_.size()));
}

void QtCanvas::DrawRect(const PixelRect& rect) {
  UseClip();
  if (fillsDirectly_ && !HasOutline() && brush_.solid) {
    FillDirectly(rect);
    return;
  }
  UseTools(Tools::Area);
  painter_.drawRect(OutlineRect(rect));
}

void QtCanvas::FillDirectly(const PixelRect& rect) {
  const QColor color = PaintColor(brush_.color);
  if (!options_.antialias) {
    painter_.fillRect(FilledRect(rect), color);
    return;
  }
  // The edges are between pixels; smoothing them would let a trace of what is below shine through.
  // To stop smoothing for each label would take twice as long as to copy it.
  const QRect area = FilledRect(rect).toRect();
  if (area.width() <= PlainWidth && area.height() <= PlainHeight) {
    if (plain_.isNull()) plain_ = QImage(PlainWidth, PlainHeight, QImage::Format_RGB32);
    if (plainColor_ != brush_.color) plain_.fill(color);
    plainColor_ = brush_.color;
    painter_.drawImage(area.topLeft(), plain_, QRect(QPoint(0, 0), area.size()));
    return;
  }
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.fillRect(area, color);
  painter_.setRenderHint(QPainter::Antialiasing, true);
}

void QtCanvas::DrawOval(const PixelRect& rect) {
  UseClip();
  const bool thin = pen_.width <= 1 || !HasOutline();
  if (!options_.antialias && thin) {
    DrawThinOval(rect);
    return;
  }
  UseTools(Tools::Area);
  // The painter fills the two edges of a wide pen apart from each other and leaves the small circle
  // of a marker ragged, so such an oval is smooth.
  if (!options_.antialias) painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.drawEllipse(OutlineRect(rect));
  if (!options_.antialias) painter_.setRenderHint(QPainter::Antialiasing, false);
}

void QtCanvas::DrawThinOval(const PixelRect& rect) {
  if (!HasOutline() && !brush_.solid) return;
  const OvalLook look{rect.right - rect.left, rect.bottom - rect.top,
                      HasOutline() ? std::optional(pen_.color) : std::nullopt,
                      brush_.solid ? std::optional(brush_.color) : std::nullopt};
  const bool isWhole = !HasOutline() || pen_.pattern == PenPattern::Solid;
  if (fillsDirectly_ && isWhole && std::max(look.width, look.height) <= LargestCopiedOval) {
    painter_.drawImage(QPoint(rect.left, rect.top), OvalPicture(look));
    return;
  }
  PaintThinOval(painter_, rect);
  tools_ = Tools::None;
  penColor_.reset();
}

void QtCanvas::PaintThinOval(QPainter& painter, const PixelRect& rect) {
  // Only the outline of whole pixels comes out symmetric, so an oval without one gets one of its
  // own colour.
  painter.setPen(HasOutline() ? PainterPen(Tools::Area) : QPen(PaintColor(brush_.color), 0));
  painter.setBrush(PainterBrush());
  painter.drawEllipse(QRect(rect.left, rect.top, std::max(0, rect.right - rect.left - 1),
                            std::max(0, rect.bottom - rect.top - 1)));
}

const QImage& QtCanvas::OvalPicture(const OvalLook& look) {
  if (ovalPictures_.size() >= MostOvalPictures) ovalPictures_.clear();
  const auto [at, isNew] = ovalPictures_.try_emplace(look);
  if (isNew) {
    const int width = std::max(1, look.width);
    const int height = std::max(1, look.height);
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    PaintThinOval(painter, {0, 0, width, height});
    painter.end();
    at->second = std::move(picture);
  }
  return at->second;
}

void QtCanvas::DrawText(Pixel at, std::string_view text) {
  DrawTextWithin(at, text, {INT_MIN, INT_MAX});
}

void QtCanvas::DrawTextWithin(Pixel at, std::string_view text, const PixelColumns& columns) {
  if (text.empty()) return;
  UseClip();
  UseTools(Tools::Text);
  fonts_.Draw(painter_, font_, at, text, columns);
}

int QtCanvas::TextWidth(std::string_view text) const { return fonts_.TextWidth(font_, text); }

PixelRect QtCanvas::TextExtent(std::string_view text) const {
  return fonts_.TextExtent(font_, text);
}

int QtCanvas::Ascent(CanvasFont font) const { return fonts_.Ascent(font); }

int QtCanvas::LineHeight(CanvasFont font) const { return fonts_.LineHeight(font); }

PixelRect QtCanvas::Clip() const { return clip_; }

void QtCanvas::SetClip(const PixelRect& clip) { clip_ = clip; }

void QtCanvas::Clear(Color color) {
  // Every label clips to its box, clears it and takes the clip back. The fill needs no clip of the
  // painter where it stays within the one that is set.
  if (!painterClip_ || !Contains(*painterClip_, clip_)) UseClip();
  painter_.fillRect(FilledRect(clip_), PaintColor(color));
}

}  // namespace orvane
