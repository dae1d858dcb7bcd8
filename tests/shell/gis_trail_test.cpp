// Import GIS and its window.

#include "panes/trail_tree.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/shell_case.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace orvane {
namespace {

constexpr auto Tracks =
    "name,time,x,y,lat,lon,alt\n"
    "May1,2003-05-01 06:00,,,1.000,10.000,100\n"
    "May1,2003-05-01 06:05,,,1.001,10.000,110\n"
    "May2,2003-05-02 06:00,,,1.002,10.000,120\n"
    "May2,2003-05-02 06:05,,,1.003,10.001,130\n"
    "May3,2003-05-03 06:00,,,1.004,10.000,140\n"
    "May3,2003-05-03 06:05,,,1.005,10.001,150\n";

class GisTrailTest : public ShellCase {
 protected:
  GisTrailTest() : window_(OpenActive(WriteMap("site.map"))) {}

  /// Imports the text of a file. \return the window that came up, or null
  GisTrailWindow* Import(const char* text) {
    dialogs_->paths = {folder_.Write("gps.txt", text)};
    ActionOf(window_, CommandImportGis).trigger();
    return window_.findChild<GisTrailWindow*>();
  }

  /// Presses a key. The window is active: otherwise the key would reach the map.
  static void PressIn(QWidget& window, Qt::Key key,
                      Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
    QTest::keyClick(&window, key, modifiers);
  }

  static QLineEdit& Field(GisTrailWindow& window, const char* name) {
    auto* field = window.findChild<QLineEdit*>(QLatin1String(name));
    EXPECT_NE(field, nullptr) << name;
    return *field;
  }

  static QPushButton& Button(GisTrailWindow& window, const QString& text) {
    const auto buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
      if (button->accessibleName() == text) return *button;
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    return *buttons.front();
  }

  std::vector<std::string> NamesOfTrails() const {
    std::vector<std::string> names;
    for (const Trail& trail : window_.TheMap().trails) names.push_back(trail.name.value_or(""));
    return names;
  }

  MapWindowWidget& window_;
};

TEST_F(GisTrailTest, ShowsTheFirstTrackWithItsFields) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(dialogs_->questions[0].title, "Import GIS data...");
  EXPECT_EQ(dialogs_->questions[0].file.type, "txt");
  EXPECT_EQ(window->windowTitle(), QStringLiteral("GIS Trail"));
  EXPECT_FALSE(window->isModal());
  EXPECT_EQ(Field(*window, "TrailType").text(), QStringLiteral("Trail"));
  EXPECT_EQ(Field(*window, "Name").text(), QStringLiteral("May1"));
  EXPECT_EQ(Field(*window, "Date").text(), QStringLiteral("2003-05-01"));
  EXPECT_EQ(Field(*window, "Color").text(), QStringLiteral("black"));
  QStringList labels;
  const auto all = window->findChildren<QLabel*>();
  for (const QLabel* label : all) {
    if (label->buddy() != nullptr) labels.append(label->text());
  }
  EXPECT_EQ(labels.join(QLatin1Char('|')).remove(QLatin1Char('&')).toStdString(),
            "Trail Type:|Date:|Focal Animal:|Size:|Width:|Name:|Color:|SubSample by:|"
            "Minimum Distance:");
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

TEST_F(GisTrailTest, ANoteSaysAtTheEndWhatWasDone) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  Button(*window, QStringLiteral("OK")).click();
  EXPECT_EQ(Texts().size(), 0U);
  Button(*window, QStringLiteral("No")).click();
  Button(*window, QStringLiteral("Dismiss")).click();
  EXPECT_EQ(Texts(), std::vector<std::string>{"Imported 1 track with 2 points from " +
                                              folder_.Path("gps.txt") + "; 2 tracks are skipped"});
}

TEST_F(GisTrailTest, ImportingIntoAnEmptyMapPutsItInView) {
  MapWindowWidget& empty = OpenActive(folder_.Write("empty.map", ""));
  dialogs_->paths = {folder_.Write("gps.txt", Tracks)};
  ActionOf(empty, CommandImportGis).trigger();
  auto* window = empty.findChild<GisTrailWindow*>();
  ASSERT_NE(window, nullptr);
  Button(*window, QStringLiteral("OK to All")).click();
  MapWindow fitted = empty.Shown();
  FitToMap(fitted);
  EXPECT_EQ(empty.Shown().scale, fitted.scale);
  const auto middleOf = [](const MapWindow& view) {
    return ScreenToMap(view, {view.centerColumn, view.centerRow});
  };
  EXPECT_EQ(middleOf(empty.Shown()).lat, middleOf(fitted).lat);
  EXPECT_NEAR(middleOf(fitted).lat, 1.0025, 1e-4);
  // A map that has places keeps its view.
  const float scale = window_.Shown().scale;
  Button(*Import(Tracks), QStringLiteral("OK to All")).click();
  EXPECT_EQ(window_.Shown().scale, scale);
}

TEST_F(GisTrailTest, TheKeysOfCloseAndExitWorkInIt) {
  QPointer<GisTrailWindow> window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  PressIn(*window, Qt::Key_W);
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  window = Import(Tracks);
  PressIn(*window, Qt::Key_Q);
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
  EXPECT_TRUE(shell_.Windows().All().empty());
}

TEST_F(GisTrailTest, OkTakesATrackAndNoSkipsOne) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  const QPointer<GisTrailWindow> watched = window;
  Button(*window, QStringLiteral("Cancel"));
  Button(*window, QStringLiteral("OK")).click();
  EXPECT_EQ(NamesOfTrails(), (std::vector<std::string>{"May1", "Ridge"}));
  EXPECT_NE(window_.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(IsEnabled(window_, CommandSave));
  EXPECT_NE(FindTrailRow(window_.Shown(), window_.TheMap().trails.front()), nullptr);
  EXPECT_EQ(Field(*window, "Name").text(), QStringLiteral("May2"));
  Button(*window, QStringLiteral("Dismiss"));
  Button(*window, QStringLiteral("No")).click();
  EXPECT_EQ(Field(*window, "Name").text(), QStringLiteral("May3"));
  Button(*window, QStringLiteral("OK")).click();
  DeliverDeletes();
  EXPECT_TRUE(watched.isNull());  // that was the last one
  EXPECT_EQ(NamesOfTrails(), (std::vector<std::string>{"May3", "May1", "Ridge"}));
}

TEST_F(GisTrailTest, OkToAllTakesWhatRemainsWithTheSameSettings) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  Button(*window, QStringLiteral("No")).click();
  Field(*window, "TrailType").setText(QStringLiteral("Follow"));
  Button(*window, QStringLiteral("OK to All")).click();
  EXPECT_EQ(NamesOfTrails(), (std::vector<std::string>{"May3", "May2", "Ridge"}));
  for (const Trail& trail : window_.TheMap().trails) {
    EXPECT_EQ(trail.type, trail.name == "Ridge" ? "Trail" : "Follow");
  }
}

TEST_F(GisTrailTest, ReturnTakesAndEscapeCloses) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  const QPointer<GisTrailWindow> watched = window;
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  QTest::keyClick(&Field(*window, "Name"), Qt::Key_Return);
  EXPECT_EQ(NamesOfTrails(), (std::vector<std::string>{"May1", "Ridge"}));
  QTest::keyClick(&Field(*window, "Name"), Qt::Key_Escape);
  DeliverDeletes();
  EXPECT_TRUE(watched.isNull());
  EXPECT_EQ(NamesOfTrails().size(), 2U);
}

TEST_F(GisTrailTest, AltAndALetterWorkEveryControl) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  constexpr std::pair<Qt::Key, const char*> Fields[] = {
      {Qt::Key_E, "Date"},  {Qt::Key_Y, "TrailType"},   {Qt::Key_F, "FocalAnimal"},
      {Qt::Key_Z, "Size"},  {Qt::Key_W, "Width"},       {Qt::Key_A, "Name"},
      {Qt::Key_R, "Color"}, {Qt::Key_S, "SubSampleby"}, {Qt::Key_M, "MinimumDistance"}};
  for (const auto& [key, name] : Fields) {
    PressIn(*window, key, Qt::AltModifier);
    EXPECT_EQ(window->focusWidget(), &Field(*window, name)) << name;
  }
  constexpr std::pair<Qt::Key, const char*> Boxes[] = {
      {Qt::Key_V, "Average"}, {Qt::Key_L, "KeepAltitude"}, {Qt::Key_T, "Times"}};
  for (const auto& [key, name] : Boxes) {
    PressIn(*window, key, Qt::AltModifier);
    const auto* box = window->findChild<QCheckBox*>(QLatin1String(name));
    EXPECT_TRUE(QTest::qWaitFor([box] { return box->isChecked(); })) << name;
  }
  PressIn(*window, Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return NamesOfTrails().size() == 2; }));
  PressIn(*window, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor(
      [window] { return Field(*window, "Name").text() == QStringLiteral("May3"); }));
  const QPointer<GisTrailWindow> watched = window;
  PressIn(*window, Qt::Key_D, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&watched] { return watched.isNull(); }));
}

TEST_F(GisTrailTest, ABadFieldIsRefusedWithABeepAndTheFocus) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  for (const char* name : {"Date", "Size", "Width", "SubSampleby", "MinimumDistance"}) {
    QLineEdit& field = Field(*window, name);
    const QString before = field.text();
    field.setText(QStringLiteral("x"));
    Field(*window, "Name").setFocus();
    beeps_ = 0;
    Button(*window, QStringLiteral("OK")).click();
    EXPECT_EQ(beeps_, 1) << name;
    EXPECT_EQ(window->focusWidget(), &field) << name;
    field.setText(before);
  }
  EXPECT_EQ(NamesOfTrails(), (std::vector<std::string>{"Ridge"}));
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

TEST_F(GisTrailTest, TheBoxesAreKeptFromImportToImport) {
  GisTrailWindow* window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  for (const char* name : {"Average", "KeepAltitude", "Times"}) {
    auto* box = window->findChild<QCheckBox*>(QLatin1String(name));
    ASSERT_NE(box, nullptr) << name;
    EXPECT_FALSE(box->isChecked());
    box->setChecked(true);
  }
  window->close();
  DeliverDeletes();
  window = Import(Tracks);
  ASSERT_NE(window, nullptr);
  for (const char* name : {"Average", "KeepAltitude", "Times"}) {
    EXPECT_TRUE(window->findChild<QCheckBox*>(QLatin1String(name))->isChecked()) << name;
  }
  Button(*window, QStringLiteral("OK")).click();
  EXPECT_EQ(window_.TheMap().trails.front().points.front()->geo.altitude, 100);
}

TEST_F(GisTrailTest, WaypointsComeAtOnceAndWithoutAWindow) {
  EXPECT_EQ(Import("name,time,x,y,lat,lon,alt\nTree,2003-05-01,,,1.0,10.0,5\n"
                   "Nest,2003-05-01,,,1.1,10.1,6\n"),
            nullptr);
  EXPECT_NE(window_.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(IsEnabled(window_, CommandSave));
}

TEST_F(GisTrailTest, AnEmptyFileIsReportedAndChangesNothing) {
  EXPECT_EQ(Import(""), nullptr);
  EXPECT_EQ(Texts().size(), 1U);
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

}  // namespace
}  // namespace orvane
