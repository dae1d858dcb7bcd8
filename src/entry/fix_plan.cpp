#include "entry/fix_plan.h"

#include "base/number_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "entry/fix_cells.h"
#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <unordered_set>

// The fixes of all animals are sorted once, by animal and time. Then each animal is a run of the
// order, which every filter makes shorter.

namespace orvane {

namespace {

constexpr int MinutesInHour = 60;

/// Reads "+08:00". \return nothing for any other text
std::optional<int> ReadOffset(std::string_view text) {
  constexpr size_t Length = 6;
  if (text.size() != Length || (text[0] != '+' && text[0] != '-') || text[3] != ':') {
    return std::nullopt;
  }
  const std::string_view hours = text.substr(1, 2);
  const std::string_view minutes = text.substr(4);
  for (const std::string_view digits : {hours, minutes}) {
    if (!IsDigit(digits[0]) || !IsDigit(digits[1])) return std::nullopt;
  }
  const int cut = ReadInt32(minutes);
  const int whole = ReadInt32(hours) * MinutesInHour + cut;
  if (cut >= MinutesInHour || whole > MostOffsetMinutes) return std::nullopt;
  return text[0] == '-' ? -whole : whole;
}

double MetersBetween(const Fix& a, const Fix& b) {
  return GreatCircleMeters({a.lat, a.lon}, {b.lat, b.lon});
}

double SecondsBetween(const Fix& a, const Fix& b) {
  return static_cast<double>(b.utc - a.utc) / static_cast<double>(SecondMs);
}

/// Texts without regard to case. The parts of a key are separated by a byte that no name has.
using Keys = std::unordered_set<std::string>;

std::string TrailKey(std::string_view type, PackedDate date, std::string_view animal) {
  return std::to_string(date) + '\n' + FoldedText(type) + '\n' + FoldedText(animal);
}

Keys TrailsOf(const Map& map) {
  Keys keys;
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    for (const Trail& trail : level->trails) {
      keys.insert(TrailKey(trail.type, trail.date, trail.focalAnimal.value_or("")));
    }
  }
  return keys;
}

/// Makes a plan animal by animal.
class Planner {
 public:
  Planner(FixPlan& plan, const FixFilters& filters, const Map& map)
      : plan_(plan), filters_(filters), known_(TrailsOf(map)) {}

  /// \param run  the fixes of one animal, by time
  /// \return true if any is left after the filters
  bool PlanAnimal(std::vector<std::uint32_t> run, const std::string& name) {
    LeaveOutOutliers(run);
    LeaveOutRepeats(run);
    LeaveOutTooFast(run);
    TakeEvery(run);
    LeaveOutNear(run);
    if (run.empty()) return false;
    std::stable_sort(run.begin(), run.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return DayOfFix(a) < DayOfFix(b); });
    for (size_t first = 0; first < run.size();) {
      size_t end = first;
      while (end < run.size() && DayOfFix(run[end]) == DayOfFix(run[first])) ++end;
      PlanTrail(run, first, end, name);
      first = end;
    }
    return true;
  }

 private:
  Fix& At(std::uint32_t index) { return plan_.fixes[index]; }
  std::int64_t DayOfFix(std::uint32_t index) { return DividedDown(At(index).local, DayMs); }

  /// Keeps those for which `keeps` is true; the others get the state.
  template <typename Keeps>
  void Filter(std::vector<std::uint32_t>& run, FixState state, Keeps keeps) {
    std::erase_if(run, [&](std::uint32_t index) {
      if (keeps(At(index))) return false;
      At(index).state = state;
      return true;
    });
  }

  void LeaveOutOutliers(std::vector<std::uint32_t>& run) {
    if (filters_.keepsOutliers) return;
    Filter(run, FixState::Outlier, [](const Fix& fix) { return !fix.isOutlier; });
  }

  /// When the clocks are put back, a minute comes again after others, so all that were kept count.
  void LeaveOutRepeats(std::vector<std::uint32_t>& run) {
    std::vector<std::int64_t> kept;  // ascending
    Filter(run, FixState::Repeat, [&](const Fix& fix) {
      const std::int64_t minute = MinuteOfLocal(fix.local);
      if (kept.empty() || minute > kept.back()) {
        kept.push_back(minute);
        return true;
      }
      const auto place = std::lower_bound(kept.begin(), kept.end(), minute);
      if (*place == minute) return false;
      kept.insert(place, minute);
      return true;
    });
  }

  void LeaveOutTooFast(std::vector<std::uint32_t>& run) {
    constexpr double KilometersPerHour = 3.6;  // of a metre per second
    if (filters_.maxSpeed <= 0) return;
    const Fix* last = nullptr;
    Filter(run, FixState::TooFast, [&](const Fix& fix) {
      if (last != nullptr) {
        const double speed =
            MetersBetween(*last, fix) / SecondsBetween(*last, fix) * KilometersPerHour;
        if (!(speed <= filters_.maxSpeed)) {
          plan_.speeds[static_cast<std::uint32_t>(&fix - plan_.fixes.data())] = speed;
          return false;
        }
      }
      last = &fix;
      return true;
    });
  }

  void TakeEvery(std::vector<std::uint32_t>& run) {
    std::uint64_t number = 0;
    Filter(run, FixState::Thinned, [&](const Fix&) { return number++ % filters_.every == 0; });
  }

  void LeaveOutNear(std::vector<std::uint32_t>& run) {
    constexpr double SecondsPerMinute = 60;
    if (filters_.minMinutes <= 0 && filters_.minMeters <= 0) return;
    // Where the clocks are put back at midnight, fixes of two days alternate.
    std::map<std::int64_t, const Fix*> lastOf;
    Filter(run, FixState::Thinned, [&](const Fix& fix) {
      const Fix*& last = lastOf[DividedDown(fix.local, DayMs)];
      if (last != nullptr &&
          !(SecondsBetween(*last, fix) >= filters_.minMinutes * SecondsPerMinute &&
            MetersBetween(*last, fix) >= filters_.minMeters)) {
        return false;
      }
      last = &fix;
      return true;
    });
  }

  void PlanTrail(const std::vector<std::uint32_t>& run, size_t first, size_t end,
                 const std::string& name) {
    const std::uint32_t animal = At(run[first]).animal;
    const PackedDate date = DateOfLocal(At(run[first]).local);
    if (known_.contains(TrailKey(plan_.types[animal], date, name))) {
      for (size_t i = first; i < end; ++i) At(run[i]).state = FixState::AlreadyThere;
      return;
    }
    plan_.trails.push_back({animal, date, plan_.order.size(), end - first});
    plan_.order.insert(plan_.order.end(), run.begin() + static_cast<std::ptrdiff_t>(first),
                       run.begin() + static_cast<std::ptrdiff_t>(end));
  }

  FixPlan& plan_;
  const FixFilters& filters_;
  Keys known_;
};

/// Gives each fix its local time.
void SetClock(FixPlan& plan, const FixClock& clock) {
  double sum = 0;
  for (const Fix& fix : plan.fixes) sum += fix.lon;
  if (!plan.fixes.empty()) plan.meanLon = sum / static_cast<double>(plan.fixes.size());
  plan.offsetMinutes = clock.offsetMinutes.value_or(UsualOffset(plan.meanLon));
  for (Fix& fix : plan.fixes) {
    fix.local =
        fix.utc + (clock.zone ? clock.zone->OffsetAt(DividedDown(fix.utc, SecondMs)) * SecondMs
                              : plan.offsetMinutes * MinuteMs);
  }
}

/// \return the indexes of the fixes by animal and time; equal times in the order of the table
std::vector<std::uint32_t> SortedFixes(const std::vector<Fix>& fixes) {
  std::vector<std::uint32_t> order(fixes.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto isBefore = [&](std::uint32_t a, std::uint32_t b) {
    return fixes[a].animal != fixes[b].animal ? fixes[a].animal < fixes[b].animal
                                              : fixes[a].utc < fixes[b].utc;
  };
  if (!std::is_sorted(order.begin(), order.end(), isBefore)) {
    std::stable_sort(order.begin(), order.end(), isBefore);
  }
  return order;
}

std::string TypeOf(const FixAnimal& animal, const std::string& chosen) {
  if (!chosen.empty()) return chosen;
  return animal.species.empty() ? "Animal" : animal.species;
}

}  // namespace

std::optional<FixClock> ReadFixClock(const std::string& text) {
  FixClock clock;
  if (text == "auto") return clock;
  clock.offsetMinutes = ReadOffset(text);
  if (clock.offsetMinutes) return clock;
  clock.zone = FindTimeZone(text);
  if (!clock.zone) return std::nullopt;
  return clock;
}

FixPlan PlanFixes(FixTable& table, const FixOptions& options, const Map& map) {
  FixPlan plan;
  plan.fixes = std::move(table.fixes);
  table.fixes.clear();
  SetClock(plan, options.clock);
  const std::string chosen = WithoutControls(CutText(options.type, LongestAnimalName));
  for (const FixAnimal& animal : table.animals) plan.types.push_back(TypeOf(animal, chosen));
  const std::vector<std::uint32_t> sorted = SortedFixes(plan.fixes);
  Keys ranges;
  for (const Range& range : map.ranges) ranges.insert(FoldedText(range.name.value_or("")));
  Planner planner(plan, options.filters, map);
  for (auto begin = sorted.begin(); begin != sorted.end();) {
    const std::uint32_t animal = plan.fixes[*begin].animal;
    const auto end = std::find_if(begin, sorted.end(), [&](std::uint32_t index) {
      return plan.fixes[index].animal != animal;
    });
    const std::string& name = table.animals[animal].name;
    const bool isLeft = planner.PlanAnimal({begin, end}, name);
    if (isLeft && options.makesRanges && ranges.insert(FoldedText(name)).second) {
      plan.ranges.push_back(animal);
    }
    begin = end;
  }
  for (const Fix& fix : plan.fixes) ++plan.counts[static_cast<size_t>(fix.state)];
  for (const BadFixRow& row : table.badRows) ++plan.counts[static_cast<size_t>(row.state)];
  return plan;
}

}  // namespace orvane
