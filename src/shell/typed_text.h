#pragma once

#include <string>

namespace orvane {

/// Names in old maps are Latin-1, and what the user types is UTF-8.
/// \return `text` in Latin-1, or unchanged if it has other letters
std::string AsLatin1(const std::string& text);

}  // namespace orvane
