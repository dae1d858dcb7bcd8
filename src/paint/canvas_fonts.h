#pragma once

#include "view/canvas.h"

#include <QFont>
#include <QGlyphRun>
#include <QPointF>
#include <QRawFont>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class QPainter;

namespace orvane {

/// Sizes of the fonts of a canvas, in points of 1/72 inch.
struct FontSizes {
  double small = 8;
  double label = 8;
  double legendTitle = 8;
  double legendText = 8;
  double scaleBar = 8;
  bool monospaced = false;  ///< all letters are as wide as each other
};

/// How text goes to the device.
enum class TextOutput {
  Glyphs,  ///< glyph by glyph, for pixels: fast, and drawn exactly as wide as it is measured
  Text,    ///< as text, for SVG and PDF, so that it stays text in the file
};

/// The fonts of a canvas with everything that is expensive to compute about them. Make one for each
/// resolution and keep it: a map of 200,000 names asks for 200,000 widths at every repaint, and
/// shaping each of them would take a quarter of a second by itself.
///
/// Text within Latin-1, which is nearly all of it, is set from a table of glyphs and advances
/// without kerning, so that a width is a short sum and what is drawn agrees with it by
/// construction. Any other text is shaped, and its width kept by text.
class CanvasFonts {
 public:
  /// Needs a QGuiApplication.
  /// \param pixelsPerInch  device pixels of the canvas to the inch, above 0
  explicit CanvasFonts(double pixelsPerInch, const FontSizes& sizes = {},
                       TextOutput output = TextOutput::Glyphs);

  double PixelsPerInch() const { return pixelsPerInch_; }

  /// The family that is asked for first.
  QString AskedFamily() const;
  /// The family that the machine gave for it, in which text is measured.
  QString FamilyName(CanvasFont font) const;

  /// Whole pixels from the top of a line to its baseline, at least 1.
  int Ascent(CanvasFont font) const;
  /// Whole pixels of ascent and descent together.
  int LineHeight(CanvasFont font) const;
  /// Pixels that `text` advances by, rounded up.
  int TextWidth(CanvasFont font, std::string_view text) const;

  /// A rectangle that holds every pixel that `Draw` of `text` may change, counted from the start of
  /// the baseline. For text within Latin-1 drawn glyph by glyph it is tight to a pixel or two.
  PixelRect TextExtent(CanvasFont font, std::string_view text) const;

  /// Draws `text` with the painter's pen; changes the painter's font only.
  /// \param at       start of the baseline
  /// \param columns  the columns of the device that matter: others may be left as they are
  void Draw(QPainter& painter, CanvasFont font, Pixel at, std::string_view text,
            const PixelColumns& columns) const;

 private:
  /// The pixels that a glyph may change, from where it starts on the baseline.
  struct Ink {
    double left = 0;
    double right = 0;
    int top = 0;
    int bottom = 0;
  };
  struct Face {
    QFont font;
    QRawFont raw;
    QGlyphRun run;  ///< of the last text, with the font set
    int ascent = 1;
    int descent = 0;
    std::array<quint32, 256> glyphs{};                  ///< by Latin-1 character; 0 draws nothing
    std::array<double, 256> advances{};                 ///< pixels, by Latin-1 character
    std::array<Ink, 256> inks{};                        ///< by Latin-1 character
    std::array<bool, 256> simple{};                     ///< the three above hold for this character
    std::array<bool, 256> plain{};                      ///< simple, and ASCII
    std::unordered_map<std::string, int> shapedWidths;  ///< of texts beyond the table
  };

  QFont FontOf(CanvasFont font) const;
  static Face MakeFace(const QFont& font);
  Face& FaceOf(CanvasFont font) const;
  /// \return the text as Latin-1 if every character of it is in the table; it may point into
  ///         `latin_`, which the next call overwrites
  std::optional<std::string_view> SimpleText(const Face& face, std::string_view text) const;

  double pixelsPerInch_;
  FontSizes sizes_;
  TextOutput output_;
  // Caches and room to work in: a const canvas measures text.
  mutable std::array<std::optional<Face>, CanvasFontCount> faces_;  ///< made when first used
  mutable std::string latin_;
  mutable std::vector<quint32> glyphRoom_;
  mutable std::vector<QPointF> positionRoom_;
};

}  // namespace orvane
