#pragma once

#include "pages/print_dialog.h"

#include <QObject>

#include <functional>
#include <memory>

class QPageLayout;
class QPrinter;

namespace orvane {

class BusyWork;
class MapWindowWidget;
class PrintedPages;
class ProgramWindow;
class Shell;
struct PageDevice;

/// Prints windows, and keeps for the run of the program what all print jobs share: the printer with
/// its page, and what the Print dialog remembers.
class Printing final : public QObject {
  Q_OBJECT

 public:
  /// \param shell  owns this from now on
  explicit Printing(Shell& shell);
  ~Printing() override;

  void SetUpPage(ProgramWindow& window);
  /// Prints a map after its dialog, or another window as it is. Other windows beep.
  void Print(ProgramWindow& window);
  /// Shows the pages that `Print` would print.
  void Preview(ProgramWindow& window);
  /// Shows the Print dialog of a map, and prints nothing.
  void ShowDialog(MapWindowWidget& window);

 private:
  /// Makes the pages for a page layout. \return null after a message
  using PageMaker = std::function<std::unique_ptr<PrintedPages>(const PageDevice& device)>;

  /// The printer, made for the first job.
  QPrinter& ThePrinter();
  /// Sets the resolution for the present page of a printer. \return the page
  static PageDevice PreparePage(QPrinter& printer);
  /// Checks the printer and asks what to print. \return empty if nothing is printed
  PageMaker AskWhat(ProgramWindow& window);
  PageMaker AskWhatOfMap(MapWindowWidget& window);
  bool HasValidPrinter();
  /// \return false, after a message, if the margins take the whole page
  bool HasRoomOnPage();
  /// Makes the pages and checks how many they are.
  /// \param agreedPages  as many are printed without a question: the user has seen them in the
  ///        preview
  /// \return null if they are not printed
  std::unique_ptr<PrintedPages> MakePages(const PageMaker& makePages, int agreedPages);
  void PrintPagesOf(ProgramWindow& window, const PageMaker& makePages, int agreedPages);
  /// Draws the pages of a preview, as they are for the present page of the printer. They may have
  /// become more.
  /// \param agreed  as for `MayPrintAgain`
  /// \return false if the user cancelled, or after a message
  bool DrawPreview(QPrinter& printer, const PageMaker& makePages, int& agreed,
                   const QString& occasion);
  /// Draws pages on a printer or its preview.
  /// \return false if they were cancelled, or after a message
  bool DrawOn(QPrinter& printer, PrintedPages& pages, BusyWork& busy);
  /// Prints pages. Cancel ends the job without a page.
  void SendTo(QPrinter& printer, PrintedPages& pages, const QString& occasion);
  /// Writes pages to the PDF file that the user chose as the printer.
  void WritePdf(const QPrinter& printer, PrintedPages& pages, const QString& occasion);

  Shell& shell_;
  std::unique_ptr<QPrinter> printer_;
  PrintSettings settings_;
};

/// Plugs in Page Setup, Print and Print Preview.
void PlugPrintCommands(Shell& shell);

}  // namespace orvane
