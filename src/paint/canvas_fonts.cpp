#include "paint/canvas_fonts.h"

#include "paint/display_text.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double PointsPerInch = 72;

/// A glyph may be blurred to the sides of its outline, and start between two columns. Baselines are
/// whole rows, and nothing is blurred up or down.
constexpr double InkMargin = 1;

constexpr size_t FirstBeyondAscii = 0x80;

/// Widths kept of shaped texts before the table is emptied, so that it stays small.
constexpr size_t MostShapedWidths = 50000;

QString FirstFamily(bool monospaced) {
  return monospaced ? QStringLiteral("Courier") : QStringLiteral("Helvetica");
}

QFont FontOfSize(double pixels, bool monospaced) {
  QFont font;
  // The first is the one that is wanted; the others are what it is called elsewhere, or near it.
  if (monospaced) {
    font.setFamilies({FirstFamily(true), QStringLiteral("Courier New"),
                      QStringLiteral("Liberation Mono"), QStringLiteral("DejaVu Sans Mono")});
  } else {
    font.setFamilies({FirstFamily(false), QStringLiteral("Helvetica Neue"), QStringLiteral("Arial"),
                      QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")});
  }
  font.setStyleHint(monospaced ? QFont::Monospace : QFont::SansSerif);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
  // Widths are summed letter by letter, so nothing may move the letters afterwards.
  font.setKerning(false);
  return font;
}

/// Characters that take no room or have no picture of their own; they go through the shaper or,
/// for control characters, become a blank.
bool IsControl(int character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}
bool IsSoftHyphen(int character) { return character == 0xAD; }

/// The text with a blank for each control character and for each code that no file of text may
/// hold, so that an SVG with it stays well-formed.
QString WithoutControls(QString text) {
  for (QChar& c : text) {
    if (IsControl(c.unicode()) || c.unicode() >= 0xFFFE) c = u' ';
  }
  return text;
}

}  // namespace

CanvasFonts::CanvasFonts(double pixelsPerInch, const FontSizes& sizes, TextOutput output)
    : pixelsPerInch_(pixelsPerInch), sizes_(sizes), output_(output) {}

QFont CanvasFonts::FontOf(CanvasFont font) const {
  double points = sizes_.small;
  if (font == CanvasFont::Label) points = sizes_.label;
  if (font == CanvasFont::LegendTitle) points = sizes_.legendTitle;
  if (font == CanvasFont::LegendText) points = sizes_.legendText;
  if (font == CanvasFont::ScaleBar) points = sizes_.scaleBar;
  QFont made = FontOfSize(points * pixelsPerInch_ / PointsPerInch, sizes_.monospaced);
  made.setBold(font == CanvasFont::Bold);
  made.setItalic(font == CanvasFont::Italic);
  if (output_ == TextOutput::Text) made.setHintingPreference(QFont::PreferNoHinting);
  return made;
}

CanvasFonts::Face CanvasFonts::MakeFace(const QFont& font) {
  Face face;
  face.font = font;
  face.raw = QRawFont::fromFont(face.font);
  face.run.setRawFont(face.raw);
  const QFontMetricsF metrics(face.font);
  face.ascent = std::max(1, static_cast<int>(std::ceil(metrics.ascent())));
  face.descent = std::max(0, static_cast<int>(std::ceil(metrics.descent())));
  if (!face.raw.isValid()) return face;  // no table: every text is shaped

  std::array<QChar, 256> characters;
  for (int i = 0; i < 256; ++i) {
    characters[static_cast<size_t>(i)] = QChar(IsControl(i) ? u' ' : static_cast<char16_t>(i));
  }
  int count = 256;
  if (!face.raw.glyphIndexesForChars(characters.data(), 256, face.glyphs.data(), &count) ||
      count != 256) {
    return face;
  }
  std::array<QPointF, 256> advances;
  if (!face.raw.advancesForGlyphIndexes(face.glyphs.data(), advances.data(), 256)) return face;
  for (size_t i = 0; i < 256; ++i) {
    face.simple[i] = face.glyphs[i] != 0 && !IsSoftHyphen(static_cast<int>(i));
    face.plain[i] = face.simple[i] && i < FirstBeyondAscii;
    face.advances[i] = advances[i].x();
    if (IsControl(static_cast<int>(i))) face.glyphs[i] = 0;
    const QRectF bounds = face.raw.boundingRect(face.glyphs[i]);
    if (face.glyphs[i] == 0 || bounds.isEmpty()) continue;
    face.inks[i] = {bounds.left() - InkMargin, bounds.right() + InkMargin,
                    static_cast<int>(std::floor(bounds.top())),
                    static_cast<int>(std::ceil(bounds.bottom()))};
  }
  return face;
}

QString CanvasFonts::AskedFamily() const { return FirstFamily(sizes_.monospaced); }

QString CanvasFonts::FamilyName(CanvasFont font) const { return FaceOf(font).raw.familyName(); }

CanvasFonts::Face& CanvasFonts::FaceOf(CanvasFont font) const {
  std::optional<Face>& face = faces_[static_cast<size_t>(font)];
  if (!face) face = MakeFace(FontOf(font));
  return *face;
}

int CanvasFonts::Ascent(CanvasFont font) const { return FaceOf(font).ascent; }

int CanvasFonts::LineHeight(CanvasFont font) const {
  const Face& face = FaceOf(font);
  return face.ascent + face.descent;
}

std::optional<std::string_view> CanvasFonts::SimpleText(const Face& face,
                                                        std::string_view text) const {
  const auto isSimple = [&face](char c) { return face.simple[static_cast<unsigned char>(c)]; };
  const auto isPlain = [&face](char c) { return face.plain[static_cast<unsigned char>(c)]; };
  if (std::all_of(text.begin(), text.end(), isPlain)) return text;
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < FirstBeyondAscii; };
  std::string_view latin = text;
  if (!std::all_of(text.begin(), text.end(), isAscii)) {
    const QString decoded = DisplayText(text);
    latin_.clear();
    for (const QChar c : decoded) {
      if (c.unicode() > 0xFF) return std::nullopt;
      latin_.push_back(static_cast<char>(c.unicode()));
    }
    latin = latin_;
  }
  if (!std::all_of(latin.begin(), latin.end(), isSimple)) return std::nullopt;
  return latin;
}

int CanvasFonts::TextWidth(CanvasFont font, std::string_view text) const {
  Face& face = FaceOf(font);
  if (const auto simple = SimpleText(face, text)) {
    double width = 0;
    for (const char c : *simple) width += face.advances[static_cast<unsigned char>(c)];
    return static_cast<int>(std::ceil(width));
  }
  const std::string key(text);
  const auto known = face.shapedWidths.find(key);
  if (known != face.shapedWidths.end()) return known->second;
  if (face.shapedWidths.size() >= MostShapedWidths) face.shapedWidths.clear();
  const double advance =
      QFontMetricsF(face.font).horizontalAdvance(WithoutControls(DisplayText(text)));
  const int width = static_cast<int>(std::ceil(advance));
  face.shapedWidths.emplace(key, width);
  return width;
}

PixelRect CanvasFonts::TextExtent(CanvasFont font, std::string_view text) const {
  const Face& face = FaceOf(font);
  const auto simple =
      output_ == TextOutput::Glyphs ? SimpleText(face, text) : std::optional<std::string_view>();
  if (!simple) {
    // Accents may be stacked to any height, and another program may choose the font.
    const int line = face.ascent + face.descent;
    return {-line, -face.ascent - line, TextWidth(font, text) + line, face.descent + line};
  }
  double x = 0;
  double left = 0;
  double right = 0;
  int top = 0;
  int bottom = 0;
  for (const char c : *simple) {
    const auto i = static_cast<unsigned char>(c);
    const Ink& ink = face.inks[i];
    left = std::min(left, x + ink.left);
    right = std::max(right, x + ink.right);
    top = std::min(top, ink.top);
    bottom = std::max(bottom, ink.bottom);
    x += face.advances[i];
  }
  return {static_cast<int>(std::floor(left)), top, static_cast<int>(std::ceil(right)), bottom};
}

void CanvasFonts::Draw(QPainter& painter, CanvasFont font, Pixel at, std::string_view text,
                       const PixelColumns& columns) const {
  Face& face = FaceOf(font);
  const auto simple =
      output_ == TextOutput::Glyphs ? SimpleText(face, text) : std::optional<std::string_view>();
  if (!simple) {
    painter.setFont(face.font);
    painter.drawText(QPointF(at.x, at.y), WithoutControls(DisplayText(text)));
    return;
  }
  glyphRoom_.clear();
  positionRoom_.clear();
  const double left = 1.0 * columns.left - at.x;
  const double right = 1.0 * columns.right - at.x;
  double x = 0;
  for (const char c : *simple) {
    const auto i = static_cast<unsigned char>(c);
    const Ink& ink = face.inks[i];
    if (face.glyphs[i] != 0 && x + ink.right > left && x + ink.left < right) {
      glyphRoom_.push_back(face.glyphs[i]);
      positionRoom_.emplace_back(x, 0);
    }
    x += face.advances[i];
  }
  if (glyphRoom_.empty()) return;
  face.run.setRawData(glyphRoom_.data(), positionRoom_.data(), static_cast<int>(glyphRoom_.size()));
  painter.drawGlyphRun(QPointF(at.x, at.y), face.run);
}

}  // namespace orvane
