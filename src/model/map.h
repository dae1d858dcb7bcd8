#pragma once

#include "base/file_mark.h"
#include "model/map_memory.h"
#include "model/records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <forward_list>
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
  MapHasDeviation = 4,  ///< the deviation was given; otherwise the basis's is taken
  MapUnlikeFile = 8,  ///< took in a submap or a basis since it was read, without being marked dirty
};

/// Number of buckets of `Map::pointHash`. The buckets fix the order in which loose points stand
/// and are saved; finding goes through `NameTable`.
constexpr size_t NameBuckets = 32;

/// A list of points of a map, newest first: new ones are pushed to its front. It lies in the map's
/// memory in pieces of 64, so that a walk need not wait for one item to learn where the next is.
using PointList = std::deque<Point*, MapAllocator<Point*>>;
/// The buckets of `Map::pointHash`.
using PointBuckets = std::array<PointList, NameBuckets>;

/// Finds the points of one map by main name or synonym, without regard to case, in constant time.
/// It holds an entry for each node of `Map::pointHash`, and answers as a walk over them would.
class NameTable {
 public:
  explicit NameTable(MapMemory& memory) : entries_(&memory) {}

  /// Adds an entry for `name`, one of the names of `point`. All its entries of that bucket become
  /// the newest, since a walk over the bucket now meets the point first.
  void Add(Point& point, std::string_view name);
  /// Takes out the newest entry of `point` for `name`, if there is one.
  void Remove(const Point& point, std::string_view name);
  /// \return the newest entry whose point bears `name` as its main name, else the newest one
  ///         with it as a synonym, else null
  Point* Find(std::string_view name) const;
  /// \return true if there is an entry of `point` for `name`
  bool Holds(const Point& point, std::string_view name) const;

  /// Exchanges the entries of two tables, with the memories that hold them.
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
  std::vector<std::string> synonyms_;  ///< kept here, so that no entry walks those of its point
  /// By bucket, for points with synonyms in it: index of the point's newest entry.
  std::array<std::unordered_map<const Point*, std::uint32_t>, NameBuckets> newest_;
};

/// \return empty buckets that lie in `memory`
PointBuckets MakeBuckets(MapMemory& memory);

/// Records that an edit took out of a map. They stay at their addresses, so that an edit can be taken
/// back and pointers to them stay good. Nothing looks into these lists to draw, solve or save.
struct RemovedRecords {
  std::forward_list<Trail> trails;
  std::forward_list<Range> ranges;
  std::forward_list<Grid> grids;
  std::forward_list<GridShade> gridShades;
};

/// One document: everything that a map file describes. It is made in its place and never moved.
struct Map {
  std::unique_ptr<MapMemory> pointMemory = std::make_unique<MapMemory>();
  /// Of the lists of points and of the names. They are walked without their points or in another
  /// order, so they stand close together.
  std::unique_ptr<MapMemory> listMemory = std::make_unique<MapMemory>();

  Workspace* workspace = nullptr;  ///< the one that holds the map
  std::string fileName;            ///< the whole path of the file, or "Untitled"
  /// The name of the file as the user gave it, for messages. It may be relative to the working
  /// directory.
  std::string shownName;
  /// Of the file when it was last read or written whole; none if neither has been. Whoever writes
  /// over a file with other bytes destroys what someone else has put there.
  std::optional<FileMark> fileMark;
  Map* basis = nullptr;          ///< the map that this one rests on
  double magneticDeviation = 0;  ///< degrees, added to compass bearings
  std::uint32_t flags = 0;       ///< `MapFlag` bits
  PackedDate date = 0;           ///< stays 0 for maps read from a file
  int contourEnabled = 0;        ///< contours are offered while this and the interval are not 0
  int contourInterval = 0;       ///< metres between contour levels
  std::array<std::optional<std::string>, 3> smName;  ///< names of SM1, SM2, SM3

  /// Every name and synonym of an ordinary named point, by `NameBucket`; newest first. Change it
  /// through `AddPointName` and `RemovePointName`, which keep `names` in step.
  PointBuckets pointHash = MakeBuckets(*listMemory);
  NameTable names{*listMemory};

  PointList loosePoints{listMemory.get()};     ///< named points on no trail, newest first
  PointList namelessPoints{listMemory.get()};  ///< points without name or trail, newest first
  Point* origin = nullptr;

  std::forward_list<Trail> trails;         ///< file order once a file is read; new ones in front
  std::forward_list<Trail> contourTrails;  ///< generated contour lines; never saved
  std::forward_list<Trail> continuousContours;  ///< the same without gaps, for the eye; never saved
  ScratchPoints contourPoints;                  ///< the vertices of both
  std::forward_list<Range> ranges;              ///< newest first
  std::forward_list<RangeIntersection> intersections;  ///< newest first; never saved
  std::forward_list<Grid> grids;                       ///< newest first
  std::forward_list<GridShade> gridShades;             ///< newest first
  RemovedRecords removed;
  std::vector<std::string> comments;  ///< `#` lines, each with its `#`, in file order
  std::vector<std::string>
      credits;  ///< lines with a `CreditTagLength`, sign included, in file order

  const NameIndex* nameIndex = nullptr;  ///< while a `NameIndexScope` stands; null otherwise

  /// Every point that this map made; a deque never moves them.
  std::deque<Point, MapAllocator<Point>> pointStore{pointMemory.get()};
  std::deque<Link> rayStore;  ///< the rays of those points
};

/// Calls `visit(Point&)` for each node of the map's lists, in the one order of all walks: each
/// trail with its points, then the loose points, then the nameless ones. A point that stands in
/// several lists is met several times.
template <typename Visit>
void ForEachPoint(const Map& map, Visit visit) {
  for (const Trail& trail : map.trails) {
    for (Point* point : trail.points) visit(*point);
  }
  for (Point* point : map.loosePoints) visit(*point);
  for (Point* point : map.namelessPoints) visit(*point);
}

/// Exchanges what two maps hold; each keeps its address, its name and its workspace. Pointers to
/// points, trails and ranges stay good, and lead to what the other map holds now.
void SwapContents(Map& a, Map& b) noexcept;

/// \return the bytes of the copyright sign at the front of a line, 1 in Latin-1 and 2 in UTF-8; 0 if
///         the line is not a credit line
size_t CreditTagLength(std::string_view line);

/// Makes a point of `map` with the given name. It enters no list.
Point& MakePoint(Map& map, std::string_view name);

}  // namespace orvane
