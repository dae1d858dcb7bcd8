#include "editing/editor_draft.h"

#include "editing/edit_history.h"
#include "editing/save_range.h"
#include "editing/save_trail.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>
#include <iterator>
#include <utility>

namespace orvane {
namespace {

struct EditorDraftTest : MapFixture {
  Map& map = Open(
      "T\tPath\tTrail\nG\tA\tS20 0.12345\tE47 0\nN\tB\tA, 20m north\nC\tC\tA\t30\t40\n"
      "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nR\tBlue\nK\tPapio\tAna\t10:00-11:00\t"
      "2020-1-1 2020-2-1\n");

  Trail* FollowOfAna() {
    for (Trail& trail : map.trails) {
      if (trail.date != 0) return &trail;
    }
    return nullptr;
  }
  static EditorDraft ThroughText(const EditorDraft& draft) {
    const auto read = ParseDraft(DraftText(draft));
    EXPECT_TRUE(read);
    return read.value_or(EditorDraft{});
  }
  EditHistory history{workspace};

  /// The trail or range at a place of its list.
  static Trail& TrailAt(Map& map, int place) { return *std::next(map.trails.begin(), place); }
  static Range& RangeAt(Map& map, int place) { return *std::next(map.ranges.begin(), place); }
  SaveOutcome Ok(RangeEditor& editor) {
    return SaveRangeEditor(editor, history, [](Range&, Color) {});
  }
  /// Answers all questions from now on by that button, and forgets those before.
  void AnswerWith(int button) { messages = RecordedMessages(button); }
  static void SetAltitude(TrailEditor& editor, size_t row, const char* text) {
    editor.SetMode(EntryMode::Mixture);
    EXPECT_TRUE(editor.SetCell(row, ColumnAltitude, text));
  }
  Texts Asked() const {
    Texts titles;
    for (const auto& question : messages.Questions()) titles.push_back(question.title);
    return titles;
  }
  static std::string AllCells(const CellModel& cells) {
    std::string text;
    for (size_t row = 0; row < cells.RowCount(); ++row) text += RowAsText(cells, row) + "\n";
    return text;
  }
};

TEST_F(EditorDraftTest, BringsBackANewTrail) {
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Tr%il");
  editor.SetField(TrailField::Name, "Ridge\twith a tab");
  editor.SetField(TrailField::Width, "bad text");
  editor.SetMode(EntryMode::Mixture);
  editor.SetCell(0, ColumnName, "R1");
  editor.SetCell(0, ColumnLat, "S20 0.123456789");
  editor.SetCell(0, ColumnFirstSm, "says \"%n\"\nand more");
  editor.SetCell(1, ColumnName, "R2");
  editor.SetCell(1, ColumnPoint, "A");
  editor.SetCell(1, ColumnBearing, "A12.5");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_EQ(DraftTitle(draft), "New Trail Ridge with a tab");
  const auto again = TrailEditorOf(map, draft);
  EXPECT_EQ(AllCells(*again), AllCells(editor));
  EXPECT_EQ(again->Rows()[0].gps.lat, editor.Rows()[0].gps.lat) << "to the last bit";
  EXPECT_EQ(again->Mode(), EntryMode::Mixture);
  EXPECT_FALSE(again->IsModeEnabled(EntryMode::Gps));
  EXPECT_FALSE(again->Form().IsEnabled(TrailField::Date));
  EXPECT_EQ(again->Form().Text(TrailField::Width), "bad text");
  EXPECT_TRUE(again->IsChanged());
}

TEST_F(EditorDraftTest, BringsBackTheEditorOfATrailOfTheMap) {
  for (Trail& trail : map.trails) {
    TrailEditor editor(map, &trail);
    editor.DeleteRow(0);
    const auto again = TrailEditorOf(map, ThroughText(DraftOf(editor)));
    EXPECT_EQ(again->Edited(), &trail);
    EXPECT_EQ(again->Title(), editor.Title());
    EXPECT_EQ(AllCells(*again), AllCells(editor));
    EXPECT_FALSE(again->WasChangedElsewhere());
  }
}

TEST_F(EditorDraftTest, BringsBackTheMarksOfNamelessPoints) {
  Map& brook = Open("T\tBrook\tRiver\nG\t\tS20 0\tE47 0\t\t\t,,,,C4\nG\t\tS20 1\tE47 0\n");
  TrailEditor editor(brook, &brook.trails.front());
  editor.SetCell(0, ColumnName, "B");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_EQ(draft.trailRows.at(0).mark.shape, PointMarkCircle);
  EXPECT_TRUE(draft.trailRows[0].mark.filled);
  EXPECT_EQ(draft.trailRows[0].mark.size, 4);
  EXPECT_EQ(draft.trailRows.at(1).mark.shape, PointMarkNone);
}

// A draft went to the first trail of that type, date and animal, and OK overwrote that one.
constexpr char TwoFollows[] =
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 1\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t14:00\tS20 2\tE47 0\nG\t14:30\tS20 3\tE47 0\n";

std::string FirstFollow() {
  const std::string text = TwoFollows;
  return text.substr(0, text.find("T\t", 1));
}

TEST_F(EditorDraftTest, ComesBackToItsOwnOfTwoFollowsOfOneDate) {
  for (const int place : {0, 1}) {
    Map& site = Open(TwoFollows, "two.map");
    TrailEditor editor(site, &TrailAt(site, place));
    SetAltitude(editor, 1, "77");
    const EditorDraft draft = ThroughText(DraftOf(editor));
    Map& again = Open(TwoFollows, "again.map");
    const auto restored = TrailEditorOf(again, draft);
    ASSERT_EQ(restored->Edited(), &TrailAt(again, place));
    messages.Clear();
    ASSERT_EQ(SaveTrailEditor(*restored, history), SaveOutcome::Closes);
    EXPECT_EQ(NamesOf(TrailAt(again, 0)), (Texts{"8:00", "8:30"}));
    EXPECT_EQ(NamesOf(TrailAt(again, 1)), (Texts{"14:00", "14:30"}));
    EXPECT_EQ(TrailAt(again, place).points[1]->measurements.front().altitude, 77);
    EXPECT_EQ(Asked(), place == 0 ? Texts() : Texts{"Rename trail"});
  }
}

TEST_F(EditorDraftTest, ComesBackToItsOwnOfTwoFollowsThatWereReordered) {
  Map& site = Open(TwoFollows, "two.map");
  TrailEditor editor(site, &TrailAt(site, 1));
  const EditorDraft draft = ThroughText(DraftOf(editor));
  Map& again = Open(TwoFollows, "again.map");
  again.trails.reverse();
  EXPECT_EQ(TrailEditorOf(again, draft)->Edited(), &TrailAt(again, 0));
}

TEST_F(EditorDraftTest, ComesBackToTheSecondOfTwoEqualFollows) {
  const std::string two = std::string("T\t\tPapio\tAna\t2020-3-1\nN\t8:00\tA\n") +
                          "T\t\tPapio\tAna\t2020-3-1\nN\t8:00\tA\n";
  Map& site = Open(two, "two.map");
  for (const int place : {0, 1}) {
    const TrailEditor editor(site, &TrailAt(site, place));
    EXPECT_EQ(TrailEditorOf(site, ThroughText(DraftOf(editor)))->Edited(), &TrailAt(site, place));
  }
}

// The missing one must not be taken for the one that is there.
TEST_F(EditorDraftTest, AFollowWhoseTwinIsLeftIsMadeAgainBesideIt) {
  Map& site = Open(TwoFollows, "two.map");
  TrailEditor editor(site, &TrailAt(site, 1));
  SetAltitude(editor, 1, "77");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  Map& again = Open(FirstFollow(), "again.map");
  ASSERT_EQ(NamesOf(TrailAt(again, 0)), (Texts{"8:00", "8:30"}));
  const auto restored = TrailEditorOf(again, draft);
  EXPECT_NE(restored->Edited(), &TrailAt(again, 0));
  ASSERT_EQ(SaveTrailEditor(*restored, history), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), Texts{"Trail deleted"});
  ASSERT_EQ(Length(again.trails), 2);
  EXPECT_EQ(NamesOf(TrailAt(again, 0)), (Texts{"14:00", "14:30"}));
  EXPECT_EQ(NamesOf(TrailAt(again, 1)), (Texts{"8:00", "8:30"}));
}

TEST_F(EditorDraftTest, ATwinThatHasChangedIsNotTakenForAFollowThatIsGone) {
  for (const int place : {0, 1}) {
    Map& site = Open(TwoFollows, "two.map");
    const TrailEditor editor(site, &TrailAt(site, place));
    const EditorDraft draft = ThroughText(DraftOf(editor));
    Map& again = Open(TwoFollows, "again.map");
    const Trail* gone = &TrailAt(again, place);
    again.trails.remove_if([gone](const Trail& trail) { return &trail == gone; });
    again.trails.front().points.pop_back();
    EXPECT_NE(TrailEditorOf(again, draft)->Edited(), &again.trails.front()) << place;
  }
}

TEST_F(EditorDraftTest, ATrailThatIsGoneIsMadeAgainOnlyIfTheUserWants) {
  FollowOfAna()->note = "rain";
  FollowOfAna()->lineStyle = LineStyle::Dotted;
  TrailEditor editor(map, FollowOfAna());
  editor.SetCell(1, ColumnName, "9:00");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  const auto again = TrailEditorOf(other, draft);
  EXPECT_EQ(again->Title(), editor.Title());
  EXPECT_FALSE(again->Form().IsEnabled(TrailField::Type));
  AnswerWith(2);
  EXPECT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), Texts{"Trail deleted"});
  EXPECT_TRUE(other.trails.empty());
  AnswerWith(1);
  EXPECT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Closes);
  ASSERT_FALSE(other.trails.empty());
  const Trail& made = other.trails.front();
  EXPECT_EQ(made.type, "Papio");
  EXPECT_EQ(made.focalAnimal, "Ana");
  EXPECT_EQ(made.note, "rain");
  EXPECT_EQ(made.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(NamesOf(made), (Texts{"8:00", "9:00"}));
}

// The editor was that of a new trail of the cut name, and shared points got each reading twice.
TEST_F(EditorDraftTest, ComesBackToATrailWithALongIdentity) {
  const std::string name = "The ridge above the old camp by the river";
  const std::string type = "Papio cynocephalus of the northern troop";
  Map& site = Open("T\t" + name + "\tTrail\nG\tA\tS20 0\tE47 0\nT\t\t" + type +
                   "\tAna the youngest of her generation\t2020-3-1\nG\t8:00\tS20 0\tE47 0\n");
  for (Trail& trail : site.trails) {
    TrailEditor editor(site, &trail);
    SetAltitude(editor, 0, "77");
    const auto again = TrailEditorOf(site, ThroughText(DraftOf(editor)));
    ASSERT_EQ(again->Edited(), &trail);
    ASSERT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Closes);
    EXPECT_EQ(Readings(*trail.points[0]).size(), 1U);
  }
  EXPECT_TRUE(Asked().empty());
  EXPECT_EQ(Length(site.trails), 2);
  EXPECT_EQ(TrailAt(site, 0).name, name);
}

TEST_F(EditorDraftTest, ALongIdentityThatIsMadeAgainIsWhole) {
  const std::string name = "The ridge above the old camp by the river";
  Map& site = Open("T\t" + name + "\tTrail\nG\tA\tS20 0\tE47 0\n");
  TrailEditor editor(site, &site.trails.front());
  SetAltitude(editor, 0, "77");
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  const auto again = TrailEditorOf(other, ThroughText(DraftOf(editor)));
  ASSERT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Closes);
  EXPECT_EQ(other.trails.front().name, name);
}

// --- Changes since the editor was opened --------------------------------------------------------

TEST_F(EditorDraftTest, AsksBeforeATrailThatHasChangedSinceIsReplaced) {
  Map& site = Open("T\tPath\tTrail\nG\tA\tS20 0\tE47 0\nC\tC\tA\t30\t40\n", "site.map");
  TrailEditor editor(site, FindTrail(site, "Path"));
  SetAltitude(editor, 0, "77");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  Named(site, "C").measurements.front().distance = 31;
  const auto again = TrailEditorOf(site, draft);
  EXPECT_EQ(again->Edited(), FindTrail(site, "Path"));
  EXPECT_TRUE(again->WasChangedElsewhere());
  AnswerWith(2);
  EXPECT_EQ(SaveTrailEditor(*again, history), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), Texts{"Trail changed"});
  EXPECT_EQ(Named(site, "C").measurements.front().distance, 31);
  EXPECT_TRUE(TrailEditorOf(site, ThroughText(DraftOf(*again)))->WasChangedElsewhere())
      << "after a second crash";
}

TEST_F(EditorDraftTest, AsksBeforeARangeThatHasChangedSinceIsReplaced) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  editor.SetCell(0, ColumnType, "Cebus");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_FALSE(RangeEditorOf(map, draft, 0)->WasChangedElsewhere());
  map.ranges.front().keys.front().timeTo = 720;
  const auto again = RangeEditorOf(map, draft, 0);
  AnswerWith(2);
  EXPECT_EQ(Ok(*again), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), Texts{"Range changed"});
  EXPECT_EQ(map.ranges.front().keys.front().type, "Papio");
}

TEST_F(EditorDraftTest, DoesNotAskAfterTheMapWasSavedAndReadAgain) {
  Map& site = Open(
      "T\tPath\tTrail\t\t\t1.5,#804000\nG\tA=Z=Y\tS20 0.123451\tE47 0.1\t120\nG\tA\tS20 0.2\tE47 "
      "0\n"
      "C\tC\tA\t30.123456\t40\t-2\nC\tC\tA\t31\tA41\t\t\t3\nA\tC\t77.5\nN\tD\tA, 20m north\n"
      "P\tC\nG\t\tS20 1\tE47 1\nR\tBlue\nK\tPapio\tAna\t7:00-7:00\nK\tCebus\t\t\t2020-1-1 "
      "2020-2-1\n",
      "site.map");
  TrailEditor trail(site, &site.trails.front());
  RangeEditor range(site, &site.ranges.front(), 0);
  const EditorDraft ofTrail = ThroughText(DraftOf(trail));
  const EditorDraft ofRange = ThroughText(DraftOf(range));
  Map& again = Open(MapFileText(site, "site.map", true), "again.map");
  again.trails.front().color = 0xFF0000;  // a look
  EXPECT_EQ(TrailEditorOf(again, ofTrail)->Edited(), &again.trails.front());
  EXPECT_FALSE(TrailEditorOf(again, ofTrail)->WasChangedElsewhere());
  EXPECT_EQ(RangeEditorOf(again, ofRange, 0)->Edited(), &again.ranges.front());
  EXPECT_FALSE(RangeEditorOf(again, ofRange, 0)->WasChangedElsewhere());
}

/// Each thing that an editor can replace makes another mark.
TEST_F(EditorDraftTest, AnyReadingOrKeyCounts) {
  Trail& path = *FindTrail(map, "Path");
  const FileMark trail = ContentMark(path);
  const auto isNoticed = [&](auto& value, auto changed) {
    const auto before = std::exchange(value, changed);
    EXPECT_NE(ContentMark(path), trail);
    value = before;
    EXPECT_EQ(ContentMark(path), trail);
  };
  Measurement& shot = Named(map, "C").measurements.front();
  isNoticed(shot.distance, 30.1);
  isNoticed(shot.bearing, 40.1);
  isNoticed(shot.inclination, 1.0);
  isNoticed(shot.altitude, 5.0F);
  isNoticed(shot.count, 2);
  isNoticed(shot.base, &Named(map, "B"));
  isNoticed(shot.flags, shot.flags | MeasureAbsoluteBearing);
  isNoticed(Named(map, "A").measurements.front().position.lon, 47.001);
  isNoticed(Named(map, "B").measurements.front().nearName, std::string("B, 20m north"));
  isNoticed(Named(map, "B").name, std::string("Bb"));
  isNoticed(path.points, std::vector<Point*>(path.points.rbegin(), path.points.rend()));
  isNoticed(path.type, std::string("River"));
  const Range& blue = map.ranges.front();
  SearchKey& key = map.ranges.front().keys.front();
  const FileMark range = ContentMark(blue);
  const auto isNoticedInRange = [&](auto& value, auto changed) {
    const auto before = std::exchange(value, changed);
    EXPECT_NE(ContentMark(blue), range);
    value = before;
  };
  isNoticedInRange(key.type, std::string("Cebus"));
  isNoticedInRange(key.focalAnimal, std::optional<std::string>("Bea"));
  isNoticedInRange(key.timeFrom, 1);
  isNoticedInRange(key.timeTo, 1);
  isNoticedInRange(key.dateFrom, PackDate(2020, 1, 2));
  isNoticedInRange(key.dateTo, PackDate(2020, 1, 2));
}

// --- Contours -----------------------------------------------------------------------------------

// It came back as a new trail of all its vertices.
TEST_F(EditorDraftTest, ComesBackToItsContourOnceThatIsMadeAgain) {
  const auto makeContour = [&](Map& on, double lon) {
    Trail& contour = on.contourTrails.emplace_front();
    contour.flags = TrailContour;
    contour.type = "Contour  100";
    contour.name = "Contour  100 #1";
    Point& vertex = on.contourPoints.Make({});
    vertex.geo = {-20, lon};
    contour.points.push_back(&vertex);
    return &contour;
  };
  TrailEditor editor(map, makeContour(map, 47));
  editor.SetField(TrailField::LineColor, "red");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  EXPECT_EQ(TrailEditorOf(map, draft)->Edited(), &map.contourTrails.front());
  Map& again = Open("G\tA\tS20 0\tE47 0\n");
  const auto restored = TrailEditorOf(again, draft);
  EXPECT_TRUE(restored->IsReadOnly());
  EXPECT_EQ(SaveTrailEditor(*restored, history), SaveOutcome::Stays);
  makeContour(again, 48);
  EXPECT_EQ(SaveTrailEditor(*restored, history), SaveOutcome::Stays) << "another line";
  EXPECT_EQ(Said().back(), "This contour is not on the map now. Make the contours again first");
  EXPECT_TRUE(again.trails.empty());
  const Trail* line = makeContour(again, 47);
  EXPECT_EQ(SaveTrailEditor(*restored, history), SaveOutcome::Closes);
  EXPECT_EQ(line->color, 0xFF0000);
  EXPECT_EQ(line->points.size(), 1U);
  EXPECT_TRUE(again.trails.empty());
  EXPECT_EQ(Asked(), Texts{"Rename trail"}) << "no trail has that name";
}

// --- Ranges -------------------------------------------------------------------------------------

TEST_F(EditorDraftTest, BringsBackARange) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  editor.SetName("Green");
  editor.SetCell(1, ColumnDateFrom, "2020-5-5");
  EditorDraft written = DraftOf(editor);
  written.openCell = {.row = 2, .column = 1, .text = "not\tyet"};
  const EditorDraft draft = ThroughText(written);
  ASSERT_TRUE(draft.openCell);
  EXPECT_EQ(draft.openCell->row, 2);
  EXPECT_EQ(draft.openCell->column, 1);
  EXPECT_EQ(draft.openCell->text, "not\tyet");
  EXPECT_EQ(DraftTitle(draft), "Range Green");
  const auto again = RangeEditorOf(map, draft, 0);
  EXPECT_EQ(again->Edited(), &map.ranges.front());
  EXPECT_EQ(again->Name(), "Green");
  EXPECT_EQ(AllCells(*again), AllCells(editor));
  EXPECT_FALSE(again->Rows()[1].type) << "never given";
}

// A draft went to the first range of that name.
TEST_F(EditorDraftTest, ComesBackToItsOwnOfTwoRangesOfOneName) {
  const char* const text = "R\tBlue\nK\tPapio\nR\tBlue\nK\tCebus\n";
  for (const int place : {0, 1}) {
    Map& site = Open(text, "two.map");
    RangeEditor editor(site, &RangeAt(site, place), 0);
    const std::string type = editor.GetCell(0, ColumnType);
    editor.SetCell(0, ColumnType, "Alouatta");
    Map& again = Open(text, "again.map");
    const auto restored = RangeEditorOf(again, ThroughText(DraftOf(editor)), 0);
    ASSERT_EQ(restored->Edited(), &RangeAt(again, place));
    EXPECT_EQ(restored->Edited()->keys.front().type, type);
    EXPECT_EQ(Ok(*restored), SaveOutcome::Closes);
    EXPECT_EQ(RangeAt(again, place).keys.front().type, "Alouatta");
    EXPECT_NE(RangeAt(again, 1 - place).keys.front().type, "Alouatta");
  }
}

TEST_F(EditorDraftTest, ARangeThatIsGoneIsMadeAgainOnlyIfTheUserWants) {
  map.ranges.front().note = "dry season";
  RangeEditor editor(map, &map.ranges.front(), 0);
  editor.SetName("Green");
  const EditorDraft draft = ThroughText(DraftOf(editor));
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  const auto again = RangeEditorOf(other, draft, 0);
  EXPECT_EQ(again->Title(), "Blue");
  AnswerWith(2);
  EXPECT_EQ(Ok(*again), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), Texts{"Range deleted"});
  EXPECT_TRUE(other.ranges.empty());
  AnswerWith(1);
  EXPECT_EQ(Ok(*again), SaveOutcome::Closes);
  EXPECT_EQ(other.ranges.front().name, "Green");
  EXPECT_EQ(other.ranges.front().note, "dry season");
}

// --- Texts --------------------------------------------------------------------------------------

constexpr char FirstForm[] =
    "kind=trail\nnew=0\nmap=/data/site.map\neuropeanDates=0\nrange=\nmode=1\n"
    "field=Papio\nfield=2020-3-1\nfield=Ana\nfield=\nfield=#ff0000\nfield=1\nfield=\n"
    "row=14:00\t10000\t-20.5\t47\t-9999\t0\t0\t0\t0\t77\t1\t0\t0\t0\t-\t-\t-\n"
    "row=14:45\t10000\t-20.6\t47\t-9999\t0\t0\t0\t0\t-9999\t1\t0\t0\t0\t-\t-\t-\n";

// It is not known what the trail was when the editor was opened.
TEST_F(EditorDraftTest, ReadsTheFirstFormAndAsksBeforeItReplaces) {
  Map& site = Open(TwoFollows, "two.map");
  const auto draft = ParseDraft(FirstForm);
  ASSERT_TRUE(draft);
  const auto editor = TrailEditorOf(site, *draft);
  EXPECT_EQ(editor->Edited(), &TrailAt(site, 1)) << "the one with the most of its points";
  EXPECT_EQ(editor->GetCell(0, ColumnName), "14:00");
  EXPECT_EQ(editor->Rows()[0].altitude, 77);
  ASSERT_EQ(SaveTrailEditor(*editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), (Texts{"Rename trail", "Trail changed"}));
  EXPECT_EQ(NamesOf(TrailAt(site, 0)), (Texts{"8:00", "8:30"}));
  EXPECT_EQ(NamesOf(TrailAt(site, 1)), (Texts{"14:00", "14:45"}));
}

TEST_F(EditorDraftTest, ReadsTheFirstFormOfALongNameAndOfATrailThatIsGone) {
  Map& site = Open("T\tThe ridge above the old camp by the river\tTrail\nG\tA\tS20 0\tE47 0\n");
  std::string text = FirstForm;
  text.replace(text.find("field=Papio"),
               std::string("field=Papio\nfield=2020-3-1\nfield=Ana\nfield=").size(),
               "field=Trail\nfield=\nfield=\nfield=The ridge above the old camp ");
  const auto draft = ParseDraft(text);
  ASSERT_TRUE(draft);
  EXPECT_EQ(TrailEditorOf(site, *draft)->Edited(), &site.trails.front());
  const auto lost = TrailEditorOf(Open("G\tA\tS20 0\tE47 0\n"), *ParseDraft(FirstForm));
  ASSERT_EQ(SaveTrailEditor(*lost, history), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), Texts{"Trail deleted"});
}

TEST_F(EditorDraftTest, ReadsTheFirstFormOfARange) {
  const std::string text =
      "kind=range\nnew=0\nmap=/data/site.map\neuropeanDates=0\nrange=Blue\nmode=0\n"
      "field=Green\nfield=gray\nfield=\nfield=\nfield=\nfield=\nfield=\n"
      "row=+Papio\t-\t600\t720\t0\t0\n";
  const auto draft = ParseDraft(text);
  ASSERT_TRUE(draft);
  const auto editor = RangeEditorOf(map, *draft, 0);
  EXPECT_EQ(editor->Edited(), &map.ranges.front());
  EXPECT_EQ(Ok(*editor), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), Texts{"Range changed"});
  EXPECT_EQ(map.ranges.front().name, "Green");
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  EXPECT_EQ(RangeEditorOf(other, *draft, 0)->Title(), "Blue");
}

TEST_F(EditorDraftTest, ADamagedTextIsRefused) {
  TrailEditor trail(map, FindTrail(map, "Path"));
  RangeEditor range(map, &map.ranges.front(), 0);
  for (const std::string& text : {DraftText(DraftOf(trail)), DraftText(DraftOf(range))}) {
    ASSERT_TRUE(ParseDraft(text));
    for (size_t i = 0; i < text.size(); ++i) {
      EXPECT_FALSE(ParseDraft(text.substr(0, i))) << i;
      std::string other = text;
      other[i] = static_cast<char>(other[i] ^ 1);
      EXPECT_FALSE(ParseDraft(other)) << i;
    }
  }
}

TEST_F(EditorDraftTest, AnIncompleteTextOfTheFirstFormIsRefused) {
  EXPECT_FALSE(ParseDraft(""));
  EXPECT_FALSE(ParseDraft("kind=trail\nrow=x"));
  const std::string text = FirstForm;
  ASSERT_TRUE(ParseDraft(text));
  EXPECT_FALSE(ParseDraft(text.substr(0, text.size() - 3)));
  for (const char* line : {"kind=trail\n", "map=/data/site.map\n", "field=Ana\n"}) {
    std::string without = text;
    without.erase(without.find(line), std::string(line).size());
    EXPECT_FALSE(ParseDraft(without)) << line;
  }
}

TEST_F(EditorDraftTest, SingleValuesThatCannotBeReadHaveDefaults) {
  std::string text = FirstForm;
  text.replace(text.find("mode=1"), 6, "mode=99");
  const auto draft = ParseDraft(text + "row=R1\t1\nrow=\n");
  ASSERT_TRUE(draft);
  EXPECT_EQ(draft->mode, EntryMode::Mixture);
  ASSERT_EQ(draft->trailRows.size(), 4U);
  EXPECT_TRUE(draft->trailRows[2].isGps);
  EXPECT_EQ(draft->trailRows[3].name, "");
}

// --- Maps that are read again -------------------------------------------------------------------

// An open editor could change to another trail of the same identity.
TEST_F(EditorDraftTest, AnOpenEditorFollowsItsOwnOfTwoFollows) {
  for (const int place : {0, 1}) {
    Map& site = Open(TwoFollows, "two.map");
    TrailEditor editor(site, &TrailAt(site, place));
    Map& file = Open(TwoFollows, "file.map");
    SwapContents(site, file);
    editor.FollowReread();
    EXPECT_EQ(editor.Edited(), &TrailAt(site, place));
    EXPECT_FALSE(editor.WasChangedElsewhere());
    SwapContents(site, file);
    editor.FollowReread();
    EXPECT_EQ(editor.Edited(), &TrailAt(site, place)) << "after an undo";
  }
}

TEST_F(EditorDraftTest, AnOpenEditorFollowsAFollowThatTheFileHasChanged) {
  Map& site = Open(TwoFollows, "two.map");
  TrailEditor editor(site, &TrailAt(site, 1));
  std::string text = TwoFollows;
  text.replace(text.find("14:30"), 5, "14:45");
  Map& file = Open(text, "file.map");
  SwapContents(site, file);
  editor.FollowReread();
  EXPECT_EQ(editor.Edited(), &TrailAt(site, 1));
  EXPECT_TRUE(editor.WasChangedElsewhere());
  SwapContents(site, file);
  editor.FollowReread();
  EXPECT_FALSE(editor.WasChangedElsewhere()) << "after an undo it is as it was";
}

TEST_F(EditorDraftTest, AnOpenEditorWithoutItsFollowDoesNotTakeTheOther) {
  Map& site = Open(TwoFollows, "two.map");
  TrailEditor editor(site, &TrailAt(site, 1));
  Map& file = Open(FirstFollow(), "file.map");
  SwapContents(site, file);
  editor.FollowReread();
  EXPECT_NE(editor.Edited(), &TrailAt(site, 0));
  EXPECT_EQ(MapOfTrail(site, *editor.Edited()), nullptr);
  SwapContents(site, file);
  editor.FollowReread();
  EXPECT_EQ(editor.Edited(), &TrailAt(site, 1));
}

TEST_F(EditorDraftTest, AnOpenEditorFollowsItsOwnOfTwoRanges) {
  const char* const text = "R\tBlue\nK\tPapio\nR\tBlue\nK\tCebus\n";
  for (const int place : {0, 1}) {
    Map& site = Open(text, "two.map");
    RangeEditor editor(site, &RangeAt(site, place), 0);
    Map& file = Open(text, "file.map");
    SwapContents(site, file);
    editor.FollowReread();
    EXPECT_EQ(editor.Edited(), &RangeAt(site, place));
    EXPECT_FALSE(editor.WasChangedElsewhere());
  }
}

/// A text of the first form with another line in place of one of its own.
std::string FirstFormWith(const std::string& line, const std::string& other) {
  std::string text = FirstForm;
  return text.replace(text.find(line + "\n"), line.size(), other);
}

TEST_F(EditorDraftTest, KeepsEveryCharacterOfATextAndOfItsEnd) {
  RangeEditor editor(map, nullptr, 0);
  EditorDraft written = DraftOf(editor);
  written.mapFile = "/a\tb\nc\rd%n%%e%";
  written.fields[0] = "%t";
  EXPECT_EQ(ThroughText(written).mapFile, written.mapFile);
  EXPECT_EQ(ThroughText(written).fields[0], "%t");
  // A sign at the end of a damaged line is only that.
  const auto mapIn = [](const std::string& line) {
    return ParseDraft(FirstFormWith("map=/data/site.map", line)).value_or(EditorDraft{}).mapFile;
  };
  EXPECT_EQ(mapIn("map=a%"), "a%");
  EXPECT_EQ(mapIn("map=a%x"), "ax");
}

TEST_F(EditorDraftTest, ADamagedMarkHasNoShape) {
  Map& brook = Open("T\tBrook\tRiver\nG\t\tS20 0\tE47 0\t\t\t,,,,s4\n");
  TrailEditor editor(brook, &brook.trails.front());
  EditorDraft draft = DraftOf(editor);
  ASSERT_EQ(draft.trailRows.size(), 1U);
  EXPECT_EQ(ThroughText(draft).trailRows[0].mark.shape, PointMarkSquare);
  draft.trailRows[0].mark.shape = 77;
  EXPECT_EQ(ThroughText(draft).trailRows[0].mark.shape, PointMarkNone);
}

TEST_F(EditorDraftTest, AnsweredByTheWordsThatAreThere) {
  const auto with = [](const std::string& line, const std::string& other) {
    const auto draft = ParseDraft(FirstFormWith(line, other));
    EXPECT_TRUE(draft) << other;
    return draft.value_or(EditorDraft{});
  };
  EXPECT_TRUE(with("kind=trail", "kind=trail").ofTrail);
  EXPECT_FALSE(with("kind=trail", "kind=range").ofTrail);
  EXPECT_FALSE(ParseDraft(FirstFormWith("kind=trail", "kind=other")));
  EXPECT_FALSE(with("new=0", "new=0").isNew);
  EXPECT_TRUE(with("new=0", "new=1").isNew);
  EXPECT_TRUE(with("europeanDates=0", "europeanDates=1").europeanDates);
  EXPECT_FALSE(with("europeanDates=0", "europeanDates=0").europeanDates);
  EXPECT_EQ(with("mode=1", "mode=-3").mode, static_cast<EntryMode>(0));
  EXPECT_EQ(with("mode=1", "unknown=1\nnonsense").trailRows.size(), 2U);
  const auto range =
      ParseDraft(FirstFormWith("kind=trail", "kind=range") + "row=+Papio\t-\t60\t120\n");
  ASSERT_TRUE(range);
  EXPECT_EQ(range->rangeRows.back().timeTo, 120);
  // More fields than an editor has are left out.
  const auto more = ParseDraft(std::string(FirstForm) + "field=more\n");
  ASSERT_TRUE(more);
  EXPECT_EQ(more->fields.back(), "");
}

TEST_F(EditorDraftTest, ARangeIsLookedForInTheMapThatIsGiven) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  const EditorDraft draft = DraftOf(editor);
  EXPECT_EQ(RangeOf(map, draft), &map.ranges.front());
  Map& other = Open("G\tA\tS20 0\tE47 0\n");
  EXPECT_EQ(RangeOf(other, draft), nullptr);
  RangeEditor fresh(map, nullptr, 0);
  EXPECT_EQ(RangeOf(map, DraftOf(fresh)), nullptr);
  EXPECT_EQ(DraftTitle(DraftOf(fresh)), "New Range ");
}

}  // namespace
}  // namespace orvane
