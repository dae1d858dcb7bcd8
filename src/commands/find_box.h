#pragma once

#include "base/messages.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The prompt "Find". It remembers the texts of this run of the program, offers them in a list and
/// begins with the last one.
class FindBox {
 public:
  /// A text has fewer bytes than this.
  static constexpr size_t Size = 100;
  /// The width of the field, in characters.
  static constexpr int Columns = 40;
  /// The number of texts that are remembered.
  static constexpr size_t MostTexts = 10;

  /// \return the text without blanks around it, or nothing if the user cancelled
  std::optional<std::string> Ask(Messages& messages);

 private:
  std::vector<std::string> texts_;  ///< newest first
};

}  // namespace orvane
