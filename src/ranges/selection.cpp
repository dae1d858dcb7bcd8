#include "ranges/selection.h"

#include "base/text.h"
#include "model/time_names.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

namespace orvane {

namespace {

/// One element of a template.
struct Element {
  enum class Kind { Star, Any, Byte, Set } kind;
  unsigned char byte = 0;
  bool negated = false;
  std::vector<std::array<unsigned char, 2>> spans;  ///< of a set, both ends included

  bool Fits(char c) const {
    const auto value = static_cast<unsigned char>(c);
    switch (kind) {
      case Kind::Any:
        return true;
      case Kind::Byte:
        return value == byte;
      case Kind::Set:
        return negated != std::any_of(spans.begin(), spans.end(), [&](const auto& span) {
                 return span[0] <= value && value <= span[1];
               });
      default:
        return false;
    }
  }
};

/// Reads a set after its "[". \return nothing if it is never closed
std::optional<Element> TakeSet(std::string_view& rest) {
  Element set{Element::Kind::Set, 0, false, {}};
  if (!rest.empty() && rest.front() == '^' && rest.substr(1, 1) != "]") {
    set.negated = true;
    rest.remove_prefix(1);
  }
  while (!rest.empty() && rest.front() != ']') {
    const auto first = static_cast<unsigned char>(rest.front());
    auto last = first;
    size_t used = 1;
    if (rest.size() > 2 && rest[1] == '-' && rest[2] != ']') {
      last = static_cast<unsigned char>(rest[2]);
      used = 3;
    }
    set.spans.push_back({first, last});
    rest.remove_prefix(used);
  }
  if (rest.empty()) return std::nullopt;
  constexpr size_t SkippedBehindComplement = 2;
  rest.remove_prefix(1);
  if (set.negated) rest.remove_prefix(std::min(rest.size(), SkippedBehindComplement));
  return set;
}

/// \return nothing for a template with a set that is never closed
std::optional<std::vector<Element>> ParseTemplate(std::string_view rest) {
  std::vector<Element> elements;
  while (!rest.empty()) {
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == '[') {
      auto set = TakeSet(rest);
      if (!set) return std::nullopt;
      elements.push_back(std::move(*set));
    } else if (c == '*') {
      if (elements.empty() || elements.back().kind != Element::Kind::Star) {
        elements.push_back({Element::Kind::Star, 0, false, {}});
      }
    } else if (c == '?') {
      elements.push_back({Element::Kind::Any, 0, false, {}});
    } else {
      elements.push_back({Element::Kind::Byte, static_cast<unsigned char>(c), false, {}});
    }
  }
  return elements;
}

/// Only the last star met ever needs to be tried again, further on in the text.
bool Fits(const std::vector<Element>& elements, std::string_view text) {
  constexpr size_t NoStar = static_cast<size_t>(-1);
  size_t element = 0;
  size_t at = 0;
  size_t star = NoStar;
  size_t starAt = 0;
  while (at < text.size()) {
    if (element < elements.size() && elements[element].kind == Element::Kind::Star) {
      star = element++;
      starAt = at;
    } else if (element < elements.size() && elements[element].Fits(text[at])) {
      ++element;
      ++at;
    } else if (star != NoStar) {
      element = star + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
  while (element < elements.size() && elements[element].kind == Element::Kind::Star) ++element;
  return element == elements.size();
}

bool HasTimeLimit(const SearchKey& key) { return key.timeFrom != key.timeTo; }

/// The template of a key such as "Points:Pde*", used as it is, blanks included.
std::optional<std::string_view> TemplateOf(const SearchKey& key) {
  for (const std::string_view prefix : {"points:", "point:"}) {
    if (CompareNamesN(key.type, prefix, prefix.size()) == 0) {
      return std::string_view(key.type).substr(prefix.size());
    }
  }
  return std::nullopt;
}

/// Calls `take(Point&)` for the points of one follow that the keys take: all, if a key without times
/// fits the trail; else those named by a time within the times of a key that does.
template <typename Take>
void ForEachPointOfFollow(const Trail& trail, const std::vector<const SearchKey*>& matching,
                          Take take) {
  const bool all = std::any_of(matching.begin(), matching.end(),
                               [](const SearchKey* key) { return !HasTimeLimit(*key); });
  for (Point* point : trail.points) {
    if (!all) {
      if (!IsTimeName(point->name)) continue;
      const int time = ParseTimeName(point->name);
      if (std::none_of(matching.begin(), matching.end(), [&](const SearchKey* key) {
            return key->timeFrom <= time && time <= key->timeTo;
          })) {
        continue;
      }
    }
    take(*point);
  }
}

/// Calls `take(const Trail&, Point&)` for the points of all follows, in their order.
template <typename Take>
void ForEachFollowPoint(const std::vector<Trail*>& follows,
                        const std::forward_list<SearchKey>& keys, Take take) {
  const bool anyLimit = std::any_of(keys.begin(), keys.end(), HasTimeLimit);
  for (const Trail* trail : follows) {
    if (!anyLimit) {
      for (Point* point : trail->points) take(*trail, *point);
      continue;
    }
    std::vector<const SearchKey*> matching;
    for (const SearchKey& key : keys) {
      if (TrailMatchesKey(*trail, key)) matching.push_back(&key);
    }
    ForEachPointOfFollow(*trail, matching, [&](Point& point) { take(*trail, point); });
  }
}

}  // namespace

bool WildcardMatch(std::string_view pattern, std::string_view text) {
  const auto elements = ParseTemplate(pattern);
  return elements && Fits(*elements, text);
}

bool TrailMatchesKey(const Trail& trail, const SearchKey& key) {
  if (!SameName(trail.type, key.type)) return false;
  if (key.focalAnimal && (!trail.focalAnimal || !SameName(*trail.focalAnimal, *key.focalAnimal))) {
    return false;
  }
  return key.dateFrom == 0 || (key.dateFrom <= trail.date && trail.date <= key.dateTo);
}

std::vector<Trail*> SelectFollows(Map& map, const std::forward_list<SearchKey>& keys) {
  std::vector<Trail*> follows;
  for (Trail& trail : map.trails) {
    if (std::any_of(keys.begin(), keys.end(),
                    [&](const SearchKey& key) { return TrailMatchesKey(trail, key); })) {
      follows.push_back(&trail);
    }
  }
  std::reverse(follows.begin(), follows.end());
  return follows;
}

std::vector<Point*> CollectRangePoints(const Map& map, const std::vector<Trail*>& follows,
                                       const std::forward_list<SearchKey>& keys) {
  std::vector<Point*> points;
  ForEachFollowPoint(follows, keys, [&](const Trail&, Point& point) { points.push_back(&point); });
  for (const SearchKey& key : keys) {
    if (const auto pattern = TemplateOf(key)) AddPointsByTemplate(map, *pattern, points);
  }
  std::reverse(points.begin(), points.end());
  return points;
}

std::vector<const Trail*> FollowsOfPoints(const Range& range) {
  std::vector<const Trail*> follows;
  ForEachFollowPoint(range.follows, range.keys,
                     [&](const Trail& trail, Point&) { follows.push_back(&trail); });
  follows.resize(range.points.size(), nullptr);
  std::reverse(follows.begin(), follows.end());
  return follows;
}

void AddPointsByTemplate(const Map& map, std::string_view pattern, std::vector<Point*>& points) {
  const auto elements = ParseTemplate(pattern);
  if (!elements) return;
  const auto fits = [&](const Point& point) {
    return Fits(*elements, point.name) ||
           std::any_of(point.synonyms.begin(), point.synonyms.end(),
                       [&](const std::string& name) { return Fits(*elements, name); });
  };
  // A point is in the buckets once for each of its names; its synonyms are compared only once.
  std::unordered_map<const Point*, bool> answers;
  const auto fitsAgain = [&](const Point& point) {
    const auto [answer, isNew] = answers.try_emplace(&point);
    if (isNew) answer->second = fits(point);
    return answer->second;
  };
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) {
      if (point->synonyms.empty() ? fits(*point) : fitsAgain(*point)) points.push_back(point);
    }
  }
}

}  // namespace orvane
