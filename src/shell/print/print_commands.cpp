#include "shell/print/print_commands.h"

#include "base/dates.h"
#include "base/file_names.h"
#include "base/messages.h"
#include "base/write_failure.h"
#include "pages/map_pages.h"
#include "pages/page_limits.h"
#include "pages/report_pages.h"
#include "paint/display_text.h"
#include "paint/print_job.h"
#include "shell/files/local_files.h"
#include "shell/map_window_widget.h"
#include "shell/print/print_map_dialog.h"
#include "shell/print/printable_window.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "view/view_transform.h"

#include <QPrinter>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// Fine enough for hairlines, and no finer: a job of a fine printer would only be longer.
constexpr int Resolution = 600;

/// The pages that the user chose in the dialog of the platform.
PageSpan ChosenPages(const QPrinter& printer) {
  PageSpan span;
  if (printer.printRange() != QPrinter::PageRange) return span;
  if (printer.fromPage() > 0) span.first = printer.fromPage() - 1;
  if (printer.toPage() > 0) span.end = printer.toPage();
  return span;
}

int CountChosen(const PageSpan& span, int pages) {
  return std::max(0, std::min(span.end, pages) - span.first);
}

QString OccasionFor(ProgramWindow& window) {
  return QStringLiteral("Printing %1").arg(window.MapSide()->Name());
}

}  // namespace

Printing::Printing(Shell& shell) : QObject(&shell), shell_(shell) {}

Printing::~Printing() = default;

QPrinter& Printing::ThePrinter() {
  if (!printer_) {
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer_->setCreator(QStringLiteral("Orvane"));
  }
  return *printer_;
}

PageDevice Printing::PreparePage(QPrinter& printer) {
  const QPageLayout layout = printer.pageLayout();
  const QSizeF inches = layout.fullRect(QPageLayout::Inch).size();
  // A page has no more pixels than drawing takes.
  const double longest = std::max({inches.width(), inches.height(), 1.0});
  printer.setResolution(std::clamp(static_cast<int>(LargestPixel / longest), 1, Resolution));
  return DeviceOf(layout, printer.resolution());
}

void Printing::SetUpPage(ProgramWindow& window) {
  shell_.Printers().SetUpPage(ThePrinter(), &window.Widget());
}

Printing::PageMaker Printing::AskWhatOfMap(MapWindowWidget& window) {
  PrintMapWindow view = MakePrintView(window.Shown(), PreparePage(ThePrinter()));
  PrintMapDialog dialog(view, settings_, shell_.TheWorkspace().messages, &window);
  if (dialog.exec() != QDialog::Accepted) return {};
  // The page may change after the dialog; then its fields are read again for the new one.
  return [this, &window, values = dialog.Values()](const PageDevice& device) {
    PrintMapWindow placed = MakePrintView(window.Shown(), device);
    PrintSettings settings = settings_;
    std::unique_ptr<PrintedPages> pages;
    if (const auto refusal = AcceptPrintDialog(values, placed, settings)) {
      shell_.TheWorkspace().messages.Post(Severity::Error, refusal->message);
    } else {
      pages = std::make_unique<MapPages>(std::move(placed));
    }
    return pages;
  };
}

bool Printing::HasValidPrinter() {
  if (shell_.Printers().IsValid(ThePrinter())) return true;
  // The printer may be gone: take the one that is the default now, with the same page.
  const QPageLayout layout = ThePrinter().pageLayout();
  printer_.reset();
  ThePrinter().setPageLayout(layout);
  if (shell_.Printers().IsValid(ThePrinter())) return true;
  NoteWarning(shell_.TheWorkspace().messages, "Not set up for current printer");
  return false;
}

bool Printing::HasRoomOnPage() {
  const PageDevice page = PreparePage(ThePrinter());
  if (page.width > 0 && page.height > 0) return true;
  NoteError(shell_.TheWorkspace().messages, "The margins leave no room on the page");
  return false;
}

Printing::PageMaker Printing::AskWhat(ProgramWindow& window) {
  auto* printable = dynamic_cast<PrintableWindow*>(&window);
  if (window.Kind() != WindowKind::Map && printable == nullptr) {
    shell_.Beep();
    return {};
  }
  if (!HasValidPrinter()) return {};
  // What an earlier job chose of its pages is not for this one.
  ThePrinter().setPrintRange(QPrinter::AllPages);
  ThePrinter().setFromTo(0, 0);
  if (!HasRoomOnPage()) return {};
  if (printable == nullptr) return AskWhatOfMap(*window.MapSide());
  const std::string name(BaseName(window.MapSide()->TheMap().fileName));
  return [printable, name](const PageDevice& device) {
    return printable->MakePages({device, name, FormatDate(LocalDate())});
  };
}

std::unique_ptr<PrintedPages> Printing::MakePages(const PageMaker& makePages, int agreedPages) {
  QPrinter& printer = ThePrinter();
  std::unique_ptr<PrintedPages> pages = makePages(PreparePage(printer));
  if (!pages) return nullptr;
  Messages& messages = shell_.TheWorkspace().messages;
  const int count = CountPages(*pages, printer.resolution());
  const int chosen = CountChosen(ChosenPages(printer), count);
  if (chosen == 0) NoteError(messages, "The last page is %s", {std::to_string(count)});
  if (chosen == 0) return nullptr;
  if (chosen > agreedPages && !MayPrint(messages, chosen)) return nullptr;
  if (agreedPages == 0) NoteCutLines(messages, *pages);
  return pages;
}

void Printing::PrintPagesOf(ProgramWindow& window, const PageMaker& makePages, int agreedPages) {
  QPrinter& printer = ThePrinter();
  std::unique_ptr<PrintedPages> pages = makePages(PreparePage(printer));
  if (!pages) return;
  printer.setDocName(DisplayText(pages->Title()));
  const int offered = CountPages(*pages, printer.resolution());
  if (!shell_.Printers().ChoosePrinter(printer, offered, &window.Widget())) return;
  pages = MakePages(makePages, agreedPages);
  if (!pages) return;
  if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
    WritePdf(printer, *pages, OccasionFor(window));
  } else {
    SendTo(printer, *pages, OccasionFor(window));
  }
}

void Printing::Print(ProgramWindow& window) {
  const PageMaker makePages = AskWhat(window);
  if (makePages) PrintPagesOf(window, makePages, 0);
}

void Printing::Preview(ProgramWindow& window) {
  const PageMaker makePages = AskWhat(window);
  if (!makePages) return;
  const std::unique_ptr<PrintedPages> offered = MakePages(makePages, 0);
  if (!offered) return;
  int agreed = offered->Count();
  QPageLayout drawn = ThePrinter().pageLayout();
  const auto draw = [&](QPrinter& device) {
    bool isDrawn = false;
    shell_.Guard().Run(
        [&] { isDrawn = DrawPreview(device, makePages, agreed, OccasionFor(window)); });
    if (isDrawn) drawn = device.pageLayout();
    return isDrawn;
  };
  const bool wantsPrint = shell_.Printers().Preview(ThePrinter(), draw, &window.Widget());
  // A page that could not be drawn is not that of the next job.
  ThePrinter().setPageLayout(drawn);
  if (wantsPrint) PrintPagesOf(window, makePages, agreed);
}

bool Printing::DrawPreview(QPrinter& printer, const PageMaker& makePages, int& agreed,
                           const QString& occasion) {
  const std::unique_ptr<PrintedPages> pages = makePages(PreparePage(printer));
  if (!pages) return false;
  const int count = CountPages(*pages, printer.resolution());
  if (!MayPrintAgain(shell_.TheWorkspace().messages, count, agreed)) return false;
  BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), occasion, shell_.Clock());
  return DrawOn(printer, *pages, busy);
}

void Printing::ShowDialog(MapWindowWidget& window) {
  if (HasRoomOnPage()) AskWhatOfMap(window);
}

bool Printing::DrawOn(QPrinter& printer, PrintedPages& pages, BusyWork& busy) {
  const PrintResult result =
      PrintPages(pages, printer, {.progress = &busy, .span = ChosenPages(printer)});
  if (result == PrintResult::Failed) {
    NoteError(shell_.TheWorkspace().messages, "Can't draw the pages");
  }
  return result == PrintResult::Done;
}

void Printing::SendTo(QPrinter& printer, PrintedPages& pages, const QString& occasion) {
  {
    // The toolkit can't call a job back. So all is drawn once where it can be cancelled.
    BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), occasion, shell_.Clock());
    PdfOf(pages, printer.pageLayout(), printer.resolution(),
          {.progress = &busy, .span = ChosenPages(printer)});
    if (busy.Canceled()) return;
  }
  BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), occasion, shell_.Clock());
  busy.Commit();  // a printer prints what it has
  DrawOn(printer, pages, busy);
}

void Printing::WritePdf(const QPrinter& printer, PrintedPages& pages, const QString& occasion) {
  BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), occasion, shell_.Clock());
  const auto bytes = PdfOf(pages, printer.pageLayout(), printer.resolution(),
                           {.progress = &busy, .span = ChosenPages(printer)});
  Messages& messages = shell_.TheWorkspace().messages;
  if (!bytes) {
    if (!busy.Canceled()) NoteError(messages, "Can't draw the pages");
    return;
  }
  const std::string path = PathOfLocalFile(printer.outputFileName());
  const WriteResult result = WriteFileAtomically(path, *bytes);
  if (result != WriteResult::Done) messages.Post(Severity::Error, WriteFailure(result, path));
}

void PlugPrintCommands(Shell& shell) {
  auto* printing = new Printing(shell);  // the shell frees it
  CommandDispatcher& commands = shell.Commands();
  commands.Plug(CommandPageSetup,
                [printing](ProgramWindow& window) { printing->SetUpPage(window); });
  commands.Plug(CommandPrint, [printing](ProgramWindow& window) { printing->Print(window); });
  commands.Plug(CommandPrintPreview,
                [printing](ProgramWindow& window) { printing->Preview(window); });
  QObject::connect(&shell.Windows(), &MapWindows::printDialogRequested, printing,
                   [&shell, printing](MapWindowWidget* window) {
                     shell.Guard().Run([&] { printing->ShowDialog(*window); });
                   });
}

}  // namespace orvane
