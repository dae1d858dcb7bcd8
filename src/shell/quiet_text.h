#pragma once

class QColor;
class QPalette;
class QWidget;

namespace orvane {

/// The colour of text that is less important than the text around it: line numbers, hints. It can be
/// read on light and dark desktops; the colour that the toolkit has for hints in fields is black on
/// some dark ones.
QColor QuietTextColor(const QPalette& palette);

/// Shows the text of a label in the colour of `QuietTextColor`.
void MakeTextQuiet(QWidget& label);

}  // namespace orvane
