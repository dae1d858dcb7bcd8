#include "base/text.h"
#include "geo/angle_text.h"
#include "mapfile/field_cursor.h"
#include "mapfile/line_context.h"
#include "model/point_names.h"
#include "survey/positions.h"

#include <cmath>
#include <limits>
#include <string>

// Lines about a point: the first field names it, the tag is the kind of line. A cursor walks the
// line from left to right; if a field has more than was read, the rest goes to the reader of the
// next field or, at last, into the note.

namespace orvane {

namespace {

constexpr std::string_view BadPointName = "Bad pointname %s";

std::string_view NameOr(const Point& point, std::string_view ifNameless) {
  return point.name.empty() ? ifNameless : std::string_view(point.name);
}

/// Empties a trail that a `T` line opened again, with a note at the place of that line: two trails
/// with one name by mistake would otherwise lose points unnoticed. See docs/compatibility.md.
void DropEarlierPoints(LineContext& context, Trail& trail) {
  trail.points.clear();
  trail.flags &= ~std::uint32_t{TrailMeasured};
  context.trailTimes.Forget();
  OriginScope place(context.messages, context.messages.Origin()->file);
  place.GoToLine(context.state.trailLine);
  PostNote(context.messages, "Trail %s is given again; its earlier points are dropped",
           {trail.name.value_or(std::string())});
}

/// Appends the point to the current trail, unless it is the point of the previous line.
void PutOnTrail(LineContext& context, Point& point) {
  ReadingState& state = context.state;
  if (&point != state.lastPoint && state.currentTrail != nullptr) {
    Trail& trail = *state.currentTrail;
    if (!state.trailHasTail && !trail.points.empty()) DropEarlierPoints(context, trail);
    trail.points.push_back(&point);
    state.trailHasTail = true;
    if (point.trail == nullptr) point.trail = &trail;
  }
  state.lastPoint = &point;
}

/// A point with a new reading must be solved again; a point of another map keeps the place that it
/// has there.
void ClearPlaced(const LineContext& context, Point& point) {
  if (point.map == &context.map) point.flags &= ~std::uint32_t{PointPlaced};
}

void NoteBasisPoint(LineContext& context, const Point& point, std::string_view format) {
  if (point.map != &context.map) context.NoteOnce(format, NameOr(point, "<nameless point>"));
}

// --- The style ------------------------------------------------------------------------------

double TakeLabelLimit(FieldCursor& cursor) {
  double limit = cursor.TakeReal();
  if (cursor.SkipByte('c')) {
    limit /= 100;
  } else if (cursor.SkipByte('k')) {
    limit *= 1000;
  }
  cursor.SkipByte('m');
  return limit;
}

void TakeMark(FieldCursor& cursor, Point& point) {
  const char letter = cursor.Peek();
  const char folded = FoldByte(letter);
  if (folded < 'a' || folded > 'z') return;
  cursor.Skip(1);
  const int size = cursor.AtDigit() ? cursor.TakeInteger() : 0;
  if (folded != 'c' && folded != 's') return;
  point.markShape = folded == 'c' ? PointMarkCircle : PointMarkSquare;
  point.markSize = size;
  if (letter == folded) {
    point.flags &= ~std::uint32_t{PointMarkFilled};
  } else {
    point.flags |= PointMarkFilled;
  }
}

/// The last field of a point line and the note after it. The note includes its tab; see
/// docs/compatibility.md.
void TakeStyle(FieldCursor& cursor, Point& point) {
  const auto partIsEmpty = [&] { return cursor.AtFieldEnd() || cursor.At(','); };
  if (!cursor.AtFieldEnd()) {
    if (!partIsEmpty()) {
      const double limit = TakeLabelLimit(cursor);
      if (point.labelLimit == 0 || (limit != 0 && limit < point.labelLimit)) {
        point.labelLimit = limit;
      }
    }
    for (int& measure : point.sm) {
      if (!cursor.SkipByte(',')) break;
      if (partIsEmpty()) continue;
      const IntegerPrefix read = ReadInteger(cursor.Field());
      if (read.length > 0) measure = cursor.TakeInteger();
    }
    if (cursor.SkipByte(',')) TakeMark(cursor, point);
  }
  if (cursor.AtEnd()) return;
  if (!point.note) {
    point.note = cursor.Rest();
  } else {  // as `AppendNote`, but in place: one point can have any number of notes
    *point.note += ' ';
    *point.note += cursor.Rest();
  }
}

/// Altitude and count, and then the style.
void TakeTail(FieldCursor& cursor, Point& point, Measurement& reading) {
  if (!cursor.AtFieldEnd()) {
    const double altitude = std::trunc(cursor.TakeReal() + 0.5);
    if (std::abs(altitude) <= double{std::numeric_limits<float>::max()}) {
      reading.altitude = static_cast<float>(altitude);
    }
  }
  cursor.SkipTab();
  // A fraction is cut off; it would otherwise be read as the style.
  constexpr double MostReadings = std::numeric_limits<int>::max();
  const double count = cursor.At('\t') ? 1 : cursor.TakeReal();
  reading.count = count > MostReadings ? 1 : static_cast<int>(std::max(count, 1.0));
  cursor.SkipTab();
  TakeStyle(cursor, point);
}

// --- The readings ---------------------------------------------------------------------------

/// Reports and skips what follows a number in its field.
void CheckFieldEnd(LineContext& context, FieldCursor& cursor, const Point& point,
                   std::string_view format) {
  if (cursor.AtFieldEnd()) return;
  NoteError(context.messages, format, {NameOr(point, "<noname>")});
  cursor.SkipField();
}

void TakeCompassNumbers(LineContext& context, FieldCursor& cursor, const Point& point,
                        Measurement& reading) {
  reading.distance = cursor.TakeReal();
  cursor.SkipAnyOf("mM");
  CheckFieldEnd(context, cursor, point, "Bad distance for point %s");
  cursor.SkipTab();
  if (!cursor.AtFieldEnd()) {
    if (cursor.SkipAnyOf("aA")) reading.flags |= MeasureAbsoluteBearing;
    reading.bearing = cursor.TakeReal();
    CheckFieldEnd(context, cursor, point, "Bad bearing for point %s");
  }
  cursor.SkipTab();
  if (!cursor.AtFieldEnd()) {
    reading.inclination = cursor.TakeReal();
    CheckFieldEnd(context, cursor, point, "Bad inclination angle for point %s");
    if (reading.inclination < -90 || reading.inclination > 90) {
      NoteError(context.messages, "Bad angle %s for point %s",
                {FormatGeneral(reading.inclination), NameOr(point, "<noname>")});
    }
  }
  cursor.SkipTab();
}

void ReadCompass(LineContext& context, FieldCursor& cursor, Point& point) {
  const std::string_view baseName = cursor.TakeField();
  if (baseName.empty()) {
    NoteError(context.messages, "No base point in compass specification for %s (%s)",
              {NameOr(point, "<noname>"), cursor.Rest()});
    return;
  }
  Point* base = context.ResolveOnTrail(baseName);
  if (base == nullptr) {
    NoteError(context.messages, BadPointName, {baseName});
    return;
  }
  ClearPlaced(context, point);
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureCompass;
  reading.base = base;
  cursor.SkipTab();
  TakeCompassNumbers(context, cursor, point, reading);
  TakeTail(cursor, point, reading);
}

double TakeAngle(LineContext& context, FieldCursor& cursor, double& runningDefault,
                 AngleMode mode) {
  const std::string_view field = cursor.Field();
  size_t length = 0;
  const double angle = ParseAngle(field, &length, &runningDefault, mode);
  if (length < field.size()) NoteError(context.messages, "Bad lat/lon spec: %s", {field});
  cursor.SkipField();
  cursor.SkipTab();
  return angle;
}

void ReadGps(LineContext& context, FieldCursor& cursor, Point& point) {
  ClearPlaced(context, point);
  NoteBasisPoint(context, point,
                 "A GPS location is given to a point (%s) which is in a base map, it will have no "
                 "effect");
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureGps;
  Workspace& workspace = context.workspace;
  reading.position.lat = TakeAngle(context, cursor, workspace.lastLatitude, AngleMode::Latitude);
  reading.position.lon = TakeAngle(context, cursor, workspace.lastLongitude, AngleMode::Longitude);
  TakeTail(cursor, point, reading);
}

void ReadAltitude(LineContext& context, FieldCursor& cursor, Point& point) {
  ClearPlaced(context, point);
  NoteBasisPoint(context, point,
                 "An altitude is given to a point (%s) which is in a base map, it will have no "
                 "effect");
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureAltitude;
  TakeTail(cursor, point, reading);
}

void ReadNear(LineContext& context, FieldCursor& cursor, Point& point) {
  ClearPlaced(context, point);
  const std::string_view nearName = cursor.TakeField();
  if (nearName.empty()) {
    NoteError(context.messages, "No near name for %s (%s)",
              {NameOr(point, "<noname>"), cursor.Rest()});
    return;
  }
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureNear;
  reading.nearName = nearName;
  cursor.SkipTab();
  TakeStyle(cursor, point);
}

void ReadSolvedPlace(FieldCursor& cursor, Point& point) {
  const double lat = cursor.TakeReal();
  if (!cursor.SkipByte('\t')) return;
  const double lon = cursor.TakeReal();
  if (!cursor.AtFieldEnd()) return;
  point.geo.lat = lat;
  point.geo.lon = lon;
  ProjectPoint(point);
  point.flags |= PointPlaced;
  cursor.SkipTab();
  if (!cursor.AtFieldEnd()) point.geo.altitude = static_cast<float>(cursor.TakeInteger());
}

/// The point of the first field, appended to the current trail; null after a message.
Point* TakePoint(LineContext& context, FieldCursor& cursor, bool isSolvedPlace) {
  const std::string_view name = cursor.TakeField();
  cursor.SkipTab();
  Point* point =
      isSolvedPlace && name.empty() ? context.state.lastPoint : context.ResolveOnTrail(name);
  if (point == nullptr) {
    NoteError(context.messages, BadPointName, {name});
    return nullptr;
  }
  PutOnTrail(context, *point);
  return point;
}

}  // namespace

void ReadPointLine(LineContext& context, std::string_view line) {
  const char tag = FoldByte(line.front());
  FieldCursor cursor(line);
  cursor.SkipField();  // so that a line may begin with GPS as well as with G
  if (!cursor.SkipByte('\t')) {
    NoteError(context.messages, "Bad Input");
    return;
  }
  Point* point = TakePoint(context, cursor, tag == 'l');
  if (point == nullptr) return;
  switch (tag) {
    case 'a':
      ReadAltitude(context, cursor, *point);
      break;
    case 'c':
      ReadCompass(context, cursor, *point);
      break;
    case 'g':
      ReadGps(context, cursor, *point);
      break;
    case 'l':
      ReadSolvedPlace(cursor, *point);
      break;
    case 'n':
      ReadNear(context, cursor, *point);
      break;
    default:
      TakeStyle(cursor, *point);
      break;
  }
}

}  // namespace orvane
