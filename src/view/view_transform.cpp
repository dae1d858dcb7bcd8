#include "view/view_transform.h"

#include "geo/earth.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// A direction on the screen or on the ground: up or north, and right or east.
struct Step {
  double up;
  double right;
};

double Radians(double degrees) { return degrees * (Pi / 180.0); }

/// Turns a step on the screen into one on the ground.
Step ToGround(const MapWindow& view, Step step) {
  if (view.rotation == 0) return step;
  const double r = Radians(static_cast<double>(view.rotation));
  return {std::cos(r) * step.up - std::sin(r) * step.right,
          std::cos(r) * step.right + std::sin(r) * step.up};
}

/// Half the height and half the width of the client rectangle in metres, turned as the view is.
/// Both directions of the transform turn about pixel (0, 0), so `top` and `left` need the turned
/// extents for the middle of the view to be the middle of the window.
Step HalfExtent(const MapWindow& view) {
  const double scale = static_cast<double>(view.scale);
  const double a = view.clientHeight / (2 * scale);
  const double b = view.clientWidth / (2 * scale);
  if (view.rotation == 0) return {a, b};
  const double r = Radians(static_cast<double>(view.rotation));
  return {std::cos(r) * a + std::sin(r) * b, std::cos(r) * b - std::sin(r) * a};
}

/// Moves a value over the edge +-`LargestPixel` back to it, and the other coordinate along the
/// line to the centre with it.
void PullToEdge(double& value, double& other, double center, double otherCenter) {
  if (!(value > LargestPixel || value < -LargestPixel)) return;
  const double edge = value > 0 ? LargestPixel : -LargestPixel;
  other = otherCenter + (other - otherCenter) * ((edge - center) / (value - center));
  value = edge;
}

/// Within this distance fractions of a pixel are still exact in 64 bits; the whole earth at the
/// largest scale is smaller.
constexpr double FarthestPixel = 1e14;

/// True for a saved view with a scale, and with a place and a rotation that a view can have.
bool IsUsable(const SavedView& saved) {
  return saved.scale > 0 && std::isfinite(DegreesToMeters(saved.latitude)) &&
         std::isfinite(saved.longitude) && std::isfinite(static_cast<float>(saved.rotation));
}

/// Sets the four edges from the scale and the rotation.
/// \param north  metres, of the middle of the client rectangle
void SetEdgesAbout(MapWindow& view, double north) {
  const Step half = HalfExtent(view);
  view.top = north + half.up;
  view.bottom = north - half.up;
  view.left = -half.right;
  view.right = half.right;
}

/// Sums over the points that an extent is taken of.
struct ExtentSums {
  double count = 0;
  double north = 0;
  double east = 0;
  double northSquares = 0;
  double eastSquares = 0;

  void Add(const Point& point) {
    if (!IsDrawable(point)) return;
    const Meters at = LatLonToMeters(point.geo.lat, point.geo.lon);
    count += 1;
    north += at.north;
    east += at.east;
    northSquares += at.north * at.north;
    eastSquares += at.east * at.east;
  }
};

/// The standard deviation of a sample; rounding may leave less than nothing under the root.
double Deviation(double count, double squares, double mean) {
  return std::sqrt(std::max(0.0, (squares - count * mean * mean) / (count - 1)));
}

}  // namespace

double WrapLongitude(double longitude) {
  if (longitude >= 180) longitude -= 360;
  if (longitude < -180) longitude += 360;
  if (longitude >= -180 && longitude < 180) return longitude;
  const double rest = std::remainder(longitude, 360.0);
  return rest >= 180 ? rest - 360 : rest;
}

float BoundedScale(double scale) {
  if (std::isnan(scale)) return static_cast<float>(SmallestScale);
  return static_cast<float>(std::clamp(scale, SmallestScale, LargestScale));
}

ScreenTransform::ScreenTransform(const MapWindow& view)
    : top_(view.top),
      left_(view.left),
      scale_(static_cast<double>(view.scale)),
      centralLongitude_(view.centralLongitude),
      longitudeWrap_(view.longitudeWrap),
      centerColumn_(view.centerColumn),
      centerRow_(view.centerRow),
      rotated_(view.rotation != 0),
      cosine_(std::cos(Radians(static_cast<double>(view.rotation)))),
      sine_(std::sin(Radians(static_cast<double>(view.rotation)))) {}

Meters ScreenTransform::Project(const LatLon& place) const {
  return LatLonToMeters(place.lat, place.lon - centralLongitude_ + longitudeWrap_);
}

ExactPixel ScreenTransform::Turned(const Meters& projected) const {
  const double row = (top_ - projected.north) * scale_;
  const double column = (projected.east - left_) * scale_;
  if (!rotated_) return {row, column};
  return {cosine_ * row - sine_ * column, cosine_ * column + sine_ * row};
}

ExactPixel ScreenTransform::ToUnboundedPixel(const Meters& projected) const {
  const ExactPixel pixel = Turned(projected);
  const bool countable =
      std::abs(pixel.row) < FarthestPixel && std::abs(pixel.column) < FarthestPixel;
  return countable ? pixel : ToExactPixel(projected);
}

ExactPixel ScreenTransform::ToExactPixel(const Meters& projected) const {
  auto [row, column] = Turned(projected);
  PullToEdge(row, column, centerRow_, centerColumn_);
  PullToEdge(column, row, centerColumn_, centerRow_);
  if (std::isnan(row)) row = centerRow_;
  if (std::isnan(column)) column = centerColumn_;
  return {row, column};
}

Pixel ScreenTransform::ToPixel(const Meters& projected) const {
  const ExactPixel exact = ToExactPixel(projected);
  return {RoundToPixel(exact.column), RoundToPixel(exact.row)};
}

Pixel MapToScreen(const MapWindow& view, const LatLon& place) {
  return ScreenTransform(view).ToPixel(place);
}

ExactPixel MapToScreenExact(const MapWindow& view, const LatLon& place) {
  const ScreenTransform transform(view);
  return transform.ToExactPixel(transform.Project(place));
}

LatLon ScreenToMap(const MapWindow& view, Pixel pixel) {
  const double scale = static_cast<double>(view.scale);
  const Step step = ToGround(view, {-(pixel.y / scale), pixel.x / scale});
  LatLon place = MetersToLatLon(view.top + step.up, step.right + view.left);
  place.lon += view.centralLongitude;
  return place;
}

void SetClientSize(MapWindow& view, int width, int height) {
  view.clientWidth = std::clamp(width, 1, LargestPixel);
  view.clientHeight = std::clamp(height, 1, LargestPixel);
  view.centerColumn = view.clientWidth / 2;
  view.centerRow = view.clientHeight / 2;
}

void SetPixelRatio(MapWindow& view, double ratio) {
  if (!(ratio > 0) || !std::isfinite(ratio)) return;
  view.scale = BoundedScale(static_cast<double>(view.scale) * ratio / view.pixelRatio);
  view.pixelRatio = ratio;
  ResizeView(view);
}

float LogicalScale(const MapWindow& view) {
  return static_cast<float>(static_cast<double>(view.scale) / view.pixelRatio);
}

int DevicePixels(const MapWindow& view, int logicalPixels) {
  return std::max(1, RoundToPixel(logicalPixels * view.pixelRatio));
}

void CenterOn(MapWindow& view, const LatLon& place) {
  if (!std::isfinite(place.lat) || !std::isfinite(place.lon)) return;
  view.centralLongitude = WrapLongitude(place.lon);
  const double lat = std::fmod(place.lat, 360.0);
  const Step half = HalfExtent(view);
  view.top = DegreesToMeters(lat) + half.up;
  view.left = -half.right;
  view.bottom = view.top - 2 * half.up;
  view.right = half.right;
}

void CenterOnMeters(MapWindow& view, double north, double east) {
  CenterOn(view, MetersToLatLon(north, east));
}

void InitView(MapWindow& view, const SavedView* saved) {
  if (saved != nullptr && IsUsable(*saved) && view.map != nullptr &&
      saved->fileName == view.map->fileName) {
    view.scale = BoundedScale(saved->scale * view.pixelRatio);
    view.centralLongitude = WrapLongitude(saved->longitude);
    view.rotation = static_cast<float>(saved->rotation);
    view.flags &= ~std::uint32_t{MapWindowGridsHidden};
    if (saved->hideGrids) view.flags |= MapWindowGridsHidden;
    SetEdgesAbout(view, DegreesToMeters(saved->latitude));
  } else {
    Extent extent;
    if (view.map != nullptr) extent = MapExtent(*view.map);
    const double shorter = std::min(view.clientWidth, view.clientHeight);
    view.scale = BoundedScale(shorter / (2 * static_cast<double>(extent.radius)));
    if (view.scale < 0.00002F) extent.east = 0;
    view.centralLongitude = WrapLongitude(MetersToLatLon(extent.north, extent.east).lon);
    SetEdgesAbout(view, extent.north);
  }
}

void ResizeView(MapWindow& view) { SetEdgesAbout(view, (view.top + view.bottom) / 2); }

void SizeView(MapWindow& view, int width, int height, const SavedView* saved) {
  SetClientSize(view, width, height);
  if ((view.flags & MapWindowPlaced) == 0) {
    InitView(view, saved);
    view.flags |= MapWindowPlaced;
  }
  ResizeView(view);
}

void FitToBounds(MapWindow& view, double north, double south, double east, double west) {
  // The second of each pair widens by the value that the first has got.
  north += (north - south) / 40;
  south -= (north - south) / 40;
  east += (east - west) / 40;
  west -= (east - west) / 40;
  const double central = (east + west) / 2;
  const double height = DegreesToMeters(north) - DegreesToMeters(south);
  const Meters corner = LatLonToMeters((north + south) / 2, east - central);
  const double width = 2 * corner.east;
  if (!std::isfinite(height) || !std::isfinite(width)) return;
  double scale = width / view.clientWidth >= height / view.clientHeight
                     ? view.clientWidth / width
                     : view.clientHeight / height;
  if (!(scale > 0) || !std::isfinite(scale)) {
    scale = std::min(view.clientWidth, view.clientHeight) / 2.0;
  }
  view.scale = BoundedScale(scale);
  view.centralLongitude = WrapLongitude(central);
  SetEdgesAbout(view, corner.north);
}

Extent MapExtent(const Map& map) {
  const Map* level = &map;
  while (level != nullptr && level->trails.empty() && level->loosePoints.empty()) {
    level = level->basis;
  }
  if (level == nullptr) return {};
  ExtentSums sums;
  for (const Trail& trail : level->trails) {
    for (const Point* point : trail.points) sums.Add(*point);
  }
  if (sums.count == 0) {
    for (const Point* point : level->loosePoints) sums.Add(*point);
  }
  if (sums.count == 0) return {};
  const double north = sums.north / sums.count;
  const double east = sums.east / sums.count;
  // A file may hold places beyond all bounds, of which the sums are none.
  if (!std::isfinite(north) || !std::isfinite(east)) return {};
  double spread = 1;
  if (sums.count > 1) {
    spread = Deviation(sums.count, sums.northSquares, north) +
             Deviation(sums.count, sums.eastSquares, east);
  }
  const float radius = static_cast<float>(spread);
  // See "A view of a new map opens half a metre off" in docs/compatibility.md.
  return {north + 0.5, east + 0.5, radius > 0 ? radius : 1};
}

bool ViewOutOfWindow(const MapWindow& view, Pixel pixel) {
  return pixel.x < 0 || pixel.y < 0 || pixel.x >= view.clientWidth || pixel.y >= view.clientHeight;
}

void PanTo(MapWindow& view, Pixel pixel) {
  const int rows = view.pressPoint.y - pixel.y;
  const int columns = view.pressPoint.x - pixel.x;
  view.pressPoint = pixel;
  if (rows == 0 && columns == 0) return;
  const double scale = static_cast<double>(view.scale);
  const Step step = ToGround(view, {-(rows / scale), columns / scale});
  const double lon = MetersToLatLon((view.top + view.bottom) / 2, step.right).lon;
  if (!std::isfinite(lon) || !std::isfinite(step.up)) return;
  view.centralLongitude = WrapLongitude(view.centralLongitude + lon);
  view.top += step.up;
  view.bottom += step.up;
}

void StepView(MapWindow& view, ViewStep step, const HeldKeys& keys) {
  const double part = keys.shift ? 100 : keys.control ? 30 : 10;
  // A view that is turned by more than a right angle has its bottom above its top; the arrow still
  // moves the view to where it points.
  const double up = std::abs(view.top - view.bottom) / part;
  const double right = std::abs(view.right - view.left) / part;
  Step screen{0, 0};
  if (step == ViewStep::North) screen.up = up;
  if (step == ViewStep::South) screen.up = -up;
  if (step == ViewStep::East) screen.right = right;
  if (step == ViewStep::West) screen.right = -right;
  const Step ground = ToGround(view, screen);
  LatLon center = MetersToLatLon(ground.up + (view.top + view.bottom) / 2, ground.right);
  center.lon += view.centralLongitude;
  CenterOn(view, center);
}

void ZoomOnPixel(MapWindow& view, Pixel pixel, double factor) {
  const LatLon place = ScreenToMap(view, pixel);
  view.scale = BoundedScale(static_cast<double>(view.scale) * factor);
  CenterOn(view, place);
}

void ZoomAboutPixel(MapWindow& view, Pixel pixel, double factor) {
  const LatLon place = ScreenToMap(view, pixel);
  view.scale = BoundedScale(static_cast<double>(view.scale) * factor);
  const double scale = static_cast<double>(view.scale);
  const Step half = HalfExtent(view);
  const Step offset = ToGround(view, {-(pixel.y / scale), pixel.x / scale});
  const double north = DegreesToMeters(place.lat);
  const double lon = MetersToLatLon(north, offset.right - half.right).lon;
  if (!std::isfinite(north) || !std::isfinite(lon)) return;
  view.centralLongitude = WrapLongitude(place.lon - lon);
  view.top = north - offset.up;
  view.bottom = view.top - 2 * half.up;
  view.left = -half.right;
  view.right = half.right;
}

void ZoomByDoubleClick(MapWindow& view, const HeldKeys& keys, bool otherButton) {
  ZoomOnPixel(view, view.pointer, keys.shift != otherButton ? 0.5 : 2);
}

void ZoomToPixels(MapWindow& view, Pixel a, Pixel b) {
  const LatLon first = ScreenToMap(view, a);
  const LatLon second = ScreenToMap(view, b);
  const int rows = std::max(1, std::abs(a.y - b.y));
  const int columns = std::max(1, std::abs(a.x - b.x));
  const double factor = std::min(1.0 * view.clientHeight / rows, 1.0 * view.clientWidth / columns);
  view.scale = BoundedScale(static_cast<double>(view.scale) * factor);
  const Meters mean = LatLonToMeters((first.lat + second.lat) / 2, (first.lon + second.lon) / 2);
  CenterOnMeters(view, mean.north, mean.east);
}

}  // namespace orvane
