// Each layer becomes one of GDAL, with two exceptions: KML has a folder for each group of a layer,
// and GPX only waypoints and points of tracks.

#include "gis/layer_writer.h"

#include "gis/dataset.h"
#include "gis/gdal_session.h"
#include "gis/kml_finish.h"
#include "gis/xml_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <ogrsf_frmts.h>
#include <string_view>
#include <utility>

namespace orvane {

namespace {

using Geometry = std::unique_ptr<OGRGeometry>;

/// \return false if the system has no number of its own, or is not one of positions on the ground
bool ReadSystem(int number, OGRSpatialReference& system) {
  if (system.importFromEPSG(number) != OGRERR_NONE) return false;
  system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return system.IsProjected() || system.IsGeographic();
}

const char* DriverOf(LayerFormat format) {
  switch (format) {
    case LayerFormat::GeoPackage:
      return "GPKG";
    case LayerFormat::Kml:
      return "KML";
    case LayerFormat::Gpx:
      return "GPX";
    case LayerFormat::FlatGeobuf:
      return "FlatGeobuf";
    case LayerFormat::Csv:
      return "CSV";
  }
  return "";
}

/// True for the fields whose values a KML file has as the name and the description of a feature,
/// which its driver keeps in fields of its own.
bool IsOwnOfKml(std::string_view field) { return field == "name" || field == "note"; }

/// In these every place of a layer is three numbers or every place is two, and a number can be none.
bool HasBinaryPlaces(LayerFormat format) {
  return format == LayerFormat::GeoPackage || format == LayerFormat::FlatGeobuf;
}

bool KnowsAllAltitudes(const GeoShape& shape) {
  bool known = true;
  ForEachPath(shape, [&](const GeoPath& path) {
    known = known && std::none_of(path.begin(), path.end(),
                                  [](const GeoPlace& place) { return std::isnan(place.altitude); });
  });
  return known;
}

/// Sets the places of a line, with altitudes or without.
void SetPlaces(OGRSimpleCurve& curve, const GeoPath& path, bool withAltitudes) {
  curve.setNumPoints(static_cast<int>(path.size()));
  for (int i = 0; i < curve.getNumPoints(); ++i) {
    const GeoPlace& place = path[static_cast<size_t>(i)];
    if (withAltitudes) {
      curve.setPoint(i, place.lon, place.lat, place.altitude);
    } else {
      curve.setPoint(i, place.lon, place.lat);
    }
  }
}

Geometry PointGeometry(const GeoPlace& place, bool withAltitude) {
  if (!withAltitude) return std::make_unique<OGRPoint>(place.lon, place.lat);
  return std::make_unique<OGRPoint>(place.lon, place.lat, place.altitude);
}

Geometry AreaGeometry(const GeoShape& shape, size_t part, bool withAltitudes) {
  auto area = std::make_unique<OGRPolygon>();
  const auto add = [&](const GeoPath& path) {
    OGRLinearRing ring;
    SetPlaces(ring, path, withAltitudes);
    area->addRing(&ring);
  };
  add(shape.parts[part]);
  if (part < shape.holes.size()) {
    for (const GeoPath& hole : shape.holes[part]) add(hole);
  }
  return area;
}

Geometry PartGeometry(const GeoShape& shape, size_t part, bool withAltitudes) {
  const GeoPath& path = shape.parts[part];
  if (shape.kind == GeoKind::Point) return PointGeometry(path.front(), withAltitudes);
  if (shape.kind == GeoKind::Area) return AreaGeometry(shape, part, withAltitudes);
  auto line = std::make_unique<OGRLineString>();
  SetPlaces(*line, path, withAltitudes);
  return line;
}

struct GeometryOptions {
  bool several = false;  ///< a collection, also of one part
  bool withAltitudes = false;
};

Geometry ShapeGeometry(const GeoShape& shape, const GeometryOptions& options) {
  if (shape.kind == GeoKind::None) return nullptr;
  if (!options.several && shape.parts.size() == 1) {
    return PartGeometry(shape, 0, options.withAltitudes);
  }
  std::unique_ptr<OGRGeometryCollection> all;
  if (shape.kind == GeoKind::Line) {
    all = std::make_unique<OGRMultiLineString>();
  } else {
    all = std::make_unique<OGRMultiPolygon>();
  }
  for (size_t part = 0; part < shape.parts.size(); ++part) {
    const Geometry geometry = PartGeometry(shape, part, options.withAltitudes);
    all->addGeometry(geometry.get());
  }
  return all;
}

OGRwkbGeometryType GeometryTypeOf(const ExportedLayer& layer, bool withAltitudes) {
  OGRwkbGeometryType type = wkbUnknown;
  if (layer.kind == GeoKind::Point) type = wkbPoint;
  if (layer.kind == GeoKind::Line) type = layer.several ? wkbMultiLineString : wkbLineString;
  if (layer.kind == GeoKind::Area) type = layer.several ? wkbMultiPolygon : wkbPolygon;
  return withAltitudes ? OGR_GT_SetZ(type) : type;
}

OGRFieldType FieldTypeOf(FieldType type, LayerFormat format) {
  // The driver of KML would make numbers with a point of the longer ones.
  if (type == FieldType::Whole) return format == LayerFormat::Kml ? OFTInteger : OFTInteger64;
  if (type == FieldType::Real) return OFTReal;
  // Their drivers would write a date with strokes, or not at all.
  const bool isText = format == LayerFormat::Kml || format == LayerFormat::Csv;
  return type == FieldType::Date && !isText ? OFTDate : OFTString;
}

/// How a line or an area is drawn, in the words of GDAL.
std::string StyleOf(const LayerFeature& feature) {
  constexpr std::uint32_t Yellow = 0xFFD000;
  char line[16];
  std::snprintf(line, sizeof line, "#%06XFF", feature.color.value_or(Yellow) & 0xFFFFFFU);
  if (feature.shape.kind == GeoKind::Line) return std::string("PEN(c:") + line + ",w:2px)";
  if (feature.shape.kind != GeoKind::Area) return {};
  // `FinishKml` fills the areas whose outline is thin.
  return std::string("PEN(c:") + line + (feature.filled && feature.color ? ",w:1px)" : ",w:2px)");
}

/// \return the text as a file of the format can hold it
std::string TextFor(LayerFormat format, const std::string& text) {
  return format == LayerFormat::Kml ? XmlText(text) : text;
}

/// Sets a text. An empty one is none.
void SetXmlText(OGRFeature& feature, const char* field, const std::string& text) {
  const std::string kept = XmlText(text);
  if (!kept.empty()) feature.SetField(field, kept.c_str());
}

void SetValue(OGRFeature& feature, int index, const FieldValue& value, LayerFormat format) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    feature.SetField(index, static_cast<GIntBig>(*whole));
  } else if (const auto* real = std::get_if<double>(&value)) {
    feature.SetField(index, *real);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    feature.SetField(index, TextFor(format, *text).c_str());
  }
}

/// One file that is being written.
class LayerWriter {
 public:
  LayerWriter(const LayerFile& file, GdalSession& session) : file_(file), session_(session) {}

  LayersWritten Write(const std::vector<ExportedLayer>& layers) {
    if (Open()) {
      for (const ExportedLayer& layer : layers) {
        if (!PutLayer(layer)) break;
      }
      if (file_.format == LayerFormat::GeoPackage) dataset_->CommitTransaction();
      // What is still in memory is written now.
      dataset_.reset();
      if (file_.format == LayerFormat::Kml && !FinishKml(file_.path, file_.title, folders_)) {
        Fail("its end can't be written");
      }
    }
    if (fault_.empty()) fault_ = session_.Failure();
    return {fault_, unplaced_};
  }

 private:
  bool Fail(const std::string& fault) {
    fault_ = session_.Failure().empty() ? fault : session_.Failure();
    return false;
  }

  bool Open() {
    GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName(DriverOf(file_.format));
    if (driver == nullptr) {
      return Fail(std::string("GDAL has no driver ") + DriverOf(file_.format) + " here");
    }
    OGRSpatialReference wgs84;
    if (!ReadSystem(Wgs84System, wgs84) || !ReadSystem(file_.system, system_)) {
      return Fail("EPSG:" + std::to_string(file_.system) + " is unknown");
    }
    if (file_.system != Wgs84System) {
      transformation_.reset(OGRCreateCoordinateTransformation(&wgs84, &system_));
      if (transformation_ == nullptr) return Fail("no way to EPSG:" + std::to_string(file_.system));
    }
    dataset_.reset(driver->Create(file_.path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    if (dataset_ == nullptr) return Fail("it can't be created");
    // Many features at once are faster.
    if (file_.format == LayerFormat::GeoPackage) dataset_->StartTransaction();
    return true;
  }

  bool PutLayer(const ExportedLayer& layer) {
    if (file_.format == LayerFormat::Kml) return PutFolders(layer);
    if (file_.format != LayerFormat::Gpx && !MakeLayer(layer, layer.name)) return false;
    // Later features would only fail again.
    bool goesOn = true;
    layer.visit([&](const LayerFeature& feature) {
      goesOn = file_.format == LayerFormat::Gpx ? PutGpx(feature) : PutFeature(layer, feature);
      return goesOn;
    });
    return goesOn;
  }

  /// A folder for each group of a layer, in the order in which they are first met.
  bool PutFolders(const ExportedLayer& layer) {
    std::vector<std::string> groups;
    layer.visit([&](const LayerFeature& feature) {
      if (std::find(groups.begin(), groups.end(), feature.group) == groups.end()) {
        groups.push_back(feature.group);
      }
      return true;
    });
    for (const std::string& group : groups) {
      // The driver has one layer at a time, and no two of one name.
      if (!MakeLayer(layer, "layer" + std::to_string(folders_.size()))) return false;
      folders_.push_back(group.empty() ? layer.name : group);
      bool goesOn = true;
      layer.visit([&](const LayerFeature& feature) {
        goesOn = feature.group != group || PutFeature(layer, feature);
        return goesOn;
      });
      if (!goesOn) return false;
    }
    return true;
  }

  // --- Layers with their fields -------------------------------------------------------------

  CPLStringList LayerOptions(const ExportedLayer& layer) const {
    CPLStringList options;
    if (file_.format == LayerFormat::Csv) {
      const char* const places = layer.kind != GeoKind::Point ? "AS_WKT" : "AS_XY";
      options.SetNameValue("GEOMETRY", places);
      // Else whole numbers are in quotes too.
      options.SetNameValue("STRING_QUOTING", "IF_NEEDED");
    }
    return options;
  }

  /// Makes the layer of GDAL that the next features go to.
  bool MakeLayer(const ExportedLayer& layer, const std::string& name) {
    const CPLStringList options = LayerOptions(layer);
    to_ = dataset_->CreateLayer(name.c_str(), &system_, GeometryTypeOf(layer, layer.hasAltitudes),
                                const_cast<char**>(options.List()));
    if (to_ == nullptr) return Fail("the layer " + name + " can't be created");
    const auto addField = [&](const char* field, OGRFieldType type) {
      OGRFieldDefn definition(field, type);
      return to_->CreateField(&definition) == OGRERR_NONE;
    };
    bool done = true;
    indexes_.clear();
    for (const LayerField& field : layer.fields) {
      const bool isOwn = file_.format == LayerFormat::Kml && IsOwnOfKml(field.name);
      indexes_.push_back(isOwn ? -1 : to_->GetLayerDefn()->GetFieldCount());
      done = done && (isOwn || addField(TextFor(file_.format, field.name).c_str(),
                                        FieldTypeOf(field.type, file_.format)));
    }
    return done || Fail("the fields of the layer " + name + " can't be created");
  }

  bool PutFeature(const ExportedLayer& layer, const LayerFeature& from) {
    const Feature feature(OGRFeature::CreateFeature(to_->GetLayerDefn()));
    for (size_t i = 0; i < from.values.size(); ++i) {
      if (indexes_[i] >= 0) SetValue(*feature, indexes_[i], from.values[i], file_.format);
    }
    if (file_.format == LayerFormat::Kml) {
      SetXmlText(*feature, "Name", from.title);
      SetXmlText(*feature, "Description", from.note);
      feature->SetStyleString(StyleOf(from).c_str());
    }
    const GeoShape shape = InSystem(from.shape);
    const bool knowsAltitudes = HasBinaryPlaces(file_.format) || KnowsAllAltitudes(shape);
    const GeometryOptions options{.several = layer.several && layer.kind != GeoKind::None,
                                  .withAltitudes = layer.hasAltitudes && knowsAltitudes};
    feature->SetGeometryDirectly(ShapeGeometry(shape, options).release());
    if (to_->CreateFeature(feature.get()) == OGRERR_NONE) return true;
    return Fail("a feature of " + layer.name + " can't be written");
  }

  /// \return the shape in the system of the file; none if the system has no place for it
  GeoShape InSystem(const GeoShape& shape) {
    if (transformation_ == nullptr) return shape;
    GeoShape moved = shape;
    bool allFound = true;
    ForEachPath(moved, [&](GeoPath& path) {
      for (GeoPlace& place : path) {
        if (!allFound) return;
        const bool found = transformation_->Transform(1, &place.lon, &place.lat) != 0;
        allFound = found && std::isfinite(place.lon) && std::isfinite(place.lat);
      }
    });
    if (allFound) return moved;
    session_.Forget();
    ++unplaced_;
    return {};
  }

  // --- GPX ----------------------------------------------------------------------------------

  /// Points with a name are waypoints; lines and areas are tracks.
  bool PutGpx(const LayerFeature& from) {
    if (from.shape.kind == GeoKind::None) return true;
    if (from.shape.kind != GeoKind::Point) return PutTrack(from);
    if (!from.isMark) return true;
    if (waypoints_ == nullptr) waypoints_ = MakeGpxLayer("waypoints", {"name", "desc"});
    if (waypoints_ == nullptr) return false;
    const Feature feature(OGRFeature::CreateFeature(waypoints_->GetLayerDefn()));
    SetXmlText(*feature, "name", from.title);
    SetXmlText(*feature, "desc", from.note);
    return PutGpxPoint(*waypoints_, feature, from.shape.parts.front().front());
  }

  bool PutTrack(const LayerFeature& from) {
    if (tracks_ == nullptr) {
      tracks_ = MakeGpxLayer("track_points", {"track_name"});
    }
    if (tracks_ == nullptr) return false;
    ++track_;
    int segment = 0;
    bool done = true;
    ForEachPath(from.shape, [&](const GeoPath& path) {
      for (const GeoPlace& place : path) {
        if (!done) return;
        const Feature feature(OGRFeature::CreateFeature(tracks_->GetLayerDefn()));
        feature->SetField("track_fid", track_);
        feature->SetField("track_seg_id", segment);
        SetXmlText(*feature, "track_name", from.title);
        done = PutGpxPoint(*tracks_, feature, place);
      }
      ++segment;
    });
    return done;
  }

  OGRLayer* MakeGpxLayer(const char* name, std::initializer_list<const char*> fields) {
    OGRLayer* const made = dataset_->CreateLayer(name, &system_, wkbPoint, nullptr);
    if (made == nullptr) {
      Fail(std::string("the layer ") + name + " can't be created");
      return nullptr;
    }
    for (const char* field : fields) {
      OGRFieldDefn definition(field, OFTString);
      if (made->GetLayerDefn()->GetFieldIndex(field) < 0) made->CreateField(&definition);
    }
    return made;
  }

  bool PutGpxPoint(OGRLayer& layer, const Feature& feature, const GeoPlace& place) {
    if (!std::isnan(place.altitude)) feature->SetField("ele", place.altitude);
    // The format has no longitude of 180.
    const GeoPlace shown{place.lon < 180 ? place.lon : place.lon - 360, place.lat, place.altitude};
    feature->SetGeometryDirectly(PointGeometry(shown, false).release());
    if (layer.CreateFeature(feature.get()) == OGRERR_NONE) return true;
    return Fail("a point can't be written");
  }

  const LayerFile& file_;
  GdalSession& session_;
  std::string fault_;
  size_t unplaced_ = 0;
  OGRSpatialReference system_;
  std::unique_ptr<OGRCoordinateTransformation> transformation_;
  Dataset dataset_;
  std::vector<std::string> folders_;  ///< of KML, in their order
  OGRLayer* to_ = nullptr;            ///< where features go
  std::vector<int> indexes_;          ///< of its fields, for each field here; -1 if it has none
  OGRLayer* waypoints_ = nullptr;
  OGRLayer* tracks_ = nullptr;
  int track_ = 0;  ///< number of the last one
};

}  // namespace

bool KnowsSystem(int system) {
  const GdalSession session;
  OGRSpatialReference read;
  return ReadSystem(system, read);
}

LayersWritten WriteLayers(const LayerFile& file, const std::vector<ExportedLayer>& layers) {
  GdalSession session;
  return LayerWriter(file, session).Write(layers);
}

}  // namespace orvane
