#include "shell/reports/lines_window.h"

#include "shell/reports/report_area.h"

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

namespace orvane {

LinesWindow::LinesWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind,
                         const QString& name, const QString& title,
                         std::unique_ptr<ShownReport> report, const FontSizes& fonts)
    : ReportWindow(shell, mapWindow, kind, name),
      report_(std::move(report)),
      area_(new ReportArea(*report_, fonts, this)) {
  area_->setAccessibleName(title);
  setCentralWidget(area_);
  setFocusProxy(area_);
  area_->setFocus();
  connect(area_, &ReportArea::selectionChanged, this, [this] { ShowMenu(); });
}

LinesWindow::~LinesWindow() {
  // The area looks at the report, which goes before the children of the window do.
  delete area_;
}

void LinesWindow::DropMap() {
  report_->Drop();
  area_->ShowLines();
}

bool LinesWindow::CopyLines() {
  const std::string text = CopiedText(*report_, area_->Selection());
  QGuiApplication::clipboard()->setText(DisplayFields(text));
  return true;
}

bool LinesWindow::SelectAllLines() {
  area_->SelectAll();
  return true;
}

}  // namespace orvane
