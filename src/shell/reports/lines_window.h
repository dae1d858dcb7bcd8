#pragma once

#include "reports/shown_report.h"
#include "shell/print/printable_window.h"
#include "shell/reports/report_window.h"

#include <memory>
#include <optional>

namespace orvane {

class ReportArea;
struct FontSizes;

/// A report of lines in a window: they scroll, and can be selected, copied and printed.
class LinesWindow : public ReportWindow, public PrintableWindow {
  Q_OBJECT

 public:
  ~LinesWindow() override;

  ReportArea& Area() { return *area_; }

 protected:
  /// \param title   the name of the lines for screen readers
  /// \param report  what is shown
  /// \param fonts   sizes in points
  LinesWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind, const QString& name,
              const QString& title, std::unique_ptr<ShownReport> report, const FontSizes& fonts);

  /// Of the type that the constructor was given.
  ShownReport& Report() { return *report_; }

  ReportMenuFacts MenuFacts() const override { return {}; }
  void DropMap() override;
  bool CopyLines() override;
  bool SelectAllLines() override;

 private:
  std::unique_ptr<ShownReport> report_;
  ReportArea* area_;
};

}  // namespace orvane
