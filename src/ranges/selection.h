#pragma once

#include "model/map.h"

#include <forward_list>
#include <string_view>
#include <vector>

namespace orvane {

/// What belongs to a range: the trails and points that its search keys select.

/// True if a text fits a template, with regard to case: `*` any run, `?` any character, `[a-z]` a
/// set with ranges, `[^a-z]` its complement. A template goes on two characters behind the `]` of a
/// complement, since templates in use are written so; what that skips past the end counts as the
/// end. A set that is never closed fits nothing. Linear in the text for each star.
bool WildcardMatch(std::string_view pattern, std::string_view text);

/// True if the trail's type, focal animal and date fit the key. Times of day are no part of it. A
/// key with a first date and no last one fits no trail.
bool TrailMatchesKey(const Trail& trail, const SearchKey& key);

/// \return the trails of this map (not of its basis) that fit some key, the last of the map first
std::vector<Trail*> SelectFollows(Map& map, const std::forward_list<SearchKey>& keys);

/// The points of the follows, or of those within the times of day of their keys, and the points
/// whose names fit a key of the form "points:template".
/// \return newest first; a point stands there as often as it was met
std::vector<Point*> CollectRangePoints(const Map& map, const std::vector<Trail*>& follows,
                                       const std::forward_list<SearchKey>& keys);

/// Adds the points of this map with a name or synonym that fits the template to the end of
/// `points`, once for each entry in the map's buckets.
void AddPointsByTemplate(const Map& map, std::string_view pattern, std::vector<Point*>& points);

}  // namespace orvane
