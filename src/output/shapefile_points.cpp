#include "base/number_text.h"
#include "base/text.h"
#include "output/named_points.h"
#include "output/shapefile_groups.h"

#include <algorithm>
#include <string>
#include <vector>

namespace orvane {

namespace {

constexpr size_t AngleWidth = 15;
constexpr int AngleDecimals = 11;
constexpr size_t AltitudeWidth = 6;
constexpr size_t LongestNote = 80;

constexpr std::uint64_t PointRecordBytes = 28;
constexpr std::uint64_t PointContentWords = 10;

/// The content of the group, for its fields and headers.
struct PointGroup {
  std::vector<const Point*> points;  ///< each once
  std::uint64_t records = 0;         ///< visible names
  size_t longestName = 0;            ///< of all names, hidden ones too
  size_t longestNote = 0;
  bool hasSynonyms = false;
  bool hasAltitudes = false;
  ShapeBounds bounds;

  void TakeName(const std::string& name) {
    if (!IsHiddenName(name)) ++records;
    longestName = std::max(longestName, std::min(name.size(), WidestField));
  }
  void Take(const Point& point) {
    points.push_back(&point);
    TakeName(point.name);
    for (const std::string& synonym : point.synonyms) TakeName(synonym);
    if (point.note) longestNote = std::max(longestNote, std::min(point.note->size(), LongestNote));
    hasSynonyms = hasSynonyms || !point.synonyms.empty();
    hasAltitudes = hasAltitudes || HasAltitude(point.geo.altitude);
    bounds.Take(point.geo);
  }
};

PointGroup GatherPoints(Map& map) {
  PointGroup group;
  ForEachAhead(NamedPoints(map), [&](const Point& point) { group.Take(point); });
  return group;
}

std::vector<TableField> FieldsOf(const PointGroup& group) {
  std::vector<TableField> fields = {{"Name", 'C', group.longestName, 0},
                                    {"Latitude", 'N', AngleWidth, AngleDecimals},
                                    {"Longitude", 'N', AngleWidth, AngleDecimals}};
  if (group.hasSynonyms) fields.push_back({"Synonym", 'C', group.longestName, 0});
  if (group.hasAltitudes) fields.push_back({"Altitude", 'N', AltitudeWidth, 0});
  if (group.longestNote > 0) fields.push_back({"Comments", 'C', group.longestNote, 0});
  return fields;
}

class PointWriter {
 public:
  PointWriter(ShapefileSet& set, const PointGroup& group) : set_(set), group_(group) {}

  void Put(const Point& point) {
    PutName(point, point.name, {});
    for (const std::string& synonym : point.synonyms) PutName(point, synonym, point.name);
  }

 private:
  void PutName(const Point& point, const std::string& name, std::string_view mainName) {
    if (IsHiddenName(name)) return;
    set_.BeginRow();
    set_.PutField(name);
    set_.PutNumberField(FormatFixed(point.geo.lat, AngleDecimals), AngleWidth);
    set_.PutNumberField(FormatFixed(point.geo.lon, AngleDecimals), AngleWidth);
    if (group_.hasSynonyms) set_.PutField(mainName);
    if (group_.hasAltitudes) {
      set_.PutNumberField(FormatFixed(double{point.geo.altitude}, 0), AltitudeWidth);
    }
    if (group_.longestNote > 0) set_.PutField(point.note ? *point.note : std::string_view{});
    PutShape(point.geo);
  }

  void PutShape(const LatLon& place) {
    ByteBuffer& shape = set_.BeginShape(PointContentWords);
    shape.PutDouble(place.lon);
    shape.PutDouble(place.lat);
    // No length counts the altitude. A reader that follows the index finds each record. See
    // docs/compatibility.md.
    if (group_.hasAltitudes) {
      shape.PutDouble(HasAltitude(place.altitude) ? double{place.altitude} : NoMeasure);
    }
  }

  ShapefileSet& set_;
  const PointGroup& group_;
};

}  // namespace

void PutPointShapes(ShapefileExport& shapes) {
  const PointGroup group = GatherPoints(shapes.GetMap());
  if (group.records == 0) return;
  ShapefileSet* set = shapes.Open("points", "Can't open point datafiles for ArcView shapefiles\n");
  if (set == nullptr) return;
  set->PutHeaders(
      {ShapePoint, group.bounds, group.records, PointRecordBytes * group.records, shapes.Today()},
      FieldsOf(group));
  PointWriter writer(*set, group);
  ForEachAhead(group.points, [&](const Point& point) {
    if (shapes.GoesOn()) writer.Put(point);
  });
}

}  // namespace orvane
