#include "editing/save_trail.h"

#include "editing/edit_history.h"
#include "mapfile/writer.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>
#include <iterator>

namespace orvane {
namespace {

constexpr char SiteText[] =
    "Z\tFeed\n"
    "T\tKana\tTrail\t\t\t1.5,#804000\n"
    "G\tKana0\tS21 15\tE47 25\t120\t2\t2k\tat the stream\n"
    "C\tKana50\tKana0\t48.5\t84\t3.5\n"
    "C\tKana100\tKana50\t51\tA92.5\t-2\t\t3\n"
    "T\tRidge\tTrail\n"
    "G\tRidge0=Camp\tS21 15.12\tE47 25.21\t180\n"
    "C\tRidge40\tRidge0\t40\t12\t6\n"
    "C\tKana0\tRidge0\t600\t250\t0\n"
    "T\t\tPapio\tAna\t2020-3-1\n"
    "G\t8:00\tS21 15.01\tE47 25.02\n"
    "G\t8:30\tS21 15.03\tE47 25.06\n"
    "N\t9:10\tKana50\n"
    "R\tPapio\n"
    "K\tPapio\n";

struct SaveTrailTest : MapFixture {
  Map& map = Open(SiteText, "site.map");
  EditHistory history{workspace};

  Trail& TrailNamed(std::string_view name) { return *FindTrail(map, name); }
  /// Answers all questions from now on by that button, and forgets those before.
  void AnswerWith(int button) { messages = RecordedMessages(button); }
  static void SetAltitude(TrailEditor& editor, size_t row, const char* text) {
    editor.SetMode(EntryMode::Mixture);
    EXPECT_TRUE(editor.SetCell(row, ColumnAltitude, text));
  }
  std::string Saved() { return MapFileText(map, "site.map", true); }
  Texts Notes() const {
    Texts notes;
    for (const auto& entry : messages.Entries()) {
      if (entry.severity == Severity::Note) notes.push_back(entry.text);
    }
    return notes;
  }
};

TEST_F(SaveTrailTest, OkWithoutAChangeLeavesTheMapAlone) {
  const std::string before = Saved();
  TrailEditor editor(map, &TrailNamed("Kana"));
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Saved(), before);
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

TEST_F(SaveTrailTest, ATitleEndsWithAWholeLetter) {
  Trail& trail = TrailNamed("Kana");
  trail.name = "For\xC3\xAAt de l'Ouest 2\xC3\xA9tang";  // the second accent has the 20th byte
  EXPECT_EQ(TrailEditor(map, &trail).Title(), "Trail: For\xC3\xAAt de l'Ouest 2");
}

TEST_F(SaveTrailTest, AChangedReadingMovesThePoint) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  ASSERT_EQ(editor.Mode(), EntryMode::Mixture);
  const LatLon was = Named(map, "Kana100").geo;
  ASSERT_EQ(editor.GetCell(2, ColumnName), "Kana50");
  ASSERT_TRUE(editor.SetCell(2, ColumnDistance, "100"));
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Named(map, "Kana50").measurements.front().distance, 100);
  EXPECT_GT(was.lon - Named(map, "Kana100").geo.lon, 0.0004) << "what hangs on it moves too";
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(*history.UndoName(map), "Edit of Trail Kana");
}

TEST_F(SaveTrailTest, APointThatNoRowNamesLeavesTheMap) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.DeleteRow(editor.RowCount() - 1);
  SaveTrailEditor(editor, history);
  EXPECT_EQ(FindPointByName(map, nullptr, "Kana100"), nullptr);
  EXPECT_EQ(NamesOf(TrailNamed("Kana")), (Texts{"Kana0", "Kana50"}));
}

TEST_F(SaveTrailTest, APointThatAReadingStillNamesStaysLoose) {
  TrailEditor editor(map, &TrailNamed("Ridge"));
  // Of "Ridge0=Camp" the row goes; Ridge40 is still measured from it.
  editor.DeleteRow(0);
  SaveTrailEditor(editor, history);
  Point& base = Named(map, "Ridge0");
  EXPECT_EQ(base.trail, nullptr);
  EXPECT_NE(std::find(map.loosePoints.begin(), map.loosePoints.end(), &base),
            map.loosePoints.end());
}

TEST_F(SaveTrailTest, APointOfAnotherTrailKeepsItsReadings) {
  // Kana0 is on both trails, and no row of Ridge names it any more.
  TrailEditor editor(map, &TrailNamed("Ridge"));
  while (editor.RowCount() > 0 && editor.GetCell(editor.RowCount() - 1, 0) == "Kana0") {
    editor.DeleteRow(editor.RowCount() - 1);
  }
  const size_t readings = Readings(Named(map, "Kana0")).size();
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Readings(Named(map, "Kana0")).size(), readings);
  EXPECT_EQ(Named(map, "Kana0").trail, &TrailNamed("Kana"));
  EXPECT_EQ(*Named(map, "Kana0").note, "\tat the stream");
}

TEST_F(SaveTrailTest, ReadingsOfAPointWithSynonymsDoNotDouble) {
  TrailEditor editor(map, &TrailNamed("Ridge"));
  editor.SetCell(0, 7, "181");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(Readings(Named(map, "Camp")).size(), 1U);
  EXPECT_EQ(Named(map, "Camp").name, "Ridge0");
}

TEST_F(SaveTrailTest, AVisitMakesNoReading) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  const size_t row = editor.RowCount();
  editor.SetCell(row, ColumnName, "Fig");
  editor.SetCell(row, ColumnPoint, "");
  SaveTrailEditor(editor, history);
  EXPECT_TRUE(Named(map, "Fig").measurements.empty());
  EXPECT_EQ(NamesOf(TrailNamed("Kana")).back(), "Fig");
}

TEST_F(SaveTrailTest, APointWithoutReadingsStaysOnItsTrail) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.SetCell(editor.RowCount(), ColumnName, "Fig");
  editor.SetCell(editor.RowCount() - 1, ColumnPoint, "");
  SaveTrailEditor(editor, history);
  Named(map, "Fig").note = "\told";
  TrailEditor again(map, &TrailNamed("Kana"));
  const size_t last = again.RowCount() - 1;
  EXPECT_EQ(again.GetCell(last, ColumnName), "Fig");
  EXPECT_EQ(again.GetCell(last, ColumnPoint), "");
  ASSERT_TRUE(again.Rows()[last].isRepeat);
  again.SetCell(2, ColumnDistance, "52");
  ASSERT_EQ(SaveTrailEditor(again, history), SaveOutcome::Closes);
  EXPECT_EQ(NamesOf(TrailNamed("Kana")).back(), "Fig");
  EXPECT_EQ(*Named(map, "Fig").note, "\told");
}

// The marks of all stops of a follow were lost by any change of it.
TEST_F(SaveTrailTest, AStopKeepsItsMark) {
  Trail* follow = FindTrailByDate(map, "Papio", PackDate(2020, 3, 1), "Ana");
  Point& stop = *follow->points[1];
  stop.markShape = PointMarkSquare;
  stop.markSize = 5;
  stop.flags |= PointMarkFilled;
  TrailEditor editor(map, follow);
  editor.SetCell(0, ColumnLat, "S21 15.02");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  const Point& now = *follow->points[1];
  EXPECT_EQ(now.name, "8:30");
  EXPECT_EQ(now.markShape, PointMarkSquare);
  EXPECT_EQ(now.markSize, 5);
  EXPECT_NE(now.flags & PointMarkFilled, 0U);
}

TEST_F(SaveTrailTest, ABaseThatIsMadeAgainKeepsItsMark) {
  Named(map, "Kana100").markShape = PointMarkCircle;
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.DeleteRow(editor.RowCount() - 1);
  editor.SetCell(editor.RowCount() - 1, ColumnPoint, "Kana100");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(Named(map, "Kana100").trail, nullptr);
  EXPECT_EQ(Named(map, "Kana100").markShape, PointMarkCircle);
}

constexpr char NamelessText[] =
    "T\tBrook\tRiver\nG\tB1\tS21 15\tE47 25\n"
    "G\t\tS21 15.1\tE47 25.1\t90\t\t2k,,,,C4\ta pool\n"
    "G\t\tS21 15.2\tE47 25.2\t\t\t,,,,s3\n";

// The marks of all nameless points of a trail were lost by any change of it.
TEST_F(SaveTrailTest, ANamelessPointKeepsItsMark) {
  Map& brook = Open(NamelessText, "brook.map");
  TrailEditor editor(brook, FindTrail(brook, "Brook"));
  editor.SetMode(EntryMode::Mixture);
  editor.SetCell(0, ColumnAltitude, "100");
  editor.MoveRow(2, 1);
  editor.SetCell(3, ColumnLat, "S21 15.3");
  editor.SetCell(3, ColumnLon, "E47 25.3");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  const std::vector<Point*>& points = FindTrail(brook, "Brook")->points;
  ASSERT_EQ(points.size(), 4U);
  EXPECT_EQ(points[1]->markShape, PointMarkSquare);
  EXPECT_EQ(points[1]->markSize, 3);
  EXPECT_EQ(points[1]->flags & PointMarkFilled, 0U);
  EXPECT_EQ(points[2]->markShape, PointMarkCircle);
  EXPECT_EQ(points[2]->markSize, 4);
  EXPECT_NE(points[2]->flags & PointMarkFilled, 0U);
  EXPECT_EQ(points[3]->markShape, PointMarkNone) << "a copied row is of another point";
}

TEST_F(SaveTrailTest, ANamelessPointThatGetsANameKeepsItsMark) {
  Map& brook = Open(NamelessText, "brook.map");
  TrailEditor editor(brook, FindTrail(brook, "Brook"));
  editor.SetMode(EntryMode::Mixture);
  editor.SetCell(1, ColumnName, "Pool");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Named(brook, "Pool").markShape, PointMarkCircle);
  EXPECT_TRUE(Said().empty());
}

TEST_F(SaveTrailTest, ANamelessPointThatIsOpenedAndSavedIsAsBefore) {
  Map& brook = Open(NamelessText, "brook.map");
  const std::string before = MapFileText(brook, "brook.map", true);
  TrailEditor editor(brook, FindTrail(brook, "Brook"));
  editor.SetMode(EntryMode::Mixture);
  EXPECT_EQ(editor.GetCell(1, ColumnName), "");
  EXPECT_EQ(editor.GetCell(1, ColumnScale), "2km");
  editor.SetCell(0, ColumnWeight, "1");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(MapFileText(brook, "brook.map", true), before);
  EXPECT_TRUE(Said().empty());
}

// They were lost without a word.
TEST_F(SaveTrailTest, RowsWithNeitherNameNorReadingAreLeftOutWithANote) {
  Map& brook = Open(std::string(NamelessText) + "N\t\tB1\nP\t\t\tdry\n", "brook.map");
  TrailEditor editor(brook, FindTrail(brook, "Brook"));
  editor.SetMode(EntryMode::Mixture);
  const size_t last = editor.RowCount();
  ASSERT_EQ(last, 5U);
  editor.SetCell(last, ColumnFirstSm, "a comment without a point");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(FindTrail(brook, "Brook")->points.size(), 3U);
  EXPECT_EQ(Notes(), Texts{"Rows with neither a name nor a reading were left out: 3"});
}

TEST_F(SaveTrailTest, AnEmptyRowIsLeftOutSilently) {
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Road");
  editor.SetField(TrailField::Name, "New road");
  editor.SetCell(0, ColumnName, "R0");
  editor.SetCell(1, ColumnName, "R1");
  editor.SetCell(1, ColumnName, "");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(NamesOf(TrailNamed("New road")), Texts{"R0"});
  EXPECT_EQ(Notes(), Texts{});
}

// The row was lost without a word, and such a base made an altitude of -9999 m.
TEST_F(SaveTrailTest, ANameThatIsNoneIsAMessage) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  const size_t rows = editor.RowCount();
  editor.SetCell(rows, ColumnName, "=");
  editor.SetCell(rows - 1, ColumnPoint, "==");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  Texts errors;
  for (const auto& entry : messages.Entries()) {
    if (entry.severity == Severity::Error) errors.push_back(entry.text);
  }
  EXPECT_EQ(errors, (Texts{"Bad pointname ==", "Bad pointname ="}));
  EXPECT_EQ(NamesOf(TrailNamed("Kana")).back(), "Kana100");
  EXPECT_TRUE(Named(map, "Kana100").measurements.empty());
}

// Nothing could give it another place.
TEST_F(SaveTrailTest, APointThatLosesItsLastReadingKeepsItsPlace) {
  const LatLon was = Named(map, "Kana100").geo;
  TrailEditor editor(map, &TrailNamed("Kana"));
  const size_t last = editor.RowCount() - 1;
  ASSERT_EQ(editor.GetCell(last, ColumnName), "Kana100");
  editor.SetCell(last, ColumnPoint, "");
  editor.SetCell(last, ColumnScale, "500");
  editor.SetCell(last, ColumnFirstSm + 1, "a fig");
  editor.SetCell(2, ColumnDistance, "100");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  const Point& point = Named(map, "Kana100");
  EXPECT_TRUE(point.measurements.empty());
  EXPECT_TRUE(IsPlaced(point));
  EXPECT_EQ(point.geo.lat, was.lat);
  EXPECT_EQ(point.geo.lon, was.lon);
  Workspace other(messages);
  const Point& back = Named(MapFromText(other, Saved(), "site.map"), "Kana100");
  EXPECT_TRUE(IsPlaced(back)) << "the file holds its place";
  EXPECT_NEAR(back.geo.lon, was.lon, 1e-9);
  EXPECT_EQ(point.labelLimit, 500);
  EXPECT_EQ(back.labelLimit, 0) << "but not its scale";
  EXPECT_EQ(point.note, "a fig");
  EXPECT_FALSE(back.note);
}

// The saved file would bring them back.
TEST_F(SaveTrailTest, TheCornerOfAGridAndTheOriginStay) {
  Map& site = Open(std::string(NamelessText) +
                       "G\tCorner\tS21 15.3\tE47 25.3\nG\tHome\tS21 15.4\tE47 25.4\n"
                       "O\tHome\nH\tCorner\t100\t5\t5\t0\ta1\t1\n",
                   "grid.map");
  ASSERT_EQ(site.grids.front().corner, &Named(site, "Corner"));
  TrailEditor editor(site, FindTrail(site, "Brook"));
  while (editor.RowCount() > 1) editor.DeleteRow(1);
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(NamesOf(*FindTrail(site, "Brook")), Texts{"B1"});
  for (const char* name : {"Corner", "Home"}) {
    const Point& point = Named(site, name);
    EXPECT_TRUE(point.measurements.empty()) << name;
    EXPECT_EQ(point.trail, nullptr) << name;
    EXPECT_EQ(std::count(site.loosePoints.begin(), site.loosePoints.end(), &point), 1) << name;
  }
  EXPECT_EQ(site.grids.front().corner, &Named(site, "Corner"));
  EXPECT_EQ(site.origin, &Named(site, "Home"));
  EXPECT_TRUE(site.namelessPoints.empty());
}

TEST_F(SaveTrailTest, AnAltitudeBeyondWholeNumbersIsHeld) {
  Point& camp = Named(map, "Ridge0");
  camp.measurements.front().altitude = 3e38F;
  const TrailEditor editor(map, &TrailNamed("Ridge"));
  EXPECT_EQ(editor.Rows()[0].altitude, 1'000'000'000);
}

// A point of the basis that leaves a trail keeps its reading from a point of this map.
TEST_F(SaveTrailTest, ABaseOfAReadingInTheBasisStays) {
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  ReadMapText(above,
              "T\tSpur\tTrail\nG\tSpur0\tS21 15.2\tE47 25.2\nC\tKana100\tSpur0\t30\t90\t0\n");
  FinishMap(above);
  TrailEditor editor(above, FindTrail(above, "Spur"));
  while (editor.RowCount() > 0) editor.DeleteRow(0);
  editor.SetCell(0, ColumnName, "Spur9");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_NE(FindPointByName(above, nullptr, "Spur0"), nullptr);
}

TEST_F(SaveTrailTest, ATimeTypedTwiceIsOnePointOfItsTrail) {
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Papio");
  editor.SetField(TrailField::Date, "2020-3-2");
  editor.SetMode(EntryMode::Gps);
  for (const size_t row : {0U, 1U}) {
    editor.SetCell(row, 0, "8:00");
    editor.SetCell(row, 1, "S21 15");
    editor.SetCell(row, 2, "E47 25");
  }
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  const Trail& made = map.trails.front();
  ASSERT_EQ(made.points.size(), 1U);
  EXPECT_EQ(Readings(*made.points.front()).size(), 2U);
  const Trail* old = FindTrailByDate(map, "papio", PackDate(2020, 3, 1), "Ana");
  EXPECT_NE(old->points.front(), made.points.front());
}

TEST_F(SaveTrailTest, AnUnknownPointIsMadeWithoutAMessage) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.SetCell(2, ColumnPoint, "Nowhere");
  messages.Clear();
  SaveTrailEditor(editor, history);
  Point& made = Named(map, "Nowhere");
  EXPECT_EQ(made.trail, nullptr);
  EXPECT_EQ(map.loosePoints.front(), &made);
}

TEST_F(SaveTrailTest, RefusesWhatTheFormCannotMean) {
  const auto said = [&](TrailField field, std::string_view text) {
    messages.Clear();
    TrailEditor editor(map, nullptr);
    editor.SetField(TrailField::Type, "Road");
    editor.SetField(TrailField::Name, "New road");
    editor.SetCell(0, 0, "R0");
    editor.SetField(field, text);
    EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
    return Said().empty() ? std::string() : Said().front();
  };
  EXPECT_EQ(said(TrailField::Date, "2020-1-x"), "Sorry, Date is in a bad format");
  EXPECT_EQ(said(TrailField::Size, "ten"),
            "Sorry, Troop size is in a bad format (must be an integer)");
  EXPECT_EQ(said(TrailField::Width, "2 feet"),
            "Sorry, Trail Width is in a bad format (must be an integer, a number of meters)");
  EXPECT_EQ(said(TrailField::LineColor, "muddy"), "Sorry, I don't know that color");
  EXPECT_EQ(said(TrailField::Name, "ridge"), "Sorry, this trail already exists");
  EXPECT_EQ(history.Steps(), 0U);
}

TEST_F(SaveTrailTest, NeedsARow) {
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Road");
  editor.SetField(TrailField::Name, "New road");
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  EXPECT_EQ(Said().back(), "Sorry but there must be at least one point on your trail");
}

TEST_F(SaveTrailTest, PointsWithoutATrailAreLoose) {
  TrailEditor editor(map, nullptr);
  editor.SetCell(0, 0, "Spring");
  editor.SetMode(EntryMode::Gps);
  editor.SetCell(0, 1, "S21 15");
  editor.SetCell(0, 2, "E47 25");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "No trail");
  EXPECT_EQ(map.loosePoints.front(), &Named(map, "Spring"));
  EXPECT_NE(Named(map, "Spring").flags & PointPlaced, 0U);
}

TEST_F(SaveTrailTest, AsksBeforeANearPlaceIsLost) {
  Trail* follow = FindTrailByDate(map, "Papio", PackDate(2020, 3, 1), "Ana");
  TrailEditor editor(map, follow);
  EXPECT_EQ(editor.GetCell(2, ColumnPoint), "Kana50");
  editor.SetCell(0, ColumnFirstSm + 1, "resting");
  SaveTrailEditor(editor, history);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].text,
            "The place \"Kana50\" of 9:10 can't be kept by this editor.");
}

// It ended with half a letter, and so was shown as Latin-1.
TEST_F(SaveTrailTest, AQuestionOnAPlaceEndsWithAWholeLetter) {
  const std::string place = std::string(59, 'x') + "\xC3\xA9tang";
  const std::string name = std::string(29, 'p') + "\xC3\xA9";
  Map& brook = Open("T\tBrook\tRiver\nN\t" + name + "\t" + place + "\n", "brook.map");
  TrailEditor editor(brook, FindTrail(brook, "Brook"));
  editor.SetField(TrailField::Width, "3");
  SaveTrailEditor(editor, history);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].text, "The place \"" + std::string(59, 'x') + "\" of " +
                                              std::string(29, 'p') +
                                              " can't be kept by this editor.");
}

TEST_F(SaveTrailTest, AsksBeforeAChangeOfAnotherWindowIsReplaced) {
  TrailEditor mine(map, &TrailNamed("Kana"));
  TrailEditor other(map, &TrailNamed("Kana"));
  other.SetCell(2, ColumnDistance, "77");
  SaveTrailEditor(other, history);
  mine.SetCell(2, ColumnDistance, "78");
  messages.Clear();
  SaveTrailEditor(mine, history);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Trail changed");
}

TEST_F(SaveTrailTest, AChangeOfLooksElsewhereIsNotAskedAbout) {
  Trail& kana = TrailNamed("Kana");
  TrailEditor mine(map, &kana);
  TrailEditor other(map, &kana);
  other.SetField(TrailField::LineColor, "red");
  other.SetField(TrailField::Width, "7");
  other.SetField(TrailField::Size, "3");
  ASSERT_EQ(SaveTrailEditor(other, history), SaveOutcome::Closes);
  kana.lineStyle = LineStyle::Dotted;
  kana.note = "steep";
  Named(map, "Kana0").note = "\tdry now";
  mine.SetCell(2, ColumnDistance, "78");
  ASSERT_EQ(SaveTrailEditor(mine, history), SaveOutcome::Closes);
  EXPECT_TRUE(messages.Questions().empty());
}

// --- Identity -----------------------------------------------------------------------------------

TEST_F(SaveTrailTest, AsksBeforeATrailIsSavedWhoseIdentityLeadsToAnother) {
  Map& site = Open(
      "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\n"
      "T\t\tPapio\tAna\t2020-3-1\nG\t14:00\tS20 1\tE47 0\n",
      "two.map");
  Trail& first = site.trails.front();
  Trail& second = *std::next(site.trails.begin());
  const std::string before = MapFileText(site, "two.map", true);
  TrailEditor editor(site, &second);
  SetAltitude(editor, 0, "90");
  AnswerWith(2);
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Rename trail");
  EXPECT_EQ(messages.Questions()[0].buttons, (Texts{"Yes", "Cancel", ""}));
  EXPECT_EQ(messages.Questions()[0].text, "Do you want to rename this trail?");
  EXPECT_EQ(MapFileText(site, "two.map", true), before);
  AnswerWith(1);
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(second.points[0]->measurements.front().altitude, 90);
  EXPECT_EQ(second.type, "Papio");
  EXPECT_EQ(second.date, PackDate(2020, 3, 1));
  EXPECT_EQ(second.focalAnimal, "Ana");
  EXPECT_EQ(NamesOf(first), Texts{"8:00"});
  TrailEditor ofFirst(site, &first);
  SetAltitude(ofFirst, 0, "91");
  AnswerWith(2);
  EXPECT_EQ(SaveTrailEditor(ofFirst, history), SaveOutcome::Closes) << "the lookup finds it";
  EXPECT_TRUE(messages.Questions().empty());
}

// The form shows it cut, and no trail has the cut name.
TEST_F(SaveTrailTest, ALongIdentityIsLookedUpWhole) {
  const std::string name = "The ridge above the old camp by the river";
  const std::string cut = name.substr(0, MostFieldBytes);
  Map& site = Open("T\t" + cut + "\tTrail\nG\tA\tS20 0\tE47 0\nT\t" + name +
                       "\tTrail\nG\tB\tS20 1\tE47 0\nT\t\tPapio\t" + name +
                       "\t2020-3-1\nG\t8:00\tS20 0\tE47 0\n",
                   "long.map");
  for (Trail& trail : site.trails) {
    TrailEditor editor(site, &trail);
    EXPECT_LE(editor.Form().Text(TrailField::Name).size(), MostFieldBytes);
    EXPECT_LE(editor.Form().Text(TrailField::Focal).size(), MostFieldBytes);
    SetAltitude(editor, 0, "90");
    ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
    EXPECT_EQ(trail.points[0]->measurements.front().altitude, 90);
  }
  EXPECT_TRUE(messages.Questions().empty());
  EXPECT_EQ(TrailNamesOf(site), (Texts{cut, name, "<none>"}));
  EXPECT_EQ(std::next(site.trails.begin(), 2)->focalAnimal, name);
}

// --- Single rules -------------------------------------------------------------------------------

TEST_F(SaveTrailTest, ASizeBelowOneIsOne) {
  Trail& kana = TrailNamed("Kana");
  for (const char* size : {"0", "-3", ""}) {
    kana.groupSize = 5;
    TrailEditor editor(map, &kana);
    editor.SetField(TrailField::Size, size);
    ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes) << size;
    EXPECT_EQ(kana.groupSize, 1) << size;
  }
  TrailEditor editor(map, &kana);
  editor.SetField(TrailField::Size, "2");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(kana.groupSize, 2);
}

TEST_F(SaveTrailTest, ARowInsertedAtTheHeadIsACopyOfTheFirst) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  SetAltitude(editor, 0, "120");
  editor.SetCell(0, ColumnWeight, "4");
  editor.SetCell(0, ColumnFirstSm, "7");
  const TrailRow old = editor.Rows()[0];
  ASSERT_TRUE(old.comment);
  ASSERT_TRUE(editor.InsertRow(0));
  const TrailRow& row = editor.Rows()[0];
  EXPECT_EQ(row.name, "");
  EXPECT_FALSE(row.comment);
  EXPECT_EQ(row.altitude, 120);
  EXPECT_EQ(row.weight, 4);
  EXPECT_EQ(row.scale, 2000);
  EXPECT_EQ(row.sm[0], 7);
  EXPECT_EQ(row.basePoint, "Ridge0");
  EXPECT_EQ(row.distance, 600);
  EXPECT_EQ(row.bearing, 250);
  EXPECT_EQ(editor.Rows()[1].name, "Kana0");
  EXPECT_EQ(editor.Rows()[1].comment, old.comment);
  EXPECT_FALSE(editor.InsertRow(1)) << "only before the first";
}

TEST_F(SaveTrailTest, ARowInsertedIntoAnEmptyTableHasNoAltitude) {
  TrailEditor editor(map, nullptr);
  ASSERT_TRUE(editor.InsertRow(0));
  ASSERT_EQ(editor.RowCount(), 1U);
  EXPECT_EQ(editor.Rows()[0].altitude, NoRowAltitude);
}

TEST_F(SaveTrailTest, OnlyRowsThatAreThereCountAsChanged) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.DeleteRow(editor.RowCount());
  editor.DeleteRow(99);
  EXPECT_FALSE(editor.InsertRow(1));
  EXPECT_FALSE(editor.IsChanged());
  editor.InsertRow(0);
  EXPECT_TRUE(editor.IsChanged());
  TrailEditor other(map, &TrailNamed("Kana"));
  other.DeleteRow(other.RowCount() - 1);
  EXPECT_TRUE(other.IsChanged());
}

TEST_F(SaveTrailTest, APointOfAnotherMapOnlyLeavesTheTrail) {
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  ReadMapText(above, "T\tSpur\tTrail\nG\tSpur0\tS21 15.2\tE47 25.2\nP\tKana100\n");
  FinishMap(above);
  Trail& spur = *FindTrail(above, "Spur");
  Point& foreign = Named(map, "Kana100");
  ASSERT_EQ(NamesOf(spur), (Texts{"Spur0", "Kana100"}));
  const auto measurements = foreign.measurements;
  foreign.note = "\ta fig";
  foreign.sm[0] = 4;
  TrailEditor editor(above, &spur);
  while (editor.RowCount() > 1) editor.DeleteRow(1);
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(NamesOf(spur), Texts{"Spur0"});
  EXPECT_EQ(FindPointByName(map, nullptr, "Kana100"), &foreign);
  EXPECT_EQ(foreign.measurements, measurements);
  EXPECT_EQ(foreign.note, "\ta fig");
  EXPECT_EQ(foreign.sm[0], 4);
  EXPECT_EQ(foreign.trail, &TrailNamed("Kana"));
  EXPECT_EQ(NamesOf(TrailNamed("Kana")).back(), "Kana100");
}

TEST_F(SaveTrailTest, AnEmptiedMeasureIsZero) {
  TrailEditor editor(map, &TrailNamed("Kana"));
  editor.SetCell(0, ColumnFirstSm, "7");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(Named(map, "Kana0").sm[0], 7);
  TrailEditor again(map, &TrailNamed("Kana"));
  again.SetCell(0, ColumnFirstSm, "");
  SaveTrailEditor(again, history);
  EXPECT_EQ(Named(map, "Kana0").sm[0], 0);
}

TEST_F(SaveTrailTest, AContourKeepsItsVertices) {
  Trail& contour = map.contourTrails.emplace_front();
  contour.flags = TrailContour;
  contour.name = "Contour 100 #1";
  contour.points.push_back(&map.contourPoints.Make({}));
  TrailEditor editor(map, &contour);
  EXPECT_TRUE(editor.IsReadOnly());
  ASSERT_EQ(editor.RowCount(), 1U);
  EXPECT_TRUE(editor.Rows()[0].isGps);
  editor.SetField(TrailField::LineColor, "red");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(contour.points.size(), 1U);
  EXPECT_EQ(contour.color, 0xFF0000);
}

void ExpectSame(const Trail& held, const Trail& back) {
  ASSERT_EQ(held.points.size(), back.points.size());
  for (size_t i = 0; i < held.points.size(); ++i) {
    const Point& a = *held.points[i];
    const Point& b = *back.points[i];
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.flags & PointPlaced, b.flags & PointPlaced) << a.name;
    if ((a.flags & PointPlaced) != 0) {
      EXPECT_NEAR(a.geo.lat, b.geo.lat, 2e-7) << a.name;
      EXPECT_NEAR(a.geo.lon, b.geo.lon, 2e-7) << a.name;
    }
    EXPECT_EQ(MapFixture::Readings(a).size(), MapFixture::Readings(b).size()) << a.name;
    EXPECT_EQ(a.labelLimit, b.labelLimit) << a.name;
    EXPECT_EQ(a.timeOfDay, b.timeOfDay) << a.name;
    EXPECT_EQ(a.duration, b.duration) << a.name;
  }
}

/// Random editing at one trail after the other: the map in the window must be the one that comes
/// back when its saved file is read.
TEST_F(SaveTrailTest, WhatTheWindowHoldsComesBackFromTheFile) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    workspace.maps.clear();
    // A shot between two fixes would move them, and a file holds fixes as they were read.
    std::string text = SiteText;
    const std::string shot = "C\tKana0\tRidge0\t600\t250\t0\n";
    text.erase(text.find(shot), shot.size());
    Map& site = Open(text, "site.map");
    EditHistory own(workspace);
    for (int turn = 0; turn < 6; ++turn) {
      Trail* trail = FindTrail(site, dice.OneIn(2) ? "Kana" : "Ridge");
      TrailEditor editor(site, trail);
      for (int i = dice.Int(1, 5); i > 0; --i) {
        const auto row = static_cast<size_t>(dice.Below(static_cast<int>(editor.RowCount()) + 1));
        switch (dice.Below(6)) {
          case 0:
            if (editor.RowCount() > 1) editor.DeleteRow(row);
            break;
          case 1:
            editor.MoveRow(row, static_cast<size_t>(dice.Below(5)));
            break;
          case 2:
            editor.SetMode(EntryMode::Mixture);
            editor.SetCell(row, ColumnLat, "S21 15." + std::to_string(dice.Below(90)));
            editor.SetCell(row, ColumnName, "P" + std::to_string(dice.Below(9)));
            break;
          case 3:
            editor.SetMode(EntryMode::Mixture);
            editor.SetCell(row, ColumnName, "Q" + std::to_string(dice.Below(9)));
            editor.SetCell(row, ColumnPoint, "Kana0");
            editor.SetCell(row, ColumnDistance, std::to_string(dice.Int(5, 90)));
            break;
          case 4:
            editor.SetMode(EntryMode::Mixture);
            editor.SetCell(row, ColumnBearing, std::to_string(dice.Below(360)));
            break;
          default:
            editor.SetMode(EntryMode::Mixture);
            editor.SetCell(row, ColumnWeight, std::to_string(dice.Int(1, 4)));
        }
      }
      SaveTrailEditor(editor, own);
      Workspace other(messages);
      Map& read = MapFromText(other, MapFileText(site, "site.map", true), "site.map");
      ASSERT_EQ(Length(site.trails), Length(read.trails));
      auto back = read.trails.begin();
      for (const Trail& held : site.trails) {
        ExpectSame(held, *back++);
      }
    }
  }
}

}  // namespace
}  // namespace orvane
