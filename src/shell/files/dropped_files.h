#pragma once

class QDragEnterEvent;
class QDropEvent;

namespace orvane {

class Shell;

/// Takes what is dragged over a window if it holds files of this machine.
void WelcomeFiles(QDragEnterEvent& event);

/// Opens the files that were dropped on a window, each in a window of its own. That happens only
/// after the event: a message would hold up the program from which they were dragged.
void OpenDroppedFiles(Shell& shell, QDropEvent& event);

}  // namespace orvane
