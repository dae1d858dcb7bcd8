#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// A fingerprint of the content of a file, to see later whether the file still has the same bytes.
struct FileMark {
  std::uint64_t size = 0;  ///< bytes
  std::uint64_t hash = 0;  ///< by a function of our own; only for comparing on one machine

  bool operator==(const FileMark&) const = default;
};

/// The mark of a content. Two different contents have the same mark with a probability of one in
/// 2^64, unless one was made to match.
FileMark MarkOf(std::string_view content);

/// The mark of the present content of a file; none if it can't be read.
std::optional<FileMark> MarkOfFile(const std::string& path);

}  // namespace orvane
