#include "commands/deviation_offer.h"

#include "commands/map_facts.h"

#include <algorithm>
#include <vector>

namespace orvane {
namespace {

/// The bounds of places, as far as any were added.
class PlaceBounds {
 public:
  template <typename Points>
  void Add(const Points& points) {
    for (const Point* point : points) {
      if (!IsPlaced(*point)) continue;
      const LatLon& place = point->geo;
      low_ = any_ ? LatLon{std::min(low_.lat, place.lat), std::min(low_.lon, place.lon)} : place;
      high_ = any_ ? LatLon{std::max(high_.lat, place.lat), std::max(high_.lon, place.lon)} : place;
      any_ = true;
    }
  }
  std::optional<LatLon> Middle() const {
    if (!any_) return std::nullopt;
    return LatLon{(low_.lat + high_.lat) / 2, (low_.lon + high_.lon) / 2};
  }

 private:
  LatLon low_;
  LatLon high_;
  bool any_ = false;
};

std::optional<LatLon> MiddleOf(const Map& map) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    PlaceBounds bounds;
    for (const Trail& trail : level->trails) bounds.Add(trail.points);
    bounds.Add(level->loosePoints);
    bounds.Add(level->namelessPoints);
    if (const auto middle = bounds.Middle()) return middle;
  }
  return std::nullopt;
}

/// The date in the middle of those of all trails; the earlier one of two.
std::optional<PackedDate> MiddleDate(const Map& map) {
  std::vector<PackedDate> dates;
  for (const Trail& trail : map.trails) {
    if (trail.date != 0) dates.push_back(trail.date);
  }
  if (dates.empty()) return std::nullopt;
  const auto middle = dates.begin() + static_cast<std::ptrdiff_t>((dates.size() - 1) / 2);
  std::nth_element(dates.begin(), middle, dates.end());
  return *middle;
}

}  // namespace

std::optional<DeviationOffer> OfferDeviation(const Map& map, PackedDate today,
                                             const std::string& folder) {
  const auto middle = MiddleOf(map);
  if (!middle) return std::nullopt;
  const PackedDate date = MiddleDate(map).value_or(today);
  const auto declination = DeclinationAt(*middle, date, folder);
  if (!declination) return std::nullopt;
  DeviationOffer offer;
  offer.text = DeviationText(declination->degrees);
  offer.sentence = "The field model " + declination->model + " gives " + offer.text +
                   " for the middle of the map on " + FormatDate(date) + ".";
  return offer;
}

}  // namespace orvane
