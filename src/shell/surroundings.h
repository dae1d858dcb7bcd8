#pragma once

#include "shell/files/qt_file_dialogs.h"
#include "shell/print/printer_dialogs.h"

#include <chrono>

namespace orvane {

/// What the program needs of the desktop beside its windows. Tests have their own.
class Surroundings {
 public:
  virtual ~Surroundings() = default;

  /// The sound for a command that makes no sense.
  virtual void Beep() = 0;
  /// Ends the program, once the present event is handled.
  virtual void EndProgram() = 0;
  /// Ends the program at once, after a fatal message.
  virtual void EndAtOnce(int status) = 0;
  /// Ends the program as one that doesn't handle the signal would end.
  virtual void EndBySignal(int signal) = 0;
  /// The time since any fixed moment, for long work and for recovery copies.
  virtual std::chrono::milliseconds Now() = 0;
  /// The boxes that ask for a file.
  virtual FileDialogs& Dialogs() = 0;
  /// The boxes of the printer.
  virtual PrinterDialogs& Printers() = 0;
};

/// Those of the running program.
class DesktopSurroundings final : public Surroundings {
 public:
  void Beep() override;
  void EndProgram() override;
  void EndAtOnce(int status) override;
  void EndBySignal(int signal) override;
  std::chrono::milliseconds Now() override;
  FileDialogs& Dialogs() override { return dialogs_; }
  PrinterDialogs& Printers() override { return printers_; }

 private:
  QtFileDialogs dialogs_;
  DesktopPrinterDialogs printers_;
};

}  // namespace orvane
