#pragma once

#include "commands/file_dialogs.h"
#include "paint/render.h"

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace orvane {

class Messages;
class ProgramWindow;
class Shell;

/// What the windows share that copy and save pictures.

/// How a picture of what a widget shows is made: with the resolution of its screen, and smooth lines
/// if the preferences say so.
/// \param title  within the file
RenderOptions PictureOptionsOf(Shell& shell, const QWidget& shown, std::string title);

/// Asks where to save a picture over a window. The ending of the chosen name is offered the next
/// time.
/// \param name  that is offered, without an ending
/// \param file  where the dialog begins
/// \return the path, or nothing if the user cancelled
std::optional<std::string> AskPictureFile(Shell& shell, ProgramWindow& window,
                                          const std::string& title, std::string_view name,
                                          FileSpecification& file);

/// True for a name with the ending of a table of numbers.
bool IsTableFile(std::string_view path);

/// Puts a picture on the clipboard, or reports why there is none.
/// \param png    as `RenderDrawing` returns it
/// \param error  likewise
/// \param text   for programs that take no pictures; may be empty
void CopyPng(const std::optional<std::string>& png, const std::string& error,
             const std::string& text, Messages& messages);

}  // namespace orvane
