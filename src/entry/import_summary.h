#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The sentence with which an import ends: what was done, and what was left out.

/// \return "no stops", "1 stop" or "3 stops"
std::string Counted(size_t count, std::string_view one, std::string_view many);

/// \return "a", "a and b" or "a, b and c"; empty for no parts
std::string Joined(const std::vector<std::string>& parts);

/// Lines of a file that an import could not use.
struct LeftOutLines {
  size_t count = 0;
  size_t firstLine = 0;  ///< from 1; 0 for none

  void Add(size_t line) {
    if (count++ == 0) firstLine = line;
  }
};

/// \return "; 2 lines are left out, the first is line 7"; empty if there are none
std::string LeftOutText(const LeftOutLines& lines);

}  // namespace orvane
