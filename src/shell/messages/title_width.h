#pragma once

#include <QString>

class QWidget;

namespace orvane {

/// \return the width, in logical pixels, that a window needs so that its frame shows `title` whole,
///         with the name of the program that the platform puts after it and the frame's buttons.
///         Never wider than the screen that `window` is on. The frame's font belongs to the desktop;
///         a bold font of the program's own size is taken for it
int TitleWidth(const QString& title, const QWidget& window);

/// Makes a window at least as wide as its title needs, for windows whose layout sets their size.
/// Call it once the title is set and the layout is filled: a grid, or a column.
void WidenToTitle(QWidget& window);

}  // namespace orvane
