#pragma once

#include "base/files.h"

#include <string>
#include <string_view>

namespace orvane {

/// \return the message about a file that was not written: "Can't open file site.pdf"
std::string WriteFailure(WriteResult result, std::string_view path);

}  // namespace orvane
