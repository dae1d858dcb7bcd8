#pragma once

#include "base/messages.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The prompt "Find". It remembers what was looked for as long as the program runs, offers it in a
/// list and begins with the last text.
class FindBox {
 public:
  /// The text has fewer bytes.
  static constexpr size_t Size = 100;
  /// The field shows so many characters.
  static constexpr int Columns = 40;
  /// So many texts are remembered.
  static constexpr size_t MostTexts = 10;

  /// \return the text without blanks around it, or nothing if the user cancelled
  std::optional<std::string> Ask(Messages& messages);

 private:
  std::vector<std::string> texts_;  ///< newest first
};

}  // namespace orvane
