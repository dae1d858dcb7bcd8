#include "base/number_text.h"
#include "base/text.h"
#include "model/point_names.h"
#include "places/relative_place.h"
#include "trails/metrics.h"

#include <cmath>
#include <optional>
#include <vector>

namespace orvane {

namespace {

/// One stretch of the route: along a trail from one point to another.
struct Leg {
  const Trail* trail;
  const Point* from;
  const Point* to;
};

/// How far along the route the place is: `value` metres, or `value` parts of `whole`.
struct RouteShare {
  double value = 0;
  std::optional<double> whole;
};

/// Takes the text before `word`, found without regard to case, and removes both.
std::optional<std::string_view> TakeBefore(std::string_view& text, std::string_view word) {
  const size_t at = FindTextFolded(text, word);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view before = text.substr(0, at);
  text.remove_prefix(at + word.size());
  return before;
}

std::optional<RouteShare> ReadShare(std::string_view text) {
  const RealPrefix value = ReadReal(text);
  if (value.length == 0) return std::nullopt;
  text.remove_prefix(value.length);
  RouteShare share{value.value, std::nullopt};
  if (!text.empty() && text.front() == '/') {
    const RealPrefix whole = ReadReal(text.substr(1));
    text.remove_prefix(1 + whole.length);
    if (!(whole.value > 0) || share.value < 0 || share.value > whole.value) return std::nullopt;
    share.whole = whole.value;
  }
  if (!text.empty()) return std::nullopt;
  return share;
}

const Point* PlacedPoint(Lookup& lookup, std::string_view name) {
  const Point* point = FindPointByName(lookup.InMap(), nullptr, name);
  return point != nullptr && lookup.IsPlaced(*point) ? point : nullptr;
}

/// Reads the trail names and the point between them; `text` then is what follows " by ".
/// \return no legs if the text has another form
std::vector<Leg> TakeLegs(Lookup& lookup, std::string_view& text, const Point& from,
                          const Point& to) {
  const size_t via = FindTextFolded(text, " via ");
  const size_t by = FindTextFolded(text, " by ");
  if (via >= by) {  // one leg, or no " by " at all
    const auto trailName = TakeBefore(text, " by ");
    const Trail* trail = trailName ? FindTrail(lookup.InMap(), *trailName) : nullptr;
    if (trail == nullptr) return {};
    return {{trail, &from, &to}};
  }
  const auto firstName = TakeBefore(text, " via ");
  const auto middleName = TakeBefore(text, " and ");
  const auto secondName = TakeBefore(text, " by ");
  if (!firstName || !middleName || !secondName) return {};
  const Trail* first = FindTrail(lookup.InMap(), *firstName);
  const Trail* second = FindTrail(lookup.InMap(), *secondName);
  const Point* middle = PlacedPoint(lookup, *middleName);
  if (first == nullptr || second == nullptr || middle == nullptr) return {};
  return {{first, &from, middle}, {second, middle, &to}};
}

}  // namespace

std::optional<LatLon> ResolveAlongTrail(Lookup& lookup, std::string_view text) {
  constexpr std::string_view From = "from ";
  if (CompareNamesN(text, From, From.size()) != 0) return std::nullopt;
  text.remove_prefix(From.size());
  const auto startName = TakeBefore(text, " to ");
  const auto endName = TakeBefore(text, " along ");
  if (!startName || !endName) return std::nullopt;
  const Point* start = PlacedPoint(lookup, *startName);
  const Point* end = PlacedPoint(lookup, *endName);
  if (start == nullptr || end == nullptr) return std::nullopt;
  const std::vector<Leg> legs = TakeLegs(lookup, text, *start, *end);
  const auto share = ReadShare(text);
  if (legs.empty() || !share) return std::nullopt;
  lookup.HangsOnMore();

  double total = 0;
  for (const Leg& leg : legs) {
    const double length = TrailDistanceBetween(*leg.trail, *leg.from, *leg.to);
    if (length < 0) return std::nullopt;  // one of the two is not on the trail
    total += length;
  }
  const double whole = share->whole.value_or(total);
  if (whole == 0) return std::nullopt;
  double target = total / whole * share->value;
  const Leg* leg = &legs.front();
  if (legs.size() > 1) {
    const double first = TrailDistanceBetween(*leg->trail, *leg->from, *leg->to);
    if (target > first) {
      target -= first;
      leg = &legs.back();
    }
  }
  const auto place = TrailPointBetween(*leg->trail, *leg->from, *leg->to, target);
  if (place) return place;
  // Its stretches are taken off one by one, so rounding can miss the very end of a leg.
  const double length = TrailDistanceBetween(*leg->trail, *leg->from, *leg->to);
  const double rest = std::abs(target - length);
  constexpr double Rounding = 1e-9;
  if (length > 0 && rest <= Rounding * length) return leg->to->geo;
  return std::nullopt;
}

}  // namespace orvane
