#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

namespace orvane {

/// Memory for small records of one map. A large map has a million of them, and the general
/// heap would spend more time on them, and on the pages that they fill, than the reader spends on
/// its text. Here they are cut one behind the other from blocks that grow with the map.
///
/// What is given back is kept for the next request of its size, and all goes with the map. Requests
/// above `LargestRecord` go to the general heap. Not for several threads.
class MapMemory : public std::pmr::memory_resource {
 public:
  MapMemory() = default;
  ~MapMemory() override;
  MapMemory(const MapMemory&) = delete;
  MapMemory& operator=(const MapMemory&) = delete;

  /// The largest request, in bytes, that is served from the blocks.
  static constexpr size_t LargestRecord = 512;
  /// Sizes are rounded up to multiples of this, and no stricter alignment is served.
  static constexpr size_t Grain = alignof(std::max_align_t);

 private:
  /// What stands in a piece of memory that was given back.
  struct Returned {
    Returned* next = nullptr;
  };
  struct Block {
    void* start;
    size_t size;
    size_t alignment;
  };

  void* do_allocate(size_t bytes, size_t alignment) override;
  void do_deallocate(void* piece, size_t bytes, size_t alignment) override;
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
    return this == &other;
  }
  void AddBlock();

  std::byte* free_ = nullptr;  ///< the part of the newest block that was never given out
  size_t freeBytes_ = 0;
  std::array<Returned*, LargestRecord / Grain + 1> returned_{};  ///< by size in grains
  std::vector<Block> blocks_;                                    ///< oldest first
};

}  // namespace orvane
