#include "base/file_mark.h"

#include "base/files.h"

#include <cstring>

namespace orvane {

FileMark MarkOf(std::string_view content) {
  // Eight bytes a step: a map is marked each time it is read, and marking it must cost little
  // compared with reading it.
  constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15;
  constexpr int HalfWord = 32;
  FileMark mark{.size = content.size(), .hash = Multiplier};
  while (!content.empty()) {
    std::uint64_t word = 0;
    const size_t length = content.size() < sizeof word ? content.size() : sizeof word;
    std::memcpy(&word, content.data(), length);
    mark.hash = (mark.hash ^ word) * Multiplier;
    mark.hash ^= mark.hash >> HalfWord;
    content.remove_prefix(length);
  }
  return mark;
}

std::optional<FileMark> MarkOfFile(const std::string& path) {
  const auto content = ReadWholeFile(path);
  return content ? std::optional(MarkOf(*content)) : std::nullopt;
}

}  // namespace orvane
