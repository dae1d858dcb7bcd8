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
      wordsOfRow_((std::max(0, area.right - area.left) + WordBits - 1) / WordBits),
      words_(static_cast<size_t>(wordsOfRow_) *
             static_cast<size_t>(std::max(0, area.bottom - area.top))) {}

template <typename Visit>
bool PixelMask::VisitWords(const PixelRect& rect, Visit visit) const {
  const PixelRect common = CommonRect(rect, area_);
  if (IsEmpty(common)) return true;
  const int left = common.left - area_.left;
  const int last = common.right - area_.left - 1;
  const int firstWord = left / WordBits;
  const int lastWord = last / WordBits;
  std::uint64_t firstBits = ~std::uint64_t{0} << (left % WordBits);
  const std::uint64_t lastBits = ~std::uint64_t{0} >> (WordBits - 1 - last % WordBits);
  if (firstWord == lastWord) firstBits &= lastBits;
  auto row = static_cast<size_t>(common.top - area_.top) * static_cast<size_t>(wordsOfRow_);
  for (int y = common.top; y < common.bottom; ++y) {
    if (!visit(row + static_cast<size_t>(firstWord), firstBits)) return false;
    for (int word = firstWord + 1; word < lastWord; ++word) {
      if (!visit(row + static_cast<size_t>(word), ~std::uint64_t{0})) return false;
    }
    if (firstWord < lastWord && !visit(row + static_cast<size_t>(lastWord), lastBits)) return false;
    row += static_cast<size_t>(wordsOfRow_);
  }
  return true;
}

void PixelMask::Add(const PixelRect& rect) {
  VisitWords(rect, [this](size_t at, std::uint64_t bits) {
    words_[at] |= bits;
    return true;
  });
}

bool PixelMask::HasAll(const PixelRect& rect) const {
  if (IsEmpty(CommonRect(rect, area_))) return false;
  return VisitWords(rect,
                    [this](size_t at, std::uint64_t bits) { return (words_[at] & bits) == bits; });
}

PixelColumns PixelMask::MissingColumns(const PixelRect& rect) const {
  int first = INT_MAX;
  int last = -1;
  const auto wordsOfRow = static_cast<size_t>(wordsOfRow_);
  VisitWords(rect, [&](size_t at, std::uint64_t bits) {
    const std::uint64_t missing = ~words_[at] & bits;
    if (missing == 0) return true;
    const int start = static_cast<int>(at % wordsOfRow) * WordBits;
    first = std::min(first, start + std::countr_zero(missing));
    last = std::max(last, start + WordBits - 1 - std::countl_zero(missing));
    return true;
  });
  if (last < 0) return {};
  return {area_.left + first, area_.left + last + 1};
}

bool PixelMask::HasAny(const PixelRect& rect) const {
  return !VisitWords(rect,
                     [this](size_t at, std::uint64_t bits) { return (words_[at] & bits) == 0; });
}

}  // namespace orvane
