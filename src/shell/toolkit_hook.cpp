#include "shell/toolkit_hook.h"

#include "shell/surroundings.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <cstdio>

namespace orvane {
namespace {

/// Severities of `ToolkitErrors`.
constexpr int PlainError = 2;

}  // namespace

ToolkitHook::ToolkitHook(Messages& messages, Surroundings& surroundings)
    : QObject(QCoreApplication::instance()),
      errors_(messages),
      surroundings_(surroundings),
      previous_(qInstallMessageHandler(&ToolkitHook::Receive)) {}

ToolkitHook::~ToolkitHook() { qInstallMessageHandler(previous_); }

void ToolkitHook::Receive(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  const QCoreApplication* application = QCoreApplication::instance();
  auto* hook = application == nullptr
                   ? nullptr
                   : application->findChild<ToolkitHook*>(QString(), Qt::FindDirectChildrenOnly);
  if (hook != nullptr && type == QtCriticalMsg) {
    // Later: the error may come in the middle of drawing a window.
    QMetaObject::invokeMethod(
        hook, [hook, text] { hook->Report(PlainError, text); }, Qt::QueuedConnection);
  } else if (hook != nullptr && hook->previous_ != nullptr) {
    hook->previous_(type, context, text);
  } else {
    std::fprintf(stderr, "%s\n", qPrintable(text));
  }
}

void ToolkitHook::Report(int severity, const QString& text) {
  if (!errors_.Report(0, severity, text.toStdString())) surroundings_.EndProgram();
}

}  // namespace orvane
