// Editors that are open while the file of their map is read again.

#include "base/dates.h"
#include "editing/delete_records.h"
#include "editing/edit_history.h"
#include "editing/range_editor.h"
#include "editing/save_range.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "mapfile/reread_maps.h"
#include "support/map_from_text.h"
#include "support/scripted_messages.h"
#include "support/temporary_folder.h"

#include <functional>
#include <gtest/gtest.h>
#include <list>

namespace orvane {
namespace {

constexpr char OpenedText[] =
    "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\nC\tB\tA\t100\t45\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tN1\tE10\nG\t8:30\tN1\tE10.1\n"
    "R\tBlue\t\tby the river\nK\tPapio\n";

struct FollowRereadTest : testing::Test {
  TemporaryFolder folder;
  ScriptedMessages messages;
  Workspace workspace{messages};
  Map& map = OpenMap(workspace, folder.Write("site.map", OpenedText));
  EditHistory history{workspace};
  std::list<FormerContents> former;  ///< what the map held before

  void Reread(const std::string& text) {
    folder.Write("site.map", text);
    ASSERT_EQ(RereadMap(map, &former.emplace_back()), RereadOutcome::Done);
  }
  Trail* Ridge() { return FindTrail(map, "Ridge"); }
  Trail* Follow() { return FindTrailByDate(map, "Papio", PackDate(2020, 3, 1), "Ana"); }
  std::vector<std::string> Asked() const {
    std::vector<std::string> titles;
    for (const auto& question : messages.Questions()) titles.push_back(question.title);
    return titles;
  }
};

TEST_F(FollowRereadTest, ATrailThatIsTheSameIsEditedFurther) {
  TrailEditor ridge(map, Ridge());
  TrailEditor follow(map, Follow());
  Reread(std::string("# more\n") + OpenedText);
  ridge.FollowReread();
  follow.FollowReread();
  EXPECT_EQ(ridge.Edited(), Ridge());
  EXPECT_EQ(follow.Edited(), Follow());
  EXPECT_FALSE(ridge.WasChangedElsewhere());
  EXPECT_FALSE(follow.WasChangedElsewhere());
  ridge.SetCell(0, ColumnName, "A0");
  EXPECT_EQ(SaveTrailEditor(ridge, history), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), std::vector<std::string>{});
  EXPECT_EQ(Ridge()->points.front()->name, "A0");
}

TEST_F(FollowRereadTest, ATrailWithOtherPointsOrReadingsWasChangedElsewhere) {
  const char* const changes[] = {
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\n",
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA0\tN1\tE10\nC\tB\tA\t100\t45\n",
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\nC\tB\tA\t101\t45\n",
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\nC\tB\tC\t100\t45\n",
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\nA\tB\t100\n",
      "T\tRidge\tTrail\t\t\t2,#804000\nG\tA\tN1\tE10\nG\tB\tN1\tE10\nC\tB\tA\t100\t45\n"};
  for (const char* text : changes) {
    Reread(OpenedText);
    TrailEditor editor(map, Ridge());
    Reread(text);
    editor.FollowReread();
    EXPECT_EQ(editor.Edited(), Ridge()) << text;
    EXPECT_TRUE(editor.WasChangedElsewhere()) << text;
    // A second time it is still not the trail that was opened.
    Reread(std::string(text) + "# more\n");
    editor.FollowReread();
    EXPECT_TRUE(editor.WasChangedElsewhere()) << text;
  }
}

TEST_F(FollowRereadTest, ATrailThatIsGoneCanBeMadeAgainAsItWas) {
  TrailEditor editor(map, Ridge());
  Reread("G\tA\tN1\tE10\n");
  editor.FollowReread();
  EXPECT_EQ(Ridge(), nullptr);
  EXPECT_EQ(editor.Title(), "Trail: Ridge");
  Reread("G\tA\tN1\tE11\n");
  editor.FollowReread();  // it stays the lost one
  EXPECT_EQ(editor.Title(), "Trail: Ridge");
  messages.answers = {2};
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), std::vector<std::string>{"Trail deleted"});
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  ASSERT_NE(Ridge(), nullptr);
  EXPECT_EQ(Ridge()->color, 0x804000);
  EXPECT_EQ(Ridge()->width, 2);
  EXPECT_EQ(Ridge()->points.size(), 2U);
}

TEST_F(FollowRereadTest, ADeletedTrailThatIsBeingMadeAgainIsKept) {
  TrailEditor editor(map, Ridge());
  Ridge()->note = "steep";
  DeleteTrails(map, {Ridge()}, history);
  editor.SetField(TrailField::Width, "wide");
  editor.SetField(TrailField::LineColor, "muddy");
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);  // a bad width
  editor.SetField(TrailField::Width, "3");
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);  // a bad colour
  Reread("G\tFar\tN3\tE10\n");
  editor.FollowReread();
  editor.SetField(TrailField::LineColor, "red");
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  ASSERT_NE(Ridge(), nullptr);
  EXPECT_EQ(Ridge()->note, "steep");
  EXPECT_EQ(Ridge()->color, 0xFF0000);
}

/// The editor lost a trail or range that only was deleted, and an undo did not bring it back to it.
TEST_F(FollowRereadTest, WhatOnlyWasDeletedComesBackAfterAnotherMapWasReread) {
  Trail* ridge = Ridge();
  TrailEditor editor(map, ridge);
  editor.SetField(TrailField::Width, "7");
  DeleteTrails(map, {ridge}, history);
  editor.FollowReread();
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_TRUE(messages.Questions().empty());
  EXPECT_EQ(Ridge(), ridge);
  EXPECT_EQ(ridge->width, 7);
}

TEST_F(FollowRereadTest, AContourIsNotFoundAgain) {
  Trail& line = map.contourTrails.emplace_front();
  line.name = "Ridge";  // as a trail is called
  line.flags |= TrailContour;
  TrailEditor editor(map, &line);
  Reread(OpenedText);
  editor.FollowReread();
  EXPECT_NE(editor.Edited(), Ridge());
  EXPECT_TRUE(editor.IsReadOnly());
}

TEST_F(FollowRereadTest, AnEditorOfANewTrailOrRangeGoesOn) {
  TrailEditor trail(map, nullptr);
  RangeEditor range(map, nullptr, NoColor);
  Reread("");
  trail.FollowReread();
  range.FollowReread();
  EXPECT_EQ(trail.Edited(), nullptr);
  EXPECT_EQ(range.Edited(), nullptr);
}

TEST_F(FollowRereadTest, ARangeIsFoundAgainByItsName) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  Reread(std::string("# more\n") + OpenedText);
  editor.FollowReread();
  EXPECT_EQ(editor.Edited(), &map.ranges.front());
  EXPECT_FALSE(editor.WasChangedElsewhere());
  editor.FollowReread();  // it is there
  EXPECT_EQ(editor.Edited(), &map.ranges.front());
  Reread("R\tBlue\nK\tCebus\n");
  editor.FollowReread();
  EXPECT_EQ(editor.Edited(), &map.ranges.front());
  EXPECT_TRUE(editor.WasChangedElsewhere());
}

TEST_F(FollowRereadTest, ARangeThatIsGoneCanBeMadeAgain) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  Reread("");
  editor.FollowReread();
  Reread("# more\n");
  editor.FollowReread();
  EXPECT_EQ(editor.Title(), "Blue");
  const auto show = [](Range&, Color) {};
  messages.answers = {2};
  EXPECT_EQ(SaveRangeEditor(editor, history, show), SaveOutcome::Stays);
  EXPECT_TRUE(map.ranges.empty());
  EXPECT_EQ(SaveRangeEditor(editor, history, show), SaveOutcome::Closes);
  EXPECT_EQ(Asked(), (std::vector<std::string>{"Range deleted", "Range deleted"}));
  ASSERT_FALSE(map.ranges.empty());
  EXPECT_EQ(map.ranges.front().name, "Blue");
  EXPECT_EQ(map.ranges.front().note, "by the river");
  EXPECT_EQ(map.ranges.front().keys.front().type, "Papio");
}

TEST_F(FollowRereadTest, ARangeOfTheBasisIsSavedThere) {
  Map& above = MakeMap(workspace, folder.Path("above.map"));
  above.basis = &map;
  Range& blue = map.ranges.front();
  EXPECT_EQ(MapOfRange(above, &blue), &map);
  EXPECT_EQ(MapOfRange(above, nullptr), nullptr);
  RangeEditor editor(above, &blue, 0);
  editor.SetName("Azure");
  EXPECT_EQ(SaveRangeEditor(editor, history, [](Range&, Color) {}), SaveOutcome::Closes);
  EXPECT_EQ(blue.name, "Azure");
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(above.flags & MapDirty, 0U);
}

TEST_F(FollowRereadTest, AQuestionAboutAChangedRangeCanBeDenied) {
  RangeEditor editor(map, &map.ranges.front(), 0);
  map.ranges.front().keys.front().type = "Cebus";
  messages.answers = {2};
  EXPECT_EQ(SaveRangeEditor(editor, history, [](Range&, Color) {}), SaveOutcome::Stays);
  EXPECT_EQ(Asked(), std::vector<std::string>{"Range changed"});
  EXPECT_EQ(map.ranges.front().keys.front().type, "Cebus");
}

TEST_F(FollowRereadTest, EachQuestionOfATrailCanBeDenied) {
  {
    TrailEditor editor(map, Ridge());
    Ridge()->note = "changed";
    map.trails.reverse();
    Ridge()->points.pop_back();
    editor.SetCell(0, ColumnName, "A0");
    messages.answers = {2};
    EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  }
  {
    TrailEditor editor(map, nullptr);
    editor.SetCell(0, ColumnName, "Fig");
    messages.answers = {2};
    EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  }
  {
    ReadMapText(map, "T\tNear\tTrail\nN\tNest\tA\n");
    TrailEditor editor(map, FindTrail(map, "Near"));
    editor.SetField(TrailField::Width, "3M");
    messages.answers = {2};
    EXPECT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Stays);
  }
  EXPECT_EQ(Asked(), (std::vector<std::string>{"Trail changed", "No trail", "Place"}));
  EXPECT_EQ(history.Steps(), 0U);
}

// --- The step of reading again ------------------------------------------------------------------

struct RereadStepTest : FollowRereadTest {
  bool RereadAsStep(const std::string& text) {
    folder.Write("site.map", text);
    return history.Reread(map, "Reload", [this](FormerContents& contents) {
      return RereadMap(map, &contents) == RereadOutcome::Done;
    });
  }
  void Comment(const std::string& line) {
    history.Apply({.name = "Comment", .map = &map, .change = [&](EditFollowUp&) {
                     map.comments.push_back(line);
                     return true;
                   }});
  }
};

TEST_F(RereadStepTest, IsUndoneAndRedone) {
  std::vector<std::string> heard;
  int steps = 0;
  history.Listen([&](const EditNews& news) {
    heard.push_back(*news.name);
    EXPECT_EQ(news.Maps(), std::vector<Map*>{&map});
    EXPECT_TRUE(news.Concerns(map));
    EXPECT_EQ(news.contents != nullptr, *news.name == "Reload");
  });
  history.ListenToSteps([&] { ++steps; });
  Comment("# mine");
  ASSERT_TRUE(RereadAsStep("# new\n"));
  EXPECT_EQ(map.comments, std::vector<std::string>{"# new"});
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_GT(history.Bytes(), sizeof(Map));
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.comments, std::vector<std::string>{"# mine"});
  EXPECT_NE(Ridge(), nullptr);
  EXPECT_NE(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Redo(map));
  EXPECT_EQ(map.comments, std::vector<std::string>{"# new"});
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_EQ(heard, (std::vector<std::string>{"Comment", "Reload", "Reload", "Reload"}));
  EXPECT_GE(steps, 4);
}

TEST_F(RereadStepTest, OfTheSameBytesLeadsToTheSavedState) {
  Comment("# mine");
  ASSERT_TRUE(RereadAsStep(OpenedText));
  EXPECT_EQ(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_NE(map.flags & MapDirty, 0U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.flags & MapDirty, 0U) << "the file holds this state";
}

TEST_F(RereadStepTest, OfAMapThatWasChangedBeforeIsTheSavedState) {
  map.flags |= MapDirty | MapUnlikeFile;
  ASSERT_TRUE(RereadAsStep(OpenedText));
  EXPECT_EQ(map.flags & (MapDirty | MapUnlikeFile), 0U);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.flags & (MapDirty | MapUnlikeFile), MapDirty | MapUnlikeFile);
}

TEST_F(RereadStepTest, IsNoneIfTheFileCannotBeRead) {
  EXPECT_FALSE(history.Reread(map, "Reload", [](FormerContents&) { return false; }));
  EXPECT_EQ(history.Steps(), 0U);
  EXPECT_NE(Ridge(), nullptr);
}

TEST_F(RereadStepTest, BlocksTheStepsOfTheMapsThatItHolds) {
  Map& above = OpenMap(workspace, folder.Write("above.map", "B\tsite.map\nC\tTop\tA\t10\t0\n"));
  ASSERT_EQ(above.basis, &map);
  history.Apply({.name = "Move", .map = &above, .change = [&](EditFollowUp& followUp) {
                   FindPointByName(above, nullptr, "Top")->measurements.front().distance = 20;
                   followUp.solve = true;
                   return true;
                 }});
  ASSERT_TRUE(RereadAsStep(std::string(OpenedText) + "# more\n"));
  EXPECT_EQ(*history.UndoName(above), "Reload");
  Map& other = OpenMap(workspace, folder.Write("other.map", "G\tFar\tN1\tE1\n"));
  EXPECT_EQ(history.UndoName(other), nullptr);
}

TEST_F(RereadStepTest, TrailsAreComparedByEachPartOfTheirIdentity) {
  Trail trail = *Ridge();
  const FileMark mark = ContentMark(trail);
  EXPECT_EQ(mark, ContentMark(trail));
  const std::function<void(Trail&)> changes[] = {
      [](Trail& each) { each.name = "Other"; }, [](Trail& each) { each.type = "Road"; },
      [](Trail& each) { each.focalAnimal = "Ana"; },
      [](Trail& each) { each.date = PackDate(2020, 3, 1); },
      [](Trail& each) { each.points.pop_back(); }};
  for (const auto& change : changes) {
    Trail other = trail;
    change(other);
    EXPECT_NE(mark, ContentMark(other));
  }
}

}  // namespace
}  // namespace orvane
