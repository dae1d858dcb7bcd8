#pragma once

#include "commands/command_table.h"
#include "commands/window_kinds.h"

class QWidget;

namespace orvane {

class MapWindowWidget;

/// A window that sends its commands to the shell: what the shell needs to know about any kind.
class ProgramWindow {
 public:
  explicit ProgramWindow(WindowKind kind) : kind_(kind) {}
  virtual ~ProgramWindow() = default;
  ProgramWindow(const ProgramWindow&) = delete;
  ProgramWindow& operator=(const ProgramWindow&) = delete;

  WindowKind Kind() const { return kind_; }

  virtual QWidget& Widget() = 0;

  /// The map window that this is or belongs to; null for the window without a map.
  virtual MapWindowWidget* MapSide() = 0;

  /// Lets the window handle a command itself: an editor adds a row, a report searches its own lines.
  /// \return false if it does not handle the command; the shell then does
  virtual bool Answer(CommandId) { return false; }

  /// True if the window can stay open while its map is read again.
  virtual bool FollowsReload() const { return false; }

  /// Closes the window after its questions.
  /// \return false if the user wants it to stay
  virtual bool TryClose() = 0;

 private:
  WindowKind kind_;
};

}  // namespace orvane
