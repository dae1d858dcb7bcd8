#include "model/time_names.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

constexpr size_t ClockDigits = 4;  // 0830
constexpr int MinutesPerHour = 60;

size_t SkipDigits(std::string_view text, size_t from) {
  while (from < text.size() && IsDigit(text[from])) ++from;
  return from;
}

bool EndsOrSpans(std::string_view text, size_t at) { return at == text.size() || text[at] == '-'; }

int FitInt(long value) {
  return static_cast<int>(std::clamp(value, long{std::numeric_limits<int>::min()},
                                     long{std::numeric_limits<int>::max()}));
}

/// Keeps sums of two numbers far from the ends of 64 bits.
long ReadPart(std::string_view text, size_t* length) {
  const IntegerPrefix read = ReadInteger(text);
  *length = read.length;
  return std::clamp(read.value, -1'000'000'000'000L, 1'000'000'000'000L);
}

/// The first point at or after `from` that has a time name; the end if there is none.
size_t NextTimePoint(const std::vector<Point*>& points, size_t from) {
  while (from < points.size() && PointTimeName(*points[from]) == nullptr) ++from;
  return from;
}

}  // namespace

bool IsTimeName(std::string_view name) {
  const size_t digits = SkipDigits(name, 0);
  if (EndsOrSpans(name, digits)) return digits == ClockDigits;
  if (name[digits] != ':') return false;
  return EndsOrSpans(name, SkipDigits(name, digits + 1));
}

int ParseTimeName(std::string_view name) {
  size_t at = 0;
  const long value = ReadPart(name, &at);
  long hours = value / 100;
  long minutes = value % 100;
  if (at < name.size() && name[at] == ':') {
    hours = value;
    size_t length = 0;
    minutes = ReadPart(name.substr(at + 1), &length);
    at += 1 + length;
  }
  if (hours < 12 && CompareNames(name.substr(at, 2), "pm") == 0) hours += 12;
  return FitInt(hours * MinutesPerHour + minutes);
}

int TimeNameDuration(std::string_view name) {
  const size_t dash = name.find('-');
  if (dash == std::string_view::npos || !IsTimeName(name.substr(dash + 1))) return -1;
  return FitInt(long{ParseTimeName(name.substr(dash + 1))} - ParseTimeName(name));
}

const std::string* PointTimeName(const Point& point) {
  if (IsTimeName(point.name)) return &point.name;
  const auto found = std::find_if(point.synonyms.begin(), point.synonyms.end(),
                                  [](const std::string& name) { return IsTimeName(name); });
  return found == point.synonyms.end() ? nullptr : &*found;
}

void FillPointTimes(Trail& trail) {
  const std::vector<Point*>& points = trail.points;
  if (points.empty() || !IsTimeName(points.front()->name)) return;
  for (size_t current = 0; current < points.size();) {
    const size_t following = NextTimePoint(points, current + 1);
    Point& point = *points[current];
    const std::string& name = *PointTimeName(point);
    const int span = TimeNameDuration(name);
    if (span >= 1) {
      point.duration = span;
      point.timeOfDay = ParseTimeName(name);
    } else if (following < points.size()) {
      point.timeOfDay = ParseTimeName(name);
      point.duration =
          FitInt(long{ParseTimeName(*PointTimeName(*points[following]))} - point.timeOfDay);
    }
    current = following;
  }
}

}  // namespace orvane
