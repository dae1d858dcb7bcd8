#include "elevation/profile.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/earth.h"
#include "geometry/planes.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "trails/metrics.h"

#include <algorithm>

namespace orvane {

namespace {

/// Takes up the measures of the line.
void MeasureLine(ElevationView& view) {
  const AltitudeSpan altitudes = AltitudeRange(view.points);
  view.minAltitude = altitudes.min;
  view.maxAltitude = altitudes.max;
  view.lineLength = TrailPathLength(view.points);
  view.viewStart = 0;
  view.viewEnd = view.lineLength;
}

Point& MakeEnd(ElevationView& view, const LatLon& place) {
  Point& end = view.ends.Make(LatLonToMetersKeepingAltitude(place));
  end.geo = place;
  return end;
}

/// The plan lengths of the segments of a line, in its local plane.
std::vector<double> SegmentLengths(PointSpan points) {
  LocalPlaneOfPoints(points);
  std::vector<double> lengths;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    lengths.push_back(PlanDistance(*points[i], *points[i + 1]));
  }
  return lengths;
}

/// Where a distance falls on a line.
struct LinePlace {
  size_t link = 0;
  double rest = 0;  ///< metres from that link's point on
};

/// What `SegmentAtDistance` finds, with lengths that are measured once for all columns.
LinePlace PlaceOnLine(std::span<const double> lengths, double distance) {
  LinePlace place;
  if (!(distance < 0)) {
    for (; place.link < lengths.size(); ++place.link) {
      if (distance < lengths[place.link]) break;
      distance -= lengths[place.link];
    }
  }
  place.rest = distance;
  return place;
}

/// Always the first point of the segment names the column, also where the column is nearer to
/// the second: the column after it then has the second one's name, and no name is met twice.
const std::string* LabelOf(const Point& point, double rest, double length, double halfColumn) {
  if (rest >= halfColumn && length - rest >= halfColumn) return nullptr;
  return point.name.empty() || IsHiddenName(point.name) ? nullptr : &point.name;
}

ElevationSample SampleAt(const ElevationView& view, std::span<const double> lengths,
                         double distance) {
  ElevationSample sample;
  LinePlace place = PlaceOnLine(lengths, distance);
  const float measured = view.points[place.link]->geo.altitude;
  const float altitude = place.rest == 0 ? measured : NoAltitude;
  if (place.link == lengths.size()) place.rest += lengths[--place.link];
  const double length = lengths[place.link];
  const Point& from = *view.points[place.link];
  const Point& to = *view.points[place.link + 1];
  // On a segment without length there is no direction in which to go on.
  sample.position = InterpolateLatLon(from.geo, to.geo, length == 0 ? 0 : place.rest / length);
  sample.position.altitude = altitude;
  sample.label = LabelOf(from, place.rest, length, view.metresPerPixelX / 2);
  return sample;
}

bool IsKnown(const ElevationSample& sample) { return HasAltitude(sample.position.altitude); }

void EstimateIfUnknown(const ElevationView& view, ElevationSample& sample) {
  if (!IsKnown(sample)) sample.position.altitude = view.estimates.At(sample.position);
}

/// The middle of each run of unknown columns that has known ones on both sides.
std::vector<ElevationStep> FindSteps(const std::vector<ElevationSample>& samples) {
  std::vector<ElevationStep> steps;
  int known = -1;  // the last known column
  for (size_t i = 0; i < samples.size(); ++i) {
    if (!IsKnown(samples[i])) continue;
    const int column = static_cast<int>(i);
    if (known >= 0 && column - known > 1) {
      steps.push_back({known, (known + column) / 2, column});
    }
    known = column;
  }
  return steps;
}

/// \return the first point for which `bears` holds for its name or one of its synonyms, as an
///         index; nothing for none
template <typename Bears>
std::optional<size_t> FindNamed(PointSpan points, const Bears& bears) {
  const auto found = std::find_if(points.begin(), points.end(), [&](const Point* point) {
    return bears(point->name) || std::any_of(point->synonyms.begin(), point->synonyms.end(), bears);
  });
  if (found == points.end()) return std::nullopt;
  return static_cast<size_t>(found - points.begin());
}

}  // namespace

std::optional<ElevationView> OpenElevation(Map& map, const Trail& trail) {
  if (trail.points.size() < 2) {
    NoteError(map.workspace->messages, "The trail to be displayed must have at least two points");
    return std::nullopt;
  }
  ElevationView view;
  view.map = &map;
  view.trail = &trail;
  view.points = trail.points;
  MeasureLine(view);
  return view;
}

std::optional<ElevationView> OpenTransect(Map& map, const LatLon& from, const LatLon& to) {
  const AltitudeEstimates estimates(map);
  LatLon ends[] = {from, to};
  for (LatLon& end : ends) end.altitude = estimates.At(end);
  if (!HasAltitude(ends[0].altitude)) {
    NoteError(map.workspace->messages, "Sorry, no altitude information available");
    return std::nullopt;
  }
  ElevationView view;
  view.map = &map;
  view.flags |= ElevationOwnsPoints;
  for (const LatLon& end : ends) view.points.push_back(&MakeEnd(view, end));
  MeasureLine(view);
  return view;
}

std::optional<std::string> ElevationTitle(const ElevationView& view) {
  if (view.trail == nullptr || !view.trail->name) return std::nullopt;
  return FormatText("Elevation of %s %s", {*view.trail->name, view.trail->type});
}

void SampleLine(ElevationView& view) {
  view.estimates = AltitudeEstimates(*view.map);
  const std::vector<double> lengths = SegmentLengths(view.points);
  view.samples.clear();
  for (int i = 0; i < view.plotWidth; ++i) {
    view.samples.push_back(SampleAt(view, lengths, i * view.metresPerPixelX + view.viewStart));
  }
  // Sums of lengths lose digits, so the end of the line would be found beside its last point.
  if (view.viewEnd == view.lineLength) view.samples.back().position = view.points.back()->geo;
  EstimateIfUnknown(view, view.samples.front());
  EstimateIfUnknown(view, view.samples.back());
}

void LayoutColumns(ElevationView& view, int plotWidth) {
  view.plotWidth = std::max(plotWidth, 2);
  view.metresPerPixelX = (view.viewEnd - view.viewStart) / (view.plotWidth - 1);
  SampleLine(view);
}

bool FillGapsPass(ElevationView& view, std::vector<ElevationStep>* steps) {
  std::vector<ElevationStep> found = FindSteps(view.samples);
  std::vector<LatLon> places;
  places.reserve(found.size());
  for (const ElevationStep& step : found) {
    places.push_back(view.samples[static_cast<size_t>(step.middle)].position);
  }
  std::vector<float> altitudes(places.size());
  view.estimates.At(places, altitudes);
  bool hasMore = false;
  bool isStuck = false;
  for (size_t i = 0; i < found.size(); ++i) {
    view.samples[static_cast<size_t>(found[i].middle)].position.altitude = altitudes[i];
    hasMore = hasMore || found[i].to - found[i].from > 2;
    isStuck = isStuck || !HasAltitude(altitudes[i]);
  }
  if (steps != nullptr) *steps = std::move(found);
  // Without an estimate a pass would find the same run again, for ever.
  return hasMore && !isStuck;
}

void FillGaps(ElevationView& view) {
  while (FillGapsPass(view, nullptr)) {
  }
}

int PointerColumn(const ElevationView& view) {
  return std::clamp(view.pointerX - view.leftMargin, 0, std::max(view.plotWidth - 1, 0));
}

bool ElevationFindPoint(ElevationView& view, std::string_view name, Messages& messages) {
  auto found = FindNamed(view.points, [&](const std::string& own) { return SameName(own, name); });
  if (!found) {
    found = FindNamed(view.points,
                      [&](const std::string& own) { return CompareHiddenName(own, name) == 0; });
  }
  if (!found) {
    NoteError(messages, "Can't find %s", {name});
    return false;
  }
  const std::vector<double> lengths = SegmentLengths(view.points);
  double distance = 0;
  for (size_t i = 0; i < *found; ++i) distance += lengths[i];
  const double quarter = (view.viewEnd - view.viewStart) / 4;
  view.viewStart = distance - quarter;
  view.viewEnd = distance + quarter;
  return true;
}

}  // namespace orvane
