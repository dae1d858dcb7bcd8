#pragma once

#include "geometry/poly.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

/// The surface of `SurfaceAltitude` at many places at once. The work is places times points, so it
/// is done for several places side by side and on all processors. The sum of each place keeps the
/// order and the operations of `SurfaceAltitude`: every result is the same to the last bit.

/// Altitude points as the loops read them, in list order.
struct SurfacePoints {
  explicit SurfacePoints(PointSpan points);

  std::vector<double> lats;       ///< degrees
  std::vector<double> lons;       ///< degrees
  std::vector<double> altitudes;  ///< metres
};

/// How the sums are computed.
enum SurfacePath {
  SurfacePlain = 0,  ///< one place after the other
  SurfaceAvx2 = 1    ///< sixteen places side by side; only on processors that have AVX2
};

/// \return the fastest that this processor has
SurfacePath FastestSurfacePath();

/// The surface at all places of one latitude.
/// \param values  receives an altitude for each of `lons`, in metres
/// \param path    one that this processor has
void SampleSurfaceRow(const SurfacePoints& points, double lat, std::span<const double> lons,
                      std::span<double> values, SurfacePath path);

/// The surface on a grid, its rows spread over the processors.
/// \param rowDone  called on the calling thread with 0, 1, 2 … as that row and all before it are
///                 done; returns false to give up
/// \return the altitudes row by row, lats.size() * lons.size(), or nothing if it was given up
std::optional<std::vector<double>> SampleSurface(PointSpan points, std::span<const double> lats,
                                                 std::span<const double> lons,
                                                 const std::function<bool(size_t)>& rowDone);

}  // namespace orvane
