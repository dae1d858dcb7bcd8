#include "shell/map_window_widget.h"

#include "base/file_names.h"
#include "paint/display_text.h"
#include "shell/shell.h"

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QScreen>
#include <QUrl>

namespace orvane {
namespace {

constexpr QSize FirstSize(1200, 800);

bool HasLocalFiles(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

}  // namespace

MapWindowWidget::MapWindowWidget(Shell& shell, Map& map)
    : shell_(shell), mapView_(new MapView(map, this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(DisplayText(BaseName(map.fileName)));
  setCentralWidget(mapView_);
  setAcceptDrops(true);
  mapView_->setFocus();
  resize(FirstSize.boundedTo(screen()->availableSize()));

  auto* close = new QAction(tr("&Close Map"), this);
  close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
  connect(close, &QAction::triggered, this, &QWidget::close);
  addAction(close);
  auto* quit = new QAction(tr("E&xit"), this);
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  connect(quit, &QAction::triggered, qApp, &QApplication::closeAllWindows);
  addAction(quit);
}

void MapWindowWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (HasLocalFiles(*event->mimeData())) event->acceptProposedAction();
}

void MapWindowWidget::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const QList<QUrl> urls = event->mimeData()->urls();
  for (const QUrl& url : urls) {
    if (!url.isLocalFile()) continue;
    shell_.OpenFile(QFile::encodeName(url.toLocalFile()).toStdString());
  }
}

}  // namespace orvane
