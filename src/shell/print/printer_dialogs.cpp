#include "shell/print/printer_dialogs.h"

#include <QAction>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>

namespace orvane {

bool DesktopPrinterDialogs::IsValid(const QPrinter& printer) {
  // A printer that is gone still counts as valid to the toolkit.
  const bool isGone = printer.outputFormat() == QPrinter::NativeFormat &&
                      QPrinterInfo::printerInfo(printer.printerName()).isNull();
  return printer.isValid() && !isGone;
}

void DesktopPrinterDialogs::SetUpPage(QPrinter& printer, QWidget* parent) {
  QPageSetupDialog dialog(&printer, parent);
  dialog.setObjectName(QStringLiteral("pageSetup"));
  dialog.exec();
}

bool DesktopPrinterDialogs::ChoosePrinter(QPrinter& printer, int pages, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  dialog.setObjectName(QStringLiteral("choosePrinter"));
  dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, false);
  dialog.setMinMax(1, pages);
  return dialog.exec() == QDialog::Accepted;
}

bool DesktopPrinterDialogs::Preview(QPrinter& printer, const std::function<void(QPrinter&)>& draw,
                                    QWidget* parent) {
  constexpr double PartOfScreen = 0.8;
  QPrintPreviewDialog dialog(&printer, parent, Qt::Window);
  dialog.setObjectName(QStringLiteral("printPreview"));
  dialog.resize((parent->screen()->availableSize() * PartOfScreen));
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&draw](QPrinter* device) { draw(*device); });
  // The dialog's own printing knows neither our questions nor our files.
  bool wantsPrint = false;
  const auto actions = dialog.findChildren<QAction*>();
  for (QAction* action : actions) {
    if (action->text() != QPrintPreviewDialog::tr("Print")) continue;
    action->disconnect(&dialog);
    QObject::connect(action, &QAction::triggered, &dialog, [&] {
      wantsPrint = true;
      dialog.accept();
    });
  }
  dialog.exec();
  return wantsPrint;
}

}  // namespace orvane
