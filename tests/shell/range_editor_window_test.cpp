// The window of the range editor, with keys and buttons.

#include "shell/editors/range_editor_window.h"

#include "panes/range_list.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/shell_case.h"

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace orvane {
namespace {

constexpr char TwoRanges[] =
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n"
    "R\tAnas\nK\tPapio\tAna\nR\tAll\nK\tPapio\n";

class RangeEditorWindowTest : public ShellCase {
 protected:
  RangeEditorWindowTest() : window_(OpenActive(folder_.Write("site.map", TwoRanges))) {}
  /// Closes without a question what a test has left open.
  ~RangeEditorWindowTest() override {
    if (shell_.Windows().All().empty()) return;
    const std::vector<ProgramWindow*> open = window_.Dependents();
    for (ProgramWindow* each : open) Click(*static_cast<RangeEditorWindow*>(each), "cancel");
  }

  Map& TheMap() { return window_.TheMap(); }
  MapWindow& Shown() { return window_.View().Shown(); }
  PaneView& Pane() { return window_.Panes().Ranges().Rows(); }
  RangePanelRow& Row(const char* text) {
    for (RangePanelRow& row : Shown().rangeViews) {
      if (row.text == text) return row;
    }
    ADD_FAILURE() << text;
    return Shown().rangeViews.front();
  }
  RangeEditorWindow& Editor() {
    EXPECT_EQ(window_.Dependents().size(), 1U);
    auto& editor = *static_cast<RangeEditorWindow*>(window_.Dependents().at(0));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
    return editor;
  }
  RangeEditorWindow& Open(const char* text) {
    OpenRangeEditor(shell_, window_, Row(text));
    return Editor();
  }
  static QLineEdit& Field(RangeEditorWindow& editor, const char* name) {
    return *editor.findChild<QLineEdit*>(QLatin1String(name));
  }
  static void Click(RangeEditorWindow& editor, const char* button) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
  }
  static void Key(int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), keys);
  }
  static void Type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }

  MapWindowWidget& window_;
};

TEST_F(RangeEditorWindowTest, ANewRangeIsTypedWithTheKeyboardAlone) {
  Pane().setFocus();
  Key(Qt::Key_End);
  Key(Qt::Key_Return);
  RangeEditorWindow& editor = Editor();
  EXPECT_EQ(editor.windowTitle(), QStringLiteral("New Range"));
  EXPECT_EQ(Field(editor, "Color").text(), QStringLiteral("gray"));
  Type("Both");
  Key(Qt::Key_Tab);
  EXPECT_EQ(Field(editor, "Color").selectedText(), QStringLiteral("gray"));
  Type("red");
  Key(Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), &Field(editor, "Name"));
  Key(Qt::Key_F6);
  Type("Papio");
  Key(Qt::Key_Return, Qt::ControlModifier);
  DeliverDeletes();
  EXPECT_TRUE(window_.Dependents().empty());
  const Range& range = TheMap().ranges.front();
  EXPECT_EQ(range.name, "Both");
  EXPECT_EQ(range.follows.size(), 2U) << "it is analysed";
  EXPECT_EQ(Row("Both").color, 0xFF0000);
  bool isListed = false;
  for (int row = 0; row < Pane().model()->rowCount(); ++row) {
    isListed = isListed || Pane().model()->index(row, 0).data() == QStringLiteral("Both");
  }
  EXPECT_TRUE(isListed);
}

TEST_F(RangeEditorWindowTest, TheMenuOfThePaneAddsARange) {
  Pane().setFocus();
  ActionOf(window_, CommandAdd).trigger();
  EXPECT_EQ(Editor().windowTitle(), QStringLiteral("New Range"));
}

TEST_F(RangeEditorWindowTest, ReturnInThePaneOpensItsRow) {
  Pane().setFocus();
  Key(Qt::Key_Home);
  Key(Qt::Key_Return);
  EXPECT_EQ(Editor().windowTitle(), QStringLiteral("All"));
  EXPECT_EQ(Editor().Cells().model()->rowCount(), 2);
  // A second one on it is the first.
  OpenRangeEditor(shell_, window_, Row("All"));
  EXPECT_EQ(window_.Dependents().size(), 1U);
}

TEST_F(RangeEditorWindowTest, AnOverlapCantBeEdited) {
  RangePanelRow* overlap = nullptr;
  for (RangePanelRow& row : Shown().rangeViews) {
    if (row.intersection != nullptr) overlap = &row;
  }
  ASSERT_NE(overlap, nullptr);
  OpenRangeEditor(shell_, window_, *overlap);
  EXPECT_EQ(Texts(), std::vector<std::string>{"You may not modify an intersection directly"});
  EXPECT_TRUE(window_.Dependents().empty());
}

TEST_F(RangeEditorWindowTest, AColorAloneIsTakenWithoutAnotherAnalysis) {
  RangeEditorWindow& editor = Open("Anas");
  Field(editor, "Color").setFocus();
  Field(editor, "Color").selectAll();
  Type("#123456");
  const std::vector<Point*> before = Row("Anas").range->points;
  Click(editor, "ok");
  EXPECT_EQ(Row("Anas").color, 0x123456);
  EXPECT_EQ(Row("Anas").range->points, before);
}

TEST_F(RangeEditorWindowTest, TheMessagesLeaveTheWindowOpen) {
  RangeEditorWindow& editor = Open("Anas");
  Field(editor, "Name").clear();
  QTest::keyClicks(&Field(editor, "Name"), QStringLiteral("x"));
  Key(Qt::Key_Backspace);
  Click(editor, "ok");
  Field(editor, "Name").setFocus();
  Type("Anas");
  Field(editor, "Color").setFocus();
  Type("ish");
  Click(editor, "ok");
  EXPECT_EQ(Texts(),
            (std::vector<std::string>{"You must supply a name", "Sorry, I don't know that color"}));
  EXPECT_TRUE(editor.isVisible());
}

TEST_F(RangeEditorWindowTest, TheCloseBoxAsksAfterAChangeOfTheTableOnly) {
  QPointer<RangeEditorWindow> editor = &Open("Anas");
  QTest::keyClicks(&Field(*editor, "Name"), QStringLiteral("x"));
  editor->close();
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  editor = &Open("Anas");
  editor->Cells().OpenCell(0, ColumnTimeFrom);
  Type("8:15");
  messages_.answers = {1};
  editor->close();
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  EXPECT_EQ(Row("Anas").range->keys.front().timeFrom, 8 * 60 + 15);
}

TEST_F(RangeEditorWindowTest, TheMenuSpeaksOfCriteria) {
  RangeEditorWindow& editor = Open("Anas");
  EXPECT_EQ(editor.Commands().ActionOf(CommandAdd).text(), QStringLiteral("Add Search Criterion"));
  EXPECT_EQ(editor.Commands().ActionOf(CommandDelete).text(),
            QStringLiteral("Delete Search Criterion"));
  EXPECT_FALSE(editor.Commands().ActionOf(CommandGraphicalInput).isEnabled());
  EXPECT_FALSE(editor.Commands().ActionOf(CommandOrientation).isEnabled());
  EXPECT_TRUE(editor.Commands().ActionOf(CommandOpenMap).isEnabled());
}

}  // namespace
}  // namespace orvane
