// Undo, Redo and deleting, with the keys and the menu.

#include "mapfile/writer.h"
#include "panes/trail_tree.h"
#include "shell/comment_edit.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "shell/editors/range_editor_window.h"
#include "shell/editors/trail_editor_window.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/recovery/map_recovery.h"
#include "shell/shell_case.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace orvane {
namespace {

constexpr char SiteText[] =
    "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\nG\tB\tS20 0.1\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n"
    "T\t\tCebus\t\t2020-3-1\nG\t8:00\tS20 0\tE47 0.05\nG\t8:30\tS20 0.2\tE47 0.1\n"
    "G\t9:00\tS20 0.1\tE47 0.3\n"
    "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n";

class UndoTest : public ShellCase {
 protected:
  UndoTest() : window_(OpenActive(folder_.Write("site.map", SiteText))) {}

  Map& TheMap() { return window_.TheMap(); }
  PaneView& Trails(MapWindowWidget& window) { return window.Panes().Trails().Rows(); }
  PaneView& Trails() { return Trails(window_); }
  PaneView& Ranges() { return window_.Panes().Ranges().Rows(); }

  static QModelIndex Index(PaneView& pane, const char* text) {
    const auto found =
        pane.model()->match(pane.model()->index(0, 0), Qt::DisplayRole, QLatin1String(text), 1,
                            Qt::MatchExactly | Qt::MatchRecursive);
    return found.value(0);
  }
  static bool Shows(PaneView& pane, const char* text) { return Index(pane, text).isValid(); }

  /// Clicks on a row, which gives its pane the keyboard.
  static void Click(PaneView& pane, const char* text, Qt::KeyboardModifiers keys = {}) {
    const QRect row = pane.visualRect(Index(pane, text));
    ASSERT_FALSE(row.isEmpty()) << text;
    pane.setFocus();
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, keys,
                      {5 + pane.RowHeight() * 2 + 12, row.center().y()});
  }
  static void Open(PaneView& pane, const char* text) {
    const QRect row = pane.visualRect(Index(pane, text));
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, {},
                      {5 + pane.RowHeight() / 2, row.center().y()});
  }
  static void Key(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(&widget, key, keys);
  }

  static std::string TextOf(MapWindowWidget& window, CommandId id) {
    return ActionOf(window, id).text().toStdString();
  }
  std::string Saved() { return MapFileText(TheMap(), TheMap().fileName, true); }
  std::string LastText() const { return Texts().empty() ? std::string() : Texts().back(); }

  template <typename Window>
  Window& Editor() {
    for (ProgramWindow* each : window_.Dependents()) {
      if (auto* editor = dynamic_cast<Window*>(each)) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(editor));
        return *editor;
      }
    }
    throw std::logic_error("no editor");
  }
  static void Press(EditorWindow& editor, const char* button) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
  }
  using ShellCase::Press;

  MapWindowWidget& window_;
};

TEST_F(UndoTest, BothAreAtTheTopOfTheEditMenuAndDisabledWithoutAStep) {
  auto* menu = window_.findChild<QMenu*>(QStringLiteral("menuEdit"));
  ASSERT_NE(menu, nullptr);
  ASSERT_GE(menu->actions().size(), 4);
  EXPECT_EQ(menu->actions()[0], &ActionOf(window_, CommandUndo));
  EXPECT_EQ(menu->actions()[1], &ActionOf(window_, CommandRedo));
  EXPECT_TRUE(menu->actions()[2]->isSeparator());
  EXPECT_FALSE(IsEnabled(window_, CommandUndo));
  EXPECT_FALSE(IsEnabled(window_, CommandRedo));
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo");
  shell_.Commands().Run(CommandUndo, window_);
  shell_.Commands().Run(CommandRedo, window_);
  EXPECT_EQ(beeps_, 2);
}

TEST_F(UndoTest, TheKeysTakeAStepBackAndMakeItAgain) {
  const std::string before = Saved();
  AddComment(shell_, TheMap());
  const std::string after = Saved();
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo Comment");
  EXPECT_TRUE(window_.isWindowModified());
  Press(window_, CommandUndo);
  EXPECT_EQ(Saved(), before);
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_FALSE(IsEnabled(window_, CommandUndo));
  EXPECT_FALSE(IsEnabled(window_, CommandSave));
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo");
  EXPECT_EQ(TextOf(window_, CommandRedo), "&Redo Comment");
  Press(window_, CommandRedo);
  EXPECT_EQ(Saved(), after);
  EXPECT_TRUE(window_.isWindowModified());
  EXPECT_FALSE(IsEnabled(window_, CommandRedo));
}

TEST_F(UndoTest, TheMarkFollowsTheSavedState) {
  AddComment(shell_, TheMap());
  Press(window_, CommandSave);
  EXPECT_FALSE(window_.isWindowModified());
  Press(window_, CommandUndo);
  EXPECT_TRUE(window_.isWindowModified());
  EXPECT_TRUE(IsEnabled(window_, CommandSave));
  Press(window_, CommandRedo);
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(UndoTest, TheDeleteKeyDeletesTheSelectedTrails) {
  const std::string before = Saved();
  Open(Trails(), "Papio");
  Click(Trails(), "Papio");
  Key(Trails(), Qt::Key_Delete);
  EXPECT_FALSE(Shows(Trails(), "Papio"));
  EXPECT_EQ(std::distance(TheMap().trails.begin(), TheMap().trails.end()), 2);
  EXPECT_EQ(LastText(), "2 trails and 6 points deleted. Undo: Alt+Backspace");
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo Deletion of 2 Trails");
  EXPECT_TRUE(messages_.Questions().empty());
  Press(window_, CommandUndo);
  EXPECT_EQ(Saved(), before);
  EXPECT_TRUE(Trails().isExpanded(Index(Trails(), "Papio")));
  EXPECT_TRUE(Trails().selectionModel()->isSelected(Index(Trails(), "Papio")));
  window_.grab();
}

TEST_F(UndoTest, TheCommandDeletesWhatThePaneWithTheKeyboardHasSelected) {
  Click(Trails(), "Trail");
  Click(Ranges(), "Blue");
  EXPECT_EQ(TextOf(window_, CommandDelete), "Delete Range");
  Press(window_, CommandDelete);
  EXPECT_FALSE(Shows(Ranges(), "Blue"));
  EXPECT_EQ(LastText(), "1 range deleted. Undo: Alt+Backspace");
  EXPECT_TRUE(Shows(Trails(), "Trail"));
  Press(window_, CommandUndo);
  EXPECT_TRUE(Shows(Ranges(), "Blue"));
  EXPECT_TRUE(Shows(Ranges(), "Intersection of Red and Blue") ||
              Shows(Ranges(), "Intersection of Blue and Red"));
}

TEST_F(UndoTest, WithoutASelectionTheDeleteKeyDoesNothing) {
  Trails().setFocus();
  EXPECT_FALSE(IsEnabled(window_, CommandDelete));
  Key(Trails(), Qt::Key_Delete);
  EXPECT_EQ(shell_.History().Steps(), 0U);
  window_.View().setFocus();
  shell_.Commands().Run(CommandDelete, window_);
  EXPECT_EQ(beeps_, 1);
}

TEST_F(UndoTest, AnIntersectionIsNotDeletedDirectly) {
  const char* text = Shows(Ranges(), "Intersection of Red and Blue")
                         ? "Intersection of Red and Blue"
                         : "Intersection of Blue and Red";
  Click(Ranges(), text);
  Key(Ranges(), Qt::Key_Delete);
  EXPECT_EQ(LastText(), "You may not delete an intersection directly");
  EXPECT_TRUE(Shows(Ranges(), text));
}

TEST_F(UndoTest, WhatIsInABasisIsDeletedThereAfterAQuestion) {
  MapWindowWidget& above =
      OpenActive(folder_.Write("season.map", "B\tsite.map\nT\tOwn\tHuman\nC\tN\tA\t10\t0\t0\n"));
  Click(Trails(above), "Papio");
  messages_.answers = {2};
  Press(above, CommandDelete);
  ASSERT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(messages_.Questions()[0].title, "Delete Trail");
  EXPECT_EQ(messages_.Questions()[0].text,
            "Trail 2020-3-1 Ana is in the basis map site.map.  Delete it there?");
  EXPECT_EQ(messages_.Questions()[0].buttons, (std::vector<std::string>{"Delete", "Cancel", ""}));
  EXPECT_TRUE(Shows(Trails(above), "Papio"));
  messages_.answers = {1};
  Press(above, CommandDelete);
  EXPECT_EQ(messages_.Questions().size(), 2U);
  for (MapWindowWidget* window : {&above, &window_}) {
    EXPECT_FALSE(Shows(Trails(*window), "Papio"));
    EXPECT_EQ(TextOf(*window, CommandUndo), "&Undo Deletion of 2 Trails");
  }
  EXPECT_TRUE(window_.isWindowModified());
  EXPECT_FALSE(above.isWindowModified());
  Press(above, CommandUndo);
  for (MapWindowWidget* window : {&above, &window_}) {
    EXPECT_TRUE(Shows(Trails(*window), "Papio"));
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(TextOf(*window, CommandRedo), "&Redo Deletion of 2 Trails");
    window->grab();
  }
}

TEST_F(UndoTest, InATextFieldCtrlZIsTheFieldsOwn) {
  AddComment(shell_, TheMap());
  Trails().setFocus();
  Press(window_, CommandAdd);
  auto& editor = Editor<TrailEditorWindow>();
  auto* name = editor.findChild<QLineEdit*>(QStringLiteral("Name"));
  ASSERT_NE(name, nullptr);
  name->setFocus();
  QTest::keyClicks(name, QStringLiteral("Ridge"));
  const float scale = window_.Shown().scale;
  Key(*name, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(name->text().isEmpty());
  EXPECT_FLOAT_EQ(window_.Shown().scale, scale);
  EXPECT_EQ(TheMap().comments.size(), 1U);
  EXPECT_TRUE(editor.Commands().ActionOf(CommandUndo).isEnabled());
  EXPECT_EQ(editor.Commands().ActionOf(CommandUndo).text(), QStringLiteral("&Undo Comment"));
  Key(*name, Qt::Key_Backspace, Qt::AltModifier);
  EXPECT_TRUE(TheMap().comments.empty());
  EXPECT_FALSE(editor.Commands().ActionOf(CommandUndo).isEnabled());
  EXPECT_TRUE(editor.Commands().ActionOf(CommandRedo).isEnabled());
  EXPECT_TRUE(editor.isVisible());
  Press(editor, "cancel");
}

TEST_F(UndoTest, AnEditorOfATrailThatIsGoneOffersToMakeItAgain) {
  Trail& path = TheMap().trails.front();
  ASSERT_EQ(path.name, "Path");
  OpenTrailEditor(shell_, window_, *FindTrailRow(window_.Shown(), path));
  auto& editor = Editor<TrailEditorWindow>();
  Open(Trails(), "Trail");
  Click(Trails(), "Path");
  Press(window_, CommandDelete);
  EXPECT_TRUE(editor.isVisible());
  messages_.answers = {2, 1};
  Press(editor, "ok");
  ASSERT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(messages_.Questions()[0].text,
            "This trail was deleted.  Do you want to make it again?");
  EXPECT_TRUE(editor.isVisible());
  EXPECT_FALSE(Shows(Trails(), "Path"));
  Press(editor, "ok");
  EXPECT_FALSE(editor.isVisible());
  EXPECT_TRUE(Shows(Trails(), "Path"));
}

TEST_F(UndoTest, AnEditorOfARangeThatUndoTookAwayOffersToMakeItAgain) {
  Click(Trails(), "Papio");
  Q_EMIT window_.Panes().trailsDropped(&window_.Shown().rangeViews.back());
  ASSERT_TRUE(Shows(Ranges(), "Papio"));
  for (RangePanelRow& row : window_.Shown().rangeViews) {
    if (row.text == "Papio") OpenRangeEditor(shell_, window_, row);
  }
  auto& editor = Editor<RangeEditorWindow>();
  Press(window_, CommandUndo);
  ASSERT_FALSE(Shows(Ranges(), "Papio"));
  messages_.answers = {1};
  Press(editor, "ok");
  ASSERT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(messages_.Questions()[0].title, "Range deleted");
  EXPECT_TRUE(Shows(Ranges(), "Papio"));
}

TEST_F(UndoTest, TheRecoveryCopyFollows) {
  auto now = std::chrono::milliseconds(0);
  around_.clock = [&] { return now; };
  MapRecovery& recovery = program_.KeepCopiesIn(folder_.Path("copies"));
  const auto copies = [&] {
    std::vector<std::string> texts;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder_.Path("copies"))) {
      if (entry.is_regular_file() && entry.path().extension() == ".map") {
        texts.push_back(entry.path().string());
      }
    }
    return texts.size();
  };
  AddComment(shell_, TheMap());
  recovery.WriteAll();
  EXPECT_EQ(copies(), 1U);
  Press(window_, CommandUndo);
  EXPECT_EQ(copies(), 0U) << "the map is as in its file";
  Press(window_, CommandRedo);
  recovery.WriteAll();
  EXPECT_EQ(copies(), 1U);
}

TEST_F(UndoTest, ReloadingIsTakenBackAndMadeAgain) {
  AddComment(shell_, TheMap());
  Open(Trails(), "Papio");
  Click(Trails(), "2020-3-2");
  const std::string edited = Saved();
  folder_.Write("site.map",
                "T\tRidge\tTrail\nG\tA\tS20 0\tE47 0\n"
                "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\n");
  messages_.answers = {2};
  Press(window_, CommandReload);
  const std::string reloaded = Saved();
  EXPECT_NE(reloaded, edited);
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo Reload from Disk");
  EXPECT_FALSE(Shows(Trails(), "Cebus"));

  Press(window_, CommandUndo);
  EXPECT_EQ(Saved(), edited);
  EXPECT_TRUE(window_.isWindowModified()) << "the file holds something else";
  EXPECT_TRUE(Shows(Trails(), "Cebus"));
  EXPECT_TRUE(Trails().isExpanded(Index(Trails(), "Papio")));
  EXPECT_TRUE(Trails().selectionModel()->isSelected(Index(Trails(), "2020-3-2")));
  EXPECT_EQ(TextOf(window_, CommandUndo), "&Undo Comment") << "earlier steps lead on from there";
  window_.grab();
  Press(window_, CommandUndo);
  EXPECT_TRUE(TheMap().comments.empty());
  Press(window_, CommandRedo);
  EXPECT_EQ(Saved(), edited);
  Press(window_, CommandRedo);
  EXPECT_EQ(Saved(), reloaded);
  EXPECT_FALSE(window_.isWindowModified());
  window_.grab();
}

TEST_F(UndoTest, BackInTheStateOfAnUnchangedFileTheMarkGoes) {
  AddComment(shell_, TheMap());
  messages_.answers = {2};
  Press(window_, CommandReload);
  Press(window_, CommandUndo);
  EXPECT_TRUE(window_.isWindowModified());
  Press(window_, CommandUndo);
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(UndoTest, EditorsFindTheirTrailAgainWhenAReloadIsUndone) {
  const std::string more = std::string(SiteText) + "T\tRidge\tTrail\nG\tR\tS20 0\tE47 0\n";
  folder_.Write("site.map", more);
  Press(window_, CommandReload);
  const auto open = [&](const char* name) -> TrailEditorWindow& {
    for (TrailPanelRow* row : TrailRowsInOrder(window_.Shown().trailViews)) {
      if (row->text == name) OpenTrailEditor(shell_, window_, *row);
    }
    return *static_cast<TrailEditorWindow*>(window_.Dependents().back());
  };
  TrailEditorWindow& path = open("Path");
  TrailEditorWindow& ridge = open("Ridge");
  Press(window_, CommandUndo);
  ASSERT_TRUE(path.isVisible() && ridge.isVisible());
  AddComment(shell_, TheMap());  // nothing holds the reloaded map any more
  EXPECT_EQ(path.Editor().Edited(), &TheMap().trails.front());
  EXPECT_FALSE(path.Editor().WasChangedElsewhere());
  Press(path, "ok");
  EXPECT_TRUE(messages_.Questions().empty());
  messages_.answers = {1};
  Press(ridge, "ok");
  ASSERT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(messages_.Questions()[0].title, "Trail deleted");
  EXPECT_EQ(TheMap().trails.front().name, "Ridge");
}

TEST_F(UndoTest, OpeningAMapThatAddsToItsBasisEndsTheStepsOfTheBasis) {
  AddComment(shell_, TheMap());
  MapWindowWidget& other = OpenActive(folder_.Write("other.map", "G\tX\t1\t2\n"));
  AddComment(shell_, other.TheMap());
  EXPECT_TRUE(IsEnabled(window_, CommandUndo));
  OpenActive(folder_.Write("season.map", "B\tsite.map\nT\tPath\nC\tN\tA\t10\t0\t0\n"));
  EXPECT_FALSE(IsEnabled(window_, CommandUndo));
  EXPECT_TRUE(window_.isWindowModified());
  EXPECT_TRUE(IsEnabled(other, CommandUndo));
}

}  // namespace
}  // namespace orvane
