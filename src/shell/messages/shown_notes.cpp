#include "shell/messages/shown_notes.h"

#include "shell/map/map_note.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/shell.h"

#include <QApplication>
#include <QLocale>

namespace orvane {
namespace {

/// The map window that is active or owns the active window; otherwise the one opened last.
MapWindowWidget* WindowInUse(const Shell& shell) {
  for (QWidget* each = QApplication::activeWindow(); each != nullptr; each = each->parentWidget()) {
    if (auto* window = qobject_cast<MapWindowWidget*>(each)) return window;
  }
  return shell.Windows().All().empty() ? nullptr : shell.Windows().All().front();
}

}  // namespace

ShownNotes::ShownNotes(Shell& shell) : QObject(&shell), shell_(shell) {
  timer_.setSingleShot(true);
  timer_.setInterval(0);
  connect(&timer_, &QTimer::timeout, this, &ShownNotes::Show);
}

void ShownNotes::Add(size_t number, const QString& text) {
  if (due_.isEmpty()) first_ = number;
  due_.append(text);
  // Later, since a map that is being read has no window yet.
  timer_.start();
}

void ShownNotes::Show() {
  QStringList lines = due_;
  due_.clear();
  MapWindowWidget* window = WindowInUse(shell_);
  if (window == nullptr) return;
  if (lines.size() > MostLines) {
    const qsizetype left = lines.size() - (MostLines - 1);
    lines = lines.first(MostLines - 1);
    lines.append(
        QStringLiteral("%1 more notes are in the messages window").arg(QLocale().toString(left)));
  }
  shownFirst_ = first_;
  NoteOn(*window).ShowLines(lines);
}

ResultNote& ShownNotes::NoteOn(MapWindowWidget& window) {
  if (auto* note = window.View().findChild<ResultNote*>()) return *note;
  auto* note = new ResultNote(&window.View());
  connect(note, &ResultNote::clicked, this, [this] {
    BoxMessages& boxes = shell_.Boxes();
    if (boxes.showInWindow) boxes.showInWindow(boxes.Log().RowOf(shownFirst_));
  });
  return *note;
}

}  // namespace orvane
