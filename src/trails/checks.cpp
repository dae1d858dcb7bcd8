#include "trails/checks.h"

#include "base/number_text.h"
#include "base/text.h"
#include "model/point_origin.h"
#include "model/time_names.h"
#include "trails/positions_on_trail.h"
#include "trails/trail_names.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

namespace orvane {
namespace {

/// Warnings about points that are on a trail twice.
constexpr int MostRepeats = 4;
/// Warnings of one check of the order, unless all are wanted.
constexpr int MostOrderWarnings = 5;

/// The differences between the three checks of the order.
struct OrderCheck {
  std::function<std::optional<double>(const Point&)> value;
  std::function<std::string(double)> text;  ///< of a value, as the warnings show it
  bool acceptsEnds = false;                 ///< the points named "begin" and "end" need no value
};

/// The state of the check of one trail.
struct OrderState {
  double previous = -1;  ///< -1 for none, so a value of -1 never counts as a predecessor
  int direction = 0;     ///< 1 if values rise, -1 if they fall, 0 while that is open
  int warnings = 0;
  bool strangerNoted = false;
};

/// Warns of a point without a value on a trail whose points have them.
void NoteStranger(const Trail& trail, const Point& point, bool showAll, OrderState& state,
                  Messages& messages) {
  if (state.strangerNoted && !showAll) return;
  const OriginScope about = AboutPoint(messages, point);
  NoteWarning(messages, "Point %s occurs on a trail it does not seem to belong on, %s",
              {ShownName(point), ShownName(trail)});
  state.strangerNoted = true;
}

/// Takes the next value.
/// \return what is wrong with it, as the middle of a warning; null if it fits
const char* TakeValue(double value, OrderState& state) {
  const double previous = state.previous;
  state.previous = value;
  if (previous == -1) return nullptr;
  if (value == previous) return "twice";
  const int step = value > previous ? 1 : -1;
  if (state.direction == 0) state.direction = step;
  return step == state.direction ? nullptr : "out of order";
}

bool CheckOrder(const Trail& trail, const OrderCheck& check, bool showAll, Messages& messages) {
  const auto hasValue = [&](const Point* point) { return check.value(*point).has_value(); };
  if (std::none_of(trail.points.begin(), trail.points.end(), hasValue)) return false;
  OrderState state;
  for (const Point* point : trail.points) {
    if (IsHiddenName(point->name)) continue;
    const std::optional<double> value = check.value(*point);
    if (!value) {
      const bool isEnd = check.acceptsEnds && (IsTrailNameWith(trail, *point, "end") ||
                                               IsTrailNameWith(trail, *point, "begin"));
      if (!isEnd) NoteStranger(trail, *point, showAll, state, messages);
      continue;
    }
    const char* fault = TakeValue(*value, state);
    if (fault == nullptr) continue;
    ++state.warnings;
    if (state.warnings > MostOrderWarnings && !showAll) {
      NoteWarning(messages, "Too many warnings for trail %s", {ShownName(trail)});
      return true;
    }
    const OriginScope about = AboutPoint(messages, *point);
    NoteWarning(messages, "Point %s (%s) occurs %s on trail %s",
                {check.text(*value), ShownName(*point), fault, ShownName(trail)});
  }
  return true;
}

std::string WholeNumberText(double value) { return std::to_string(static_cast<int>(value)); }

std::string GeneralText(double value) { return FormatGeneral(value); }

/// "%d:%02d" of minutes after midnight.
std::string ClockText(double value) {
  const int time = static_cast<int>(value);
  const int minutes = time % 60;
  const char* padding = minutes >= 0 && minutes < 10 ? "0" : "";
  return std::to_string(time / 60) + ":" + padding + std::to_string(minutes);
}

void ClearVisited(const Trail& trail) {
  for (Point* point : trail.points) point->flags &= ~std::uint32_t{PointVisited};
}

/// Warns of points that are on the trail more than once. The last node may close the trail.
void CheckRepeats(const Trail& trail, Messages& messages) {
  ClearVisited(trail);
  int repeats = 0;
  for (size_t i = 0; i < trail.points.size(); ++i) {
    Point& point = *trail.points[i];
    const bool isLast = i + 1 == trail.points.size();
    if ((point.flags & PointVisited) != 0 && !isLast && ++repeats <= MostRepeats) {
      const OriginScope about = AboutPoint(messages, point);
      NoteWarning(messages, "Point %s occurs twice on trail %s",
                  {ShownName(point), ShownName(trail)});
    }
    point.flags |= PointVisited;
  }
}

}  // namespace

bool CheckTrail(const Trail& trail, bool showAll, Messages& messages) {
  CheckRepeats(trail, messages);
  if (!trail.name) return CheckTrailTimes(trail, showAll, messages);
  return CheckTrailNumbers(trail, showAll, messages) || CheckTrailValues(trail, showAll, messages);
}

bool CheckTrailNumbers(const Trail& trail, bool showAll, Messages& messages) {
  OrderCheck check;
  check.value = [&](const Point& point) -> std::optional<double> {
    const auto text = TrailNumberText(trail, point);
    if (!text) return std::nullopt;
    return TrailNumberValue(*text);
  };
  check.text = WholeNumberText;
  check.acceptsEnds = true;
  return CheckOrder(trail, check, showAll, messages);
}

bool CheckTrailValues(const Trail& trail, bool showAll, Messages& messages) {
  OrderCheck check;
  check.value = [](const Point& point) -> std::optional<double> {
    const std::string* text = PointNumericSynonym(point);
    if (text == nullptr) return std::nullopt;
    return ReadReal(*text).value;
  };
  check.text = GeneralText;
  return CheckOrder(trail, check, showAll, messages);
}

bool CheckTrailTimes(const Trail& trail, bool showAll, Messages& messages) {
  OrderCheck check;
  check.value = [](const Point& point) -> std::optional<double> {
    const std::string* text = PointTimeName(point);
    if (text == nullptr) return std::nullopt;
    return ParseTimeName(*text);
  };
  check.text = ClockText;
  return CheckOrder(trail, check, showAll, messages);
}

void CheckAllTrails(const Map& map, Messages& messages) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    for (const Trail& trail : each->trails) CheckTrail(trail, false, messages);
  }
}

}  // namespace orvane
