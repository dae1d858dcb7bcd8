#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <type_traits>
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

/// Takes the items of a container from a `MapMemory`, or from the general heap if made without
/// one. Containers that are swapped swap their memories too.
template <typename T>
class MapAllocator {
 public:
  // NOLINTBEGIN(readability-identifier-naming, bugprone-sizeof-expression): the names that containers
  // ask for; the items of some are pointers.
  using value_type = T;
  using propagate_on_container_swap = std::true_type;
  using propagate_on_container_move_assignment = std::true_type;

  MapAllocator() noexcept : memory_(std::pmr::new_delete_resource()) {}
  /// \param memory  must outlive the container
  MapAllocator(MapMemory* memory) noexcept : memory_(memory) {}
  template <typename Other>
  MapAllocator(const MapAllocator<Other>& other) noexcept : memory_(other.Memory()) {}

  T* allocate(size_t count) {
    return static_cast<T*>(memory_->allocate(count * sizeof(T), alignof(T)));
  }
  void deallocate(T* items, size_t count) noexcept {
    memory_->deallocate(items, count * sizeof(T), alignof(T));
  }
  // NOLINTEND(readability-identifier-naming, bugprone-sizeof-expression)
  std::pmr::memory_resource* Memory() const noexcept { return memory_; }

  template <typename Other>
  bool operator==(const MapAllocator<Other>& other) const noexcept {
    return memory_ == other.Memory();
  }

 private:
  std::pmr::memory_resource* memory_;
};

}  // namespace orvane
