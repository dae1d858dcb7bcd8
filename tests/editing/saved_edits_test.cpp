#include "editing/delete_records.h"
#include "editing/edit_history.h"
#include "editing/save_range.h"
#include "editing/save_trail.h"
#include "mapfile/writer.h"
#include "support/dice.h"
#include "support/map_from_text.h"
#include "support/same_map.h"

#include <gtest/gtest.h>
#include <memory>

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

std::string AnyRangeText(Dice& dice, size_t column) {
  switch (column) {
    case ColumnType:
      return Any(dice, {"Papio", "Trail", "Points: *", "none", ""});
    case ColumnFocal:
      return Any(dice, {"Ana", ""});
    case ColumnDateFrom:
    case ColumnDateTo:
      return Any(dice, {"2020-3-1", "2020-3-2", "", "soon"});
    default:
      return Any(dice, {"7:00", "8:30", "late", ""});
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

struct SavedEditsTest : MapFixture {
  /// \return null if there is none
  static Trail* AnyTrail(Map& map, Dice& dice) {
    if (map.trails.empty()) return nullptr;
    auto trail = map.trails.begin();
    std::advance(trail, dice.Below(static_cast<int>(Length(map.trails))));
    return &*trail;
  }

  /// Opens an editor on some trail, or a new one with a form filled in.
  static std::unique_ptr<TrailEditor> AnyEditor(Map& map, Dice& dice, int number) {
    Trail* trail = AnyTrail(map, dice);
    if (trail != nullptr && !dice.OneIn(4)) return std::make_unique<TrailEditor>(map, trail);
    auto editor = std::make_unique<TrailEditor>(map, nullptr);
    editor->SetField(TrailField::Type, Any(dice, {"Trail", "Papio"}));
    if (dice.OneIn(2)) {
      editor->SetField(TrailField::Name, "New " + std::to_string(number));
    } else {
      editor->SetField(TrailField::Date, "2020-4-" + std::to_string(number + 1));
    }
    return editor;
  }

  /// Makes a range, or changes the newest one, in its editor.
  static void EditAnyRange(Map& map, Dice& dice, EditHistory& history) {
    Range* range = map.ranges.empty() || dice.OneIn(2) ? nullptr : &map.ranges.front();
    RangeEditor editor(map, range, NoColor);
    if (range == nullptr || dice.OneIn(2)) editor.SetName(AnyName(dice) + " range");
    for (int i = dice.Int(1, 5); i > 0; --i) {
      const auto row = static_cast<size_t>(dice.Below(static_cast<int>(editor.RowCount()) + 1));
      const auto column = static_cast<size_t>(dice.Below(6));
      editor.SetCell(row, column, AnyRangeText(dice, column));
      if (dice.OneIn(5)) editor.DeleteRow(row);
      if (dice.OneIn(5)) editor.InsertRow(0);
      if (dice.OneIn(5)) editor.MoveRow(row, 0);
    }
    SaveRangeEditor(editor, history, [](Range&, Color) {});
  }

  void ExpectSavedIsSame(Map& held) {
    if (!CanBeWritten(held)) return;
    ++compared_;
    Workspace other(messages);
    ExpectSameMap(held, MapFromText(other, MapFileText(held, "site.map", false), "site.map"));
  }

  int compared_ = 0;
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
      const auto opened = AnyEditor(map, dice, turn);
      EditAtRandom(*opened, dice);
      SaveTrailEditor(*opened, history);
      ExpectSavedIsSame(map);
      if (dice.OneIn(4) && history.Undo(map)) ExpectSavedIsSame(map);
    }
  }
  EXPECT_GT(compared_, 250);
}

TEST_F(SavedEditsTest, ComeBackFromTheFileWithRangesAndWithoutWhatWasDeleted) {
  for (std::uint64_t seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    workspace.maps.clear();
    Map& map = Open(SiteText, "site.map");
    EditHistory history(workspace);
    for (int turn = 0; turn < 8 && !HasFailure(); ++turn) {
      switch (dice.Below(6)) {
        case 0:
          DeleteTrails(map, {AnyTrail(map, dice)}, history);
          break;
        case 1:
          if (!map.ranges.empty()) DeleteRanges(map, {&map.ranges.front()}, history);
          break;
        case 2: {
          const auto opened = AnyEditor(map, dice, turn);
          EditAtRandom(*opened, dice);
          SaveTrailEditor(*opened, history);
          break;
        }
        default:
          EditAnyRange(map, dice, history);
      }
      ExpectSavedIsSame(map);
      if (dice.OneIn(4) && history.Undo(map)) ExpectSavedIsSame(map);
    }
  }
  EXPECT_GT(compared_, 250);
}

}  // namespace
}  // namespace orvane
