#pragma once

#include "commands/command_table.h"
#include "commands/window_kinds.h"

class QWidget;

namespace orvane {

class MapWindowWidget;

/// A window whose commands come to the shell: what the shell must know of it, whatever its kind.
class ProgramWindow {
 public:
  explicit ProgramWindow(WindowKind kind) : kind_(kind) {}
  virtual ~ProgramWindow() = default;
  ProgramWindow(const ProgramWindow&) = delete;
  ProgramWindow& operator=(const ProgramWindow&) = delete;

  WindowKind Kind() const { return kind_; }

  virtual QWidget& Widget() = 0;

  /// The map window that this is or hangs on; null for the window without a map.
  virtual MapWindowWidget* MapSide() = 0;

  /// Lets the window answer a command in the way of its kind: an editor adds a row, a report
  /// searches in its own lines.
  /// \return false if it has no way of its own; the shell then does what is usual
  virtual bool Answer(CommandId) { return false; }

  /// Closes the window, after whatever questions it has.
  /// \return false if the user wants it to stay
  virtual bool TryClose() = 0;

 private:
  WindowKind kind_;
};

}  // namespace orvane
