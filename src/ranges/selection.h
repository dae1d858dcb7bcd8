#pragma once

#include "model/map.h"

#include <forward_list>
#include <string_view>
#include <vector>

namespace orvane {

/// The trails and points that the search keys of a range select.

/// True if a text fits a template; case matters: `*` any run, `?` any character, `[a-z]` a set with
/// ranges, `[^a-z]` its complement. After the `]` of a complement two characters are skipped (see
/// docs/compatibility.md); if that passes the end it counts as the end. A set that is never closed
/// fits nothing. Linear in the text for each star.
bool WildcardMatch(std::string_view pattern, std::string_view text);

/// True if the trail's type, focal animal and date fit the key. Times of day do not count here. A
/// key with only a first date fits no trail.
bool TrailMatchesKey(const Trail& trail, const SearchKey& key);

/// \return the trails of this map (not of its basis) that fit some key, the last in the map first
std::vector<Trail*> SelectFollows(Map& map, const std::forward_list<SearchKey>& keys);

/// The points of the follows, or of those within the times of day of their keys, and the points
/// whose names fit a key of the form "points:template".
/// \return newest first; a point is listed each time it is met
std::vector<Point*> CollectRangePoints(const Map& map, const std::vector<Trail*>& follows,
                                       const std::forward_list<SearchKey>& keys);

/// The follow by which each of the range's `points` came into them.
/// \return one for each point, in their order; null for a point that came by a template
std::vector<const Trail*> FollowsOfPoints(const Range& range);

/// Adds the points of this map with a name or synonym that fits the template to the end of
/// `points`, once for each entry in the map's buckets.
void AddPointsByTemplate(const Map& map, std::string_view pattern, std::vector<Point*>& points);

}  // namespace orvane
