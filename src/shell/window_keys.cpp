#include "shell/window_keys.h"

#include "commands/command_table.h"

#include <QShortcut>
#include <QWidget>

namespace orvane {
namespace {

QKeySequence KeyOf(CommandId id) {
  const std::string_view key = FindCommand(id)->key;
  return QKeySequence(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())),
                      QKeySequence::PortableText);
}

}  // namespace

void AddWindowKeys(QWidget& window, const std::function<void()>& exit) {
  for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), KeyOf(CommandCloseMap)}) {
    QObject::connect(new QShortcut(key, &window), &QShortcut::activated, &window, &QWidget::close);
  }
  QObject::connect(new QShortcut(KeyOf(CommandExit), &window), &QShortcut::activated, &window,
                   exit);
}

}  // namespace orvane
