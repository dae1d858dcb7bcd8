#include "model/map_memory.h"

#include <algorithm>
#include <memory>

#if defined(__linux__)
#include <sys/mman.h>
#endif

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVANE_MARKS_MEMORY
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORVANE_MARKS_MEMORY
#endif
#ifdef ORVANE_MARKS_MEMORY
#include <sanitizer/asan_interface.h>
#endif

namespace orvane {

namespace {

constexpr size_t FirstBlock = 16 * 1024;
constexpr size_t LargestBlock = 32 * 1024 * 1024;
constexpr size_t BlockGrowth = 4;
/// A large page of common processors. Blocks of this size and above are aligned to it.
constexpr size_t LargePage = 2 * 1024 * 1024;

/// The general heap.
std::pmr::memory_resource& Heap() { return *std::pmr::new_delete_resource(); }

size_t Grains(size_t bytes) {
  return (std::max<size_t>(bytes, 1) + MapMemory::Grain - 1) / MapMemory::Grain;
}

bool IsRecord(size_t bytes, size_t alignment) {
  return bytes <= MapMemory::LargestRecord && alignment <= MapMemory::Grain;
}

/// Requests large pages: the system then provides 2 MiB at a time instead of 4 KiB. Everything
/// works without them, so a refusal does not matter.
void PreferLargePages([[maybe_unused]] void* start, [[maybe_unused]] size_t size) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  (void)::madvise(start, size, MADV_HUGEPAGE);
#endif
}

}  // namespace

// The address sanitizer knows the pieces of the heap, but not those of a block. It is informed of
// each, so that it also finds the use of a freed record here.

void MarkGone([[maybe_unused]] void* start, [[maybe_unused]] size_t size) {
#ifdef ORVANE_MARKS_MEMORY
  ASAN_POISON_MEMORY_REGION(start, size);
#endif
}

void MarkInUse([[maybe_unused]] void* start, [[maybe_unused]] size_t size) {
#ifdef ORVANE_MARKS_MEMORY
  ASAN_UNPOISON_MEMORY_REGION(start, size);
#endif
}

MapMemory::~MapMemory() {
  for (const Block& block : blocks_) {
    MarkInUse(block.start, block.size);
    Heap().deallocate(block.start, block.size, block.alignment);
  }
}

void* MapMemory::do_allocate(size_t bytes, size_t alignment) {
  if (!IsRecord(bytes, alignment)) return Heap().allocate(bytes, alignment);
  const size_t grains = Grains(bytes);
  const size_t size = grains * Grain;
  if (Returned* piece = returned_[grains]) {
    MarkInUse(piece, size);
    returned_[grains] = piece->next;
    return piece;
  }
  if (freeBytes_ < size) AddBlock();
  std::byte* const piece = free_;
  free_ += size;
  freeBytes_ -= size;
  MarkInUse(piece, bytes);
  return piece;
}

void MapMemory::do_deallocate(void* piece, size_t bytes, size_t alignment) {
  if (!IsRecord(bytes, alignment)) {
    Heap().deallocate(piece, bytes, alignment);
    return;
  }
  const size_t grains = Grains(bytes);
  MarkInUse(piece, grains * Grain);
  auto* const returned = std::construct_at(static_cast<Returned*>(piece));
  returned->next = returned_[grains];
  returned_[grains] = returned;
  MarkGone(piece, grains * Grain);
}

/// Begins a new block; the rest of the one before, less than a record, stays unused.
void MapMemory::AddBlock() {
  Block block{};
  block.size =
      blocks_.empty() ? FirstBlock : std::min(blocks_.back().size * BlockGrowth, LargestBlock);
  block.alignment = block.size < LargePage ? Grain : LargePage;
  block.start = Heap().allocate(block.size, block.alignment);
  blocks_.push_back(block);
  if (block.alignment == LargePage) PreferLargePages(block.start, block.size);
  MarkGone(block.start, block.size);
  free_ = static_cast<std::byte*>(block.start);
  freeBytes_ = block.size;
}

}  // namespace orvane
