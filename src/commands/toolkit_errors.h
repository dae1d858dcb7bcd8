#pragma once

#include <cstdint>
#include <string>

namespace orvane {

class Messages;

/// Errors that the window system reports.
class ToolkitErrors {
 public:
  /// This error is ignored.
  static constexpr std::uint32_t Harmless = 0x1540003;
  /// From this severity on the program cannot continue.
  static constexpr int Grave = 3;
  /// One error more than this ends the program.
  static constexpr int MostErrors = 10;

  explicit ToolkitErrors(Messages& messages) : messages_(messages) {}

  /// Posts the error as an internal one.
  /// \return false if the program is to end
  bool Report(std::uint32_t code, int severity, const std::string& text);

 private:
  Messages& messages_;
  int count_ = 0;
};

}  // namespace orvane
