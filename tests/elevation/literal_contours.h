#pragma once

#include "elevation/contours_surface.h"

#include <algorithm>
#include <cmath>
#include <forward_list>
#include <iterator>
#include <list>
#include <utility>
#include <vector>

namespace orvane {

/// The contours of a list of altitude points by the plainest means: one sample after the other,
/// lists that are walked from their heads, nothing skipped. For comparing.
class LiteralContours {
 public:
  struct Crossing {
    double lat = 0;
    double lon = 0;
    float altitude = 0;
    bool operator==(const Crossing&) const = default;
  };
  using Line = std::vector<Crossing>;  ///< closed lines end on their first crossing

  /// \param barriers       number of points in front that do not count for the bounds
  /// \param renewsEastEnd  samples the east end of each row, which contours do not
  LiteralContours(std::vector<Point*> points, double interval, double step, size_t barriers = 0,
                  bool renewsEastEnd = false)
      : points_(std::move(points)),
        interval_(interval),
        step_(step),
        renewsEastEnd_(renewsEastEnd) {
    for (size_t i = barriers; i < points_.size(); ++i) {
      const Point* point = points_[i];
      if (maxLat_ < minLat_) {
        minLat_ = maxLat_ = point->geo.lat;
        minLon_ = maxLon_ = point->geo.lon;
      }
      minLat_ = std::min(minLat_, point->geo.lat);
      maxLat_ = std::max(maxLat_, point->geo.lat);
      minLon_ = std::min(minLon_, point->geo.lon);
      maxLon_ = std::max(maxLon_, point->geo.lon);
    }
    rows_ = static_cast<int>((maxLat_ - minLat_) / step_ + 1);
    columns_ = static_cast<int>((maxLon_ - minLon_) / step_ + 1);
    rowCrossings_.resize(static_cast<size_t>(rows_) + 2);
    columnCrossings_.resize(static_cast<size_t>(columns_) + 2);
    FindCrossings();
    ConnectCrossings();
  }

  /// The lines in the order in which they were made.
  const std::vector<Line>& Lines() const { return lines_; }
  int Rows() const { return rows_; }
  int Columns() const { return columns_; }

 private:
  using List = std::list<Crossing>;
  enum Heading { North, South, East, West };

  void FindCrossings() {
    rowValues_.resize(static_cast<size_t>(columns_) + 4);
    for (int c = 0; c <= columns_ + 1; ++c) {
      RowValue(c) = SurfaceAltitude(points_, minLat_, minLon_ + c * step_);
    }
    for (int r = 0; r <= rows_; ++r) {
      for (int c = 0; c <= columns_; ++c) CellCrossings(r, c);
      RowValue(columns_ + 2) =
          SurfaceAltitude(points_, minLat_ + (r + 1) * step_, minLon_ + (columns_ + 2) * step_);
      if (!renewsEastEnd_) continue;
      RowValue(columns_ + 1) =
          SurfaceAltitude(points_, minLat_ + r * step_ + step_, minLon_ + (columns_ + 1) * step_);
    }
  }

  double& RowValue(int c) { return rowValues_[static_cast<size_t>(c)]; }

  void CellCrossings(int r, int c) {
    const double lat = minLat_ + r * step_;
    const double lon = minLon_ + c * step_;
    double low = RowValue(c);
    double high = RowValue(c + 1);
    if (low > high) std::swap(low, high);
    List south;
    for (double level = std::ceil(low / interval_) * interval_;
         level <= std::floor(high / interval_) * interval_; level += interval_) {
      const double part = low == high ? 0 : (level - low) * step_ / (high - low);
      south.push_front({lat, lon + part, static_cast<float>(level)});
    }
    const double next = SurfaceAltitude(points_, lat + step_, lon);
    low = RowValue(c);
    high = next;
    if (low > high) std::swap(low, high);
    RowValue(c) = next;
    List west;
    for (double level = std::ceil(low / interval_) * interval_;
         level <= std::floor(high / interval_) * interval_; level += interval_) {
      const double part = low == high ? 0 : (level - low) * step_ / (high - low);
      west.push_front({lat + part, lon, static_cast<float>(level)});
    }
    MergeCrossings(south, rowCrossings_[static_cast<size_t>(r)]);
    MergeCrossings(west, columnCrossings_[static_cast<size_t>(c)]);
  }

  static void MergeCrossings(List& made, List& old) {
    while (!made.empty()) {
      auto pick = made.begin();
      for (auto later = std::next(pick); later != made.end(); ++later) {
        if (later->lat > pick->lat || later->lon > pick->lon) pick = later;
      }
      old.splice(old.begin(), made, pick);
    }
  }

  void TraceAll(List& list, Heading heading) {
    while (!list.empty()) {
      Line chain{list.front()};
      list.pop_front();
      TraceContour(chain, heading);
      if (chain.size() > 1) lines_.push_back(std::move(chain));
    }
  }

  void ConnectCrossings() {
    TraceAll(Row(0), North);
    TraceAll(Row(rows_), South);
    TraceAll(Column(0), East);
    TraceAll(Column(columns_), West);
    for (int i = 1; i < rows_ || i < columns_; ++i) {
      if (i < rows_) TraceAll(Row(i), North);
      if (i < columns_) TraceAll(Column(i), East);
    }
  }
  List& Row(int r) { return rowCrossings_[static_cast<size_t>(r)]; }
  List& Column(int c) { return columnCrossings_[static_cast<size_t>(c)]; }

  bool Find(List& list, bool isRow, Line& chain) {
    const Crossing from = chain.back();
    const double reference = isRow ? from.lon : from.lat;
    auto nearest = list.end();
    double distance = 0;
    for (auto at = list.begin(); at != list.end(); ++at) {
      const double coordinate = isRow ? at->lon : at->lat;
      if (coordinate >= reference + 3 * step_) break;
      if (at->altitude != from.altitude) continue;
      const double off = std::fabs(coordinate - reference);
      if (off >= 3 * step_) continue;
      if (nearest == list.end() || off < distance) {
        nearest = at;
        distance = off;
      }
    }
    if (nearest == list.end()) return false;
    chain.push_back(*nearest);
    list.erase(nearest);
    return true;
  }
  bool FindRow(int r, Line& chain) { return Find(Row(r), true, chain); }
  bool FindColumn(int c, Line& chain) { return Find(Column(c), false, chain); }

  bool Advance(Line& chain, Heading& heading) {
    const double row = (chain.back().lat - minLat_) / step_;
    const double column = (chain.back().lon - minLon_) / step_;
    const int r = static_cast<int>(row);
    const int c = static_cast<int>(column);
    if (r < 0 || r > rows_ || c < 0 || c > columns_) return false;
    if (heading == South && r > 0 && FindRow(r - 1, chain)) return true;
    if (heading == North && r < rows_ && FindRow(r + 1, chain)) return true;
    if (heading == East && c < columns_ && FindColumn(c + 1, chain)) return true;
    if (heading == West && c > 0 && FindColumn(c - 1, chain)) return true;
    if (heading == South || heading == North) {
      if (FindColumn(c, chain)) {
        heading = West;
        return true;
      }
      if (c < columns_ && FindColumn(c + 1, chain)) {
        heading = East;
        return true;
      }
      return false;
    }
    if (r < rows_ && FindRow(r + 1, chain)) {
      heading = North;
      return true;
    }
    if (FindRow(r, chain)) {
      heading = South;
      return true;
    }
    return false;
  }

  void TraceContour(Line& chain, Heading heading) {
    while (Advance(chain, heading)) {
    }
    const double dlat = chain.back().lat - chain.front().lat;
    const double dlon = chain.back().lon - chain.front().lon;
    if (chain.size() > 1 && std::sqrt(dlat * dlat + dlon * dlon) < step_) {
      chain.push_back(chain.front());
    }
  }

  std::vector<Point*> points_;
  double interval_;
  double step_;
  bool renewsEastEnd_;
  double minLat_ = 1;
  double maxLat_ = 0;
  double minLon_ = 0;
  double maxLon_ = 0;
  int rows_ = 0;
  int columns_ = 0;
  std::vector<double> rowValues_;
  std::vector<List> rowCrossings_;
  std::vector<List> columnCrossings_;
  std::vector<Line> lines_;
};

}  // namespace orvane
