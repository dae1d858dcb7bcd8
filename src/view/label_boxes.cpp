#include "view/label_boxes.h"

#include <algorithm>

namespace orvane {

namespace {

// A bucket is about as large as a short label. What is beyond 16 bits goes into the outermost
// buckets, where its true box decides.
constexpr int BandHeight = 16;
constexpr int ColumnWidth = 64;
constexpr int Reach = 32768;
constexpr int Bands = 2 * Reach / BandHeight;
constexpr int Columns = 2 * Reach / ColumnWidth;
constexpr std::int32_t None = -1;

int Bucket(int pixel, int size) { return (std::clamp(pixel, -Reach, Reach - 1) + Reach) / size; }

}  // namespace

LabelBoxes::BucketRange LabelBoxes::BucketsOf(const PixelRect& box) {
  // A box of no extent still has a bucket.
  return {Bucket(box.top, BandHeight), Bucket(std::max(box.top, box.bottom - 1), BandHeight),
          Bucket(box.left, ColumnWidth), Bucket(std::max(box.left, box.right - 1), ColumnWidth)};
}

void LabelBoxes::Add(const PixelRect& box) {
  if (bands_.empty()) bands_.resize(Bands);
  const BucketRange range = BucketsOf(box);
  for (int band = range.firstBand; band <= range.lastBand; ++band) {
    auto& heads = bands_[static_cast<size_t>(band)];
    if (heads.empty()) heads.assign(Columns, None);
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
      auto& head = heads[static_cast<size_t>(column)];
      entries_.push_back({box, head});
      head = static_cast<std::int32_t>(entries_.size() - 1);
    }
  }
}

bool LabelBoxes::Hits(const PixelRect& box) const {
  if (bands_.empty()) return false;
  const BucketRange range = BucketsOf(box);
  for (int band = range.firstBand; band <= range.lastBand; ++band) {
    const auto& heads = bands_[static_cast<size_t>(band)];
    if (heads.empty()) continue;
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
      std::int32_t at = heads[static_cast<size_t>(column)];
      while (at != None) {
        const Entry& entry = entries_[static_cast<size_t>(at)];
        if (BoxesOverlap(entry.box, box)) return true;
        at = entry.next;
      }
    }
  }
  return false;
}

}  // namespace orvane
