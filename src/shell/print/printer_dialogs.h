#pragma once

#include <functional>

class QPrinter;
class QWidget;

namespace orvane {

/// What printing needs of the platform. Tests have their own.
class PrinterDialogs {
 public:
  virtual ~PrinterDialogs() = default;

  /// \return false if the printer is gone or can't be used
  virtual bool IsValid(const QPrinter& printer) = 0;
  /// Lets the user set paper, orientation and margins.
  virtual void SetUpPage(QPrinter& printer, QWidget* parent) = 0;
  /// Lets the user choose a printer, or a PDF file, and which pages and how many copies to print.
  /// \param pages  how many there are
  /// \return false if the user cancelled
  virtual bool ChoosePrinter(QPrinter& printer, int pages, QWidget* parent) = 0;
  /// Shows what would be printed.
  /// \param draw  draws all pages, or returns false, which ends the preview: half of the pages would
  ///              pass for all of them. Called for each change of the page
  /// \return true if the user wants to print them
  virtual bool Preview(QPrinter& printer, const std::function<bool(QPrinter&)>& draw,
                       QWidget* parent) = 0;
};

/// Those of the running program.
class DesktopPrinterDialogs final : public PrinterDialogs {
 public:
  bool IsValid(const QPrinter& printer) override;
  void SetUpPage(QPrinter& printer, QWidget* parent) override;
  bool ChoosePrinter(QPrinter& printer, int pages, QWidget* parent) override;
  bool Preview(QPrinter& printer, const std::function<bool(QPrinter&)>& draw,
               QWidget* parent) override;
};

}  // namespace orvane
