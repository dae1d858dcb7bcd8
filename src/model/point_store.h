#pragma once

#include "model/map_memory.h"
#include "model/records.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

namespace orvane {

/// The points that a map made, also those that an edit has removed from it. A point never moves. Once
/// it is freed, its place in memory waits for another point, so the order of the places need not be
/// the one in which the points were made.
class PointStore {
  using Places = std::deque<Point, MapAllocator<Point>>;

  /// Goes over the places and passes by those that wait.
  template <typename Place>
  class Walk {
   public:
    // NOLINTBEGIN(readability-identifier-naming): the names that algorithms require
    using iterator_category = std::forward_iterator_tag;
    using value_type = Point;
    using difference_type = std::ptrdiff_t;
    using reference = typename std::iterator_traits<Place>::reference;
    using pointer = typename std::iterator_traits<Place>::pointer;
    // NOLINTEND(readability-identifier-naming)

    Walk() = default;
    Walk(Place place, Place end) : place_(place), end_(end) { PassFree(); }
    reference operator*() const { return *place_; }
    pointer operator->() const { return &*place_; }
    Walk& operator++() {
      ++place_;
      PassFree();
      return *this;
    }
    Walk operator++(int) {
      Walk before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Walk& other) const { return place_ == other.place_; }

   private:
    void PassFree() {
      while (place_ != end_ && IsFree(*place_)) ++place_;
    }

    Place place_{};
    Place end_{};
  };

 public:
  explicit PointStore(MapMemory* memory) : places_(memory) {}
  ~PointStore();
  PointStore(const PointStore&) = delete;
  PointStore& operator=(const PointStore&) = delete;

  /// Makes an empty point, in a place that waits if there is one.
  Point& Make();

  /// Makes room, so that `Free` can't fail.
  template <typename IsUnused>
  void ExpectFree(IsUnused isUnused) {
    const auto count =
        std::count_if(begin(), end(), [&](const Point& point) { return isUnused(point); });
    free_.reserve(free_.size() + static_cast<size_t>(count));
  }
  /// Frees the points of which `isUnused(const Point&)` is true. Nothing may point to them any more.
  template <typename IsUnused>
  void Free(IsUnused isUnused) {
    for (Point& point : places_) {
      if (!IsFree(point) && isUnused(std::as_const(point))) FreeOne(point);
    }
    DropLast();
  }

  /// How many places there are; those that wait are among them.
  size_t PlaceCount() const { return places_.size(); }
  /// \param place  below `PlaceCount`; that of a point stays the same
  Point& operator[](size_t place) { return places_[place]; }
  const Point& operator[](size_t place) const { return places_[place]; }
  bool IsFree(size_t place) const { return IsFree(places_[place]); }

  /// Exchanges the points of two stores, and their memories.
  void Swap(PointStore& other) noexcept;

  // NOLINTBEGIN(readability-identifier-naming): the names that loops and algorithms require
  using iterator = Walk<Places::iterator>;
  using const_iterator = Walk<Places::const_iterator>;
  iterator begin() { return {places_.begin(), places_.end()}; }
  iterator end() { return {places_.end(), places_.end()}; }
  const_iterator begin() const { return {places_.begin(), places_.end()}; }
  const_iterator end() const { return {places_.end(), places_.end()}; }
  /// How many points there are.
  size_t size() const { return places_.size() - free_.size(); }
  bool empty() const { return size() == 0; }
  Point& front() { return *begin(); }
  const Point& front() const { return *begin(); }
  // NOLINTEND(readability-identifier-naming)

 private:
  static bool IsFree(const Point& point) { return (point.flags & PointFree) != 0; }
  void FreeOne(Point& point);
  void DropLast();

  Places places_;
  std::vector<Point*> free_;  ///< the places that wait; the last one is taken next
};

}  // namespace orvane
