#include "model/map_memory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace orvane {
namespace {

struct Piece {
  unsigned char* start;
  size_t size;
  unsigned char mark;
};

Piece Take(MapMemory& memory, size_t size, unsigned char mark) {
  Piece piece{static_cast<unsigned char*>(memory.allocate(size)), size, mark};
  std::memset(piece.start, mark, size);
  return piece;
}

bool IsIntact(const Piece& piece) {
  return std::all_of(piece.start, piece.start + piece.size,
                     [&](unsigned char byte) { return byte == piece.mark; });
}

TEST(MapMemory, KeepsPiecesApartWhileTheyComeAndGo) {
  constexpr unsigned Seed = 31;
  std::mt19937 random(Seed);
  MapMemory memory;
  std::vector<Piece> pieces;
  for (int i = 0; i < 200000; ++i) {
    if (pieces.empty() || random() % 5 < 3) {
      const size_t size = 1 + random() % (MapMemory::LargestRecord + 100);
      pieces.push_back(Take(memory, size, static_cast<unsigned char>(random())));
      continue;
    }
    std::swap(pieces[random() % pieces.size()], pieces.back());
    ASSERT_TRUE(IsIntact(pieces.back())) << "step " << i << " seed " << Seed;
    memory.deallocate(pieces.back().start, pieces.back().size);
    pieces.pop_back();
  }
  for (const Piece& piece : pieces) {
    ASSERT_TRUE(IsIntact(piece)) << "seed " << Seed;
    memory.deallocate(piece.start, piece.size);
  }
}

TEST(MapMemory, AlignsEveryPieceForAnyRecord) {
  MapMemory memory;
  for (size_t size = 1; size <= MapMemory::LargestRecord; ++size) {
    const auto address = reinterpret_cast<std::uintptr_t>(memory.allocate(size));
    EXPECT_EQ(address % MapMemory::Grain, 0U) << size;
  }
}

TEST(MapMemory, HandsOutAgainWhatWasGivenBack) {
  MapMemory memory;
  void* const first = memory.allocate(40);
  void* const second = memory.allocate(40);
  EXPECT_NE(first, second);
  memory.deallocate(first, 40);
  memory.deallocate(second, 40);
  EXPECT_EQ(memory.allocate(48), second) << "the last one first, and any size that fits the same";
  EXPECT_EQ(memory.allocate(33), first);
}

TEST(MapMemory, ServesStricterAlignmentFromTheHeap) {
  constexpr size_t CacheLine = 64;
  MapMemory memory;
  void* const piece = memory.allocate(100, CacheLine);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece) % CacheLine, 0U);
  memory.deallocate(piece, 100, CacheLine);
}

TEST(MapMemory, GrowsIntoLargePages) {
  constexpr int Count = 40000;  // 20 MB, past the first block that asks for large pages
  MapMemory memory;
  std::vector<Piece> pieces;
  pieces.reserve(Count);
  for (int i = 0; i < Count; ++i) {
    pieces.push_back(Take(memory, MapMemory::LargestRecord, static_cast<unsigned char>(i % 251)));
  }
  EXPECT_TRUE(std::all_of(pieces.begin(), pieces.end(), IsIntact));
}

TEST(MapMemory, IsEqualOnlyToItself) {
  MapMemory memory;
  MapMemory other;
  EXPECT_TRUE(memory.is_equal(memory));
  EXPECT_FALSE(memory.is_equal(other));
}

}  // namespace
}  // namespace orvane
