#pragma once

#include "base/file_mark.h"
#include "model/map_memory.h"
#include "model/point_store.h"
#include "model/records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <forward_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvane {

struct NameIndex;
struct Workspace;

/// Bits of `Map::flags`.
enum MapFlag : std::uint32_t {
  MapDirty = 1,         ///< changed since the last save
  MapUntitled = 2,      ///< made by New; has no file yet
  MapHasDeviation = 4,  ///< the deviation was given; otherwise that of the basis is used
  MapUnlikeFile = 8,    ///< got a submap, basis or style since it was read, but is not marked dirty
};

/// Number of buckets of `Map::pointHash`. The buckets determine the order of loose points in memory
/// and in the file; lookups use `NameTable`.
constexpr size_t NameBuckets = 32;

/// A list of points of a map, newest first: new ones are pushed to its front. It is in the map's
/// memory in pieces of 64, so that a walk need not read one item to know where the next is.
using PointList = std::deque<Point*, MapAllocator<Point*>>;
/// The buckets of `Map::pointHash`.
using PointBuckets = std::array<PointList, NameBuckets>;

/// Finds the points of one map by main name or synonym, without regard to case, in constant time.
/// It has an entry for each node of `Map::pointHash`, and gives the results of a walk over them.
class NameTable {
 public:
  explicit NameTable(MapMemory& memory) : entries_(&memory) {}

  /// Adds an entry for `name`, one of the names of `point`. All entries of the point in that bucket
  /// become the newest, since a walk over the bucket now meets the point first.
  void Add(Point& point, std::string_view name);
  /// Removes the newest entry of `point` for `name`, if there is one.
  void Remove(const Point& point, std::string_view name);
  /// \return the newest entry whose point has `name` as its main name, else the newest one with it
  ///         as a synonym, else null
  Point* Find(std::string_view name) const;
  /// \return true if there is an entry of `point` for `name`
  bool Holds(const Point& point, std::string_view name) const;

  /// Exchanges the entries of two tables, and their memories.
  void Swap(NameTable& other) noexcept;

 private:
  struct Entry {
    Point* point;
    std::uint32_t hash;
    std::uint32_t next;
    std::uint32_t synonym;  ///< index in `synonyms_`; none if entered as the main name
  };
  bool MeansSynonym(const Entry& entry, std::string_view name) const;
  std::uint32_t AgeOf(std::uint32_t index, size_t bucket) const;
  void Insert(const Entry& entry);
  void Grow();

  std::deque<Entry, MapAllocator<Entry>> entries_;  ///< oldest first
  std::vector<std::uint32_t> heads_;                ///< index of the newest entry of each slot
  std::vector<std::string> synonyms_;  ///< copies, so that no lookup walks those of a point
  /// By bucket, for its points with synonyms: index of the point's newest entry.
  std::array<std::unordered_map<const Point*, std::uint32_t>, NameBuckets> newest_;
};

/// \return empty buckets in `memory`
PointBuckets MakeBuckets(MapMemory& memory);

/// Records that an edit removed from a map. They keep their addresses, so that an edit can be
/// undone and pointers to them stay valid. Drawing, solving and saving ignore these lists.
struct RemovedRecords {
  std::forward_list<Trail> trails;
  std::forward_list<Range> ranges;
  std::forward_list<Grid> grids;
  std::forward_list<GridShade> gridShades;
};

/// A chain of legs between two junctions of the survey, as the solver found it before it spread the
/// chain's closing error over its points.
struct ClosedChain {
  const Point* from = nullptr;  ///< the junction at which the chain was walked from
  const Point* to = nullptr;    ///< the junction that it leads to; may be the same
  int legs = 0;                 ///< means of the shots between two points
  double length = 0;            ///< metres along the slope, not 0
  double north = 0;             ///< metres: where the chain puts `to`, minus where it was solved
  double east = 0;              ///< metres, likewise
  std::optional<double> up;     ///< metres, likewise; none unless both ends have an altitude
};

/// A point of a map below that had no place when a map was solved, and what it had gathered by then.
/// That solve can give it more, even a place.
struct UnplacedBelow {
  Point* point = nullptr;
  double latSum = 0;
  double lonSum = 0;
  float altSum = 0;
  std::int64_t positionWeight = 0;
  std::int64_t altitudeWeight = 0;

  friend bool operator==(const UnplacedBelow&, const UnplacedBelow&) = default;
};

/// One document: everything that a map file describes. Never moved.
struct Map {
  std::unique_ptr<MapMemory> pointMemory = std::make_unique<MapMemory>();
  /// Memory of the lists of points and of the names. They are walked without their points or in
  /// another order, so they are kept close together.
  std::unique_ptr<MapMemory> listMemory = std::make_unique<MapMemory>();

  Workspace* workspace = nullptr;  ///< the one that owns the map
  std::string fileName;            ///< the whole path of the file, or "Untitled"
  /// The name of the file as the user gave it, for messages. It can be relative to the working
  /// directory.
  std::string shownName;
  /// Of the file when it was last read or written; none if it has been neither. If the file has
  /// other bytes now, somebody else has changed it, and a save would destroy that.
  std::optional<FileMark> fileMark;
  /// The files that the file included when it was last read, by whole path, each with its mark at
  /// that time; none for one that could not be read. A save includes nothing.
  std::map<std::string, std::optional<FileMark>> includedFiles;
  Map* basis = nullptr;          ///< the map that this one builds on
  double magneticDeviation = 0;  ///< degrees, added to compass bearings
  std::uint32_t flags = 0;       ///< `MapFlag` bits
  PackedDate date = 0;           ///< stays 0 for maps read from a file
  int contourEnabled = 0;        ///< contours are offered while this and the interval are not 0
  int contourInterval = 0;       ///< metres between contour levels
  std::array<std::optional<std::string>, 3> smName;  ///< names of SM1, SM2, SM3

  /// Every name and synonym of an ordinary named point, by `NameBucket`; newest first. Change it
  /// only with `AddPointName` and `RemovePointName`, which update `names` too.
  PointBuckets pointHash = MakeBuckets(*listMemory);
  NameTable names{*listMemory};

  PointList loosePoints{listMemory.get()};     ///< named points on no trail, newest first
  PointList namelessPoints{listMemory.get()};  ///< points without name or trail, newest first
  Point* origin = nullptr;

  std::forward_list<Trail> trails;         ///< file order once a file is read; new ones in front
  std::forward_list<Trail> contourTrails;  ///< generated contour lines; never saved
  std::forward_list<Trail> continuousContours;  ///< the same without gaps, for drawing; never saved
  ScratchPoints contourPoints;                  ///< the vertices of both
  std::forward_list<Range> ranges;              ///< newest first
  std::forward_list<RangeIntersection> intersections;  ///< newest first; never saved
  std::forward_list<Grid> grids;                       ///< newest first
  std::forward_list<GridShade> gridShades;             ///< newest first
  RemovedRecords removed;
  /// What the last solve of this map closed, in the order in which it did; empty if the map was not
  /// solved. Never saved.
  std::vector<ClosedChain> closedChains;
  /// Those that the solves of this map have met in its bases. An edit takes back what they gave.
  std::vector<UnplacedBelow> unplacedBelow;
  std::vector<std::string> comments;  ///< `#` lines, each with its `#`, in file order
  std::vector<std::string>
      credits;  ///< lines with a `CreditTagLength`, sign included, in file order

  const NameIndex* nameIndex = nullptr;  ///< during a `NameIndexScope`; null otherwise

  PointStore pointStore{pointMemory.get()};  ///< every point that this map made
  std::deque<Link> rayStore;                 ///< the rays of those points
};

/// \return true for a map that has changed since it was last saved
inline bool IsDirty(const Map& map) { return (map.flags & MapDirty) != 0; }

/// \return true for a map that was made by New and has not been saved since
inline bool IsUntitled(const Map& map) { return (map.flags & MapUntitled) != 0; }

/// Calls `visit(Point&)` for each node of the map's lists, always in this order: each trail with
/// its points, then the loose points, then the nameless ones. A point in several lists is visited
/// several times.
template <typename Visit>
void ForEachPoint(const Map& map, Visit visit) {
  for (const Trail& trail : map.trails) {
    for (Point* point : trail.points) visit(*point);
  }
  for (Point* point : map.loosePoints) visit(*point);
  for (Point* point : map.namelessPoints) visit(*point);
}

/// Exchanges the contents of two maps; each keeps its address, its name and its workspace. Pointers
/// to points, trails and ranges stay valid; these now belong to the other map.
void SwapContents(Map& a, Map& b) noexcept;

/// \return the bytes of the copyright sign at the front of a line, 1 in Latin-1 and 2 in UTF-8; 0 if
///         the line is not a credit line
size_t CreditTagLength(std::string_view line);

/// Makes a point of `map` with the given name, in no list.
Point& MakePoint(Map& map, std::string_view name);

}  // namespace orvane
