// The panes beside the map, with the mouse and the keyboard.

#include "panes/pane_clicks.h"
#include "shell/map/map_panes.h"
#include "shell/panes/hint_box.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/shell_case.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QRubberBand>
#include <QScrollBar>

namespace orvane {
namespace {

constexpr char Follows[] =
    "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\nG\tB\tS20 0.1\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n";

class PanesTest : public ShellCase {
 protected:
  PanesTest() : window_(OpenActive(folder_.Write("site.map", Follows))) {
    testers_.push_back(std::make_unique<QAbstractItemModelTester>(Trails().model()));
    testers_.push_back(std::make_unique<QAbstractItemModelTester>(Ranges().model()));
  }

  MapPanes& Panes() { return window_.Panes(); }
  PaneView& Trails() { return Panes().Trails().Rows(); }
  PaneView& Ranges() { return Panes().Ranges().Rows(); }
  MapWindow& Shown() { return window_.Shown(); }

  QModelIndex Index(PaneView& pane, const QString& text) {
    const auto found = pane.model()->match(pane.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                           Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_FALSE(found.isEmpty()) << text.toStdString();
    return found.value(0);
  }
  /// The middle of a column of a row.
  QPoint At(PaneView& pane, const QString& text, PaneZone zone = PaneZone::Text) {
    const QRect row = pane.visualRect(Index(pane, text));
    const int height = pane.RowHeight();
    const int x = zone == PaneZone::Triangle ? 5 + height / 2
                  : zone == PaneZone::Tick   ? 5 + height * 3 / 2
                                             : 5 + height * 2 + 12;
    return {x, row.center().y()};
  }
  void Click(PaneView& pane, const QString& text, PaneZone zone = PaneZone::Text,
             Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, keys, At(pane, text, zone));
  }
  TrailPanelRow& Row(const char* text) {
    for (TrailPanelRow* row : TrailRowsInOrder(Shown().trailViews)) {
      if (row->text == text) return *row;
    }
    ADD_FAILURE() << text;
    return Shown().trailViews.front();
  }
  QStringList SelectedTrails() {
    QStringList texts;
    for (const TrailPanelRow* row : TrailRowsInOrder(Shown().trailViews)) {
      if (row->selected) texts << QString::fromStdString(row->text);
    }
    return texts;
  }
  /// The same, sorted, as the toolkit and so a screen reader knows it.
  QStringList SelectedIndexes() {
    QStringList texts;
    const auto indexes = Trails().selectionModel()->selectedIndexes();
    for (const QModelIndex& index : indexes) texts << index.data().toString();
    texts.sort();
    return texts;
  }
  QStringList RangeTexts() {
    QStringList texts;
    for (int row = 0; row < Ranges().model()->rowCount(); ++row) {
      texts << Ranges().model()->index(row, 0).data().toString();
    }
    return texts;
  }
  void Key(PaneView& pane, int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::keyClick(&pane, static_cast<Qt::Key>(key), keys);
  }
  static QMenu& OpenMenu(PaneView& pane, Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::keyClick(&pane, key, keys);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    EXPECT_NE(menu, nullptr);
    return *menu;
  }
  static void PressInMenu(Qt::Key key) {
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), key);
  }
  /// The entries of the menu in front: "-" before those that are grey, "" for a line.
  static QStringList MenuTexts() {
    QStringList texts;
    const auto actions = QApplication::activePopupWidget()->actions();
    for (const QAction* action : actions) {
      texts << (action->isEnabled() ? "" : "-") + action->text();
      if (action->isSeparator()) texts.back().clear();
    }
    return texts;
  }
  void DragTo(const QString& trail, QPoint inRanges) {
    QWidget* from = Trails().viewport();
    const QPoint target = from->mapFromGlobal(Ranges().viewport()->mapToGlobal(inRanges));
    QTest::mousePress(from, Qt::LeftButton, Qt::NoModifier, At(Trails(), trail));
    QTest::mouseMove(from, target);
    QTest::mouseRelease(from, Qt::LeftButton, Qt::NoModifier, target);
  }

  MapWindowWidget& window_;
  std::vector<std::unique_ptr<QAbstractItemModelTester>> testers_;
};

TEST_F(PanesTest, ATriangleOpensAGroupAndATickHidesIt) {
  Click(Trails(), "Papio", PaneZone::Triangle);
  EXPECT_TRUE(Row("Papio").open);
  EXPECT_TRUE(Trails().isExpanded(Index(Trails(), "Papio")));
  EXPECT_FALSE(Row("Papio").visible);
  Click(Trails(), "Papio", PaneZone::Tick);
  EXPECT_TRUE(Row("Papio").visible);
  EXPECT_TRUE(Row("2020-3-1 Ana").visible);
  Click(Trails(), "2020-3-2", PaneZone::Tick);
  EXPECT_FALSE(Row("2020-3-2").visible);
  Click(Trails(), "Papio", PaneZone::Triangle);
  EXPECT_FALSE(Trails().isExpanded(Index(Trails(), "Papio")));
}

TEST_F(PanesTest, AClickSelectsARowWithAllBelowAndShiftAddsAnother) {
  Click(Trails(), "Papio");
  EXPECT_EQ(SelectedTrails(), (QStringList{"Papio", "2020-3-1 Ana", "2020-3-2"}));
  EXPECT_EQ(SelectedIndexes(), (QStringList{"2020-3-1 Ana", "2020-3-2", "Papio"}));
  Click(Trails(), "Trail", PaneZone::Text, Qt::ShiftModifier);
  EXPECT_EQ(SelectedTrails().size(), 5);
  Click(Trails(), "New");
  EXPECT_TRUE(SelectedTrails().isEmpty());
  EXPECT_TRUE(SelectedIndexes().isEmpty());
}

TEST_F(PanesTest, AClickBelowTheLastRowClearsTheSelection) {
  Click(Trails(), "Papio");
  QTest::mouseClick(Trails().viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(40, Trails().viewport()->height() - 3));
  EXPECT_TRUE(SelectedTrails().isEmpty());
}

TEST_F(PanesTest, AReleaseOnAnotherRowDoesNothing) {
  QTest::mousePress(Trails().viewport(), Qt::LeftButton, Qt::NoModifier, At(Trails(), "Papio"));
  QTest::mouseRelease(Trails().viewport(), Qt::LeftButton, Qt::NoModifier, At(Trails(), "Trail"));
  EXPECT_TRUE(SelectedTrails().isEmpty());
}

TEST_F(PanesTest, CommandsFollowTheSelection) {
  Trails().setFocus();
  EXPECT_FALSE(window_.Menu().At(CommandCheckTrails).enabled);
  Click(Trails(), "Papio");
  EXPECT_TRUE(window_.Menu().At(CommandCheckTrails).enabled);
  EXPECT_EQ(window_.Menu().At(CommandAdd).text, "Add Trail");
}

TEST_F(PanesTest, AGroupDroppedOnNewMakesARangeNamedAfterIt) {
  Click(Trails(), "Papio");
  DragTo("Papio", At(Ranges(), "New"));
  EXPECT_EQ(RangeTexts(), (QStringList{"Papio", "New"}));
  EXPECT_NE(window_.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(window_.isWindowModified());
  DragTo("Papio", At(Ranges(), "New"));
  EXPECT_EQ(RangeTexts().mid(0, 2), (QStringList{"Papio", "Papio 2"}));
  ASSERT_TRUE(shell_.History().Undo(window_.TheMap()));
  ASSERT_TRUE(shell_.History().Undo(window_.TheMap()));
  EXPECT_EQ(RangeTexts(), QStringList{"New"});
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

TEST_F(PanesTest, AShortMoveIsAClickAndEscapeEndsADrag) {
  Click(Trails(), "Papio");
  QWidget* pane = Trails().viewport();
  const QPoint at = At(Trails(), "Papio");
  QTest::mousePress(pane, Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseMove(pane, at + QPoint(2, 1));
  EXPECT_FALSE(Trails().IsDragging());
  QTest::mouseMove(pane, at + QPoint(4, 0));
  EXPECT_TRUE(Trails().IsDragging());
  Key(Trails(), Qt::Key_Escape);
  EXPECT_FALSE(Trails().IsDragging());
  QTest::mouseRelease(pane, Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(RangeTexts(), QStringList{"New"});
}

TEST_F(PanesTest, ADropAboveOrBelowTheRowsThatShowChangesNothing) {
  for (int i = 0; i < 30; ++i) {
    Click(Trails(), "Papio");
    DragTo("Papio", At(Ranges(), "New"));
    Ranges().verticalScrollBar()->setValue(Ranges().verticalScrollBar()->maximum());
  }
  const size_t steps = shell_.History().Steps();
  Click(Trails(), "Papio");
  DragTo("Papio", QPoint(20, -5));
  DragTo("Papio", QPoint(20, Ranges().viewport()->height() + 5));
  EXPECT_EQ(shell_.History().Steps(), steps);
}

TEST_F(PanesTest, ADragReleasedBelowTheRowsClearsTheSelection) {
  Click(Trails(), "Papio");
  ASSERT_FALSE(SelectedTrails().isEmpty());
  QWidget* pane = Trails().viewport();
  const QPoint below(40, pane->height() - 2);
  ASSERT_FALSE(Trails().indexAt(below).isValid());
  QTest::mousePress(pane, Qt::LeftButton, Qt::NoModifier, At(Trails(), "Papio"));
  QTest::mouseMove(pane, below);
  QTest::mouseRelease(pane, Qt::LeftButton, Qt::NoModifier, below);
  EXPECT_TRUE(SelectedTrails().isEmpty());
  EXPECT_EQ(RangeTexts(), QStringList{"New"});
}

TEST_F(PanesTest, AReleaseOnThePressedRowIsAClickHoweverFarThePointerWent) {
  Click(Trails(), "Papio");
  QWidget* pane = Trails().viewport();
  const QPoint at = At(Trails(), "Papio");
  QTest::mousePress(pane, Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseMove(pane, at + QPoint(8, 0));
  QTest::mouseRelease(pane, Qt::LeftButton, Qt::ShiftModifier, at + QPoint(8, 0));
  EXPECT_TRUE(SelectedTrails().isEmpty());
  EXPECT_FALSE(Trails().IsDragging());
}

TEST_F(PanesTest, TheColumnOfTheTrianglesDoesNothingForATrail) {
  Row("Papio").open = true;
  Trails().ShowChangedRows();
  Click(Trails(), "2020-3-2", PaneZone::Triangle);
  EXPECT_TRUE(SelectedTrails().isEmpty());
}

TEST_F(PanesTest, APressOnARowThatIsCutDoesNotMoveTheList) {
  Row("Papio").open = true;
  Trails().ShowChangedRows();
  Panes().SetSizes({150, 3 * Trails().RowHeight() + 30});
  const int before = Trails().verticalScrollBar()->value();
  ASSERT_GT(Trails().verticalScrollBar()->maximum(), 0);
  QTest::mousePress(Trails().viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(60, Trails().viewport()->height() - 1));
  EXPECT_EQ(Trails().verticalScrollBar()->value(), before);
}

TEST_F(PanesTest, ARangeRowReleasedElsewhereClearsTheSelection) {
  Click(Trails(), "Papio");
  DragTo("Papio", At(Ranges(), "New"));
  Click(Ranges(), "Papio");
  ASSERT_TRUE(Shown().rangeViews.front().selected);
  QTest::mousePress(Ranges().viewport(), Qt::LeftButton, Qt::NoModifier, At(Ranges(), "Papio"));
  QTest::mouseRelease(Ranges().viewport(), Qt::LeftButton, Qt::NoModifier, At(Ranges(), "New"));
  EXPECT_FALSE(Shown().rangeViews.front().selected);
}

TEST_F(PanesTest, EscapeInAPaneEndsTransectMode) {
  window_.View().SetTransectMode(true);
  Trails().setFocus();
  Key(Trails(), Qt::Key_Escape);
  EXPECT_FALSE(Shown().transectMode);
}

TEST_F(PanesTest, AnUnselectedRowAndTheRowNewAreNotDragged) {
  DragTo("Papio", At(Ranges(), "New"));
  DragTo("New", At(Ranges(), "New"));
  EXPECT_EQ(RangeTexts(), QStringList{"New"});
}

TEST_F(PanesTest, TheRowThatADragWouldDropOnIsFramed) {
  Click(Trails(), "Papio");
  QWidget* pane = Trails().viewport();
  QTest::mousePress(pane, Qt::LeftButton, Qt::NoModifier, At(Trails(), "Papio"));
  QTest::mouseMove(pane,
                   pane->mapFromGlobal(Ranges().viewport()->mapToGlobal(At(Ranges(), "New"))));
  EXPECT_EQ(Ranges().DropTarget(), Index(Ranges(), "New"));
  Key(Trails(), Qt::Key_Escape);
  EXPECT_FALSE(Ranges().DropTarget().isValid());
}

TEST_F(PanesTest, ArrowsWalkTheRowsAndOpenGroups) {
  Trails().setFocus();
  Key(Trails(), Qt::Key_Home);
  EXPECT_EQ(Trails().currentIndex().data(), "Papio");
  EXPECT_EQ(SelectedTrails().size(), 3);
  Key(Trails(), Qt::Key_Right);
  EXPECT_TRUE(Row("Papio").open);
  Key(Trails(), Qt::Key_Right);
  EXPECT_EQ(SelectedTrails(), QStringList{"2020-3-1 Ana"});
  Key(Trails(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(SelectedTrails(), (QStringList{"2020-3-1 Ana", "2020-3-2"}));
  Key(Trails(), Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(SelectedTrails(), QStringList{"2020-3-1 Ana"});
  Key(Trails(), Qt::Key_Left);
  EXPECT_EQ(Trails().currentIndex().data(), "Papio");
  Key(Trails(), Qt::Key_Left);
  EXPECT_FALSE(Row("Papio").open);
  Key(Trails(), Qt::Key_End);
  EXPECT_EQ(Trails().currentIndex().data(), "New");
  EXPECT_TRUE(SelectedTrails().isEmpty());
}

TEST_F(PanesTest, SpaceTicksTheRowAndLettersFindOne) {
  Trails().setFocus();
  Key(Trails(), Qt::Key_Home);
  Key(Trails(), Qt::Key_Space);
  EXPECT_TRUE(Row("2020-3-2").visible);
  QTest::keyClick(&Trails(), 't');
  EXPECT_EQ(Trails().currentIndex().data(), "Trail");
  EXPECT_EQ(SelectedTrails(), (QStringList{"Trail", "Path"}));
}

TEST_F(PanesTest, ControlAndSpaceAddARowAwayFromTheOthers) {
  Click(Trails(), "Papio", PaneZone::Triangle);
  Trails().setFocus();
  Key(Trails(), Qt::Key_Home);
  Key(Trails(), Qt::Key_Down);
  EXPECT_EQ(SelectedTrails(), QStringList{"2020-3-1 Ana"});
  Key(Trails(), Qt::Key_Down, Qt::ControlModifier);
  Key(Trails(), Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(Trails().currentIndex().data(), "Trail");
  Key(Trails(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(SelectedTrails(), (QStringList{"2020-3-1 Ana", "Trail", "Path"}));
  Key(Trails(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(SelectedTrails(), QStringList{"2020-3-1 Ana"});
}

TEST_F(PanesTest, TheMenuKeyAddsTheSelectedTrailsToARange) {
  Trails().setFocus();
  Key(Trails(), Qt::Key_Home);
  for (int i = 0; i < 2; ++i) {
    QMenu& menu = OpenMenu(Trails(), Qt::Key_Menu);
    EXPECT_EQ(menu.objectName(), "trailMenu");
    PressInMenu(Qt::Key_R);
    PressInMenu(Qt::Key_Up);  // "New" is the last
    PressInMenu(Qt::Key_Return);
  }
  EXPECT_EQ(RangeTexts().mid(0, 2), (QStringList{"Papio", "Papio 2"}));
  // The other range gets the trails of "Trail".
  Key(Trails(), Qt::Key_End);
  Key(Trails(), Qt::Key_Up);
  EXPECT_EQ(SelectedTrails(), (QStringList{"Trail", "Path"}));
  OpenMenu(Trails(), Qt::Key_Menu);
  PressInMenu(Qt::Key_R);
  EXPECT_EQ(MenuTexts(), (QStringList{"Papio", "Papio 2", "", "New"}));
  PressInMenu(Qt::Key_Down);
  PressInMenu(Qt::Key_Return);
  const Range* second = std::next(Shown().rangeViews.begin())->range;
  EXPECT_EQ(second->name, "Papio 2");
  EXPECT_EQ(second->keys.front().type, "Trail");
  EXPECT_EQ(*shell_.History().UndoName(window_.TheMap()), "Drop on Range Papio 2");
}

TEST_F(PanesTest, TheMenuOfAPaneHasTheCommandsOfItsRows) {
  Trails().setFocus();
  Key(Trails(), Qt::Key_End);
  OpenMenu(Trails(), Qt::Key_Menu);
  EXPECT_EQ(MenuTexts(),
            (QStringList{"-Edit Trail\tReturn", "Add Trail", "-Delete Trail", "",
                         "-Trail View Control...", "-Check &Trails", "", "-Add to &Range"}));
  PressInMenu(Qt::Key_Escape);
  Key(Trails(), Qt::Key_Home);
  OpenMenu(Trails(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(MenuTexts(),
            (QStringList{"Edit Trail\tReturn", "Add Trail", "Delete Trail", "",
                         "Trail View Control...", "Check &Trails", "", "Add to &Range"}));
  PressInMenu(Qt::Key_Down);
  PressInMenu(Qt::Key_Return);
  EXPECT_EQ(messages_.Entries().back().text,
            "Please open this set of trails before double clicking");
}

TEST_F(PanesTest, TheMenuOfTheRangePaneEditsAndSelectsRanges) {
  Click(Trails(), "Papio");
  DragTo("Papio", At(Ranges(), "New"));
  Ranges().setFocus();
  Key(Ranges(), Qt::Key_Home);
  OpenMenu(Ranges(), Qt::Key_Menu);
  EXPECT_EQ(MenuTexts(), (QStringList{"Edit Range\tReturn", "Add Range", "Delete Range", "",
                                      "Range View Control...", "", "Select All"}));
  PressInMenu(Qt::Key_Down);
  PressInMenu(Qt::Key_Return);
  ASSERT_EQ(window_.Dependents().size(), 1U);
  EXPECT_EQ(window_.Dependents().front()->Widget().windowTitle(), "Papio");
  ASSERT_TRUE(window_.Dependents().front()->TryClose());
  ClearRangeSelection(Shown());
  OpenMenu(Ranges(), Qt::Key_Menu);
  PressInMenu(Qt::Key_Up);
  PressInMenu(Qt::Key_Return);
  EXPECT_TRUE(Shown().rangeViews.front().selected);
}

TEST_F(PanesTest, TheSecondButtonOfTheMouseOpensNoMenu) {
  const QPoint at = At(Trails(), "Papio");
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, Trails().viewport()->mapToGlobal(at));
  QApplication::sendEvent(Trails().viewport(), &event);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(PanesTest, ARowGoneFromTheMenuTakesNoTrails) {
  Click(Trails(), "Papio");
  DragTo("Papio", At(Ranges(), "New"));
  QMenu& menu = OpenMenu(Trails(), Qt::Key_Menu);
  auto* ranges = menu.findChild<QMenu*>(QStringLiteral("addToRange"));
  ASSERT_TRUE(shell_.History().Undo(window_.TheMap()));
  ASSERT_EQ(RangeTexts(), QStringList{"New"});
  ranges->actions().front()->trigger();
  EXPECT_EQ(RangeTexts(), QStringList{"New"});
  PressInMenu(Qt::Key_Escape);
}

TEST_F(PanesTest, ControlAInTheRangePaneSelectsAllRanges) {
  Click(Trails(), "Papio");
  DragTo("Papio", At(Ranges(), "New"));
  DragTo("Papio", At(Ranges(), "New"));
  Ranges().setFocus();
  Key(Ranges(), Qt::Key_A, Qt::ControlModifier);
  for (const RangePanelRow& row : Shown().rangeViews) EXPECT_EQ(row.selected, !row.fixed);
}

TEST_F(PanesTest, RowsKeepTheirLookWhenTheMapChanges) {
  Click(Trails(), "Papio", PaneZone::Triangle);
  Click(Trails(), "2020-3-2");
  ASSERT_TRUE(shell_.History().Apply(
      {.name = "New Trail", .map = &window_.TheMap(), .change = [&](EditFollowUp& followUp) {
         Trail& trail = window_.TheMap().trails.emplace_front();
         trail.name = "Loop";
         trail.type = "Aye";
         followUp.solve = true;
         return true;
       }}));
  EXPECT_EQ(Trails().model()->index(0, 0).data(), "Aye");
  EXPECT_TRUE(Trails().isExpanded(Index(Trails(), "Papio")));
  EXPECT_EQ(SelectedIndexes(), QStringList{"2020-3-2"});
  EXPECT_EQ(Trails().currentIndex().data(), "2020-3-2");
}

TEST_F(PanesTest, AnUntouchedPaneShowsTheTipOfARowAfterAWhile) {
  QTest::mouseMove(Trails().viewport(), At(Trails(), "New"));
  EXPECT_EQ(HintBox::Shown(), nullptr);
  ASSERT_TRUE(QTest::qWaitFor([] { return HintBox::Shown() != nullptr; }, 3000));
  EXPECT_EQ(HintBox::Shown()->Lines(), QStringList{"Create a new trail"});
  QTest::mouseClick(HintBox::Shown(), Qt::LeftButton);
  EXPECT_EQ(HintBox::Shown(), nullptr);
}

TEST_F(PanesTest, ScreenReadersLearnWhetherARowIsTickedAndSelected) {
  Click(Trails(), "Trail");
  QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&Trails());
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->text(QAccessible::Name), "Trails");
  QAccessibleInterface* row = tree->tableInterface()->cellAt(1, 0);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->text(QAccessible::Name), "Trail");
  EXPECT_EQ(tree->role(), QAccessible::Tree);
  EXPECT_EQ(row->role(), QAccessible::TreeItem);
  EXPECT_TRUE(row->state().selected);
  EXPECT_TRUE(row->state().checkable);
  EXPECT_TRUE(row->state().checked);
  EXPECT_TRUE(row->state().expandable);
  EXPECT_FALSE(row->state().expanded);
  EXPECT_EQ(row->text(QAccessible::Description), "Level 1, closed");
  EXPECT_FALSE(tree->tableInterface()->cellAt(0, 0)->state().selected);
  EXPECT_FALSE(tree->tableInterface()->cellAt(0, 0)->state().checked) << "follows start hidden";
  Click(Trails(), "Trail", PaneZone::Triangle);
  EXPECT_TRUE(tree->tableInterface()->cellAt(1, 0)->state().expanded);
  EXPECT_EQ(tree->tableInterface()->cellAt(2, 0)->text(QAccessible::Name), "Path");
  EXPECT_EQ(tree->tableInterface()->cellAt(2, 0)->text(QAccessible::Description), "Level 2");
  EXPECT_FALSE(tree->tableInterface()->cellAt(3, 0)->state().checkable) << "New";
  EXPECT_EQ(Index(Trails(), "Trail").data(Qt::CheckStateRole), Qt::Checked);
  EXPECT_EQ(Index(Trails(), "Path").data(Qt::AccessibleDescriptionRole), "Level 2");
}

}  // namespace
}  // namespace orvane
