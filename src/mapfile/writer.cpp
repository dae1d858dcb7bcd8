#include "mapfile/writer.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/number_text.h"
#include "mapfile/trail_words.h"
#include "model/workspace.h"

#include <cmath>
#include <cstdio>
#include <forward_list>
#include <iterator>

// The file is composed in memory, section by section in a fixed order, and looks as if typed by
// hand: empty fields at the end of a line are omitted.

namespace orvane {

namespace {

char GridStyleLetter(GridStyle style) {
  switch (style) {
    case GridStyle::Decimal:
      return '0';
    case GridStyle::RomanLower:
      return 'i';
    case GridStyle::RomanUpper:
      return 'I';
    case GridStyle::LettersLower:
      return 'a';
    case GridStyle::LettersUpper:
      return 'A';
    default:
      return 'n';
  }
}

/// "S21 15.15200'": whole degrees cut toward zero, and minutes.
std::string FixText(double degrees, char positive, char negative) {
  constexpr double MinutesPerDegree = 60;
  constexpr int MinuteDecimals = 5;
  const double size = std::abs(degrees);
  const double whole = std::trunc(size);
  std::string text(1, degrees < 0 ? negative : positive);
  text += FormatFixed(whole, 0);
  text += ' ';
  text += FormatFixed((size - whole) * MinutesPerDegree, MinuteDecimals);
  text += '\'';
  return text;
}

class MapWriter {
 public:
  MapWriter(Map& map, const std::string& path, bool full) : map_(map), path_(path), full_(full) {}

  std::string Text() {
    ClearMarks();
    WriteBasis();
    WriteSettings();
    WriteLists();
    for (const Trail& trail : map_.trails) WriteTrail(trail);
    WriteLoosePoints();
    for (const Grid& grid : map_.grids) WriteGrid(grid);
    for (const Range& range : map_.ranges) WriteRange(range);
    return std::move(out_);
  }

 private:
  void Put(std::string_view text) { out_ += text; }
  void Put(char c) { out_ += c; }
  void PutNumber(int value) { out_ += std::to_string(value); }
  void PutTwoDigits(int value) {
    // The sign of a negative value is one of the two places, as in "%02d".
    const std::string digits = std::to_string(value);
    if (digits.size() < 2) Put('0');
    Put(digits);
  }
  void PutGeneral(double value) { out_ += FormatGeneral(value); }

  static void ClearMarksOf(Point& point) {
    point.flags &= ~std::uint32_t{PointVisited};
    for (Measurement& reading : point.measurements) {
      reading.flags &= ~std::uint32_t{MeasureWritten};
    }
  }

  /// Calls `visit(Point&)` for each occurrence of a point of another map in this one.
  template <typename Visit>
  void ForEachForeignPoint(Visit visit) {
    const auto visitIfForeign = [&](Point& point) {
      if (point.map != &map_) visit(point);
    };
    ForEachPoint(map_, visitIfForeign);
    for (const auto& bucket : map_.pointHash) {
      for (Point* point : bucket) visitIfForeign(*point);
    }
  }

  void ClearMarks() {
    // In the order of the memory, and each point once, however often it occurs in the lists.
    for (Point& point : map_.pointStore) ClearMarksOf(point);
    const std::forward_list<Map>& maps = map_.workspace->maps;
    if (std::next(maps.begin()) == maps.end()) return;  // no other map, so no foreign points
    ForEachForeignPoint([](Point& point) { point.flags |= PointVisited; });
    ForEachForeignPoint([](Point& point) {
      if ((point.flags & PointVisited) != 0) ClearMarksOf(point);
    });
  }

  // --- Head ---------------------------------------------------------------------------------

  void WriteBasis() {
    if (map_.basis == nullptr) return;
    const std::string& name = map_.basis->fileName;
    Put("B\t");
    Put(InSameFolder(name, path_) ? BaseName(name) : std::string_view(name));
    Put('\n');
  }

  void WriteSettings() {
    if (map_.magneticDeviation != 0) {
      Put("M\t");
      PutGeneral(map_.magneticDeviation);
      Put('\n');
    }
    const auto& names = map_.smName;
    const bool contours = map_.contourEnabled != 0 && map_.contourInterval != 0;
    if (names[0] || names[1] || names[2] || contours) {
      Put("Z\t");
      if (names[0]) Put(*names[0]);
      if (names[1] || names[2]) Put(',');
      if (names[1]) Put(*names[1]);
      if (names[2]) {
        Put(',');
        Put(*names[2]);
      }
      if (contours) {
        Put('\t');
        PutNumber(map_.contourEnabled);
        Put(',');
        PutNumber(map_.contourInterval);
      }
      Put("\n\n");
    }
    if (map_.origin != nullptr) {
      Put("O\t");
      Put(map_.origin->name);
      Put('\n');
    }
    Put("D\t");
    Put(FormatDate(map_.workspace->Today()));
    Put("\n\n");
  }

  void WriteLists() {
    for (const auto* lines : {&map_.credits, &map_.comments}) {
      for (const std::string& line : *lines) {
        Put(line);
        Put('\n');
      }
      if (!lines->empty()) Put('\n');
    }
  }

  // --- Trails -------------------------------------------------------------------------------

  void WriteTrail(const Trail& trail) {
    Put("T\t");
    if (trail.name) Put(*trail.name);
    Put('\t');
    Put(trail.type);
    Put('\t');
    if (trail.focalAnimal) Put(*trail.focalAnimal);
    if (trail.groupSize != 1) {
      Put(',');
      PutNumber(trail.groupSize);
    }
    WriteTrailStyle(trail);
    if (trail.note) {
      Put('\t');
      Put(*trail.note);
    }
    Put('\n');
    for (Point* point : trail.points) WritePoint(*point, true);
    Put('\n');
  }

  /// A field is written only if it or a later one has a value. Which later ones count differs from
  /// field to field; see docs/compatibility.md.
  void WriteTrailStyle(const Trail& trail) {
    const bool hidden = IsHidden(trail);
    const bool marked = trail.markStyle != MarkStyle::None;
    const bool labeled = trail.labelMode != LabelMode::Unset;
    const bool styled = trail.lineStyle != LineStyle::Unset;
    const bool colored = trail.color != NoColor;
    if (trail.date != 0) {
      Put('\t');
      Put(FormatDate(trail.date));
    } else if (trail.width != 0 || colored || labeled || marked || styled || trail.note) {
      Put('\t');
    }
    if (trail.width != 0) {
      Put('\t');
      PutGeneral(trail.width);
    } else if (colored || labeled || styled || trail.filled || marked || hidden || trail.note) {
      Put('\t');
    }
    if (colored) {
      Put(",#");
      PutHexColor(trail.color);
    } else if (labeled || styled || trail.filled || marked) {
      Put(',');
    }
    if (styled) {
      Put(',');
      Put(LineStyleWords[static_cast<size_t>(trail.lineStyle) % LineStyleWords.size()]);
    } else if (labeled || trail.filled || marked) {
      Put(',');
    }
    if (labeled) {
      Put(',');
      Put(LabelModeWords[static_cast<size_t>(trail.labelMode) % LabelModeWords.size()]);
    } else if (trail.filled || marked) {
      Put(',');
    }
    if (trail.filled) {
      Put(",1,");
      PutNumber(trail.fillPattern);
    } else if (marked) {
      Put(',');
    }
    if (marked) {
      Put(',');
      const auto mark = static_cast<size_t>(trail.markStyle);
      if (mark < MarkStyleWords.size()) Put(MarkStyleWords[mark]);
    }
    // Not counted above, so without a mark it is in the place of another field.
    if (hidden) Put(",n");
  }

  void PutHexColor(Color color) {
    constexpr std::string_view Digits = "0123456789abcdef";
    for (int shift = 20; shift >= 0; shift -= 4) {
      Put(Digits[static_cast<size_t>(color >> shift) & 0xF]);
    }
  }

  // --- Points -------------------------------------------------------------------------------

  void WriteLoosePoints() {
    bool closed = false;
    for (const auto& bucket : map_.pointHash) {
      for (Point* point : bucket) {
        if ((point->flags & PointVisited) != 0) continue;
        if (!closed) Put("T\n");
        closed = true;
        WritePoint(*point, false);
      }
    }
  }

  void WritePoint(Point& point, bool onTrail) {
    if ((point.flags & PointVisited) != 0) {
      if (onTrail) WriteBarePoint(point);
      return;
    }
    point.flags |= PointVisited;
    bool first = true;
    for (Measurement& reading : point.measurements) {
      if ((reading.flags & (MeasureDerived | MeasureWritten)) != 0) continue;
      WriteReading(point, reading, first);
      first = false;
      reading.flags |= MeasureWritten;
    }
    if (full_ && IsPlaced(point) && !HasSingleFix(point)) {
      WriteSolvedPlace(point, first);
      first = false;
    }
    if (first) {
      Put("P\t");
      Put(point.name);
      WriteStyle(point);
      Put('\n');
    }
  }

  /// A point that was written before: the line keeps its place on the trail.
  void WriteBarePoint(const Point& point) {
    Put("P\t");
    Put(point.name);
    Put('\n');
  }

  /// The place of a point with a single fix need not be stored.
  static bool HasSingleFix(const Point& point) {
    auto reading = point.measurements.begin();
    if (reading == point.measurements.end()) return false;
    const bool isFix = (reading->flags & MeasureGps) != 0;
    return isFix && ++reading == point.measurements.end();
  }

  void WriteSynonyms(const Point& point) {
    for (const std::string& synonym : point.synonyms) {
      Put('=');
      Put(synonym);
    }
  }

  static char TagOf(const Measurement& reading) {
    if ((reading.flags & MeasureAltitude) != 0) return 'A';
    if ((reading.flags & MeasureGps) != 0) return 'G';
    return (reading.flags & MeasureCompass) != 0 ? 'C' : 'N';
  }

  static bool HasMeasures(const Point& point) {
    return point.sm[0] != 0 || point.sm[1] != 0 || point.sm[2] != 0;
  }

  void WriteReading(const Point& point, const Measurement& reading, bool first) {
    Put(TagOf(reading));
    Put('\t');
    Put(point.name);
    if (first) WriteSynonyms(point);
    const bool more = first && (point.note || point.labelLimit > 0 || HasMeasures(point));
    WriteReadingFields(reading, more);
    if (first) WriteStyle(point);
    Put('\n');
  }

  void WriteReadingFields(const Measurement& reading, bool more) {
    if ((reading.flags & MeasureNear) != 0) {
      Put('\t');
      Put(reading.nearName);
      return;
    }
    if ((reading.flags & MeasureCompass) != 0) {
      Put('\t');
      Put(reading.base->name);
      Put('\t');
      PutGeneral(reading.distance);
      Put((reading.flags & MeasureAbsoluteBearing) != 0 ? "\tA" : "\t");
      PutGeneral(reading.bearing);
      Put('\t');
      PutGeneral(reading.inclination);
    } else if ((reading.flags & MeasureGps) != 0) {
      Put('\t');
      Put(FixText(reading.position.lat, 'N', 'S'));
      Put('\t');
      Put(FixText(reading.position.lon, 'E', 'W'));
    }
    if (HasAltitude(reading.altitude)) {
      Put('\t');
      PutGeneral(double{reading.altitude});
    } else if (more || reading.count > 1) {
      Put('\t');
    }
    if (reading.count > 1) {
      Put('\t');
      PutNumber(reading.count);
    } else if (more) {
      Put('\t');
    }
  }

  void WriteSolvedPlace(const Point& point, bool first) {
    constexpr int PlaceDecimals = 10;
    Put("L\t");
    Put(point.name);
    if (first) WriteSynonyms(point);
    Put('\t');
    Put(FormatFixed(point.geo.lat, PlaceDecimals));
    Put('\t');
    Put(FormatFixed(point.geo.lon, PlaceDecimals));
    Put('\t');
    if (HasAltitude(point.geo.altitude)) PutGeneral(double{point.geo.altitude});
    if (first && point.note) {
      Put('\t');
      Put(*point.note);
    }
    Put('\n');
  }

  void WriteStyle(const Point& point) {
    const bool marked = point.markShape != PointMarkNone;
    if (point.labelLimit > 0 || HasMeasures(point) || marked) {
      Put('\t');
      if (point.labelLimit > 0) Put(FormatFixed(point.labelLimit));
      if (HasMeasures(point) || marked) Put(',');
      if (point.sm[0] != 0) PutNumber(point.sm[0]);
      if (point.sm[1] != 0 || point.sm[2] != 0 || marked) Put(',');
      if (point.sm[1] != 0) PutNumber(point.sm[1]);
      if (point.sm[2] != 0 || marked) Put(',');
      if (point.sm[2] != 0) PutNumber(point.sm[2]);
      if (marked) {
        Put(',');
        const bool filled = (point.flags & PointMarkFilled) != 0;
        Put(point.markShape == PointMarkCircle ? (filled ? 'C' : 'c') : (filled ? 'S' : 's'));
        PutNumber(point.markSize);
      }
    } else if (point.note) {
      Put('\t');
    }
    if (point.note) {
      Put('\t');
      Put(*point.note);
    }
  }

  // --- Grids and ranges ---------------------------------------------------------------------

  void WriteGrid(const Grid& grid) {
    Put("H\t");
    Put(grid.corner->name);
    for (const int number : {grid.cellSize, grid.rows, grid.columns}) {
      Put('\t');
      PutNumber(number);
    }
    Put('\t');
    PutGeneral(grid.angle);
    Put('\t');
    Put(GridStyleLetter(grid.rowStyle));
    PutNumber(grid.rowStart);
    Put('\t');
    Put(GridStyleLetter(grid.columnStyle));
    PutNumber(grid.columnStart);
    Put('\n');
  }

  void PutClock(int minutes) {
    constexpr int MinutesPerHour = 60;
    PutNumber(minutes / MinutesPerHour);
    Put(':');
    PutTwoDigits(minutes % MinutesPerHour);
  }

  void WriteRange(const Range& range) {
    Put("R\t");
    if (range.name) Put(*range.name);
    if (range.note) {
      Put("\t\t");
      Put(*range.note);
    }
    Put('\n');
    for (const SearchKey& key : range.keys) {
      Put("K\t");
      Put(key.type);
      Put('\t');
      if (key.focalAnimal) Put(*key.focalAnimal);
      Put('\t');
      if (key.timeFrom != key.timeTo) {
        PutClock(key.timeFrom);
        Put('-');
        PutClock(key.timeTo);
      }
      if (key.dateFrom != 0) {
        Put('\t');
        Put(FormatDate(key.dateFrom));
        Put(' ');
        Put(FormatDate(key.dateTo));
      }
      Put('\n');
    }
  }

  Map& map_;
  const std::string& path_;
  bool full_;
  std::string out_;
};

}  // namespace

std::string MapFileText(Map& map, const std::string& path, bool full) {
  return MapWriter(map, path, full).Text();
}

bool WriteMapFile(Map& map, const std::string& path, bool full) {
  return WriteMapText(map.workspace->messages, path, path, MapFileText(map, path, full));
}

bool WriteMapText(Messages& messages, const std::string& path, std::string_view shownName,
                  std::string_view text, const FileSystem& system) {
  switch (WriteFileAtomically(path, text, system)) {
    case WriteResult::CannotOpen:
      NoteError(messages, "Can't open %s for writing", {shownName});
      break;
    case WriteResult::Failed:
      NoteError(messages, "Error ocurred while writing data file %s. It may be corrupt",
                {shownName});
      break;
    case WriteResult::Done:
      return true;
  }
  return false;
}

}  // namespace orvane
