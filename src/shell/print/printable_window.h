#pragma once

#include "pages/report_pages.h"

#include <memory>

namespace orvane {

/// A window that Print prints as it is. A map window has the Print dialog instead.
class PrintableWindow {
 public:
  virtual ~PrintableWindow() = default;

  /// What is printed now.
  /// \param frame  the page, and what each page has in its foot line
  /// \return never null; the window must outlive the pages
  virtual std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) = 0;
};

}  // namespace orvane
