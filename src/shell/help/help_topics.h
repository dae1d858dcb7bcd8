#pragma once

#include <QString>

#include <span>
#include <string_view>

class QWidget;

namespace orvane {

/// Where the help tells of something that a person has before the eyes.
struct HelpTopic {
  std::string_view objectName;  ///< of the window, control, menu or menu entry
  std::string_view page;        ///< in the help file, with the anchor, such as "window.html#x"
};

/// The list of chapters, which is also the topic of whatever has none of its own.
constexpr std::string_view HelpContentsPage = "README.html";

/// All topics, in no order. A window that is added brings its row.
std::span<const HelpTopic> AllHelpTopics();

/// \return the page of an object, or an empty text
std::string_view HelpPageOf(const QString& objectName);

/// \return the page of a control: its own, else that of the nearest one around it, up to its
///         window; for an open menu that of the entry in hand; else `HelpContentsPage`
std::string_view HelpPageAt(const QWidget& control);

}  // namespace orvane
