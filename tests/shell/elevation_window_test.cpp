// The window with a profile, with keys, mouse and menu commands, and what changes its map below it.

#include "shell/reports/elevation_window.h"

#include "editing/delete_records.h"
#include "pages/report_pages.h"
#include "panes/trail_tree.h"
#include "reports/profile_view.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/trail_pane.h"
#include "shell/reload_commands.h"
#include "shell/reports/elevation_plot.h"
#include "shell/shell_case.h"
#include "view/view_transform.h"

#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPointer>
#include <QPrinter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <fstream>
#include <sstream>

namespace orvane {
namespace {

/// A line along the equator with a point each 1111.2 m, one of them hidden, and another trail.
constexpr char Ground[] =
    "T\tRidge\tTrail\nL\tA\t0\t0\t100\nL\tBee\t0\t0.01\t150\nL\t_Cee\t0\t0.02\t200\n"
    "L\tDee\t0\t0.03\t120\nT\tShort\tTrail\nL\tAlone\t0.01\t0\t130\n";

class ElevationWindowTest : public ShellCase {
 protected:
  ElevationWindowTest() : window_(OpenActive(folder_.Write("site.map", Ground))) {}

  PaneView& Pane() { return window_.Panes().Trails().Rows(); }
  Map& TheMap() { return window_.TheMap(); }
  Trail& Find(const char* name) {
    for (Trail& trail : TheMap().trails) {
      if (trail.name == name) return trail;
    }
    ADD_FAILURE() << name;
    return TheMap().trails.front();
  }
  void SelectOnly(const char* name) {
    for (TrailPanelRow* row : TrailRowsInOrder(window_.Shown().trailViews)) {
      row->selected = row->trail != nullptr && row->trail->name == name;
    }
    window_.ShowRows();
  }

  std::vector<ElevationWindow*> All(MapWindowWidget& of) {
    std::vector<ElevationWindow*> windows;
    for (ProgramWindow* each : of.Dependents()) {
      if (auto* window = dynamic_cast<ElevationWindow*>(each)) windows.push_back(window);
    }
    return windows;
  }
  std::vector<ElevationWindow*> All() { return All(window_); }
  static ElevationWindow& Shown(ElevationWindow& window) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.Plot().IsFilled(); }));
    return window;
  }
  ElevationWindow& OpenTrail(const char* name = "Ridge") {
    SelectOnly(name);
    Pane().setFocus();
    Press(window_, CommandElevation);
    EXPECT_FALSE(All().empty());
    return Shown(*All().back());
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    MapView& view = window_.View();
    QTest::mousePress(&view, Qt::LeftButton, keys, from);
    QTest::mouseMove(&view, to);
    QTest::mouseRelease(&view, Qt::LeftButton, keys, to);
  }
  ElevationWindow& OpenTransect() {
    Drag({100, 200}, {300, 200}, Qt::ControlModifier);
    EXPECT_FALSE(All().empty());
    return Shown(*All().back());
  }

  static const ElevationView& View(ElevationWindow& window) { return window.Plot().View(); }
  static double Span(ElevationWindow& window) {
    return View(window).viewEnd - View(window).viewStart;
  }
  static void Key(ElevationWindow& window, int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::keyClick(&window.Plot(), static_cast<Qt::Key>(key), keys);
  }
  static void DoubleClick(ElevationWindow& window, Qt::MouseButton button, QPoint place) {
    QTest::mouseDClick(&window.Plot(), button, Qt::NoModifier, place);
    QTest::mouseRelease(&window.Plot(), button, Qt::NoModifier, place);
  }
  static void MoveTo(ElevationWindow& window, QPoint place, Qt::MouseButton held = Qt::NoButton) {
    QMouseEvent move(QEvent::MouseMove, place, window.Plot().mapToGlobal(place), Qt::NoButton, held,
                     Qt::NoModifier);
    QApplication::sendEvent(&window.Plot(), &move);
  }
  static QPoint At(ElevationWindow& window, double share) {
    const ElevationView& view = View(window);
    const double ratio = window.devicePixelRatioF();
    return {static_cast<int>((view.leftMargin + share * (view.plotWidth - 1)) / ratio), 50};
  }
  static std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  MapWindowWidget& window_;
};

// --- Opening ------------------------------------------------------------------------------------

TEST_F(ElevationWindowTest, TheSelectedTrailIsShownWhole) {
  ElevationWindow& window = OpenTrail();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Elevation of Ridge Trail"));
  EXPECT_EQ(View(window).trail, &Find("Ridge"));
  EXPECT_EQ(View(window).viewStart, 0);
  EXPECT_EQ(View(window).viewEnd, View(window).lineLength);
  EXPECT_EQ(View(window).plotWidth + View(window).leftMargin, window.Plot().DeviceSize().width());
  EXPECT_TRUE(window.Plot().hasFocus());
  EXPECT_EQ(Texts(), std::vector<std::string>{});
}

TEST_F(ElevationWindowTest, ATrailOfOnePointIsRefused) {
  SelectOnly("Short");
  Pane().setFocus();
  Press(window_, CommandElevation);
  EXPECT_TRUE(All().empty());
  EXPECT_EQ(Texts(),
            std::vector<std::string>{"The trail to be displayed must have at least two points"});
}

TEST_F(ElevationWindowTest, WithoutASelectionTheUserIsAskedForOne) {
  SelectOnly("");
  Pane().setFocus();
  Press(window_, CommandElevation);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Please specify a trail or transect first"});
}

TEST_F(ElevationWindowTest, InTheMapTheUserIsAskedToDragATransect) {
  window_.View().setFocus();
  Press(window_, CommandElevation);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Please drag out a transect"});
  EXPECT_TRUE(window_.Shown().transectMode);
  EXPECT_TRUE(All().empty());
  const float scale = window_.Shown().scale;
  Drag({100, 200}, {300, 150});
  ASSERT_EQ(All().size(), 1U);
  EXPECT_FALSE(window_.Shown().transectMode);
  EXPECT_EQ(window_.View().cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(window_.Shown().scale, scale) << "the drag did not zoom";
  const ElevationView& view = View(Shown(*All().front()));
  EXPECT_EQ(view.points.front()->geo.lat, window_.Shown().selection[0].lat);
  EXPECT_EQ(view.points.back()->geo.lon, window_.Shown().selection[1].lon);
}

TEST_F(ElevationWindowTest, ADragWithControlIsATransectAndTheNextOneIsNot) {
  ElevationWindow& window = OpenTransect();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Elevation"));
  EXPECT_EQ(View(window).trail, nullptr);
  EXPECT_FALSE(window_.Shown().transectMode);
  const float scale = window_.Shown().scale;
  Drag({100, 200}, {200, 300});
  EXPECT_GT(window_.Shown().scale, scale) << "an ordinary drag zooms";
  EXPECT_EQ(All().size(), 1U);
}

TEST_F(ElevationWindowTest, ATransectWithoutAltitudesIsRefusedAndTheModeEnds) {
  MapWindowWidget& blank =
      OpenActive(folder_.Write("blank.map", "T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\n"));
  QTest::mousePress(&blank.View(), Qt::LeftButton, Qt::ControlModifier, {100, 200});
  QTest::mouseMove(&blank.View(), {300, 200});
  QTest::mouseRelease(&blank.View(), Qt::LeftButton, Qt::ControlModifier, {300, 200});
  EXPECT_TRUE(All(blank).empty());
  EXPECT_EQ(Texts(), std::vector<std::string>{"Sorry, no altitude information available"});
  EXPECT_FALSE(blank.Shown().transectMode);
}

TEST_F(ElevationWindowTest, ABlankProfileOpensForATrailAndSaysWhy) {
  MapWindowWidget& blank =
      OpenActive(folder_.Write("blank.map", "T\tLine\nL\tA\t0\t0\nL\tB\t0\t1\n"));
  for (TrailPanelRow* row : TrailRowsInOrder(blank.Shown().trailViews)) {
    row->selected = row->trail != nullptr;
  }
  blank.Panes().Trails().Rows().setFocus();
  Press(blank, CommandElevation);
  ASSERT_EQ(All(blank).size(), 1U);
  ElevationWindow& window = Shown(*All(blank).front());
  for (const ElevationSample& sample : View(window).samples) {
    EXPECT_EQ(sample.position.altitude, NoAltitude);
  }
  const QImage plot = window.Plot().grab().toImage();
  int gray = 0;
  for (int x = 0; x < plot.width(); ++x) {
    for (int y = 100; y < plot.height() - 60; ++y) gray += qGray(plot.pixel(x, y)) < 200 ? 1 : 0;
  }
  EXPECT_GT(gray, 20) << "the reason is in the plot";
}

TEST_F(ElevationWindowTest, AMapWindowHasAnyNumberOfThem) {
  OpenTrail();
  OpenTrail();
  OpenTransect();
  EXPECT_EQ(All().size(), 3U);
  const QPointer<ElevationWindow> first(All().front());
  window_.TryClose();
  DeliverDeletes();
  EXPECT_TRUE(first.isNull()) << "they close with their map window";
}

// --- Keys and mouse -----------------------------------------------------------------------------

TEST_F(ElevationWindowTest, PlusAndMinusZoomAboutTheMiddle) {
  ElevationWindow& window = OpenTrail();
  const double length = View(window).lineLength;
  Key(window, Qt::Key_Plus);
  EXPECT_DOUBLE_EQ(View(window).viewStart, length / 4);
  EXPECT_DOUBLE_EQ(View(window).viewEnd, length * 3 / 4);
  Key(window, Qt::Key_Minus);
  Key(window, Qt::Key_Minus);
  EXPECT_EQ(View(window).viewStart, 0) << "no farther than the whole line";
  EXPECT_EQ(View(window).viewEnd, length);
}

TEST_F(ElevationWindowTest, ATransectZoomsOutBeyondItsEnds) {
  ElevationWindow& window = OpenTransect();
  const double length = View(window).lineLength;
  Key(window, Qt::Key_Minus);
  EXPECT_DOUBLE_EQ(View(window).viewStart, -length / 2);
  EXPECT_DOUBLE_EQ(View(window).viewEnd, length * 3 / 2);
  ASSERT_TRUE(QTest::qWaitFor([&] { return window.Plot().IsFilled(); }));
  EXPECT_LT(View(window).samples.front().position.lon, View(window).points.front()->geo.lon);
  EXPECT_GT(View(window).samples.back().position.lon, View(window).points.back()->geo.lon);
}

TEST_F(ElevationWindowTest, ArrowsAndPageKeysMoveByEighths) {
  ElevationWindow& window = OpenTransect();
  const double length = View(window).lineLength;
  Key(window, Qt::Key_Right);
  EXPECT_DOUBLE_EQ(View(window).viewStart, length / 8);
  Key(window, Qt::Key_Left);
  Key(window, Qt::Key_Left);
  EXPECT_NEAR(View(window).viewStart, -length / 8, 1e-6);
  Key(window, Qt::Key_PageDown);
  EXPECT_NEAR(View(window).viewStart, length * 6 / 8, 1e-6);
  Key(window, Qt::Key_PageUp);
  EXPECT_NEAR(View(window).viewStart, -length / 8, 1e-6);
  Key(window, Qt::Key_Home);
  EXPECT_NEAR(View(window).viewStart, 0, 1e-6);
  Key(window, Qt::Key_Plus);
  Key(window, Qt::Key_End);
  EXPECT_NEAR(View(window).viewEnd, length, 1e-6);
  EXPECT_NEAR(Span(window), length / 2, 1e-6);
}

TEST_F(ElevationWindowTest, ControlWithAnArrowMovesTheColumnOfTheInfoPane) {
  ElevationWindow& window = OpenTrail();
  MoveTo(window, At(window, 0));
  ASSERT_EQ(PointerColumn(View(window)), 0);
  const QImage before = window.Plot().grab().toImage();
  Key(window, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  Key(window, Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(PointerColumn(View(window)), 9);
  EXPECT_EQ(View(window).viewStart, 0);
  EXPECT_NE(window.Plot().grab().toImage(), before) << "the column is marked";
}

TEST_F(ElevationWindowTest, AnotherButtonThanTheFirstDragsTheLine) {
  ElevationWindow& window = OpenTransect();
  const double under = DistanceUnder(View(window), View(window).leftMargin + 100);
  const QPoint from = At(window, 0.3);
  QTest::mousePress(&window.Plot(), Qt::LeftButton, Qt::NoModifier, from);
  MoveTo(window, from + QPoint(40, 0), Qt::LeftButton);
  QTest::mouseRelease(&window.Plot(), Qt::LeftButton, Qt::NoModifier, from + QPoint(40, 0));
  EXPECT_DOUBLE_EQ(DistanceUnder(View(window), View(window).leftMargin + 100), under);
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
    const double before = View(window).viewStart;
    QTest::mousePress(&window.Plot(), button, Qt::NoModifier, from);
    MoveTo(window, from + QPoint(40, 0), button);
    EXPECT_EQ(window.Plot().cursor().shape(), Qt::ClosedHandCursor);
    QTest::mouseRelease(&window.Plot(), button, Qt::NoModifier, from + QPoint(40, 0));
    const double moved = 40 * window.devicePixelRatioF() * View(window).metresPerPixelX;
    EXPECT_NEAR(View(window).viewStart, before - moved, 1e-6);
    EXPECT_EQ(window.Plot().cursor().shape(), Qt::ArrowCursor);
  }
}

TEST_F(ElevationWindowTest, ADoubleClickZoomsAboutThePointer) {
  ElevationWindow& window = OpenTransect();
  const double length = View(window).lineLength;
  const QPoint place = At(window, 0.5);
  const double ratio = window.devicePixelRatioF();
  const double under = DistanceUnder(View(window), static_cast<int>(place.x() * ratio));
  DoubleClick(window, Qt::LeftButton, place);
  EXPECT_NEAR(View(window).viewStart, under - length / 4, 1e-6);
  EXPECT_NEAR(View(window).viewEnd, under + length / 4, 1e-6);
  const double next = DistanceUnder(View(window), static_cast<int>(place.x() * ratio));
  DoubleClick(window, Qt::RightButton, place);
  EXPECT_NEAR(View(window).viewStart, next - length / 2, 1e-6);
  EXPECT_NEAR(View(window).viewEnd, next + length / 2, 1e-6);
}

TEST_F(ElevationWindowTest, TheWheelZoomsAboutThePointer) {
  ElevationWindow& window = OpenTransect();
  const double span = Span(window);
  const QPoint place = At(window, 0.25);
  const int column = static_cast<int>(place.x() * window.devicePixelRatioF());
  const double under = DistanceUnder(View(window), column);
  QWheelEvent turn(place, window.Plot().mapToGlobal(place), {}, {0, 240}, Qt::NoButton,
                   Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&window.Plot(), &turn);
  EXPECT_NEAR(Span(window), span / 2, 1e-6);
  EXPECT_NEAR(DistanceUnder(View(window), column), under, 1e-6);
}

TEST_F(ElevationWindowTest, TheScrollBarOfATrailMovesItsView) {
  ElevationWindow& window = OpenTrail();
  QScrollBar& bar = window.Bar();
  EXPECT_EQ(bar.minimum(), bar.maximum()) << "all of it is in view";
  Key(window, Qt::Key_Plus);
  Key(window, Qt::Key_Plus);
  const double length = View(window).lineLength;
  EXPECT_EQ(bar.pageStep(), static_cast<int>(Span(window) * (View(window).plotWidth - 1) / length));
  const double start = View(window).viewStart;
  bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_NEAR(View(window).viewStart, start + length / 32, 1e-6);
  bar.triggerAction(QAbstractSlider::SliderPageStepSub);
  EXPECT_NEAR(View(window).viewStart, start + length / 32 - length * 7 / 32, 1e-6);
  bar.setSliderDown(true);
  bar.setSliderPosition(100);
  EXPECT_NEAR(View(window).viewStart, 100 * length / (View(window).plotWidth - 1), 1e-6);
  bar.setSliderDown(false);
  EXPECT_NEAR(bar.value(), 100, 1);
}

TEST_F(ElevationWindowTest, TheThumbOfATransectComesBackToTheMiddle) {
  ElevationWindow& window = OpenTransect();
  QScrollBar& bar = window.Bar();
  EXPECT_EQ(bar.maximum(), 120);
  EXPECT_EQ(bar.pageStep(), 20);
  EXPECT_EQ(bar.value(), 60);
  const double start = View(window).viewStart;
  bar.setSliderDown(true);
  bar.setSliderPosition(90);
  EXPECT_EQ(View(window).viewStart, start);
  bar.setSliderDown(false);
  EXPECT_EQ(bar.value(), 60);
  bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
  EXPECT_NEAR(View(window).viewStart, start + Span(window) * 7 / 8, 1e-6);
  EXPECT_EQ(bar.value(), 60);
}

TEST_F(ElevationWindowTest, TheInfoPaneFollowsThePointer) {
  ElevationWindow& window = OpenTrail();
  MoveTo(window, At(window, 0));
  ASSERT_TRUE(QTest::qWaitFor([&] {
    const auto& rows = window.Plot().InfoPaneRows();
    return rows.size() == 4 && rows[3].text == "A";
  }));
  EXPECT_EQ(window.Plot().InfoPaneRows()[2].text, " Alt: 100m");
  auto* pane = window.findChild<QWidget*>(QStringLiteral("elevationInfo"));
  EXPECT_TRUE(pane->isVisible());
  EXPECT_EQ(pane->geometry().right(), window.Plot().width() - 1);
  EXPECT_EQ(pane->geometry().top(), 0);
  Press(window, CommandHideInfo);
  EXPECT_FALSE(pane->isVisible());
  EXPECT_TRUE(window.Commands().ActionOf(CommandHideInfo).isChecked());
  Press(window, CommandHideInfo);
  EXPECT_TRUE(pane->isVisible());
  EXPECT_FALSE(window.Commands().ActionOf(CommandHideInfo).isChecked());
}

TEST_F(ElevationWindowTest, AnglesHaveTheFormOfTheMapWindow) {
  ElevationWindow& window = OpenTrail();
  MoveTo(window, At(window, 0.5));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !window.Plot().InfoPaneRows().empty(); }));
  shell_.Commands().Run(CommandDegrees, window_);
  const std::string degrees = FormatLongitude(
      View(window).samples[static_cast<size_t>(PointerColumn(View(window)))].position.lon,
      CoordinateDisplay::Degrees);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.Plot().InfoPaneRows()[1].text == degrees; }));
}

// --- Commands -----------------------------------------------------------------------------------

TEST_F(ElevationWindowTest, TheMenuZoomsAndShowsTheWholeLine) {
  ElevationWindow& window = OpenTrail();
  const double length = View(window).lineLength;
  Press(window, CommandZoomIn);
  EXPECT_DOUBLE_EQ(Span(window), length / 2);
  Press(window, CommandZoomIn);
  Press(window, CommandZoomOut);
  EXPECT_DOUBLE_EQ(Span(window), length / 2);
  Press(window, CommandShowWholeMap);
  EXPECT_EQ(Span(window), length);
  EXPECT_FALSE(window.Commands().ActionOf(CommandElevation).isEnabled());
  EXPECT_FALSE(window.Commands().ActionOf(CommandSaveAs).isEnabled());
}

TEST_F(ElevationWindowTest, FindCentersOnAPointOfTheLine) {
  ElevationWindow& window = OpenTrail();
  const double length = View(window).lineLength;
  messages_.texts = {"cee", "Alone", std::nullopt};
  Press(window, CommandFind);
  EXPECT_NEAR(View(window).viewStart, length * 2 / 3 - length / 4, 1e-6);
  EXPECT_NEAR(View(window).viewEnd, length * 2 / 3 + length / 4, 1e-6);
  Press(window, CommandFind);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Can't find Alone"});
  Press(window, CommandFind);
  EXPECT_NEAR(Span(window), length / 2, 1e-6);
}

TEST_F(ElevationWindowTest, FindTakesALatin1NameThatIsTypedInUtf8) {
  Find("Ridge").points[1]->name = "B\xE9";
  ElevationWindow& window = OpenTrail();
  messages_.texts = {"b\xC3\xA9"};
  Press(window, CommandFind);
  EXPECT_NEAR((View(window).viewStart + View(window).viewEnd) / 2, View(window).lineLength / 3,
              1e-6);
}

TEST_F(ElevationWindowTest, CopyTakesThePictureAndTheNumbers) {
  ElevationWindow& window = OpenTrail();
  Press(window, CommandCopy);
  const QMimeData* data = QApplication::clipboard()->mimeData();
  ASSERT_TRUE(data->hasImage());
  EXPECT_EQ(qvariant_cast<QImage>(data->imageData()).size(), window.Plot().DeviceSize());
  const QString text = data->text();
  EXPECT_TRUE(text.startsWith(QStringLiteral("column\tdistance\tlat\tlon\taltitude\tlabel\n")));
  EXPECT_EQ(text.count(QLatin1Char('\n')), View(window).plotWidth + 1);
  EXPECT_TRUE(text.contains(QStringLiteral("\t100.0\tA\n")));
}

TEST_F(ElevationWindowTest, TheProfileIsSavedAsAPictureOrATable) {
  ElevationWindow& window = OpenTrail();
  for (const char* name : {"p.png", "p.svg", "p.pdf", "p.txt"}) {
    dialogs_->paths = {folder_.Path() + "/" + name};
    Press(window, CommandSavePicture);
  }
  ASSERT_EQ(dialogs_->questions.size(), 4U);
  EXPECT_EQ(dialogs_->questions[0].title, "Save Picture of Profile...");
  EXPECT_EQ(dialogs_->questions[0].file.name, "Ridge.png");
  EXPECT_EQ(dialogs_->questions[3].file.name, "Ridge.pdf") << "the last ending is offered again";
  EXPECT_EQ(QImage(QString::fromStdString(folder_.Path() + "/p.png")).size(),
            window.Plot().DeviceSize());
  const std::string svg = Read(folder_.Path() + "/p.svg");
  EXPECT_NE(svg.find(">A</text>"), std::string::npos) << svg;
  EXPECT_EQ(Read(folder_.Path() + "/p.pdf").substr(0, 5), "%PDF-");
  EXPECT_EQ(Read(folder_.Path() + "/p.txt").substr(0, 15), "column\tdistance");
  EXPECT_EQ(Texts(), std::vector<std::string>{});
}

TEST_F(ElevationWindowTest, TheProfileIsPrintedOnOnePage) {
  ElevationWindow& window = OpenTrail();
  Key(window, Qt::Key_Plus);
  const double start = View(window).viewStart;
  const std::string path = folder_.Path() + "/profile.pdf";
  around_.printers.choose = [&path](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(path));
    return true;
  };
  Press(window, CommandPrint);
  EXPECT_EQ(around_.printers.offered, std::vector<int>{1});
  EXPECT_EQ(Read(path).substr(0, 5), "%PDF-");
  EXPECT_EQ(View(window).viewStart, start);
  EXPECT_EQ(beeps_, 0);
  const auto pages = window.MakePages({});
  EXPECT_EQ(pages->Title(), "Ridge");
}

TEST_F(ElevationWindowTest, SavingAsAMapIsNotForAProfile) {
  ElevationWindow& window = OpenTrail();
  shell_.Commands().Run(CommandSaveAs, window);
  EXPECT_EQ(beeps_, 1);
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(ElevationWindowTest, EscapeEndsADragAndThenClosesTheWindow) {
  const QPointer<ElevationWindow> window(&OpenTransect());
  QTest::mousePress(&window->Plot(), Qt::RightButton, Qt::NoModifier, At(*window, 0.5));
  QTest::keyClick(&window->Plot(), Qt::Key_Escape);
  DeliverDeletes();
  ASSERT_FALSE(window.isNull());
  EXPECT_EQ(View(*window).flags & ElevationPanning, 0U);
  QTest::mouseRelease(&window->Plot(), Qt::RightButton, Qt::NoModifier, At(*window, 0.5));
  QTest::keyClick(&window->Plot(), Qt::Key_Escape);
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
  EXPECT_TRUE(All().empty());
}

TEST_F(ElevationWindowTest, TheKeyOfCloseMapClosesOnlyTheProfile) {
  const QPointer<ElevationWindow> window(&OpenTrail());
  Press(*window, CommandCloseMap);
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
}

// --- Changes of the map -------------------------------------------------------------------------

TEST_F(ElevationWindowTest, AnEditOfTheMapIsFollowedAndUndone) {
  ElevationWindow& window = OpenTrail();
  const double length = View(window).lineLength;
  Edit edit{.name = "Move of D", .map = &TheMap()};
  edit.change = [&](EditFollowUp&) {
    Find("Ridge").points.back()->geo = {0, 0.06, 300};
    return true;
  };
  ASSERT_TRUE(shell_.History().Apply(edit));
  EXPECT_NEAR(View(window).lineLength, length * 2, 1e-6);
  EXPECT_EQ(View(window).viewEnd, View(window).lineLength);
  EXPECT_EQ(View(window).maxAltitude, 300);
  ASSERT_TRUE(QTest::qWaitFor([&] { return window.Plot().IsFilled(); }));
  ASSERT_TRUE(shell_.History().Undo(TheMap()));
  EXPECT_NEAR(View(window).lineLength, length, 1e-6);
  EXPECT_EQ(View(window).maxAltitude, 200);
}

TEST_F(ElevationWindowTest, ARenamedTrailHasItsNewNameInTheTitle) {
  ElevationWindow& window = OpenTrail();
  Edit edit{.name = "Edit of Trail Ridge", .map = &TheMap()};
  edit.change = [&](EditFollowUp&) {
    Find("Ridge").name = "Crest [*]";
    return true;
  };
  ASSERT_TRUE(shell_.History().Apply(edit));
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Elevation of Crest [*][*] Trail"));
}

TEST_F(ElevationWindowTest, ADeletedTrailKeepsItsProfileUntilItComesBack) {
  ElevationWindow& window = OpenTrail();
  Edit edit{.name = "Delete", .map = &TheMap()};
  edit.change = [&](EditFollowUp&) {
    std::forward_list<Trail>& trails = TheMap().trails;
    auto before = trails.before_begin();
    while (std::next(before)->name != "Ridge") ++before;
    TheMap().removed.trails.splice_after(TheMap().removed.trails.before_begin(), trails, before);
    return true;
  };
  ASSERT_TRUE(shell_.History().Apply(edit));
  ASSERT_EQ(All().size(), 1U);
  EXPECT_EQ(View(window).points.size(), 4U);
  ASSERT_TRUE(shell_.History().Undo(TheMap()));
  Key(window, Qt::Key_Plus);
  EXPECT_EQ(View(window).trail, &Find("Ridge"));
}

TEST_F(ElevationWindowTest, ADeletedTrailKeepsItsProfileWhenNoStepLeadsBackToIt) {
  const QPointer<ElevationWindow> window(&OpenTrail());
  const double length = View(*window).lineLength;
  const auto countRemoved = [&] {
    return std::distance(TheMap().removed.trails.begin(), TheMap().removed.trails.end());
  };
  DeleteTrails(TheMap(), {&Find("Ridge")}, shell_.History());
  shell_.History().Forget(TheMap());
  ASSERT_FALSE(shell_.History().HasSteps());
  ASSERT_EQ(countRemoved(), 1);
  // New points would take the places of those of the line, if these were free.
  for (int i = 0; i < 8; ++i) MakePoint(TheMap(), "new").geo = {10, 20, 30};
  EXPECT_EQ(ElevationTitle(View(*window)), "Elevation of Ridge Trail");
  window->Plot().Change(ShowWholeLine);
  ASSERT_TRUE(QTest::qWaitFor([&] { return window->Plot().IsFilled(); }));
  EXPECT_EQ(View(*window).lineLength, length);
  EXPECT_EQ(View(*window).points.front()->name, "A");
  EXPECT_EQ(View(*window).maxAltitude, 200);
  window->close();
  DeliverDeletes();
  ASSERT_TRUE(window.isNull());
  DeleteTrails(TheMap(), {&Find("Short")}, shell_.History());
  shell_.History().Forget(TheMap());
  EXPECT_EQ(countRemoved(), 1) << "only the trail that was read last, where reading would go on";
}

TEST_F(ElevationWindowTest, AReloadedMapIsFollowed) {
  ElevationWindow& trail = OpenTrail();
  ElevationWindow& transect = OpenTransect();
  std::string text = Ground;
  text.replace(text.find("0.03\t120"), 8, "0.04\t400");
  folder_.Write("site.map", text);
  ASSERT_TRUE(ReloadMap(shell_, TheMap()));
  ASSERT_EQ(All().size(), 2U);
  EXPECT_EQ(View(trail).trail, &Find("Ridge"));
  EXPECT_EQ(View(trail).maxAltitude, 400);
  EXPECT_EQ(View(trail).points.back(), Find("Ridge").points.back());
  EXPECT_TRUE(QTest::qWaitFor([&] { return trail.Plot().IsFilled(); }));
  Key(transect, Qt::Key_Minus);
  EXPECT_TRUE(QTest::qWaitFor([&] { return transect.Plot().IsFilled(); }));
}

TEST_F(ElevationWindowTest, AProfileClosesWhenItsTrailIsGoneFromTheFile) {
  const QPointer<ElevationWindow> trail(&OpenTrail());
  const QPointer<ElevationWindow> transect(&OpenTransect());
  folder_.Write("site.map", "T\tOther\tTrail\nL\tA\t0\t0\t100\nL\tB\t0\t0.01\t150\n");
  ASSERT_TRUE(ReloadMap(shell_, TheMap()));
  EXPECT_TRUE(QTest::qWaitFor([&trail] { return trail.isNull(); }));
  ASSERT_FALSE(transect.isNull());
  EXPECT_EQ(All().size(), 1U);
  ASSERT_TRUE(QTest::qWaitFor([&] { return transect->Plot().IsFilled(); }));
}

TEST_F(ElevationWindowTest, AProfileGoesWithADeletedMapWindow) {
  MapWindowWidget& other = *shell_.OpenFile(folder_.Path() + "/site.map");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  for (TrailPanelRow* row : TrailRowsInOrder(other.Shown().trailViews)) {
    row->selected = row->trail != nullptr && row->trail->name == "Ridge";
  }
  other.Panes().Trails().Rows().setFocus();
  Press(other, CommandElevation);
  ASSERT_EQ(All(other).size(), 1U);
  const QPointer<ElevationWindow> window(All(other).front());
  delete &other;
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
}

// --- Size and speed -----------------------------------------------------------------------------

TEST_F(ElevationWindowTest, AnotherSizeLaysItOutAgain) {
  ElevationWindow& window = OpenTrail();
  const int columns = View(window).plotWidth;
  window.resize(window.width() + 100, window.height() + 50);
  ASSERT_TRUE(QTest::qWaitFor([&] { return View(window).plotWidth > columns; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.Plot().IsFilled(); }));
  EXPECT_EQ(View(window).samples.size(), static_cast<size_t>(View(window).plotWidth));
  window.Plot().setMinimumSize(1, 1);
  window.resize(10, 10);
  QApplication::processEvents();
  EXPECT_GE(View(window).plotWidth, 2);
}

TEST_F(ElevationWindowTest, WhereEstimatesAreSlowTheWindowStaysResponsive) {
  Map& map = TheMap();
  for (int i = 0; i < 200000; ++i) {
    Point& point = MakePoint(map, "");
    point.geo = {1e-6 * (i % 40009), 1e-6 * (i % 79193), static_cast<float>(200 + i % 97)};
    map.namelessPoints.push_back(&point);
  }
  SelectOnly("Ridge");
  Pane().setFocus();
  Press(window_, CommandElevation);
  ASSERT_EQ(All().size(), 1U);
  ElevationWindow& window = *All().front();
  int turns = 0;
  std::vector<size_t> known;
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        ++turns;
        size_t count = 0;
        for (const ElevationSample& sample : View(window).samples) {
          count += HasAltitude(sample.position.altitude) ? 1U : 0U;
        }
        known.push_back(count);
        return window.Plot().IsFilled();
      },
      120000));
  EXPECT_GT(turns, 3) << "events were handled in between";
  EXPECT_TRUE(std::is_sorted(known.begin(), known.end()));
  EXPECT_EQ(known.back(), View(window).samples.size());
}

}  // namespace
}  // namespace orvane
