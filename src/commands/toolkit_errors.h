#pragma once

#include <cstdint>
#include <string>

namespace orvane {

class Messages;

/// Errors that the window system reports by itself.
class ToolkitErrors {
 public:
  /// This one means nothing and is passed over.
  static constexpr std::uint32_t Harmless = 0x1540003;
  /// From this severity on the program can't go on.
  static constexpr int Grave = 3;
  /// A run ends with one error more than this.
  static constexpr int MostErrors = 10;

  explicit ToolkitErrors(Messages& messages) : messages_(messages) {}

  /// Shows the error as an internal one.
  /// \return false if the program is to end
  bool Report(std::uint32_t code, int severity, const std::string& text);

 private:
  Messages& messages_;
  int count_ = 0;
};

}  // namespace orvane
