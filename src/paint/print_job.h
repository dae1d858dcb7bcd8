#pragma once

#include "base/progress.h"
#include "pages/page_device.h"
#include "pages/paper.h"
#include "pages/printed_pages.h"

#include <QPageLayout>

#include <limits>
#include <optional>
#include <string>

class QPagedPaintDevice;

namespace orvane {

/// The print job: the same pages, drawn by the same code, on a printer, in a PDF file and in a
/// preview. If the program has no QGuiApplication yet, one without any screen is made for the time
/// of the call.

/// A sheet with the margins of a PDF file.
QPageLayout PdfLayout(const Paper& paper, QPageLayout::Orientation orientation);

/// The printable area of a layout at a resolution.
/// \param resolution  pixels to the inch, in both directions
PageDevice DeviceOf(const QPageLayout& layout, int resolution);

/// Lays the pages out for a resolution.
/// \return how many there are
int CountPages(PrintedPages& pages, int resolution);

/// Some of the pages of a job, from `first` to just before `end`, counted from 0.
struct PageSpan {
  int first = 0;
  int end = std::numeric_limits<int>::max();
};

/// How a print job ended.
enum class PrintResult { Done, Canceled, Failed };

/// How pages are printed.
struct PrintRun {
  Progress* progress = nullptr;  ///< asked before and within each page; may be null
  PageSpan span{};               ///< which pages
};

/// Draws pages, one after the other. After a cancel the device has the pages so far, and a part of the
/// next one: a printer prints them.
/// \param device  with its page layout and resolution set, and not yet painted on
/// \return `Failed` also for a span without pages
PrintResult PrintPages(PrintedPages& pages, QPagedPaintDevice& device, const PrintRun& run);

/// Makes a PDF file of the pages: text stays text, lines stay lines.
/// \param resolution  pixels to the inch
/// \return the bytes of the file, or nothing if it could not be drawn or was cancelled
std::optional<std::string> PdfOf(PrintedPages& pages, const QPageLayout& layout, int resolution,
                                 const PrintRun& run = {});

}  // namespace orvane
