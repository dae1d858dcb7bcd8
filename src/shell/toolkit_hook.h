#pragma once

#include "commands/toolkit_errors.h"

#include <QObject>
#include <QString>

#include <functional>

namespace orvane {

/// Brings errors that the window system reports by itself to the user. Its warnings go where they
/// always go. While it lives it stands below the application, and there is one at most.
class ToolkitHook final : public QObject {
  Q_OBJECT

 public:
  /// \param endProgram  called after an error with which the program can't go on
  ToolkitHook(Messages& messages, std::function<void()> endProgram);
  ~ToolkitHook() override;

 private:
  static void Receive(QtMsgType type, const QMessageLogContext& context, const QString& text);
  void Report(int severity, const QString& text);

  ToolkitErrors errors_;
  std::function<void()> endProgram_;
  QtMessageHandler previous_;
};

}  // namespace orvane
