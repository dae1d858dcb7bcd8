#include "elevation/contours.h"

#include "elevation/contours_crossings.h"
#include "elevation/contours_lines.h"
#include "model/workspace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace orvane {

namespace {

enum Heading { HeadingNorth, HeadingSouth, HeadingEast, HeadingWest };

/// A crossing that a line has come to, and the way on.
struct Step {
  LatLon place;
  Heading heading = HeadingNorth;
};

/// The crossings of one run and the search for lines among them.
//
//          row r + 1
//        +-----------+        A cell has its row below and its column on its west side. A line that
// column |  cell     | column  goes north or south tries the row ahead, then the columns at either
//   c    |  (r, c)   | c + 1   side; one that goes east or west tries the column ahead, then the
//        +-----------+         rows. Heading south and west the cell is the one it comes from.
//          row r
class ContourTracer {
 public:
  explicit ContourTracer(const ContourWork& work)
      : work_(work),
        rowCrossings_(work.rows + 1, work.columns + 1, work.minLon, work.step),
        columnCrossings_(work.columns + 1, work.rows + 1, work.minLat, work.step) {}

  /// \return false if there are too many
  bool FindCrossings() {
    for (int r = 0; r <= work_.rows; ++r) {
      for (int c = 0; c <= work_.columns; ++c) {
        if (!CellCrossings(r, c)) return false;
      }
    }
    return true;
  }

  /// \return false if the run was cancelled
  bool ConnectCrossings() {
    constexpr const char* Stage = "Connecting contours...";
    const std::int64_t total = std::int64_t{work_.rows} + work_.columns;
    if (!work_.Reach(Stage, 0)) return false;
    TraceList(rowCrossings_, 0, HeadingNorth);
    TraceList(rowCrossings_, work_.rows, HeadingSouth);
    TraceList(columnCrossings_, 0, HeadingEast);
    TraceList(columnCrossings_, work_.columns, HeadingWest);
    std::int64_t done = 4;
    if (!work_.Reach(Stage, static_cast<int>(done * 100 / total))) return false;
    for (int i = 1; i < work_.rows || i < work_.columns; ++i) {
      if (i < work_.rows) {
        TraceList(rowCrossings_, i, HeadingNorth);
        ++done;
      }
      if (i < work_.columns) {
        TraceList(columnCrossings_, i, HeadingEast);
        ++done;
      }
      if (!work_.Reach(Stage, static_cast<int>(done * 100 / total))) return false;
    }
    return true;
  }

  const std::vector<ContourLine>& Lines() const { return lines_; }

 private:
  /// The edges on the south and the west of a cell. East of the last column every row but the first
  /// is held against the altitude there of the first row: that one was never sampled again, and the
  /// crossings of the outermost cells depend on it (the test
  /// `TheEastEndOfEveryRowIsThatOfTheFirst`).
  bool CellCrossings(int r, int c) {
    const double here = work_.Value(r, c);
    const double east = c < work_.columns ? work_.Value(r, c + 1) : work_.Value(0, c + 1);
    const double lat = work_.minLat + r * work_.step;
    return rowCrossings_.Add(r, c, work_.lons[static_cast<size_t>(c)], here, east,
                             work_.interval) &&
           columnCrossings_.Add(c, r, lat, here, work_.Value(r + 1, c), work_.interval) &&
           rowCrossings_.Size() + columnCrossings_.Size() <= MostCrossings;
  }

  LatLon RowPlace(int row, const CrossingLists::Crossing& crossing) const {
    return {work_.minLat + row * work_.step, crossing.coordinate, crossing.level};
  }
  LatLon ColumnPlace(int column, const CrossingLists::Crossing& crossing) const {
    return {crossing.coordinate, work_.minLon + column * work_.step, crossing.level};
  }

  void TraceList(CrossingLists& lists, int list, Heading heading) {
    const bool isRow = &lists == &rowCrossings_;
    while (const auto head = lists.TakeHead(list)) {
      const auto& crossing = lists.At(*head);
      TraceContour(isRow ? RowPlace(list, crossing) : ColumnPlace(list, crossing), heading);
    }
  }

  std::optional<Step> TakeFromRow(int row, const LatLon& from, Heading heading) {
    const auto found = rowCrossings_.FindNextCrossing(row, from.lon, from.altitude);
    if (!found) return std::nullopt;
    rowCrossings_.Take(*found);
    return Step{RowPlace(row, rowCrossings_.At(*found)), heading};
  }
  std::optional<Step> TakeFromColumn(int column, const LatLon& from, Heading heading) {
    const auto found = columnCrossings_.FindNextCrossing(column, from.lat, from.altitude);
    if (!found) return std::nullopt;
    columnCrossings_.Take(*found);
    return Step{ColumnPlace(column, columnCrossings_.At(*found)), heading};
  }

  /// \param row  the one ahead
  std::optional<Step> NextOfRowLine(const Step& at, int row, int c) {
    std::optional<Step> next;
    if (row >= 0 && row <= work_.rows) next = TakeFromRow(row, at.place, at.heading);
    if (!next) next = TakeFromColumn(c, at.place, HeadingWest);
    if (!next && c < work_.columns) next = TakeFromColumn(c + 1, at.place, HeadingEast);
    return next;
  }
  /// \param column  the one ahead
  std::optional<Step> NextOfColumnLine(const Step& at, int column, int r) {
    std::optional<Step> next;
    if (column >= 0 && column <= work_.columns) {
      next = TakeFromColumn(column, at.place, at.heading);
    }
    if (!next && r < work_.rows) next = TakeFromRow(r + 1, at.place, HeadingNorth);
    if (!next) next = TakeFromRow(r, at.place, HeadingSouth);
    return next;
  }

  std::optional<Step> Next(const Step& at) {
    const double row = std::trunc((at.place.lat - work_.minLat) / work_.step);
    const double column = std::trunc((at.place.lon - work_.minLon) / work_.step);
    if (!(row >= 0 && row <= work_.rows && column >= 0 && column <= work_.columns)) {
      return std::nullopt;
    }
    const int r = static_cast<int>(row);
    const int c = static_cast<int>(column);
    switch (at.heading) {
      case HeadingSouth:
        return NextOfRowLine(at, r - 1, c);
      case HeadingNorth:
        return NextOfRowLine(at, r + 1, c);
      case HeadingEast:
        return NextOfColumnLine(at, c + 1, r);
      case HeadingWest:
        return NextOfColumnLine(at, c - 1, r);
    }
    return std::nullopt;
  }

  void TraceContour(const LatLon& start, Heading heading) {
    chain_.assign(1, start);
    for (auto at = Next({start, heading}); at; at = Next(*at)) chain_.push_back(at->place);
    if (chain_.size() == 1) return;
    const double dlat = chain_.back().lat - start.lat;
    const double dlon = chain_.back().lon - start.lon;
    const bool closed = std::sqrt(dlat * dlat + dlon * dlon) < work_.step;
    lines_.push_back({start.altitude, chain_, closed});
  }

  const ContourWork& work_;
  CrossingLists rowCrossings_;
  CrossingLists columnCrossings_;
  std::vector<ContourLine> lines_;
  std::vector<LatLon> chain_;  ///< the line that is being traced
};

ContourOutcome Generate(Map& map, int interval, ContourWork& work) {
  const ContourOutcome prepared = PrepareContours(map, interval, work);
  if (prepared != ContourMade) return prepared;
  ContourTracer tracer(work);
  if (!tracer.FindCrossings()) return RefuseCrossings(map);
  if (!tracer.ConnectCrossings()) return ContourCanceled;
  MakeContourTrails(tracer.Lines(), map.workspace->contourCounts, map.contourTrails,
                    map.contourPoints);
  return ContourMade;
}

}  // namespace

ContourOutcome GenerateContours(Map& map, int interval, const ContourProgress& progress) {
  return RunContours(progress, [&](ContourWork& work) { return Generate(map, interval, work); });
}

}  // namespace orvane
