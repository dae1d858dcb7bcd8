#pragma once

#include <optional>
#include <string_view>

namespace orvane {

/// Cuts a text in memory into lines, as map files and preferences are read. A line ends at a line
/// feed, at a carriage return (with a line feed after it) or at the byte 0xFF, and after `longest`
/// bytes, where the remainder becomes the next line. At the start of a line the byte 0xFF is the
/// end of the text, also after a line of exactly `longest` bytes.
class LineReader {
 public:
  /// \param text     the whole file; not copied, must outlive the reader
  /// \param longest  the largest number of bytes of a line, without its end
  LineReader(std::string_view text, size_t longest);

  /// \return the next line without its end, a view into the text; nothing at the end of the text
  std::optional<std::string_view> Next();

 private:
  std::string_view rest_;
  size_t longest_;
};

}  // namespace orvane
