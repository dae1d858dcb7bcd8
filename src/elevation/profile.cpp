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

/// Gives points the plane back that they had: measures overwrite it, and a window measures its
/// profile in the middle of anything else.
class KeptPlane {
 public:
  explicit KeptPlane(PointSpan points) : points_(points) {
    planes_.reserve(points.size());
    for (const Point* point : points) planes_.push_back(point->projected);
  }
  ~KeptPlane() {
    for (size_t i = 0; i < points_.size(); ++i) points_[i]->projected = planes_[i];
  }
  KeptPlane(const KeptPlane&) = delete;
  KeptPlane& operator=(const KeptPlane&) = delete;

 private:
  PointSpan points_;
  std::vector<Meters> planes_;
};

/// Takes up the measures of the line.
void MeasureLine(ElevationView& view) {
  const KeptPlane plane(view.points);
  const AltitudeSpan altitudes = AltitudeRange(view.points);
  view.minAltitude = altitudes.min;
  view.maxAltitude = altitudes.max;
  view.lineLength = TrailPathLength(view.points);
}

/// Takes up the measures of a new line, and puts all of it in view.
void ShowLine(ElevationView& view) {
  MeasureLine(view);
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
  const KeptPlane plane(points);
  LocalPlaneOfPoints(points);
  std::vector<double> lengths;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    lengths.push_back(PlanDistance(*points[i], *points[i + 1]));
  }
  return lengths;
}

/// Measures the line and collects the altitudes, where that is not done yet.
void PrepareSampling(ElevationView& view) {
  if (view.lengths.empty()) view.lengths = SegmentLengths(view.points);
  if (!view.estimates) view.estimates.emplace(*view.map);
}

/// Drops what was computed from the map.
void ForgetMap(ElevationView& view) {
  view.estimates.reset();
  view.lengths.clear();
  view.samples.clear();
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

/// The first point of the segment names the column, also where the column is nearer to the second.
/// See docs/compatibility.md.
const std::string* LabelOf(const Point& point, double rest, double length, double halfColumn) {
  if (rest >= halfColumn && length - rest >= halfColumn) return nullptr;
  return point.name.empty() || IsHiddenName(point.name) ? nullptr : &point.name;
}

ElevationSample SampleAt(const ElevationView& view, double distance) {
  const std::vector<double>& lengths = view.lengths;
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
  if (!IsKnown(sample)) sample.position.altitude = view.estimates->At(sample.position);
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

/// Takes the altitudes in the middles of some steps.
/// \return false if a place has no estimate
bool Estimate(ElevationView& view, std::span<const ElevationStep> steps) {
  std::vector<LatLon> places;
  places.reserve(steps.size());
  for (const ElevationStep& step : steps) {
    places.push_back(view.samples[static_cast<size_t>(step.middle)].position);
  }
  std::vector<float> altitudes(places.size());
  view.estimates->At(places, altitudes);
  bool all = true;
  for (size_t i = 0; i < steps.size(); ++i) {
    view.samples[static_cast<size_t>(steps[i].middle)].position.altitude = altitudes[i];
    all = all && HasAltitude(altitudes[i]);
  }
  return all;
}

/// Calls `visit(const Trail&)` for each trail and contour of the map and its bases.
template <typename Visit>
void ForEachTrail(const Map& map, const Visit& visit) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    for (const auto* trails : {&each->trails, &each->contourTrails, &each->continuousContours}) {
      for (const Trail& trail : *trails) visit(trail);
    }
  }
}

/// True if two trails have the same words on their lines.
bool IsAlike(const LineIdentity& identity, const Trail& trail) {
  return trail.name == identity.name && trail.type == identity.type &&
         trail.focalAnimal.value_or("") == identity.animal && trail.date == identity.date;
}

/// \return the first point for which `matches` holds for its name or one of its synonyms, as an
///         index; nothing for none
template <typename Matches>
std::optional<size_t> FindNamed(PointSpan points, const Matches& matches) {
  const auto found = std::find_if(points.begin(), points.end(), [&](const Point* point) {
    return matches(point->name) ||
           std::any_of(point->synonyms.begin(), point->synonyms.end(), matches);
  });
  if (found == points.end()) return std::nullopt;
  return static_cast<size_t>(found - points.begin());
}

/// The first point of a line with a name, or else with that name hidden.
std::optional<size_t> FindOnLine(PointSpan points, std::string_view name) {
  const auto found = FindNamed(points, [&](const std::string& own) { return SameName(own, name); });
  if (found) return found;
  return FindNamed(points,
                   [&](const std::string& own) { return CompareHiddenName(own, name) == 0; });
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
  ShowLine(view);
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
  ShowLine(view);
  return view;
}

std::optional<std::string> ElevationTitle(const ElevationView& view) {
  if (view.trail == nullptr || !view.trail->name) return std::nullopt;
  return FormatText("Elevation of %s %s", {*view.trail->name, view.trail->type});
}

void SampleLine(ElevationView& view) {
  PrepareSampling(view);
  view.samples.clear();
  for (int i = 0; i < view.plotWidth; ++i) {
    view.samples.push_back(SampleAt(view, i * view.metresPerPixelX + view.viewStart));
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
  const bool isEstimated = Estimate(view, found);
  const bool hasMore = std::any_of(found.begin(), found.end(), [](const ElevationStep& step) {
    return step.to - step.from > 2;
  });
  if (steps != nullptr) *steps = std::move(found);
  // Without an estimate a pass would find the same run again and again.
  return hasMore && isEstimated;
}

void FillGaps(ElevationView& view) {
  while (FillGapsPass(view, nullptr)) {
  }
}

bool GapFilling::Run(ElevationView& view, const std::function<bool()>& mayGoOn) {
  // As many as the estimates take side by side, so that none of a large map takes long.
  constexpr size_t ColumnsAtOnce = 8;
  while (!isDone_) {
    if (next_ == steps_.size()) {
      steps_ = FindSteps(view.samples);
      next_ = 0;
      isDone_ = steps_.empty();
      continue;
    }
    const size_t count = std::min(ColumnsAtOnce, steps_.size() - next_);
    const bool isEstimated = Estimate(view, std::span(steps_).subspan(next_, count));
    next_ += count;
    isDone_ = !isEstimated;
    if (!isDone_ && !mayGoOn()) break;
  }
  return isDone_;
}

ElevationView CopyOf(const ElevationView& view) {
  ElevationView copy;
  copy.map = view.map;
  copy.trail = view.trail;
  copy.points = view.points;
  if (view.trail == nullptr) {
    copy.flags |= ElevationOwnsPoints;
    copy.points.clear();
    for (const Point* end : view.points) copy.points.push_back(&MakeEnd(copy, end->geo));
  }
  MeasureLine(copy);
  copy.viewStart = view.viewStart;
  copy.viewEnd = view.viewEnd;
  return copy;
}

void FollowLine(ElevationView& view) {
  const bool isWhole = view.viewStart == 0 && view.viewEnd == view.lineLength;
  ForgetMap(view);
  if (view.trail == nullptr) {
    const AltitudeEstimates estimates(*view.map);
    for (Point* end : view.points) end->geo.altitude = estimates.At(end->geo);
  } else if (view.trail->points.size() >= 2) {
    ForEachTrail(*view.map, [&](const Trail& trail) {
      if (&trail == view.trail) view.points = trail.points;
    });
  }
  MeasureLine(view);
  if (isWhole) view.viewEnd = view.lineLength;
}

bool IsLineThere(const ElevationView& view) {
  if (view.trail == nullptr) return !view.points.empty();
  bool isThere = false;
  const auto look = [&](const Trail& trail) { isThere = isThere || &trail == view.trail; };
  ForEachTrail(*view.map, look);
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    for (const Trail& trail : map->removed.trails) look(trail);
  }
  return isThere;
}

LineIdentity IdentityOf(const ElevationView& view) {
  LineIdentity identity;
  identity.isTransect = view.trail == nullptr;
  if (identity.isTransect) return identity;
  const Trail& trail = *view.trail;
  identity.name = trail.name;
  identity.type = trail.type;
  identity.animal = trail.focalAnimal.value_or("");
  identity.date = trail.date;
  bool isMet = false;
  ForEachTrail(*view.map, [&](const Trail& each) {
    isMet = isMet || &each == &trail;
    if (!isMet && IsAlike(identity, each)) ++identity.number;
  });
  return identity;
}

bool FindLineAgain(ElevationView& view, const LineIdentity& identity) {
  if (!identity.isTransect) {
    view.trail = nullptr;
    view.points.clear();
    int number = 0;
    ForEachTrail(*view.map, [&](const Trail& trail) {
      if (IsAlike(identity, trail) && number++ == identity.number) view.trail = &trail;
    });
    if (view.trail == nullptr || view.trail->points.size() < 2) {
      ForgetMap(view);
      return false;
    }
    view.points = view.trail->points;
  }
  FollowLine(view);
  return true;
}

bool HasBasisAltitudes(const Map& map) {
  for (const Map* basis = map.basis; basis != nullptr; basis = basis->basis) {
    if (!AltitudeEstimates(*basis).IsEmpty()) return true;
  }
  return false;
}

int PointerColumn(const ElevationView& view) {
  return std::clamp(view.pointerX - view.leftMargin, 0, std::max(view.plotWidth - 1, 0));
}

bool IsOnLine(const ElevationView& view, std::string_view name) {
  return FindOnLine(view.points, name).has_value();
}

bool ElevationFindPoint(ElevationView& view, std::string_view name, Messages& messages) {
  const auto found = FindOnLine(view.points, name);
  if (!found) {
    NoteError(messages, "Can't find %s", {name});
    return false;
  }
  PrepareSampling(view);
  double distance = 0;
  for (size_t i = 0; i < *found; ++i) distance += view.lengths[i];
  const double quarter = (view.viewEnd - view.viewStart) / 4;
  view.viewStart = distance - quarter;
  view.viewEnd = distance + quarter;
  return true;
}

}  // namespace orvane
