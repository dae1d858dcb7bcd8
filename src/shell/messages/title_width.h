#pragma once

#include <QString>

class QWidget;

namespace orvane {

/// The program cannot ask for the font of the frame, so this assumes a bold font of its own size.
/// \return the width, in logical pixels, at which the frame shows the whole of `title`, the name of
///         the program that the platform adds to it, and its buttons; at most that of the screen
///         that `window` is on
int TitleWidth(const QString& title, const QWidget& window);

/// Makes a window at least as wide as its title needs, if its layout sets its size. Call it once the
/// title is set and the layout is filled. The layout is a grid or a column.
void WidenToTitle(QWidget& window);

}  // namespace orvane
