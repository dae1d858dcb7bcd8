#pragma once

#include "commands/toolkit_errors.h"

#include <QObject>
#include <QString>

#include <functional>

namespace orvane {

/// Shows the user the errors that the window system reports. Its warnings go where they usually go.
/// It is a child of the application, and there is at most one.
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
