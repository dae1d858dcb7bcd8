// A whole day's work in the windows, with keys and buttons only: trails are typed and clicked, a
// follow sheet is imported, a range is made and coloured, the map is saved and opened again.

#include "mapfile/writer.h"
#include "panes/trail_tree.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/range_editor_window.h"
#include "shell/editors/trail_editor_window.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/sheet_dialog_driver.h"
#include "shell/shell_case.h"
#include "support/same_map.h"
#include "support/working_folder.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <array>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

constexpr char Site[] =
    "T\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\nG\tMain100\tN1 0'\tE10 0.1'\n"
    "G\tMain200=Camp\tN1 0'\tE10 0.2'\t120\n";

/// Each follow ends with two rows at one place: a last stop without a duration has no time in a file.
constexpr char Follows[] =
    "Oru\tUlo\t2020-3-1\t0800\tMain0\tfeed\nOru\tUlo\t2020-3-1\t0830\tMain100\tfeed\n"
    "Oru\tUlo\t2020-3-1\t0900\tR2\trest\nOru\tUlo\t2020-3-1\t0930\tCamp\trest\n"
    "Oru\tUlo\t2020-3-1\t0945\tCamp\trest\n"
    "Oru\tPim\t2020-3-2\t0800\tMain200\tfeed\nOru\tPim\t2020-3-2\t0845\tR1\tfeed\n"
    "Oru\tPim\t2020-3-2\t0915\tMain0\trest\nOru\tPim\t2020-3-2\t0940\tMain0\trest\n";

class DayOfWork : public ShellCase {
 protected:
  DayOfWork() : window_(OpenActive(folder_.Write("site.map", Site))) {}

  Map& TheMap() { return window_.TheMap(); }
  PaneView& Trails() { return window_.Panes().Trails().Rows(); }
  PaneView& Ranges() { return window_.Panes().Ranges().Rows(); }

  static void Key(int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), keys);
  }
  static void Type(const char* text) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }
  /// Types cells of the table from the open one on, with Tab between them.
  static void TypeCells(std::initializer_list<const char*> texts) {
    const char* between = nullptr;
    for (const char* text : texts) {
      if (between != nullptr) Key(Qt::Key_Tab);
      Type(text);
      between = text;
    }
  }
  void GoToPane(const PaneView& pane) {
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    for (int i = 0; i < 10 && !pane.hasFocus(); ++i) Key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(pane.hasFocus());
  }
  template <typename Editor>
  Editor& OpenEditor() {
    EXPECT_EQ(window_.Dependents().size(), 1U);
    auto& editor = *static_cast<Editor*>(window_.Dependents().at(0));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
    return editor;
  }
  TrailEditorWindow& OpenNewTrail() {
    GoToPane(Trails());
    Key(Qt::Key_End);
    Key(Qt::Key_Return);
    return OpenEditor<TrailEditorWindow>();
  }
  QPoint At(PaneView& pane, const QString& text) {
    const auto found = pane.model()->match(pane.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                           Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_FALSE(found.isEmpty()) << text.toStdString();
    return {5 + pane.RowHeight() * 2 + 12, pane.visualRect(found.value(0)).center().y()};
  }
  Trail* Find(const char* name) {
    for (Trail& trail : TheMap().trails) {
      if (trail.name == name) return &trail;
    }
    return nullptr;
  }
  static std::vector<std::string> RowTexts(MapWindow& view) {
    std::vector<std::string> texts;
    for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) texts.push_back(row->text);
    for (const RangePanelRow& row : view.rangeViews) texts.push_back(row.text.value_or(""));
    return texts;
  }

  void TypeATrail();
  void ClickATrail();
  void ImportFollows();
  void DragTheGroupOntoNew();
  void ColorTheRange();
  /// Does all of the day, and keeps what a save would write after each part.
  void DoAll();
  void SaveAndOpenAgain();
  std::string Saved() { return MapFileText(TheMap(), TheMap().fileName, true); }

  MapWindowWidget& window_;
  std::vector<std::string> states_;        ///< before the first part, then after each
  WorkingFolder working_{folder_.Path()};  ///< of the lists that an import writes
};

/// From the pane to OK with the keyboard only.
void DayOfWork::TypeATrail() {
  OpenNewTrail();
  Type("Trail");
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Tab);  // past Date, Focal Animal and Size
  Type("Ridge");
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Tab);  // past the three modes
  Type("#804000");
  Key(Qt::Key_F6);
  TypeCells({"R1", "Main0", "100m", "A45", "2", "130", "3", "2km", "at the old fig"});
  Key(Qt::Key_Return);
  TypeCells({"R2", "R1", "80", "A90"});
  Key(Qt::Key_Return, Qt::ControlModifier);
  DeliverDeletes();
  ASSERT_TRUE(window_.Dependents().empty());
  const Trail* ridge = Find("Ridge");
  ASSERT_NE(ridge, nullptr);
  EXPECT_EQ(ridge->color, 0x804000);
  ASSERT_EQ(ridge->points.size(), 2U);
  EXPECT_TRUE(IsPlaced(*ridge->points.back()));
  EXPECT_EQ(ridge->points.front()->note, "at the old fig");
}

void DayOfWork::ClickATrail() {
  TrailEditorWindow& editor = OpenNewTrail();
  Type("River");
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Tab);
  Type("Brook");
  QTest::mouseClick(editor.findChild<QRadioButton*>(QStringLiteral("GPS")), Qt::LeftButton,
                    Qt::NoModifier, QPoint(5, 8));
  Press(editor, CommandGraphicalInput);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  for (const QPoint at : {QPoint(200, 150), QPoint(240, 170), QPoint(260, 210)}) {
    QTest::mouseClick(&window_.View(), Qt::LeftButton, Qt::NoModifier, at);
  }
  QTest::keyClick(&window_.View(), Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
  ASSERT_EQ(editor.Editor().RowCount(), 3U);
  // The points get names.
  int number = 0;
  for (const char* name : {"W1", "W2", "W3"}) {
    const QRect cell = editor.Cells().visualRect(editor.Cells().model()->index(number++, 0));
    QTest::mouseClick(editor.Cells().viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    Type(name);
  }
  QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
  DeliverDeletes();
  ASSERT_TRUE(window_.Dependents().empty());
  ASSERT_NE(Find("Brook"), nullptr);
  EXPECT_EQ(Find("Brook")->points.size(), 3U);
}

void DayOfWork::ImportFollows() {
  dialogs_->paths = {folder_.Write("follows.txt", Follows)};
  const bool shown = WithDialog<SheetDialog>(
      [this] { Press(window_, CommandImportSpreadsheet); },
      [](SheetDialog& dialog) {
        constexpr std::array<std::pair<SheetField, const char*>, 6> Columns{{{SheetSpecies, "A"},
                                                                             {SheetFocal, "B"},
                                                                             {SheetDate, "C"},
                                                                             {SheetTime, "D"},
                                                                             {SheetLocation, "E"},
                                                                             {SheetActivity, "F"}}};
        for (const auto& [field, column] : Columns) TypeInField(dialog, field, column);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
      });
  ASSERT_TRUE(shown);
}

void DayOfWork::DragTheGroupOntoNew() {
  window_.activateWindow();
  QWidget* from = Trails().viewport();
  QTest::mouseClick(from, Qt::LeftButton, Qt::NoModifier, At(Trails(), "Oru"));
  const QPoint target = from->mapFromGlobal(Ranges().viewport()->mapToGlobal(At(Ranges(), "New")));
  QTest::mousePress(from, Qt::LeftButton, Qt::NoModifier, At(Trails(), "Oru"));
  QTest::mouseMove(from, target);
  QTest::mouseRelease(from, Qt::LeftButton, Qt::NoModifier, target);
  const RangePanelRow& row = window_.Shown().rangeViews.front();
  ASSERT_EQ(row.text, "Oru");
  EXPECT_EQ(row.range->follows.size(), 2U);
  EXPECT_GT(row.range->mcpArea, 0);
}

void DayOfWork::ColorTheRange() {
  QTest::mouseDClick(Ranges().viewport(), Qt::LeftButton, Qt::NoModifier, At(Ranges(), "Oru"));
  OpenEditor<RangeEditorWindow>();
  Key(Qt::Key_Tab);
  Type("red");
  Key(Qt::Key_Return, Qt::ControlModifier);
  DeliverDeletes();
  ASSERT_TRUE(window_.Dependents().empty());
  EXPECT_EQ(window_.Shown().rangeViews.front().color, 0xFF0000);
}

void DayOfWork::DoAll() {
  states_ = {Saved()};
  for (const auto& part :
       {&DayOfWork::TypeATrail, &DayOfWork::ClickATrail, &DayOfWork::ImportFollows,
        &DayOfWork::DragTheGroupOntoNew, &DayOfWork::ColorTheRange}) {
    (this->*part)();
    if (HasFatalFailure()) return;
    states_.push_back(Saved());
  }
}

void DayOfWork::SaveAndOpenAgain() {
  Press(window_, CommandSave);
  EXPECT_EQ(TheMap().flags & MapDirty, 0U);
  ScriptedMessages messages;
  BoxMessages boxes(around_);
  Workspace workspace(messages);
  Program program(workspace, boxes, around_);
  MapWindowWidget& again = *program.TheShell().OpenFile(TheMap().fileName);
  ExpectSameMap(TheMap(), again.TheMap());
  EXPECT_EQ(RowTexts(window_.Shown()), RowTexts(again.Shown()));
  EXPECT_TRUE(messages.Entries().empty());
  again.TryClose();
  DeliverDeletes();  // before its program goes
}

TEST_F(DayOfWork, ComesBackFromTheFileAsItWasTypedClickedAndDragged) {
  DoAll();
  if (HasFatalFailure()) return;
  EXPECT_EQ(RowTexts(window_.Shown()),
            (std::vector<std::string>{"Oru", "2020-3-1 Ulo", "2020-3-2 Pim", "River", "Brook",
                                      "Trail", "Main", "Ridge", "New", "Oru", "New"}));
  SaveAndOpenAgain();
  for (const auto& entry : messages_.Entries()) EXPECT_EQ(entry.severity, Severity::Note);
}

TEST_F(DayOfWork, IsTakenBackStepByStepAndDoneAgain) {
  DoAll();
  if (HasFatalFailure()) return;
  const std::vector<std::string> steps{"New Trail Ridge", "New Trail Brook",
                                       "Import of follows.txt", "New Range Oru",
                                       "Edit of Range Oru"};
  ASSERT_EQ(states_.size(), steps.size() + 1);
  const auto rows = RowTexts(window_.Shown());
  for (size_t step = steps.size(); step > 0; --step) {
    ASSERT_NE(shell_.History().UndoName(TheMap()), nullptr);
    EXPECT_EQ(*shell_.History().UndoName(TheMap()), steps[step - 1]);
    Press(window_, CommandUndo);
    EXPECT_EQ(Saved(), states_[step - 1]) << steps[step - 1];
    EXPECT_EQ((TheMap().flags & MapDirty) != 0, step > 1);
  }
  EXPECT_EQ(RowTexts(window_.Shown()), (std::vector<std::string>{"Trail", "Main", "New", "New"}));
  for (size_t step = 1; step <= steps.size(); ++step) {
    Press(window_, CommandRedo);
    EXPECT_EQ(Saved(), states_[step]) << steps[step - 1];
  }
  EXPECT_EQ(RowTexts(window_.Shown()), rows);
}

}  // namespace
}  // namespace orvane
