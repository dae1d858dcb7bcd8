#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Makes a text fit into one field of a line of a file, as one that was pasted may not.
/// \return `text` with a blank for each tab, carriage return and line feed
std::string FieldText(std::string_view text);

}  // namespace orvane
