#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orvane {

/// Layers of features for other programs, as plain records. They know neither a map nor a file
/// format.

/// A place of WGS 84. Two places are equal if they are at the same position, at any altitude.
struct GeoPlace {
  double lon = 0;                                              ///< degrees
  double lat = 0;                                              ///< degrees
  double altitude = std::numeric_limits<double>::quiet_NaN();  ///< metres; NaN if unknown

  friend bool operator==(const GeoPlace& a, const GeoPlace& b) {
    return a.lon == b.lon && a.lat == b.lat;
  }
};

using GeoPath = std::vector<GeoPlace>;

enum class GeoKind { None, Point, Line, Area };

/// One geometry.
struct GeoShape {
  GeoKind kind = GeoKind::None;
  std::vector<GeoPath> parts;  ///< one place; the lines; the rings, each closed
  /// Of each part of an area: closed rings that go clockwise. Empty if no part has a hole.
  std::vector<std::vector<GeoPath>> holes = {};
};

/// Calls `visit` for each path of a shape: each part, and after it its holes.
template <typename Shape, typename Visit>
void ForEachPath(Shape& shape, Visit visit) {
  for (size_t i = 0; i < shape.parts.size(); ++i) {
    visit(shape.parts[i]);
    if (i >= shape.holes.size()) continue;
    for (auto& hole : shape.holes[i]) visit(hole);
  }
}

/// What the values of a field are. A date is a text such as "2003-03-14".
enum class FieldType { Text, Whole, Real, Date };

struct LayerField {
  std::string name;
  FieldType type = FieldType::Text;
};

/// A value of a field, or none.
using FieldValue = std::variant<std::monostate, std::string, std::int64_t, double>;

/// One feature of a layer. Texts are UTF-8.
struct LayerFeature {
  GeoShape shape;
  std::vector<FieldValue> values;  ///< one for each field of the layer
  std::string title;               ///< its name for the reader; empty if it has none
  std::string note;
  std::string group;                   ///< the features of a layer that belong together
  std::optional<std::uint32_t> color;  ///< 0xRRGGBB
  bool filled = false;                 ///< an area that is painted in its colour
  bool isMark = false;                 ///< a place that has a name of its own
};

/// Takes a feature. \return false if no more are wanted
using FeatureTaker = std::function<bool(const LayerFeature&)>;

/// One layer.
struct ExportedLayer {
  std::string name;
  std::vector<LayerField> fields;
  GeoKind kind = GeoKind::None;  ///< of all its features; none if they differ
  bool several = false;          ///< some feature has several parts
  bool hasAltitudes = false;     ///< some place has an altitude
  size_t count = 0;              ///< features
  bool isComplete = true;        ///< false if there are too many features to write any
  /// Calls the taker for each feature in its order, until it returns false. Each call gives the
  /// same features.
  std::function<void(const FeatureTaker&)> visit;
};

}  // namespace orvane
