#include "paint/render.h"

#include "base/text.h"
#include "base/write_failure.h"
#include "paint/canvas_fonts.h"
#include "paint/display_text.h"
#include "paint/drawing_session.h"
#include "paint/qt_canvas.h"
#include "view/draw_map.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace orvane {
namespace {

constexpr double InchesPerMeter = 1 / 0.0254;
constexpr double PointsPerInch = 72;

/// The thinnest line of SVG and PDF in pixels of the view: on paper one device pixel would be all
/// but invisible.
constexpr double VectorHairline = 0.75;

QString ProgramName() { return QStringLiteral("Orvane"); }

/// The whole view as its window would show it.
Drawing DrawingOf(MapWindow& view) {
  return {view.clientWidth, view.clientHeight, [&view](Canvas& canvas) {
            view.target = &canvas;
            TakeFontMetrics(view);
            canvas.Clear(view.background);
            DrawMap(view, {0, 0, view.clientWidth, view.clientHeight});
            view.target = nullptr;
          }};
}

/// Draws through one painter on any device.
void DrawWhole(const Drawing& drawing, QPainter& painter, const CanvasFonts& fonts,
               const CanvasOptions& options) {
  QtCanvas canvas(painter, fonts, {0, 0, drawing.width, drawing.height}, options);
  drawing.draw(canvas);
}

bool RenderPng(const Drawing& drawing, const RenderOptions& options, QIODevice& device) {
  QImage image(drawing.width, drawing.height, QImage::Format_RGB32);
  if (image.isNull()) return false;
  const int dotsPerMeter = static_cast<int>(options.pixelsPerInch * InchesPerMeter + 0.5);
  image.setDotsPerMeterX(dotsPerMeter);
  image.setDotsPerMeterY(dotsPerMeter);
  image.setText(QStringLiteral("Software"), ProgramName());
  if (!options.title.empty()) image.setText(QStringLiteral("Title"), DisplayText(options.title));
  const CanvasFonts fonts(options.pixelsPerInch, drawing.fonts);
  QPainter painter(&image);
  if (!painter.isActive()) return false;
  DrawWhole(drawing, painter, fonts, {.antialias = options.antialias});
  painter.end();
  return image.save(&device, "PNG");
}

/// The generator names the one family that was asked for. Where it is missing a viewer would take
/// any other, so the family in which the labels were measured comes first, and then what is
/// like it.
void NameFontFamilies(QByteArray& svg, const CanvasFonts& fonts) {
  const QString measured = fonts.FamilyName(CanvasFont::Label).toHtmlEscaped();
  const QByteArray asked = fonts.AskedFamily().toUtf8();
  const QByteArray families =
      "'" + measured.toUtf8().replace('\'', "") + "', " + asked + ", Arial, sans-serif";
  // A quotation mark within a text of the map is written as an entity, so this is never text of the
  // map.
  svg.replace("font-family=\"" + asked + "\"", "font-family=\"" + families + "\"");
}

bool RenderSvg(const Drawing& drawing, const RenderOptions& options, QIODevice& device) {
  QByteArray svg;
  QBuffer buffer(&svg);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(static_cast<int>(options.pixelsPerInch + 0.5));
  generator.setSize(QSize(drawing.width, drawing.height));
  generator.setViewBox(QRect(0, 0, drawing.width, drawing.height));
  generator.setTitle(DisplayText(options.title).toHtmlEscaped());  // it is written unchanged
  generator.setDescription(ProgramName());
  const CanvasFonts fonts(options.pixelsPerInch, drawing.fonts, TextOutput::Text);
  QPainter painter;
  if (!painter.begin(&generator)) return false;
  DrawWhole(drawing, painter, fonts, {.antialias = true, .hairline = VectorHairline});
  if (!painter.end()) return false;
  NameFontFamilies(svg, fonts);
  return device.write(svg) == svg.size();
}

bool RenderPdf(const Drawing& drawing, const RenderOptions& options, QIODevice& device) {
  QPdfWriter writer(&device);
  writer.setResolution(static_cast<int>(options.pixelsPerInch + 0.5));
  const double pointsPerPixel = PointsPerInch / options.pixelsPerInch;
  const QSizeF points(drawing.width * pointsPerPixel, drawing.height * pointsPerPixel);
  writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
  writer.setPageMargins(QMarginsF());
  writer.setTitle(DisplayText(options.title));
  writer.setCreator(ProgramName());
  const CanvasFonts fonts(options.pixelsPerInch, drawing.fonts, TextOutput::Text);
  QPainter painter;
  if (!painter.begin(&writer)) return false;
  DrawWhole(drawing, painter, fonts, {.antialias = true, .hairline = VectorHairline});
  return painter.end();
}

bool RenderTo(const Drawing& drawing, PictureFormat format, const RenderOptions& options,
              QIODevice& device) {
  switch (format) {
    case PictureFormat::Png:
      return RenderPng(drawing, options, device);
    case PictureFormat::Svg:
      return RenderSvg(drawing, options, device);
    case PictureFormat::Pdf:
      return RenderPdf(drawing, options, device);
  }
  return false;
}

bool SizeIsPossible(const Drawing& drawing) {
  const long long width = drawing.width;
  const long long height = drawing.height;
  return width > 0 && height > 0 && width <= LongestPictureSide && height <= LongestPictureSide &&
         width * height <= LargestPicture;
}

std::string SizeText(const Drawing& drawing) {
  return std::to_string(drawing.width) + "x" + std::to_string(drawing.height);
}

}  // namespace

std::optional<PictureFormat> PictureFormatOf(std::string_view path) {
  const size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return std::nullopt;
  const std::string_view extension = path.substr(dot + 1);
  if (SameName(extension, "png")) return PictureFormat::Png;
  if (SameName(extension, "svg")) return PictureFormat::Svg;
  if (SameName(extension, "pdf")) return PictureFormat::Pdf;
  return std::nullopt;
}

std::optional<std::string> RenderDrawing(const Drawing& drawing, PictureFormat format,
                                         const RenderOptions& options, std::string& error) {
  if (!SizeIsPossible(drawing)) {
    error = "Can't make a picture of " + SizeText(drawing) + " pixels";
    return std::nullopt;
  }
  const DrawingSession session;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!RenderTo(drawing, format, options, buffer)) {
    error = "Can't draw a picture of " + SizeText(drawing) + " pixels";
    return std::nullopt;
  }
  buffer.close();
  return bytes.toStdString();
}

bool RenderDrawing(const Drawing& drawing, const RenderOptions& options, const std::string& path,
                   std::string& error) {
  const auto format = PictureFormatOf(path);
  if (!format) {
    error = "A picture file must end in .png, .svg or .pdf: " + path;
    return false;
  }
  const auto bytes = RenderDrawing(drawing, *format, options, error);
  if (!bytes) return false;
  const WriteResult result = WriteFileAtomically(path, *bytes);
  if (result == WriteResult::Done) return true;
  error = WriteFailure(result, path);
  return false;
}

std::optional<std::string> RenderMap(MapWindow& view, PictureFormat format,
                                     const RenderOptions& options, std::string& error) {
  return RenderDrawing(DrawingOf(view), format, options, error);
}

bool RenderMap(MapWindow& view, const RenderOptions& options, const std::string& path,
               std::string& error) {
  return RenderDrawing(DrawingOf(view), options, path, error);
}

}  // namespace orvane
