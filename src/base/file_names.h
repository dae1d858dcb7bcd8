#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// File names as texts, with `/` as the separator.

/// \return the text after the last separator. In a path with a `?` the search goes back from the
///         last `?`.
std::string_view BaseName(std::string_view path);

/// \return the text before the last separator; empty if there is none, "/" for a name in the root
std::string_view DirectoryName(std::string_view path);

/// \return true if both paths have no directory, or if their directories have the same length and
///         are the same without regard to case
bool SameDirectory(std::string_view a, std::string_view b);

/// `path` with its file name replaced; a path without a directory gives `name`.
std::string ReplaceBaseName(std::string_view path, std::string_view name);

/// `directory`, a separator if one is needed, `name`; the directory "." gives only the name.
std::string JoinPath(std::string_view directory, std::string_view name);

}  // namespace orvane
