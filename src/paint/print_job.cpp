#include "paint/print_job.h"

#include "pages/watched_canvas.h"
#include "paint/canvas_fonts.h"
#include "paint/display_text.h"
#include "paint/drawing_session.h"
#include "paint/qt_canvas.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace orvane {
namespace {

/// The thinnest line on paper: a pixel of a fine printer would be all but invisible.
constexpr double HairlinesPerInch = 300;

CanvasFonts FontsOf(const PrintedPages& pages, int resolution) {
  const PageFonts sizes = pages.Fonts();
  return CanvasFonts(resolution,
                     {.small = 1.0 * sizes.text,
                      .label = 1.0 * sizes.text,
                      .legendTitle = 1.0 * sizes.legendTitle,
                      .legendText = 1.0 * sizes.legendText,
                      .scaleBar = 1.0 * sizes.scaleBar,
                      .monospaced = sizes.monospaced},
                     TextOutput::Text);
}

/// What all pages of a job are drawn with.
struct PageTools {
  QPainter& painter;
  const CanvasFonts& fonts;
  PageDevice device;
};

void DrawOnePage(PrintedPages& pages, int page, const PageTools& tools, const PageProgress& done) {
  const PageDevice& device = tools.device;
  QtCanvas canvas(tools.painter, tools.fonts, {0, 0, device.width, device.height},
                  {.antialias = true, .hairline = device.horizontalResolution / HairlinesPerInch});
  WatchedCanvas watched(canvas, done);
  pages.DrawPage(page, watched);
}

}  // namespace

QPageLayout PdfLayout(const Paper& paper, QPageLayout::Orientation orientation) {
  const QPageSize size(QSizeF(paper.width, paper.height), QPageSize::Millimeter,
                       QString::fromStdString(paper.name), QPageSize::ExactMatch);
  return {size, orientation, QMarginsF(PdfMargin, PdfMargin, PdfMargin, PdfMargin),
          QPageLayout::Millimeter};
}

PageDevice DeviceOf(const QPageLayout& layout, int resolution) {
  const QRect area = layout.paintRectPixels(resolution);
  return {.height = area.height(),
          .width = area.width(),
          .verticalResolution = resolution,
          .horizontalResolution = resolution,
          .marginBelow = layout.marginsPixels(resolution).bottom()};
}

int CountPages(PrintedPages& pages, int resolution) {
  const DrawingSession session;
  QImage paper(1, 1, QImage::Format_RGB32);
  QPainter painter(&paper);
  const CanvasFonts fonts = FontsOf(pages, resolution);
  QtCanvas canvas(painter, fonts, {0, 0, 1, 1});
  pages.Measure(canvas);
  return pages.Count();
}

PrintResult PrintPages(PrintedPages& pages, QPagedPaintDevice& device, const PrintRun& run) {
  const int resolution = device.logicalDpiX();
  const PageDevice area = DeviceOf(device.pageLayout(), resolution);
  const CanvasFonts fonts = FontsOf(pages, resolution);
  CountPages(pages, resolution);
  const int first = run.span.first;
  const int end = std::min(run.span.end, pages.Count());
  if (first >= end) return PrintResult::Failed;
  QPainter painter;
  if (!painter.begin(&device)) return PrintResult::Failed;
  const PageTools tools{painter, fonts, area};
  for (int page = first; page < end; ++page) {
    const PageProgress done{run.progress, static_cast<size_t>(page - first),
                            static_cast<size_t>(end - first)};
    if (run.progress != nullptr) run.progress->Reach(WorkStage::Printing, done.page, done.pages);
    if (IsCanceled(run.progress)) return PrintResult::Canceled;
    if (page > first && !device.newPage()) return PrintResult::Failed;
    DrawOnePage(pages, page, tools, done);
  }
  if (IsCanceled(run.progress)) return PrintResult::Canceled;
  return painter.end() ? PrintResult::Done : PrintResult::Failed;
}

std::optional<std::string> PdfOf(PrintedPages& pages, const QPageLayout& layout, int resolution,
                                 const PrintRun& run) {
  const DrawingSession session;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(resolution);
  writer.setPageLayout(layout);
  writer.setTitle(DisplayText(pages.Title()));
  writer.setCreator(QStringLiteral("Orvane"));
  if (PrintPages(pages, writer, run) != PrintResult::Done) return std::nullopt;
  buffer.close();
  return bytes.toStdString();
}

}  // namespace orvane
