#pragma once

#include "commands/toolkit_errors.h"

#include <QObject>
#include <QString>

namespace orvane {

class Surroundings;

/// Shows the user the errors that the window system reports. Its warnings go where they usually go.
/// It is a child of the application, and there is at most one.
class ToolkitHook final : public QObject {
  Q_OBJECT

 public:
  /// \param surroundings  end the program after an error with which it can't go on
  ToolkitHook(Messages& messages, Surroundings& surroundings);
  ~ToolkitHook() override;

 private:
  static void Receive(QtMsgType type, const QMessageLogContext& context, const QString& text);
  void Report(int severity, const QString& text);

  ToolkitErrors errors_;
  Surroundings& surroundings_;
  QtMessageHandler previous_;
};

}  // namespace orvane
