#pragma once

#include "base/messages.h"
#include "geometry/ring.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane {

/// Tells whether places lie in a ring, for many places and a ring that changes now and then. The
/// answers are those of `PointInRing`, to the last place; most come from a table.
class InsideTest {
 public:
  /// The ring must live as long as the test.
  explicit InsideTest(const Ring& ring) : ring_(ring) {}

  bool IsInside(const Meters& place);
  /// To be called after each change of the ring.
  void NoteChange() {
    isReady_ = false;
    asked_ = 0;
  }

 private:
  static constexpr size_t Bands = 64;

  /// Between its two limits every place of a band is inside.
  struct Band {
    double left = 0;   ///< metres east
    double right = 0;  ///< metres east; below `left` if nothing is sure
  };
  /// How far a chain of edges reaches in each band.
  struct Reach {
    double low = 0;
    double high = 0;
  };
  using Reaches = std::array<Reach, Bands>;

  void Build();
  bool AddChain(size_t from, size_t to, Reaches& reaches) const;
  void AddEdge(const Meters& from, const Meters& to, Reaches& reaches) const;
  double BandOf(double north) const { return (north - low_) * perMeter_; }

  const Ring& ring_;
  int asked_ = 0;  // since the last change
  bool isReady_ = false;
  bool isOfUse_ = false;
  double low_ = 0;
  double high_ = 0;
  double perMeter_ = 0;
  std::array<Band, Bands> bands_{};
};

/// Which places of a list reach furthest, by their numbers; among equals the first.
struct HullExtremes {
  size_t north = SIZE_MAX;
  size_t east = SIZE_MAX;
  size_t south = SIZE_MAX;
  size_t west = SIZE_MAX;
};

/// The hull of `ConvexHull`, made of places that stand in their plane already.
/// \param places     in the order of the list; at least 1
/// \param extremes   of `places`, in degrees
/// \param messages   as for `ConvexHull`
Ring HullOfPlaces(const std::vector<RingVertex>& places, const HullExtremes& extremes,
                  Messages& messages);

}  // namespace orvane
