#include "base/number_text.h"
#include "editing/edit_history.h"
#include "editing/save_trail.h"
#include "mapfile/writer.h"
#include "model/time_names.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace orvane {
namespace {

constexpr char SiteText[] =
    "M\t2\nZ\tFeed,Rest\n"
    "T\tPath\tTrail\t\t\t1.5,#804000\nG\tA\tS21 15.1\tE47 25.1\t120\nC\tB\tA\t40\t80\t2\n"
    "C\tC\tB\t50\t90\t-3\nG\tD\tS21 15.2\tE47 25.3\t90\t2\t2k,3,4,c3\tat the stream\nP\tA\n"
    "T\tBrook\tRiver\nC\tE\tC\t30\t10\t0\nC\tF\tE\t35\t20\t1\nP\tD\nC\tG\tD\t20\t200\t0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS21 15.15\tE47 25.15\t\t\t,,,C4\n"
    "G\t8:30\tS21 15.25\tE47 25.2\nC\t9:10\tB\t10\t45\t0\n"
    "T\t\tPapio\t\t2020-3-2\nG\t7:00\tS21 15.3\tE47 25.1\nG\t7:45\tS21 15.1\tE47 25.25\n"
    "R\tBlue\nK\tPapio\n";

std::string Any(Dice& dice, std::vector<std::string> texts) { return dice.Of(texts); }

std::string AnyName(Dice& dice) {
  return Any(dice, {"A", "B", "C", "D", "E", "F", "G", "H", "Spring", "8:00", "9:30", ""});
}

/// A text for a column, mostly one that is accepted.
std::string AnyText(Dice& dice, size_t column) {
  const std::string tenths = std::to_string(dice.Below(10));
  switch (column) {
    case ColumnName:
    case ColumnPoint:
      return AnyName(dice);
    case ColumnLat:
      return Any(dice, {"S21 15." + tenths, ""});
    case ColumnLon:
      return Any(dice, {"E47 25." + tenths, ""});
    case ColumnDistance:
      return Any(dice, {"12.5", "30m", "", "far"});
    case ColumnBearing:
      return Any(dice, {"A92.5", "4" + tenths, "359", ""});
    case ColumnInclination:
      return Any(dice, {"3.5", "-2", ""});
    case ColumnAltitude:
      return Any(dice, {"120", "99m", ""});
    case ColumnWeight:
      return Any(dice, {"2", "3", ""});
    case ColumnScale:
      return Any(dice, {"2km", "500", ""});
    case ColumnFirstSm + 2:
      return Any(dice, {"a fig", ""});
    default:
      return Any(dice, {tenths, "-4", ""});
  }
}

/// Types into cells, and inserts, deletes and moves rows.
void EditAtRandom(TrailEditor& editor, Dice& dice) {
  editor.SetMode(EntryMode::Mixture);
  for (int i = dice.Int(1, 7); i > 0; --i) {
    const auto row = static_cast<size_t>(dice.Below(static_cast<int>(editor.RowCount()) + 1));
    switch (dice.Below(10)) {
      case 0:
        editor.DeleteRow(row);
        break;
      case 1:
        editor.MoveRow(row, static_cast<size_t>(dice.Below(6)));
        break;
      case 2:
        editor.InsertRow(0);
        break;
      default: {
        const auto column = static_cast<size_t>(dice.Below(static_cast<int>(ColumnFirstSm) + 3));
        editor.SetCell(row, column, AnyText(dice, column));
      }
    }
  }
}

std::string WithoutTabs(std::string text) {
  std::erase(text, '\t');
  return text;
}

/// What the file holds of a reading: of each kind only what it uses.
std::string TextOf(const Measurement& reading) {
  std::string text = FormatGeneral(double{reading.altitude}) + " " + std::to_string(reading.count);
  if ((reading.flags & MeasureGps) != 0) {
    text +=
        " fix " + FormatFixed(reading.position.lat, 7) + " " + FormatFixed(reading.position.lon, 7);
  }
  if ((reading.flags & MeasureCompass) != 0) {
    text += " shot " + (reading.base == nullptr ? "" : reading.base->name) + " " +
            FormatGeneral(reading.bearing) + " " + FormatGeneral(reading.distance) + " " +
            FormatGeneral(reading.inclination) + " " +
            std::to_string(reading.flags & MeasureAbsoluteBearing);
  }
  return text + " " + std::to_string(reading.flags & (MeasureAltitude | MeasureNear));
}

/// Readings come back in the reverse order.
std::multiset<std::string> ReadingsOf(const Point& point) {
  std::multiset<std::string> texts;
  for (const Measurement& reading : point.measurements) texts.insert(TextOf(reading));
  return texts;
}

/// Altitudes are not compared: those of a region depend on the order of the readings.
void ExpectSamePoint(const Point& held, const Point& back) {
  constexpr double Digits = 2e-6;  // degrees
  ASSERT_EQ(held.name, back.name);
  EXPECT_EQ(ReadingsOf(held), ReadingsOf(back)) << held.name;
  EXPECT_EQ(held.timeOfDay, back.timeOfDay) << held.name;
  EXPECT_EQ(held.duration, back.duration) << held.name;
  EXPECT_TRUE(std::equal(std::begin(held.sm), std::end(held.sm), std::begin(back.sm))) << held.name;
  EXPECT_EQ(held.markShape, back.markShape) << held.name;
  EXPECT_EQ(held.labelLimit, back.labelLimit) << held.name;
  EXPECT_EQ(WithoutTabs(held.note.value_or("")), WithoutTabs(back.note.value_or("")));
  if (held.measurements.empty()) return;  // it keeps a place that no reading gives
  EXPECT_EQ(IsPlaced(held), IsPlaced(back)) << held.name;
  if (!IsPlaced(held) || !IsPlaced(back)) return;
  EXPECT_NEAR(held.geo.lat, back.geo.lat, Digits) << held.name;
  EXPECT_NEAR(held.geo.lon, back.geo.lon, Digits) << held.name;
}

void ExpectSameTrail(const Trail& held, const Trail& back) {
  EXPECT_EQ(held.name, back.name);
  EXPECT_EQ(held.type, back.type);
  EXPECT_EQ(held.focalAnimal, back.focalAnimal);
  EXPECT_EQ(held.date, back.date);
  EXPECT_EQ(held.color, back.color);
  EXPECT_EQ(held.width, back.width);
  EXPECT_EQ(held.groupSize, back.groupSize);
  ASSERT_EQ(held.points.size(), back.points.size()) << held.name.value_or("");
  for (size_t i = 0; i < held.points.size(); ++i) {
    ExpectSamePoint(*held.points[i], *back.points[i]);
  }
}

std::set<std::string> LooseNames(const Map& map) {
  std::set<std::string> names;
  for (const Point* point : map.loosePoints) {
    if (!IsTimeName(point->name)) names.insert(point->name);  // the others are never written
  }
  return names;
}

struct SavedEditsTest : MapFixture {
  /// Opens an editor on some trail, or a new one with a form filled in.
  static TrailEditor AnyEditor(Map& map, Dice& dice, int number) {
    if (!dice.OneIn(4)) {
      auto trail = map.trails.begin();
      std::advance(trail, dice.Below(static_cast<int>(Length(map.trails))));
      return {map, &*trail};
    }
    TrailEditor editor(map, nullptr);
    editor.SetField(TrailField::Type, Any(dice, {"Trail", "Papio"}));
    if (dice.OneIn(2)) {
      editor.SetField(TrailField::Name, "New " + std::to_string(number));
    } else {
      editor.SetField(TrailField::Date, "2020-4-" + std::to_string(number + 1));
    }
    return editor;
  }

  void ExpectSameMap(Map& held) {
    Workspace other(messages);
    const Map& back = MapFromText(other, MapFileText(held, "site.map", false), "site.map");
    ASSERT_EQ(Length(held.trails), Length(back.trails));
    auto trail = back.trails.begin();
    for (const Trail& each : held.trails) ExpectSameTrail(each, *trail++);
    EXPECT_EQ(LooseNames(held), LooseNames(back));
    const Range& range = held.ranges.front();
    EXPECT_EQ(range.keys, back.ranges.front().keys);
    EXPECT_EQ(range.points.size(), back.ranges.front().points.size());
    EXPECT_EQ(range.totalMinutes, back.ranges.front().totalMinutes);
  }
};

/// What a window holds after OK is what comes back when its saved file is read.
TEST_F(SavedEditsTest, ComeBackFromTheFile) {
  for (std::uint64_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    workspace.maps.clear();
    Map& map = Open(SiteText, "site.map");
    EditHistory history(workspace);
    for (int turn = 0; turn < 5 && !HasFailure(); ++turn) {
      TrailEditor editor = AnyEditor(map, dice, turn);
      EditAtRandom(editor, dice);
      SaveTrailEditor(editor, history);
      ExpectSameMap(map);
      if (dice.OneIn(4) && history.Undo(map)) ExpectSameMap(map);
    }
  }
}

}  // namespace
}  // namespace orvane
