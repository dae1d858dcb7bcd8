#include "estimates/area_curve.h"

#include "base/parallel.h"
#include "estimates/percent_hulls.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <random>

namespace orvane {

namespace {

constexpr double MostPercent = 95;

/// The areas of one order of the days, by row.
struct OrderAreas {
  std::vector<double> all;
  std::vector<double> most;
};

/// Takes in the days one by one, in some order, and measures the rows on the way.
class CurveWalk {
 public:
  CurveWalk(std::span<const std::vector<PlanePlace>> days, std::span<const size_t> rows)
      : days_(days), rows_(rows) {
    for (const auto& day : days) {
      hulls_.push_back(day);
      ReduceToHull(hulls_.back());
    }
  }

  OrderAreas Measure(std::span<const size_t> order) {
    OrderAreas areas;
    places_.clear();
    hull_.clear();
    sum_ = {};
    size_t taken = 0;
    for (const size_t row : rows_) {
      for (; taken < row; ++taken) Take(order[taken]);
      ReduceToHull(hull_);
      areas.all.push_back(HullArea(hull_));
      const auto count = static_cast<double>(places_.size());
      const PlanePlace centroid = {sum_.north / count, sum_.east / count};
      areas.most.push_back(trimmed_.Area(places_, centroid, MostPercent));
    }
    return areas;
  }

 private:
  void Take(size_t day) {
    for (const PlanePlace& place : days_[day]) {
      places_.push_back(place);
      sum_.north += place.north;
      sum_.east += place.east;
    }
    hull_.insert(hull_.end(), hulls_[day].begin(), hulls_[day].end());
  }

  std::span<const std::vector<PlanePlace>> days_;
  std::span<const size_t> rows_;
  std::vector<std::vector<PlanePlace>> hulls_;  ///< of each day
  std::vector<PlanePlace> places_;              ///< so far
  std::vector<PlanePlace> hull_;                ///< of these
  PlanePlace sum_;
  PercentHulls trimmed_;
};

/// Measures all orders, on all processors.
std::vector<OrderAreas> MeasureOrders(std::span<const std::vector<PlanePlace>> days,
                                      std::span<const size_t> rows,
                                      std::span<const std::vector<size_t>> orders,
                                      Progress* progress) {
  constexpr unsigned MostThreads = 16;
  constexpr size_t DaysWorthThreads = 20;
  std::vector<OrderAreas> areas(orders.size());
  std::atomic<size_t> next = 0;
  const unsigned threads = days.size() < DaysWorthThreads ? 1 : ThreadsUpTo(MostThreads);
  RunInParallel(threads, [&](unsigned worker) {
    CurveWalk walk(days, rows);
    ProgressSteps steps(worker == 0 ? progress : nullptr, WorkStage::Analyzing, orders.size());
    for (size_t i = next++; i < orders.size(); i = next++) {
      if (!steps.Next(i) || IsCanceled(progress)) return;
      areas[i] = walk.Measure(orders[i]);
    }
  });
  return areas;
}

/// \param ofOrders  the areas of one row
CurveAreas Summarize(double firstDays, std::vector<double> ofOrders) {
  constexpr double LowPercent = 2.5;
  constexpr double HighPercent = 97.5;
  CurveAreas areas;
  areas.firstDays = firstDays;
  areas.mean =
      std::accumulate(ofOrders.begin(), ofOrders.end(), 0.0) / static_cast<double>(ofOrders.size());
  std::sort(ofOrders.begin(), ofOrders.end());
  areas.low = QuantileOfSorted(ofOrders, LowPercent);
  areas.high = QuantileOfSorted(ofOrders, HighPercent);
  return areas;
}

}  // namespace

std::vector<size_t> DaysOfRows(size_t days) {
  const size_t count = std::min(days, CurveRows);
  std::vector<size_t> rows;
  for (size_t i = 1; i <= count; ++i) rows.push_back((i * days + count - 1) / count);
  return rows;
}

std::vector<std::vector<size_t>> RandomOrders(size_t days, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::vector<std::vector<size_t>> orders(CurveOrders, std::vector<size_t>(days));
  for (auto& order : orders) {
    std::iota(order.begin(), order.end(), size_t{0});
    for (size_t i = days; i-- > 1;) std::swap(order[i], order[random() % (i + 1)]);
  }
  return orders;
}

std::vector<CurveRow> AreaCurve(std::span<const std::vector<PlanePlace>> days, std::uint64_t seed,
                                Progress* progress) {
  const std::vector<size_t> rows = DaysOfRows(days.size());
  std::vector<size_t> byDate(days.size());
  std::iota(byDate.begin(), byDate.end(), size_t{0});
  std::vector<CurveRow> curve(rows.size());
  if (rows.empty()) return curve;

  const OrderAreas first = CurveWalk(days, rows).Measure(byDate);
  const auto orders = MeasureOrders(days, rows, RandomOrders(days.size(), seed), progress);
  if (IsCanceled(progress)) return {};
  size_t taken = 0;
  size_t fixes = 0;
  for (size_t row = 0; row < rows.size(); ++row) {
    for (; taken < rows[row]; ++taken) fixes += days[taken].size();
    std::vector<double> all;
    std::vector<double> most;
    for (const OrderAreas& order : orders) {
      all.push_back(order.all[row]);
      most.push_back(order.most[row]);
    }
    curve[row] = {rows[row], fixes, Summarize(first.all[row], std::move(all)),
                  Summarize(first.most[row], std::move(most))};
  }
  return curve;
}

bool StillGrows(std::span<const CurveRow> curve) {
  constexpr double Growth = 1.05;
  if (curve.empty()) return false;
  const size_t before = curve.back().days - curve.back().days / 4;
  const auto row = std::find_if(curve.begin(), curve.end(),
                                [&](const CurveRow& each) { return each.days >= before; });
  return curve.back().all.firstDays > Growth * row->all.firstDays;
}

}  // namespace orvane
