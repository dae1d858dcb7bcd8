#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// \param text  UTF-8
/// \return the text without the characters that no XML file can hold, not even escaped: control
///         characters but tab, line feed and carriage return, and U+FFFE and U+FFFF
std::string XmlText(std::string_view text);

}  // namespace orvane
