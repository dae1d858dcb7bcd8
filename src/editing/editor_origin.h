#pragma once

#include "base/file_mark.h"
#include "model/map.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// What an editor was opened with, to find its trail or range again in a map that was read again,
/// also in a later run of the program, and to see whether it has changed since.
///
/// The identity does not suffice: a map can have several follows of one animal on one date, and
/// several ranges of one name. So the content of each of them counts too, and their order.

/// The records of a map and its basis chain that have the same identity.
struct EqualRecords {
  std::vector<FileMark> marks;  ///< of the content of each, in the order of the lists; never empty
  size_t place = 0;             ///< of the record itself; below the size of `marks`

  const FileMark& Own() const { return marks[place]; }
  FileMark& Own() { return marks[place]; }
};

struct TrailOrigin {
  Trail trail;  ///< a copy without its points
  EqualRecords equals;
};

struct RangeOrigin {
  std::optional<std::string> name;
  std::optional<std::string> note;
  EqualRecords equals;
};

/// The mark of a trail's identity, its points and their readings, with the digits that a file keeps:
/// saving and reading does not change it. The order of a point's readings and the looks don't count.
FileMark ContentMark(const Trail& trail);
/// The mark of a range's name and keys, likewise; the order of the keys doesn't count.
FileMark ContentMark(const Range& range);

/// The trails with the identity of `like`: its name, or without one its type, date and focal animal.
/// For a contour, contours.
/// \return those of the map, then those of its basis chain, each in the order of its list
std::vector<Trail*> EqualTrails(Map& map, const Trail& like);

/// \return true if the map or its basis chain has the trail in a list; contours too
bool HoldsTrail(Map& map, const Trail& trail);

/// \return true if an edit removed it from the map or from one in its basis chain, so that an undo
///         can put it back
bool IsRemoved(const Map& map, const Trail& trail);
bool IsRemoved(const Map& map, const Range& range);

/// \param trail  of the map or its basis chain
TrailOrigin OriginOf(Map& map, const Trail& trail);
RangeOrigin OriginOf(Map& map, const Range& range);

/// The trail or range of an origin: the one with the same content. If none has it, the one at its
/// place among those that are not known to be others, unless there are fewer of that identity than
/// before. A contour is found by its content only.
/// \return null if none fits
Trail* FindAgain(Map& map, const TrailOrigin& origin);
Range* FindAgain(Map& map, const RangeOrigin& origin);

}  // namespace orvane
