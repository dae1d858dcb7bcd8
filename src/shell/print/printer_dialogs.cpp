#include "shell/print/printer_dialogs.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

namespace orvane {

bool DesktopPrinterDialogs::IsValid(const QPrinter& printer) { return printer.isValid(); }

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

void DesktopPrinterDialogs::Preview(QPrinter& printer, const std::function<void(QPrinter&)>& draw,
                                    QWidget* parent) {
  constexpr double PartOfScreen = 0.8;
  QPrintPreviewDialog dialog(&printer, parent, Qt::Window);
  dialog.setObjectName(QStringLiteral("printPreview"));
  dialog.resize((parent->screen()->availableSize() * PartOfScreen));
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&draw](QPrinter* device) { draw(*device); });
  dialog.exec();
}

}  // namespace orvane
