#include "paint/qt_canvas.h"
#include "panes/trail_tree.h"
#include "shell/map/map_note.h"
#include "shell/map/map_view.h"
#include "support/small_map.h"
#include "view/view_transform.h"

#include <QApplication>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

constexpr int Width = 400;
constexpr int Height = 300;
constexpr double PixelDegrees = 1 / 111120.0;

class KeptPositions : public InputTarget {
 public:
  void TakePosition(const LatLon& place) override { places.push_back(place); }
  std::vector<LatLon> places;
};

/// A shown view without anything drawn in it, one metre to the pixel, with (1 N, 10 E) in the
/// middle, and a place named Camp at the left below.
class MapInteraction : public testing::Test {
 protected:
  MapInteraction() {
    map_.AddLoosePoint("Camp", -100, -150);
    widget_ = std::make_unique<MapView>(map_.TheMap(), nullptr);
    Show();
  }

  void Show() {
    widget_->resize(Width, Height);
    widget_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget_.get()));
    Shown().scale = 1;
    CenterOn(Shown(), LatLon{.lat = 1, .lon = 10});
    widget_->RequestRepaint();
  }

  MapWindow& Shown() { return widget_->Shown(); }
  bool HasFlag(std::uint32_t flag) { return (Shown().flags & flag) != 0; }
  LatLon Under(int x, int y) { return ScreenToMap(Shown(), {x, y}); }
  QImage Grabbed() { return widget_->grab().toImage().convertToFormat(QImage::Format_RGB32); }

  void Press(QPoint at, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mousePress(widget_.get(), Qt::LeftButton, keys, at);
  }
  void Move(QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QMouseEvent event(QEvent::MouseMove, to, widget_->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                      keys);
    QApplication::sendEvent(widget_.get(), &event);
  }
  void Release(QPoint at, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseRelease(widget_.get(), Qt::LeftButton, keys, at);
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Press(from, keys);
    Move(to, keys);
    Release(to, keys);
  }

  struct WheelTurn {
    QPoint pixels{};
    QPoint turn{};
    Qt::ScrollPhase phase = Qt::NoScrollPhase;
    Qt::KeyboardModifiers keys = Qt::NoModifier;
  };
  /// A turn of the wheel, or two fingers on a touch pad, over the middle of the view.
  void Wheel(const WheelTurn& turn) {
    const QPointF at(Width / 2.0, Height / 2.0);
    QWheelEvent event(at, widget_->mapToGlobal(at), turn.pixels, turn.turn, Qt::NoButton, turn.keys,
                      turn.phase, false);
    QApplication::sendEvent(widget_.get(), &event);
  }

  /// Pixels of the marker's colour.
  int MarkerPixels() {
    const QImage image = Grabbed();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) == PaintColor(MarkerColor)) ++count;
      }
    }
    return count;
  }

  SmallMap map_;
  std::unique_ptr<MapView> widget_;
};

/// Black pixels along a line of an image.
int BlackAlong(const QImage& image, QPoint from, QPoint to) {
  int count = 0;
  const int steps = std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
  for (int i = 0; i <= steps; ++i) {
    const QPoint at = from + (to - from) * i / std::max(1, steps);
    if (qGray(image.pixel(at)) < 64) ++count;
  }
  return count;
}

TEST_F(MapInteraction, ARubberBandIsDrawnWhileItLastsAndZoomsToItsBox) {
  const LatLon middle = Under(150, 80);
  Press({100, 50});
  Move({200, 110});
  const QImage during = Grabbed();
  EXPECT_GT(BlackAlong(during, {100, 50}, {200, 50}), 30);
  EXPECT_GT(BlackAlong(during, {100, 110}, {200, 110}), 30);
  EXPECT_GT(BlackAlong(during, {200, 50}, {200, 110}), 20);
  EXPECT_EQ(BlackAlong(during, {110, 56}, {190, 104}), 0);
  Release({200, 110});
  EXPECT_FLOAT_EQ(Shown().scale, 4);
  EXPECT_NEAR(Under(200, 150).lat, middle.lat, PixelDegrees / 10);
  EXPECT_NEAR(Under(200, 150).lon, middle.lon, PixelDegrees / 10);
  EXPECT_TRUE(HasFlag(MapWindowSelection));
  EXPECT_EQ(BlackAlong(Grabbed(), {100, 50}, {200, 50}), 0);
}

// Its far corners were moved towards the middle of the window, so its edges were in wrong places.
TEST_F(MapInteraction, TheAreaForThePrinterKeepsItsEdgesInADeepZoom) {
  Drag({110, 60}, {390, 240}, Qt::ShiftModifier);
  const LatLon edge = Under(110, 150);
  Shown().scale = 1000;
  CenterOn(Shown(), edge);
  widget_->RequestRepaint();
  const QImage image = Grabbed();
  EXPECT_GT(BlackAlong(image, {Width / 2, 0}, {Width / 2, Height - 1}), Height / 4);
  EXPECT_EQ(BlackAlong(image, {Width / 2 + 2, 0}, {Width - 1, Height - 1}), 0);
}

TEST_F(MapInteraction, ABandLeavesNoTraceWhereItWas) {
  Press({100, 50});
  Move({200, 110});
  Grabbed();
  Move({150, 80});
  const QImage image = Grabbed();
  EXPECT_EQ(BlackAlong(image, {160, 110}, {200, 110}), 0);
  EXPECT_GT(BlackAlong(image, {100, 80}, {150, 80}), 15);
}

TEST_F(MapInteraction, ADragOfFourPixelsIsNoBand) {
  Drag({100, 50}, {102, 52});
  EXPECT_FALSE(HasFlag(MapWindowSelection));
  EXPECT_FLOAT_EQ(Shown().scale, 1);
}

TEST_F(MapInteraction, ShiftSelectsOnly) {
  QSignalSpy drawn(widget_.get(), &MapView::transectDrawn);
  Drag({100, 50}, {200, 110}, Qt::ShiftModifier);
  EXPECT_TRUE(HasFlag(MapWindowSelection));
  EXPECT_FLOAT_EQ(Shown().scale, 1);
  EXPECT_EQ(drawn.size(), 0);
}

TEST_F(MapInteraction, ControlDrawsATransectAsALine) {
  QSignalSpy drawn(widget_.get(), &MapView::transectDrawn);
  const LatLon begin = Under(100, 50);
  Press({100, 50}, Qt::ControlModifier);
  Move({200, 110}, Qt::ControlModifier);
  const QImage during = Grabbed();
  EXPECT_EQ(BlackAlong(during, {110, 50}, {200, 50}), 0);
  int inked = 0;
  for (int x = 100; x <= 200; ++x) {
    const int y = 50 + (x - 100) * 60 / 100;
    for (int dy = -1; dy <= 1; ++dy) {
      if (qGray(during.pixel(x, y + dy)) < 64) {
        ++inked;
        break;
      }
    }
  }
  EXPECT_GT(inked, 30);
  Release({200, 110}, Qt::ControlModifier);
  EXPECT_EQ(drawn.size(), 1);
  EXPECT_TRUE(Shown().transectMode);
  EXPECT_NEAR(Shown().selection[0].lat, begin.lat, PixelDegrees / 10);
  EXPECT_FLOAT_EQ(Shown().scale, 1);
}

TEST_F(MapInteraction, InTransectModeTheCursorIsACrossAndABandATransect) {
  QSignalSpy drawn(widget_.get(), &MapView::transectDrawn);
  widget_->SetTransectMode(true);
  EXPECT_EQ(widget_->cursor().shape(), Qt::CrossCursor);
  Drag({100, 50}, {200, 110});
  EXPECT_EQ(drawn.size(), 1);
  widget_->SetTransectMode(false);
  EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(MapInteraction, WithoutATakerTransectModeEndsWithTheDrag) {
  Drag({100, 50}, {200, 110}, Qt::ControlModifier);
  EXPECT_FALSE(Shown().transectMode);
  EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
  Drag({100, 50}, {200, 110});
  EXPECT_FLOAT_EQ(Shown().scale, 4);  // an ordinary band zooms again
}

TEST_F(MapInteraction, EscapeEndsTransectMode) {
  QSignalSpy drawn(widget_.get(), &MapView::transectDrawn);
  Drag({100, 50}, {200, 110}, Qt::ControlModifier);
  EXPECT_EQ(widget_->cursor().shape(), Qt::CrossCursor);
  QTest::keyClick(widget_.get(), Qt::Key_Escape);
  EXPECT_FALSE(Shown().transectMode);
  EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(MapInteraction, TheAreaForThePrinterStaysVisibleUntilEscape) {
  Drag({100, 50}, {200, 110}, Qt::ShiftModifier);
  EXPECT_GT(BlackAlong(Grabbed(), {100, 50}, {200, 50}), 30);
  EXPECT_GT(BlackAlong(Grabbed(), {200, 50}, {200, 110}), 20);
  QTest::keyClick(widget_.get(), Qt::Key_Right);  // it moves with the map
  EXPECT_EQ(BlackAlong(Grabbed(), {180, 50}, {200, 50}), 0);
  EXPECT_GT(BlackAlong(Grabbed(), {60, 50}, {160, 50}), 30);
  QTest::keyClick(widget_.get(), Qt::Key_Escape);
  EXPECT_EQ(BlackAlong(Grabbed(), {60, 50}, {160, 50}), 0);
  EXPECT_TRUE(HasFlag(MapWindowSelection));
}

TEST_F(MapInteraction, EscapeGivesABandUp) {
  Press({100, 50});
  Move({200, 110});
  QTest::keyClick(widget_.get(), Qt::Key_Escape);
  EXPECT_FALSE(HasFlag(MapWindowDrag));
  Release({200, 110});
  EXPECT_FALSE(HasFlag(MapWindowSelection));
  EXPECT_FLOAT_EQ(Shown().scale, 1);
}

TEST_F(MapInteraction, ADragWhoseReleaseWentElsewhereEndsAtTheNextMove) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
    QTest::mousePress(widget_.get(), button, Qt::NoModifier, QPoint(100, 50));
    const double top = Shown().top;
    // A box that opened during the drag has taken the release.
    QMouseEvent move(QEvent::MouseMove, QPointF(200, 110), widget_->mapToGlobal(QPointF(200, 110)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget_.get(), &move);
    EXPECT_FALSE(HasFlag(MapWindowDrag | MapWindowPan));
    EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Shown().pointer.x, 200);
    EXPECT_EQ(Shown().top, top);
    QTest::mouseRelease(widget_.get(), button, Qt::NoModifier, QPoint(200, 110));
    EXPECT_FALSE(HasFlag(MapWindowSelection));
  }
}

TEST_F(MapInteraction, ABandThatLeavesTheWindowScrollsTheMap) {
  const double top = Shown().top;
  Press({100, 50});
  Move({100, Height + 10});
  EXPECT_DOUBLE_EQ(Shown().top, top - (Height / 40 + 10));
  EXPECT_EQ(Shown().pressPoint.y, 50 - (Height / 40 + 10));
  QTest::keyClick(widget_.get(), Qt::Key_Escape);
}

TEST_F(MapInteraction, AnInputTargetTakesClicksUnderACross) {
  KeptPositions target;
  widget_->hide();
  widget_->SetInputTarget(&target);
  EXPECT_TRUE(widget_->isVisible());
  EXPECT_EQ(widget_->cursor().shape(), Qt::CrossCursor);
  const LatLon under = Under(120, 70);
  QTest::mouseClick(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 70));
  ASSERT_EQ(target.places.size(), 1U);
  EXPECT_EQ(target.places[0].lat, under.lat);
  EXPECT_EQ(target.places[0].lon, under.lon);
  EXPECT_FALSE(HasAltitude(target.places[0].altitude));
  widget_->SetInputTarget(nullptr);
  EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
  QTest::mouseClick(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 70));
  EXPECT_EQ(target.places.size(), 1U);
}

TEST_F(MapInteraction, APanShowsAClosedHand) {
  QTest::mousePress(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(100, 100));
  EXPECT_EQ(widget_->cursor().shape(), Qt::ClosedHandCursor);
  QTest::mouseRelease(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(100, 100));
  EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(MapInteraction, TheKeyEAsksForPrinting) {
  QSignalSpy asked(widget_.get(), &MapView::printRequested);
  QTest::keyClick(widget_.get(), Qt::Key_E);
  QTest::keyClick(widget_.get(), Qt::Key_E, Qt::ShiftModifier);
  EXPECT_EQ(asked.size(), 2);
  QTest::keyClick(widget_.get(), Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(asked.size(), 2);
}

TEST_F(MapInteraction, FindCentersAndFlashesForASecond) {
  EXPECT_EQ(MarkerPixels(), 0);
  EXPECT_TRUE(widget_->Find("camp"));
  EXPECT_NEAR(Under(200, 150).lat, 1 - 100 * PixelDegrees, PixelDegrees);
  EXPECT_GT(MarkerPixels(), 50);
  QTest::qWait(700);
  EXPECT_GT(MarkerPixels(), 50);
  QTest::qWait(500);
  EXPECT_EQ(MarkerPixels(), 0);
  EXPECT_FALSE(HasFlag(MapWindowFindMarker));
}

TEST_F(MapInteraction, TwoFindsInARowLeaveOneTimer) {
  EXPECT_TRUE(widget_->Find("Camp"));
  QTest::qWait(600);
  EXPECT_TRUE(widget_->Find("Camp"));
  QSignalSpy changed(widget_.get(), &MapView::viewChanged);
  QTest::qWait(600);
  // The first timer would have ended the mark by now.
  EXPECT_TRUE(HasFlag(MapWindowFindMarker));
  EXPECT_EQ(changed.size(), 0);
  QTest::qWait(600);
  EXPECT_FALSE(HasFlag(MapWindowFindMarker));
  EXPECT_EQ(changed.size(), 1);
  QTest::qWait(600);
  EXPECT_EQ(changed.size(), 1);
}

TEST_F(MapInteraction, FindOfATrailFlashesIt) {
  Point& a = map_.AddPoint("", 0, -100);
  Point& b = map_.AddPoint("", 0, 100);
  map_.AddTrail("Ridge", {&a, &b}, 0x00FF00);
  BuildTrailRows(Shown());
  EXPECT_TRUE(widget_->Find("Ridge"));
  EXPECT_GT(MarkerPixels(), 500);  // as good as the whole width, five pixels thick
  QTest::qWait(1200);
  EXPECT_EQ(MarkerPixels(), 0);
  EXPECT_EQ(Shown().selectedTrail, nullptr);
}

TEST_F(MapInteraction, ARangeFoundAfterAPlaceLeavesNoMark) {
  Range& range = map_.TheMap().ranges.emplace_front();
  range.name = "North group";
  range.minLat = 1;
  range.maxLat = 1.1;
  range.minLon = 10;
  range.maxLon = 10.1;
  range.hasBounds = true;
  EXPECT_TRUE(widget_->Find("Camp"));
  EXPECT_TRUE(widget_->Find("North group"));
  EXPECT_EQ(MarkerPixels(), 0);
}

TEST_F(MapInteraction, WhatIsNotFoundChangesNothing) {
  const double top = Shown().top;
  EXPECT_FALSE(widget_->Find("Nowhere"));
  EXPECT_EQ(Shown().top, top);
}

TEST_F(MapInteraction, TwoFingersOnATouchPadMoveTheMap) {
  const LatLon place = Under(200, 150);
  Wheel({.pixels = {30, -20}, .turn = {60, -40}, .phase = Qt::ScrollUpdate});
  EXPECT_FLOAT_EQ(Shown().scale, 1);
  EXPECT_NEAR(Under(230, 130).lat, place.lat, PixelDegrees / 10);
  EXPECT_NEAR(Under(230, 130).lon, place.lon, PixelDegrees / 10);
  // Where the platform does not count pixels, a notch is 60 of them.
  Wheel({.turn = {-60, 40}, .phase = Qt::ScrollUpdate});
  EXPECT_NEAR(Under(200, 150).lat, place.lat, PixelDegrees / 10);
  EXPECT_NEAR(Under(200, 150).lon, place.lon, PixelDegrees / 10);
}

TEST_F(MapInteraction, TwoFingersWithControlZoom) {
  Wheel({.pixels = {0, 60},
         .turn = {0, 240},
         .phase = Qt::ScrollUpdate,
         .keys = Qt::ControlModifier});
  EXPECT_FLOAT_EQ(Shown().scale, 2);
}

TEST_F(MapInteraction, AWheelToTheSideMovesTheMapToTheSide) {
  const LatLon place = Under(200, 150);
  Wheel({.turn = {-120, 0}});
  EXPECT_NEAR(Under(140, 150).lon, place.lon, PixelDegrees / 10);
  EXPECT_NEAR(Under(140, 150).lat, place.lat, PixelDegrees / 10);
  EXPECT_FLOAT_EQ(Shown().scale, 1);
  Wheel({.turn = {0, 240}});
  EXPECT_FLOAT_EQ(Shown().scale, 2);
}

TEST_F(MapInteraction, TinyStepsOfTwoFingersAddUp) {
  const LatLon place = Under(200, 150);
  for (int i = 0; i < 20; ++i) Wheel({.turn = {1, 0}, .phase = Qt::ScrollUpdate});
  EXPECT_NEAR(Under(210, 150).lon, place.lon, PixelDegrees / 10);
}

TEST_F(MapInteraction, APinchOfATouchPadZoomsAboutThePointer) {
  const LatLon under = Under(300, 80);
  const QPointF at(300, 80);
  for (const double value : {0.25, 0.6}) {
    QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                              at, at, widget_->mapToGlobal(at), value, QPointF());
    QApplication::sendEvent(widget_.get(), &event);
  }
  EXPECT_FLOAT_EQ(Shown().scale, 2);
  EXPECT_NEAR(Under(300, 80).lat, under.lat, PixelDegrees / 10);
  EXPECT_NEAR(Under(300, 80).lon, under.lon, PixelDegrees / 10);
  QNativeGestureEvent turn(Qt::RotateNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at,
                           at, widget_->mapToGlobal(at), 30, QPointF());
  QApplication::sendEvent(widget_.get(), &turn);
  EXPECT_FLOAT_EQ(Shown().scale, 2);
  QNativeGestureEvent absurd(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at,
                             at, widget_->mapToGlobal(at), -3, QPointF());
  QApplication::sendEvent(widget_.get(), &absurd);
  EXPECT_FLOAT_EQ(Shown().scale, 2);
}

TEST_F(MapInteraction, TwoFingersOnTheScreenZoomWithoutABand) {
  // It stays to the end of the program, as that of a real screen does.
  static QPointingDevice* const screen = QTest::createTouchDevice();
  QTest::touchEvent(widget_.get(), screen).press(0, QPoint(180, 150)).press(1, QPoint(220, 150));
  for (int i = 1; i <= 10; ++i) {
    QTest::touchEvent(widget_.get(), screen)
        .move(0, QPoint(180 - 6 * i, 150))
        .move(1, QPoint(220 + 6 * i, 150));
  }
  QTest::touchEvent(widget_.get(), screen)
      .release(0, QPoint(120, 150))
      .release(1, QPoint(280, 150));
  EXPECT_GT(Shown().scale, 1.5);
  EXPECT_NEAR(Under(200, 150).lat, 1, 20 * PixelDegrees);
  EXPECT_FALSE(HasFlag(MapWindowDrag | MapWindowSelection));
}

TEST_F(MapInteraction, ASavedViewOfThisMapIsTakenAtTheFirstPlacing) {
  MapView other(map_.TheMap(), nullptr);
  other.TakeSavedView({.fileName = map_.TheMap().fileName,
                       .latitude = 3,
                       .longitude = 4,
                       .scale = 0.5,
                       .rotation = 0,
                       .hideGrids = true});
  other.resize(Width, Height);
  other.grab();
  EXPECT_FLOAT_EQ(other.Shown().scale, 0.5);
  EXPECT_NEAR(ScreenToMap(other.Shown(), {200, 150}).lat, 3, 1e-6);
  EXPECT_NE(other.Shown().flags & MapWindowGridsHidden, 0U);
}

TEST_F(MapInteraction, AltitudesAreTakenAnewAfterAChangeOfTheMap) {
  EXPECT_FALSE(HasAltitude(widget_->Altitudes().At({1, 10})));
  map_.TheMap().loosePoints.front()->geo.altitude = 55;
  widget_->RequestRepaint();
  EXPECT_EQ(widget_->Altitudes().At({1, 10}), 55);
}

TEST_F(MapInteraction, CreditsShowAsANoteForThreeSeconds) {
  map_.TheMap().credits = {"\xA9 The station", "\xA9 Its people"};
  widget_ = std::make_unique<MapView>(map_.TheMap(), nullptr);
  Show();
  EXPECT_TRUE(HasFlag(MapWindowNotesDue));
  EXPECT_FALSE(widget_->IsNoteShown());
  QTest::qWait(100);
  ASSERT_TRUE(widget_->IsNoteShown());
  EXPECT_FALSE(HasFlag(MapWindowNotesDue));
  EXPECT_TRUE(HasFlag(MapWindowNotesShown));
  const auto* note = widget_->findChild<MapNote*>();
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->text(), QStringLiteral("The station\nIts people"));
  EXPECT_NEAR(note->geometry().center().x(), Width / 2, 2);
  EXPECT_NEAR(note->geometry().center().y(), Height / 2, 2);
  QTest::qWait(2500);
  EXPECT_TRUE(widget_->IsNoteShown());
  QTest::qWait(600);
  EXPECT_FALSE(widget_->IsNoteShown());
  EXPECT_FALSE(HasFlag(MapWindowNotesShown));
}

TEST_F(MapInteraction, ANoteWiderThanTheMapIsBroken) {
  QString credit;
  for (int i = 0; i < 30; ++i) credit += QStringLiteral("people ");
  MapNote note({credit.toStdString()}, widget_.get());
  EXPECT_LE(note.width(), Width);
  EXPECT_GT(note.height(), 2 * note.fontMetrics().lineSpacing());
  EXPECT_LE(note.heightForWidth(note.width()), note.height());
  MapNote small({"people"}, widget_.get());
  EXPECT_LT(small.height(), 2 * small.fontMetrics().lineSpacing());
  EXPECT_EQ(small.size(), small.sizeHint());
}

TEST_F(MapInteraction, AMapWithoutCreditsShowsNoNote) {
  QTest::qWait(100);
  EXPECT_FALSE(widget_->IsNoteShown());
  EXPECT_FALSE(HasFlag(MapWindowNotesDue | MapWindowNotesShown));
}

}  // namespace
}  // namespace orvane
