#include "shell/print/printer_dialogs.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>

namespace orvane {
namespace {

/// Names the controls of the toolkit's preview for screen readers.
void NameControls(const QPrintPreviewDialog& dialog) {
  for (auto* pages : dialog.findChildren<QGraphicsView*>()) {
    pages->setAccessibleName(QStringLiteral("Pages"));
  }
  for (auto* page : dialog.findChildren<QLineEdit*>()) {
    page->setAccessibleName(QStringLiteral("Page"));
  }
  for (auto* zoom : dialog.findChildren<QComboBox*>()) {
    zoom->setAccessibleName(QStringLiteral("Zoom"));
    zoom->lineEdit()->setAccessibleName(QStringLiteral("Zoom"));
    zoom->view()->setAccessibleName(QStringLiteral("Zooms"));
  }
}

}  // namespace

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

bool DesktopPrinterDialogs::Preview(QPrinter& printer, const std::function<bool(QPrinter&)>& draw,
                                    QWidget* parent) {
  constexpr double PartOfScreen = 0.8;
  QPrintPreviewDialog dialog(&printer, parent, Qt::Window);
  dialog.setObjectName(QStringLiteral("printPreview"));
  dialog.resize((parent->screen()->availableSize() * PartOfScreen));
  NameControls(dialog);
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* device) {
    if (draw(*device)) return;
    // The first pages are drawn before the box is shown: then it is not shown at all.
    if (!dialog.isVisible()) dialog.setAttribute(Qt::WA_DontShowOnScreen);
    // It can only be closed once its loop runs.
    QMetaObject::invokeMethod(&dialog, &QDialog::reject, Qt::QueuedConnection);
  });
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
