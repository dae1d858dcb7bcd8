#pragma once

#include <QString>

#include <span>
#include <string_view>

class QWidget;

namespace orvane {

/// The help page for a window or a control.
struct HelpTopic {
  std::string_view objectName;  ///< of the window, control, menu or menu entry
  std::string_view page;        ///< in the help file, with the anchor, such as "window.html#x"
};

/// The list of chapters, which is also the page for everything without a topic of its own.
constexpr std::string_view HelpContentsPage = "README.html";

/// All topics, in no order. A new window adds its row.
std::span<const HelpTopic> AllHelpTopics();

/// \return the page of an object, or an empty text
std::string_view HelpPageOf(const QString& objectName);

/// \return the page of a control: its own, else that of the nearest control around it, up to its
///         window; for an open menu that of the highlighted entry; else `HelpContentsPage`
std::string_view HelpPageAt(const QWidget& control);

}  // namespace orvane
