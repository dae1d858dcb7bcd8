#include "base/line_reader.h"

#include <algorithm>

namespace orvane {

namespace {

/// Ends a line, and at the start of one the text.
constexpr char EndOfText = '\xFF';

bool EndsLine(char c) { return c == '\n' || c == '\r' || c == EndOfText; }

}  // namespace

LineReader::LineReader(std::string_view text, size_t longest)
    : rest_(text), longest_(std::max<size_t>(longest, 1)) {}

std::optional<std::string_view> LineReader::Next() {
  if (rest_.empty() || rest_.front() == EndOfText) {
    rest_ = {};
    return std::nullopt;
  }
  std::string_view line = rest_.substr(0, longest_);
  // One search for each kind of end is faster than a test of each byte. The usual one comes first,
  // so that the others search only this line.
  for (const char end : {'\n', '\r', EndOfText}) line = line.substr(0, line.find(end));
  rest_.remove_prefix(line.size());
  // The end of a line of exactly the longest length is consumed too, so that no empty line follows
  // it. But the byte for the end of the text is at the start of the next line there.
  const bool isCut = line.size() == longest_ && rest_.starts_with(EndOfText);
  if (!isCut && !rest_.empty() && EndsLine(rest_.front())) {
    const bool pair = rest_.starts_with("\r\n");
    rest_.remove_prefix(pair ? 2 : 1);
  }
  return line;
}

}  // namespace orvane
