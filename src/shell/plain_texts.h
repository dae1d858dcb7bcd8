#pragma once

#include <QString>

namespace orvane {

/// Names that users typed may look like markup, or like one of the toolkit's marks. These make them
/// plain text where the toolkit would not take them as such.

/// \return a tip in which nothing is read as markup; empty for an empty text
QString PlainTip(const QString& text);

/// \return the title of a window in which "[*]" is no more than text. The toolkit's own "[*]", the
///         place for the mark of a changed file, is added after this.
QString PlainTitle(QString text);

}  // namespace orvane
