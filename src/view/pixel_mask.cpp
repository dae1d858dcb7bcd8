#include "view/pixel_mask.h"

#include <algorithm>
#include <bit>
#include <climits>

namespace orvane {

namespace {

constexpr int WordBits = 64;

bool IsEmpty(const PixelRect& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

}  // namespace

PixelMask::PixelMask(const PixelRect& area)
    : area_(area),
      height_(static_cast<size_t>(std::max(0, area.bottom - area.top))),
      words_(static_cast<size_t>((std::max(0, area.right - area.left) + WordBits - 1) / WordBits) *
             height_) {}

template <typename Visit>
bool PixelMask::VisitColumns(const PixelRect& rect, Visit visit) const {
  const PixelRect common = CommonRect(rect, area_);
  if (IsEmpty(common)) return true;
  const int left = common.left - area_.left;
  const int last = common.right - area_.left - 1;
  const int lastWord = last / WordBits;
  const auto rows = static_cast<size_t>(common.bottom - common.top);
  std::uint64_t bits = ~std::uint64_t{0} << (left % WordBits);
  for (int word = left / WordBits; word <= lastWord; ++word) {
    if (word == lastWord) bits &= ~std::uint64_t{0} >> (WordBits - 1 - last % WordBits);
    const size_t top =
        static_cast<size_t>(word) * height_ + static_cast<size_t>(common.top - area_.top);
    if (!visit(top, rows, bits)) return false;
    bits = ~std::uint64_t{0};
  }
  return true;
}

/// All rows are taken, as a comparison after each would cost more than it saves.
std::uint64_t PixelMask::BitsInAll(size_t top, size_t rows, std::uint64_t bits) const {
  for (size_t at = top; at < top + rows; ++at) bits &= words_[at];
  return bits;
}

void PixelMask::Add(const PixelRect& rect) {
  VisitColumns(rect, [this](size_t top, size_t rows, std::uint64_t bits) {
    for (size_t at = top; at < top + rows; ++at) words_[at] |= bits;
    return true;
  });
}

bool PixelMask::HasAll(const PixelRect& rect) const {
  if (IsEmpty(CommonRect(rect, area_))) return false;
  return VisitColumns(rect, [this](size_t top, size_t rows, std::uint64_t bits) {
    return BitsInAll(top, rows, bits) == bits;
  });
}

PixelColumns PixelMask::MissingColumns(const PixelRect& rect) const {
  int first = INT_MAX;
  int last = -1;
  VisitColumns(rect, [&](size_t top, size_t rows, std::uint64_t bits) {
    const std::uint64_t missing = BitsInAll(top, rows, bits) ^ bits;
    if (missing == 0) return true;
    const int start = static_cast<int>(top / height_) * WordBits;
    first = std::min(first, start + std::countr_zero(missing));
    last = start + WordBits - 1 - std::countl_zero(missing);
    return true;
  });
  if (last < 0) return {};
  return {area_.left + first, area_.left + last + 1};
}

bool PixelMask::HasAny(const PixelRect& rect) const {
  return !VisitColumns(rect, [this](size_t top, size_t rows, std::uint64_t bits) {
    for (size_t at = top; at < top + rows; ++at) {
      if ((words_[at] & bits) != 0) return false;
    }
    return true;
  });
}

}  // namespace orvane
