// The window of the trail editor, with keys, buttons and clicks on the map.

#include "shell/editors/trail_editor_window.h"

#include "panes/delete_rows.h"
#include "panes/pane_clicks.h"
#include "panes/trail_tree.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/trail_pane.h"
#include "shell/shell_case.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

namespace orvane {
namespace {

constexpr char TwoTrails[] =
    "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\nG\tB\tS20 0.1\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t9:00\tS20 0\tE47 0.3\n";

class TrailEditorWindowTest : public ShellCase {
 protected:
  TrailEditorWindowTest() : window_(OpenActive(folder_.Write("site.map", TwoTrails))) {}
  /// Closes without a question what a test has left open.
  ~TrailEditorWindowTest() override {
    if (shell_.Windows().All().empty()) return;
    for (TrailEditorWindow* editor : All()) Cancel(*editor);
  }

  PaneView& Pane() { return window_.Panes().Trails().Rows(); }
  Map& TheMap() { return window_.TheMap(); }
  Trail* Find(const char* name) {
    for (Trail& trail : TheMap().trails) {
      if (trail.name == name) return &trail;
    }
    return nullptr;
  }

  std::vector<TrailEditorWindow*> All() {
    std::vector<TrailEditorWindow*> editors;
    for (ProgramWindow* each : window_.Dependents()) {
      editors.push_back(static_cast<TrailEditorWindow*>(each));
    }
    return editors;
  }
  /// The only editor, when it has the keyboard.
  TrailEditorWindow& Editor() {
    const auto all = All();
    EXPECT_EQ(all.size(), 1U);
    EXPECT_TRUE(QTest::qWaitForWindowActive(all.at(0)));
    return *all.at(0);
  }
  TrailEditorWindow& OpenNewTrail() {
    Pane().setFocus();
    Press(window_, CommandAdd);
    return Editor();
  }
  TrailEditorWindow& OpenTrail(const char* name) {
    OpenTrailEditor(shell_, window_, *FindTrailRow(window_.View().Shown(), *Find(name)));
    return Editor();
  }

  static QLineEdit& Field(EditorWindow& editor, const char* name) {
    if (auto* box = editor.findChild<QComboBox*>(QLatin1String(name))) return *box->lineEdit();
    auto* field = editor.findChild<QLineEdit*>(QLatin1String(name));
    EXPECT_NE(field, nullptr) << name;
    return *field;
  }
  static QRadioButton& Mode(EditorWindow& editor, const char* name) {
    return *editor.findChild<QRadioButton*>(QLatin1String(name));
  }
  static void Ok(EditorWindow& editor) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
  }
  static void Cancel(EditorWindow& editor) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("cancel")), Qt::LeftButton);
  }
  static void Key(int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), keys);
  }
  static void Type(const char* text) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }
  /// The object names of what Tab reaches from the focus, until it comes round.
  static QString Round(EditorWindow& editor, int key) {
    QStringList names;
    QWidget* first = editor.focusWidget();
    do {
      Key(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
      const QWidget* now = editor.focusWidget();
      names << (now->objectName().isEmpty() || now->objectName().startsWith(QLatin1String("qt_"))
                    ? now->parentWidget()->objectName()
                    : now->objectName());
    } while (editor.focusWidget() != first && names.size() < 20);
    return names.join(QLatin1Char(' '));
  }

  MapWindowWidget& window_;
};

TEST_F(TrailEditorWindowTest, ANewTrailIsTypedWithTheKeyboardAlone) {
  OpenNewTrail();
  Type("Trail");
  Key(Qt::Key_Tab);  // Date
  Key(Qt::Key_Tab);  // Focal Animal
  Key(Qt::Key_Tab);  // Size
  Key(Qt::Key_Tab);
  Type("Ridge");
  Key(Qt::Key_F6);
  for (const char* text : {"R1", "A", "100", "90", "0"}) {
    Type(text);
    Key(Qt::Key_Tab);
  }
  Key(Qt::Key_Return);
  Type("R2");
  Key(Qt::Key_Tab);
  Type("R1");
  Key(Qt::Key_Return, Qt::ControlModifier);
  DeliverDeletes();
  EXPECT_TRUE(All().empty());
  const Trail* ridge = Find("Ridge");
  ASSERT_NE(ridge, nullptr);
  EXPECT_EQ(ridge->type, "Trail");
  ASSERT_EQ(ridge->points.size(), 2U);
  EXPECT_EQ(ridge->points[0]->measurements.front().distance, 100);
  EXPECT_NE(ridge->points[1]->flags & PointPlaced, 0U) << "the map was solved";
  EXPECT_NE(FindTrailRow(window_.View().Shown(), *ridge), nullptr);
  EXPECT_NE(TheMap().flags & MapDirty, 0U);
  EXPECT_EQ(*shell_.History().UndoName(TheMap()), "New Trail Ridge");
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(TrailEditorWindowTest, TheFirstTrailOfAMapIsPutInView) {
  MapWindowWidget& empty = OpenActive(folder_.Write("empty.map", ""));
  MapWindowWidget& second = shell_.Windows().Open(empty.TheMap());
  const auto type = [&](const char* name, const char* longitude) {
    empty.Panes().Trails().Rows().setFocus();
    Press(empty, CommandAdd);
    auto& editor = static_cast<TrailEditorWindow&>(*empty.Dependents().at(0));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    Field(editor, "TrailType").setText(QStringLiteral("Trail"));
    Field(editor, "Name").setText(QLatin1String(name));
    Mode(editor, "GPS").click();
    Key(Qt::Key_F6);
    for (const char* text : {name, "N1", longitude}) {
      Type(text);
      Key(Qt::Key_Tab);
    }
    Key(Qt::Key_Return, Qt::ControlModifier);
    DeliverDeletes();
  };
  type("R", "E10");
  MapWindow fitted = empty.Shown();
  FitToMap(fitted);
  for (MapWindowWidget* window : {&empty, &second}) {
    const LatLon middle =
        ScreenToMap(window->Shown(), {window->Shown().centerColumn, window->Shown().centerRow});
    EXPECT_NEAR(middle.lat, 1, 1e-3);
    EXPECT_NEAR(middle.lon, 10, 1e-3);
    EXPECT_EQ(window->Shown().scale, fitted.scale);
  }
  type("S", "E20");
  EXPECT_EQ(empty.Shown().scale, fitted.scale) << "a map that has places keeps its view";
  second.TryClose();
}

TEST_F(TrailEditorWindowTest, AFixShowsWholeInANewTrail) {
  TrailEditorWindow& editor = OpenNewTrail();
  for (const char* mode : {"GPS", "Mixture"}) {
    Mode(editor, mode).click();
    const int text =
        QFontMetrics(editor.Cells().font()).horizontalAdvance(QStringLiteral("E115\u00B0 36.900'"));
    EXPECT_GT(editor.Cells().columnWidth(2), text) << mode;
  }
}

TEST_F(TrailEditorWindowTest, ANewTrailStartsWithItsTypeOnly) {
  TrailEditorWindow& editor = OpenNewTrail();
  EXPECT_EQ(editor.windowTitle(), QStringLiteral("New Trail"));
  EXPECT_EQ(QApplication::focusWidget(), editor.findChild<QComboBox*>());
  EXPECT_FALSE(Field(editor, "Name").isEnabled());
  EXPECT_FALSE(Field(editor, "Date").isEnabled());
  EXPECT_EQ(Field(editor, "Size").text(), QStringLiteral("1"));
  QStringList types;
  const auto* box = editor.findChild<QComboBox*>();
  for (int i = 0; i < box->count(); ++i) types << box->itemText(i);
  EXPECT_EQ(types, (QStringList{"Papio", "Trail"}));
  Type("P");
  EXPECT_EQ(Field(editor, "TrailType").text(), QStringLiteral("P")) << "nothing is added";
  EXPECT_TRUE(Field(editor, "Name").isEnabled());
  Field(editor, "Name").setFocus();
  Type("x");
  EXPECT_FALSE(Field(editor, "Date").isEnabled());
  EXPECT_FALSE(Field(editor, "Size").isEnabled());
  Key(Qt::Key_Backspace);
  EXPECT_TRUE(Field(editor, "Date").isEnabled());
  Field(editor, "Size").setFocus();
  Field(editor, "Size").selectAll();
  Type("7");
  Field(editor, "FocalAnimal").setFocus();
  Type("Ana");
  EXPECT_EQ(Field(editor, "Size").text(), QStringLiteral("1"));
  EXPECT_FALSE(Field(editor, "Size").isEnabled());
}

TEST_F(TrailEditorWindowTest, TabGoesRoundTheForm) {
  TrailEditorWindow& editor = OpenNewTrail();
  Type("Trail");
  EXPECT_EQ(Round(editor, Qt::Key_Tab),
            "Date FocalAnimal Size Name Relative GPS Mixture Color Width TrailType");
  EXPECT_EQ(Round(editor, Qt::Key_Return),
            "Date FocalAnimal Size Name Relative GPS Mixture Color Width TrailType");
  EXPECT_EQ(Field(editor, "TrailType").selectedText(), QStringLiteral("Trail"));
  Key(Qt::Key_Tab);
  Type("2020-3-3");
  EXPECT_EQ(Round(editor, Qt::Key_Backtab),
            "TrailType Width Color Mixture GPS Relative Size FocalAnimal Date");
}

TEST_F(TrailEditorWindowTest, AnExistingTrailShowsItsIdentityGray) {
  TrailEditorWindow& editor = OpenTrail("Path");
  EXPECT_EQ(editor.windowTitle(), QStringLiteral("Trail: Path"));
  for (const char* name : {"TrailType", "Date", "FocalAnimal", "Name"}) {
    EXPECT_FALSE(Field(editor, name).isEnabled()) << name;
  }
  EXPECT_EQ(Field(editor, "TrailType").text(), QStringLiteral("Trail"));
  EXPECT_EQ(Field(editor, "Name").text(), QStringLiteral("Path"));
  EXPECT_TRUE(Mode(editor, "GPS").isChecked());
  EXPECT_FALSE(Mode(editor, "Relative").isEnabled());
  EXPECT_TRUE(Mode(editor, "Mixture").isEnabled());
  EXPECT_EQ(editor.Cells().model()->rowCount(), 3);
  const auto labels = editor.findChildren<QLabel*>();
  for (const QLabel* label : labels) {
    if (label->buddy() == nullptr) continue;
    EXPECT_EQ(label->isEnabled(), label->buddy()->isEnabled());
  }
}

TEST_F(TrailEditorWindowTest, ALongNameShowsItsStart) {
  Trail& path = *Find("Path");
  path.type = "The long way round the lake";
  TrailEditorWindow& editor = OpenTrail("Path");
  EXPECT_EQ(Field(editor, "TrailType").text(), QStringLiteral("The long way round the lake"));
  EXPECT_EQ(Field(editor, "TrailType").cursorPosition(), 0);
}

TEST_F(TrailEditorWindowTest, OkWithoutAChangeClosesAndDirtiesNothing) {
  const QPointer<TrailEditorWindow> editor = &OpenTrail("Path");
  Ok(*editor);
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  EXPECT_EQ(TheMap().flags & MapDirty, 0U);
  EXPECT_EQ(shell_.History().Steps(), 0U);
}

TEST_F(TrailEditorWindowTest, ADoubleClickOpensTheRowClickedAndRaisesAnOpenEditor) {
  const QModelIndex row = Pane().model()->match(Pane().model()->index(0, 0), Qt::DisplayRole,
                                                QStringLiteral("Path"), 1, Qt::MatchRecursive)[0];
  Pane().selectAll();
  for (TrailPanelRow* each : TrailRowsInOrder(window_.View().Shown().trailViews)) {
    each->selected = !each->fixed;
    each->open = true;
  }
  Pane().ShowRows();
  const QPoint at(60, Pane().visualRect(row).center().y());
  QTest::mouseDClick(Pane().viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(Editor().Editor().Edited(), Find("Path"));
  QTest::mouseDClick(Pane().viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(All().size(), 1U);
  // Also from another window on the map.
  MapWindowWidget& other = shell_.Windows().Open(TheMap());
  OpenTrailEditor(shell_, other, *FindTrailRow(other.View().Shown(), *Find("Path")));
  EXPECT_EQ(All().size(), 1U);
  EXPECT_TRUE(other.Dependents().empty());
}

TEST_F(TrailEditorWindowTest, ReturnOnNewAndOnAGroup) {
  Pane().setFocus();
  Key(Qt::Key_End);
  Key(Qt::Key_Return);
  EXPECT_EQ(Editor().windowTitle(), QStringLiteral("New Trail"));
  Cancel(Editor());
  DeliverDeletes();
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  Pane().setFocus();
  Key(Qt::Key_Home);
  Key(Qt::Key_Return);
  EXPECT_TRUE(All().empty()) << "a group of two trails";
  EXPECT_EQ(Texts(),
            std::vector<std::string>{"Please open this set of trails before double clicking"});
}

TEST_F(TrailEditorWindowTest, TheColumnsFollowTheMode) {
  TrailEditorWindow& editor = OpenNewTrail();
  EXPECT_TRUE(Mode(editor, "Relative").isChecked());
  EXPECT_EQ(editor.Cells().model()->columnCount(), 9);
  EXPECT_FALSE(editor.Commands().ActionOf(CommandGraphicalInput).isEnabled());
  editor.Cells().Enter();
  Type("dropped");
  QTest::mouseClick(&Mode(editor, "Mixture"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  EXPECT_EQ(editor.Cells().model()->columnCount(), 11);
  EXPECT_EQ(editor.Cells().Table().State(), CellTableState::Idle);
  EXPECT_EQ(editor.Editor().RowCount(), 0U);
  EXPECT_TRUE(editor.Commands().ActionOf(CommandGraphicalInput).isEnabled());
  // A latitude greys "Relative", a base point greys "GPS".
  editor.Cells().OpenCell(0, ColumnLat);
  Type("N1");
  Key(Qt::Key_Tab);
  EXPECT_FALSE(Mode(editor, "Relative").isEnabled());
  EXPECT_TRUE(Mode(editor, "GPS").isEnabled());
  editor.Cells().OpenCell(1, ColumnPoint);
  Type("A");
  Key(Qt::Key_Tab);
  EXPECT_FALSE(Mode(editor, "GPS").isEnabled());
  EXPECT_TRUE(Mode(editor, "Mixture").isEnabled());
}

TEST_F(TrailEditorWindowTest, AUtmTextTypedAmongLatitudesShowsInBothColumns) {
  TrailEditorWindow& editor = OpenNewTrail();
  QTest::mouseClick(&Mode(editor, "GPS"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  editor.Cells().OpenCell(0, ColumnLat);
  Type("36M 500000 9889469.8");
  Key(Qt::Key_Return);
  const auto shown = [&](int column) {
    const QAbstractItemModel& model = *editor.Cells().model();
    return model.data(model.index(0, column)).toString();
  };
  EXPECT_EQ(shown(1), QStringLiteral("S1\u00B0 0.000'"));
  EXPECT_EQ(shown(2), QStringLiteral("E33\u00B0 0.000'"));
  EXPECT_TRUE(Texts().empty());
}

TEST_F(TrailEditorWindowTest, TheMenuFollowsTheTable) {
  TrailEditorWindow& editor = OpenTrail("Path");
  const auto enabled = [&](CommandId id) { return editor.Commands().ActionOf(id).isEnabled(); };
  const std::vector<CommandId> clipboard = {CommandCut, CommandCopy, CommandPaste};
  const std::vector<CommandId> rows = {CommandAdd, CommandDelete};
  EXPECT_EQ(editor.Commands().ActionOf(CommandAdd).text(), QStringLiteral("Add Measurement"));
  EXPECT_EQ(editor.Commands().ActionOf(CommandDelete).text(), QStringLiteral("Delete Measurement"));
  for (const CommandId id : clipboard) EXPECT_FALSE(enabled(id));
  for (const CommandId id : rows) EXPECT_FALSE(enabled(id));
  editor.Cells().Enter();
  for (const CommandId id : clipboard) EXPECT_TRUE(enabled(id));
  for (const CommandId id : rows) EXPECT_FALSE(enabled(id));
  Key(Qt::Key_Escape);
  Key(Qt::Key_Down);
  EXPECT_FALSE(enabled(CommandPaste));
  EXPECT_TRUE(enabled(CommandCopy)) << "a row can be copied";
  for (const CommandId id : rows) EXPECT_TRUE(enabled(id));
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(editor.Editor().RowCount(), 3U);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(editor.Editor().RowCount(), 2U);
  Key(Qt::Key_Down);
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(beeps_, 1) << "only before the first row";
}

TEST_F(TrailEditorWindowTest, ARefusedCellStopsOk) {
  TrailEditorWindow& editor = OpenTrail("Path");
  editor.Cells().OpenCell(0, ColumnLat);
  Type("north");
  Ok(editor);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Bad Latitude"});
  EXPECT_EQ(All().size(), 1U);
  EXPECT_EQ(editor.Cells().EditField().text(), QStringLiteral("north"));
  EXPECT_EQ(TheMap().flags & MapDirty, 0U);
}

TEST_F(TrailEditorWindowTest, OkCommitsTheOpenCell) {
  TrailEditorWindow& editor = OpenTrail("Path");
  editor.Cells().OpenCell(1, ColumnLat);
  Type("S20 0.4");
  Ok(editor);
  DeliverDeletes();
  EXPECT_TRUE(All().empty());
  EXPECT_NEAR(Find("Path")->points[1]->geo.lat, -20 - 0.4 / 60, 1e-9);
  // The row in the pane and the undo follow.
  EXPECT_EQ(*shell_.History().UndoName(TheMap()), "Edit of Trail Path");
}

TEST_F(TrailEditorWindowTest, TheCloseBoxAsksWhereSomethingWasTyped) {
  QPointer<TrailEditorWindow> editor = &OpenTrail("Path");
  editor->Cells().OpenCell(0, ColumnLat);
  Type("S20 0.5");
  messages_.answers = {3};
  editor->close();
  ASSERT_FALSE(editor.isNull());
  EXPECT_TRUE(editor->isVisible());
  EXPECT_EQ(editor->Cells().EditField().text(), QStringLiteral("S20 0.5"));
  messages_.answers = {1};
  editor->close();
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  EXPECT_NEAR(Find("Path")->points[0]->geo.lat, -20 - 0.5 / 60, 1e-9);
  editor = &OpenTrail("Path");
  editor->Cells().OpenCell(0, ColumnLat);
  Type("S21");
  messages_.answers = {2};
  QTest::keyClick(&Field(*editor, "Width"), Qt::Key_Escape);
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  EXPECT_NEAR(Find("Path")->points[0]->geo.lat, -20 - 0.5 / 60, 1e-9);
}

TEST_F(TrailEditorWindowTest, CancelDoesNotAsk) {
  const QPointer<TrailEditorWindow> editor = &OpenTrail("Path");
  editor->Cells().OpenCell(0, ColumnLat);
  Type("S21");
  Cancel(*editor);
  DeliverDeletes();
  EXPECT_TRUE(editor.isNull());
  EXPECT_TRUE(messages_.Entries().empty());
  EXPECT_EQ(TheMap().flags & MapDirty, 0U);
}

TEST_F(TrailEditorWindowTest, AMapWindowClosesOnlyIfItsEditorsMay) {
  TrailEditorWindow& editor = OpenTrail("Path");
  editor.Cells().OpenCell(0, ColumnLat);
  Type("S21");
  messages_.answers = {3};
  EXPECT_FALSE(window_.TryClose());
  EXPECT_EQ(All().size(), 1U);
  messages_.answers = {2};
  EXPECT_TRUE(window_.TryClose());
}

TEST_F(TrailEditorWindowTest, ClicksOnTheMapBecomeRows) {
  TrailEditorWindow& editor = OpenNewTrail();
  QTest::mouseClick(&Mode(editor, "GPS"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  Press(editor, CommandGraphicalInput);
  MapView& map = window_.View();
  EXPECT_EQ(map.Shown().inputTarget, &editor);
  EXPECT_EQ(map.cursor().shape(), Qt::CrossCursor);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  QTest::mouseClick(&map, Qt::LeftButton, Qt::NoModifier, QPoint(200, 150));
  QTest::mouseClick(&map, Qt::LeftButton, Qt::NoModifier, QPoint(240, 170));
  ASSERT_EQ(editor.Editor().RowCount(), 2U);
  EXPECT_EQ(editor.Cells().model()->rowCount(), 3);
  EXPECT_FALSE(Mode(editor, "Relative").isEnabled());
  const LatLon place = ScreenToMap(map.Shown(), {240, 170});
  EXPECT_EQ(editor.Editor().Rows()[1].gps.lat, place.lat);
  EXPECT_EQ(editor.Editor().Rows()[1].altitude, NoRowAltitude);
  // Escape ends it and goes back to the editor.
  QTest::keyClick(&map, Qt::Key_Escape);
  EXPECT_EQ(map.Shown().inputTarget, nullptr);
  EXPECT_EQ(map.cursor().shape(), Qt::ArrowCursor);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
}

TEST_F(TrailEditorWindowTest, AnOpenCellAnotherModeAndClosingEndTheClicks) {
  TrailEditorWindow& editor = OpenNewTrail();
  InputTarget*& target = window_.View().Shown().inputTarget;
  QTest::mouseClick(&Mode(editor, "Mixture"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  editor.Answer(CommandGraphicalInput);
  EXPECT_EQ(target, &editor);
  editor.Cells().Enter();
  EXPECT_EQ(target, nullptr);
  editor.Answer(CommandGraphicalInput);
  EXPECT_EQ(editor.Cells().Table().State(), CellTableState::Idle);
  QTest::mouseClick(&Mode(editor, "Relative"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  EXPECT_EQ(target, nullptr);
  editor.Answer(CommandGraphicalInput);
  EXPECT_EQ(target, nullptr);
  EXPECT_EQ(beeps_, 1);
  QTest::mouseClick(&Mode(editor, "GPS"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
  editor.Answer(CommandGraphicalInput);
  EXPECT_EQ(target, &editor);
  Cancel(editor);
  EXPECT_EQ(target, nullptr);
}

TEST_F(TrailEditorWindowTest, WidthsOfColumnsLiveOn) {
  TrailEditorWindow& editor = OpenTrail("Path");
  editor.Cells().horizontalHeader()->resizeSection(1, 111);
  Cancel(editor);
  DeliverDeletes();
  EXPECT_EQ(OpenTrail("Path").Cells().columnWidth(1), 111);
}

constexpr char HillText[] =
    "Z\t\t1,10\nT\tA\tHuman\nG\tA\tS20 0\tE47 0\t100\nG\tB\tS20 0.5\tE47 0\t150\n"
    "G\tC\tS20 0\tE47 0.5\t130\n";

TEST_F(TrailEditorWindowTest, AContourShowsItsPlacesAndTakesOnlyLooks) {
  MapWindowWidget& hill = OpenActive(folder_.Write("hill.map", HillText));
  MapWindow& view = hill.View().Shown();
  TrailPanelRow& group = RowForText(view.trailViews, nullptr, "Contours", nullptr);
  ASSERT_TRUE(ShowContours(view, group));
  TrailPanelRow& row = group.children.front().children.front();
  const size_t points = row.trail->points.size();
  OpenTrailEditor(shell_, hill, row);
  ASSERT_EQ(hill.Dependents().size(), 1U);
  auto& editor = static_cast<TrailEditorWindow&>(**hill.Dependents().begin());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
  EXPECT_EQ(editor.windowTitle(), QStringLiteral("Trail: Contour  110 #1").left(27));
  EXPECT_TRUE(Mode(editor, "GPS").isChecked());
  EXPECT_FALSE(Mode(editor, "Relative").isEnabled());
  CellTableView& cells = editor.Cells();
  EXPECT_EQ(cells.Table().Model().RowCount(), points);
  EXPECT_FALSE(cells.Table().Model().GetCell(0, ColumnLat).empty());
  QTest::mouseClick(cells.viewport(), Qt::LeftButton, Qt::NoModifier,
                    cells.visualRect(cells.model()->index(0, 1)).center());
  EXPECT_FALSE(cells.EditField().isVisible());
  editor.Answer(CommandGraphicalInput);
  EXPECT_EQ(view.inputTarget, nullptr);
  EXPECT_EQ(beeps_, 1);
  Field(editor, "Color").setText(QStringLiteral("red"));
  const Trail& contour = *row.trail;
  Ok(editor);
  DeliverDeletes();
  EXPECT_EQ(contour.color, 0xFF0000);
  EXPECT_EQ(contour.points.size(), points);
  EXPECT_EQ(row.color, 0xFF0000);
  EXPECT_TRUE(messages_.Entries().empty());
}

TEST_F(TrailEditorWindowTest, ATrailThatWasDeletedIsMadeAgain) {
  TrailEditorWindow& editor = OpenTrail("Path");
  editor.Cells().OpenCell(0, ColumnLat);
  Type("S20 0.4");
  for (TrailPanelRow* row : TrailRowsInOrder(window_.View().Shown().trailViews)) {
    row->selected = row->trail != nullptr && row->trail->name == "Path";
  }
  DeleteSelectedTrails(window_.View().Shown(), shell_.History());
  EXPECT_EQ(Find("Path"), nullptr);
  messages_.answers = {1};
  Ok(editor);
  DeliverDeletes();
  ASSERT_NE(Find("Path"), nullptr);
  EXPECT_NEAR(Find("Path")->points[0]->geo.lat, -20 - 0.4 / 60, 1e-9);
}

}  // namespace
}  // namespace orvane
