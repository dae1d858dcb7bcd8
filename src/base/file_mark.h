#pragma once

#include <cstdint>
#include <string_view>

namespace orvane {

/// What is remembered of the content of a file, to see later whether the same bytes stand there.
struct FileMark {
  std::uint64_t size = 0;  ///< bytes
  std::uint64_t hash = 0;  ///< by no published function; good for comparing on one machine

  bool operator==(const FileMark&) const = default;
};

/// The mark of a content. Two contents that differ have the same mark by a chance of one in 2^64;
/// nothing is promised against a content that was made for it.
FileMark MarkOf(std::string_view content);

}  // namespace orvane
