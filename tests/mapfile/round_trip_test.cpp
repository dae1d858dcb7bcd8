#include "base/number_text.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace orvane {
namespace {

/// Makes the text of a map in which every point is placed and no two fields hold the same, as far
/// as the format keeps them: a point's mark never comes without another style, no altitude is
/// negative, and a nameless point has one reading.
class MapMaker {
 public:
  explicit MapMaker(unsigned seed) : random_(seed) {}

  std::string Make() {
    text_ = "# made for a test\n#\twith a tab\n\xA9 nobody\n";
    Line() << "M\t" << Number(-200, 200, 8);
    Line() << "Z\tfeed" << (Chance(2) ? ",rest" : "") << "\t" << 1 + Below(5) << ","
           << 1 + Below(90);
    Line() << "O\tCamp";
    MakePoint("G\tCamp" + Fix(), true);
    names_.emplace_back("Camp");
    for (int trail = 0; trail < 6; ++trail) MakeTrail(trail);
    Line() << "T";
    for (int i = 0; i < 15; ++i) MakeLoosePoint("Loose" + std::to_string(i));
    for (int i = 0; i < 3; ++i) MakeGrid();
    for (int i = 0; i < 3; ++i) MakeRange(i);
    return text_;
  }

 private:
  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  bool Chance(int n) { return Below(n) == 0; }
  /// A number of few digits, which "%g" writes whole.
  std::string Number(int from, int to, int parts) {
    std::ostringstream text;
    text << from + Below(to - from) + Below(parts) / static_cast<double>(parts);
    return text.str();
  }
  std::string Digits(int count) {
    std::string digits;
    while (count-- > 0) digits += static_cast<char>('0' + Below(10));
    return digits;
  }
  std::string Any() { return names_[static_cast<size_t>(Below(static_cast<int>(names_.size())))]; }

  /// A line that ends when the next begins.
  struct LineEnd : std::ostringstream {
    explicit LineEnd(std::string& text) : text_(text) {}
    ~LineEnd() override { text_ += str() + "\n"; }
    LineEnd(const LineEnd&) = delete;
    LineEnd& operator=(const LineEnd&) = delete;
    std::string& text_;
  };
  LineEnd Line() { return LineEnd(text_); }

  std::string Tail(bool styled) {
    std::string tail = "\t" + (Chance(2) ? std::to_string(Below(2000)) : std::string());
    tail += "\t" + (Chance(3) ? std::to_string(2 + Below(9)) : std::string());
    return styled && Chance(2) ? tail + Style() : tail;
  }
  std::string Style() {
    std::string style = "\t" + (Chance(2) ? Number(1, 500, 4) : std::string());
    style += "," + std::to_string(1 + Below(9)) + ",";
    if (Chance(2)) style += std::to_string(-1 - Below(9));
    style += "," + (Chance(2) ? std::to_string(10 + Below(9)) : std::string());
    if (Chance(2)) style += std::string(",") + "cCsS"[Below(4)] + std::to_string(Below(20));
    return style + (Chance(2) ? "\tnote " + Digits(4) : std::string());
  }
  std::string Fix() { return "\tS1 15." + Digits(5) + "'\tE36 4." + Digits(5) + "'"; }
  std::string Compass() {
    return "\t" + Any() + "\t" + Number(1, 300, 8) + "\t" + (Chance(4) ? "a" : "") +
           Number(0, 360, 4) + "\t" + Number(-40, 40, 4);
  }
  void MakePoint(const std::string& line, bool styled) { Line() << line << Tail(styled); }

  void MakeLoosePoint(const std::string& name) {
    const std::string spec = Chance(3) ? name + "=" + name + "b=" + name + "c" : name;
    if (Chance(4)) {
      MakePoint("G\t" + spec + Fix(), true);
    } else if (Chance(4)) {
      Line() << "N\t" << spec << "\tCamp" << (Chance(2) ? Style() : "");
      return;  // no other point hangs on it, so all regions have a fix
    } else {
      MakePoint("C\t" + spec + Compass(), true);
      if (Chance(2)) MakePoint("C\t" + name + Compass(), false);
      if (Chance(4)) MakePoint("A\t" + name, false);
      if (Chance(6)) MakePoint("G\t" + name + Fix(), false);
    }
    names_.push_back(name);
  }

  void MakeTrail(int number) {
    static constexpr const char* Words[] = {"Solid", "Dotted", "Dashed"};
    static constexpr const char* Labels[] = {"None", "FirstLast", "All", "Auto"};
    static constexpr const char* Marks[] = {"Circle", "Cross", "Tick", "Rect", "Plus", "HalfTick"};
    const bool follow = Chance(3);
    {
      auto line = Line();
      line << "T\t" << (follow ? "" : "Trail" + std::to_string(number)) << "\ttype" << Below(9);
      line << "\t" << (Chance(2) ? "Bo" : "") << (Chance(2) ? ",7" : "");
      line << "\t" << (Chance(2) ? "1999-4-" + std::to_string(1 + Below(28)) : "");
      if (Chance(2)) {
        line << "\t" << (Chance(2) ? Number(1, 9, 8) : "") << ","
             << (Chance(2) ? "#12ab0" + Digits(1) : "");
        line << "," << (Chance(2) ? Words[Below(3)] : "") << ","
             << (Chance(2) ? Labels[Below(4)] : "");
        if (Chance(2)) {
          line << ",1," << Below(8);
        } else {
          line << ",,";
        }
        line << "," << (Chance(2) ? Marks[Below(6)] : "") << (Chance(2) ? ",n" : ",v");
      } else {
        line << "\t";
      }
      if (Chance(2)) line << "\tnote of trail " << number;
    }
    const int count = 2 + Below(9);
    for (int i = 0; i < count; ++i) {
      if (follow) {
        const std::string name = "0" + std::to_string(600 + i * 11) +
                                 (Chance(3) ? "-0" + std::to_string(605 + i * 11) : "");
        MakePoint("C\t" + name + Compass(), true);
      } else if (Chance(8)) {
        MakePoint("C\t" + Compass(), true);
      } else if (Chance(4)) {
        Line() << "P\t" << Any();
      } else {
        MakeLoosePoint("Trail" + std::to_string(number) + "_" + std::to_string(i));
      }
    }
  }

  void MakeGrid() {
    auto line = Line();
    line << "H\t" << Any() << "\t" << 5 + Below(200) << "\t" << Below(50) - 20 << "\t"
         << Below(50) - 20;
    line << "\t" << Number(-180, 180, 8) << "\t"
         << "iIaAn0"[Below(6)] << Below(40) - 20;
    line << "\t"
         << "iIaAn0"[Below(6)] << Below(40) - 20;
  }
  void MakeRange(int number) {
    Line() << "R\tRange" << number << (Chance(2) ? "\t\tnote of range" : "");
    for (int i = Below(4); i > 0; --i) {
      auto line = Line();
      line << "K\ttype" << Below(9) << "\t" << (Chance(2) ? "Al" : "") << "\t";
      if (Chance(2)) line << Below(24) << ":0" << Below(10) << "-24:3" << Below(10);
      line << "\t" << (Chance(2) ? "1998-7-1" + std::to_string(Below(9)) + " 2001-2-3" : "");
    }
  }

  std::mt19937 random_;
  std::string text_;
  std::vector<std::string> names_;
};

struct RoundTripTest : testing::TestWithParam<unsigned> {
  RecordedMessages messages;

  /// A note is led by one tab more for each time that it was saved and read.
  static std::optional<std::string> Grown(const std::optional<std::string>& note, int tabs) {
    if (!note) return note;
    return std::string(static_cast<size_t>(tabs), '\t') + *note;
  }
  template <typename T>
  static std::vector<const T*> Listed(const std::forward_list<T>& list, bool reversed) {
    std::vector<const T*> all;
    for (const T& each : list) all.push_back(&each);
    if (reversed) std::reverse(all.begin(), all.end());
    return all;
  }

  static void ExpectSameReading(const Measurement& a, const Measurement& b) {
    constexpr std::uint32_t kept = ~std::uint32_t{MeasureWritten};
    EXPECT_EQ(a.flags & kept, b.flags & kept);
    EXPECT_EQ(a.altitude, b.altitude);
    EXPECT_EQ(a.count, b.count);
    EXPECT_NEAR(a.position.lat, b.position.lat, 1e-12);
    EXPECT_NEAR(a.position.lon, b.position.lon, 1e-12);
    EXPECT_EQ(a.bearing, b.bearing);
    EXPECT_EQ(a.distance, b.distance);
    EXPECT_EQ(a.inclination, b.inclination);
    EXPECT_EQ(a.nearName, b.nearName);
    EXPECT_EQ(a.base == nullptr, b.base == nullptr);
    if (a.base != nullptr && b.base != nullptr) {
      EXPECT_EQ(a.base->name, b.base->name);
    }
  }
  static void ExpectSamePoint(const Point& a, const Point& b, bool placesKept) {
    SCOPED_TRACE(testing::Message() << "point " << a.name);
    EXPECT_EQ(a.name, b.name);
    const auto readings = Listed(a.measurements, true);
    const auto again = Listed(b.measurements, false);
    ASSERT_EQ(readings.size(), again.size());
    for (size_t i = 0; i < readings.size(); ++i) ExpectSameReading(*readings[i], *again[i]);
    EXPECT_EQ(a.flags & PointMarkFilled, b.flags & PointMarkFilled);
    EXPECT_EQ(a.markShape, b.markShape);
    EXPECT_EQ(a.markSize, b.markSize);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(a.sm[i], b.sm[i]);
    EXPECT_EQ(a.labelLimit, b.labelLimit);
    EXPECT_EQ(Grown(a.note, 1), b.note);
    EXPECT_EQ(a.timeOfDay, b.timeOfDay);
    EXPECT_EQ(a.duration, b.duration);
    const bool written = !a.measurements.empty() || placesKept;
    const auto synonyms = Listed(a.synonyms, true);
    const auto synonymsAgain = Listed(b.synonyms, false);
    ASSERT_EQ(written ? synonyms.size() : 0, synonymsAgain.size());
    for (size_t i = 0; i < synonymsAgain.size(); ++i) EXPECT_EQ(*synonyms[i], *synonymsAgain[i]);
    if (!placesKept) return;
    EXPECT_NE(a.flags & PointPlaced, 0U);
    EXPECT_NE(b.flags & PointPlaced, 0U);
    LatLon place = a.geo;
    // Written with six digits, and read as a whole number.
    const double writtenAltitude = ReadReal(FormatGeneral(double{place.altitude})).value;
    place.altitude = static_cast<float>(std::trunc(writtenAltitude));
    if (readings.size() == 1 && (readings[0]->flags & MeasureGps) != 0) {
      // No place is stored for a single fix, so it is read back from the fix, whatever the solver
      // made of it together with shots from other points.
      place = readings[0]->position;
      place.altitude = readings[0]->altitude;
    }
    EXPECT_NEAR(place.lat, b.geo.lat, 1e-10);
    EXPECT_NEAR(place.lon, b.geo.lon, 1e-10);
    EXPECT_EQ(place.altitude, b.geo.altitude);
  }
  static void ExpectSameTrail(const Trail& a, const Trail& b, bool placesKept) {
    SCOPED_TRACE(testing::Message() << "trail " << a.name.value_or("<none>"));
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.focalAnimal, b.focalAnimal);
    EXPECT_EQ(a.date, b.date);
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.groupSize, b.groupSize);
    EXPECT_EQ(a.color, b.color);
    EXPECT_EQ(a.lineStyle, b.lineStyle);
    EXPECT_EQ(a.labelMode, b.labelMode);
    EXPECT_EQ(a.filled, b.filled);
    if (a.filled) {
      EXPECT_EQ(a.fillPattern, b.fillPattern);
    }
    EXPECT_EQ(a.markStyle, b.markStyle);
    EXPECT_EQ(a.flags & TrailHidden, b.flags & TrailHidden);
    EXPECT_EQ(a.note, b.note);
    ASSERT_EQ(a.points.size(), b.points.size());
    for (size_t i = 0; i < a.points.size(); ++i) {
      ExpectSamePoint(*a.points[i], *b.points[i], placesKept);
    }
  }
  static void ExpectSameGrid(const Grid& a, const Grid& b) {
    EXPECT_EQ(a.corner->name, b.corner->name);
    EXPECT_EQ(a.cellSize, b.cellSize);
    EXPECT_EQ(a.rows, b.rows);
    EXPECT_EQ(a.columns, b.columns);
    EXPECT_EQ(a.angle, b.angle);
    EXPECT_EQ(a.rowStyle, b.rowStyle);
    EXPECT_EQ(a.rowStart, b.rowStart);
    EXPECT_EQ(a.columnStyle, b.columnStyle);
    EXPECT_EQ(a.columnStart, b.columnStart);
  }
  static void ExpectSameRange(const Range& a, const Range& b) {
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.note, b.note);
    const auto keys = Listed(a.keys, true);
    const auto again = Listed(b.keys, false);
    ASSERT_EQ(keys.size(), again.size());
    for (size_t i = 0; i < keys.size(); ++i) {
      EXPECT_EQ(keys[i]->type, again[i]->type);
      EXPECT_EQ(keys[i]->focalAnimal, again[i]->focalAnimal);
      EXPECT_EQ(keys[i]->timeFrom, again[i]->timeFrom);
      EXPECT_EQ(keys[i]->timeTo, again[i]->timeTo);
      EXPECT_EQ(keys[i]->dateFrom, again[i]->dateFrom);
      EXPECT_EQ(keys[i]->dateTo, again[i]->dateTo);
    }
  }
  /// `again` is what a save of `map` reads back to.
  static void ExpectSameMap(const Map& map, const Map& again, bool placesKept) {
    EXPECT_EQ(map.magneticDeviation, again.magneticDeviation);
    EXPECT_EQ(map.smName, again.smName);
    EXPECT_EQ(map.contourEnabled, again.contourEnabled);
    EXPECT_EQ(map.contourInterval, again.contourInterval);
    EXPECT_EQ(map.comments, again.comments);
    EXPECT_EQ(map.credits, again.credits);
    EXPECT_EQ(map.origin->name, again.origin->name);
    const auto trails = Listed(map.trails, false);
    const auto trailsAgain = Listed(again.trails, false);
    ASSERT_EQ(trails.size(), trailsAgain.size());
    for (size_t i = 0; i < trails.size(); ++i) {
      ExpectSameTrail(*trails[i], *trailsAgain[i], placesKept);
    }
    for (const Point* point : map.loosePoints) {
      const Point* same = FindPointByName(again, nullptr, point->name);
      ASSERT_NE(same, nullptr) << point->name;
      ExpectSamePoint(*point, *same, placesKept);
    }
    const auto grids = Listed(map.grids, true);
    const auto gridsAgain = Listed(again.grids, false);
    ASSERT_EQ(grids.size(), gridsAgain.size());
    for (size_t i = 0; i < grids.size(); ++i) ExpectSameGrid(*grids[i], *gridsAgain[i]);
    const auto ranges = Listed(map.ranges, true);
    const auto rangesAgain = Listed(again.ranges, false);
    ASSERT_EQ(ranges.size(), rangesAgain.size());
    for (size_t i = 0; i < ranges.size(); ++i) ExpectSameRange(*ranges[i], *rangesAgain[i]);
  }

  /// The lines of a file, sorted, without the altitude of solved places (which is cut to whole
  /// metres) and with one tab before a note.
  static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
      if (line.substr(0, 2) == "L\t") line.erase(line.rfind('\t'));
      for (size_t at; (at = line.find("\t\tnote")) != std::string::npos;) line.erase(at, 1);
      lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
  }
};

TEST_P(RoundTripTest, FullSaveReadsBackToTheSameMap) {
  SCOPED_TRACE(testing::Message() << "seed " << GetParam());
  Workspace workspace(messages);
  Map& map = MapFromText(workspace, MapMaker(GetParam()).Make());
  Map& again = MapFromText(workspace, MapFileText(map, "test.map", true));
  ExpectSameMap(map, again, true);
  for (const auto& entry : messages.Entries()) ADD_FAILURE() << entry.text;
}

TEST_P(RoundTripTest, SimpleSaveKeepsTheSurveyItself) {
  SCOPED_TRACE(testing::Message() << "seed " << GetParam());
  Workspace workspace(messages);
  Map& map = MapFromText(workspace, MapMaker(GetParam()).Make());
  const std::string text = MapFileText(map, "test.map", false);
  EXPECT_EQ(text.find("\nL\t"), std::string::npos);
  ExpectSameMap(map, MapFromText(workspace, text), false);
}

TEST_P(RoundTripTest, SavingTwiceTurnsEveryOrderBack) {
  SCOPED_TRACE(testing::Message() << "seed " << GetParam());
  Workspace workspace(messages);
  Map& map = MapFromText(workspace, MapMaker(GetParam()).Make());
  const std::string first = MapFileText(map, "test.map", true);
  EXPECT_EQ(MapFileText(map, "test.map", true), first) << "a save changes nothing in the map";
  const std::string second = MapFileText(MapFromText(workspace, first), "test.map", true);
  EXPECT_EQ(Lines(second).size(), Lines(first).size());
  const std::string third = MapFileText(MapFromText(workspace, second), "test.map", true);
  EXPECT_EQ(Lines(third), Lines(first));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoundTripTest, testing::Range(1U, 41U));

}  // namespace
}  // namespace orvane
