#pragma once

#include "model/map.h"
#include "model/unused_records.h"

#include <cstddef>
#include <forward_list>
#include <utility>
#include <vector>

namespace orvane {

/// What some maps held before they were read again, so that this can be undone. The records keep
/// their addresses here: pointers to them are valid as long as this lives, whichever side they are
/// on.
class FormerContents {
 public:
  /// Makes room, so that so many calls of `Take` can't fail.
  void Reserve(size_t maps) { pairs_.reserve(maps); }
  /// Takes over what `SwapContents` has left in a map of another workspace.
  /// \param map   has the new contents
  /// \param from  the list with the other map, in front of which `before` is
  void Take(Map& map, std::forward_list<Map>& from, std::forward_list<Map>::iterator before);

  /// Exchanges the contents with those of the maps. Each map keeps what it knows of its file, and
  /// whether it is marked as changed.
  void Swap();

  /// \return the maps, in the order in which they were taken over
  std::vector<Map*> Maps() const;
  bool Holds(const Map& map) const;

  /// Keeps the records of open maps to which these contents lead.
  void KeepLeads(UnusedRecords& records) const;

  /// \return the memory that this holds, with the records that edits had removed from these maps; in
  ///         bytes, close to the truth for large maps
  size_t Bytes() const;

 private:
  std::forward_list<Map> holders_;
  std::vector<std::pair<Map*, Map*>> pairs_;  ///< each map, and what holds its other contents
};

}  // namespace orvane
