#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <type_traits>
#include <vector>

namespace orvane {

/// Memory for small records of one map. A large map has a million of them, and the general heap
/// would spend more time on them, and on their pages, than the reader spends on its text. Here they
/// are cut one after the other from blocks that grow with the map.
///
/// A freed piece is kept for the next request of its size, and everything is freed with the map.
/// Requests above `LargestRecord` go to the general heap. Not thread-safe.
class MapMemory : public std::pmr::memory_resource {
 public:
  MapMemory() = default;
  ~MapMemory() override;
  MapMemory(const MapMemory&) = delete;
  MapMemory& operator=(const MapMemory&) = delete;

  /// The largest request in bytes that comes from the blocks.
  static constexpr size_t LargestRecord = 512;
  /// Sizes are rounded up to multiples of this; there is no stricter alignment.
  static constexpr size_t Grain = alignof(std::max_align_t);

 private:
  /// The content of a freed piece of memory.
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

  std::byte* free_ = nullptr;  ///< the unused rest of the newest block
  size_t freeBytes_ = 0;
  std::array<Returned*, LargestRecord / Grain + 1> returned_{};  ///< by size in grains
  std::vector<Block> blocks_;                                    ///< oldest first
};

/// Informs the address sanitizer that a piece of memory must not be used, because what was there is
/// gone, or may be used again. Without the sanitizer these do nothing.
void MarkGone(void* start, size_t size);
void MarkInUse(void* start, size_t size);

/// Allocates the items of a container from a `MapMemory`, or from the general heap if made without
/// one. Containers that are swapped also swap their memories.
template <typename T>
class MapAllocator {
 public:
  // NOLINTBEGIN(readability-identifier-naming, bugprone-sizeof-expression): the names that
  // containers require; the items of some are pointers.
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
