#pragma once

class QDragEnterEvent;
class QDropEvent;

namespace orvane {

class Shell;

/// Accepts what is dragged over a window if it holds local files.
void WelcomeFiles(QDragEnterEvent& event);

/// Opens the files that were dropped on a window, each in a window of its own. It does so after the
/// event, because a message box would block the program that they were dragged from.
void OpenDroppedFiles(Shell& shell, QDropEvent& event);

}  // namespace orvane
