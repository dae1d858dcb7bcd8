#include "elevation/contours_samples.h"

#include "base/parallel.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>

#if defined(__x86_64__) && defined(__GNUC__)
#define ORVANE_HAS_AVX2_PATH
#include <immintrin.h>
#endif

// What takes the time is one division for each pair of place and point. The division has to be a
// true one: a reciprocal that is off in its last bit moves crossings, and with them which lines
// join. So the gain comes only from the width of the processor, and from the latitude's part of
// the distances, which all places of a row share.

namespace orvane {

namespace {

constexpr unsigned MostThreads = 16;
constexpr double WorkForThreads = 1e6;  // pairs of place and point that are worth a second thread
constexpr size_t PlacesOfTask = 2048;   // fewer, and handing out rows would cost more than a row

/// What one row needs beside the points.
struct RowDistances {
  RowDistances(const SurfacePoints& points, double lat) : squares(points.lats.size()) {
    for (size_t i = 0; i < squares.size(); ++i) {
      const double dlat = points.lats[i] - lat;
      squares[i] = dlat * dlat;
    }
  }
  std::vector<double> squares;  ///< of the distances along the meridian, in degrees
};

double PlainSample(const SurfacePoints& points, const RowDistances& row, double lon) {
  double altitudes = 0;
  double weights = 0;
  for (size_t i = 0; i < points.lons.size(); ++i) {
    const double dlon = points.lons[i] - lon;
    const double square = row.squares[i] + dlon * dlon;
    if (square == 0) return points.altitudes[i];
    const double weight = 1 / square;
    altitudes += points.altitudes[i] * weight;
    weights += weight;
  }
  return altitudes / weights;
}

#ifdef ORVANE_HAS_AVX2_PATH

// The operators of these vectors are those of the plain path, four places at once.
constexpr size_t Lanes = 4;
using LaneVector = double __attribute__((vector_size(Lanes * sizeof(double))));

/// The sums of `Vectors` times four places side by side, enough of them to keep the divider busy.
/// A place with a point on it gives NaN.
template <size_t Vectors>
__attribute__((target("avx2"))) void SumLanes(const SurfacePoints& points, const RowDistances& row,
                                              const double* lons, double* values) {
  LaneVector places[Vectors];
  LaneVector altitudes[Vectors];
  LaneVector weights[Vectors];
  for (size_t v = 0; v < Vectors; ++v) {
    __builtin_memcpy(&places[v], lons + v * Lanes, sizeof(LaneVector));
    altitudes[v] = LaneVector{};
    weights[v] = LaneVector{};
  }
  const size_t count = points.lons.size();
  for (size_t i = 0; i < count; ++i) {
    const double lon = points.lons[i];
    const double square = row.squares[i];
    const double altitude = points.altitudes[i];
#pragma GCC unroll 4
    for (size_t v = 0; v < Vectors; ++v) {
      const LaneVector dlon = lon - places[v];
      const LaneVector weight = 1.0 / (square + dlon * dlon);
      altitudes[v] += altitude * weight;
      weights[v] += weight;
    }
  }
  for (size_t v = 0; v < Vectors; ++v) {
    const LaneVector result = altitudes[v] / weights[v];
    __builtin_memcpy(values + v * Lanes, &result, sizeof(LaneVector));
  }
}

/// All whole groups of four places, from the front. \return how many places that were
size_t SampleLanes(const SurfacePoints& points, const RowDistances& row,
                   std::span<const double> lons, std::span<double> values) {
  constexpr size_t Wide = 4;
  size_t done = 0;
  for (; done + Wide * Lanes <= lons.size(); done += Wide * Lanes) {
    SumLanes<Wide>(points, row, &lons[done], &values[done]);
  }
  for (; done + Lanes <= lons.size(); done += Lanes) {
    SumLanes<1>(points, row, &lons[done], &values[done]);
  }
  // A weight without bound: a point is at the place, or nearly.
  for (size_t i = 0; i < done; ++i) {
    if (std::isnan(values[i])) values[i] = PlainSample(points, row, lons[i]);
  }
  return done;
}

#endif

/// Rows that are handed out to threads, in order.
class RowQueue {
 public:
  RowQueue(size_t rows, size_t columns)
      : rows_(rows), perTask_(std::max<size_t>(PlacesOfTask / std::max<size_t>(columns, 1), 1)) {
    done_ = std::vector<std::atomic<bool>>((rows_ + perTask_ - 1) / perTask_);
  }

  /// Does one task. \return false if none was left
  template <typename DoRow>
  bool Work(const DoRow& doRow) {
    const size_t task = next_++;
    if (task >= done_.size() || givenUp_) return false;
    const size_t end = std::min((task + 1) * perTask_, rows_);
    for (size_t row = task * perTask_; row < end; ++row) doRow(row);
    done_[task].store(true, std::memory_order_release);
    return true;
  }

  /// Reports the rows done since the last call, in order; only the calling thread asks.
  void ReportDone(const std::function<bool(size_t)>& rowDone) {
    while (!givenUp_ && reported_ < rows_ &&
           done_[reported_ / perTask_].load(std::memory_order_acquire)) {
      if (!rowDone(reported_++)) givenUp_ = true;
    }
  }
  bool GivenUp() const { return givenUp_; }

 private:
  size_t rows_;
  size_t perTask_;
  std::vector<std::atomic<bool>> done_;
  std::atomic<size_t> next_{0};
  std::atomic<bool> givenUp_{false};
  size_t reported_ = 0;
};

unsigned ThreadsFor(double pairs) { return pairs < WorkForThreads ? 1 : ThreadsUpTo(MostThreads); }

}  // namespace

SurfacePoints::SurfacePoints(PointSpan points) {
  lats.reserve(points.size());
  lons.reserve(points.size());
  altitudes.reserve(points.size());
  for (const Point* point : points) {
    lats.push_back(point->geo.lat);
    lons.push_back(point->geo.lon);
    altitudes.push_back(static_cast<double>(point->geo.altitude));
  }
}

SurfacePath FastestSurfacePath() {
#ifdef ORVANE_HAS_AVX2_PATH
  if (__builtin_cpu_supports("avx2")) return SurfaceAvx2;
#endif
  return SurfacePlain;
}

void SampleSurfaceRow(const SurfacePoints& points, double lat, std::span<const double> lons,
                      std::span<double> values, SurfacePath path) {
  const RowDistances row(points, lat);
  size_t done = 0;
#ifdef ORVANE_HAS_AVX2_PATH
  if (path == SurfaceAvx2) done = SampleLanes(points, row, lons, values);
#else
  (void)path;
#endif
  for (; done < lons.size(); ++done) values[done] = PlainSample(points, row, lons[done]);
}

std::optional<std::vector<double>> SampleSurface(PointSpan points, std::span<const double> lats,
                                                 std::span<const double> lons,
                                                 const std::function<bool(size_t)>& rowDone) {
  const SurfacePoints surface(points);
  const SurfacePath path = FastestSurfacePath();
  std::vector<double> values(lats.size() * lons.size());
  RowQueue queue(lats.size(), lons.size());
  const auto doRow = [&](size_t row) {
    SampleSurfaceRow(surface, lats[row], lons,
                     std::span(values).subspan(row * lons.size(), lons.size()), path);
  };
  const unsigned threads =
      ThreadsFor(static_cast<double>(values.size()) * static_cast<double>(points.size()));
  RunInParallel(threads, [&](unsigned worker) {
    while (queue.Work(doRow)) {
      if (worker == 0) queue.ReportDone(rowDone);
    }
  });
  queue.ReportDone(rowDone);
  if (queue.GivenUp()) return std::nullopt;
  return values;
}

}  // namespace orvane
