#pragma once

#include "shell/shell.h"

#include <string>

namespace orvane {

/// Changes a map in the smallest way that a file shows: by a line of comment.
inline void AddComment(Shell& shell, Map& map, const std::string& comment = "# changed") {
  shell.History().Apply({.name = "Comment", .map = &map, .change = [&](EditFollowUp&) {
                           map.comments.push_back(comment);
                           return true;
                         }});
}

}  // namespace orvane
