#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Names in old maps are Latin-1, and what the user types is UTF-8.
/// \return `text` in Latin-1; unchanged if it is not UTF-8, or has other letters
std::string AsLatin1(std::string_view text);

/// \return true if a typed name is `stored`, in any case, as it is or in Latin-1
bool IsTypedName(std::string_view stored, std::string_view typed);

/// Looks a typed text up as it is, and then in Latin-1.
/// \param find  takes a text; returns something that is false if nothing was found
template <typename Find>
auto FindTyped(std::string_view text, const Find& find) {
  auto found = find(text);
  if (found) return found;
  const std::string latin1 = AsLatin1(text);
  return latin1 == text ? found : find(std::string_view(latin1));
}

}  // namespace orvane
