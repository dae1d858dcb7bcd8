#pragma once

#include "base/messages.h"
#include "geometry/ring.h"

#include <array>
#include <cstddef>

namespace orvane {

/// Tests whether places are inside a ring, for many places and a ring that grows now and then. The
/// answers are exactly those of `PointInRing`; most come from a table.
class InsideTest {
 public:
  /// The ring must live as long as the test.
  explicit InsideTest(const Ring& ring) : ring_(ring) {}

  bool IsInside(const Meters& place);
  /// Call after each change of the ring.
  void NoteChange();

 private:
  static constexpr size_t Bands = 32;

  /// Every place of a band between its two limits is inside.
  struct Band {
    double left = 0;        ///< metres east
    double right = 0;       ///< metres east; below `left` if nothing is sure
    bool risesLeft = true;  ///< whether the rising edges are on the left
  };

  void Build();
  bool RunsOnceAround() const;
  size_t ChangedFrom() const;
  size_t ChangedTo(size_t from) const;
  void KeepClearOf(const Meters& from, const Meters& to);
  template <typename Take>
  void ForEachBand(const Meters& from, const Meters& to, const Take& take) const;

  const Ring& ring_;
  Ring seen_;            // the ring at the last change
  int missed_ = 0;       // plain tests since the table was built
  bool isSure_ = false;  // what the table calls inside is inside
  bool isNew_ = false;   // the ring has not changed since the table was built
  double low_ = 0;       // metres north, the extent of the bands
  double high_ = 0;
  double perMeter_ = 0;
  std::array<Band, Bands> bands_{};
};

/// Builds the hull of `ConvexHull` from places that are already in their plane and come one by one,
/// in the order of the list.
class HullGrowth {
 public:
  /// \param north, east, south, west  the extremes of the list, in degrees; of equal ones the first
  /// \param messages                  as for `ConvexHull`
  HullGrowth(const RingVertex& north, const RingVertex& east, const RingVertex& south,
             const RingVertex& west, Messages& messages);
  HullGrowth(const HullGrowth&) = delete;
  HullGrowth& operator=(const HullGrowth&) = delete;

  /// Call for each place of the list, including the extremes.
  void Take(const RingVertex& vertex);
  const Ring& Hull() const { return ring_; }

 private:
  bool IsExtreme(const Point* point) const;

  Ring ring_;
  Ring start_;
  InsideTest inside_{ring_};
  Messages& messages_;
};

}  // namespace orvane
