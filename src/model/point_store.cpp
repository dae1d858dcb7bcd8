#include "model/point_store.h"

#include <cstddef>
#include <memory>
#include <type_traits>

namespace orvane {
namespace {

// Of the place that a freed point has left, only the flags may be read. The address sanitizer finds
// who reads the rest.

size_t BytesBehindFlags(const Point& point) {
  const auto* first = reinterpret_cast<const std::byte*>(&point);
  const auto* behind = reinterpret_cast<const std::byte*>(&point.trail);
  return sizeof(Point) - static_cast<size_t>(behind - first);
}

void MarkFree(Point& point) { MarkGone(&point.trail, BytesBehindFlags(point)); }
void MarkTaken(Point& point) { MarkInUse(&point.trail, BytesBehindFlags(point)); }

}  // namespace

PointStore::~PointStore() {
  for (Point* point : free_) MarkTaken(*point);
}

Point& PointStore::Make() {
  if (free_.empty()) return places_.emplace_back();
  Point& point = *free_.back();
  free_.pop_back();
  MarkTaken(point);
  point.flags = 0;
  return point;
}

void PointStore::FreeOne(Point& point) {
  static_assert(std::is_nothrow_default_constructible_v<Point>);
  free_.push_back(&point);
  // An assignment would leave the point the memory of its texts.
  std::destroy_at(&point);
  std::construct_at(&point);
  point.flags = PointFree;
  MarkFree(point);
}

/// Gives up the last places if they wait, and lets the first ones be taken next.
void PointStore::DropLast() {
  while (!places_.empty() && IsFree(places_.back())) {
    MarkTaken(places_.back());
    places_.pop_back();
  }
  free_.clear();  // which leaves it room for all of them
  for (auto point = places_.rbegin(); point != places_.rend(); ++point) {
    if (IsFree(*point)) free_.push_back(&*point);
  }
}

void PointStore::Swap(PointStore& other) noexcept {
  places_.swap(other.places_);
  free_.swap(other.free_);
}

}  // namespace orvane
